// From the start of the process until the window can be used, and what the idle program holds in memory.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "bench/Table.h"
#include "bench/window/Children.h"
#include "bench/window/WindowSite.h"
#include "dictionary/InterfaceFile.h"

namespace tessaly::bench {
namespace {

// Starts a program of this build and returns the bytes that it told of when it was ready.
long untilReady(const std::string& command) {
  FILE* child = popen(command.c_str(), "r");
  long bytes = 0;
  if (child == nullptr || std::fscanf(child, "ready %ld", &bytes) != 1 || pclose(child) != 0) {
    std::fprintf(stderr, "did not start: %s\n", command.c_str());
    std::exit(1);
  }
  return bytes;
}

std::string startOf(const char* mode, const SiteRoot& root) {
  return "exec " + programFolder() + "/tessaly-bench " + mode + " '" + root.path().string() + "'";
}

long startDialog() {
  return untilReady("QT_QPA_PLATFORM=offscreen exec " + programFolder() + "/tessaly-bench-dialog");
}
long startWindow(const SiteRoot& root) { return untilReady(startOf(kStartWindow, root)); }

Figures idleMemory(const SiteRoot& root) {
  const long beyond = untilReady(startOf(kIdleWindow, root)) - startDialog();
  const auto size = [&root](std::string_view path) {
    return static_cast<double>(std::filesystem::file_size(root.resolve(path)));
  };
  return {static_cast<double>(beyond), size(kOlderFamilyInterface) + size(kPanelInterface)};
}

const bool kRegistered[] = {
    addPair({.name = "start on the sample site until usable, beside an empty dialog",
             .measured = [] { startWindow(windowSite()); },
             .limit = [] { startDialog(); },
             .goal = 2,
             .prepare = [] { static_cast<void>(windowSite()); }}),
    addPair({.name = "start on 20 MB, 400,000 functions, beside LoadFile of both files",
             .measured = [] { startWindow(largeInterfaceSite()); },
             .limit = [] { untilReady(startOf(kLoadFiles, largeInterfaceSite())); },
             .goal = 1.2,
             .prepare = [] { static_cast<void>(largeInterfaceSite()); }}),
    addFigure({.name = "idle memory beyond a dialog, sample site, beside its interface files",
               .unit = "B",
               .take = [] { return idleMemory(windowSite()); },
               .goal = 6}),
    addFigure({.name = "idle memory beyond a dialog, 20 MB, beside its interface files",
               .unit = "B",
               .take = [] { return idleMemory(largeInterfaceSite()); },
               .goal = 6}),
};

}  // namespace
}  // namespace tessaly::bench
