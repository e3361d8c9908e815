#include "model/MacroHistory.h"

#include <algorithm>
#include <cerrno>
#include <random>
#include <set>
#include <system_error>
#include <utility>

#include "platform/ContentCheck.h"
#include "platform/FileLock.h"
#include "platform/Files.h"
#include "platform/PendingFile.h"
#include "platform/SitePlace.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "platform/WayBack.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr const char* kFolder = "history";  // under the root, beside the drives
constexpr const char* kMacroEnding = ".mac";
constexpr const char* kRecordEnding = ".txt";

constexpr const char* kLockFile = "lock";  // its text is the number of what was kept last
constexpr std::uint64_t kHistoryLock = 0;  // the others are odd, one for each file

constexpr std::size_t kLargestRecord = 64 * 1024;  // bytes
constexpr std::uint64_t kShareOfOne = 4;

// As far as the folder can be read; none where there is no such folder, or only a link to one.
std::vector<fs::directory_entry> entriesOf(const fs::path& folder, std::error_code& error) {
  std::vector<fs::directory_entry> found;
  const auto kind = fs::symlink_status(folder, error).type();
  if (kind == fs::file_type::not_found) error.clear();
  if (kind != fs::file_type::directory) return found;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) found.push_back(*entry);
  return found;
}

Failure nearlyFull() { return {Failure::Kind::kFull, "cannot be kept: the disk is nearly full"}; }

// However many ways lead to it.
std::uint64_t lockNumber(const fs::path& file) {
  std::error_code error;
  const fs::path plain = fs::weakly_canonical(file, error);
  return textSum((error ? file : plain).string()) | 1U;
}

// A day may have thousands of them, so they are swept by `removeLeftOvers` only.
Outcome writeWhole(const fs::path& path, std::string_view bytes, PendingFile::Sync sync) {
  PendingFile file(path, {.followsLinks = false, .keepsMode = false, .sweeps = false});
  file.write(bytes);
  return file.commit(sync);
}

}  // namespace

MacroHistory::MacroHistory(const SiteRoot& root, Limits limits, Clock clock)
    : root_(root), folder_(root.path() / kFolder), limits_(limits), clock_(std::move(clock)) {}

Expected<MacroPlace> MacroHistory::spelt(const MacroPlace& place) const {
  if (place.file.empty()) return place;
  const auto host = tessaly::placeOf(root_, place.file);
  if (!host) return host.failure();
  return MacroPlace{root_.sitePathOf(*host), {}, 0, {}};
}

bool MacroHistory::holds(std::string_view path) const {
  const fs::path way = path.empty() ? fs::path() : root_.resolve(path).lexically_relative(folder_);
  return !way.empty() && *way.begin() != "..";
}

bool MacroHistory::onDrive(const MacroPlace& place) { return place.file.size() > 1 && place.file[1] == ':'; }

fs::path MacroHistory::host(const HistoryEntry& entry, const char* ending) const {
  return folder_ / entry.day / (entry.stem + ending);
}

Outcome MacroHistory::load() {
  entries_.clear();
  std::error_code error, ofDays;
  for (const fs::directory_entry& day : entriesOf(folder_, ofDays)) {
    const std::string dayName = day.path().filename().string();
    if (!isHistoryDay(dayName)) continue;
    for (const fs::directory_entry& file : entriesOf(day.path(), error)) {
      if (file.path().extension() != kMacroEnding) continue;
      auto entry = HistoryEntry::parse(dayName, file.path().stem().string());
      if (!entry) continue;
      std::error_code unknown;
      const auto kind = file.symlink_status(unknown).type();
      if (kind == fs::file_type::none) ofDays = unknown;
      if (kind == fs::file_type::regular) entries_.push_back(*std::move(entry));
    }
    if (error) ofDays = error;
  }
  std::sort(entries_.begin(), entries_.end(), [](const HistoryEntry& a, const HistoryEntry& b) {
    return std::tie(a.number, a.when, a.stem) < std::tie(b.number, b.when, b.stem);
  });
  return ofDays ? systemFailure(ofDays.value(), "read") : Outcome();
}

// What killed programs have left: unfinished files, and records that no macro has followed. While the history
// is locked nobody else is about to finish one.
void MacroHistory::removeLeftOvers() const {
  std::error_code ignored;
  for (const fs::directory_entry& day : entriesOf(folder_, ignored)) {
    const bool ours = fs::is_directory(day.symlink_status(ignored));
    if (!ours || !isHistoryDay(day.path().filename().string())) continue;
    PendingFile::sweep(day.path().string());
    std::error_code unread;
    const auto files = entriesOf(day.path(), unread);
    if (unread) continue;
    std::set<std::string> macros;
    for (const fs::directory_entry& file : files)
      if (file.path().extension() == kMacroEnding) macros.insert(file.path().stem().string());
    for (const fs::directory_entry& file : files) {
      const std::string stem = file.path().stem().string();
      if (file.path().extension() != kRecordEnding || macros.contains(stem)) continue;
      if (HistoryEntry::parse(day.path().filename().string(), stem)) fs::remove(file.path(), ignored);
    }
    fs::remove(day.path(), ignored);  // an empty one
  }
}

