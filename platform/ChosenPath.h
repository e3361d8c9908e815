#pragma once

#include <filesystem>
#include <string>

#include "platform/SiteRoot.h"

namespace tessaly {

// As `root` takes a file of this host that a person has chosen, wherever it is: spelled as a person would
// where that does, else as `SiteRoot::nativePath`.
[[nodiscard]] std::string chosenPath(const SiteRoot& root, const std::filesystem::path& host);

}  // namespace tessaly
