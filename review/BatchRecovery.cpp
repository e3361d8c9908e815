#include "review/BatchRecovery.h"

#include <algorithm>
#include <utility>

#include "review/BatchJournal.h"

namespace tessaly {
namespace {

using Kind = HeldContent::Kind;
using How = BatchRecovery::How;

constexpr std::size_t kMostNamed = 5;  // places in a line

Failure foreign() { return {Failure::Kind::kChanged, "holds what the batch has neither found nor written"}; }

class Recovery {
 public:
  Recovery(BatchPlaces& places, BatchJournal& journal, BatchRecord& record, BatchRecovery& told)
      : places_(places), journal_(journal), record_(record), told_(told) {}

  void run() {
    if (record_.mode == MacroBatch::Mode::kAllOrNone)
      record_.undoing ? undo() : endAll();
    else
      endEach();
  }

 private:
  enum class Put { kSettled, kFailed, kLater };  // kLater: its panel may take it yet

  Put put(const BatchItem& item, std::optional<MacroChange> change, const BeforeWrite& before) {
    const Expected<std::string> found = places_.read(item.place);
    if (HeldContent::asRead(found) == HeldContent::after(item.bytes)) return Put::kSettled;
    const ShelfWrite written = places_.write(item.place, item.bytes, change, before);
    if (written.written()) return Put::kSettled;
    told_.reason = written.why.text;
    if (written.why.kind == Failure::Kind::kChanged && written.state == ShelfWrite::State::kAsBefore) {
      told_.letAlone.push_back(placeInWords(item.place));
      return Put::kSettled;
    }
    told_.failed.push_back(placeInWords(item.place));
    const bool later =
        written.why.kind == Failure::Kind::kPanel || written.state == ShelfWrite::State::kUnknown;
    return BatchPlaces::onPanel(item.place) && later ? Put::kLater : Put::kFailed;
  }

  [[nodiscard]] bool mayReplace(std::size_t i, const Expected<std::string>& found) const {
    const BatchItem& item = record_.items[i];
    const HeldContent held = HeldContent::asRead(found);
    if (!record_.begun || i != record_.begun->item)
      return item.expected.kind == Kind::kUnknown || held == item.expected;
    const auto& begun = *record_.begun;
    if (held == begun.old) return true;
    if (!BatchPlaces::onPanel(item.place)) return false;
    return begun.old.kind == Kind::kUnknown || isTorn(found, item.bytes.value_or("")) ||
           isTorn(found, begun.oldBytes);
  }

  // The queue goes on where it was; what was settled before is.
  void endEach() {
    const std::size_t first = record_.begun ? record_.begun->item : 0;
    for (std::size_t i = first; i < record_.items.size(); ++i) {
      const BatchItem& item = record_.items[i];
      const Put settled = put(item, record_.change, [&](const ShelfStanding& standing) -> Outcome {
        if (!mayReplace(i, standing.bytes)) return foreign();
        return journal_.noteBegun(i, standing.bytes, BatchPlaces::onPanel(item.place));
      });
      // A disk that refuses will refuse again.
      if (settled == Put::kLater) {
        told_.how = How::kWaits;
        return;
      }
    }
    static_cast<void>(journal_.end());
  }

  void endAll() {
    for (std::size_t i = 0; i < record_.items.size(); ++i) {
      const BatchItem& item = record_.items[i];
      if (put(item, record_.change, from(item.expected)) == Put::kSettled) continue;
      told_.how = How::kUnended;
      if (journal_.noteUndoing()) undo();
      return;
    }
    static_cast<void>(journal_.end());
  }

  void undo() {
    told_.how = How::kUndone;
    told_.failed.clear();
    told_.letAlone.clear();
    bool whole = true;
    for (std::size_t i = record_.items.size(); i-- > 0;) {
      const BatchItem& item = record_.items[i];
      const Put put =
          this->put({item.place, record_.olds[i], {}}, std::nullopt, from(HeldContent::after(item.bytes)));
      whole = whole && put == Put::kSettled;
    }
    if (whole)
      static_cast<void>(journal_.end());
    else
      told_.how = How::kUnended;
  }

  [[nodiscard]] static BeforeWrite from(const HeldContent& held) {
    return [held](const ShelfStanding& standing) -> Outcome {
      return HeldContent::asRead(standing.bytes) == held ? Outcome() : foreign();
    };
  }

  BatchPlaces& places_;
  BatchJournal& journal_;
  BatchRecord& record_;
  BatchRecovery& told_;
};

std::string inWords(const std::vector<std::string>& places) {
  std::string text;
  for (std::size_t i = 0; i < std::min(places.size(), kMostNamed); ++i)
    text += (i == 0 ? "" : ", ") + places[i];
  return places.size() > kMostNamed ? text + " ..." : text;
}

}  // namespace

std::string BatchRecovery::describe() const {
  if (how == How::kUnknown) return "nobody knows whether a batch was cut short: the folder of them " + reason;
  std::string text = "the batch \"" + title + "\", which was cut short, ";
  switch (how) {
    case How::kEnded:
      text += "has been ended";
      break;
    case How::kUndone:
      text += "has been undone";
      break;
    case How::kWaits:
      text += "waits for its panel";
      break;
    case How::kUnended:
      text += "is not ended yet";
      break;
    case How::kRefused:
      text += "is let alone";
      break;
    case How::kUnknown:
      break;
  }
  if (!letAlone.empty()) text += "; it has let alone what somebody else has written: " + inWords(letAlone);
  if (!failed.empty()) text += "; it could not write " + inWords(failed);
  if (!reason.empty() && (how == How::kRefused || !failed.empty())) text += ": " + reason;
  return text;
}

std::vector<BatchRecovery> recoverBatches(BatchPlaces& places) {
  std::vector<BatchRecovery> all;
  const auto names = BatchJournal::namesIn(places.root());
  if (!names) all.push_back({{}, How::kUnknown, {}, {}, {}, names.failure().text});
  for (const std::string& name : names.value_or({})) {
    auto found = BatchJournal::open(places.root(), name);
    if (!found) {
      const Failure& why = found.failure();
      if (why.kind != Failure::Kind::kInUse && why.kind != Failure::Kind::kMissing)
        all.push_back({name, How::kRefused, {}, {}, {}, why.text});
      continue;
    }
    BatchRecovery told{found->record.title};
    const bool reached = std::ranges::all_of(
        found->record.items, [&](const BatchItem& item) { return places.reaches(item.place); });
    if (reached)
      for (const BatchItem& item : found->record.items) told.written.push_back(item.place);
    if (reached)
      Recovery(places, found->journal, found->record, told).run();
    else
      told.how = How::kWaits;
    all.push_back(std::move(told));
  }
  return all;
}

}  // namespace tessaly
