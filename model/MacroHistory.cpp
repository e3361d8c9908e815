#include "model/MacroHistory.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <utility>

#include "model/MacroNameScan.h"
#include "model/RecordText.h"
#include "platform/ContentCheck.h"
#include "platform/Files.h"
#include "platform/PendingFile.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr const char* kFolder = "history";  // under the root, beside the drives
constexpr const char* kMacroEnding = ".mac";
constexpr const char* kRecordEnding = ".txt";
constexpr const char* kFetchBeginning = "incoming-";
constexpr std::chrono::hours kFetchLeftOver{1};  // what is older was left by a program that was killed

constexpr const char* kChange = "change";
constexpr const char* kName = "name";

constexpr std::size_t kLargestRecord = 64 * 1024;  // bytes
constexpr std::size_t kLongestHint = 40;           // of a file name
constexpr std::uint64_t kShareOfOne = 4;

constexpr std::string_view kDayPattern = "dddd-dd-dd";
constexpr std::string_view kTimePattern = "dddddd-ddd";
constexpr std::size_t kKeyStart = kTimePattern.size() + 1;
constexpr std::size_t kKeyLength = 8;
constexpr std::size_t kSizeStart = kKeyStart + kKeyLength + 1;

bool matches(std::string_view text, std::string_view pattern) {
  return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(),
                    [](char c, char wanted) { return wanted == 'd' ? c >= '0' && c <= '9' : c == wanted; });
}

int digits(std::string_view text, std::size_t start, std::size_t count) {
  return parseInt(text.substr(start, count));
}

// Milliseconds since 1970 of a day folder and the beginning of a name.
std::int64_t timeOf(const std::string& day, const std::string& stem) {
  using namespace std::chrono;
  const sys_days date = year(digits(day, 0, 4)) / digits(day, 5, 2) / digits(day, 8, 2);
  const milliseconds time = hours(digits(stem, 0, 2)) + minutes(digits(stem, 2, 2)) +
                            seconds(digits(stem, 4, 2)) + milliseconds(digits(stem, 7, 3));
  return (sys_time<milliseconds>(date) + time).time_since_epoch().count();
}

// The size within a name, or nothing when the name is none of ours.
std::optional<std::uint64_t> sizeIn(std::string_view stem) {
  if (stem.size() <= kSizeStart || !matches(stem.substr(0, kTimePattern.size()), kTimePattern))
    return std::nullopt;
  std::uint64_t size = 0;
  const char* const end = stem.data() + stem.size();
  const auto [stop, error] = std::from_chars(stem.data() + kSizeStart, end, size);
  if (error != std::errc() || stop == end || *stop != '-') return std::nullopt;
  return size;
}

// What makes two macros the same one, short enough for a file name.
std::string keyOf(const MacroPlace& place) {
  RecordText record;
  record.set(place);
  const std::uint64_t sum = contentCheck(record.text()).sum;
  return format("%08x", static_cast<unsigned>(sum ^ (sum >> 32)));
}

// For people who look into the folder: the file's own name, as far as it is harmless.
std::string hintOf(const MacroPlace& place) {
  if (place.file.empty()) return "panel" + std::to_string(place.workplace) + "-macro" + place.number;
  std::string hint = place.file.substr(place.file.find_last_of("\\/") + 1);
  if (endsWithNoCase(hint, kMacroEnding)) hint.resize(hint.size() - std::string_view(kMacroEnding).size());
  for (char& c : hint) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (!plain) c = '_';
  }
  return hint.substr(0, kLongestHint);
}

Outcome writeWhole(const fs::path& path, std::string_view bytes, PendingFile::Sync sync) {
  PendingFile file(path);
  file.write(bytes);
  return file.commit(sync);
}

}  // namespace

MacroHistory::MacroHistory(const SiteRoot& root, Limits limits, Clock clock)
    : root_(root), limits_(limits), clock_(std::move(clock)) {}

MacroPlace MacroHistory::placeOfFile(std::string_view path) const {
  const fs::path host = root_.resolve(path);
  const std::string inside = host.lexically_relative(root_.path()).string();
  const bool onDrive = inside.size() > 2 && inside[1] == '/' && inside[0] >= 'a' && inside[0] <= 'z';
  if (!onDrive) return {host.string(), {}, 0, {}};
  return {inside.substr(0, 1) + ":" + replaceAll(inside.substr(1), "/", "\\"), {}, 0, {}};
}

