#include "model/HistoryEntry.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <map>
#include <vector>

#include "model/RecordText.h"
#include "platform/ContentCheck.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kMacroEnding = ".mac";
constexpr std::size_t kLongestHint = 40;  // of a file name
constexpr char kOutsideMark = 'x';
constexpr std::uint64_t kLargestNumber = std::numeric_limits<std::int32_t>::max();

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

std::int64_t timeOf(std::string_view day, std::string_view stem) {
  using namespace std::chrono;
  const sys_days date = year(digits(day, 0, 4)) / digits(day, 5, 2) / digits(day, 8, 2);
  const milliseconds time = hours(digits(stem, 0, 2)) + minutes(digits(stem, 2, 2)) +
                            seconds(digits(stem, 4, 2)) + milliseconds(digits(stem, 7, 3));
  return (sys_time<milliseconds>(date) + time).time_since_epoch().count();
}

// Takes a number and the "-" behind it off the text; nothing, and no change, when it does not begin so.
std::optional<std::uint64_t> takeNumber(std::string_view& text, bool& marked) {
  std::uint64_t number = 0;
  const char* const end = text.data() + text.size();
  auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc()) return std::nullopt;
  marked = stop != end && *stop == kOutsideMark;
  if (marked) ++stop;
  if (stop == end || *stop != '-') return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(stop + 1 - text.data()));
  return number;
}

// For people who look into the folder: the file's own name, as far as it is harmless.
std::string hintOf(const MacroPlace& place) {
  if (place.file.empty()) return "panel" + std::to_string(place.workplace) + "-macro" + place.number;
  std::string hint = std::string(fileNameOf(place.file));
  if (endsWithNoCase(hint, kMacroEnding)) hint.resize(hint.size() - kMacroEnding.size());
  for (char& c : hint) {
    const bool plain = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (!plain) c = '_';
  }
  return hint.substr(0, kLongestHint);
}

// The one that says least beside its neighbours; the first one has none before it.
std::size_t densest(const std::deque<HistoryEntry>& entries, const std::vector<std::size_t>& versions) {
  std::size_t found = 0;
  std::int64_t least = std::numeric_limits<std::int64_t>::max();
  for (std::size_t i = 1; i + kLastVersions < versions.size(); ++i) {
    const std::int64_t gap = std::abs(entries[versions[i + 1]].when - entries[versions[i - 1]].when);
    if (gap >= least) continue;
    least = gap;
    found = i;
  }
  return versions[found];
}

}  // namespace

HistoryEntry::HistoryEntry(std::int64_t theTime, std::uint64_t theSize, std::uint64_t theNumber,
                           const MacroPlace& place, bool outside)
    : when(theTime), size(theSize), number(theNumber), outsideRoot(outside) {
  using namespace std::chrono;
  const sys_time<milliseconds> moment{milliseconds(when)};
  const auto date = floor<days>(moment);
  const year_month_day calendar(date);
  const hh_mm_ss time(moment - date);
  day = format("%04d-%02u-%02u", static_cast<int>(calendar.year()), static_cast<unsigned>(calendar.month()),
               static_cast<unsigned>(calendar.day()));
  stem = format("%02d%02d%02d-%03d-", static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                static_cast<int>(time.subseconds().count()));
  stem += historyKey(place) + '-' + std::to_string(size) + '-' + std::to_string(number);
  if (outsideRoot) stem += kOutsideMark;
  stem += '-' + hintOf(place);
}

std::optional<HistoryEntry> HistoryEntry::parse(std::string_view day, std::string_view stem) {
  if (!isHistoryDay(day) || stem.size() <= kSizeStart) return std::nullopt;
  if (!matches(stem.substr(0, kTimePattern.size()), kTimePattern)) return std::nullopt;
  std::string_view rest = stem.substr(kSizeStart);
  bool marked = false;
  const auto size = takeNumber(rest, marked);
  if (!size || marked) return std::nullopt;
  HistoryEntry entry;
  entry.day = day;
  entry.stem = stem;
  entry.when = timeOf(day, stem);
  entry.size = *size;
  // What an earlier version kept has no number: it goes straight on with the hint, which has no "-" behind
  // digits.
  entry.number = takeNumber(rest, entry.outsideRoot).value_or(0);
  if (entry.number == 0) entry.outsideRoot = false;
  return entry.number <= kLargestNumber ? std::optional(entry) : std::nullopt;
}

std::string HistoryEntry::id() const { return day + '/' + stem.substr(0, kTimePattern.size()); }

std::string_view HistoryEntry::key() const { return std::string_view(stem).substr(kKeyStart, kKeyLength); }

std::string historyKey(const MacroPlace& place) {
  RecordText record;
  record.set({place.file, place.address.key(), place.workplace, place.number});
  const std::uint64_t sum = textSum(record.text());
  return format("%08x", static_cast<unsigned>(sum ^ (sum >> 32)));
}

bool isHistoryDay(std::string_view name) { return matches(name, kDayPattern); }

std::optional<std::size_t> nextToGo(const std::deque<HistoryEntry>& entries, bool outsideRoot,
                                    bool spareOnly) {
  std::map<std::string_view, std::vector<std::size_t>> versions;
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].outsideRoot == outsideRoot) versions[entries[i].key()].push_back(i);
  const auto most = std::max_element(versions.begin(), versions.end(), [](const auto& a, const auto& b) {
    const bool equal = a.second.size() == b.second.size();
    return equal ? a.second.front() > b.second.front() : a.second.size() < b.second.size();
  });
  if (most == versions.end()) return std::nullopt;
  if (most->second.size() > kLastVersions) return densest(entries, most->second);
  return spareOnly ? std::nullopt : std::optional(most->second.front());
}

}  // namespace tessaly
