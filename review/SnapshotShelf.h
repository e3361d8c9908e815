#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "review/MacroShelf.h"
#include "review/Snapshot.h"

namespace tessaly {

// One workplace of a snapshot, or its folder. Nothing can be written to it. As MacroShelf.
class SnapshotShelf final : public MacroShelf {
 public:
  // `path` is the snapshot's, for people and for what is told of a macro.
  SnapshotShelf(std::shared_ptr<const Snapshot> snapshot, int workplace, std::string path);

  [[nodiscard]] std::string title() const override;
  [[nodiscard]] MacroPlace place(MacroNumber number) const override;
  [[nodiscard]] Expected<std::vector<Held>> list() override;
  [[nodiscard]] Expected<std::string> read(MacroNumber number) override;
  [[nodiscard]] Outcome writable() const override;
  [[nodiscard]] ShelfWrite write(MacroNumber number, std::string_view bytes, MacroChange change,
                                 const BeforeWrite& before) override;
  [[nodiscard]] ShelfWrite remove(MacroNumber number, const BeforeWrite& before) override;
  void cancel() override { cancelled_ = true; }

 private:
  std::shared_ptr<const Snapshot> snapshot_;
  int workplace_;
  std::string path_;
  std::atomic<bool> cancelled_{false};
};

}  // namespace tessaly
