#include "cli/CommandTable.h"

#include <algorithm>
#include <exception>
#include <ostream>

#include "cli/Commands.h"
#include "platform/Installation.h"

namespace tessaly {
namespace {

constexpr Command kCommands[] = {
    {"dictionary", "[--list [TEXT]] [--show FID] [--json]", "the panel functions of the site", runDictionary},
    {"show", "FILE [--destination] [--raw] [--tabs] [--json]", "the command lines of a .mac or .upk file",
     runShow},
    {"name", "FILE", "the name of a .mac or .upk file", runName},
    {"rename", "FILE NAME", "give a macro another name", runRename},
    {"create", "FILE NAME", "write an empty macro, over an old one if there is one", runCreate},
    {"insert", "FILE FID [PARAM=VALUE ...] [--at start|end|N] [--workplace W]",
     "insert a function, named with its destination prefix; values as stored", runInsert},
    {"insert-classic", "FILE TEXT [--at start|end|N] [--mainframe M]",
     "insert a classic command; each byte is two hexadecimal digits and a blank", runInsertClassic},
    {"remove", "FILE N", "remove a command; the first one is 0", runRemove},
    {"set", "FILE N VALUE", "overwrite the first parameter value of a command", runSet},
    {"convert", "KEY.upk FILE.mac NAME", "make a macro of a key file", runConvert},
    {"history", "[--json] | show ID [--destination] [--raw] [--tabs] [--json] | restore ID [FILE]",
     "what macros held before they were overwritten or deleted, newest first", runHistory},
    {"classic", "TEXT", "decode and describe a classic command", runClassic},
    {"value", "FID PARAM (--shown TEXT | --stored VALUE) [--raw]",
     "convert a parameter value as the value field does", runValue},
    {"source", "NUMBER", "the name of a classic source", runSource},
    {"timecode", "PACKED", "the forms of a packed timecode", runTimecode},
    {"settings", "[--rewrite] [--address-a IP] [--address-b IP]",
     "print the settings, or read and write them", runSettings},
    {"address", "TEXT", "whether the window would connect to this panel address", runAddress},
    {"panel",
     "ADDRESS (list W [--json] | get W N FILE | put W N FILE | delete W N | rename W N NAME |\n"
     "      watch NAME ... [--count N]) [--ftp-port P] [--control-port P]",
     "the macros of workplace W on a panel, or values as it sends them", runPanel},
};

constexpr std::string_view kProgram = "tessaly-cli";

void printUsage(std::ostream& stream) { stream << "usage: " << kProgram << " [--root DIR] COMMAND ...\n"; }

void printHelp(std::ostream& stream) {
  printUsage(stream);
  stream << "\nThe files and rules of Tessaly for scripts and pipes.\n\n"
         << "  --root DIR  the site; else $TESSALY_ROOT, else $XDG_DATA_HOME/tessaly\n"
         << "  --help      this text, or the usage of a command\n"
         << "  --version   the program's version\n\n";
  for (const Command& command : commandTable()) {
    stream << "  " << command.name << ' ' << command.usage << "\n      " << command.summary << '\n';
  }
  stream
      << "\nFILE is a path of this host, or a site path with a drive letter. Words after -- are no options.\n"
      << "Exit code: 0 done, 1 failed, 2 wrong usage.\n";
}

void printUsage(std::ostream& stream, const Command& command) {
  stream << "usage: " << kProgram << ' ' << command.name << ' ' << command.usage << '\n';
}

int runCommand(const Command& command, const std::string& root, std::vector<std::string> words,
               std::ostream& out, std::ostream& errors) {
  Arguments arguments(std::move(words));
  if (arguments.flag("--help")) {
    printUsage(out, command);
    return kExitDone;
  }
  CommandSession session(SiteRoot::fromEnvironment(root), out, errors);
  const int result = command.run(session, arguments);
  // Keeping is an extra, and does not count for the exit code.
  if (const auto failure = session.history().takeFailure())
    errors << "the history could not keep what was there before: " << failure->text << '\n';
  if (result == kExitWrongUsage) printUsage(errors, command);
  return result;
}

int run(const std::vector<std::string>& words, std::ostream& out, std::ostream& errors) {
  std::string root;
  auto word = words.begin();
  for (; word != words.end() && word->starts_with("-"); ++word) {
    if (*word == "--help") {
      printHelp(out);
      return kExitDone;
    }
    if (*word == "--version") {
      out << kProgram << ' ' << programVersion() << '\n';
      return kExitDone;
    }
    if (*word != "--root" || word + 1 == words.end() || (word + 1)->empty()) {
      errors << (*word == "--root" ? "--root needs a folder" : "unknown option " + *word) << '\n';
      printUsage(errors);
      return kExitWrongUsage;
    }
    root = *++word;
  }
  if (word == words.end()) {
    printHelp(errors);
    return kExitWrongUsage;
  }
  const auto commands = commandTable();
  const auto command = std::find_if(commands.begin(), commands.end(),
                                    [&](const Command& candidate) { return candidate.name == *word; });
  if (command == commands.end()) {
    errors << "unknown command " << *word << "; try " << kProgram << " --help\n";
    printUsage(errors);
    return kExitWrongUsage;
  }
  return runCommand(*command, root, {word + 1, words.end()}, out, errors);
}

}  // namespace

std::span<const Command> commandTable() { return kCommands; }

int runCommandLine(const std::vector<std::string>& words, std::ostream& out, std::ostream& errors) {
  try {
    const int result = run(words, out, errors);
    if (out.flush()) return result;
    errors << "the output cannot be written\n";
  } catch (const std::exception& problem) {
    errors << problem.what() << '\n';
  }
  return kExitFailed;
}

}  // namespace tessaly
