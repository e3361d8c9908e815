#include <algorithm>
#include <optional>
#include <vector>

#include "dictionary/InterfaceFile.h"
#include "fuzz/Fuzzing.h"
#include "model/CommandLine.h"
#include "model/MacroFile.h"
#include "model/MacroNameScan.h"
#include "platform/Text.h"
#include "platform/XmlFile.h"
#include "tests/support/LoadCommands.h"

// A macro file, then operations on it: the file's bytes up to a NUL, and for each operation a byte that tells
// which one, a byte for a command number, and a text. After each the file holds what a plain list of commands
// says.
namespace tessaly {
namespace {

constexpr const char* kFile = "c/m.mac";
constexpr const char* kPath = "c:\\m.mac";
constexpr const char* kSecondFile = "c/n.mac";
constexpr const char* kSecondPath = "c:\\n.mac";
constexpr int kMostOperations = 8;

struct Context {
  Context() {
    loadFunctionDictionary(sample, dictionary, [](const std::string&) {});
  }
  ScratchSite site;
  const SiteRoot sample{TESSALY_SAMPLE_SITE};
  FunctionDictionary dictionary;
  DecodingLists lists{sample};
};

Context& context() {
  static Context one;
  return one;
}

MacroCommands commandsOf(const char* path) {
  MacroCommands commands;
  static_cast<void>(loadCommands(context().site.access(), path, commands));
  return commands;
}

void checkLines(const MacroCommands& commands) {
  const LineContext lines{context().dictionary, context().lists};
  for (const MacroCommand& command : commands) {
    for (const bool raw : {false, true}) {
      for (const bool tabs : {false, true}) {
        const std::string plain = commandLine(command, {false, raw, tabs}, lines);
        const std::string destination = commandLine(command, {true, raw, tabs}, lines);
        require(destination.ends_with(plain), "a destination only stands before a line");
        require(isValidUtf8(destination), "a line is UTF-8 whatever the file is");
        require(commandLine(command, {false, raw, tabs}, lines, true).starts_with(plain),
                "\"updated\" only stands behind a line");
      }
    }
  }
}

// The record that insertion of a draft with these two parameters gives.
MacroCommand recordOf(const CommandDraft& draft, int workplace) {
  MacroCommand record;
  record.fid = draft.fid;
  record.workplace = std::to_string(workplace);
  record.group = record.module = record.widget = "0";
  for (const CommandDraft::Parameter& parameter : draft.parameters) {
    if (parameter.optional && parameter.value.empty()) continue;
    record.parameters.push_back({parameter.name, parameter.value});
  }
  return record;
}

void insertInto(MacroCommands& commands, MacroCommand record, int position, InsertMode mode) {
  const std::size_t at = mode == InsertMode::kAtStart ? 0 : static_cast<std::size_t>(position);
  const bool append = mode == InsertMode::kAppend || at >= commands.size();
  commands.insert(append ? commands.end() : commands.begin() + static_cast<std::ptrdiff_t>(at),
                  std::move(record));
}

// True when `after` differs from `before` in one value at most, which is then `value`.
bool oneValueSet(const MacroCommands& before, MacroCommands after, const std::string& value) {
  int changes = 0;
  for (std::size_t i = 0; i < before.size() && i < after.size(); ++i) {
    auto& parameters = after[i].parameters;
    for (std::size_t k = 0; k < parameters.size() && k < before[i].parameters.size(); ++k) {
      if (parameters[k].value == before[i].parameters[k].value) continue;
      if (parameters[k].value != value) return false;
      parameters[k] = before[i].parameters[k];
      ++changes;
    }
  }
  return changes <= 1 && before == after;
}

class Run {
 public:
  Run(FuzzInput& input, MacroCommands commands) : input_(input), expected_(std::move(commands)) {}

