#include "cli/PanelBatchCommands.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "cli/BatchRows.h"
#include "cli/PanelShelves.h"
#include "model/MacroFile.h"
#include "model/MacroNameScan.h"
#include "platform/Text.h"
#include "review/DiskShelf.h"
#include "review/WorkplaceComparison.h"

namespace tessaly {
namespace {

using State = WorkplaceRow::State;

std::string_view stateName(State state) {
  switch (state) {
    case State::kSame:
      return "same";
    case State::kRenamed:
      return "renamed";
    case State::kDifferent:
      return "different";
    case State::kOnlyLeft:
      return "only-panel";
    case State::kOnlyRight:
      return "only-folder";
    case State::kUnreadable:
      return "unreadable";
  }
  return {};
}

// A comparison on its way out: what is not the same, row by row, and the counts.
class Report {
 public:
  Report(CommandSession& session, bool json) : session_(session), json_(json) {}

  void add(const WorkplaceRow& row) {
    ++counts_[row.state];
    if (row.state == State::kSame) return;
    if (json_) {
      rows_.push_back({{"number", row.number.text()},
                       {"state", stateName(row.state)},
                       {"panel", displayUtf8(row.left)},
                       {"folder", displayUtf8(row.right)},
                       {"reason", displayUtf8(row.trouble)}});
      return;
    }
    std::string line = row.number.text() + '\t' + std::string(stateName(row.state)) + '\t' +
                       outputName(row.left) + '\t' + outputName(row.right);
    if (!row.trouble.empty()) line += '\t' + outputName(row.trouble);
    session_.line(line);
  }

  int end() {
    const int same = counts_[State::kSame];
    int all = 0;
    for (const auto& [state, count] : counts_) all += count;
    if (json_) {
      session_.out()
          << nlohmann::ordered_json{{"same", same == all}, {"sameCount", same}, {"rows", rows_}}.dump(2)
          << '\n';
    } else if (same != all) {
      session_.line("#\tsame: " + std::to_string(same) + ", not the same: " + std::to_string(all - same));
    }
    if (counts_[State::kUnreadable] > 0) return kExitTrouble;
    return same == all ? kExitDone : kExitDifferent;
  }

 private:
  CommandSession& session_;
  bool json_;
  std::map<State, int> counts_;
  nlohmann::ordered_json rows_ = nlohmann::ordered_json::array();
};

int unreachable(CommandSession& session, const PanelPlace& place) {
  return session.failed("cannot connect to the panel at " + place.control());
}

// A macro with a name and a place for commands.
Outcome sendable(const std::string& bytes) {
  const auto macro = takingCommands(Macro::read(bytes));
  if (!macro) return macro.failure();
  return macro->name() ? Outcome() : Failure{Failure::Kind::kNoMacro, "has no name"};
}

// The numbers that are asked for, all of the folder without any; empty after telling why.
std::set<int> numbersOf(CommandSession& session, DiskShelf& shelf, const std::vector<std::string>& words) {
  std::set<int> numbers;
  for (const std::string& word : words)
    numbers.insert(wholeNumber(word, 0, MacroNumber::kCount - 1).value_or(0));
  if (!words.empty()) return numbers;
  const auto held = shelf.list();
  if (held)
    for (const MacroShelf::Held& macro : *held) numbers.insert(macro.number.value());
  if (numbers.empty())
    static_cast<void>(
        session.failed(shelf.title() + ": " + (held ? "there are no macros" : held.failure().text)));
  return numbers;
}

}  // namespace

int comparePanel(CommandSession& session, const PanelPlace& place, int workplace, const std::string& folder,
                 bool json) {
  PanelShelves shelves(session.root(), session.history(), place);
  MacroShelf* const panel = shelves.shelf(workplace);
  if (panel == nullptr) {
    static_cast<void>(unreachable(session, place));
    return kExitTrouble;
  }
  DiskShelf disk(session.root(), session.history(), sitePathOf(folder));
  Report report(session, json);
  WorkplaceComparison comparison(*panel, disk);
  const Outcome compared = comparison.run([&](const WorkplaceRow& row, std::size_t) { report.add(row); });
  if (compared) return report.end();
  static_cast<void>(session.failed(compared.failure().text));
  return kExitTrouble;
}

int sendFolder(CommandSession& session, const PanelPlace& place, int workplace, const std::string& folder,
               const std::vector<std::string>& words, bool force) {
  if (std::ranges::any_of(
          words, [](const std::string& word) { return !wholeNumber(word, 0, MacroNumber::kCount - 1); }))
    return session.wrongUsage("a macro number is 0 to 999");
  DiskShelf disk(session.root(), session.history(), sitePathOf(folder));
  std::vector<BatchItem> items;
  std::vector<std::string> names;
  int code = kExitDone;
  const std::set<int> numbers = numbersOf(session, disk, words);
  if (numbers.empty()) return kExitFailed;
  PanelShelves shelves(session.root(), session.history(), place);
  if (!shelves.open()) return unreachable(session, place);
  for (const int value : numbers) {
    const auto number = MacroNumber::of(value);
    if (!number) continue;
    auto bytes = disk.read(*number);
    const Outcome macro = !bytes ? Outcome(bytes.failure()) : force ? Outcome() : sendable(*bytes);
    if (!macro) {
      session.line(number->text() + "\tas before: the file " + outputName(macro.failure().text));
      code = kExitFailed;
      continue;
    }
    names.push_back(number->text() + " - " + outputName(macroNameIn(*bytes)));
    items.push_back({{{}, place.address, workplace, number->text()}, *std::move(bytes)});
  }
  BatchPlaces places(session.root(), session.history(),
                     [&](const MacroPlace& to) { return shelves.shelf(to.workplace); });
  const std::string title = "sending of " + std::to_string(items.size()) + " macros";
  MacroBatch batch(places, title, MacroChange::kCopy, MacroBatch::Mode::kAsManyAsGo, std::move(items));
  return std::max(code, runBatch(session, batch, "sent", [&](std::size_t index) { return names[index]; }));
}

void recoverOnPanel(CommandSession& session, const PanelPlace& place) {
  if (session.waitingBatches().empty()) return;
  PanelShelves shelves(session.root(), session.history(), place);
  session.recoverBatches([&](const MacroPlace& to) {
    const bool here = to.address == place.address || to.address == place.control();
    return here ? shelves.shelf(to.workplace) : nullptr;
  });
}

}  // namespace tessaly
