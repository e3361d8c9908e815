#include "classic/ClassicBuilder.h"

#include <algorithm>
#include <utility>

#include "platform/Text.h"

namespace tessaly {

namespace {

constexpr std::string_view kSeparatorMark = "---";  // a row that contains it is a separator

std::vector<ClassicBuilder::Row> menuRows() {
  std::vector<ClassicBuilder::Row> rows;
  for (const ClassicGroup& group : classicGroups()) rows.push_back({group.name, group.cd == kSeparatorCode});
  return rows;
}

std::optional<std::size_t> groupRowOf(std::uint8_t cd) {
  const ClassicGroup* group = classicGroup(cd);
  if (group == nullptr) return std::nullopt;
  return static_cast<std::size_t>(group - classicGroups().data());
}

}  // namespace

ClassicBuilder::ClassicBuilder(DecodingLists& lists, bool commandSelected)
    : lists_(lists), commandSelected_(commandSelected), groupRows_(menuRows()) {}

ClassicBuilder::ClassicBuilder(DecodingLists& lists, const ClassicCommand& command)
    : lists_(lists),
      original_(command),
      commandSelected_(true),
      groupRows_(menuRows()),
      group_(groupRowOf(command.cd())),
      command_(command) {
  selectSubgroup(command.cd(), command.co());
  lookUp();
}

bool ClassicBuilder::isSeparator(std::string_view text) { return text.find(kSeparatorMark) != text.npos; }

void ClassicBuilder::startFromScratch() {
  clearFrom(List::kMainGroup);
  command_.clear();
  fromScratch_ = true;
}

bool ClassicBuilder::keepsRest() const { return original_ && hasAction() && command_.valid(); }

const KeywordEntry* ClassicBuilder::entry() const {
  return list_ && function_ && *function_ < list_->entries().size() ? &list_->entries()[*function_] : nullptr;
}

bool ClassicBuilder::complete() const {
  if (!entry() || !hasAction()) return false;
  return command_ == original_ || (hasEveryValue() && parameterBytes() <= kMostParameterBytes);
}

const ClassicGroup* ClassicBuilder::group() const { return group_ ? &classicGroups()[*group_] : nullptr; }

bool ClassicBuilder::chooseGroup(std::size_t row) {
  if (row >= groupRows_.size() || groupRows_[row].separator || isSeparator(groupRows_[row].text))
    return false;
  group_ = row;
  if (keepsRest()) {
    moveTo(group()->cd, command_.co());
  } else {
    clearFrom(List::kSubgroup);
    command_.clear();
  }
  return true;
}

bool ClassicBuilder::chooseSubgroup(std::size_t row) {
  const auto codes = subgroupCodes();
  if (row >= codes.size() || subgroupRows()[row].separator) return false;
  if (keepsRest()) {
    moveTo(group()->cd, codes[row]);
  } else {
    selectSubgroup(group()->cd, codes[row]);
    command_.clear();
  }
  return true;
}

bool ClassicBuilder::chooseFunction(std::size_t row) {
  if (!list_) return false;
  const auto& entries = list_->entries();
  if (row < entries.size() && isSeparator(entries[row].longName)) return false;
  const std::uint8_t co = subgroupCodes()[*subgroup_];
  clearFrom(List::kFunction);
  command_.clear();
  function_ = row;
  if (!entry()) return false;
  command_.build(0, group()->cd, co, entry()->keyword, {});
  return true;
}

bool ClassicBuilder::chooseAction(std::size_t row) {
  if (!entry() || complete() || row >= kActionRows || actionTexts()[row].empty()) return false;
  clearFrom(List::kActionType);
  actionRow_ = static_cast<ActionRow>(row);
  command_.build(actionCode(*actionRow_), command_.cd(), command_.co(), entry()->keyword, {});
  fillAtOnce(*actionRow_);
  rebuild();
  return true;
}

bool ClassicBuilder::chooseParameter(std::size_t row) {
  if (!takesValue(row)) return false;
  changing_ = true;
  return true;
}

bool ClassicBuilder::setNumber(std::size_t row, std::int64_t number) {
  if (range(row).entry != ParameterEntry::kNumber) return false;
  if (number == currentNumber(row)) return setBytes(row, *values_[row]);
  auto bytes = bytesOfNumber(*entry(), entry()->parameters[row], number);
  return bytes && setBytes(row, std::move(*bytes));
}

bool ClassicBuilder::setTimecode(std::size_t row, const Timecode& timecode) {
  if (range(row).entry != ParameterEntry::kTimecode) return false;
  return setBytes(row, bytesOfTimecode(timecode, values_[row].value_or(ParameterBytes())));
}

bool ClassicBuilder::setInput(std::size_t row, int number, std::optional<bool> hold) {
  if (range(row).entry != ParameterEntry::kInput || number < 0 || number > kExtendedInput) return false;
  const auto input = static_cast<std::uint8_t>(number);
  const std::optional<ParameterBytes>& old = values_[row];
  if (input == kExtendedInput && currentInput(row) == input) return setBytes(row, *old);
  std::optional<std::uint8_t> holdByte = std::uint8_t{0};
  if (old && old->front() != kExtendedInput)
    holdByte = old->size() > 1 ? std::optional((*old)[1]) : std::nullopt;
  if (hold && *hold != currentHold(row)) holdByte = std::uint8_t{*hold};
  return setBytes(row, bytesOfInput(input, holdByte, isLast(row)));
}

bool ClassicBuilder::setText(std::size_t row, std::string_view text) {
  const ParameterEntry kind = range(row).entry;
  if (kind != ParameterEntry::kClip && kind != ParameterEntry::kText) return false;
  // The same characters in another encoding are the same text.
  if (hasValue(row) && displayUtf8(currentText(row)) == displayUtf8(text))
    return setBytes(row, *values_[row]);
  ParameterBytes bytes = bytesOfText(text);
  if (bytesBeside(row) + bytes.size() > kMostParameterBytes) return false;
  return setBytes(row, std::move(bytes));
}

bool ClassicBuilder::takesValue(std::size_t row) const {
  if (!entry() || !hasAction() || row >= entry()->parameters.size()) return false;
  return !holdsStep(command_, *entry(), row) && entry()->parameters[row].type != ParameterType::kUnknown;
}

bool ClassicBuilder::isLast(std::size_t row) const { return row + 1 == entry()->parameters.size(); }

std::size_t ClassicBuilder::parameterBytes() const {
  std::size_t count = tail_.size();
  for (const auto& value : values_) count += value ? value->size() : 0;
  return count;
}

// What the other parameters take, at the least.
std::size_t ClassicBuilder::bytesBeside(std::size_t row) const {
  std::size_t count = tail_.size();
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (i == row) continue;
    count += values_[i] ? values_[i]->size() : plainBytes(*entry(), entry()->parameters[i], isLast(i)).size();
  }
  return count;
}

