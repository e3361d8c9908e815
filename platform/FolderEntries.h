#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outcome.h"

// What stands in folders and what becomes of it, by the system's own calls: the part of Files.h that each
// system does in its way. Host paths; an empty one names nothing.
namespace tessaly {

enum class EntryKind { kNone, kFile, kFolder, kLink, kOther };

// What a path leads to; never kLink.
[[nodiscard]] EntryKind kindAt(const std::filesystem::path& path);

// The entry itself.
struct FolderEntry {
  EntryKind kind = EntryKind::kNone;
  bool writeProtected = false;
  bool thisUsers = false;
};
[[nodiscard]] FolderEntry entryAt(const std::filesystem::path& path);

// Differs once a file has been written anew, told as finely as the system tells it.
struct FileStamp {
  bool exists = false;
  std::uint64_t size = 0;
  std::int64_t written = 0;  // in the system's own unit
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
[[nodiscard]] FileStamp stampAt(const std::filesystem::path& path);

// In no order; with a suffix only regular files whose name ends so, whatever the case. None where there is no
// such folder.
[[nodiscard]] Expected<std::vector<std::string>> namesIn(const std::filesystem::path& folder,
                                                         std::string_view suffix);

// 0, or the error number; no write protection is minded.
[[nodiscard]] int makeEntry(const std::filesystem::path& folder);
[[nodiscard]] int moveEntry(const std::filesystem::path& from, const std::filesystem::path& to);
[[nodiscard]] int removeEntry(const std::filesystem::path& file);

// As appendToOwnFile.
[[nodiscard]] Outcome appendAt(const std::filesystem::path& path, std::size_t size, std::string_view bytes);

}  // namespace tessaly
