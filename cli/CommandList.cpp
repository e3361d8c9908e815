#include <algorithm>
#include <iterator>

#include "cli/Commands.h"

namespace tessaly {
namespace {

constexpr WordHelp kFileRead{"FILE", "a path of this host, or of the site with a drive letter; - reads it"};
constexpr WordHelp kFileChanged{"FILE",
                                "the macro; - reads it and writes the changed one to standard output"};
constexpr WordHelp kFileWritten{"FILE", "the macro to write, over an old one if there is one; - prints it"};
constexpr WordHelp kDestination{"--destination", "begin a line with where its command goes"};
constexpr WordHelp kRaw{"--raw", "names and values as they are stored"};
constexpr WordHelp kTabs{"--tabs", "a tab between the parts of a line"};
constexpr WordHelp kJson{"--json", "print JSON"};
constexpr WordHelp kAt{"--at start|end|N",
                       "before the first command, behind the last one, or before command N"};
constexpr WordHelp kName{"NAME", "the macro's name, in UTF-8"};
constexpr WordHelp kNumber{"N", "the number of a command; the first one is 0"};
constexpr WordHelp kRange{
    "N[-M]", "the number of a command, or of the first and the last of several; the first one is 0"};
constexpr WordHelp kFunction{"FID", "the name of a function; a destination prefix may stand in front"};

constexpr WordHelp kDictionaryWords[] = {
    {"--list [TEXT]", "the names of the functions, with TEXT those that contain it in any case"},
    {"--find WORDS", "the names of the functions that have these words, in any order, the best first"},
    {"--show FID", "the record of one function"},
    kJson,
};
constexpr WordHelp kListWords[] = {
    {"PATH", "a folder with applications; that of pane A when not given"},
    {"APPLICATION", "an application there: its control panels"},
    {"CP", "one of those: its workplaces, or its keys"},
    {"W", "the workplace whose macros are listed, 1 or 2"},
    kJson,
};
constexpr WordHelp kShowWords[] = {kFileRead, kDestination, kRaw, kTabs, kJson};
constexpr WordHelp kNameWords[] = {kFileRead};
constexpr WordHelp kRenameWords[] = {kFileChanged, kName};
constexpr WordHelp kJsonRead{"--json", "with the commands on standard input, as show --json prints them"};
constexpr WordHelp kCreateWords[] = {kFileWritten, kName, kJsonRead};
constexpr WordHelp kInsertWords[] = {
    kFileChanged,
    {"FID", "the function, with QMF1. to QMF4. or PANEL. in front"},
    {"PARAM=VALUE", "the value of a parameter, as it is stored, in UTF-8"},
    kAt,
    {"--workplace W", "the workplace of a command for the panel, 1 to 8; 1 when not given"},
    {"--force", "take values that the function cannot hold"},
    kJsonRead,
};
constexpr WordHelp kInsertClassicWords[] = {
    kFileChanged,
    {"TEXT", "the bytes, each of two hexadecimal digits and a blank, the last one too"},
    kAt,
    {"--mainframe M", "the mainframe that the command goes to, 1 to 4; 1 when not given"},
};
constexpr WordHelp kCopyWords[] = {kFileRead, kRange};
constexpr WordHelp kPasteWords[] = {{"FILE", "the macro"}, kAt};
constexpr WordHelp kMoveWords[] = {
    kFileChanged,
    kRange,
    {"--to K", "before command K as it is numbered now, behind the last one when there is none"},
};
constexpr WordHelp kRemoveWords[] = {kFileChanged, kRange};
constexpr WordHelp kSetWords[] = {
    kFileChanged,
    kNumber,
    {"VALUE", "the new value, as it is stored, in UTF-8"},
    {"--force", "take a value that the function cannot hold"},
};
constexpr WordHelp kConvertWords[] = {
    {"KEY.upk", "the key file; - reads it"},
    {"FILE.mac", "the macro to write, over an old one if there is one; - prints it"},
    kName,
};
constexpr WordHelp kCopyMacroWords[] = {
    {"SOURCE", "a macro, or a key file, which becomes a macro of its name; - reads it"},
    {"FILE", "the macro to write, over an old one if there is one; - prints it"},
    {"FOLDER", "a folder that takes macros under their own file names"},
};
constexpr WordHelp kDeleteMacroWords[] = {{"FILE", "the macro"}};
constexpr WordHelp kCompareWords[] = {
    {"A", "a folder with macros"},
    {"B", "the folder to set beside it"},
    kJson,
};
constexpr WordHelp kEffectWords[] = {{"FILE", "a macro; - reads it"}, kJson};
constexpr WordHelp kDiffWords[] = {
    {"A", "a macro; - reads it"},
    {"B", "the macro to set beside it; - reads it"},
    kJson,
};
constexpr WordHelp kCheckWords[] = {
    {"PATH", "a macro or key file, or a folder with all that is below it; - reads a macro"},
    {"--severity S", "tell findings from there on: note, warning or error; note when not given"},
    kJson,
};
constexpr WordHelp kFindWords[] = {
    {"QUERY", "words that a command must have, as \"function:ME1.* source:5 clip\"; see docs/find.md"},
    {"PATH", "a macro or key file, or a folder with all that is below it; - reads a macro"},
    kJson,
};
constexpr WordHelp kReplaceWords[] = {
    {"RULE", "what is replaced by what, as \"segment:ME1->ME2 where source:5\"; see docs/replace.md"},
    {"PATH", "a macro, or a folder with all macros below it"},
    {"--dry-run", "only tell what would be changed"},
    kJson,
};
constexpr WordHelp kSheetWords[] = {
    {"PATH", "a macro or key file, or a folder with all that is below it; - reads a macro"},
    {"--format F", "pdf, html or csv"},
    {"--paper SIZE", "a4, a5 or letter; a4 when not given"},
    {"--date DAY", "the date on the sheet, as 2026-11-25; today when not given"},
    {"--output FILE", "the file to write, over an old one if there is one; standard output when not given"},
};
constexpr WordHelp kHistoryWords[] = {
    kJson,
    {"show ID", "the command lines of a kept macro"},
    {"restore ID", "write a kept macro to where it came from"},
    {"FILE", "write it there instead; - prints it"},
    kDestination,
    kRaw,
    kTabs,
};
constexpr WordHelp kSnapshotWords[] = {
    {"FOLDER", "a folder with macros"},
    {"FILE", "the snapshot to write, over an old one if there is one; alone: to list the macros of"},
};
constexpr WordHelp kRestoreWords[] = {
    {"FILE", "the snapshot"},
    {"FOLDER", "the folder that its macros go to"},
    {"N", "the number of a macro, 0 to 999; all when not given"},
    {"--workplace W", "of a panel's snapshot: the workplace whose macros are taken, 1 to 8"},
    {"--dry-run", "only tell what would be written"},
};
constexpr WordHelp kClassicWords[] = {
    {"TEXT", "the bytes, each of two hexadecimal digits and a blank, the last one too"}, kJson};
constexpr WordHelp kValueWords[] = {
    kFunction,
    {"PARAM", "the name of a parameter of the function"},
    {"--shown TEXT", "what was typed into the value field"},
    {"--stored VALUE", "what a macro holds"},
    {"--raw", "as the field does when it shows raw values"},
    kJson,
};
constexpr WordHelp kSourceWords[] = {{"NUMBER", "0 to 255"}};
constexpr WordHelp kTimecodeWords[] = {{"PACKED", "a 32-bit number, decimal or with 0x in front"}, kJson};
constexpr WordHelp kSettingsWords[] = {
    {"--rewrite", "write back what was read"},
    {"--address-a IP", "write the panel address of pane A"},
    {"--address-b IP", "write the panel address of pane B"},
    kJson,
};
constexpr WordHelp kAddressWords[] = {{"TEXT", "what was typed into the address field"}};
constexpr WordHelp kPanelWords[] = {
    {"ADDRESS", "the address of the panel"},
    {"list [W]", "the macros of workplace W, 1 to 8; without it the workplaces that the panel has"},
    {"get W N FILE", "fetch macro N, 0 to 999, into FILE; - prints it"},
    {"put W N FILE", "send FILE as macro N; - sends standard input"},
    {"delete W N", "delete macro N"},
    {"rename W N NAME", "give macro N another name, in UTF-8"},
    {"run W N", "have the panel carry out macro N, and wait until it has"},
    {"update FILE", "write the present values of the panel into the commands of FILE"},
    {"N[-M]", "only into these; the first one is 0"},
    {"watch NAME", "print the values of these names as the panel sends them"},
    {"compare W FOLDER",
     "what differs between workplace W and a folder; exit code 0 nothing, 1 something, 2 trouble"},
    {"send W FOLDER", "send the macros of a folder, or those with the numbers N, as one batch"},
    {"replace W RULE", "change commands in the macros of workplace W, or in those with the numbers N"},
    {"snapshot FILE", "store the macros of all workplaces in FILE, over an old one if there is one"},
    {"restore FILE", "send the macros of a snapshot that the panel does not hold as they are there"},
    kJson,
    {"--force", "send or store what cannot be read as a macro, too"},
    {"--dry-run", "only tell what would be restored or changed"},
    {"--count N", "stop watching after N values"},
    {"--for SECONDS", "stop watching after that time, and fail when a name had no value until then"},
    {"--ftp-port P", "where the panel's files are reached; 21 when not given"},
    {"--control-port P", "where its values and names are; 56662 when not given"},
};
constexpr WordHelp kHelpWords[] = {{"COMMAND", "the command to explain"}};

constexpr Command kCommands[] = {
    {"dictionary", "[--list [TEXT] | --find WORDS] [--show FID] [--json]", "the panel functions of the site",
     runDictionary, kDictionaryWords},
    {"list", "[PATH [APPLICATION [CP [W]]]] [--json]",
     "the applications, control panels, workplaces or macros of the disk, each with its path", runList,
     kListWords},
    {"show", "FILE [--destination] [--raw] [--tabs] [--json]", "the command lines of a .mac or .upk file",
     runShow, kShowWords},
    {"name", "FILE", "the name of a .mac or .upk file", runName, kNameWords},
    {"rename", "FILE NAME", "give a macro another name", runRename, kRenameWords},
    {"create", "FILE [NAME] [--json]", "write an empty macro, over an old one if there is one", runCreate,
     kCreateWords},
    {"insert", "FILE FID [PARAM=VALUE ...] [--at start|end|N] [--workplace W] [--force] | FILE --json",
     "insert a function, named with its destination prefix; values as stored", runInsert, kInsertWords},
    {"insert-classic", "FILE TEXT [--at start|end|N] [--mainframe M]",
     "insert a classic command; each byte is two hexadecimal digits and a blank", runInsertClassic,
     kInsertClassicWords},
    {"copy", "FILE N[-M] ...", "print commands of a .mac or .upk file for paste to read", runCopy,
     kCopyWords},
    {"paste", "FILE [--at start|end|N]",
     "insert the commands that copy or show --json has printed, from standard input", runPaste, kPasteWords},
    {"move", "FILE N[-M] --to K", "move commands to another place", runMove, kMoveWords},
    {"remove", "FILE N[-M]", "remove commands; the first one is 0", runRemove, kRemoveWords},
    {"set", "FILE N VALUE [--force]", "overwrite the first parameter value of a command", runSet, kSetWords},
    {"convert", "KEY.upk FILE.mac NAME", "make a macro of a key file", runConvert, kConvertWords},
    {"copy-macro", "SOURCE FILE | SOURCE ... FOLDER",
     "copy macros to other numbers or folders, over what is there", runCopyMacro, kCopyMacroWords},
    {"delete-macro", "FILE ...", "delete macros, which the history keeps", runDeleteMacro, kDeleteMacroWords},
    {"effect", "FILE [--json]", "what a macro leaves behind it, value by value", runEffect, kEffectWords},
    {"compare", "A B [--json]",
     "which macros two folders do not have alike; exit code 0 none, 1 some, 2 trouble", runCompare,
     kCompareWords, kExitTrouble},
    {"diff", "A B [--json]", "what differs between two macros; exit code 0 nothing, 1 something, 2 trouble",
     runDiff, kDiffWords, kExitTrouble},
    {"check", "PATH ... [--severity S] [--json]",
     "what is wrong in macros and key files; exit code 1 with errors", runCheck, kCheckWords},
    {"find", "QUERY PATH ... [--json]",
     "where something is used in macros and key files; exit code 1 nowhere", runFind, kFindWords},
    {"replace", "RULE PATH ... [--dry-run] [--json]",
     "change commands in many macros, all or none; exit code 1 when not all that is found was changed",
     runReplace, kReplaceWords},
    {"sheet", "PATH ... --format F [--paper SIZE] [--date DAY] [--output FILE]",
     "macros on paper: commands, what the values are afterwards, findings, lines for notes", runSheet,
     kSheetWords},
    {"history", "[--json] | show ID [--destination] [--raw] [--tabs] [--json] | restore ID [FILE]",
     "what macros held before they were overwritten or deleted, newest first", runHistory, kHistoryWords},
    {"snapshot", "FOLDER FILE | FILE",
     "store the macros of a folder in one file, or list those of a snapshot", runSnapshot, kSnapshotWords},
    {"restore", "FILE FOLDER [N ...] [--workplace W] [--dry-run]",
     "put the macros of a snapshot into a folder, those that are not there as they were", runRestore,
     kRestoreWords},
    {"classic", "TEXT [--json]", "decode and describe a classic command", runClassic, kClassicWords},
    {"value", "FID PARAM (--shown TEXT | --stored VALUE) [--raw] [--json]",
     "convert a parameter value as the value field does", runValue, kValueWords},
    {"source", "NUMBER", "the name of a classic source", runSource, kSourceWords},
    {"timecode", "PACKED [--json]", "the forms of a packed timecode", runTimecode, kTimecodeWords},
    {"settings", "[--rewrite] [--address-a IP] [--address-b IP] [--json]",
     "print the settings, or read and write them", runSettings, kSettingsWords},
    {"address", "TEXT", "whether the window would connect to this panel address", runAddress, kAddressWords},
    {"panel",
     "ADDRESS (list [W] [--json] | get W N FILE | put W N FILE [--force] | delete W N | run W N |\n"
     "      rename W N NAME | update FILE [N[-M] ...] | watch NAME ... [--count N] [--for SECONDS] | compare "
     "W FOLDER [--json] |\n"
     "      send W FOLDER [N ...] [--force] | replace W RULE [N ...] [--dry-run] [--json] |\n"
     "      snapshot FILE [--force] |\n"
     "      restore FILE [W [N ...]] [--dry-run] [--force]) [--ftp-port P] [--control-port P]",
     "the macros of workplace W on a panel, or values as it sends them", runPanel, kPanelWords},
    {"help", "[COMMAND]", "what a command and its words mean", runHelp, kHelpWords},
};

// Takes the next word off that needs an explanation: an option, or one in capital letters.
constexpr std::string_view nextWord(std::string_view& usage) {
  constexpr std::string_view kBetween = " []()|=\n";
  while (!usage.empty()) {
    const std::size_t begin = std::min(usage.find_first_not_of(kBetween), usage.size());
    const std::size_t end = std::min(usage.find_first_of(kBetween, begin), usage.size());
    const std::string_view word = usage.substr(begin, end - begin);
    usage.remove_prefix(end);
    if (word.starts_with("--") || (!word.empty() && word[0] >= 'A' && word[0] <= 'Z')) return word;
  }
  return {};
}

constexpr bool names(std::string_view words, std::string_view wanted) {
  for (std::string_view word = nextWord(words); !word.empty(); word = nextWord(words)) {
    if (word == wanted) return true;
  }
  return false;
}

constexpr bool isExplained(const Command& command) {
  std::string_view usage = command.usage;
  for (std::string_view word = nextWord(usage); !word.empty(); word = nextWord(usage)) {
    if (std::none_of(command.words.begin(), command.words.end(),
                     [&](const WordHelp& row) { return names(row.word, word); }))
      return false;
  }
  return true;
}

static_assert(std::all_of(std::begin(kCommands), std::end(kCommands), isExplained),
              "a word of a usage lacks its line of help");

}  // namespace

std::span<const Command> commandTable() { return kCommands; }

const Command* commandNamed(std::string_view name) {
  const auto* const command = std::find_if(std::begin(kCommands), std::end(kCommands),
                                           [&](const Command& candidate) { return candidate.name == name; });
  return command == std::end(kCommands) ? nullptr : command;
}

}  // namespace tessaly
