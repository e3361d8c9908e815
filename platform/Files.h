#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

// Files of the site, by site path. No function throws; every failure is a return value with its reason.
// Writes never leave a half-written file: the bytes go to a temporary file in the target's folder, are
// flushed and checked, and the file is renamed over the target.
namespace tessaly {

inline constexpr std::size_t kLargestFile =
    std::size_t{256} * 1024 * 1024;  // bytes; larger files are refused

[[nodiscard]] bool isRegularFile(const SiteRoot& root, std::string_view path);

[[nodiscard]] bool isFolder(const SiteRoot& root, std::string_view path);

// True when the path can be opened for reading as a file.
[[nodiscard]] bool canOpen(const SiteRoot& root, std::string_view path);

// The whole content; a failure when the file is missing, unreadable, no regular file or above `limit` bytes.
[[nodiscard]] Expected<std::string> readFile(const SiteRoot& root, std::string_view path,
                                             std::size_t limit = kLargestFile);

// At most the first `count` bytes.
[[nodiscard]] Expected<std::string> readFilePrefix(const SiteRoot& root, std::string_view path,
                                                   std::size_t count);

// Writes `bytes` whole or not at all, a new file with mode 0644 less the umask; an old one keeps its mode,
// and one that its owner has write-protected is not replaced (PendingFile). The folder must exist.
Outcome writeFile(const SiteRoot& root, std::string_view path, std::string_view bytes);

// As writeFile, for what the program keeps for itself under other names than fixed ones: a link is replaced.
Outcome writeOwnFile(const SiteRoot& root, std::string_view path, std::string_view bytes);

// Copies whole or not at all, over an existing file. A file copied onto itself is left alone and counts as
// done. The mode of the source does not count.
Outcome copyFile(const SiteRoot& root, std::string_view from, std::string_view to);

// As readFile, for what the program keeps for itself under other names than fixed ones: a link is refused.
[[nodiscard]] Expected<std::string> readOwnFile(const SiteRoot& root, std::string_view path,
                                                std::size_t limit = kLargestFile);

// Puts bytes behind the first `size` of a file that the program keeps for itself, in place of what stands
// there, and flushes them; kChanged when it has fewer. A failure leaves those `size`, and perhaps a part of
// the bytes.
Outcome appendToOwnFile(const SiteRoot& root, std::string_view path, std::size_t size,
                        std::string_view bytes);

// Whether it is a file, no link, and this user's: what another one has written there decides nothing for us.
[[nodiscard]] bool isThisUsers(const SiteRoot& root, std::string_view path);

// Gives a file that the program keeps for itself another name in its folder, whatever stands there.
Outcome moveOwnFile(const SiteRoot& root, std::string_view from, std::string_view to);

// Not one that its owner has write-protected; of a link the link. Flushed, but for the program's fixed names.
Outcome removeFile(const SiteRoot& root, std::string_view path);

// Creates the folder and its parents and flushes their names.
Outcome makeFolder(const SiteRoot& root, std::string_view path);
Outcome makeFolder(const std::filesystem::path& host);
// For what the program keeps for itself: a link could lead to where others want our files, and is refused.
Outcome makeOwnFolder(const std::filesystem::path& host);

// Names (not paths) in a folder, sorted without regard to case, "." and ".." left out. With a suffix such as
// ".mac", only regular files whose name ends so, whatever the case. A missing folder gives an empty list, one
// that cannot be read, or not to its end, a failure.
[[nodiscard]] Expected<std::vector<std::string>> listFolder(const SiteRoot& root, std::string_view folder,
                                                            std::string_view suffix = {});

// On the disk that a folder is on, for this user; very many when that is not known.
[[nodiscard]] std::uint64_t freeBytes(const std::filesystem::path& folder);

}  // namespace tessaly
