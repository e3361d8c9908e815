#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "classic/ClassicCommand.h"
#include "platform/SiteRoot.h"

namespace tessaly {

enum class ParameterType : std::uint8_t {
  kUnknown = 0,
  kByte = 1,
  kByteEnum = 2,
  kWord = 3,
  kWordEnum = 4,
  kLong = 5,
  kLongEnum = 6,
  kInput = 7,
  kAnalog = 8,
  kAnalogBi = 9,
  kString = 10,
  kTimecode = 11,
  kClipname = 12
};

struct EnumerationRow {
  std::uint32_t value = 0;
  std::string shortName, longName;
};

// A limit of a parameter: known once its value line was read. Values are unsigned by width; when the minimum
// lies above the maximum both are read as signed.
struct ParameterLimit {
  bool known = false;
  std::int64_t value = 0;
  std::string text;  // unit or name, analog types only
};

struct ParameterDescriptor {
  std::string name;
  ParameterType type = ParameterType::kUnknown;
  ParameterLimit minimum, maximum, neutral;
  std::size_t firstRow = 0;  // enumerated types: rows in the entry's table
  std::size_t rowCount = 0;
  std::int32_t numericAttribute = 0;  // decimal text of pt_Byte, pt_Word and pt_Long lines
};

// One "[" line and what follows it.
struct KeywordEntry {
  static constexpr std::size_t kMostParameters = 15;
  std::size_t index = 0;  // its place among the list's entries
  std::uint8_t keyword = 0;
  std::uint8_t subCode = 0;  // bit 0 set by value, bit 1 increment or toggle, bit 2 trigger
  std::int16_t thirdByte = -1;
  std::string shortName, longName;
  std::vector<ParameterDescriptor> parameters;
  std::vector<EnumerationRow> rows;
  // Set on the copy that a look-up returns.
  bool toggle = false;
  std::int32_t step =
      0;  // the last parameter's number of a toggling command, with its sign; below 0 toggles down
};

// The names of the commands of one (cd, co), read from
// "c:\Programme\RV48\bin\MacroCdCo_Tarrow\Cd-0x%02x\Cd-0x%02x-Co-0x%02x.ini" (docs/decoding-list.md).
class DecodingList {
 public:
  // Nothing when the file is missing, has fewer than three lines, or names another cd or co, or no keyword.
  // What stands before the first damaged line is kept; only the first 1,000 lines and 4 MB count.
  [[nodiscard]] static std::optional<DecodingList> load(const SiteRoot& root, std::uint8_t cd,
                                                        std::uint8_t co);
  [[nodiscard]] static std::optional<DecodingList> parse(std::string_view bytes, std::uint8_t cd,
                                                         std::uint8_t co);

  [[nodiscard]] const std::vector<KeywordEntry>& entries() const { return entries_; }

  // A copy of the entry that fits the record, with its toggle flag and step set; nothing when none fits.
  [[nodiscard]] std::optional<KeywordEntry> find(const ClassicCommand& command) const;

 private:
  std::vector<KeywordEntry> entries_;
};

// Device codes 1 to 4 share the lists of device code 0.
[[nodiscard]] std::uint8_t listDeviceCode(std::uint8_t cd);
[[nodiscard]] std::string decodingListPath(std::uint8_t cd, std::uint8_t co);

// Decoding lists of a site, each read once and kept while its file stays as it was (checked by size and time
// at most once a second). Keeps the 256 lists that were asked for last, and of all how their files were.
// Thread-safe.
class DecodingLists {
 public:
  using Clock = std::function<std::chrono::steady_clock::time_point()>;

  explicit DecodingLists(const SiteRoot& root, Clock clock = std::chrono::steady_clock::now)
      : root_(root), clock_(std::move(clock)) {}

  // Null when there is no usable list.
  [[nodiscard]] std::shared_ptr<const DecodingList> list(std::uint8_t cd, std::uint8_t co);
  // How often the file of a list that had been asked for has become another one, also just now: what was
  // found out by the lists holds while the number stays.
  [[nodiscard]] std::uint64_t revision();

 private:
  struct Known;
  struct Slot {
    std::shared_ptr<Known> known;
    std::shared_ptr<const DecodingList> recent;  // of those that were asked for last
    std::uint64_t used = 0;
  };

  void look(Known& entry);
  [[nodiscard]] std::shared_ptr<const DecodingList> asItIs(Known& entry);
  void keep(std::uint16_t key, const std::shared_ptr<const DecodingList>& list);

  const SiteRoot& root_;
  const Clock clock_;
  std::atomic<std::uint64_t> revision_{0};
  std::mutex mutex_;  // guards the members below; each list has a mutex of its own
  std::unordered_map<std::uint16_t, Slot> slots_;  // of all that were ever asked for
  std::uint64_t uses_ = 0;
  std::chrono::steady_clock::time_point looked_;  // at all of them
};

}  // namespace tessaly
