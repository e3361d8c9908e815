#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "cli/Arguments.h"
#include "cli/CommandSession.h"
#include "model/CommandLine.h"
#include "model/Macro.h"

// The commands of the program. Each takes its words and returns an exit code; it prints to the session only.
namespace tessaly {

// What a word of a usage means, in one line.
struct WordHelp {
  std::string_view word;  // "FILE", "--at start|end|N"
  std::string_view meaning;
};

// A command: its usage is what its words are read by, what help prints and what is completed from.
struct Command {
  std::string_view name;
  std::string_view usage;    // the words after the name
  std::string_view summary;  // one line
  int (*run)(CommandSession& session, Arguments& arguments);
  std::span<const WordHelp> words;  // every word of the usage
  int broken = kExitFailed;         // the exit code when the output cannot be written, or memory is short
};

[[nodiscard]] std::span<const Command> commandTable();
// Null for a name that is none.
[[nodiscard]] const Command* commandNamed(std::string_view name);

int runHelp(CommandSession& session, Arguments& arguments);

int runDictionary(CommandSession& session, Arguments& arguments);
int runList(CommandSession& session, Arguments& arguments);

int runShow(CommandSession& session, Arguments& arguments);
int runName(CommandSession& session, Arguments& arguments);
int runRename(CommandSession& session, Arguments& arguments);
int runCreate(CommandSession& session, Arguments& arguments);
int runInsert(CommandSession& session, Arguments& arguments);
int runInsertClassic(CommandSession& session, Arguments& arguments);
int runSet(CommandSession& session, Arguments& arguments);
int runConvert(CommandSession& session, Arguments& arguments);
int runCopyMacro(CommandSession& session, Arguments& arguments);
int runDeleteMacro(CommandSession& session, Arguments& arguments);

int runCopy(CommandSession& session, Arguments& arguments);
int runPaste(CommandSession& session, Arguments& arguments);
int runMove(CommandSession& session, Arguments& arguments);
int runRemove(CommandSession& session, Arguments& arguments);

int runDiff(CommandSession& session, Arguments& arguments);
int runCompare(CommandSession& session, Arguments& arguments);
int runEffect(CommandSession& session, Arguments& arguments);
int runCheck(CommandSession& session, Arguments& arguments);
int runFind(CommandSession& session, Arguments& arguments);
int runReplace(CommandSession& session, Arguments& arguments);
int runSheet(CommandSession& session, Arguments& arguments);

int runHistory(CommandSession& session, Arguments& arguments);

int runSnapshot(CommandSession& session, Arguments& arguments);
int runRestore(CommandSession& session, Arguments& arguments);

// What `show` prints of a macro or key file, given by its site path.
int showLines(CommandSession& session, const std::string& path, const LineOptions& options, bool json);
// What can be copied from: a macro or a key file, called `shown`. The text of a failure is a sentence.
[[nodiscard]] Expected<Macro> macroAt(CommandSession& session, const std::string& path,
                                      const std::string& shown);
// Names those of the commands taken from a key file, of all for null, that nobody can read in a macro; false
// when there are none.
bool warnOfUnreadable(CommandSession& session, const FileOperand& file, const std::vector<int>* taken);
// The flags of the pane's check boxes.
[[nodiscard]] LineOptions lineOptions(const Arguments& arguments);

int runClassic(CommandSession& session, Arguments& arguments);

int runValue(CommandSession& session, Arguments& arguments);
int runSource(CommandSession& session, Arguments& arguments);
int runTimecode(CommandSession& session, Arguments& arguments);

int runSettings(CommandSession& session, Arguments& arguments);

int runPanel(CommandSession& session, Arguments& arguments);
int runAddress(CommandSession& session, Arguments& arguments);

}  // namespace tessaly
