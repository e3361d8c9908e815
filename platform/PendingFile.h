#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "platform/Descriptor.h"
#include "platform/FilePolicy.h"
#include "platform/Outcome.h"

namespace tessaly {

// A file that comes into being whole or not at all: the bytes go to a temporary file in the target's folder,
// and `commit` renames that over the target. Without a commit the temporary file is removed and the target
// stays as it was. A user's file that is a link to a file is written where the link leads, keeps its mode
// and, where that is allowed, its owner and group, and is not replaced when its owner has write-protected it.
// Not thread-safe; two objects, also of two programs, may aim at the same target, and the last commit wins.
//
// The temporary file (".tessaly-*.tmp") is for its writer's eyes only and locked while that lives. What a
// killed program left behind is therefore known by its missing lock, and the next file that is written in its
// folder removes it, unless its policy leaves that to somebody else.
class PendingFile {
 public:
  // Opens the temporary file. Fails without a folder, for a target that is there but is no regular file, and
  // for a write-protected one.
  explicit PendingFile(const std::filesystem::path& target) : PendingFile(target, filePolicy(target)) {}
  PendingFile(const std::filesystem::path& target, FilePolicy policy);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  // True as long as nothing has failed.
  [[nodiscard]] bool good() const { return file_.isOpen() && !failure_; }

  // After a failure nothing more is written and the commit fails too.
  bool write(std::string_view bytes);

  // Removes what killed programs have left in a folder.
  static void sweep(const std::string& folder);

  enum class Sync { kFileAndFolder, kFileOnly };
  // Brings the bytes to the disk and the name to the target, a new file with mode 0644 less the umask. With
  // `kFileOnly` the name is left to the next file that is committed into this folder. After a failure the
  // target is as it was, except for `kUnflushed`: it is written then. Whoever gives up the calling thread
  // (WayBack) keeps the name from being taken.
  Outcome commit(Sync sync = Sync::kFileAndFolder);

 private:
  static constexpr std::string_view kTemporaryStart = ".tessaly-";
  static constexpr std::string_view kTemporaryEnd = ".tmp";  // no search for macros or key files finds it

  // Where the bytes for `target` have to go.
  static Expected<std::filesystem::path> destination(const std::filesystem::path& target, FilePolicy policy);
  static Failure inTheWay();
  static std::string temporaryName();
  bool open();  // false leaves no file, and its reason in errno
  void takeOverMode();
  void putInPlace();
  void fail(int error, std::string_view doing);
  void fail(Failure failure);
  void discard();

  FilePolicy policy_;
  std::string target_;
  std::string folder_;
  std::string temporary_;  // empty when there is none
  Descriptor file_;
  std::optional<mode_t> finishedMode_;
  std::optional<Failure> failure_;  // the first one
};

// Brings the names in a folder to the disk. Some file systems cannot do that, or a folder may not be read,
// which is no failure; any other one is `kUnflushed` and says what is the case otherwise.
Outcome flushFolder(const std::string& folder,
                    std::string_view otherwise = "is there, but may not survive a power cut");

}  // namespace tessaly
