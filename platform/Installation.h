#pragma once

#include <filesystem>
#include <string_view>

namespace tessaly {

// The version of all three programs, such as "1.0.0".
[[nodiscard]] std::string_view programVersion();

// Host path of the sample site that came with the running program, a root with a folder for each drive: in
// the build tree, or wherever the installed files have been moved together. To be read only; empty when
// there is none. Looks at the file system at each call, from any thread.
[[nodiscard]] std::filesystem::path installedSiteFolder();

}  // namespace tessaly
