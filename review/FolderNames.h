#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// Calls `take` for each file and folder in a folder, in no order. A folder that cannot be read to its end is
// a failure, where a macro that is passed over would be taken for one that is not there; it has then been
// called for some of them.
using TakeEntry = std::function<void(const std::string& name, const std::filesystem::directory_entry& entry)>;
[[nodiscard]] Outcome eachEntryIn(const SiteRoot& root, std::string_view folder, const TakeEntry& take);
// The same, as listFolder orders them.
[[nodiscard]] Expected<std::vector<std::filesystem::directory_entry>> entriesIn(const SiteRoot& root,
                                                                                std::string_view folder);

// Of a kind, links followed or not, or of one that cannot be found out: whoever opens it is told why.
[[nodiscard]] bool mayBe(std::filesystem::file_type kind, const std::filesystem::directory_entry& entry,
                         bool followed);

}  // namespace tessaly
