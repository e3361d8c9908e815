#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "link/PanelClient.h"
#include "link/PanelMacros.h"
#include "model/MacroHistory.h"
#include "platform/SiteRoot.h"
#include "review/BatchPlaces.h"
#include "review/PanelShelf.h"

namespace tessaly {

// Who writes batches: an even generation to files of the disk, all or none; an odd one to them and to a
// workplace of a panel, whose files can be left in part, and every other one of these out of a snapshot that
// is stored first. With a history and a journal of its own.
class CrashBatchUser {
 public:
  CrashBatchUser(const std::filesystem::path& folder, std::uint16_t ftpPort);
  ~CrashBatchUser();

  [[nodiscard]] bool write(int generation) {
    return generation % 4 == 3 ? restore(generation) : writeBatch(generation);
  }
  // What the next start does. False when it leaves anything undone.
  [[nodiscard]] bool recover();

  // Site path of one of the files.
  [[nodiscard]] static bool isOurs(const std::string& path);
  // All files in generation 0.
  [[nodiscard]] static bool prepare(const std::filesystem::path& folder);
  // The generation of all files, when it is one; those of the panel may be behind an even one. Nothing, too,
  // when a snapshot is no whole one.
  [[nodiscard]] static std::optional<int> generation(const std::filesystem::path& folder);

 private:
  [[nodiscard]] bool writeBatch(int generation);
  [[nodiscard]] bool restore(int generation);

  SiteRoot root_;    // where the journal is
  SiteRoot macros_;  // the site's, where the files are
  MacroHistory history_;
  PanelClient client_;
  PanelMacros panel_;
  std::unique_ptr<PanelShelf> shelf_;
  BatchPlaces places_;
};

}  // namespace tessaly
