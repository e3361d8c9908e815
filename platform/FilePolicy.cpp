#include "platform/FilePolicy.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/Text.h"

namespace tessaly {
namespace {

struct FixedName {
  std::string_view folder, name;
  FilePolicy policy;
};

constexpr FixedName kFixedNames[] = {
    {"MacroFid", "tempA.mac", kOwnFile},       {"MacroFid", "tempB.mac", kOwnFile},
    {"MacroFid", "tempClassic.mac", kOwnFile}, {"MacroFid", "Settings.dat", {false, true}},
    {"recovery", "paneA.txt", kOwnFile},       {"recovery", "paneA.mac", kOwnFile},
    {"recovery", "paneB.txt", kOwnFile},       {"recovery", "paneB.mac", kOwnFile},
    {"recovery", "paneA.steps", kOwnFile},     {"recovery", "paneA-aside.steps", kOwnFile},
    {"recovery", "paneB.steps", kOwnFile},     {"recovery", "paneB-aside.steps", kOwnFile},
};

}  // namespace

FilePolicy filePolicy(const std::filesystem::path& host) {
  const std::string name = host.filename().string();
  const std::string folder = host.parent_path().filename().string();
  const auto* const found =
      std::find_if(std::begin(kFixedNames), std::end(kFixedNames), [&](const FixedName& fixed) {
        return equalNoCase(name, fixed.name) && equalNoCase(folder, fixed.folder);
      });
  return found == std::end(kFixedNames) ? kUsersFile : found->policy;
}

}  // namespace tessaly
