#include <chrono>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/MacroCheck.h"
#include "review/MacroEffect.h"
#include "review/MacroSearch.h"
#include "review/SheetReading.h"

namespace tessaly::bench::review_rows {
namespace {

constexpr int kCommands = 100;  // a macro
constexpr int kMostMacros = 3'000;

// A studio's macros: 3,000 of 100 commands, of some thousand functions at several destinations with one value
// each.
struct Sample : FunctionSample {
  DecodingLists lists{root};
  int macros = quick() ? kMostMacros / 10 : kMostMacros;

  Sample() {
    require(makeFolder(root, "c:\\review"));
    for (int number = 0; number < macros; ++number) require(writeFile(root, path(number), text(number)));
  }

  static std::string path(int number) { return format("c:\\review\\macro%04d.mac", number); }

  std::string text(int number) const {
    std::string text = format("<macro name=\"Macro %d\">\n    <data>\n", number);
    for (int i = 0; i < kCommands; ++i)
      text += command(static_cast<std::size_t>(number % 60 * 997 + i), number % 4 + 1, number * 7 + i);
    return text + "    </data>\n</macro>\n";
  }

  template <typename Use>
  void load(const Use& use) const {
    for (int number = 0; number < macros; ++number) {
      const auto macro = readMacro(root, path(number));
      require(macro.has_value());
      use(*macro);
    }
  }
};

Sample& sample() {
  static Sample made;
  return made;
}

void prepare() { static_cast<void>(sample()); }

void loadAll() {
  sample().load([](const Macro& macro) { keep(&macro); });
}

void checkAll() {
  MacroCheck check({sample().dictionary, sample().lists});
  std::size_t findings = 0;
  sample().load([&](const Macro& macro) { findings += check.check(macro).size(); });
  keep(&findings);
}

void findAll(const char* text) {
  auto query = MacroQuery::parse(text);
  require(query.has_value());
  MacroSearch search(*std::move(query), {sample().dictionary, sample().lists});
  std::size_t hits = 0;
  sample().load([&](const Macro& macro) { hits += search.find(macro).size(); });
  keep(&hits);
}

// One long macro, in which every command is of another function, and its lines.
constexpr std::size_t kManyCommands = 10'000;

const MacroCommands& manyCommands() {
  static const Macro made = [] {
    std::string text = "<macro name=\"Many\"><data>";
    for (std::size_t i = 0; i < kManyCommands; ++i) text += sample().command(i, 1, static_cast<int>(i % 10));
    auto macro = Macro::read(text + "</data></macro>");
    require(macro.has_value());
    return *std::move(macro);
  }();
  return made.commands();
}

void buildLines() {
  for (const MacroCommand& command : manyCommands()) {
    const std::string line = commandLine(command, {}, {sample().dictionary, sample().lists});
    keep(&line);
  }
}

void replayAll() {
  const MacroEffect effect(manyCommands(), {sample().dictionary, sample().lists});
  keep(&effect);
}

// From the macro's bytes to those of its sheet, findings and effect included; a second at the most.
Figures sheetOfThousand() {
  constexpr std::size_t kThousand = 1'000;
  std::string text = "<macro name=\"Thousand\"><data>";
  for (std::size_t i = 0; i < kThousand; ++i) text += sample().command(i, 1, static_cast<int>(i % 10));
  text += "</data></macro>";
  return {secondsOf([&] {
            SheetReading reading({sample().dictionary, sample().lists}, {});
            const Sheet sheet{"Thousand", false, {reading.read({}, "macro007.mac", text)}};
            const auto bytes = writeSheet(
                sheet, {.date = {std::chrono::year(2026), std::chrono::month(3), std::chrono::day(14)}}, {},
                SheetFormat::kPdf);
            require(bytes && sheet.macros[0].commands.size() == kThousand);
            keep(&*bytes);
          }),
          1};
}

Pair beside(const char* name, std::function<void()> measured, double goal) {
  return {.name = name,
          .measured = std::move(measured),
          .limit = loadAll,
          .goal = goal,
          .prepare = prepare,
          .oneThread = true};
}

const bool kRegistered[] = {
    addPair(beside("read and check 3,000 macros of 100 commands, reading as limit", checkAll, 1.5)),
    addPair({.name = "effect of 10,000 commands, building their lines as limit",
             .measured = replayAll,
             .limit = buildLines,
             .goal = 2,
             .prepare = [] { static_cast<void>(manyCommands()); },
             .oneThread = true}),
    addFigure({.name = "sheet of 1,000 commands as PDF, a second as limit",
               .unit = kSeconds,
               .take = sheetOfThousand}),
    addPair(beside(
        "read and search them for a function and a source", [] { findAll("function:ME1.* source:5"); }, 1.2)),
    addPair(beside(
        "read and search them for a text of the lines", [] { findAll("no such text"); }, 1.2)),
};

}  // namespace
}  // namespace tessaly::bench::review_rows
