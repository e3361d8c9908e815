#include <algorithm>
#include <system_error>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/ChosenPath.h"
#include "platform/OpenFileWindows.h"
#include "platform/SitePlace.h"
#include "platform/SiteRoot.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSeparators = "\\/";
constexpr std::string_view kVerbatim = "\\\\?\\", kVerbatimShare = "\\\\?\\UNC\\";
constexpr std::string_view kDevices[] = {"CON",  "PRN",  "AUX",  "NUL",  "CONIN$", "CONOUT$", "CLOCK$",
                                         "COM0", "COM1", "COM2", "COM3", "COM4",   "COM5",    "COM6",
                                         "COM7", "COM8", "COM9", "LPT0", "LPT1",   "LPT2",    "LPT3",
                                         "LPT4", "LPT5", "LPT6", "LPT7", "LPT8",   "LPT9"};

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isSeparator(char c) { return kSeparators.find(c) != kSeparators.npos; }
bool hasDrive(std::string_view path) { return path.size() >= 2 && path[1] == ':' && isLetter(path[0]); }
bool isShare(std::string_view path) {
  return path.size() > 2 && isSeparator(path[0]) && isSeparator(path[1]);
}

// A name that the system gives a meaning of its own, refuses, or changes without a word: a device, also with
// an ending and with one of the digits set high, a stream of a file, a pattern, an end that it cuts off.
bool isOrdinary(std::string_view name) {
  constexpr std::string_view kRefused = "<>:\"|?*";
  const auto refused = [=](char c) {
    return static_cast<unsigned char>(c) < ' ' || kRefused.find(c) != kRefused.npos;
  };
  if (std::any_of(name.begin(), name.end(), refused) || name.ends_with('.') || name.ends_with(' '))
    return false;
  std::string device(name.substr(0, name.find('.')));
  device.erase(device.find_last_not_of(' ') + 1);
  for (const auto& [high, digit] :
       {std::pair("\xC2\xB9", "1"), std::pair("\xC2\xB2", "2"), std::pair("\xC2\xB3", "3")})
    device = replaceAll(device, high, digit);
  return std::none_of(std::begin(kDevices), std::end(kDevices),
                      [&](std::string_view reserved) { return equalNoCase(device, reserved); });
}

// The components of a path without runs of separators and "."; false when one of them names nothing.
bool split(std::string_view path, std::vector<std::string>& components) {
  while (!path.empty()) {
    const std::size_t end = path.find_first_of(kSeparators);
    const std::string_view component = path.substr(0, end);
    if (component != "." && !component.empty()) {
      if (component == ".." || !isOrdinary(component)) return false;
      components.emplace_back(component);
    }
    path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
  }
  return true;
}

// With the folder first: a drive is spelled in one way, so that one file has one path.
fs::path anchored(fs::path path) {
  std::error_code error;
  fs::path result = fs::absolute(path, error);
  std::string whole = (error ? path : result).lexically_normal().make_preferred().string();
  if (hasDrive(whole)) whole[0] = static_cast<char>(whole[0] | 0x20);
  while (whole.size() > 3 && whole.back() == '\\') whole.pop_back();
  return hostPath(whole);
}

// `path` less the folder and the separator behind it, when it lies in the folder or is it.
std::optional<std::string_view> inside(std::string_view folder, std::string_view path) {
  if (folder.ends_with('\\')) folder.remove_suffix(1);
  if (path.size() < folder.size()) return std::nullopt;
  const auto same = [](char a, char b) {
    return (isSeparator(a) && isSeparator(b)) || equalNoCase({&a, 1}, {&b, 1});
  };
  if (!std::equal(folder.begin(), folder.end(), path.begin(), same)) return std::nullopt;
  path.remove_prefix(folder.size());
  if (path.empty()) return path;
  if (!isSeparator(path[0])) return std::nullopt;
  return path.substr(1);
}

// As the disk spells them, as far as they exist.
fs::path asOnDisk(std::string path, const std::vector<std::string>& components) {
  bool found = true;
  for (const std::string& component : components) {
    if (!path.ends_with('\\')) path += '\\';
    WIN32_FIND_DATAW entry{};
    found = found && findEntry(widePath(hostPath(path + component)), entry);
    path += found ? utf8Of(entry.cFileName) : component;
  }
  return hostPath(path);
}

