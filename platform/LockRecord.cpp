#include "platform/LockRecord.h"

#include <algorithm>
#include <array>

#include "platform/Text.h"

namespace tessaly {
namespace {

// The lines of a record. The first three are those of earlier versions, which wrote other things behind them.
enum Line { kProcess, kProgram, kHost, kUser, kSince, kLines };
constexpr const char* kProgramLine = "tessaly";

}  // namespace

std::string lockRecord(const LockHolder& holder) {
  std::array<std::string, kLines> lines;
  lines[kProcess] = std::to_string(holder.process);
  lines[kProgram] = kProgramLine;
  lines[kHost] = holder.host;
  lines[kUser] = holder.user;
  lines[kSince] = std::to_string(holder.since);
  std::string record;
  for (const std::string& line : lines) record += line + '\n';
  return record;
}

LockHolder lockHolder(std::string_view record, std::int64_t changed) {
  std::array<std::string, kLines> lines;
  for (std::string& line : lines) {
    line = record.substr(0, record.find('\n'));
    record.remove_prefix(std::min(record.size(), line.size() + 1));
  }
  LockHolder holder;
  if (lines[kProgram] != kProgramLine) return holder;
  holder.host = lines[kHost];
  holder.process = parseLong(lines[kProcess]);
  holder.since = exactNumber<std::int64_t>(lines[kSince]).value_or(0);
  if (holder.since > 0)
    holder.user = lines[kUser];
  else
    holder.since = changed;  // an earlier version's
  return holder;
}

}  // namespace tessaly
