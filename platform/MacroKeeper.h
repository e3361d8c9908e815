#pragma once

#include <string>
#include <string_view>

#include "platform/HostAddress.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// What is about to happen to a macro when its old content is kept; `kUnsaved` keeps changes that were never
// saved.
enum class MacroChange { kSave, kCopy, kCreate, kRename, kDelete, kConvert, kEdit, kPutBack, kUnsaved };

// Where a macro belongs: a file of the site, or a number of a workplace on a panel.
struct MacroPlace {
  std::string file;     // site path; empty for a macro on a panel
  HostAddress address;  // of the panel
  int workplace = 0;    // 1-based
  std::string number;   // "007"

  friend bool operator==(const MacroPlace&, const MacroPlace&) = default;
};

// Whether both are one place, however the file's path is spelled.
[[nodiscard]] inline bool samePlace(const SiteRoot& root, const MacroPlace& a, const MacroPlace& b) {
  return a.file.empty() || b.file.empty() ? a == b : root.same(a.file, b.file);
}

// How the code that works on a panel keeps what it is about to overwrite or delete there. Any thread.
class MacroKeeper {
 public:
  virtual ~MacroKeeper() = default;

  // Not done when it could not be kept.
  virtual Outcome keep(std::string_view bytes, const MacroPlace& place, MacroChange change) = 0;
  // There is old content, but it did not come.
  virtual void notFetched(const Failure& why) = 0;
};

}  // namespace tessaly
