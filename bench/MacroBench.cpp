#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <tinyxml.h>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "classic/ClassicDescription.h"
#include "dictionary/InterfaceFile.h"
#include "model/CommandLine.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "tests/support/LoadCommands.h"

namespace tessaly::bench::macro_rows {
namespace {

constexpr int kCommands = 10'000;
constexpr int kRun = 10;    // commands in a row whose functions are neighbours
constexpr int kRuns = 100;  // different ones
constexpr int kClassicCommands = 5'000;
constexpr int kKeywords = 40;
constexpr std::uint8_t kDevice = 0x05, kFirstCode = 0x01, kCodes = 8;
constexpr const char* kMacro = "c:\\macro.mac";

class StandardError : public Messages {
 public:
  void show(const std::string& text, MessageIcon) override { std::fprintf(stderr, "%s\n", text.c_str()); }
  bool ask(const std::string&, MessageIcon) override { return false; }
};

// A site with 100,000 functions, a macro that calls 1,000 of them with one value each, as one function at
// several destinations is entered; every eighth command a classic one, and the decoding lists for those.
struct Sample {
  SiteRoot root = siteWithInterface(100'000, 5'200'000);
  FunctionDictionary dictionary;
  DecodingLists lists{root};  // kept as long as the program runs, as in the window

  Sample() {
    const auto report = [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); };
    require(readInterfaceFile(root, "c:\\ifc.xml", FunctionSource::kPanel, dictionary, report));
    for (std::uint8_t code = kFirstCode; code < kFirstCode + kCodes; ++code) writeList(code);
    require(writeFile(root, kMacro, macroText()));
  }

  // Every keyword has two entries that differ in their values, so that a look-up has to try both.
  void writeList(std::uint8_t code) const {
    const std::string folder = "c:\\Programme\\RV48\\bin\\MacroCdCo_Tarrow\\Cd-0x05";
    std::string text = format("CD = 0x%02x\nCO = 0x%02x\n", kDevice, code);
    for (int entry = 0; entry < 2 * kKeywords; ++entry) {
      const int base = entry % 2 * 4;
      text += format("[0x%02x-0x03 \"Key %d\" \"Key function %d\"\npt_ByteEnum \"Mode\"\n", entry / 2, entry,
                     entry);
      for (int row = base; row < base + 4; ++row)
        text += format(": 0x%02x \"m%d\" \"Mode %d\"\n", row, row, row);
    }
    const std::string path = folder + format("\\Cd-0x%02x-Co-0x%02x.ini", kDevice, code);
    require(makeFolder(root, folder));
    require(writeFile(root, path, text));
  }

  static ClassicCommand classicCommand(int number, std::uint8_t code) {
    ClassicCommand command;
    const std::uint8_t mode = static_cast<std::uint8_t>(number % 8);
    command.build(0x20, kDevice, code, static_cast<std::uint8_t>(number % kKeywords), {&mode, 1});
    return command;
  }

  std::string macroText() const {
    std::string text = "<macro name=\"Bench\">\n    <data>\n";
    for (int number = 0; number < kCommands; ++number) {
      const bool classic = number % 8 == 0;
      const auto index = static_cast<std::size_t>(number / kRun % kRuns * 7919 + number % kRun);
      const std::string name =
          classic ? "NCSCOMMAND" : std::string(dictionary.name(index % dictionary.functionCount()));
      text += format("        <cmd fid=\"QMF%d.%s\" workplace=\"1\" group=\"0\" module=\"0\" widget=\"0\">\n",
                     number % 4 + 1, name.c_str());
      if (classic) {
        const auto code = static_cast<std::uint8_t>(kFirstCode + number / 8 % kCodes);
        text += format("            <param name=\"CMD\" value=\"%s\" />\n",
                       classicCommand(number, code).text().c_str());
      } else if (number % 2 == 0) {
        text += format("            <param name=\"shape\" value=\"%d\" />\n", number % 20);
      } else {
        text += format("            <param name=\"level\" value=\"0.%d\" />\n", number % 100);
      }
      text += "        </cmd>\n";
    }
    return text + "    </data>\n</macro>\n";
  }
};

Sample& sample() {
  static Sample made;
  return made;
}

void loadAndShow() {
  StandardError messages;
  MacroCommands commands;
  require(loadCommands({sample().root, messages}, kMacro, commands) && commands.size() == kCommands);
  for (const MacroCommand& command : commands) {
    const std::string line =
        commandLine(command, {.showDestination = true}, {sample().dictionary, sample().lists});
    keep(line.data());
  }
}

void bareLoad() {
  TiXmlDocument document;
  require(document.LoadFile(sample().root.resolve(kMacro).c_str()));
  keep(&document);
}

template <typename Describe>
void describeAll(const Describe& describe) {
  for (int number = 0; number < kClassicCommands; ++number) {
    const std::string text = describe(Sample::classicCommand(number, kFirstCode));
    keep(text.data());
  }
}

void describeWithSite() {
  DecodingLists lists(sample().root);
  describeAll([&](const ClassicCommand& command) { return describeClassic(command, lists); });
}

void describeWithListInHand() {
  const auto list = DecodingList::load(sample().root, kDevice, kFirstCode);
  require(list.has_value());
  describeAll([&](const ClassicCommand& command) { return describeClassic(command, &*list); });
}

void prepare() { static_cast<void>(sample()); }

const bool kRegistered[] = {
    addPair({.name = "load a macro of 10,000 commands and build its lines",
             .measured = loadAndShow,
             .limit = bareLoad,
             .goal = 1.5,
             .prepare = prepare,
             .oneThread = true}),
    addPair({.name = "describe 5,000 classic commands, list in hand as limit",
             .measured = describeWithSite,
             .limit = describeWithListInHand,
             .goal = 1.2,
             .prepare = prepare,
             .oneThread = true}),
};

}  // namespace
}  // namespace tessaly::bench::macro_rows
