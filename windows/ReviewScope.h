#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include <QString>

#include "link/Pane.h"
#include "model/KeyFile.h"
#include "model/Macro.h"
#include "platform/MacroKeeper.h"
#include "review/MacroShelf.h"

// What the windows look at, and where it lies.
namespace tessaly {

// Where a macro or key file lies, for people and for who opens it.
struct ReviewedPlace {
  MacroPlace place;    // neither a file nor a panel's macro for what has no place of its own
  std::string shown;   // of the place; UTF-8, without what all places of its scope have in front
  std::string number;  // "007"; empty where the place has none
  std::string name;    // its own, UTF-8; may be empty
  // The pane that shows it, and what that pane counts as the opening of it, for what was taken from there.
  std::optional<Pane> pane = {};
  int opening = 0;

  // "007 - Name", or whatever there is of it.
  [[nodiscard]] std::string title() const {
    if (number.empty() || name.empty()) return !name.empty() ? name : !number.empty() ? number : shown;
    return number + " - " + name;
  }
};

// What a pane shows, as it is there.
struct OpenContent {
  ReviewedPlace place;
  std::variant<Macro, KeyFile> content;
  bool unsaved = false;  // not as it is stored
};

// All that is below a folder of the disk.
struct FolderContent {
  std::string path;
};

// A workplace of a panel or of a snapshot. Made and used on the thread that looks at it.
struct ShelfContent {
  std::function<std::shared_ptr<MacroShelf>()> open;
};

struct ReviewScope {
  enum class Kind { kPane, kFolder, kApplication, kSite, kPanel };
  Kind kind;
  QString title;  // "Workplace 1 on the panel 10.0.0.5"
  std::variant<OpenContent, FolderContent, ShelfContent> what;
};

}  // namespace tessaly
