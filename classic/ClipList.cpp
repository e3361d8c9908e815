#include "classic/ClipList.h"

#include <algorithm>
#include <string_view>

#include "platform/Files.h"

namespace tessaly {

namespace {

constexpr std::string_view kClipList = "C:\\Programme\\RV48\\bin\\MPoolList";
constexpr std::string_view kClipListSuffix = ".txt";
constexpr std::size_t kMostClipListBytes =
    std::size_t{4} * 1024 * 1024;  // far more than a list box can offer

}  // namespace

std::vector<std::string> clipNames(const SiteRoot& root) {
  const auto bytes = readFilePrefix(root, std::string(kClipList).append(kClipListSuffix), kMostClipListBytes);
  std::vector<std::string> names;
  std::string_view rest = bytes ? std::string_view(*bytes) : std::string_view();
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    while (line.ends_with('\r')) line.remove_suffix(1);
    while (line.starts_with('\r')) line.remove_prefix(1);
    if (line.find_first_not_of(" \t") != line.npos) names.emplace_back(line);
  }
  return names;
}

}  // namespace tessaly
