#pragma once

#include <filesystem>

#include "model/Settings.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {

// Copies the sample site under a root. Its panels have addresses of a studio, which no test may send anything
// to: the copy's panes begin at one of this host, where nobody listens.
inline void copySampleSite(const SiteRoot& root) {
  std::filesystem::copy(sourcePath("site/c"), root.path() / "c", std::filesystem::copy_options::recursive);
  Settings settings;
  static_cast<void>(readSettings(root, settings));
  settings.addressA = settings.addressB = "127.0.0.99";
  static_cast<void>(writeSettings(root, settings));
}

}  // namespace tessaly
