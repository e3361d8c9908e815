#include "review/ClassicEffect.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "classic/ClassicAction.h"
#include "classic/ClassicDescription.h"
#include "classic/ClassicParameter.h"
#include "classic/ClassicValue.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using What = CommandEffect::What;

constexpr std::uint8_t kSetBit = 1;  // of the sub-code
constexpr std::size_t kDigits = 3;   // two digits and the blank between

bool sets(const ClassicCommand& command) {
  return command.does(ClassicAction::kSet) || command.does(ClassicAction::kSetAlso);
}

std::string bytesText(std::span<const std::uint8_t> bytes) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += ' ';
    text += kHex[byte >> 4];
    text += kHex[byte & 0xFU];
  }
  return text;
}

ParameterBytes bytesOf(std::string_view text) {
  ParameterBytes bytes;
  for (std::size_t at = 0; at + 1 < text.size(); at += kDigits)
    bytes.push_back(hexByte(text[at], text[at + 1]));
  return bytes;
}

// What a line shows as 0: a step is the number that its line shows.
std::int64_t zeroOf(const ParameterDescriptor& descriptor) {
  if (!showsPercent(descriptor)) return 0;
  return (descriptor.type == ParameterType::kAnalogBi ? descriptor.neutral : descriptor.minimum).value;
}

std::int64_t within(const ParameterDescriptor& descriptor, std::int64_t value) {
  // Values with a sign have limits.
  std::int64_t low = 0, high = (std::int64_t{1} << (8 * valueWidth(descriptor.type))) - 1;
  const auto meant = [&](const ParameterLimit& limit) {
    return meantValue(descriptor, static_cast<std::uint32_t>(limit.value));
  };
  if (descriptor.minimum.known && descriptor.maximum.known) {
    const std::int64_t first = meant(descriptor.minimum), last = meant(descriptor.maximum);
    if (first != last) low = std::min(first, last), high = std::max(first, last);
  }
  return std::clamp(value, low, high);
}

// The step that the last parameter holds; nothing, and why, where it holds none.
std::optional<std::int64_t> stepIn(const KeywordEntry& entry, const ParameterBytes& bytes, std::string& why) {
  const ParameterDescriptor& descriptor = entry.parameters.back();
  const std::size_t width = valueWidth(descriptor.type);
  const auto raw = readValue(bytes, 0, width);
  if (width == 0 || descriptor.type == ParameterType::kTimecode || !raw) {
    why = "its last parameter holds no step";
    return std::nullopt;
  }
  if (!isEnumerated(descriptor.type)) return meantValue(descriptor, *raw) - zeroOf(descriptor);
  if ((entry.subCode & kSetBit) == 0 || descriptor.rowCount == 0) {
    why = "its decoding list knows the step, not what it leads to";
    return std::nullopt;
  }
  return signedValue(*raw, width);
}

// What is chosen from a list before other parameters chooses what these are of: an axis, an edge, a bus.
bool chooses(const KeywordEntry& entry, std::size_t place) {
  return place + 1 < entry.parameters.size() && isEnumerated(entry.parameters[place].type);
}

// The only choice of an entry says no more than its name, unless it is what another one of its keyword sets.
bool saysMore(const DecodingList& list, const KeywordEntry& entry, std::size_t place) {
  return entry.parameters[place].rowCount != 1 ||
         std::ranges::any_of(list.entries(), [&](const KeywordEntry& other) {
           return other.keyword == entry.keyword && other.parameters.size() == place + 1;
         });
}

void takeParts(const ClassicCommand& command, const DecodingList& list, const KeywordEntry& entry,
               ClassicEffect& effect) {
  const CutParameters cut = cutParameters(command, entry);
  ClassicPart part{};
  for (std::size_t place = 0; place < entry.parameters.size(); ++place) {
    if (entry.parameters[place].type == ParameterType::kUnknown) continue;
    const auto& bytes = cut.values[place];
    if (!bytes) {
      effect.told.why = "its bytes end before the last parameter";
      break;
    }
    part.place = place;
    part.bytes = bytesText(*bytes);
    if (chooses(entry, place)) {
      if (saysMore(list, entry, place)) effect.parts.push_back(part);
      for (const std::uint8_t byte : *bytes) part.chosen += format("%02x", byte);
      part.chosen += '.';
      if (entry.parameters[place].rowCount != 1)
        part.chosenName += " - " + shownClassic(entry, place, part.bytes);
    } else if (sets(command) || place + 1 < entry.parameters.size()) {
      effect.parts.push_back(part);
    } else if (const auto step = stepIn(entry, *bytes, effect.told.why)) {
      part.bytes.clear();
      part.step = *step;
      effect.parts.push_back(part);
    }
  }
  if (effect.parts.empty() && effect.told.why.empty()) effect.told.why = "it gives no value";
  if (effect.parts.empty() || (!sets(command) && !effect.told.why.empty())) {
    effect.told.what = What::kUntold;
    effect.parts.clear();
  }
}

}  // namespace

ClassicEffect classicEffect(std::string_view text, DecodingLists& lists) {
  ClassicCommand command;
  if (!command.decodeText(text)) return {{What::kUntold, "its text does not decode"}};
  ClassicEffect effect{{What::kActs}, command.cd(), command.co(), command.kw()};
  if (command.does(ClassicAction::kTrigger) || command.does(ClassicAction::kRead)) return effect;
  effect.told.what = What::kUntold;
  const auto list = lists.list(command.cd(), command.co());
  auto entry = list ? list->find(command) : std::nullopt;
  if (!sets(command) && !command.increments()) {
    effect.told.why = "its action is unknown";
  } else if (!list) {
    effect.told.why = format("there is no decoding list for cd %02x, co %02x", command.cd(), command.co());
  } else if (!entry) {
    effect.told.why = format("its decoding list has no entry for keyword %02x", command.kw());
  } else if (entry->parameters.empty()) {
    effect.told = sets(command) ? CommandEffect{What::kActs} : CommandEffect{What::kUntold, "it has no step"};
  } else {
    effect.told.what = sets(command) ? What::kSets : What::kSteps;
    takeParts(command, *list, *entry, effect);
    if (!effect.parts.empty()) effect.entry = std::make_shared<const KeywordEntry>(*std::move(entry));
  }
  return effect;
}

std::optional<std::string> stepped(const KeywordEntry& entry, const ClassicPart& part,
                                   std::string_view bytes) {
  const ParameterDescriptor& descriptor = entry.parameters[part.place];
  const auto raw = readValue(bytesOf(bytes), 0, valueWidth(descriptor.type));
  if (!raw) return std::nullopt;
  if (!isEnumerated(descriptor.type)) {
    const std::int64_t value = within(descriptor, meantValue(descriptor, *raw) + part.step);
    return bytesText(bytesOfValue(descriptor, value));
  }
  const EnumerationRow* const row = enumerationRow(entry, descriptor, *raw);
  if (!row) return std::nullopt;
  const auto count = static_cast<std::int64_t>(descriptor.rowCount);
  const EnumerationRow* const first = entry.rows.data() + descriptor.firstRow;
  const std::int64_t next = (((row - first) + part.step) % count + count) % count;
  return bytesText(bytesOfValue(descriptor, first[next].value));
}

std::string shownClassic(const KeywordEntry& entry, std::size_t place, std::string_view bytes) {
  const ParameterBytes parameters = bytesOf(bytes);
  ClassicCommand command;
  command.build(0, 0, 0, 0, parameters);
  std::size_t position = 0;
  return parameterText(command, entry, entry.parameters[place], position).value_or(std::string(bytes));
}

}  // namespace tessaly
