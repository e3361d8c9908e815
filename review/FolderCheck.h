#pragma once

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>

#include "platform/ContentCheck.h"
#include "review/MacroCheck.h"
#include "review/MacroFiles.h"

// Macros checked where they lie, with the rules of a workplace: names that are missing or stand there twice,
// files that are not named by a number or do not parse.
namespace tessaly {

struct CheckedFile {
  std::string path;
  std::string name;  // of the macro or key; empty without one
  Findings findings;
  ContentCheck content = {};  // of the macro that they were found in
  std::optional<Failure> unread = {};
};

// A macro or key file alone. Nothing is reported elsewhere.
[[nodiscard]] CheckedFile checkFile(const SiteRoot& root, const std::string& path, MacroCheck& check);
// What a file of that name was read as, or why it could not be.
[[nodiscard]] CheckedFile checkBytes(const std::string& path, Expected<std::string> bytes, MacroCheck& check);

// The files of one folder, or the macros of one workplace, with the names of those before in mind.
class FolderCheck {
 public:
  explicit FolderCheck(MacroCheck& check) : check_(check) {}

  // `path` ends in the name of the file, as "macro007.mac".
  [[nodiscard]] CheckedFile next(const std::string& path, Expected<std::string> bytes);

 private:
  MacroCheck& check_;
  std::unordered_map<std::string, std::string> names_;  // and the first file of that name
};

// Every file of the folder, one after another.
void checkFolder(const SiteRoot& root, const MacroFolder& folder, MacroCheck& check,
                 const std::function<void(CheckedFile)>& take);

}  // namespace tessaly
