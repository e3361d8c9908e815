// What a piece of steps, comparisons, checks, searches, batches and snapshots costs beside the same at a
// tenth of the size.
#include <fstream>
#include <memory>
#include <vector>

#include "bench/Growth.h"
#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "model/EditHistory.h"
#include "model/MacroEdit.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "platform/Text.h"
#include "review/DiskShelf.h"
#include "review/MacroBatch.h"
#include "review/MacroCheck.h"
#include "review/MacroDiff.h"
#include "review/MacroSearch.h"
#include "review/SnapshotTaking.h"

namespace tessaly::bench::review_growth_rows {
namespace {

constexpr int kTen = 1'000, kHundred = 10'000;         // commands
constexpr int kTenSteps = 100, kHundredSteps = 1'000;  // of a macro of 1,000 commands
constexpr int kTenMacros = 100, kHundredMacros = 1'000;
constexpr int kFewSent = 20, kManySent = 200;
constexpr int kSmall = 20;  // commands of one of many macros

struct Sample : FunctionSample {
  DecodingLists lists{root};
  MacroHistory history{root};
  int version = 0;

  std::string text(int commands, int value) const {
    std::string text = "<macro name=\"Growth\">\n    <data>\n";
    for (int i = 0; i < commands; ++i)
      text += command(static_cast<std::size_t>(i), i % 4 + 1, i == commands / 2 ? value : i);
    return text + "    </data>\n</macro>\n";
  }
  Macro macro(int commands, int value = 0) const {
    auto read = Macro::read(text(commands, value));
    require(read.has_value());
    return *std::move(read);
  }
  // "c:\growth100\macro000.mac" to 099.
  std::string folder(int macros) const {
    const std::string folder = format("c:\\growth%d\\", macros);
    const auto host = root.resolve(folder);
    if (!std::filesystem::exists(host)) {
      std::filesystem::create_directories(host);
      for (int number = 0; number < macros; ++number)
        std::ofstream(host / macroFileName(MacroNumber::textOf(number))) << text(kSmall, number);
    }
    return folder;
  }
};

Sample& sample() {
  static Sample made;
  return made;
}

struct Edit {
  Macro before, after;
};

// Ten small macros in turns take as much memory as the large one: else the nearest memory holds the small one
// alone.
const Edit& editOf(int commands) {
  static const auto many = [](int size, int count) {
    std::vector<Edit> edits;
    for (int number = 0; number < count; ++number)
      edits.push_back({sample().macro(size), sample().macro(size, 1)});
    return edits;
  };
  static const std::vector<Edit> small = many(kTen, kHundred / kTen), large = many(kHundred, 1);
  static std::size_t turn = 0;
  return commands == kTen ? small[turn++ % small.size()] : large.front();
}

// Each step is a change of a macro of the same size, and all of them are undone.
void step(int steps) {
  static const Macro first = sample().macro(kTen), second = sample().macro(kTen, 1);
  EditHistory row(first.check());
  for (int number = 0; number < steps; ++number) {
    const Macro& before = number % 2 == 0 ? first : second;
    const Macro& after = number % 2 == 0 ? second : first;
    row.add({"modify", {number}, {number}, byteChange(before.bytes(), after.bytes()), after.check()});
  }
  const auto bytes = row.bytesAt(0, (steps % 2 == 0 ? first : second).bytes());
  require(bytes && *bytes == first.bytes());
}

void compare(int commands) {
  const Edit& edit = editOf(commands);
  const MacroDiff diff(edit.before, edit.after, &sample().dictionary);
  require(!diff.identical());
}

void check(int commands) {
  static MacroCheck checking({sample().dictionary, sample().lists});
  const Findings findings = checking.check(editOf(commands).before);
  keep(&findings);
}

void search(int commands) {
  auto query = MacroQuery::parse("function:ME1.* source:5");
  require(query.has_value());
  MacroSearch searching(*std::move(query), {sample().dictionary, sample().lists});
  const auto hits = searching.find(editOf(commands).before);
  keep(&hits);
}

void send(int macros) {
  Sample& on = sample();
  ++on.version;
  DiskShelf shelf(on.root, on.history, on.folder(macros));
  BatchPlaces places(on.root, on.history, [&](const MacroPlace&) { return &shelf; });
  std::vector<BatchItem> items;
  for (int number = 0; number < macros; ++number)
    items.push_back({{macroFile(on.folder(macros), number), {}, 0, {}}, on.text(kSmall, on.version)});
  MacroBatch batch(places, "growth", MacroChange::kCopy, MacroBatch::Mode::kAsManyAsGo, std::move(items));
  require(batch.run().done() && batch.doneCount() == static_cast<std::size_t>(macros));
}

void snapshot(int macros) {
  Sample& on = sample();
  SnapshotTaking taking(
      {{}, on.folder(macros)}, {0},
      [&](int) { return std::make_unique<DiskShelf>(on.root, on.history, on.folder(macros)); }, {});
  const auto taken = taking.take(std::chrono::sys_seconds{}, [](const SnapshotTaking::Progress&) {});
  require(taken && taken->macros.size() == static_cast<std::size_t>(macros) &&
          saveSnapshot(on.root, "growth.zip", *taken).written());
}

const bool kRegistered[] = {
    addPair(linear("steps, one of 1,000 beside one of 100", step, kHundredSteps, kTenSteps, true)),
    addPair(linear("compare macros, a command of 10,000 beside 1,000", compare, kHundred, kTen, true)),
    addPair(linear("check a macro, a command of 10,000 beside 1,000", check, kHundred, kTen, true)),
    addPair(linear("search a macro, a command of 10,000 beside 1,000", search, kHundred, kTen, true)),
    addPair(linear("a batch on disk, a macro of 200 beside 20", send, kManySent, kFewSent)),
    addPair(
        linear("snapshot of a folder, a macro of 1,000 beside 100", snapshot, kHundredMacros, kTenMacros)),
};

}  // namespace
}  // namespace tessaly::bench::review_growth_rows