void ClassicBuilder::clearFrom(List list) {
  switch (list) {
    case List::kMainGroup:
      group_.reset();
      [[fallthrough]];
    case List::kSubgroup:
      subgroup_.reset();
      list_.reset();
      [[fallthrough]];
    case List::kFunction:
      function_.reset();
      [[fallthrough]];
    case List::kActionType:
      actionRow_.reset();
      loaded_ = false;
      [[fallthrough]];
    case List::kParameters:
      values_.assign(entry() ? entry()->parameters.size() : 0, std::nullopt);
      tail_.clear();
      changing_ = false;
  }
}

// Chooses the subgroup row of a command code and fills the function list; neither for a code outside the
// group.
void ClassicBuilder::selectSubgroup(std::uint8_t cd, std::uint8_t co) {
  clearFrom(List::kSubgroup);
  const auto codes = subgroupCodes();
  const auto found = std::find(codes.begin(), codes.end(), co);
  if (co == kSeparatorCode || found == codes.end()) return;
  subgroup_ = static_cast<std::size_t>(found - codes.begin());
  list_ = lists_.list(cd, co);
}

// Gives the command at hand other codes and keeps the rest of it.
void ClassicBuilder::moveTo(std::uint8_t cd, std::uint8_t co) {
  command_.build(command_.action(), cd, co, command_.kw(), command_.parameters());
  selectSubgroup(cd, co);
  lookUp();
}

// Finds the function, the action row and the values of the command at hand.
void ClassicBuilder::lookUp() {
  loaded_ = true;
  if (!subgroup_) return;
  const auto found = list_ ? list_->find(command_) : std::nullopt;
  function_ = found ? found->index : list_ ? list_->entries().size() : 0;
  if (!found) return;
  actionRow_ = actionRowOf(command_, *found);
  CutParameters cut = cutParameters(command_, *found);
  values_ = std::move(cut.values);
  tail_ = std::move(cut.tail);
}

// What an action writes by itself: all of it for a trigger and for the limits, the step for a toggle.
void ClassicBuilder::fillAtOnce(ActionRow row) {
  const auto& parameters = entry()->parameters;
  const bool limit =
      row == ActionRow::kSetToMinimum || row == ActionRow::kSetToMaximum || row == ActionRow::kSetToNeutral;
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const bool valueless = parameters[i].type == ParameterType::kUnknown;
    if (limit || row == ActionRow::kTrigger || valueless)
      values_[i] = plainBytes(*entry(), parameters[i], isLast(i));
  }
  if (parameters.empty()) return;
  const ParameterDescriptor& last = parameters.back();
  if (row == ActionRow::kSetToMinimum) values_.back() = bytesOfValue(last, last.minimum.value);
  if (row == ActionRow::kSetToMaximum) values_.back() = bytesOfValue(last, last.maximum.value);
  if (row == ActionRow::kSetToNeutral) values_.back() = bytesOfValue(last, last.neutral.value);
  if (holdsStep(command_, *entry(), parameters.size() - 1)) {
    values_.back() = bytesOfValue(last, row == ActionRow::kToggleDown ? -1 : 1);
  }
}

bool ClassicBuilder::setBytes(std::size_t row, ParameterBytes bytes) {
  changing_ = false;
  if (values_[row] == bytes) return true;
  values_[row] = std::move(bytes);
  for (std::size_t i = 0; i < row; ++i) {
    if (values_[i] && entry()->parameters[i].type == ParameterType::kInput) fillInput(*values_[i]);
  }
  const bool atLimit = actionRow_ == ActionRow::kSetToMinimum || actionRow_ == ActionRow::kSetToMaximum ||
                       actionRow_ == ActionRow::kSetToNeutral;
  if (atLimit && isLast(row)) actionRow_ = ActionRow::kSetByValue;
  rebuild();
  return true;
}

// The bytes reach as far as values stand without a gap, so that each lies where it is read.
void ClassicBuilder::rebuild() {
  std::vector<std::uint8_t> bytes;
  for (const auto& value : values_) {
    if (!value) break;
    bytes.insert(bytes.end(), value->begin(), value->end());
  }
  if (hasEveryValue()) bytes.insert(bytes.end(), tail_.begin(), tail_.end());
  command_.build(command_.action(), command_.cd(), command_.co(), command_.kw(), bytes);
}

bool ClassicBuilder::hasEveryValue() const {
  return entry() && hasAction() &&
         std::all_of(values_.begin(), values_.end(), [](const auto& value) { return value.has_value(); });
}

}  // namespace tessaly
