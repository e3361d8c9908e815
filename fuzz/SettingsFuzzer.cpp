#include "fuzz/Fuzzing.h"
#include "model/Settings.h"

// A settings file, read, written and read again.
namespace tessaly {
namespace {

constexpr const char* kFile = "c/Programme/RV48/bin/MacroFid/Settings.dat";

ScratchSite& site() {
  static ScratchSite one;
  static const bool made = std::filesystem::create_directories((one.root.path() / kFile).parent_path());
  static_cast<void>(made);
  return one;
}

void run(std::string_view bytes) {
  site().put(kFile, bytes);
  Settings settings;
  require(readSettings(site().root, settings).done(), "every file counts as read");
  for (const std::string* text : {&settings.pathA, &settings.pathB, &settings.addressA, &settings.addressB}) {
    require(text->find('\0') == std::string::npos && text->size() <= bytes.size() + kDefaultPath.size(),
            "a text ends at its zero and within the file");
  }
  require(writeSettings(site().root, settings).done(), "settings can be written");
  const std::string written = site().bytes(kFile);
  Settings again;
  require(readSettings(site().root, again).done() && again == settings,
          "written settings are read as they were");
  require(writeSettings(site().root, again).done() && site().bytes(kFile) == written,
          "and written the same again");
  const std::string path = derivedPath(settings.pathA);
  require(path.empty() == settings.pathA.empty() && (path.empty() || path.back() == '\\'),
          "a path that is used ends with its separator");
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({reinterpret_cast<const char*>(data), size});
  return 0;
}
