#include "model/KeyFile.h"

#include <algorithm>
#include <optional>

#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr const char* kDefaultHeader =
    "#UPK\nBeginHeader\nFile=key%02d.upk\nName=MK%02d\nVersion=1.0\nEndHeader\n";
constexpr int kLinesBeforeName = 3;
constexpr int kHeaderLines = 6;
constexpr std::string_view kKeyPrefix = "key";

// What follows the given number of line feeds; nothing when there are fewer.
std::optional<std::string_view> afterLineFeeds(std::string_view bytes, int count) {
  for (; count > 0; --count) {
    const std::size_t feed = bytes.find('\n');
    if (feed == std::string_view::npos) return std::nullopt;
    bytes.remove_prefix(feed + 1);
  }
  return bytes;
}

std::string_view nameIn(std::string_view line) {
  line = line.substr(0, line.find('\n'));
  const std::size_t equals = line.find('=');
  return equals == std::string_view::npos ? std::string_view() : line.substr(equals + 1);
}

// LF, CR LF and a lone CR. The piece begins where a line does, or within one.
int lineEnds(std::string_view piece) {
  int count = 0;
  for (std::size_t i = 0; i < piece.size(); ++i) {
    const bool pair = piece.substr(i).starts_with("\r\n");
    if (!pair && (piece[i] == '\r' || piece[i] == '\n')) ++count;
  }
  return count;
}

}  // namespace

void KeyFile::load(const SiteRoot& root, std::string_view path, int index) {
  parse(readFile(root, path).value_or(format(kDefaultHeader, index, index + 1)));
}

void KeyFile::parse(std::string_view bytes) {
  commands_.clear();
  lines_.clear();
  name_ = displayUtf8(nameIn(afterLineFeeds(bytes, kLinesBeforeName).value_or(std::string_view())));
  std::optional<std::string_view> body = afterLineFeeds(bytes, kHeaderLines);
  if (!body) return;
  int number = 1;
  std::size_t counted = 0;  // bytes whose line ends are in the number
  // White space is skipped before a line only: the blank at its end belongs to the last byte.
  while (true) {
    body->remove_prefix(std::min(body->find_first_not_of("\r\n \t"), body->size()));
    if (body->empty()) break;
    ClassicCommand* command = append();
    if (!command) break;
    const std::string_view line = body->substr(0, body->find_first_of("\r\n"));
    number += lineEnds(bytes.substr(counted, bytes.size() - body->size() - counted));
    counted = bytes.size() - body->size();
    lines_.push_back({number, std::string(line)});
    command->decodeText(line);
    body->remove_prefix(line.size());
  }
  if (commands_.empty()) commands_.emplace_back();
}

std::vector<int> KeyFile::unreadable() const {
  std::vector<int> positions;
  for (std::size_t i = 0; i < lines_.size(); ++i)
    if (!commands_[i].readsBack()) positions.push_back(static_cast<int>(i));
  return positions;
}

ClassicCommand* KeyFile::append() {
  return lastIndex() + 1 >= kMostCommands ? nullptr : &commands_.emplace_back();
}

int keyFileIndex(std::string_view path) {
  const std::string_view name = fileNameOf(path);
  if (name.size() < kKeyPrefix.size() + 2 || !equalNoCase(name.substr(0, kKeyPrefix.size()), kKeyPrefix))
    return 0;
  return exactNumber<std::uint8_t>(name.substr(kKeyPrefix.size(), 2)).value_or(0);
}

}  // namespace tessaly
