#pragma once

#include <atomic>
#include <string>

#include "model/MacroHistory.h"
#include "platform/SiteRoot.h"
#include "review/MacroShelf.h"

namespace tessaly {

// A macro or key file of the disk, whatever it is called: written over whole, or deleted without `bytes`,
// after what it holds is kept (without `change`: it is not), and read back. Nobody who asks the history
// changes it meanwhile.
[[nodiscard]] ShelfWrite writeMacroFile(const SiteRoot& root, MacroHistory& history, std::string_view file,
                                        std::optional<std::string_view> bytes,
                                        std::optional<MacroChange> change, const BeforeWrite& before);

// A folder of the site or of this host. Names are not listed: they stand in the macros.
class DiskShelf final : public MacroShelf {
 public:
  // Observes root and history. The folder with or without a separator at its end; without a title it is
  // called by its path.
  DiskShelf(const SiteRoot& root, MacroHistory& history, std::string folder, std::string title = {});

  [[nodiscard]] std::string title() const override { return title_; }
  [[nodiscard]] MacroPlace place(MacroNumber number) const override;
  [[nodiscard]] Expected<std::vector<Held>> list() override;
  [[nodiscard]] Expected<std::string> read(MacroNumber number) override;
  [[nodiscard]] Outcome writable() const override;
  [[nodiscard]] ShelfWrite write(MacroNumber number, std::string_view bytes, MacroChange change,
                                 const BeforeWrite& before) override;
  [[nodiscard]] ShelfWrite remove(MacroNumber number, const BeforeWrite& before) override;
  void cancel() override { cancelled_ = true; }

 private:
  [[nodiscard]] ShelfWrite change(MacroNumber number, std::optional<std::string_view> bytes,
                                  MacroChange change, const BeforeWrite& before);

  const SiteRoot& root_;
  MacroHistory& history_;
  std::string folder_;  // with a separator at its end
  std::string title_;
  std::atomic<bool> cancelled_{false};
};

}  // namespace tessaly