bool MacroHistory::same(const HistoryEntry& entry, std::string_view bytes, const MacroPlace& place) const {
  if (entry.size != bytes.size()) return false;
  Outcome unread;
  const KeptMacro kept = read(entry, unread);
  return kept.place == place && readOwnFile(root_, kept.file) == bytes;
}

// Its moment is its own, since it is known by that.
HistoryEntry MacroHistory::nextEntry(std::uint64_t size, const MacroPlace& place) {
  auto when = std::chrono::duration_cast<milliseconds>(clock_().time_since_epoch()).count();
  const auto isTaken = [&when](const HistoryEntry& entry) { return entry.when == when; };
  while (std::any_of(entries_.begin(), entries_.end(), isTaken)) ++when;
  const std::uint64_t newest = entries_.empty() ? 0 : entries_.back().number;
  const auto last = static_cast<std::uint64_t>(std::max(0, parseInt(seen_)));
  return {when, size, std::max(newest, last) + 1, place, !place.file.empty() && !onDrive(place)};
}

Outcome MacroHistory::writeEntry(const HistoryEntry& entry, std::string_view record, std::string_view bytes) {
  Outcome made = makeOwnFolder(folder_ / entry.day);
  if (!made.written()) return made;
  const fs::path recordFile = host(entry, kRecordEnding);
  if (auto written = writeWhole(recordFile, record, PendingFile::Sync::kFileOnly); !written) return written;
  auto written = writeWhole(host(entry, kMacroEnding), bytes, PendingFile::Sync::kFileAndFolder);
  std::error_code ignored;
  if (!written.written()) fs::remove(recordFile, ignored);
  return written ? made : written;
}

Outcome MacroHistory::store(std::string_view bytes, const MacroPlace& place, MacroChange change,
                            std::optional<std::string>& id) {
  if (bytes.size() > limits_.bytes / kShareOfOne)
    return Failure{Failure::Kind::kTooLarge, "cannot be kept: it is too large"};
  // A folder that may not survive a power cut is no reason to keep nothing, and is told in the end.
  Outcome made = makeOwnFolder(folder_);
  if (!made.written()) return made;
  const auto lock = FileLock::take(folder_ / kLockFile, kHistoryLock, limits_.patience);
  if (!lock) return lock.failure();
  // Another program may have kept something since, or died of it, and a first look is needed, too.
  if (std::string text = lock->text(); text.empty() || text != seen_) {
    removeLeftOvers();
    static_cast<void>(load());  // what cannot be read now is not counted
    seen_ = std::move(text);
  }
  const std::string key = historyKey(place);
  const auto newest = std::find_if(entries_.rbegin(), entries_.rend(),
                                   [&key](const HistoryEntry& entry) { return entry.key() == key; });
  if (newest != entries_.rend() && same(*newest, bytes, place)) {
    id = newest->id();
    return {};
  }
  if (auto left = leaveReserve(bytes.size()); !left) return left;

  const HistoryEntry entry = nextEntry(bytes.size(), place);
  // First, since a number that nobody uses does no harm.
  const std::string text = std::to_string(entry.number);
  if (auto counted = lock->setText(text); !counted) return counted;
  seen_ = text;
  auto written = writeEntry(entry, historyRecord(bytes, place, change), bytes);
  if (!written.written()) return written;
  entries_.push_back(entry);
  id = entry.id();
  makeRoom(entry.outsideRoot);
  return written ? made : written;
}

// The history gives way to what people want to save: first by what it can spare, then by not growing.
Outcome MacroHistory::leaveReserve(std::uint64_t size) {
  while (freeBytes(folder_) < limits_.reserve + size) {
    auto spare = nextToGo(entries_, true, true);
    if (!spare) spare = nextToGo(entries_, false, true);
    if (!spare) return nearlyFull();
    drop(*spare);
  }
  return {};
}

void MacroHistory::makeRoom(bool outsideRoot) {
  const auto isCounted = [outsideRoot](const HistoryEntry& entry) {
    return entry.outsideRoot == outsideRoot;
  };
  auto count = static_cast<std::size_t>(std::count_if(entries_.begin(), entries_.end(), isCounted));
  std::uint64_t bytes = 0;
  for (const HistoryEntry& entry : entries_) bytes += isCounted(entry) ? entry.size : 0;
  while (count > limits_.macros || bytes > limits_.bytes) {
    const auto next = nextToGo(entries_, outsideRoot, false);
    if (!next) return;
    --count;
    bytes -= entries_[*next].size;
    drop(*next);
  }
}

void MacroHistory::drop(std::size_t index) {
  const HistoryEntry dropped = entries_[index];
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
  std::error_code ignored;
  fs::remove(host(dropped, kMacroEnding), ignored);
  fs::remove(host(dropped, kRecordEnding), ignored);
  fs::remove(folder_ / dropped.day, ignored);  // fails, and is to fail, while anything is left in it
}

