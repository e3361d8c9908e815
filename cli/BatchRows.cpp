#include "cli/BatchRows.h"

#include <algorithm>

namespace tessaly {
namespace {

using Row = MacroBatch::Row;

}  // namespace

int runBatch(CommandSession& session, MacroBatch& batch, std::string_view done,
             const std::function<std::string(std::size_t index)>& nameOf,
             const std::function<void(std::size_t index, const std::string& state)>& take) {
  const auto print = [&](std::size_t index, const std::string& state) {
    if (take) return take(index, state);
    session.line(nameOf(index) + '\t' + state);
  };
  const auto tell = [&](std::size_t index, const Row& row) {
    if (!row.done()) return;
    print(index, std::string(done) + (row.state == Row::State::kUnverified ? ", not verified" : ""));
  };
  Tries tries({});
  if (const Outcome ran = runTrying(batch, tries, tell); !ran) return session.failed(ran.failure().text);
  int code = kExitDone;
  for (std::size_t i = 0; i < batch.rows().size(); ++i) {
    const Row& row = batch.rows()[i];
    if (row.done() && !row.note.empty()) session.warn(nameOf(i) + ": " + row.note);
    if (unflushed(row)) code = std::max(code, kExitFailed);
    if (row.done()) continue;
    const bool unknown = row.state == Row::State::kUnknown;
    print(i, (unknown ? "unknown: " : "as before: ") + row.why.text);
    code = std::max(code, unknown ? kExitUnknown : kExitFailed);
  }
  return code;
}

}  // namespace tessaly
