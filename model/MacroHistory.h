#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/HistoryEntry.h"
#include "model/KeptMacro.h"
#include "platform/MacroKeeper.h"
#include "platform/SiteRoot.h"

namespace tessaly {

inline constexpr std::size_t kMostKeptMacros = 2000;
inline constexpr std::uint64_t kMostKeptBytes = std::uint64_t{256} * 1024 * 1024;
inline constexpr std::uint64_t kDiskReserve = std::uint64_t{16} * 1024 * 1024;

// Keeps what macros held before this program overwrites or deletes them: in dated folders under the root,
// beside the drives (docs/history-format.md). Keeping is an extra: a failure never stops what was to be done.
// Identical versions of one macro in a row are kept once. When there are too many, the macro with the most
// versions gives one, so that none drives out the last ones of another. Blocking, any thread, any number of
// programs on one root.
class MacroHistory : public MacroKeeper {
 public:
  // Those of the macros of the root and the panels; files elsewhere are counted apart by the same.
  struct Limits {
    std::size_t macros = kMostKeptMacros;
    std::uint64_t bytes = kMostKeptBytes;  // a quarter of it is the largest macro that is kept
    std::uint64_t reserve = kDiskReserve;  // bytes of the disk that are left to others
    std::chrono::milliseconds patience{
        500};  // with another program, once for a file and once for the history
  };
  using Work = std::function<Outcome()>;
  // Asked when what stands there could not be kept; false: nothing is overwritten (`kCancelled`).
  using MayLose = std::function<bool(const Failure& why)>;
  using Clock = std::function<std::chrono::system_clock::time_point()>;

  // Observes the root. Touches nothing before the first use.
  explicit MacroHistory(const SiteRoot& root) : MacroHistory(root, Limits()) {}
  MacroHistory(const SiteRoot& root, Limits limits, Clock clock = &std::chrono::system_clock::now);

  // Runs `work`, which overwrites, changes or deletes a file of the site, after what it holds is kept.
  // Meanwhile nobody else who asks like this, in whatever program, changes the file, so that keeping, reading
  // and writing are one step. Not done (`kInUse`), and `work` not run, when somebody else was changing it all
  // the time that was waited; else what `work` says. Where there can be no locks, nobody is waited for.
  Outcome change(std::string_view path, MacroChange change, const Work& work, const MayLose& mayLose = {});
  // The same for what is not kept, or only once it is known that it will be changed.
  Outcome whileLocked(std::string_view path, const Work& work);

  // Not done when there is a file of the site that could not be kept. No file is nothing to keep.
  Outcome keepFile(std::string_view path, MacroChange change);
  Outcome keep(std::string_view bytes, const MacroPlace& place, MacroChange change) override;
  void notFetched(const Failure& why) override { note(why); }

  // Why something could not be kept since the last call: the last one.
  [[nodiscard]] std::optional<Failure> takeFailure();

  // The id of what was kept last, or was kept already, since the last call. Nothing when there was nothing to
  // keep, or when it could not be kept.
  [[nodiscard]] std::optional<std::string> takeKept();

  // Newest first, as the folder is now; those that were read until somebody has set `stop`. `whole` is told
  // why a part of the folder could not be read.
  [[nodiscard]] std::vector<KeptMacro> list(const std::atomic<bool>* stop = nullptr,
                                            Outcome* whole = nullptr);
  // By its id; kMissing when it is surely not there.
  [[nodiscard]] Expected<KeptMacro> find(std::string_view id);

  // Whether it came from a file on a drive of the root, and no link leads out from there. A record is a file
  // that anyone may have written: what it says decides nothing outside the site.
  [[nodiscard]] bool isOfSite(const KeptMacro& macro) const;
  // Whether a file, which need not be there, is one of its own.
  [[nodiscard]] bool holds(std::string_view path) const;
  // Writes a kept macro over a file of the site, whose present content is kept.
  Outcome putBack(const KeptMacro& macro, std::string_view path, const MayLose& mayLose = {});

 private:
  // With the one spelling of a file's path, however it was given.
  [[nodiscard]] Expected<MacroPlace> spelt(const MacroPlace& place) const;
  [[nodiscard]] static bool onDrive(const MacroPlace& place);
  // A failure where a part of it could not be read.
  Outcome load();
  void removeLeftOvers() const;
  // `id` is that of what is kept, if anything is.
  Outcome store(std::string_view bytes, const MacroPlace& place, MacroChange change,
                std::optional<std::string>& id);
  [[nodiscard]] HistoryEntry nextEntry(std::uint64_t size, const MacroPlace& place);
  Outcome writeEntry(const HistoryEntry& entry, std::string_view record, std::string_view bytes);
  [[nodiscard]] bool same(const HistoryEntry& entry, std::string_view bytes, const MacroPlace& place) const;
  Outcome leaveReserve(std::uint64_t size);
  void makeRoom(bool outsideRoot);
  void drop(std::size_t index);
  [[nodiscard]] std::filesystem::path host(const HistoryEntry& entry, const char* ending) const;
  // `unread` is told why its record cannot be read now; nobody knows then where it came from.
  [[nodiscard]] KeptMacro read(const HistoryEntry& entry, Outcome& unread) const;
  // What nobody asks for any more (WayBack) is not noted.
  void note(std::optional<Failure> failure, std::optional<std::string> kept = {});

  const SiteRoot& root_;
  std::filesystem::path folder_;
  Limits limits_;
  Clock clock_;
  std::mutex mutex_;                  // over what follows; held while the disk is at it
  std::deque<HistoryEntry> entries_;  // oldest first
  std::string seen_;                  // the lock file's text when the entries were last known to be all
  std::mutex toldMutex_;              // over what follows; a leaf
  std::optional<Failure> failure_;
  std::optional<std::string> kept_;
};

}  // namespace tessaly