  void operation() {
    const std::uint8_t kind = input_.byte();
    number_ = input_.byte() % 16;
    text_ = nextText();
    const bool usable = hasData();
    switch (kind % 7) {
      case 0:
        insert(kind, usable);
        break;
      case 1:
        appendClassic(kind, usable);
        break;
      case 2:
        remove();
        break;
      case 3:
        set();
        break;
      case 4:
        rename();
        break;
      case 5:
        hold();
        break;
      case 6:
        replace();
        break;
    }
    require(commandsOf(kPath) == expected_, "the file holds the commands that the operation leaves");
  }

 private:
  // Without a macro or its data nothing can be inserted.
  static bool hasData() {
    MacroCommands commands;
    return loadCommands(context().site.access(), kPath, commands);
  }

  std::string nextText() { return displayUtf8(input_.text()); }

  // Whether the file's encoding has the letters of all texts that the draft stores.
  static bool holds(const CommandDraft& draft) {
    bool held = holds(draft.fid);
    for (const CommandDraft::Parameter& parameter : draft.parameters)
      held = held && ((parameter.optional && parameter.value.empty()) ||
                      (holds(parameter.name) && holds(parameter.value)));
    return held;
  }

  static bool holds(const std::string& text) {
    XmlDocument document;
    require(parseXml(context().site.bytes(kFile), document).done(), "what was written can be parsed");
    return document.spelling(text).has_value();
  }

  void insert(std::uint8_t kind, bool usable) {
    const CommandDraft draft{text_,
                             {{ParameterKind::kEnum, nextText(), text_, (kind & 64) != 0},
                              {ParameterKind::kFloat, text_, nextText(), true}}};
    const auto mode = static_cast<InsertMode>((kind / 7) % 3);
    const bool done = insertCommand(context().site.access(), kPath, number_, draft, number_, mode).done();
    require(done == (usable && holds(draft)),
            "a command goes into every file with data that holds its texts");
    if (done) insertInto(expected_, recordOf(draft, number_), number_, mode);
  }

  void appendClassic(std::uint8_t kind, bool usable) {
    ClassicCommand command;
    command.build(kind, static_cast<std::uint8_t>(number_), 1, 2,
                  {reinterpret_cast<const std::uint8_t*>(text_.data()), text_.size()});
    const auto mode = static_cast<InsertMode>((kind / 7) % 3);
    const bool done = appendClassicCommand(context().site.access(), kPath, number_, command, mode,
                                           Destination::mainframe(2))
                          .done();
    require(done == usable, "a classic command goes into every file with data");
    const CommandDraft draft{"QMF2.NCSCOMMAND", {{ParameterKind::kEnum, "CMD", command.text(), false}}};
    if (done) insertInto(expected_, recordOf(draft, 1), number_, mode);
  }

  void remove() {
    const std::string before = context().site.bytes(kFile);
    const bool done = removeCommand(context().site.access(), kPath, number_).done();
    require(done == (static_cast<std::size_t>(number_) < expected_.size()), "exactly a command is removed");
    if (done) {
      expected_.erase(expected_.begin() + number_);
    } else {
      require(context().site.bytes(kFile) == before, "a refused removal leaves the file");
    }
  }

  void replace() {
    const CommandDraft draft{text_, {{ParameterKind::kInteger, nextText(), text_, true}}};
    const bool done = editMacroFile(context().site.access(), kPath, ReplaceCommand{number_, draft, 3}).done();
    const auto number = static_cast<std::size_t>(number_);
    require(done == (number < expected_.size() && holds(draft)), "exactly a command is replaced");
    if (done) expected_[number] = recordOf(draft, 3);
  }

  void set() {
    const bool done = setCommandValue(context().site.access(), kPath, number_, text_).done();
    take(done);
  }

  // What an edit tells of its result is what a load of it gives.
  void hold() {
    const auto macro = readMacro(context().site.root, kPath);
    require(macro.has_value(), "a loaded file can be read again");
    const auto edited = apply(*macro, SetValues{{{number_, text_}}});
    if (!edited) return;
    const auto again = Macro::read(edited->bytes());
    require(again && again->commands() == edited->commands(),
            "the commands of an edit are those of its bytes");
    require(saveMacro(context().site.root, kPath, *edited).done(), "an edited macro is saved");
    take(true);
  }

