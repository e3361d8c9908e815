#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileLock.h"
#include "platform/SiteRoot.h"
#include "review/MacroBatch.h"

namespace tessaly {

// What the journal of a batch tells.
struct BatchRecord {
  std::string title;
  MacroBatch::Mode mode = MacroBatch::Mode::kAsManyAsGo;
  MacroChange change = MacroChange::kSave;
  std::vector<BatchItem> items;
  std::vector<std::optional<std::string>> olds;  // with kAllOrNone: what each place held, to put it back
  struct Begun {
    std::size_t item;
    HeldContent old;
    std::string oldBytes;  // where a part of them may be left; else empty
  };
  std::optional<Begun> begun;  // with kAsManyAsGo: the last one; those before it are settled
  bool undoing = false;        // with kAllOrNone: it has failed, and what was written is being put back
};

// The file in which a batch stands while it runs (docs/batch-journal.md): in a folder of the root beside the
// history, locked while its program lives, and gone with its end. One thread.
class BatchJournal {
 public:
  // Writes and locks a new one; on the disk before it returns. kTooLarge.
  static Expected<BatchJournal> begin(const SiteRoot& root, const BatchRecord& record);

  // What stands in the folder, oldest first, by its names.
  [[nodiscard]] static Expected<std::vector<std::string>> namesIn(const SiteRoot& root);
  struct Found;
  // Locks and reads one. kInUse while its program lives, kMissing when that has ended meanwhile,
  // kNoPermission for one that is not this user's, kNoSnapshot when it is none, or none of this version.
  static Expected<Found> open(const SiteRoot& root, const std::string& name);

  // The item is about to be written over. `old` is what stands there; its bytes are kept where a part of them
  // may be left by a program that dies.
  Outcome noteBegun(std::size_t item, const Expected<std::string>& old, bool tears);
  Outcome noteUndoing();
  // It is over. kUnflushed where a power cut may bring it back, and with it a start that goes on with it.
  Outcome end();

 private:
  BatchJournal(const SiteRoot& root, std::string path, FileLock lock, std::size_t size)
      : root_(&root), path_(std::move(path)), lock_(std::move(lock)), size_(size) {}
  Outcome append(const std::string& record);

  const SiteRoot* root_;
  std::string path_;
  FileLock lock_;
  std::size_t size_;  // of the file as far as it counts
};

struct BatchJournal::Found {
  BatchJournal journal;
  BatchRecord record;
};

}  // namespace tessaly
