#include "classic/ClassicDescription.h"

#include <algorithm>

#include "classic/ClassicGroups.h"
#include "classic/ClassicValue.h"
#include "platform/Text.h"
#include "values/SourceNames.h"
#include "values/Timecode.h"

namespace tessaly {

namespace {

constexpr const char* kSet = "Set - ";
constexpr const char* kIncrement = "Increment - ";
constexpr const char* kToggleUp = "Toggle up - ";
constexpr const char* kToggleDown = "Toggle down - ";
constexpr const char* kRead = "Read - ";
constexpr const char* kTrigger = "Trigger - ";
constexpr const char* kExtendedInputText = "extended input";
constexpr const char* kHoldOn = " source hold on";
constexpr const char* kHoldOff = " source hold off";
constexpr std::uint8_t kLastInput = 254;

std::string numberText(const KeywordEntry& entry, const ParameterDescriptor& descriptor, std::uint32_t raw) {
  if (descriptor.type == ParameterType::kTimecode) return Timecode::fromPacked(raw).display();
  if (const EnumerationRow* row = enumerationRow(entry, descriptor, raw)) return row->longName;
  const std::int64_t value = meantValue(descriptor, raw);
  if (const auto percent = percentOf(descriptor, value)) return format("%d%%", *percent);
  return std::to_string(value);
}

std::string inputText(std::span<const std::uint8_t> bytes, std::size_t& position) {
  const std::uint8_t number = bytes[position++];
  std::string text = inputName(number);
  if (number > kLastInput) return text;
  if (position < bytes.size()) text += bytes[position++] != 0 ? kHoldOn : kHoldOff;
  return text;
}

std::string characters(std::span<const std::uint8_t> bytes, std::size_t& position) {
  const auto rest = bytes.subspan(position);
  const auto zero = std::find(rest.begin(), rest.end(), std::uint8_t{0});
  position += static_cast<std::size_t>(zero - rest.begin()) + (zero == rest.end() ? 0 : 1);
  return displayUtf8(
      {reinterpret_cast<const char*>(rest.data()), static_cast<std::size_t>(zero - rest.begin())});
}

// An extended input says all that can be said about the bytes that follow it.
bool endsDescription(const ClassicCommand& command, const ParameterDescriptor& descriptor,
                     std::size_t position) {
  return descriptor.type == ParameterType::kInput && command.parameter(position) > kLastInput;
}

std::string parametersText(const ClassicCommand& command, const KeywordEntry& entry) {
  std::string text;
  std::size_t position = 0;
  for (const ParameterDescriptor& descriptor : entry.parameters) {
    const bool last = endsDescription(command, descriptor, position);
    const auto value = parameterText(command, entry, descriptor, position);
    if (!value) return text + kNotEnoughParameters;
    text += " - ";
    if (!descriptor.name.empty()) text += descriptor.name + ": ";
    text += *value;
    if (last) break;
  }
  return text;
}

}  // namespace

std::string actionText(const ClassicCommand& command, const KeywordEntry* entry) {
  switch (static_cast<ClassicAction>(command.action())) {
    case ClassicAction::kSet:
    case ClassicAction::kSetAlso:
      return kSet;
    case ClassicAction::kIncrement:
    case ClassicAction::kIncrementAlso:
      if (entry == nullptr || !entry->toggle) return kIncrement;
      return entry->step >= 0 ? kToggleUp : kToggleDown;
    case ClassicAction::kRead:
      return kRead;
    case ClassicAction::kTrigger:
      return kTrigger;
  }
  return format("ac: %02x - ", command.action());
}

std::string inputName(std::uint8_t number) {
  return number > kLastInput ? kExtendedInputText : sourceName(number);
}

std::optional<std::string> parameterText(const ClassicCommand& command, const KeywordEntry& entry,
                                         const ParameterDescriptor& descriptor, std::size_t& position) {
  const auto bytes = command.parameters();
  switch (descriptor.type) {
    case ParameterType::kByte:
    case ParameterType::kByteEnum:
    case ParameterType::kWord:
    case ParameterType::kWordEnum:
    case ParameterType::kLong:
    case ParameterType::kLongEnum:
    case ParameterType::kAnalog:
    case ParameterType::kAnalogBi:
    case ParameterType::kTimecode: {
      const std::size_t width = valueWidth(descriptor.type);
      const auto value = readValue(bytes, position, width);
      if (!value) return std::nullopt;
      position += width;
      return numberText(entry, descriptor, *value);
    }
    case ParameterType::kInput:
      if (position >= bytes.size()) return std::nullopt;
      return inputText(bytes, position);
    case ParameterType::kString:
    case ParameterType::kClipname:
      if (position >= bytes.size()) return std::nullopt;
      return characters(bytes, position);
    case ParameterType::kUnknown:
      return std::string();
  }
  return std::nullopt;
}

std::string describeClassic(const ClassicCommand& command, const DecodingList* list) {
  const auto entry = list != nullptr ? list->find(command) : std::nullopt;
  std::string text = actionText(command, entry ? &*entry : nullptr) + groupName(command.cd(), command.co());
  if (entry) return text + " - " + entry->longName + parametersText(command, *entry);
  text += format(" - kw: %02x  | params:", command.kw());
  for (const std::uint8_t byte : command.parameters()) text += format(" %02x", byte);
  return text;
}

std::string describeClassic(const ClassicCommand& command, DecodingLists& lists) {
  return describeClassic(command, lists.list(command.cd(), command.co()).get());
}

}  // namespace tessaly
