#pragma once

#include <string>
#include <vector>

#include "platform/SiteRoot.h"

// The macro and key files of a folder, an application or a whole site.
namespace tessaly {

struct MacroFolder {
  std::string path;                // as it was given, with what leads further down
  std::vector<std::string> files;  // paths of ".mac" and ".upk" files, in the order of their names
};

// The folders with such files, the given one first. Links are not followed, and what the program keeps for
// itself (the template, the working copies, the history) is no macro of the site: its folder is left out
// unless it is given. Paths go on as they begin: with "\" from a site path, with "/" from one of this host.
[[nodiscard]] std::vector<MacroFolder> macroFoldersUnder(const SiteRoot& root, const std::string& folder);

}  // namespace tessaly
