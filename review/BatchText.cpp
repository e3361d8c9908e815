#include "review/BatchText.h"

#include <algorithm>
#include <utility>

#include "model/FramedRecord.h"
#include "model/KeptMacro.h"

namespace tessaly {
namespace {

using Kind = HeldContent::Kind;
using Mode = MacroBatch::Mode;

constexpr std::uint64_t kVersion = 2;

constexpr const char* kKind = "kind";
constexpr const char* kBatch = "batch";
constexpr const char* kItem = "item";
constexpr const char* kBegun = "begun";
constexpr const char* kUndoing = "undoing";

constexpr const char* kVersionKey = "version";
constexpr const char* kTitle = "title";
constexpr const char* kMode = "mode";
constexpr const char* kEach = "each";
constexpr const char* kAll = "all";
constexpr const char* kChange = "change";
constexpr const char* kItems = "items";
constexpr const char* kHolds = "holds";
constexpr const char* kNothing = "nothing";
constexpr const char* kBytes = "bytes";
constexpr const char* kUnknown = "unknown";
constexpr const char* kNew = "new";  // the count of bytes; without it the place is emptied
constexpr const char* kOld = "old";  // of those behind them; without it there were none

void setHeld(RecordText& keys, const HeldContent& held) {
  const char* const word = held.kind == Kind::kBytes     ? kBytes
                           : held.kind == Kind::kNothing ? kNothing
                                                         : kUnknown;
  keys.set(kHolds, std::string_view(word));
  if (held.kind == Kind::kBytes) setCheck(keys, held.check);
}

std::optional<HeldContent> heldOf(const RecordText& keys) {
  const std::string& word = keys.get(kHolds);
  if (word == kNothing) return HeldContent::nothing();
  if (word == kUnknown) return HeldContent{};
  const auto check = checkIn(keys);
  if (word != kBytes || !check) return std::nullopt;
  return HeldContent{Kind::kBytes, *check};
}

std::string itemText(const BatchItem& item, const std::optional<std::string>& old) {
  RecordText keys;
  keys.set(kKind, std::string_view(kItem));
  keys.set(item.place);
  setHeld(keys, item.expected);
  if (item.bytes) keys.set(kNew, std::uint64_t{item.bytes->size()});
  if (old) keys.set(kOld, std::uint64_t{old->size()});
  return framedRecord(keys, item.bytes ? std::string_view(*item.bytes) : std::string_view(),
                      old ? std::string_view(*old) : std::string_view());
}

bool takeHead(const FramedRecord& found, BatchRecord& record, std::uint64_t& items) {
  const std::string& mode = found.keys.get(kMode);
  const auto count = found.keys.number(kItems);
  if (found.keys.get(kKind) != kBatch || found.keys.number(kVersionKey) != kVersion || !count) return false;
  if (mode != kEach && mode != kAll) return false;
  record.title = found.keys.get(kTitle);
  record.mode = mode == kAll ? Mode::kAllOrNone : Mode::kAsManyAsGo;
  record.change = changeOfWord(found.keys.get(kChange));
  items = *count;
  return true;
}

bool takeItem(const FramedRecord& found, BatchRecord& record) {
  const auto place = found.keys.place();
  const auto held = heldOf(found.keys);
  if (found.keys.get(kKind) != kItem || !place || !held) return false;
  const auto newSize = found.keys.number(kNew), oldSize = found.keys.number(kOld);
  if (newSize.value_or(0) > found.bytes.size() ||
      oldSize.value_or(0) != found.bytes.size() - newSize.value_or(0))
    return false;
  BatchItem item{*place, std::nullopt, *held};
  if (newSize) item.bytes = std::string(found.bytes.substr(0, *newSize));
  record.items.push_back(std::move(item));
  record.olds.push_back(oldSize ? std::optional(std::string(found.bytes.substr(newSize.value_or(0))))
                                : std::nullopt);
  return true;
}

// False for what no journal of this version holds behind its items.
bool takeNote(const FramedRecord& found, BatchRecord& record) {
  if (found.keys.get(kKind) == kUndoing) {
    record.undoing = true;
    return true;
  }
  const auto item = found.keys.number(kItem);
  const auto held = heldOf(found.keys);
  if (found.keys.get(kKind) != kBegun || !item || *item >= record.items.size() || !held) return false;
  record.begun = {static_cast<std::size_t>(*item), *held, std::string(found.bytes)};
  return true;
}

}  // namespace

std::string batchText(const BatchRecord& record) {
  RecordText head;
  head.set(kKind, std::string_view(kBatch));
  head.set(kVersionKey, kVersion);
  head.set(kTitle, record.title);
  head.set(kMode, std::string_view(record.mode == Mode::kAllOrNone ? kAll : kEach));
  head.set(kChange, changeWord(record.change));
  head.set(kItems, std::uint64_t{record.items.size()});
  std::string text = framedRecord(head);
  for (std::size_t i = 0; i < record.items.size(); ++i)
    text += itemText(record.items[i], i < record.olds.size() ? record.olds[i] : std::nullopt);
  return text;
}

std::string batchBegunText(const BatchRecord::Begun& begun) {
  RecordText keys;
  keys.set(kKind, std::string_view(kBegun));
  keys.set(kItem, std::uint64_t{begun.item});
  setHeld(keys, begun.old);
  return framedRecord(keys, begun.oldBytes);
}

std::string batchUndoingText() {
  RecordText keys;
  keys.set(kKind, std::string_view(kUndoing));
  return framedRecord(keys);
}

std::optional<BatchRecord> readBatch(std::string_view text, std::size_t& end) {
  const std::size_t size = text.size();
  BatchRecord record;
  std::uint64_t items = 0;
  const auto head = takeFramedRecord(text);
  if (!head || !takeHead(*head, record, items)) return std::nullopt;
  while (record.items.size() < items) {
    const auto item = takeFramedRecord(text);
    if (!item || !takeItem(*item, record)) return std::nullopt;
  }
  end = size - text.size();
  for (auto note = takeFramedRecord(text); note && takeNote(*note, record); note = takeFramedRecord(text))
    end = size - text.size();
  return record;
}

}  // namespace tessaly