// Where a path of this host begins, and the rest of it; the beginning is empty when it names nothing, as the
// place of the devices, which looks like a computer of the name ".", does.
std::pair<std::string, std::string_view> hostStart(std::string_view path) {
  if (hasDrive(path)) return {std::string{static_cast<char>(path[0] | 0x20), ':', '\\'}, path.substr(2)};
  std::string start = "\\";
  for (int part = 0; part < 2; ++part) {  // a computer and what it shares
    path.remove_prefix(std::min(path.find_first_not_of(kSeparators), path.size()));
    const std::string_view name = path.substr(0, path.find_first_of(kSeparators));
    if (name.empty() || !isOrdinary(name)) return {};
    start.append("\\").append(name);
    path.remove_prefix(name.size());
  }
  return {start, path};
}

std::string ownFolder() {
  const std::string local = variableOf(L"LOCALAPPDATA");
  return (local.empty() ? variableOf(L"USERPROFILE") : local) + "\\Tessaly";
}

}  // namespace

SiteRoot::SiteRoot(fs::path root) : root_(anchored(std::move(root))) {}

SiteRoot SiteRoot::fromEnvironment(const std::string& option) {
  const std::string named = option.empty() ? variableOf(L"TESSALY_ROOT") : option;
  SiteRoot root(hostPath(named.empty() ? ownFolder() : named));
  root.isHost_ = named.empty();
  return root;
}

fs::path SiteRoot::resolve(std::string_view sitePath) const {
  if (sitePath.empty() || sitePath.find('\0') != std::string_view::npos) return {};
  std::string whole = displayUtf8(sitePath);
  const bool share = std::string_view(whole).starts_with(kVerbatimShare);
  const bool verbatim = std::string_view(whole).starts_with(kVerbatim);
  if (share)
    whole.replace(0, kVerbatimShare.size(), "\\\\");
  else if (verbatim)
    whole.erase(0, kVerbatim.size());
  const std::string root = root_.string();
  std::string_view rest = whole;
  std::string start = root;
  std::vector<std::string> components;
  const auto ofRoot = hasDrive(rest) || isShare(rest) ? inside(root, rest) : std::nullopt;
  if (ofRoot) {
    rest = *ofRoot;
  } else if (isShare(rest) || (hasDrive(rest) && (verbatim || isHost_))) {
    std::tie(start, rest) = hostStart(rest);
    if (start.empty()) return {};
  } else if (hasDrive(rest)) {
    components.emplace_back(1,
                            static_cast<char>(rest.front() | 0x20));  // the folder of a drive is lower-case
    rest.remove_prefix(2);
  } else if (rest.front() == '/') {
    start = root_.root_path().string();
  }
  if ((verbatim && start == root && !ofRoot) || !split(rest, components)) return {};
  return asOnDisk(std::move(start), components);
}

// The system itself knows no case.
Expected<fs::path> placeOf(const SiteRoot& root, std::string_view sitePath) { return root.resolve(sitePath); }

std::string SiteRoot::sitePathOf(const fs::path& host) const {
  const std::string path = anchored(host).string();
  if (isHost_) return path;
  const auto part = inside(root_.string(), path);
  const bool ofADrive = part && part->size() >= 2 && isLetter((*part)[0]) && (*part)[1] == '\\';
  return ofADrive ? std::string(1, static_cast<char>((*part)[0] | 0x20)) + ":" + std::string(part->substr(1))
                  : nativePath(host);
}

std::string SiteRoot::nativePath(const fs::path& host) {
  const std::string path = anchored(host).string();
  return isShare(path) ? path : std::string(kVerbatim) + path;
}

bool SiteRoot::holds(std::string_view sitePath) const {
  std::error_code error;
  const fs::path file = fs::weakly_canonical(resolve(sitePath), error);
  return !error && (isHost_ || inside(root_.string(), file.string()));
}

std::string chosenPath(const SiteRoot& root, const fs::path& host) {
  const std::string path = anchored(host).string();
  return root.option().empty() || inside(root.path().string(), path) ? path : SiteRoot::nativePath(host);
}

fs::path hostPath(std::string_view bytes) { return wideOf(bytes); }

bool isPlainName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." &&
         name.find_first_of(std::string_view("\\/\0", 3)) == name.npos && isOrdinary(name);
}

}  // namespace tessaly
