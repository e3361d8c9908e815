#include "model/RecordText.h"

#include <charconv>

#include "platform/Text.h"
#include "platform/Workplace.h"

namespace tessaly {
namespace {

constexpr const char* kDisk = "disk";
constexpr const char* kPanel = "panel";
constexpr const char* kWorkplace = "workplace";
constexpr const char* kNumber = "number";

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

std::string encode(std::string_view value) {
  std::string text;
  for (const char c : value) {
    if (c == '%' || isControl(c))
      text += format("%%%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    else
      text += c;
  }
  return text;
}

std::string decode(std::string_view text) {
  std::string value;
  while (!text.empty()) {
    unsigned char byte = 0;
    const bool escaped = text.size() >= 3 && text[0] == '%' &&
                         std::from_chars(text.data() + 1, text.data() + 3, byte, 16).ptr == text.data() + 3;
    value += escaped ? static_cast<char>(byte) : text[0];
    text.remove_prefix(escaped ? 3 : 1);
  }
  return value;
}

}  // namespace

void RecordText::set(const MacroPlace& place) {
  if (!place.file.empty()) {
    set(kDisk, place.file);
    return;
  }
  set(kPanel, place.address.text());
  set(kWorkplace, static_cast<std::uint64_t>(place.workplace));
  set(kNumber, place.number);
}

const std::string& RecordText::get(const std::string& key) const {
  static const std::string none;
  const auto found = values_.find(key);
  return found == values_.end() ? none : found->second;
}

std::optional<std::uint64_t> RecordText::number(const std::string& key) const {
  return exactNumber<std::uint64_t>(get(key));
}

std::optional<MacroPlace> RecordText::place() const {
  if (!get(kDisk).empty()) return MacroPlace{get(kDisk), {}, 0, {}};
  const auto workplace = number(kWorkplace);
  if (get(kPanel).empty() || get(kNumber).empty()) return std::nullopt;
  if (!workplace || *workplace < 1 || *workplace > std::uint64_t{Workplace::kCount}) return std::nullopt;
  return MacroPlace{{}, get(kPanel), static_cast<int>(*workplace), get(kNumber)};
}

std::string RecordText::text() const {
  std::string text;
  for (const auto& [key, value] : values_) text += key + '=' + encode(value) + '\n';
  return text;
}

std::optional<RecordText> RecordText::parse(std::string_view text) {
  RecordText record;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view line = text.substr(0, end);
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || equals == 0) return std::nullopt;
    for (const char c : line)
      if (isControl(c)) return std::nullopt;
    record.values_[std::string(line.substr(0, equals))] = decode(line.substr(equals + 1));
    text.remove_prefix(end + 1);
  }
  return record;
}

}  // namespace tessaly
