#include "dictionary/FunctionDictionary.h"
#include "fuzz/Fuzzing.h"
#include "model/CommandLine.h"
#include "model/KeyFile.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "tests/support/LoadCommands.h"

// A key file, its lines, and the macro that it is converted to.
namespace tessaly {
namespace {

constexpr const char* kKeyPath = "c:\\key03.upk";
constexpr const char* kMacroPath = "c:\\m.mac";
constexpr std::size_t kTextLimit = 27;  // parameter bytes up to which a command's text can be read back

struct Context {
  Context() {
    std::filesystem::create_directories(site.root.path() / "c/programme/RV48/bin/MacroFid");
    site.put("c/programme/RV48/bin/MacroFid/emptyMacro.mac", "<macro name=\"\"><data></data></macro>");
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

void checkCommand(const ClassicCommand& command) {
  for (const bool destination : {false, true}) {
    for (const bool raw : {false, true}) {
      const std::string line =
          keyCommandLine(command, {destination, raw, false}, {context().dictionary, context().lists});
      require(!line.empty() && line.find('|') == line.npos, "a key's line has no separator of the list");
    }
  }
}

void checkConverted(const KeyFile& key, const MacroCommands& commands) {
  require(commands.size() == key.commands().size(), "every command of a key is converted");
  for (std::size_t i = 0; i < commands.size(); ++i) {
    const ClassicCommand& source = key.commands()[i];
    require(commands[i].classic() && commands[i].destination() == "QMF1" &&
                commands[i].parameters.size() == 1 && commands[i].parameters[0].value == source.text(),
            "a converted command has the text of the key's");
    ClassicCommand read;
    const bool readable = read.decodeText(commands[i].parameters[0].value);
    if (source.valid() && !source.longForm() && source.parameters().size() <= kTextLimit) {
      require(readable && read.text() == source.text(), "a converted command can be read");
    }
  }
}

void run(std::string_view bytes) {
  ScratchSite& site = context().site;
  KeyFile key;
  key.parse(bytes);
  require(key.lastIndex() < KeyFile::kMostCommands, "a key's commands are bounded");
  require(key.name().find('\n') == std::string::npos, "a name is one line");
  for (const ClassicCommand& command : key.commands()) checkCommand(command);

  site.put("c/key03.upk", bytes);
  KeyFile loaded;
  loaded.load(site.root, kKeyPath, keyFileIndex(kKeyPath));
  require(loaded.name() == key.name() && loaded.commands().size() == key.commands().size(),
          "a file holds what its bytes say");
  for (const MacroRow& row : listKeyFiles(site.root, "c:\\").value_or({})) {
    require(row.number == 3 && row.shownName().find('\n') == std::string::npos,
            "a key is listed by its number");
  }

  require(convertKeyFile(site.access(), "Key", kMacroPath, kKeyPath).done(), "every key can be converted");
  MacroCommands commands;
  require(loadCommands(site.access(), kMacroPath, commands), "a converted macro can be loaded");
  checkConverted(key, commands);
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({reinterpret_cast<const char*>(data), size});
  return 0;
}