  void take(bool done) {
    const MacroCommands after = commandsOf(kPath);
    require(done ? oneValueSet(expected_, after, text_) : expected_ == after, "one value is set, or none");
    expected_ = after;
  }

  void rename() {
    const std::string before = context().site.bytes(kFile);
    std::string name = text_;
    if (!renameMacro(context().site.access(), kPath, name)) {
      require(context().site.bytes(kFile) == before, "a refused renaming leaves the file");
      return;
    }
    require(readMacroName(context().site.access(), kPath, name), "a renamed macro has a name");
    require(name == text_, "a name is read as it was given");
  }

  FuzzInput& input_;
  MacroCommands expected_;
  int number_ = 0;
  std::string text_;
};

// Every operation on a file that does not parse fails, says so, and leaves the file.
void checkRefused(const std::string& bytes) {
  ScratchSite& site = context().site;
  std::string name;
  MacroCommands commands(1);
  const std::size_t shown = site.shown;
  require(!loadCommands(site.access(), kPath, commands) && commands.size() == 1 &&
              !readMacroName(site.access(), kPath, name) && name == "???" &&
              !renameMacro(site.access(), kPath, name) &&
              !insertCommand(site.access(), kPath, 0, {}, 1, InsertMode::kAppend) &&
              !removeCommand(site.access(), kPath, 0) && !setCommandValue(site.access(), kPath, 0, "1"),
          "nothing can be done with a file that does not parse");
  require(site.shown == shown + 6, "each failure is reported once");
  require(site.bytes(kFile) == bytes, "a file that does not parse is left alone");
}

// Nothing is written of a file that saving would change elsewhere.
void checkNotKept(const std::string& bytes) {
  ScratchSite& site = context().site;
  std::string name;
  require(!renameMacro(site.access(), kPath, name) &&
              !insertCommand(site.access(), kPath, 0, {}, 1, InsertMode::kAppend) &&
              !editMacroFile(site.access(), kPath, ReplaceCommand{0, {}, 1}) &&
              !removeCommand(site.access(), kPath, 0) && !setCommandValue(site.access(), kPath, 0, "1"),
          "no operation saves what it cannot keep");
  require(site.bytes(kFile) == bytes, "a file that cannot be kept is left alone");
}

void run(FuzzInput input) {
  ScratchSite& site = context().site;
  const std::string bytes(input.text());
  site.put(kFile, bytes);
  if (const auto scanned = scanMacroName(bytes)) {
    std::string name;
    require(readMacroName(site.access(), kPath, name) && name == *scanned,
            "the tree has the name that was seen");
  }
  const auto macro = readMacro(site.root, kPath);
  if (!macro) {
    checkRefused(bytes);
    return;
  }
  const MacroCommands commands = commandsOf(kPath);
  require(site.bytes(kFile) == bytes, "loading leaves the file alone");
  checkLines(commands);
  const auto printed = reprint(*macro);
  if (!printed) {
    checkNotKept(bytes);
    return;
  }
  require(saveMacro(site.root, kSecondPath, *printed).done(), "a printed macro is saved");
  require(commandsOf(kSecondPath) == commands, "saved and loaded commands are the same");
  std::string name, savedName;
  const bool named = readMacroName(site.access(), kPath, name);
  require(readMacroName(site.access(), kSecondPath, savedName) == named && savedName == name,
          "a saved name is the same");
  const std::string once = site.bytes(kSecondFile);
  const auto again = reprint(*printed);
  require(again && again->bytes() == once, "what was saved once is saved the same again");
  require(commandsOf(kSecondPath) == commands, "commands saved twice are the same");

  Run operations(input, commands);
  for (int i = 0; i < kMostOperations && !input.empty(); ++i) operations.operation();
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
