#pragma once

#include <map>
#include <memory>

#include "cli/PanelLine.h"
#include "link/PanelClient.h"
#include "link/PanelMacros.h"
#include "model/MacroHistory.h"
#include "review/MacroShelf.h"

namespace tessaly {

// The workplaces of one panel for one command: one connection for its names and one for its files, made again
// when they are lost. Ended with the object. One thread.
class PanelShelves {
 public:
  // Observes root and history.
  PanelShelves(const SiteRoot& root, MacroHistory& history, PanelPlace place);
  ~PanelShelves();
  PanelShelves(const PanelShelves&) = delete;
  PanelShelves& operator=(const PanelShelves&) = delete;

  // Connects unless it is connected. Blocks.
  [[nodiscard]] bool open();
  [[nodiscard]] const PanelPlace& panel() const { return place_; }

  // Each, also null while the panel cannot be reached.
  [[nodiscard]] std::unique_ptr<MacroShelf> make(int workplace);
  [[nodiscard]] MacroShelf* shelf(int workplace);

 private:
  PanelPlace place_;
  MacroHistory& history_;
  PanelClient client_;
  PanelMacros macros_;
  std::map<int, std::unique_ptr<MacroShelf>> shelves_;
};

}  // namespace tessaly
