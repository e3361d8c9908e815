#include "platform/SiteRoot.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <dirent.h>
#include <locale.h>
#include <memory>
#include <pwd.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/ChosenPath.h"
#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSeparators = "\\/";

// A dangling link counts: it is an entry of its folder under exactly that name.
bool exists(const std::string& path) {
  struct stat status;
  return ::lstat(path.c_str(), &status) == 0;
}

bool hasDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' &&
         ((path[0] >= 'a' && path[0] <= 'z') || (path[0] >= 'A' && path[0] <= 'Z'));
}

// The components of a path without runs of separators and "."; false when one of them is "..".
bool split(std::string_view path, std::vector<std::string>& components) {
  while (!path.empty()) {
    const std::size_t end = path.find_first_of(kSeparators);
    const std::string_view component = path.substr(0, end);
    if (component == "..") return false;
    if (!component.empty() && component != ".") components.emplace_back(component);
    path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
  }
  return true;
}

// The characters of a name, in whatever encoding it was written to the disk, each in the same case.
std::wstring withoutCase(std::string_view name) {
  static const locale_t characters = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  const std::string utf8 = displayUtf8(name);
  std::wstring folded(utf8.size(), L'\0');
  const char* from = utf8.c_str();
  std::mbstate_t state{};
  const locale_t before = ::uselocale(characters);
  const std::size_t count = std::mbsrtowcs(folded.data(), &from, folded.size(), &state);
  ::uselocale(before);
  if (count == static_cast<std::size_t>(-1)) return {utf8.begin(), utf8.end()};
  folded.resize(count);
  for (wchar_t& c : folded)
    c = static_cast<wchar_t>(::towlower_l(::towupper_l(static_cast<wint_t>(c), characters), characters));
  return folded;
}

// A folder that is not there, or that may not be looked into, has no other spelling to offer.
bool answers(int error) { return error == 0 || error == ENOENT || error == ENOTDIR || error == EACCES; }

// The entry of `folder` that equals `name` without regard to case, the first one in sorted order; else
// nothing, with `error` when that is not sure.
std::string findNoCase(const std::string& folder, const std::string& name, int& error) {
  std::string best;
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), &::closedir);
  if (!entries) {
    if (!answers(errno)) error = errno;
    return best;
  }
  const bool ascii = isAscii(name);
  const std::wstring wanted = ascii ? std::wstring() : withoutCase(name);
  errno = 0;
  while (const dirent* const entry = ::readdir(entries.get())) {
    const bool same = ascii ? equalNoCase(entry->d_name, name)
                            : !isAscii(entry->d_name) && withoutCase(entry->d_name) == wanted;
    if (same && (best.empty() || entry->d_name < best)) best = entry->d_name;
    errno = 0;
  }
  if (errno != 0) error = errno;
  return best;
}

std::string join(std::string folder, const std::string& name) {
  if (folder.empty() || folder.back() != '/') folder += '/';
  return folder += name;
}

fs::path anchored(fs::path path) {
  std::error_code error;
  const fs::path result = fs::absolute(path, error);
  return error ? path : result.lexically_normal();
}

const char* variable(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

fs::path homeFolder() {
  fs::path home = variable("HOME");
  if (!home.empty()) return home;
  const passwd* const user = ::getpwuid(::geteuid());
  return user && user->pw_dir ? user->pw_dir : "/";
}

// As SiteRoot::resolve, with what has kept it from looking.
fs::path located(const fs::path& root, std::string_view sitePath, int& error) {
  if (sitePath.empty() || sitePath.find('\0') != std::string_view::npos) return {};
  const bool native = sitePath.front() == '/';
  std::string resolved = native ? "/" : root.string();
  std::vector<std::string> components;
  if (!native && hasDrive(sitePath)) {
    const char drive = sitePath.front();
    components.emplace_back(1, static_cast<char>(drive | 0x20));  // the folder of a drive is lower-case
    sitePath.remove_prefix(2);
  }
  if (!split(sitePath, components)) return {};

  std::string exact = resolved;
  for (const std::string& component : components) exact = join(std::move(exact), component);
  const bool ofAPerson = native && sitePath.find('\\') == std::string_view::npos;
  if (ofAPerson || exists(exact)) return exact;

  bool found = true;
  for (const std::string& component : components) {
    std::string next = join(resolved, component);
    if (found && !exists(next)) {
      const std::string match = findNoCase(resolved, component, error);
      found = !match.empty();
      if (found) next = join(resolved, match);
    }
    resolved = std::move(next);
  }
  return resolved;
}

}  // namespace

SiteRoot::SiteRoot(fs::path root) : root_(anchored(std::move(root))) {}

SiteRoot SiteRoot::fromEnvironment(const std::string& option) {
  if (!option.empty()) return SiteRoot(option);
  const std::string root = variable("TESSALY_ROOT");
  if (!root.empty()) return SiteRoot(root);
  const fs::path data = variable("XDG_DATA_HOME");
  // A relative folder there is to be ignored, as the base directory rules of the desktop say.
  return SiteRoot((data.is_absolute() ? data : homeFolder() / ".local/share") / "tessaly");
}

fs::path SiteRoot::resolve(std::string_view sitePath) const {
  int error = 0;
  return located(root_, sitePath, error);
}

Expected<fs::path> placeOf(const SiteRoot& root, std::string_view sitePath) {
  int error = 0;
  fs::path place = located(root.path(), sitePath, error);
  if (error != 0) return systemFailure(error, "found");
  return place;
}

std::string SiteRoot::sitePathOf(const fs::path& host) const {
  const std::string inside = host.lexically_relative(root_).string();
  if (inside.size() < 3 || inside[1] != '/' || inside[0] < 'a' || inside[0] > 'z') return host.string();
  return inside.substr(0, 1) + ":" + replaceAll(inside.substr(1), "/", "\\");
}

std::string SiteRoot::nativePath(const fs::path& host) { return host.string(); }

bool SiteRoot::holds(std::string_view sitePath) const {
  std::error_code error;
  const fs::path site = fs::weakly_canonical(root_, error);
  const fs::path file = error ? fs::path() : fs::weakly_canonical(resolve(sitePath), error);
  return !error && std::mismatch(site.begin(), site.end(), file.begin(), file.end()).first == site.end();
}

std::string chosenPath(const SiteRoot&, const fs::path& host) { return SiteRoot::nativePath(host); }

fs::path hostPath(std::string_view bytes) { return bytes; }

bool isPlainName(std::string_view name) {
  constexpr std::string_view kForbidden("\\/:\0", 4);
  return !name.empty() && name != "." && name != ".." && name.find_first_of(kForbidden) == name.npos;
}

}  // namespace tessaly
