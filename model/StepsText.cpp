#include "model/StepsText.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "model/FramedRecord.h"

namespace tessaly {
namespace {

constexpr std::uint64_t kVersion = 2;

constexpr const char* kKind = "kind";
constexpr const char* kHead = "steps";
constexpr const char* kStep = "step";
constexpr const char* kUndo = "undo";
constexpr const char* kRedo = "redo";
constexpr const char* kSaved = "saved";

constexpr const char* kVersionKey = "version";
constexpr const char* kCut = "cut";
constexpr const char* kName = "name";
constexpr const char* kSelectedBefore = "before";
constexpr const char* kSelectedAfter = "after";
constexpr const char* kAt = "at";
constexpr const char* kRemoved = "removed";
constexpr const char* kAdded = "added";
constexpr const char* kCount = "count";

std::string numbersText(const std::vector<int>& numbers) {
  std::string text;
  for (const int number : numbers) text += std::to_string(number) + ' ';
  return text;
}

std::optional<std::vector<int>> numbersOf(std::string_view text) {
  std::vector<int> numbers;
  while (!text.empty()) {
    const auto number = takeNumber(text, ' ');
    if (!number || *number > static_cast<std::uint64_t>(std::numeric_limits<int>::max())) return std::nullopt;
    numbers.push_back(static_cast<int>(*number));
  }
  return numbers;
}

std::optional<StepsChange> stepOf(const FramedRecord& record) {
  const auto at = record.keys.number(kAt), removed = record.keys.number(kRemoved),
             added = record.keys.number(kAdded);
  const auto before = numbersOf(record.keys.get(kSelectedBefore)),
             after = numbersOf(record.keys.get(kSelectedAfter));
  const auto check = checkIn(record.keys);
  const std::size_t size = record.bytes.size();
  if (!at || !removed || !added || !before || !after || !check) return std::nullopt;
  if (*removed > size || *added != size - *removed) return std::nullopt;
  return EditStep{
      record.keys.get(kName),
      *before,
      *after,
      {*at, std::string(record.bytes.substr(0, *removed)), std::string(record.bytes.substr(*removed))},
      *check};
}

std::optional<StepsChange> changeOf(const FramedRecord& record) {
  const std::string& kind = record.keys.get(kKind);
  if (kind == kStep) return stepOf(record);
  if (kind == kSaved) {
    return StepsSaved{checkIn(record.keys)};
  }
  const auto count = record.keys.number(kCount);
  if ((kind != kUndo && kind != kRedo) || !count || *count == 0 || *count > EditHistory::kMostSteps)
    return std::nullopt;
  const int by = static_cast<int>(*count);
  return StepsMove{kind == kUndo ? -by : by};
}

std::size_t positionAfter(const EditHistory& row, const StepsMove& move) {
  return static_cast<std::size_t>(static_cast<std::ptrdiff_t>(row.position()) + move.by);
}

// Of the bytes that a change which fits leads to.
ContentCheck checkAfter(const EditHistory& row, const StepsChange& change) {
  if (const auto* step = std::get_if<EditStep>(&change)) return step->after;
  if (const auto* move = std::get_if<StepsMove>(&change)) return row.checkAt(positionAfter(row, *move));
  return row.check();
}

}  // namespace

bool fits(const EditHistory& row, const StepsChange& change) {
  if (const auto* step = std::get_if<EditStep>(&change)) {
    const std::uint64_t size = row.check().size, removed = step->change.removed.size();
    return removed <= size && step->change.at <= size - removed &&
           step->after.size == size - removed + step->change.added.size();
  }
  // One below the first is a very large number.
  const auto* move = std::get_if<StepsMove>(&change);
  return move == nullptr || positionAfter(row, *move) <= row.size();
}

void make(EditHistory& row, StepsChange change) {
  if (auto* step = std::get_if<EditStep>(&change))
    row.add(std::move(*step));
  else if (const auto* move = std::get_if<StepsMove>(&change))
    row.moveTo(positionAfter(row, *move));
  else if (const auto* saved = std::get_if<StepsSaved>(&change))
    row.setSaved(saved->check);
}

std::string stepsRecord(const StepsChange& change) {
  RecordText keys;
  if (const auto* step = std::get_if<EditStep>(&change)) {
    keys.set(kKind, std::string_view(kStep));
    keys.set(kName, step->name);
    keys.set(kSelectedBefore, numbersText(step->selectedBefore));
    keys.set(kSelectedAfter, numbersText(step->selectedAfter));
    keys.set(kAt, static_cast<std::uint64_t>(step->change.at));
    keys.set(kRemoved, static_cast<std::uint64_t>(step->change.removed.size()));
    keys.set(kAdded, static_cast<std::uint64_t>(step->change.added.size()));
    setCheck(keys, step->after);
    return framedRecord(keys, step->change.removed, step->change.added);
  }
  if (const auto* move = std::get_if<StepsMove>(&change)) {
    keys.set(kKind, std::string_view(move->by < 0 ? kUndo : kRedo));
    keys.set(kCount, static_cast<std::uint64_t>(move->by < 0 ? -move->by : move->by));
  } else if (const auto* saved = std::get_if<StepsSaved>(&change)) {
    keys.set(kKind, std::string_view(kSaved));
    if (saved->check) setCheck(keys, *saved->check);
  }
  return framedRecord(keys);
}

std::string stepsText(const MacroPlace& place, const EditHistory& row) {
  RecordText head;
  head.set(kKind, std::string_view(kHead));
  head.set(kVersionKey, kVersion);
  head.set(place);
  if (row.cut()) head.set(kCut, std::string_view("yes"));
  setCheck(head, row.checkAt(0));
  std::string text = framedRecord(head);
  if (row.saved()) text += stepsRecord(StepsSaved{*row.saved()});
  for (std::size_t number = 0; number < row.size(); ++number) text += stepsRecord(row.step(number));
  if (row.canRedo()) text += stepsRecord(StepsMove{-static_cast<int>(row.size() - row.position())});
  return text;
}

std::variant<StepsHead, StepsFault> readStepsHead(std::string_view text) {
  const std::size_t size = text.size();
  const auto record = takeFramedRecord(text);
  if (!record || record->keys.get(kKind) != kHead) return StepsFault::kDamaged;
  if (record->keys.number(kVersionKey) != kVersion) return StepsFault::kOtherVersion;
  const auto place = record->keys.place();
  const auto check = checkIn(record->keys);
  if (!place || !check) return StepsFault::kDamaged;
  return StepsHead{*place, EditHistory(*check, !record->keys.get(kCut).empty()), size - text.size()};
}

std::optional<StepsRead> readSteps(StepsHead head, std::string_view text, const ContentCheck& held) {
  EditHistory row = std::move(head.row);
  std::string_view rest = text.substr(head.end);
  std::size_t end = head.end;       // of what has been made
  std::optional<StepsChange> last;  // is held back
  std::size_t lastEnd = end;
  while (const auto record = takeFramedRecord(rest)) {
    auto change = changeOf(*record);
    if (!change) break;
    if (last) make(row, *std::exchange(last, std::nullopt));
    end = lastEnd;
    if (!fits(row, *change)) break;
    last = std::move(change);
    lastEnd = text.size() - rest.size();
  }
  if (last && checkAfter(row, *last) == held) {
    make(row, *std::move(last));
    end = lastEnd;
  }
  if (row.check() != held) return std::nullopt;
  return StepsRead{std::move(row), end};
}

}  // namespace tessaly
