#include "review/ClassicJudgement.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "classic/ClassicDescription.h"
#include "classic/ClassicParameter.h"
#include "classic/ClassicValue.h"
#include "platform/Text.h"
#include "review/ValueJudgement.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

using enum CheckRule;
using Faults = std::vector<ClassicFault>;

bool knownAction(const ClassicCommand& command) {
  for (const ClassicAction action :
       {ClassicAction::kSet, ClassicAction::kSetAlso, ClassicAction::kIncrement,
        ClassicAction::kIncrementAlso, ClassicAction::kRead, ClassicAction::kTrigger})
    if (command.does(action)) return true;
  return false;
}

// Only what is set has a value: an increment has a step, which no limit binds.
bool sets(const ClassicCommand& command) {
  return command.does(ClassicAction::kSet) || command.does(ClassicAction::kSetAlso);
}

bool hasSource(std::uint8_t number) {
  const auto& sources = classicSources();
  return std::any_of(sources.begin(), sources.end(),
                     [&](const ClassicSource& source) { return source.number == number; });
}

void judgeNumber(const KeywordEntry& entry, const ParameterDescriptor& descriptor, std::uint32_t raw,
                 Faults& faults) {
  if (isEnumerated(descriptor.type)) {
    if (!enumerationRow(entry, descriptor, raw))
      faults.push_back({kChoice, descriptor.name, {Saying::kNoRow, {std::to_string(raw)}}});
    return;
  }
  if (!descriptor.minimum.known || !descriptor.maximum.known) return;
  const std::int64_t value = meantValue(descriptor, raw);
  const auto meant = [&](const ParameterLimit& limit) {
    return meantValue(descriptor, static_cast<std::uint32_t>(limit.value));
  };
  const std::int64_t low = std::min(meant(descriptor.minimum), meant(descriptor.maximum));
  const std::int64_t high = std::max(meant(descriptor.minimum), meant(descriptor.maximum));
  if (low == high || (value >= low && value <= high)) return;
  faults.push_back({kLimits,
                    descriptor.name,
                    {Saying::kNumberBeyond, {std::to_string(value)}},
                    {Saying::kRange, {std::to_string(low), std::to_string(high)}}});
}

void judgeParameter(const ClassicCommand& command, const KeywordEntry& entry,
                    const ParameterDescriptor& descriptor, std::size_t position, int frameRate,
                    Faults& faults) {
  if (descriptor.type == ParameterType::kInput) {
    const std::uint8_t number = command.parameter(position);
    if (number != kExtendedInput && !hasSource(number))
      faults.push_back({kSource, descriptor.name, {Saying::kNoSource, {std::to_string(number)}}});
    return;
  }
  const auto raw = readValue(command.parameters(), position, valueWidth(descriptor.type));
  if (!raw || valueWidth(descriptor.type) == 0) return;
  if (descriptor.type != ParameterType::kTimecode) return judgeNumber(entry, descriptor, *raw, faults);
  const Timecode timecode = Timecode::fromPacked(*raw);
  if (timecode.packed() != *raw || !onTheClock(timecode, frameRate))
    faults.push_back(
        {kTimecode, descriptor.name, {Saying::kNotOnClock, {timecode.display(), std::to_string(frameRate)}}});
}

void judgeParameters(const ClassicCommand& command, const KeywordEntry& entry, int frameRate,
                     Faults& faults) {
  std::size_t position = 0;
  for (const ParameterDescriptor& descriptor : entry.parameters) {
    const std::size_t begin = position;
    const bool last =
        descriptor.type == ParameterType::kInput && command.parameter(position) == kExtendedInput;
    if (!parameterText(command, entry, descriptor, position)) {
      faults.push_back({kClassicShort, descriptor.name,
                        descriptor.name.empty() ? Said{Saying::kEndsBeforeLast}
                                                : Said{Saying::kEndsBefore, {descriptor.name}}});
      return;
    }
    if (sets(command)) judgeParameter(command, entry, descriptor, begin, frameRate, faults);
    if (last) return;
  }
}

// A look-up that finds an entry for the keyword, but none that the bytes fit, has too few of them, or one
// whose value no entry has.
void judgeKeyword(const DecodingList& list, int frameRate, ClassicJudgement& judgement) {
  const ClassicCommand& command = judgement.command;
  Faults& faults = judgement.faults;
  if (const auto entry = list.find(command)) {
    judgement.oneValue = entry->parameters.size() == 1;
    if (!command.does(ClassicAction::kRead)) judgeParameters(command, *entry, frameRate, faults);
    return;
  }
  const auto& entries = list.entries();
  Faults fewest;
  bool known = false;
  for (const KeywordEntry& entry : entries) {
    if (entry.keyword != command.kw()) continue;
    Faults own;
    judgeParameters(command, entry, frameRate, own);
    if (!known || own.size() < fewest.size()) fewest = std::move(own);
    known = true;
  }
  if (fewest.empty())
    fewest.push_back({kClassicKeyword, {}, {Saying::kNoKeyword, {format("%02x", command.kw())}}});
  std::move(fewest.begin(), fewest.end(), std::back_inserter(faults));
}

}  // namespace

ClassicJudgement judgeClassic(std::string_view text, DecodingLists& lists, int frameRate) {
  ClassicJudgement judgement;
  ClassicCommand& judged = judgement.command;
  Faults& faults = judgement.faults;
  if (!judged.decodeText(text)) {
    faults.push_back({kClassicText, {}, {text.empty() ? Saying::kNoText : Saying::kTextUndecoded}});
    const std::string ended = std::string(text) + ' ';
    ClassicCommand meant;
    if (!text.ends_with(' ') && meant.decodeText(ended) && meant.misspeltByte(ended).empty())
      faults.front().meant = ended;
    return judgement;
  }
  // Whatever else is wrong with it may be so by the wrong byte alone.
  if (const std::string_view byte = judged.misspeltByte(text); !byte.empty()) {
    faults.push_back({kClassicText, {}, {Saying::kMisspeltByte, {displayUtf8(byte)}}});
    return judgement;
  }
  if (!judged.readsBack())
    faults.push_back({kClassicReadBack,
                      {},
                      {Saying::kNotReadBack, {std::to_string(judged.parameters().size())}},
                      {Saying::kMostBytes}});
  if (!knownAction(judged))
    faults.push_back({kClassicAction, {}, {Saying::kNoAction, {format("%02x", judged.action())}}});
  const auto list = lists.list(judged.cd(), judged.co());
  if (list) {
    judgeKeyword(*list, frameRate, judgement);
  } else {
    faults.push_back(
        {kClassicList, {}, {Saying::kNoList, {format("%02x", judged.cd()), format("%02x", judged.co())}}});
  }
  return judgement;
}

}  // namespace tessaly
