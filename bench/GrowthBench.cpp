// What grows with the site and what does not: the cost of a piece at a hundred times the size beside ten
// times, and the lists of a site of 1,000 applications with 50 control panels each.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

#include "bench/Growth.h"
#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "dictionary/InterfaceFile.h"
#include "model/CommandLine.h"
#include "model/FunctionFinder.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "platform/Text.h"
#include "tests/support/LoadCommands.h"

namespace tessaly::bench::growth_rows {
namespace {

constexpr int kApplications = 1000, kPanels = 50;
constexpr int kTen = 1'000, kHundred = 10'000;         // commands of a macro
constexpr int kTenFiles = 100, kHundredFiles = 1'000;  // macros of a folder
constexpr std::size_t kTenFunctions = 10'000, kHundredFunctions = 100'000;
constexpr std::size_t kBytesPerFunction = 52;
constexpr const char* kAppli = "c:\\appli\\";

class Quiet : public Messages {
 public:
  void show(const std::string&, MessageIcon) override {}
  bool ask(const std::string&, MessageIcon) override { return true; }
};

void write(const std::filesystem::path& file, const std::string& text) {
  std::filesystem::create_directories(file.parent_path());
  if (!(std::ofstream(file, std::ios::binary) << text).flush()) std::abort();
}

std::string macroWith(int commands) {
  std::string text = "<macro name=\"Growth\">\n    <data>\n";
  for (int number = 0; number < commands; ++number)
    text += format(
        "        <cmd fid=\"QMF1.ME1.KEY%d.CLIP.SET\" workplace=\"1\">\n"
        "            <param name=\"VALUE\" value=\"0.%d\" />\n        </cmd>\n",
        number % 4 + 1, number % 100);
  return text + "    </data>\n</macro>\n";
}

// Made once; the panels' folders exist in the application that is looked into.
const SiteRoot& grownSite() {
  static const SiteRoot root = [] {
    const SiteRoot made(scratchFolder() / "grown");
    const auto appli = made.path() / "c/appli";
    std::string devices = "[Devices]\n";
    for (int panel = 1; panel <= kPanels; ++panel)
      devices += format("Dev%d=CP%d \"Control panel number %d\" 10.1.1.%d\n", panel, panel, panel, panel);
    for (int number = 0; number < kApplications; ++number)
      write(appli / format("Production %04d", number) / "devices.ini", devices);
    for (int panel = 1; panel <= kPanels; ++panel)
      write(appli / "Production 0500" / format("CP%d", panel) / "assign/contents.cnt", "\n");
    for (const int files : {kTenFiles, kHundredFiles})
      for (int number = 0; number < files; ++number)
        write(made.path() / format("c/macros%d/macro%03d.mac", files, number), macroWith(20));
    for (const int commands : {kTen, kHundred})
      write(made.path() / format("c/macro%d.mac", commands), macroWith(commands));
    return made;
  }();
  return root;
}

FunctionDictionary& dictionaryOf(std::size_t functions) {
  const auto read = [](std::size_t count) {
    auto made = std::make_unique<FunctionDictionary>();
    const SiteRoot root = siteWithInterface(count, count * kBytesPerFunction);
    if (!readInterfaceFile(root, "c:\\ifc.xml", FunctionSource::kPanel, *made, [](const std::string&) {}))
      std::abort();
    made->finish();
    made->prepareFind();
    return made;
  };
  static const auto ten = read(kTenFunctions), hundred = read(kHundredFunctions);
  return functions == kTenFunctions ? *ten : *hundred;
}

void open(int commands) {
  static DecodingLists lists{grownSite()};
  Quiet messages;
  MacroCommands loaded;
  if (!loadCommands({grownSite(), messages}, format("c:\\macro%d.mac", commands), loaded)) std::abort();
  for (const MacroCommand& command : loaded) {
    const std::string line = commandLine(command, {}, {dictionaryOf(kTenFunctions), lists});
    keep(line.data());
  }
}

// A command goes and comes back, so that the file stays as it is.
void edit(int commands) {
  Quiet messages;
  const SiteAccess site{grownSite(), messages};
  const std::string file = format("c:\\macro%d.mac", commands);
  const CommandDraft draft{"QMF1.ME1.KEY1.CLIP.SET", {{ParameterKind::kFloat, "VALUE", "0.5"}}};
  if (!removeCommand(site, file, commands / 2) ||
      !insertCommand(site, file, commands / 2, draft, 1, InsertMode::kAtPosition))
    std::abort();
}

void listFiles(int files) {
  const auto listing = listMacros(grownSite(), format("c:\\macros%d\\", files));
  if (!listing || static_cast<int>(listing->rows.size()) != files) std::abort();
}

void filter(std::size_t functions) {
  static FunctionFinder ten(dictionaryOf(kTenFunctions)), hundred(dictionaryOf(kHundredFunctions));
  FunctionFinder& finder = functions == kTenFunctions ? ten : hundred;
  FinderFilters filters;
  for (const char* text : {"no such segment", "ME3"}) {
    filters[0] = text;
    keep(&finder.find(filters, false));
  }
}

void listApplications() {
  if (static_cast<int>(applications(grownSite(), kAppli).value_or({}).size()) != kApplications) std::abort();
}

void openDevicesFiles() {
  for (const auto& entry : std::filesystem::directory_iterator(grownSite().path() / "c/appli")) {
    const std::ifstream file(entry.path() / "devices.ini", std::ios::binary);
    if (!file) std::abort();
  }
}

void listPanels() {
  if (static_cast<int>(controlPanels(grownSite(), kAppli, "Production 0500").value_or({}).size()) != kPanels)
    std::abort();
}

// The devices file, the entries that it names, and the two files that tell a panel's kind, looked for
// whatever their case.
void probePanels() {
  const auto folder = grownSite().path() / "c/appli/Production 0500";
  std::ifstream devices(folder / "devices.ini", std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(devices), {}};
  keep(bytes.data());
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (!entry.is_directory()) continue;
    for (const auto& inner : std::filesystem::directory_iterator(entry.path())) keep(&inner);
    const std::ifstream contents(entry.path() / "assign/contents.cnt"), older(entry.path() / "appli_cp.ini");
    keep(&contents);
  }
}

const bool kRegistered[] = {
    addPair(linear<int>("open a macro, a command at 10,000 beside 1,000", open, kHundred, kTen)),
    addPair(linear<int>("delete and insert, a command at 10,000 beside 1,000", edit, kHundred, kTen)),
    addPair(linear<int>("list a folder, a macro at 1,000 beside 100", listFiles, kHundredFiles, kTenFiles)),
    addPair(linear<std::size_t>("filter, a function at 100,000 beside 10,000", filter, kHundredFunctions,
                                kTenFunctions)),
    addPair({.name = "list 1,000 applications, beside opening their devices files",
             .measured = listApplications,
             .limit = openDevicesFiles,
             .goal = 3,
             .prepare = [] { static_cast<void>(grownSite()); }}),
    addPair({.name = "list 50 control panels, beside opening their files",
             .measured = listPanels,
             .limit = probePanels,
             .goal = 3,
             .prepare = [] { static_cast<void>(grownSite()); }}),
};

}  // namespace
}  // namespace tessaly::bench::growth_rows
