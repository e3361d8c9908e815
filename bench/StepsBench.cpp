// What steps cost in memory, and their way back beside the way there.
#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <memory>

#include "bench/Table.h"
#include "model/EditHistory.h"
#include "model/MacroEdit.h"
#include "platform/Text.h"

namespace tessaly::bench::steps_rows {
namespace {

constexpr int kSteps = 1'000, kFew = 1'000, kMany = 10'000;  // commands
constexpr double kMostBytes = 4e6;

Macro macroWith(int commands) {
  std::string text = "<macro name=\"Steps\">\n    <data>\n";
  for (int number = 0; number < commands; ++number)
    text += format(
        "        <cmd fid=\"QMF1.ME1.KEY%d.CLIP.SET\" workplace=\"1\">\n"
        "            <param name=\"VALUE\" value=\"0.%d\" />\n        </cmd>\n",
        number % 4 + 1, number % 100);
  auto macro = Macro::read(text + "    </data>\n</macro>\n");
  auto printed = macro ? reprint(*macro) : macro;
  if (!printed) std::abort();
  return *std::move(printed);
}

Macro changed(const Macro& macro, const MacroEdit& edit) {
  auto after = tessaly::apply(macro, edit);
  if (!after) std::abort();
  return *std::move(after);
}

MacroEdit editOf(int number, int commands) {
  const CommandDraft draft{"QMF1.ME1.KEY1.CLIP.SET",
                           {{ParameterKind::kFloat, "VALUE", std::to_string(number)}}};
  switch (number % 3) {
    case 0:
      return ReplaceCommand{number % commands, draft, 1};
    case 1:
      return InsertCommands{{draft}, 1, number % commands, InsertMode::kAtPosition};
    default:
      return RemoveCommands{{number % commands}};
  }
}

EditStep stepOf(const Macro& before, const Macro& after) {
  return {"modify command 1", {1}, {1}, byteChange(before.bytes(), after.bytes()), after.check()};
}

// One command each.
Figures memoryOfSteps() {
  Macro macro = macroWith(kFew);
  EditHistory row(macro.check());
  for (int number = 0; number < kSteps; ++number) {
    const Macro after = changed(macro, editOf(number, kFew / 2));
    row.add(stepOf(macro, after));
    macro = after;
  }
  const std::size_t before = ::mallinfo2().uordblks;
  const auto copy = std::make_unique<EditHistory>(row);
  keep(copy.get());
  const std::size_t taken = ::mallinfo2().uordblks - before;
  return {static_cast<double>(std::max(taken, row.weight())), kMostBytes};
}

struct Large {
  Macro before = macroWith(kMany);
  Macro after = changed(before, editOf(0, kMany));
  EditHistory row{before.check()};
  Large() { row.add(stepOf(before, after)); }
};

const Large& large() {
  static const Large made;
  return made;
}

void undo() {
  auto bytes = large().row.bytesAt(0, large().after.bytes());
  const auto macro = Macro::read(bytes ? *std::move(bytes) : std::string());
  if (!macro || macro->check() != large().before.check()) std::abort();
  keep(&macro);
}

void edit() {
  const Macro after = changed(large().before, editOf(0, kMany));
  const EditStep step = stepOf(large().before, after);
  keep(&step);
}

const bool kRegistered[] = {
    addFigure({.name = "memory of 1,000 steps of one command each", .unit = "B", .take = memoryOfSteps}),
    addPair({.name = "undo one command's change in 10,000, beside the edit",
             .measured = undo,
             .limit = edit,
             .goal = 1.3,
             .prepare = [] { static_cast<void>(large()); },
             .oneThread = true}),
};

}  // namespace
}  // namespace tessaly::bench::steps_rows
