#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "model/Macro.h"
#include "platform/MacroNumber.h"
#include "platform/Messages.h"
#include "platform/SiteRoot.h"
#include "platform/Workplace.h"

namespace tessaly {

// The macro files of a simulated panel: <root>/flash/data/PANEL/macro/workplace1..8/macroNNN.mac. Blocking,
// never throws. One thread at a time.
class PanelTree {
 public:
  explicit PanelTree(const std::filesystem::path& root);

  [[nodiscard]] std::string root() const { return host_.path().string(); }

  // Makes the folders of all workplaces.
  [[nodiscard]] bool prepare() const;

  // Names by number; "???" for a file that does not parse or has no name, so that it can be seen. A file is
  // read again only when it has changed.
  [[nodiscard]] std::map<int, std::string> names(int workplace);
  [[nodiscard]] std::string name(int workplace, int number) { return nameOf(file(workplace, number)); }

  // kMissing where there is none.
  [[nodiscard]] Expected<Macro> read(int workplace, int number) const;
  [[nodiscard]] bool remove(int workplace, int number) const;
  [[nodiscard]] bool rename(int workplace, int number, const std::string& name) const;

  // Copies the macros of the first control panel of the site's first application that has macros, and returns
  // how many.
  [[nodiscard]] int seed(const SiteRoot& site) const;

 private:
  struct KnownFile {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;
    bool settled = false;  // old enough when read that a later change cannot bear the same time
    std::string name;
  };

  [[nodiscard]] std::string folder(int workplace) const;
  [[nodiscard]] std::string file(int workplace, int number) const;
  [[nodiscard]] const std::string& nameOf(const std::string& path);

  SiteRoot host_;
  std::map<std::string, KnownFile> known_;
};

}  // namespace tessaly
