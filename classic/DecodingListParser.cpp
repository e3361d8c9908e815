#include <algorithm>
#include <iterator>

#include "classic/ClassicValue.h"
#include "classic/DecodingList.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr std::size_t kMostLines = 1000;
constexpr std::size_t kFewestLines = 3;
constexpr std::string_view kSeparators = "=- \t,;";
constexpr std::string_view kBetweenLines = "\r\n \t";

struct TypeToken {
  std::string_view token;
  ParameterType type;
};

// Matched as prefixes, so the longer token stands before the one that begins it.
constexpr TypeToken kTypeTokens[] = {
    {"pt_ByteEnum", ParameterType::kByteEnum}, {"pt_WordEnum", ParameterType::kWordEnum},
    {"pt_LongEnum", ParameterType::kLongEnum}, {"pt_AnalogBi", ParameterType::kAnalogBi},
    {"pt_Byte", ParameterType::kByte},         {"pt_Word", ParameterType::kWord},
    {"pt_Long", ParameterType::kLong},         {"pt_Input", ParameterType::kInput},
    {"pt_Analog", ParameterType::kAnalog},     {"pt_String", ParameterType::kString},
    {"pt_Timecode", ParameterType::kTimecode}, {"pt_Clipname", ParameterType::kClipname},
};

std::vector<std::string_view> linesOf(std::string_view bytes) {
  std::vector<std::string_view> lines;
  while (lines.size() < kMostLines) {
    const std::size_t start = bytes.find_first_not_of(kBetweenLines);
    if (start == bytes.npos) break;
    bytes.remove_prefix(start);
    const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
    lines.push_back(bytes.substr(0, end));
    bytes.remove_prefix(end);
  }
  return lines;
}

// Takes one item after the other from a line; a failed item leaves the place as it was.
class LineItems {
 public:
  explicit LineItems(std::string_view line) : rest_(line) {}

  void skip(std::size_t characters) { rest_.remove_prefix(std::min(characters, rest_.size())); }

  void skipWord() { skip(std::min(rest_.find_first_of("=- \t,;\""), rest_.size())); }

  std::optional<std::uint8_t> byte() {
    const std::string_view item = nextItem();
    if (!item.starts_with("0x") || item.size() < 4) return std::nullopt;
    rest_ = item.substr(4);
    return hexByte(item[2], item[3]);
  }

  std::optional<std::uint32_t> number(std::size_t width) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
      const auto item = byte();
      if (!item) return std::nullopt;
      value |= std::uint32_t{*item} << (8 * i);
    }
    return value;
  }

  std::optional<std::string> text() {
    const std::string_view item = nextItem();
    if (!item.starts_with('"')) return std::nullopt;
    const std::size_t end = item.find('"', 1);
    if (end == item.npos) return std::nullopt;
    rest_ = item.substr(end + 1);
    return displayUtf8(item.substr(1, end - 1));
  }

 private:
  std::string_view nextItem() const {
    const std::size_t start = rest_.find_first_not_of(kSeparators);
    return start == rest_.npos ? std::string_view() : rest_.substr(start);
  }

  std::string_view rest_;
};

bool deviceLineFits(std::string_view line, std::uint8_t cd) {
  if (!line.starts_with("CD")) return false;
  LineItems items(line.substr(2));
  return items.byte() == listDeviceCode(cd);
}

bool commandLineFits(std::string_view line, std::uint8_t co) {
  if (!line.starts_with("CO")) return false;
  LineItems items(line.substr(2));
  const auto low = items.byte();
  if (!low) return false;
  const auto high = items.byte();
  // Deliberately the reverse of a range test at the low bound: the lists of a site are laid out for it, one
  // file a command code, each beginning with its own.
  return high ? co <= *low && co <= *high : co == *low;
}

bool addEntry(LineItems items, std::vector<KeywordEntry>& entries) {
  KeywordEntry entry;
  entry.index = entries.size();
  const auto keyword = items.byte();
  items.skip(1);
  const auto subCode = items.byte();
  auto shortName = items.text();
  if (!keyword || !subCode || !shortName) return false;
  entry.keyword = *keyword;
  entry.subCode = *subCode;
  entry.shortName = std::move(*shortName);
  if (auto longName = items.text()) {
    entry.longName = std::move(*longName);
    if (const auto third = items.byte()) entry.thirdByte = *third;
  } else {
    entry.longName = entry.shortName;
  }
  entries.push_back(std::move(entry));
  return true;
}

