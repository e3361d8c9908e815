#pragma once

#include <span>
#include <string_view>

#include "cli/Arguments.h"
#include "cli/CommandSession.h"
#include "model/CommandLine.h"

// The commands of the program. Each takes its words and returns an exit code; it prints to the session only.
namespace tessaly {

struct Command {
  std::string_view name;
  std::string_view usage;    // the words after the name
  std::string_view summary;  // one line
  int (*run)(CommandSession& session, Arguments& arguments);
};

[[nodiscard]] std::span<const Command> commandTable();

int runDictionary(CommandSession& session, Arguments& arguments);

int runShow(CommandSession& session, Arguments& arguments);
int runName(CommandSession& session, Arguments& arguments);
int runRename(CommandSession& session, Arguments& arguments);
int runCreate(CommandSession& session, Arguments& arguments);
int runInsert(CommandSession& session, Arguments& arguments);
int runInsertClassic(CommandSession& session, Arguments& arguments);
int runRemove(CommandSession& session, Arguments& arguments);
int runSet(CommandSession& session, Arguments& arguments);
int runConvert(CommandSession& session, Arguments& arguments);

int runHistory(CommandSession& session, Arguments& arguments);

// What `show` prints of a macro or key file, given by its site path.
int showLines(CommandSession& session, const std::string& path, const LineOptions& options, bool json);
// Takes the flags of the pane's check boxes off.
[[nodiscard]] LineOptions lineOptions(Arguments& arguments);

int runClassic(CommandSession& session, Arguments& arguments);

int runValue(CommandSession& session, Arguments& arguments);
int runSource(CommandSession& session, Arguments& arguments);
int runTimecode(CommandSession& session, Arguments& arguments);

int runSettings(CommandSession& session, Arguments& arguments);

int runPanel(CommandSession& session, Arguments& arguments);
int runAddress(CommandSession& session, Arguments& arguments);

}  // namespace tessaly
