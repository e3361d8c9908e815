#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

inline constexpr std::size_t kFinderFilters = 9;

// Segment texts to look for in function names; one without a text is not active.
using FinderFilters = std::array<std::optional<std::string>, kFinderFilters>;

// Where `text` stands in a function name as a whole segment: its first occurrence must begin a segment and
// end one, but for the last segment, whose beginning is enough (deliberately lenient: "ME1" finds
// "KEY.ME12"). Later occurrences are not looked at. npos when it does not stand there.
[[nodiscard]] std::size_t segmentPosition(std::string_view name, std::string_view text);

// Finds functions by the segments of their names. Functions are told by their place in registration order,
// and results are in that order. A result is kept and narrowed while further filters come in behind the same
// ones. Observes a dictionary that is complete. Not for two threads at once.
class FunctionFinder {
 public:
  using Functions = std::vector<std::uint32_t>;

  explicit FunctionFinder(const FunctionDictionary& dictionary);

  // Every function of the panel's own file.
  [[nodiscard]] const Functions& panelFunctions();

  // All others that are, or are not, increment functions.
  [[nodiscard]] const Functions& otherFunctions(bool increments);

  // Those that pass all active filters: only increment functions, or only the others. None without an active
  // filter. Valid until the next call.
  [[nodiscard]] const Functions& find(const FinderFilters& filters, bool increments);

  // The distinct segments behind the one of filter `last` in the functions that pass the filters up to it, as
  // they come. None when that filter is not active.
  [[nodiscard]] std::vector<std::string> segmentsBehind(std::size_t last, const FinderFilters& filters,
                                                        bool increments);

  // All segments of the functions that pass. They stand in the dictionary's names.
  [[nodiscard]] std::unordered_set<std::string_view> segmentsOf(const FinderFilters& filters,
                                                                bool increments);

 private:
  struct Stage {
    std::string text;
    Functions passed;
  };

  void addStage(const std::string& text);
  [[nodiscard]] Functions passing(const std::string& text) const;

  const FunctionDictionary& dictionary_;
  std::vector<bool> increment_;  // by function
  std::optional<Functions> panel_;
  std::array<std::optional<Functions>, 2> others_;  // without increment functions, and those
  std::vector<Stage> stages_;                       // of the last search, one an active filter
  bool stagesForIncrements_ = false;
};

}  // namespace tessaly
