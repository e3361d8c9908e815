#include "panelsim/ClassicRun.h"

#include <algorithm>
#include <cstdint>

#include "classic/ClassicParameter.h"
#include "classic/ClassicValue.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using Result = CommandRun::Result;

constexpr std::uint8_t kSetByValue = 1;  // of the sub-code

Result left(std::string why) { return {.values = {}, .note = "not carried out: " + std::move(why)}; }

// The number that bytes stand for; nothing unless there is one.
struct Number {
  std::uint32_t raw;
  std::int64_t asSigned, meant;
};

std::optional<Number> numberIn(const ParameterDescriptor& parameter, const ParameterBytes& bytes) {
  const std::size_t width = valueWidth(parameter.type);
  if (width == 0 || bytes.size() < width) return std::nullopt;
  std::uint32_t raw = 0;
  for (std::size_t i = width; i-- > 0;) raw = raw << 8 | bytes[i];
  const std::int64_t asSigned = signedValue(raw, width);
  return Number{raw, asSigned, hasSignedValues(parameter) ? asSigned : std::int64_t{raw}};
}

std::string textOf(const ParameterBytes& bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) text += format(text.empty() ? "%02x" : " %02x", byte);
  return text;
}

ParameterBytes bytesIn(const std::string& text) {
  ParameterBytes bytes;
  for (std::size_t at = 0; at + 2 <= text.size(); at += 3) bytes.push_back(hexByte(text[at], text[at + 1]));
  return bytes;
}

// Along the rows of a list, from the last one to the first.
std::optional<std::string> alongRows(const KeywordEntry& entry, const ParameterDescriptor& parameter,
                                     const Number& now, std::int64_t step) {
  const auto begin = entry.rows.begin() + static_cast<std::ptrdiff_t>(parameter.firstRow);
  const auto end = begin + static_cast<std::ptrdiff_t>(parameter.rowCount);
  auto row = std::find_if(begin, end, [&](const EnumerationRow& one) { return one.value == now.raw; });
  if (row == end) return std::nullopt;
  for (std::int64_t left = std::abs(step) % (end - begin); left > 0; --left) {
    if (step > 0)
      row = row + 1 == end ? begin : row + 1;
    else
      row = (row == begin ? end : row) - 1;
  }
  return textOf(bytesOfValue(parameter, row->value));
}

std::string withinLimits(const ParameterDescriptor& parameter, std::int64_t value) {
  // Values with a sign have limits.
  std::int64_t low = 0, high = (std::int64_t{1} << (8 * valueWidth(parameter.type))) - 1;
  if (parameter.minimum.known && parameter.maximum.known) {
    std::int64_t first = parameter.minimum.value, last = parameter.maximum.value;
    if (first > last) std::swap(first, last);
    if (first < last) low = first, high = last;
  }
  return textOf(bytesOfValue(parameter, std::min(std::max(value, low), high)));
}

// What the last parameter of an increment or a toggle makes of its value; a problem where it says nothing.
std::string step(const KeywordEntry& entry, const ParameterBytes& bytes, const std::string& name,
                 const std::optional<std::string>& now, Result& result) {
  const ParameterDescriptor& parameter = entry.parameters.back();
  const auto by = numberIn(parameter, bytes);
  if (!by || parameter.type == ParameterType::kTimecode) return "no step in it";
  const bool list = isEnumerated(parameter.type);
  if (list && ((entry.subCode & kSetByValue) == 0 || parameter.rowCount == 0))
    return "a step of nothing that is set";
  const auto from = now ? numberIn(parameter, bytesIn(*now)) : std::nullopt;
  if (!from) {
    result.note = name + " is not known";
    return {};
  }
  std::int64_t zero = 0;
  if (showsPercent(parameter))
    zero = parameter.type == ParameterType::kAnalogBi ? parameter.neutral.value : parameter.minimum.value;
  const auto next = list ? alongRows(entry, parameter, *from, by->asSigned)
                         : std::optional(withinLimits(parameter, from->meant + by->meant - zero));
  if (next)
    result.values.emplace_back(name, *next);
  else
    result.note = name + " is none of its list";
  return {};
}

// A selector is a setting of its own where there is something to select, or where it can be sent alone.
bool isSetting(const DecodingList& list, const KeywordEntry& entry, std::size_t place) {
  if (entry.parameters[place].rowCount != 1) return true;
  for (const KeywordEntry& one : list.entries())
    if (one.keyword == entry.keyword && one.parameters.size() == place + 1) return true;
  return false;
}

}  // namespace

Result runClassic(const std::string& prefix, const std::string& text, DecodingLists& lists,
                  const std::function<std::optional<std::string>(const std::string& name)>& now) {
  ClassicCommand command;
  if (!command.decodeText(text)) return left("the text does not decode");
  const bool sets = command.does(ClassicAction::kSet) || command.does(ClassicAction::kSetAlso);
  if (command.does(ClassicAction::kRead) || command.does(ClassicAction::kTrigger)) return {.note = "acts"};
  if (!sets && !command.increments()) return left("no such action");
  const auto list = lists.list(command.cd(), command.co());
  const auto entry = list ? list->find(command) : std::nullopt;
  if (!entry) return left("no decoding list knows it");
  if (entry->parameters.empty()) return sets ? Result{.note = "acts"} : left("no step in it");
  const CutParameters cut = cutParameters(command, *entry);
  Result result;
  std::string unit = prefix + format("%02x.%02x.%02x.", command.cd(), command.co(), command.kw());
  for (std::size_t i = 0; i < entry->parameters.size(); ++i) {
    if (entry->parameters[i].type == ParameterType::kUnknown) continue;
    if (!cut.values[i] && !sets) return left("too few bytes");
    if (!cut.values[i]) break;
    const std::string name = unit + std::to_string(i);
    const bool isLast = i + 1 == entry->parameters.size();
    if (!isLast && isEnumerated(entry->parameters[i].type)) {
      if (isSetting(*list, *entry, i)) result.values.emplace_back(name, textOf(*cut.values[i]));
      for (const std::uint8_t byte : *cut.values[i]) unit += format("%02x", byte);
      unit += '.';
    } else if (sets || !isLast) {
      result.values.emplace_back(name, textOf(*cut.values[i]));
    } else if (std::string why = step(*entry, *cut.values[i], name, now(name), result); !why.empty()) {
      return left(std::move(why));
    }
  }
  return result;
}

}  // namespace tessaly