void MacroHistory::note(std::optional<Failure> failure, std::optional<std::string> kept) {
  if (WayBack::givenUp()) return;
  const std::scoped_lock guard(toldMutex_);
  kept_ = std::move(kept);
  if (failure) failure_ = std::move(failure);
}

Outcome MacroHistory::keep(std::string_view bytes, const MacroPlace& place, MacroChange change) {
  std::optional<std::string> id;
  auto stored = [&]() -> Outcome {
    const std::scoped_lock guard(mutex_);
    if (bytes.size() > limits_.bytes / kShareOfOne) return systemFailure(EFBIG, "kept");
    try {
      const auto whose = spelt(place);
      return whose ? store(bytes, *whose, change, id) : whose.failure();
    } catch (const std::bad_alloc&) {
      return systemFailure(ENOMEM, "kept");
    } catch (const std::exception& problem) {  // a file system that answers out of order
      return Failure{Failure::Kind::kDiskError, std::string("cannot be kept: ") + problem.what()};
    }
  }();
  note(stored ? std::nullopt : std::optional(stored.failure()), std::move(id));
  return stored;
}

Outcome MacroHistory::keepFile(std::string_view path, MacroChange change) {
  const auto bytes = readFile(root_, path, limits_.bytes / kShareOfOne);
  if (bytes) return keep(*bytes, {std::string(path), {}, 0, {}}, change);
  const Failure::Kind why = bytes.failure().kind;
  const bool isNone = why == Failure::Kind::kInTheWay && !isRegularFile(root_, path);
  if (why == Failure::Kind::kMissing || isNone) {
    note(std::nullopt);
    return {};
  }
  note(bytes.failure());
  return bytes.failure();
}

Outcome MacroHistory::whileLocked(std::string_view path, const Work& work) {
  const auto file = tessaly::placeOf(root_, path);
  if (!file) return file.failure();
  if (file->empty() || !makeOwnFolder(folder_)) return work();
  const auto lock = FileLock::take(folder_ / kLockFile, lockNumber(*file), limits_.patience);
  return lock || lock.failure().kind != Failure::Kind::kInUse ? work() : lock.failure();
}

Outcome MacroHistory::change(std::string_view path, MacroChange change, const Work& work,
                             const MayLose& mayLose) {
  return whileLocked(path, [&]() -> Outcome {
    const Outcome kept = keepFile(path, change);  // `takeFailure` tells why not
    if (kept || !mayLose || mayLose(kept.failure())) return work();
    static_cast<void>(takeFailure());  // nothing is lost
    return Failure{Failure::Kind::kCancelled, "what stands there could not be kept"};
  });
}

std::optional<Failure> MacroHistory::takeFailure() {
  const std::scoped_lock guard(toldMutex_);
  return std::exchange(failure_, std::nullopt);
}

std::optional<std::string> MacroHistory::takeKept() {
  const std::scoped_lock guard(toldMutex_);
  return std::exchange(kept_, std::nullopt);
}

KeptMacro MacroHistory::read(const HistoryEntry& entry, Outcome& unread) const {
  const std::string file = std::string(kFolder) + '\\' + entry.day + '\\' + entry.stem;
  KeptMacro kept;
  kept.id = entry.id();
  kept.when = entry.when;
  kept.size = entry.size;
  kept.file = file + kMacroEnding;
  const auto text = readOwnFile(root_, file + kRecordEnding, kLargestRecord);
  if (text)
    kept.takeRecord(*text);
  else if (!isNothing(text.failure()))
    unread = text.failure();
  return kept;
}

std::vector<KeptMacro> MacroHistory::list(const std::atomic<bool>* stop, Outcome* whole) {
  const std::scoped_lock guard(mutex_);
  Outcome loaded = load();
  std::vector<KeptMacro> kept;
  kept.reserve(entries_.size());
  for (auto entry = entries_.rbegin(); entry != entries_.rend() && (stop == nullptr || !*stop); ++entry)
    kept.push_back(read(*entry, loaded));
  if (whole != nullptr) *whole = loaded;
  return kept;
}

Expected<KeptMacro> MacroHistory::find(std::string_view id) {
  const std::scoped_lock guard(mutex_);
  const Outcome loaded = load();
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) {
    if (entry->id() != id) continue;
    Outcome unread;
    KeptMacro kept = read(*entry, unread);
    return unread ? Expected(std::move(kept)) : unread.failure();
  }
  return loaded ? Failure{Failure::Kind::kMissing, "is no longer in the history"} : loaded.failure();
}

bool MacroHistory::isOfSite(const KeptMacro& macro) const {
  if (!macro.place || macro.place->file.empty()) return false;
  const auto place = spelt(*macro.place);
  return place && onDrive(*place) && root_.holds(macro.place->file);
}

Outcome MacroHistory::putBack(const KeptMacro& macro, std::string_view path, const MayLose& mayLose) {
  // Read first: keeping what is there now may be what drives this one out.
  const auto bytes = readOwnFile(root_, macro.file);
  if (!bytes) return bytes.failure();
  return change(
      path, MacroChange::kPutBack, [&] { return writeFile(root_, path, *bytes); }, mayLose);
}

}  // namespace tessaly
