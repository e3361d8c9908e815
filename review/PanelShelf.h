#pragma once

#include <atomic>
#include <chrono>
#include <string>

#include "link/PanelMacros.h"
#include "model/MacroHistory.h"
#include "review/MacroShelf.h"

namespace tessaly {

// A workplace of a panel that is connected. Every macro is sent verified, and the panel is told to read its
// macros again after each; a deletion is over when the panel no longer gives the file. Not in the
// demonstration.
class PanelShelf final : public MacroShelf {
 public:
  // Observes all. `macros` keeps in `history`, and both serve this thread's shelves alone; with
  // `stayConnected` all of a panel's shelves share one connection to its files.
  PanelShelf(PanelMacros& macros, PanelClient& client, MacroHistory& history, HostAddress address,
             int workplace);

  // How long a panel may take to delete a macro; 5 s.
  void waitForDeletion(std::chrono::milliseconds patience) { deletion_ = patience; }

  [[nodiscard]] std::string title() const override;
  [[nodiscard]] MacroPlace place(MacroNumber number) const override;
  [[nodiscard]] Expected<std::vector<Held>> list() override;
  [[nodiscard]] Expected<std::string> read(MacroNumber number) override;
  [[nodiscard]] Outcome writable() const override;
  [[nodiscard]] ShelfWrite write(MacroNumber number, std::string_view bytes, MacroChange change,
                                 const BeforeWrite& before) override;
  [[nodiscard]] ShelfWrite remove(MacroNumber number, const BeforeWrite& before) override;
  void cancel() override;

 private:
  // Asks `before`; not done when nothing is to be written.
  [[nodiscard]] Outcome ask(const PanelStanding& standing, const BeforeWrite& before);
  // Not done while the line leads to another panel than the files.
  [[nodiscard]] Outcome whole() const;
  [[nodiscard]] ShelfWrite awaitDeletion(MacroNumber number);

  PanelMacros& macros_;
  PanelClient& client_;
  MacroHistory& history_;
  HostAddress address_;
  int workplace_;
  std::chrono::milliseconds deletion_;
  std::atomic<bool> cancelled_{false};
};

}  // namespace tessaly
