#pragma once

#include <string_view>

#include "model/MacroFile.h"

namespace tessaly {

// The commands of a macro file, as a pane would show them; false when it shows none.
[[nodiscard]] inline bool loadCommands(const SiteAccess& site, std::string_view path,
                                       MacroCommands& commands) {
  const auto macro = loadMacro(site, path);
  if (macro) commands = macro->commands();
  return macro && macro->hasData();
}

}  // namespace tessaly
