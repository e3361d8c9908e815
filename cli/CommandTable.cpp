#include "cli/CommandTable.h"

#include <algorithm>
#include <exception>
#include <istream>
#include <ostream>

#include "cli/Commands.h"
#include "platform/Installation.h"

namespace tessaly {
namespace {

constexpr std::string_view kProgram = "tessaly-cli";
constexpr std::string_view kEverywhere =
    "[--root DIR] [--help] [--version]";  // before a command and after it

void printUsage(std::ostream& stream) { stream << "usage: " << kProgram << " [--root DIR] COMMAND ...\n"; }

void printUsage(std::ostream& stream, const Command& command) {
  stream << "usage: " << kProgram << ' ' << command.name << ' ' << command.usage << '\n';
}

void printHelp(std::ostream& stream) {
  printUsage(stream);
  stream << "\nThe files and rules of Tessaly for scripts and pipes.\n\n"
         << "  --root DIR  the site; else $TESSALY_ROOT, else $XDG_DATA_HOME/tessaly\n"
         << "  -h, --help  this text, or that of a command\n"
         << "  --version   the program's version\n\n";
  for (const Command& command : commandTable()) {
    stream << "  " << command.name << ' ' << command.usage << "\n      " << command.summary << '\n';
  }
  stream
      << "\nFILE is a path of this host, or a site path with a drive letter; - is standard input or\n"
      << "output. A value may follow its option with a = or a blank; words after -- are no options.\n"
      << "Exit code: 0 done, 1 failed or answered with no, 2 wrong usage, 3 what a panel holds is unknown;\n"
      << "diff, compare and panel compare have their own.\n";
}

void printHelp(std::ostream& stream, const Command& command) {
  printUsage(stream, command);
  stream << '\n' << command.summary << "\n\n";
  std::size_t width = 0;
  for (const WordHelp& row : command.words) width = std::max(width, row.word.size());
  for (const WordHelp& row : command.words) {
    stream << "  " << row.word << std::string(width + 2 - row.word.size(), ' ') << row.meaning << '\n';
  }
}

int unknownCommand(std::ostream& errors, const std::string& name) {
  errors << "unknown command " << outputText(name) << "; try " << kProgram << " --help\n";
  printUsage(errors);
  return kExitWrongUsage;
}

// Prints what --help and --version ask for; false when neither stood there. Null is no command.
bool answered(const Arguments& arguments, const Command* command, std::ostream& out) {
  if (arguments.flag("--help")) {
    command ? printHelp(out, *command) : printHelp(out);
    return true;
  }
  if (!arguments.flag("--version")) return false;
  out << kProgram << ' ' << programVersion() << '\n';
  return true;
}

int runCommand(const Command& command, const std::string& root, Arguments& arguments,
               const ProgramStreams& streams) {
  CommandSession session(SiteRoot::fromEnvironment(root), streams);
  session.recoverBatches();
  const int result = command.run(session, arguments);
  for (const std::string& waiting : session.waitingBatches()) streams.errors << outputText(waiting) << '\n';
  // Keeping is an extra, and does not count for the exit code.
  if (const auto failure = session.history().takeFailure())
    streams.errors << "the history could not keep what was there before: " << failure->text << '\n';
  if (session.usageIsWrong()) printUsage(streams.errors, command);
  return result;
}

// Where the command's name stands; options before it are those that every command has.
std::size_t placeOfCommand(const std::vector<std::string>& words) {
  std::size_t at = 0;
  while (at < words.size() && words[at].starts_with("-")) at += words[at] == "--root" ? 2 : 1;
  return std::min(at, words.size());
}

// `broken` becomes the command's.
int run(const std::vector<std::string>& words, const ProgramStreams& streams, int& broken) {
  const auto at = words.begin() + static_cast<std::ptrdiff_t>(placeOfCommand(words));
  std::vector<OptionShape> options = optionsOf(kEverywhere);
  Arguments before({words.begin(), at}, options);
  if (answered(before, nullptr, streams.out)) return kExitDone;
  std::string root = before.option("--root").value_or("");
  const bool rootIsEmpty = before.flag("--root") && root.empty();
  if (rootIsEmpty || !before.complete(0, 0)) {
    streams.errors << (rootIsEmpty         ? "--root needs a folder"
                       : before.size() > 0 ? "unknown option " + outputText(before[0])
                                           : outputText(before.problem()))
                   << '\n';
    printUsage(streams.errors);
    return kExitWrongUsage;
  }
  if (at == words.end()) {
    printHelp(streams.errors);
    return kExitWrongUsage;
  }
  const Command* const command = commandNamed(*at);
  if (!command) return unknownCommand(streams.errors, *at);
  broken = command->broken;
  const auto own = optionsOf(command->usage);
  options.insert(options.end(), own.begin(), own.end());
  Arguments arguments({at + 1, words.end()}, options);
  if (answered(arguments, command, streams.out)) return kExitDone;
  if (const auto given = arguments.option("--root")) root = *given;
  if (arguments.flag("--root") && root.empty()) {
    streams.errors << "--root needs a folder\n";
    printUsage(streams.errors, *command);
    return kExitWrongUsage;
  }
  return runCommand(*command, root, arguments, streams);
}

}  // namespace

int runHelp(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(0, 1)) return session.wrongUsage(arguments.problem());
  if (arguments.size() == 0) {
    printHelp(session.out());
    return kExitDone;
  }
  const Command* const command = commandNamed(arguments[0]);
  if (!command) return session.wrongUsage("unknown command " + arguments[0]);
  printHelp(session.out(), *command);
  return kExitDone;
}

int runCommandLine(const std::vector<std::string>& words, std::istream& in, std::ostream& out,
                   std::ostream& errors) {
  int broken = kExitFailed;
  try {
    const int result = run(words, {in, out, errors}, broken);
    if (out.flush()) return result;
    errors << "the output cannot be written\n";
  } catch (const std::exception& problem) {
    errors << problem.what() << '\n';
  }
  return broken;
}

}  // namespace tessaly