bool addParameter(std::string_view line, KeywordEntry& entry) {
  if (entry.parameters.size() == KeywordEntry::kMostParameters) return false;
  ParameterDescriptor descriptor;
  LineItems items(line);
  const auto* token = std::find_if(std::begin(kTypeTokens), std::end(kTypeTokens),
                                   [line](const TypeToken& known) { return line.starts_with(known.token); });
  if (token == std::end(kTypeTokens)) {
    items.skipWord();
  } else {
    items.skip(token->token.size());
    descriptor.type = token->type;
  }
  auto text = items.text();
  if (!text) return false;
  switch (descriptor.type) {
    case ParameterType::kByte:
    case ParameterType::kWord:
    case ParameterType::kLong:
      descriptor.numericAttribute = parseInt(*text);
      break;
    case ParameterType::kUnknown:
    case ParameterType::kByteEnum:
    case ParameterType::kWordEnum:
    case ParameterType::kLongEnum:
    case ParameterType::kInput:
    case ParameterType::kAnalog:
    case ParameterType::kAnalogBi:
    case ParameterType::kString:
    case ParameterType::kTimecode:
    case ParameterType::kClipname:
      descriptor.name = std::move(*text);
      break;
  }
  descriptor.firstRow = entry.rows.size();
  entry.parameters.push_back(std::move(descriptor));
  return true;
}

bool addRow(LineItems items, KeywordEntry& entry, ParameterDescriptor& descriptor) {
  const auto value = items.number(valueWidth(descriptor.type));
  auto shortName = items.text();
  if (!value || !shortName) return false;
  auto longName = items.text();
  EnumerationRow row{*value, *shortName, longName ? std::move(*longName) : *shortName};
  entry.rows.push_back(std::move(row));
  ++descriptor.rowCount;
  return true;
}

bool addLimit(LineItems items, ParameterDescriptor& descriptor) {
  const auto value = items.number(valueWidth(descriptor.type));
  if (!value) return false;
  ParameterLimit limit{true, *value, {}};
  if (isAnalog(descriptor.type)) {
    auto text = items.text();
    if (!text) return false;
    limit.text = std::move(*text);
  }
  if (!descriptor.minimum.known) {
    descriptor.minimum = std::move(limit);
  } else if (descriptor.type == ParameterType::kAnalogBi && !descriptor.neutral.known) {
    descriptor.neutral = std::move(limit);
  } else {
    descriptor.maximum = std::move(limit);
  }
  return true;
}

bool addValue(std::string_view line, KeywordEntry& entry) {
  if (entry.parameters.empty()) return false;
  ParameterDescriptor& descriptor = entry.parameters.back();
  const LineItems items(line.substr(1));
  switch (descriptor.type) {
    case ParameterType::kByte:
    case ParameterType::kWord:
    case ParameterType::kLong:
    case ParameterType::kAnalog:
    case ParameterType::kAnalogBi:
      return addLimit(items, descriptor);
    case ParameterType::kByteEnum:
    case ParameterType::kWordEnum:
    case ParameterType::kLongEnum:
      return addRow(items, entry, descriptor);
    case ParameterType::kInput:
    case ParameterType::kUnknown:
      return true;
    case ParameterType::kString:
    case ParameterType::kTimecode:
    case ParameterType::kClipname:
      return false;
  }
  return false;
}

bool addLine(std::string_view line, std::vector<KeywordEntry>& entries) {
  switch (line.front()) {
    case '[':
      return addEntry(LineItems(line.substr(1)), entries);
    case 'p':
      return !entries.empty() && addParameter(line, entries.back());
    case ':':
      return !entries.empty() && addValue(line, entries.back());
    default:
      return true;
  }
}

// Limits come unsigned; a minimum above the maximum tells that they are meant with a sign.
void settleSign(ParameterDescriptor& descriptor) {
  if (isEnumerated(descriptor.type) || !hasSignedValues(descriptor)) return;
  for (ParameterLimit* limit : {&descriptor.minimum, &descriptor.neutral, &descriptor.maximum}) {
    limit->value = signedValue(static_cast<std::uint32_t>(limit->value), valueWidth(descriptor.type));
  }
}

}  // namespace

std::optional<DecodingList> DecodingList::parse(std::string_view bytes, std::uint8_t cd, std::uint8_t co) {
  const std::vector<std::string_view> lines = linesOf(bytes);
  if (lines.size() < kFewestLines || !deviceLineFits(lines[0], cd) || !commandLineFits(lines[1], co)) {
    return std::nullopt;
  }
  DecodingList list;
  for (std::size_t i = 2; i < lines.size() && addLine(lines[i], list.entries_); ++i) {
  }
  if (list.entries_.empty()) return std::nullopt;
  for (KeywordEntry& entry : list.entries_) {
    for (ParameterDescriptor& descriptor : entry.parameters) settleSign(descriptor);
  }
  return list;
}

}  // namespace tessaly
