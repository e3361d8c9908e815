#include <functional>

#include "cli/CommandJson.h"
#include "cli/Commands.h"
#include "cli/MacroWords.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kInput = "-";

// Applies to a macro file what `edit` makes of the commands in the range.
int editRange(CommandSession& session, const std::string& word, const CommandRange& range,
              const std::function<MacroEdit(std::vector<int> numbers)>& edit) {
  return session.writeTo(word, FileUse::kChange, MacroChange::kEdit, [&](const std::string& path) -> Outcome {
    Outcome inRange;
    Outcome done = changeMacroFile(session.site(), path, [&](const Macro& macro) -> Expected<Macro> {
      auto numbers = numbersIn({range}, macro.commands().size());
      if (numbers) return tessaly::apply(macro, edit(*std::move(numbers)));
      inRange = numbers.failure();
      return numbers.failure();
    });
    return inRange ? told(kNotChanged, std::move(done)) : inRange;
  });
}

}  // namespace

Expected<Macro> macroAt(CommandSession& session, const std::string& path, const std::string& shown) {
  if (isKeyFile(path)) {
    const auto key = keyAt(session.root(), path, shown);
    return key ? keyFileMacro(*key) : key.failure();
  }
  auto macro = loadMacro(session.site(), path);
  if (!macro || macro->hasData()) return macro;
  return Failure{Failure::Kind::kNoMacro, "No macro in the file: " + shown};
}

int runCopy(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, SIZE_MAX)) return session.wrongUsage(arguments.problem());
  std::vector<CommandRange> ranges;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const auto range = commandRange(arguments[i]);
    if (!range) return session.wrongUsage(kNoRange);
    ranges.push_back(*range);
  }
  return session.readFrom(arguments[0], [&](const FileOperand& file) {
    const auto macro = macroAt(session, file.path(), file.shown());
    if (!macro) return session.failed(macro.failure().text);
    const auto numbers = numbersIn(ranges, macro->commands().size());
    if (!numbers) return session.failed(numbers.failure().text);
    const auto fragment = CommandFragment::of(*macro, *numbers);
    if (!fragment)
      return session.failed(told("The commands cannot be copied: ", fragment.failure()).failure().text);
    session.out() << fragment->text();
    return isKeyFile(file.path()) && warnOfUnreadable(session, file, &*numbers) ? kExitFailed : kExitDone;
  });
}

int runPaste(CommandSession& session, Arguments& arguments) {
  const std::optional<InsertPlace> place = insertPlace(arguments.option("--at"));
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  if (!place) return session.wrongUsage(kNoPlace);
  if (arguments[0] == kInput)
    return session.wrongUsage("the commands come from standard input, so FILE must be a file");
  return session.readFrom(std::string(kInput), [&](const FileOperand& input) {
    auto text = readFile(session.root(), input.path());
    if (text && looksLikeJson(*text)) {
      const auto read = readCommands(session, *text);
      if (!read) return session.failed(read.failure().text);
      return session.writeTo(
          arguments[0], FileUse::kChange, MacroChange::kEdit, [&](const std::string& path) {
            return told(kNotChanged, insertCommands(session, path, read->commands, *place));
          });
    }
    const auto fragment =
        text ? CommandFragment::read(*std::move(text)) : Expected<CommandFragment>(text.failure());
    if (!fragment) return session.failed("Standard input " + fragment.failure().text);
    return session.writeTo(arguments[0], FileUse::kChange, MacroChange::kEdit, [&](const std::string& path) {
      return told(kNotChanged, editMacroFile(session.site(), path,
                                             InsertFragment{*fragment, place->position, place->mode}));
    });
  });
}

int runMove(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  const auto range = commandRange(arguments[1]);
  const auto before = wholeNumber(arguments.option("--to").value_or(""), 0, kMostCommandNumber);
  if (!range) return session.wrongUsage(kNoRange);
  if (!before) return session.wrongUsage("--to takes the number of a command");
  return editRange(session, arguments[0], *range, [&](std::vector<int> numbers) {
    return MoveCommands{std::move(numbers), *before};
  });
}

int runRemove(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  const auto range = commandRange(arguments[1]);
  if (!range) return session.wrongUsage(kNoRange);
  return editRange(session, arguments[0], *range,
                   [](std::vector<int> numbers) { return RemoveCommands{std::move(numbers)}; });
}

}  // namespace tessaly
