#pragma once

#include <filesystem>

namespace tessaly {

// How a file is met that stands where one is to be read or written.
struct FilePolicy {
  // A link to a file is followed. Otherwise it is refused for reading and replaced by a file for writing: in
  // a folder that others may write, they could have put it there to lead us to a file that only we may touch.
  bool followsLinks;
  // The old file's mode and owner are kept, and one that its owner has write-protected is not replaced.
  bool keepsMode;
  // What killed programs have left in its folder is looked for before it is written.
  bool sweeps = true;
};

inline constexpr FilePolicy kUsersFile{true, true};
inline constexpr FilePolicy kOwnFile{false, false};

// The program's own for what it keeps under fixed names: the working copies, the records of unsaved changes
// and, but for the mode, the settings. Else a user's.
[[nodiscard]] FilePolicy filePolicy(const std::filesystem::path& host);

}  // namespace tessaly
