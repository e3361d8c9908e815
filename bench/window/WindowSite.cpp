#include "bench/window/WindowSite.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"
#include "tests/support/SampleSite.h"

namespace tessaly::bench {

namespace {

constexpr int kSmallCommands = 20;
constexpr std::size_t kStep = 7;  // so that neighbours are of different templates

// Without the care that the program takes with files: a sample need not outlive a power cut.
void write(const SiteRoot& root, std::string_view path, const std::string& text) {
  const auto file = root.resolve(path);
  std::filesystem::create_directories(file.parent_path());
  require(static_cast<bool>((std::ofstream(file, std::ios::binary) << text).flush()));
}

SiteRoot makeWindowSite() {
  const SiteRoot root(scratchFolder() / "window");
  std::filesystem::create_directories(root.path());
  copySampleSite(root);
  FunctionDictionary dictionary;
  loadFunctionDictionary(root, dictionary, [](const std::string&) { require(false); });
  const std::string folder = std::string("c:\\programme\\rv48\\appli\\") + kApplication;
  write(root, folder + "\\devices.ini",
        "[Application]\nName=Bench\n\n[Devices]\nDev1=CP1 \"Desk\" 10.1.1.1\n");
  write(root, folder + "\\CP1\\assign\\contents.cnt", "\n");
  const std::string small = macroOf(dictionary, kSmallCommands);
  for (int number = 0; number < kMacros; ++number)
    write(root, format("%smacro%03d.mac", kSmallMacros, number), small);
  write(root, std::string(kLargeMacros) + "macro000.mac", macroOf(dictionary, kCommands));
  return root;
}

SiteRoot makeLargeInterfaceSite() {
  constexpr std::size_t kHalf = 200'000, kHalfBytes = 10'000'000;
  const SiteRoot root(scratchFolder() / "large-interface");
  write(root, kOlderFamilyInterface, interfaceSample(kHalf, kHalfBytes));
  write(root, kPanelInterface, interfaceSample(kHalf, kHalfBytes));
  return root;
}

}  // namespace

std::string macroOf(const FunctionDictionary& dictionary, int count) {
  std::string text = "<macro name=\"Bench\">\n    <data>\n";
  for (int number = 0; number < count; ++number) {
    const auto function =
        dictionary.function(static_cast<std::size_t>(number) * kStep % dictionary.functionCount());
    text += format("        <cmd fid=\"QMF%d.%s\" workplace=\"1\" group=\"0\" module=\"0\" widget=\"0\">\n",
                   number % 4 + 1, std::string(function.name()).c_str());
    text += format("            <param name=\"VALUE\" value=\"0.%d\" />\n        </cmd>\n", number % 100);
  }
  return text + "    </data>\n</macro>\n";
}

const SiteRoot& windowSite() {
  static const SiteRoot root = makeWindowSite();
  return root;
}

const SiteRoot& largeInterfaceSite() {
  static const SiteRoot root = makeLargeInterfaceSite();
  return root;
}

}  // namespace tessaly::bench
