#include <algorithm>

#include "fuzz/Fuzzing.h"
#include "model/SiteBrowser.h"
#include "platform/Files.h"

// A devices file up to a NUL, then the names of an application and of a panel, a site path, and the bytes of
// a key file. Whatever they are, nothing outside the site's folder is named.
namespace tessaly {
namespace {

constexpr const char* kPath = "c:\\appli\\";
constexpr const char* kApplication = "Show";

struct Context {
  Context() {
    for (const char* folder :
         {"c/appli/Show/CP1/assign", "c/appli/Show/CP2/upk", "c/appli/Show/CP-3/assign"}) {
      std::filesystem::create_directories(site.root.path() / folder);
    }
    site.put("c/appli/Show/CP1/assign/contents.cnt", "x");
    site.put("c/appli/Show/CP-3/assign/contents.cnt", "x");
    site.put("c/appli/Show/CP2/appli_cp.ini", "x");
  }
  ScratchSite site;
};

const ScratchSite& site() {
  static Context one;
  return one.site;
}

// True when `path` is `folder` or below it, as it is written.
bool isBelow(const std::filesystem::path& path, const std::filesystem::path& folder) {
  const auto [end, rest] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return end == folder.end() && std::find(path.begin(), path.end(), "..") == path.end();
}

void checkPlace(const std::string& sitePath, const char* folder) {
  const std::filesystem::path path = site().root.resolve(sitePath);
  require(sitePath.empty() ? path.empty() : isBelow(path, site().root.path() / folder),
          "a name stays in its folder");
}

void checkNames(std::string_view application, std::string_view panel) {
  checkPlace(applicationFolder(kPath, application), "c/appli");
  for (const std::string& folder :
       {panelFolder(kPath, application, panel), macroFolder(kPath, application, panel, 1),
        keyFolder(kPath, application, panel)}) {
    checkPlace(folder, "c/appli");
    require(folder.empty() == !(isPlainName(application) && isPlainName(panel)), "plain names make a folder");
  }
  for (const std::string_view name : {application, panel}) {
    if (!isPlainName(name)) continue;
    const std::filesystem::path path = site().root.resolve(std::string("c:\\").append(name));
    require(path.parent_path() == site().root.path() / "c", "a plain name is one component");
  }
  static_cast<void>(isOlderFamily(site().root, kPath, application, panel));
  static_cast<void>(controlPanels(site().root, kPath, application));
}

void checkPath(std::string_view sitePath) {
  const std::filesystem::path path = site().root.resolve(sitePath);
  if (path.empty()) return;
  const bool native = sitePath.front() == '/';
  require(isBelow(path, native ? "/" : site().root.path()), "a path stays below the root");
  require(site().root.same(sitePath, sitePath), "a path is the same as itself");
  require(site().root.resolve(path.string()) == path, "a resolved path is resolved");
}

void run(FuzzInput input) {
  const std::string_view devices = input.text(), application = input.text(), panel = input.text(),
                         path = input.text();
  site().put("c/appli/Show/devices.ini", devices);
  site().put("c/appli/Show/CP2/upk/key07.upk", input.rest());
  const auto panels = controlPanels(site().root, kPath, kApplication).value_or({});
  for (const PanelEntry& entry : panels) {
    require(entry.name == beforeHyphen(entry.text) && entry.text.find(entry.label) != std::string::npos,
            "a panel's row begins with its name");
    checkPlace(panelFolder(kPath, kApplication, entry.name), "c/appli/Show");
    require(!entry.olderFamily || isOlderFamily(site().root, kPath, kApplication, entry.name),
            "a panel's family is that of its folder");
  }
  require(applications(site().root, kPath) == std::vector<std::string>{kApplication}, "one application");
  checkNames(application, panel);
  checkNames(beforeHyphen(application), devices);
  checkPath(path);
  for (const MacroRow& row : listKeyFiles(site().root, keyFolder(kPath, kApplication, "CP2")).value_or({})) {
    require(row.number == 7 && row.name.find('\n') == std::string::npos, "a key's name is one line");
  }
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
