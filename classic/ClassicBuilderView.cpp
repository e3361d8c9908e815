// What the builder shows: rows, headings and lines.

#include <algorithm>

#include "classic/ClassicBuilder.h"
#include "classic/ClassicDescription.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr const char* kPrompt = "select  > %s <";
constexpr const char* kSelectOther = "Select other %s";
constexpr const char* kJoint = " - ";
constexpr const char* kUnnamedParameter = "Value";
constexpr const char* kNoValueYet = "...";

const char* headingOf(ClassicBuilder::List list) {
  switch (list) {
    case ClassicBuilder::List::kMainGroup:
      return "Main Group";
    case ClassicBuilder::List::kSubgroup:
      return "Subgroup";
    case ClassicBuilder::List::kFunction:
      return "Function";
    case ClassicBuilder::List::kActionType:
      return "Action Type";
    case ClassicBuilder::List::kParameters:
      return "Parameter";
  }
  return "";
}

ClassicCommand alone(const ParameterBytes& bytes) {
  ClassicCommand command;
  command.build(0, 0, 0, 0, bytes);
  return command;
}

}  // namespace

std::vector<ClassicBuilder::Row> ClassicBuilder::subgroupRows() const {
  std::vector<Row> rows;
  for (const std::uint8_t co : subgroupCodes()) {
    if (co == kSeparatorCode) {
      rows.push_back({"", true});
    } else {
      rows.push_back({subgroupName(*group(), co), false});
    }
  }
  return rows;
}

std::vector<std::uint8_t> ClassicBuilder::subgroupCodes() const {
  std::vector<std::uint8_t> codes;
  if (!group_) return codes;
  for (const ClassicSubgroup& subgroup : group()->subgroups) {
    for (int co = subgroup.low; co <= subgroup.high; ++co) codes.push_back(static_cast<std::uint8_t>(co));
  }
  return codes;
}

std::vector<ClassicBuilder::Row> ClassicBuilder::functionRows() const {
  std::vector<Row> rows;
  if (!list_) return rows;
  for (const KeywordEntry& entry : list_->entries())
    rows.push_back({entry.longName, isSeparator(entry.longName)});
  return rows;
}

std::array<std::string, kActionRows> ClassicBuilder::actionTexts() const {
  return entry() ? actionRows(*entry()) : std::array<std::string, kActionRows>();
}

std::vector<std::string> ClassicBuilder::parameterRows() const {
  std::vector<std::string> rows;
  if (function_ && !entry()) rows.emplace_back(classic_text::kWrongKeyword);
  if (!entry() || !hasAction()) return rows;
  for (std::size_t i = 0; i < values_.size(); ++i) {
    const ParameterDescriptor& descriptor = entry()->parameters[i];
    std::string row = descriptor.name.empty() ? kUnnamedParameter : descriptor.name;
    if (!values_[i]) {
      row += loaded_ ? std::string(" ") + kNotEnoughParameters : std::string(": ") + kNoValueYet;
    } else {
      std::size_t position = 0;
      row += ": " + parameterText(alone(*values_[i]), *entry(), descriptor, position).value_or("");
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

std::optional<std::size_t> ClassicBuilder::chosenFunction() const {
  return entry() ? function_ : std::nullopt;
}

std::optional<std::size_t> ClassicBuilder::chosenAction() const {
  if (!actionRow_) return std::nullopt;
  return static_cast<std::size_t>(*actionRow_);
}

ParameterRange ClassicBuilder::range(std::size_t row) const {
  return takesValue(row) ? parameterRange(entry()->parameters[row]) : ParameterRange();
}

std::optional<std::int64_t> ClassicBuilder::currentNumber(std::size_t row) const {
  if (range(row).entry != ParameterEntry::kNumber || !values_[row]) return std::nullopt;
  return typedNumber(*entry(), entry()->parameters[row], *values_[row]);
}

Timecode ClassicBuilder::currentTimecode(std::size_t row) const {
  if (range(row).entry != ParameterEntry::kTimecode || !values_[row]) return {};
  return timecodeOf(*values_[row]);
}

std::optional<std::uint8_t> ClassicBuilder::currentInput(std::size_t row) const {
  if (range(row).entry != ParameterEntry::kInput || !values_[row]) return std::nullopt;
  return values_[row]->front();
}

bool ClassicBuilder::currentHold(std::size_t row) const {
  const auto input = currentInput(row);
  return input && *input != kExtendedInput && values_[row]->size() > 1 && (*values_[row])[1] != 0;
}

std::size_t ClassicBuilder::textRoom(std::size_t row) const {
  if (!takesValue(row)) return 0;
  const std::size_t taken = bytesBeside(row) + 1;  // the zero byte behind the text
  return taken < kMostParameterBytes ? kMostParameterBytes - taken : 0;
}

std::string ClassicBuilder::currentText(std::size_t row) const {
  const ParameterEntry kind = range(row).entry;
  if ((kind != ParameterEntry::kClip && kind != ParameterEntry::kText) || !values_[row]) return {};
  const ParameterBytes& bytes = *values_[row];
  return {bytes.begin(), std::find(bytes.begin(), bytes.end(), std::uint8_t{0})};
}

std::span<const EnumerationRow> ClassicBuilder::enumeration(std::size_t row) const {
  if (!takesValue(row)) return {};
  const ParameterDescriptor& descriptor = entry()->parameters[row];
  return std::span(entry()->rows).subspan(descriptor.firstRow, descriptor.rowCount);
}

std::string ClassicBuilder::missingList() const {
  return subgroup_ && !list_ ? decodingListPath(group()->cd, subgroupCodes()[*subgroup_]) : std::string();
}

ClassicBuilder::List ClassicBuilder::nextList() const {
  if (!group_) return List::kMainGroup;
  if (!subgroup_) return List::kSubgroup;
  if (!entry()) return List::kFunction;
  return hasAction() ? List::kParameters : List::kActionType;
}

std::string ClassicBuilder::heading(List list) const {
  const char* name = headingOf(list);
  if (list == List::kSubgroup && subgroup_) return format(kSelectOther, group()->name);
  if (list != nextList() || (list == List::kParameters && values_.empty())) return name;
  if (list == List::kParameters && changing_) return classic_text::kChangeParameter;
  return format(kPrompt, name);
}

std::string ClassicBuilder::stateLine() const {
  if (complete()) return original_ ? classic_text::kReadyToModify : classic_text::kReadyToInsert;
  if (hasEveryValue() && parameterBytes() > kMostParameterBytes) return classic_text::kTooLong;
  if (group_ || command_.valid()) return classic_text::kUnderConstruction;
  return fromScratch_ ? classic_text::kFromScratch : classic_text::kNoSelection;
}

std::string ClassicBuilder::path() const {
  std::string path;
  const auto add = [&path](const std::string& name) { path += (path.empty() ? "" : kJoint) + name; };
  if (group_) add(group()->name);
  if (subgroup_) add(subgroupRows()[*subgroup_].text);
  if (entry()) add(entry()->longName);
  if (actionRow_) add(actionTexts()[static_cast<std::size_t>(*actionRow_)]);
  return path;
}

std::string ClassicBuilder::description() const {
  return hasAction() && command_.valid() ? describeClassic(command_, list_.get()) : path();
}

}  // namespace tessaly
