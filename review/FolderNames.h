#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// As listFolder, but a folder that cannot be read to its end is a failure, where a macro that is passed over
// would be taken for one that is not there.
[[nodiscard]] Expected<std::vector<std::filesystem::directory_entry>> entriesIn(const SiteRoot& root,
                                                                                std::string_view folder);

// Of a kind, links followed or not, or of one that cannot be found out: whoever opens it is told why.
[[nodiscard]] bool mayBe(std::filesystem::file_type kind, const std::filesystem::directory_entry& entry,
                         bool followed);

}  // namespace tessaly