// Of an entry's file, as site path.
std::string MacroHistory::site(const Entry& entry, const char* ending) {
  return std::string(kFolder) + '\\' + entry.day + '\\' + entry.stem + ending;
}

fs::path MacroHistory::host(const Entry& entry, const char* ending) const {
  return root_.path() / kFolder / entry.day / (entry.stem + ending);
}

void MacroHistory::load() {
  entries_.clear();
  bytes_ = 0;
  const std::string folder = std::string(kFolder) + '\\';
  for (const std::string& day : listFolder(root_, kFolder)) {
    if (!matches(day, kDayPattern)) continue;
    for (const std::string& name : listFolder(root_, folder + day, kMacroEnding)) {
      Entry entry{day, name.substr(0, name.size() - std::string_view(kMacroEnding).size()), 0};
      const auto size = sizeIn(entry.stem);
      if (!size) continue;
      entry.size = *size;
      bytes_ += entry.size;
      entries_.push_back(std::move(entry));
    }
  }
  if (!entries_.empty()) last_ = std::max(last_, timeOf(entries_.back().day, entries_.back().stem));
  loaded_ = true;
}

bool MacroHistory::same(const Entry& entry, std::string_view bytes, const MacroPlace& place) const {
  if (entry.size != bytes.size() || entry.stem.compare(kKeyStart, kKeyLength, keyOf(place)) != 0)
    return false;
  const KeptMacro kept = read(entry);
  return kept.place == place && readFile(root_, kept.file) == bytes;
}

std::string MacroHistory::nextName(std::string& day) {
  using namespace std::chrono;
  std::int64_t now = duration_cast<milliseconds>(clock_().time_since_epoch()).count();
  // Names of one moment would be one name.
  if (now <= last_ && last_ - now < milliseconds(seconds(1)).count()) now = last_ + 1;
  last_ = now;
  const sys_time<milliseconds> moment{milliseconds(now)};
  const auto date = floor<days>(moment);
  const year_month_day calendar(date);
  const hh_mm_ss time(moment - date);
  day = format("%04d-%02u-%02u", static_cast<int>(calendar.year()), static_cast<unsigned>(calendar.month()),
               static_cast<unsigned>(calendar.day()));
  return format("%02d%02d%02d-%03d", static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                static_cast<int>(time.subseconds().count()));
}

bool MacroHistory::store(std::string_view bytes, const MacroPlace& place, MacroChange change) {
  if (bytes.size() > limits_.bytes / kShareOfOne) return false;
  if (!loaded_) load();
  const std::string key = keyOf(place);
  const auto newest = std::find_if(entries_.rbegin(), entries_.rend(), [&key](const Entry& entry) {
    return entry.stem.compare(kKeyStart, kKeyLength, key) == 0;
  });
  if (newest != entries_.rend() && same(*newest, bytes, place)) return true;

  Entry entry;
  entry.stem = nextName(entry.day);
  entry.stem += '-' + key + '-' + std::to_string(bytes.size()) + '-' + hintOf(place);
  entry.size = bytes.size();
  if (!makeFolder(root_, std::string(kFolder) + '\\' + entry.day)) return false;
  RecordText record;
  record.set(place);
  record.set(kChange, changeWord(change));
  record.set(kName, macroNameIn(bytes));
  if (!writeWhole(host(entry, kRecordEnding), record.text(), PendingFile::Sync::kFileOnly)) return false;
  if (!writeWhole(host(entry, kMacroEnding), bytes, PendingFile::Sync::kFileAndFolder)) {
    std::error_code ignored;
    fs::remove(host(entry, kRecordEnding), ignored);
    return false;
  }
  bytes_ += entry.size;
  entries_.push_back(std::move(entry));
  makeRoom();
  return true;
}

void MacroHistory::makeRoom() {
  while (entries_.size() > limits_.macros || (bytes_ > limits_.bytes && entries_.size() > 1)) dropOldest();
}

