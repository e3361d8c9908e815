#include "model/FramedRecord.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace tessaly {
namespace {

constexpr std::size_t kLongestFrame = 48;  // "LENGTH SUM", both at their longest

constexpr const char* kSize = "size";
constexpr const char* kCheck = "check";

}  // namespace

std::optional<std::uint64_t> takeNumber(std::string_view& text, char behind) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end == text.data() + text.size() || *end != behind) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
  return value;
}

std::string framedRecord(const RecordText& keys, std::string_view first, std::string_view second) {
  std::string inside = keys.text() + '\n';
  inside.append(first).append(second);
  return std::to_string(inside.size()) + ' ' + std::to_string(textSum(inside)) + '\n' + inside + '\n';
}

std::optional<FramedRecord> takeFramedRecord(std::string_view& text) {
  std::string_view frame = text.substr(0, kLongestFrame);
  const auto length = takeNumber(frame, ' ');
  const auto sum = length ? takeNumber(frame, '\n') : std::nullopt;
  if (!sum) return std::nullopt;
  const std::string_view rest = text.substr(std::min(text.size(), kLongestFrame) - frame.size());
  if (*length >= rest.size() || rest[*length] != '\n') return std::nullopt;
  const std::string_view inside = rest.substr(0, *length);
  if (textSum(inside) != *sum) return std::nullopt;
  const std::size_t keys = inside.find("\n\n");
  auto read = keys == std::string_view::npos ? std::nullopt : RecordText::parse(inside.substr(0, keys + 1));
  if (!read) return std::nullopt;
  text = rest.substr(*length + 1);
  return FramedRecord{*std::move(read), inside.substr(keys + 2)};
}

void setCheck(RecordText& text, const ContentCheck& check) {
  text.set(kSize, check.size);
  text.set(kCheck, check.sum);
}

std::optional<ContentCheck> checkIn(const RecordText& text) {
  const auto size = text.number(kSize), sum = text.number(kCheck);
  return size && sum ? std::optional(ContentCheck{*size, *sum}) : std::nullopt;
}

}  // namespace tessaly
