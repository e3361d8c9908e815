#pragma once

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

#include "model/KeptMacro.h"
#include "platform/MacroKeeper.h"
#include "platform/SiteRoot.h"

namespace tessaly {

inline constexpr std::size_t kMostKeptMacros = 2000;
inline constexpr std::uint64_t kMostKeptBytes = std::uint64_t{256} * 1024 * 1024;

// Keeps what macros held before this program overwrites or deletes them: in dated folders under the root,
// beside the drives, the oldest going first when there are too many (docs/history-format.md). Keeping is an
// extra: a failure never stops what was to be done. Identical versions of one macro in a row are kept once.
// Blocking, any thread. The window and the command-line twin may use one root at a time; each counts by what
// it found.
class MacroHistory : public MacroKeeper {
 public:
  struct Limits {
    std::size_t macros = kMostKeptMacros;
    std::uint64_t bytes = kMostKeptBytes;  // a quarter of it is the largest macro that is kept
  };
  using Clock = std::function<std::chrono::system_clock::time_point()>;

  // Observes the root. Touches nothing before the first use.
  explicit MacroHistory(const SiteRoot& root, Limits limits = {kMostKeptMacros, kMostKeptBytes},
                        Clock clock = &std::chrono::system_clock::now);

  // False when there is a file of the site that could not be kept. No file is nothing to keep.
  bool keepFile(std::string_view path, MacroChange change);
  bool keep(std::string_view bytes, const MacroPlace& place, MacroChange change);

  [[nodiscard]] std::string fetchFile() override;
  void keepFetched(const std::string& hostPath, const MacroPlace& place, MacroChange change) override;
  void notFetched() override;

  // True when something could not be kept since the last call.
  [[nodiscard]] bool takeFailure();

  // Newest first, as the folder is now.
  [[nodiscard]] std::vector<KeptMacro> list();
  // By its id; nothing when it is not there.
  [[nodiscard]] std::optional<KeptMacro> find(std::string_view id);
  // Writes a kept macro over a file of the site, whose present content is kept. False when not written.
  [[nodiscard]] bool putBack(const KeptMacro& macro, std::string_view path);

 private:
  struct Entry {
    std::string day;   // "2026-11-24"
    std::string stem;  // "175644-123-9f3a1c20-4711-macro007"
    std::uint64_t size;
  };

  // The one spelling of a file's path, however it was given.
  [[nodiscard]] MacroPlace placeOfFile(std::string_view path) const;
  void load();
  bool store(std::string_view bytes, const MacroPlace& place, MacroChange change);
  [[nodiscard]] bool same(const Entry& entry, std::string_view bytes, const MacroPlace& place) const;
  void makeRoom();
  void dropOldest();
  [[nodiscard]] std::string nextName(std::string& day);
  [[nodiscard]] static std::string site(const Entry& entry, const char* ending);
  [[nodiscard]] std::filesystem::path host(const Entry& entry, const char* ending) const;
  [[nodiscard]] KeptMacro read(const Entry& entry) const;

  const SiteRoot& root_;
  Limits limits_;
  Clock clock_;
  std::mutex mutex_;  // over what follows
  bool loaded_ = false;
  bool failed_ = false;
  std::deque<Entry> entries_;  // oldest first
  std::uint64_t bytes_ = 0;
  std::int64_t last_ = 0;  // when the newest was kept
  unsigned fetches_ = 0;
};

}  // namespace tessaly
