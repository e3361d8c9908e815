#include "cli/PanelBatchCommands.h"

#include <algorithm>
#include <set>
#include <utility>

#include "cli/BatchRows.h"
#include "cli/ComparisonReport.h"
#include "cli/PanelShelves.h"
#include "model/MacroFile.h"
#include "model/MacroNameScan.h"
#include "platform/Text.h"
#include "review/DiskShelf.h"

namespace tessaly {
namespace {

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
  return printComparison(session, *panel, disk, {"panel", "folder"}, json);
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
    return to.address == place.address ? shelves.shelf(to.workplace) : nullptr;
  });
}

}  // namespace tessaly
