#include "model/StepsText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include "model/RecordText.h"

namespace tessaly {
namespace {

constexpr std::uint64_t kVersion = 1;
constexpr std::size_t kLongestFrame = 48;  // "LENGTH SUM", both at their longest

constexpr const char* kKind = "kind";
constexpr const char* kHead = "steps";
constexpr const char* kStep = "step";
constexpr const char* kUndo = "undo";
constexpr const char* kRedo = "redo";
constexpr const char* kSaved = "saved";

constexpr const char* kVersionKey = "version";
constexpr const char* kCut = "cut";
constexpr const char* kSize = "size";
constexpr const char* kSum = "sum";
constexpr const char* kName = "name";
constexpr const char* kSelectedBefore = "before";
constexpr const char* kSelectedAfter = "after";
constexpr const char* kAt = "at";
constexpr const char* kRemoved = "removed";
constexpr const char* kAdded = "added";
constexpr const char* kCount = "count";

// Takes a decimal number and the character behind it from the front.
std::optional<std::uint64_t> takeNumber(std::string_view& text, char behind) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end == text.data() + text.size() || *end != behind) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()) + 1);
  return value;
}

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

void set(RecordText& text, const ContentCheck& check) {
  text.set(kSize, check.size);
  text.set(kSum, check.sum);
}

std::optional<ContentCheck> checkOf(const RecordText& text) {
  const auto size = text.number(kSize), sum = text.number(kSum);
  return size && sum ? std::optional(ContentCheck{*size, *sum}) : std::nullopt;
}

// A record: its keys, an empty line and bytes as they are, in a frame.
struct Record {
  RecordText keys;
  std::string_view bytes;
};

std::string framed(const RecordText& keys, std::string_view removed = {}, std::string_view added = {}) {
  std::string inside = keys.text() + '\n';
  inside.append(removed).append(added);
  return std::to_string(inside.size()) + ' ' + std::to_string(contentCheck(inside).sum) + '\n' + inside +
         '\n';
}

// Takes a record from the front; nothing, and nothing taken, when no whole one stands there.
std::optional<Record> takeRecord(std::string_view& text) {
  std::string_view frame = text.substr(0, kLongestFrame);
  const auto length = takeNumber(frame, ' ');
  const auto sum = length ? takeNumber(frame, '\n') : std::nullopt;
  if (!sum) return std::nullopt;
  const std::string_view rest = text.substr(std::min(text.size(), kLongestFrame) - frame.size());
  if (*length >= rest.size() || rest[*length] != '\n') return std::nullopt;
  const std::string_view inside = rest.substr(0, *length);
  if (contentCheck(inside).sum != *sum) return std::nullopt;
  const std::size_t keys = inside.find("\n\n");
  auto read = keys == std::string_view::npos ? std::nullopt : RecordText::parse(inside.substr(0, keys + 1));
  if (!read) return std::nullopt;
  text = rest.substr(*length + 1);
  return Record{*std::move(read), inside.substr(keys + 2)};
}

std::optional<StepsChange> stepOf(const Record& record) {
  const auto at = record.keys.number(kAt), removed = record.keys.number(kRemoved),
             added = record.keys.number(kAdded);
  const auto before = numbersOf(record.keys.get(kSelectedBefore)),
             after = numbersOf(record.keys.get(kSelectedAfter));
  const auto check = checkOf(record.keys);
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

std::optional<StepsChange> changeOf(const Record& record) {
  const std::string& kind = record.keys.get(kKind);
  if (kind == kStep) return stepOf(record);
  if (kind == kSaved) {
    return StepsSaved{checkOf(record.keys)};
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
    set(keys, step->after);
    return framed(keys, step->change.removed, step->change.added);
  }
  if (const auto* move = std::get_if<StepsMove>(&change)) {
    keys.set(kKind, std::string_view(move->by < 0 ? kUndo : kRedo));
    keys.set(kCount, static_cast<std::uint64_t>(move->by < 0 ? -move->by : move->by));
  } else if (const auto* saved = std::get_if<StepsSaved>(&change)) {
    keys.set(kKind, std::string_view(kSaved));
    if (saved->check) set(keys, *saved->check);
  }
  return framed(keys);
}

std::string stepsText(const MacroPlace& place, const EditHistory& row) {
  RecordText head;
  head.set(kKind, std::string_view(kHead));
  head.set(kVersionKey, kVersion);
  head.set(place);
  if (row.cut()) head.set(kCut, std::string_view("yes"));
  set(head, row.checkAt(0));
  std::string text = framed(head);
  if (row.saved()) text += stepsRecord(StepsSaved{*row.saved()});
  for (std::size_t number = 0; number < row.size(); ++number) text += stepsRecord(row.step(number));
  if (row.canRedo()) text += stepsRecord(StepsMove{-static_cast<int>(row.size() - row.position())});
  return text;
}

std::variant<StepsHead, StepsFault> readStepsHead(std::string_view text) {
  const std::size_t size = text.size();
  const auto record = takeRecord(text);
  if (!record || record->keys.get(kKind) != kHead) return StepsFault::kDamaged;
  if (record->keys.number(kVersionKey) != kVersion) return StepsFault::kOtherVersion;
  const auto place = record->keys.place();
  const auto check = checkOf(record->keys);
  if (!place || !check) return StepsFault::kDamaged;
  return StepsHead{*place, EditHistory(*check, !record->keys.get(kCut).empty()), size - text.size()};
}

std::optional<StepsRead> readSteps(StepsHead head, std::string_view text, const ContentCheck& held) {
  EditHistory row = std::move(head.row);
  std::string_view rest = text.substr(head.end);
  std::size_t end = head.end;       // of what has been made
  std::optional<StepsChange> last;  // is held back
  std::size_t lastEnd = end;
  while (const auto record = takeRecord(rest)) {
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
