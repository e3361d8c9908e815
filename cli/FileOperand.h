#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

struct ProgramStreams {
  std::istream& in;
  std::ostream& out;
  std::ostream& errors;
};

// A file of our own in the folder for temporary files, removed with the object.
class ScratchFile {
 public:
  ScratchFile() = default;  // none
  ~ScratchFile();
  ScratchFile(ScratchFile&& other) noexcept : folder_(std::exchange(other.folder_, {})) {}
  ScratchFile& operator=(ScratchFile&& other) noexcept;

  // Holds nothing yet, in a folder that nobody else can have made.
  [[nodiscard]] static Expected<ScratchFile> make();
  [[nodiscard]] std::string path(std::string_view name) const { return SiteRoot::nativePath(folder_ / name); }

 private:
  std::filesystem::path folder_;
};

enum class FileUse { kRead, kChange, kWrite };

// A FILE of the command line. "-", a descriptor such as "/dev/stdout" or "/dev/fd/3", and whatever else is
// there and no regular file is a stream: what it gives is read to its end into a scratch file, which the
// command works on, and what the command leaves there is written to it. So nothing that is open somewhere is
// ever renamed over, and a command that fails writes nothing to it.
class FileOperand {
 public:
  [[nodiscard]] static Expected<FileOperand> open(const SiteRoot& root, const ProgramStreams& streams,
                                                  const std::string& word, FileUse use);

  [[nodiscard]] bool isStream() const { return !stream_.empty(); }
  // What the model is to be called with: a site path or a host path.
  [[nodiscard]] const std::string& path() const { return path_; }
  // How it is called in what is printed.
  [[nodiscard]] const std::string& shown() const { return isStream() ? word_ : path_; }

  // Writes what the scratch file holds to the stream; nothing to do for a file.
  Outcome deliver(const SiteRoot& root, const ProgramStreams& streams) const;

 private:
  std::string word_, path_;
  std::string stream_;  // what is opened for it; empty for a file
  ScratchFile scratch_;
};

// A file given as a host path or, with a drive letter, as a site path: what the model is to be called with.
[[nodiscard]] std::string sitePathOf(const std::string& file);

[[nodiscard]] bool isKeyFile(std::string_view path);

}  // namespace tessaly
