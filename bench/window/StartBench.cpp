// From the start of the process until the window can be used, and what the idle program holds in memory.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/Table.h"
#include "bench/start/Ready.h"
#include "bench/window/WindowSite.h"
#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"
#include "tests/support/SampleSite.h"

namespace tessaly::bench::start_rows {
namespace {

constexpr const char* kFiles = "--files";

// What a program told of when it was ready.
struct Started {
  long bytes = 0;
  int shown = 0, hidden = 0;  // widgets
};

// Starts a program of this build.
Started untilReady(const std::string& command) {
  FILE* child = popen(command.c_str(), "r");
  Started told;
  if (child == nullptr ||
      std::fscanf(child, "ready %ld %d %d", &told.bytes, &told.shown, &told.hidden) != 3 ||
      pclose(child) != 0) {
    std::fprintf(stderr, "did not start: %s\n", command.c_str());
    std::exit(1);
  }
  return told;
}

// On a screen that has room for the window, which is else made as small as the screen, with bars to scroll
// it.
std::string screenOfADesk() {
  const auto file = scratchFolder() / "screen.json";
  std::ofstream(file) << R"({"screens": [{"name": "desk", "x": 0, "y": 0, "width": 1920, "height": 1080,
                             "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
  return file.string();
}

std::string program(const char* name) {
  static const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  static const std::string platform = "QT_QPA_PLATFORM='offscreen:configfile=" + screenOfADesk() + "' exec ";
  return platform + (folder / name).string();
}

Started startDialog(const std::string& widgets = {}) {
  return untilReady(program("tessaly-bench-dialog") + widgets);
}

// With an option: those of that program.
Started startWindow(const SiteRoot& root, const std::string& option = {}) {
  return untilReady(program("tessaly-bench-start ") + option + " '" + root.path().string() + "'");
}

// Nobody has worked on it.
const SiteRoot& sampleSite() {
  static const SiteRoot site = [] {
    const SiteRoot root(scratchFolder() / "start");
    std::filesystem::create_directories(root.path());
    copySampleSite(root);
    return root;
  }();
  return site;
}

// A window of the toolkit's own widgets, the same as the main window has: what is left is the program's part.
// With an option: that of the dialog.
Started startSameWidgets(const std::string& option = {}) {
  static const std::string list = (scratchFolder() / "widgets").string();
  static const Started window = startWindow(sampleSite(), "'--list=" + list + '\'');
  const Started same = startDialog(' ' + option + " '" + list + '\'');
  if (same.shown != window.shown || same.hidden != window.hidden) {
    std::fprintf(stderr, "not the same widgets: %d shown, %d hidden, and %d, %d\n", window.shown,
                 window.hidden, same.shown, same.hidden);
    std::exit(1);
  }
  return same;
}

// A dialog with as many labels as the main window has widgets, as many of them shown.
Started startLabels() {
  static const Started window = startWindow(sampleSite());
  return startDialog(format(" %d %d", window.shown, window.hidden));
}

Figures idleMemory(const SiteRoot& root) {
  const long beyond = startWindow(root, kRest).bytes - startDialog().bytes;
  return {static_cast<double>(beyond), static_cast<double>(interfaceBytes(root))};
}

// The names are what a person can look for, whatever the files' way to write them down.
Figures idleMemoryBeyondSameWidgets() {
  const SiteRoot& root = sampleSite();
  FunctionDictionary dictionary;
  loadFunctionDictionary(root, dictionary, [](const std::string&) {});
  double names = 0;
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i)
    names += static_cast<double>(dictionary.function(i).name().size());
  const long beyond = startWindow(root, kRest).bytes - startSameWidgets(kRest).bytes;
  return {static_cast<double>(beyond), names + static_cast<double>(interfaceBytes(root))};
}

const bool kRegistered[] = {
    addPair({.name = "start on the sample site until usable, beside an empty dialog",
             .measured = [] { startWindow(sampleSite()); },
             .limit = [] { startDialog(); },
             .goal = 2,
             .prepare = [] { static_cast<void>(sampleSite()); }}),
    addPair({.name = "the same, beside a dialog of as many labels with texts",
             .measured = [] { startWindow(sampleSite()); },
             .limit = [] { startLabels(); },
             .goal = 1.3,
             .prepare = [] { startLabels(); }}),
    addPair({.name = "the same, beside a window of the same widgets with their texts",
             .measured = [] { startWindow(sampleSite()); },
             .limit = [] { startSameWidgets(); },
             .goal = 1.3,
             .prepare = [] { startSameWidgets(); }}),
    addPair({.name = "start on 20 MB, 400,000 functions, beside LoadFile of both files",
             .measured = [] { startWindow(largeInterfaceSite()); },
             .limit = [] { startWindow(largeInterfaceSite(), kFiles); },
             .goal = 1.2,
             .prepare = [] { static_cast<void>(largeInterfaceSite()); }}),
    addFigure({.name = "idle memory beyond a dialog, sample site, beside its interface files",
               .unit = "B",
               .take = [] { return idleMemory(sampleSite()); },
               .goal = 6}),
    addFigure({.name = "the same beyond a window of the same widgets, beside names and files",
               .unit = "B",
               .take = idleMemoryBeyondSameWidgets,
               .goal = 2}),
    addFigure({.name = "idle memory beyond a dialog, 20 MB, beside its interface files",
               .unit = "B",
               .take = [] { return idleMemory(largeInterfaceSite()); },
               .goal = 6}),
};

}  // namespace
}  // namespace tessaly::bench::start_rows