void MacroHistory::dropOldest() {
  const Entry oldest = entries_.front();
  entries_.pop_front();
  bytes_ -= std::min(bytes_, oldest.size);
  std::error_code ignored;
  fs::remove(host(oldest, kMacroEnding), ignored);
  fs::remove(host(oldest, kRecordEnding), ignored);
  // Fails, and is to fail, while anything is left in it.
  if (entries_.empty() || entries_.front().day != oldest.day)
    fs::remove(root_.path() / kFolder / oldest.day, ignored);
}

bool MacroHistory::keep(std::string_view bytes, const MacroPlace& place, MacroChange change) {
  const std::scoped_lock guard(mutex_);
  try {
    if (store(bytes, place.file.empty() ? place : placeOfFile(place.file), change)) return true;
  } catch (const std::exception&) {
    // No memory, or a file system that answers out of order: what was to be done goes on without.
  }
  failed_ = true;
  return false;
}

bool MacroHistory::keepFile(std::string_view path, MacroChange change) {
  if (!isRegularFile(root_, path)) return true;
  const auto bytes = readFile(root_, path, limits_.bytes / kShareOfOne);
  if (bytes) return keep(*bytes, {std::string(path), {}, 0, {}}, change);
  notFetched();
  return false;
}

std::string MacroHistory::fetchFile() {
  const std::scoped_lock guard(mutex_);
  if (!makeFolder(root_, kFolder)) return {};
  const fs::path folder = root_.path() / kFolder;
  std::error_code error;
  for (const std::string& name : listFolder(root_, kFolder, kMacroEnding)) {
    if (name.rfind(kFetchBeginning, 0) != 0) continue;
    const auto written = fs::last_write_time(folder / name, error);
    if (!error && fs::file_time_type::clock::now() - written > kFetchLeftOver)
      fs::remove(folder / name, error);
  }
  const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
  return folder / format("%s%llx-%x%s", kFetchBeginning, static_cast<unsigned long long>(now), ++fetches_,
                         kMacroEnding);
}

void MacroHistory::keepFetched(const std::string& hostPath, const MacroPlace& place, MacroChange change) {
  const std::string fetched = std::string(kFolder) + '\\' + fs::path(hostPath).filename().string();
  const auto bytes = readFile(root_, fetched, limits_.bytes / kShareOfOne);
  std::error_code ignored;
  fs::remove(hostPath, ignored);
  if (bytes)
    keep(*bytes, place, change);
  else
    notFetched();
}

void MacroHistory::notFetched() {
  const std::scoped_lock guard(mutex_);
  failed_ = true;
}

bool MacroHistory::takeFailure() {
  const std::scoped_lock guard(mutex_);
  return std::exchange(failed_, false);
}

KeptMacro MacroHistory::read(const Entry& entry) const {
  KeptMacro kept;
  kept.id = entry.day + '/' + entry.stem.substr(0, kTimePattern.size());
  kept.when = timeOf(entry.day, entry.stem);
  kept.size = entry.size;
  kept.file = site(entry, kMacroEnding);
  const auto text = readFile(root_, site(entry, kRecordEnding), kLargestRecord);
  const auto record = text ? RecordText::parse(*text) : std::nullopt;
  if (!record) return kept;
  kept.place = record->place();
  kept.name = record->get(kName);
  kept.change = changeOfWord(record->get(kChange));
  return kept;
}

std::vector<KeptMacro> MacroHistory::list() {
  const std::scoped_lock guard(mutex_);
  load();
  std::vector<KeptMacro> kept;
  kept.reserve(entries_.size());
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry) kept.push_back(read(*entry));
  return kept;
}

std::optional<KeptMacro> MacroHistory::find(std::string_view id) {
  const std::scoped_lock guard(mutex_);
  load();
  for (auto entry = entries_.rbegin(); entry != entries_.rend(); ++entry)
    if (entry->day + '/' + entry->stem.substr(0, kTimePattern.size()) == id) return read(*entry);
  return std::nullopt;
}

bool MacroHistory::putBack(const KeptMacro& macro, std::string_view path) {
  // Read first: keeping what is there now may be what drives this one out.
  const auto bytes = readFile(root_, macro.file);
  if (!bytes) return false;
  keepFile(path, MacroChange::kPutBack);
  return writeFile(root_, path, *bytes).done();
}

}  // namespace tessaly
