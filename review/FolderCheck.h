#pragma once

#include <functional>
#include <string>

#include "review/MacroCheck.h"
#include "review/MacroFiles.h"

// Macros checked where they lie, with the rules of a workplace: names that are missing or stand there twice,
// files that are not named by a number or do not parse.
namespace tessaly {

struct CheckedFile {
  std::string path;
  std::string name;  // of the macro or key; empty without one
  Findings findings;
};

// A macro or key file alone. Nothing is reported elsewhere.
[[nodiscard]] CheckedFile checkFile(const SiteRoot& root, const std::string& path, MacroCheck& check);

// Every file of the folder, one after another, with the names of those before it in mind.
void checkFolder(const SiteRoot& root, const MacroFolder& folder, MacroCheck& check,
                 const std::function<void(CheckedFile)>& take);

}  // namespace tessaly
