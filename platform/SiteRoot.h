#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tessaly {

// Turns the fixed paths of a site ("c:\programme\RV48\bin\MacroFid\tempA.mac") into paths of this host.
//
// Model and window code speak site paths only; every file access goes through `resolve`. On Windows a site
// path is the host path when no root is named; device names, such as "NUL", and what else the system would
// not take as it is name nothing there, and a file outside of a named root is spelled "\\?\C:\x.mac".
// Elsewhere and under a named root the drive letter is a folder under the root (`<root>/c/...`), `\` and `/`
// separate, runs of separators count as one, and a component that does not exist in its exact spelling is
// matched without regard to case (the first match in sorted order wins). Components that do not exist are
// kept as spelled. A native absolute path ("/home/me/x.mac") is what a person has named and is taken as it
// is; with a `\` in it ("/srv/appli\Show\CP1") it is a site path that begins on this host.
//
// Thread-safe: immutable after construction, looks at the file system at each call.
class SiteRoot {
 public:
  explicit SiteRoot(std::filesystem::path root);

  // `option` if not empty, else TESSALY_ROOT, else $XDG_DATA_HOME/tessaly, else ~/.local/share/tessaly. On
  // Windows instead of the latter two this host itself, with %LOCALAPPDATA%\Tessaly for what is no drive's.
  [[nodiscard]] static SiteRoot fromEnvironment(const std::string& option);

  [[nodiscard]] const std::filesystem::path& path() const { return root_; }

  // What `fromEnvironment` is to be given to come to the same root; empty for the host itself.
  [[nodiscard]] std::string option() const { return isHost_ ? std::string() : root_.string(); }

  // The host path of a site path. A component ".." or an embedded NUL names nothing: the result is then
  // empty, and every file operation on it fails.
  [[nodiscard]] std::filesystem::path resolve(std::string_view sitePath) const;

  // The site path of a file of this host: that of its drive when it lies under the root, else its own.
  [[nodiscard]] std::string sitePathOf(const std::filesystem::path& host) const;

  // As `resolve` takes a file of this host under any root, wherever it is.
  [[nodiscard]] static std::string nativePath(const std::filesystem::path& host);

  // True when what the path leads to lies under the root, links followed; without a named root all of this
  // host does.
  [[nodiscard]] bool holds(std::string_view sitePath) const;

  // True when both site paths name the same place on this host.
  [[nodiscard]] bool same(std::string_view first, std::string_view second) const;

 private:
  std::filesystem::path root_;
  bool isHost_ = false;  // no root is named, and site paths are this host's
};

// The path of this host that bytes spell: UTF-8 where it has characters. (The library's own conversion takes
// those bytes for another code there.)
[[nodiscard]] std::filesystem::path hostPath(std::string_view bytes);

// True when `name`, taken from a file, a panel or an ini file, may be used as one path component: not empty,
// not
// "." or "..", and without separators, a drive colon or NUL.
[[nodiscard]] bool isPlainName(std::string_view name);

}  // namespace tessaly
