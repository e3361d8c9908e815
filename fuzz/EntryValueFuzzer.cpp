#include <algorithm>
#include <cmath>

#include "fuzz/Fuzzing.h"
#include "platform/Text.h"
#include "values/EntryFilter.h"
#include "values/ParameterValue.h"
#include "values/Timecode.h"

// A parameter (a byte of flags, then minimum, maximum and both shown ones as texts), and a text that is
// typed.
namespace tessaly {
namespace {

// Digits with a sign and a point, a blank before a limit of one digit.
bool isNumber(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789.- ") == std::string::npos;
}

// As the reader of the interface description keeps them.
double floatLimit(std::string_view text) {
  const double limit = parseDouble(text);
  return std::isnan(limit) ? 0 : std::clamp(limit, -1e15, 1e15);
}

// What the field gives back can be put in again: it settles at once, or after one more round when the text of
// a limit has a blank or loses decimals.
template <typename Filter>
std::string checkFilter(std::string_view typed, const Filter& filter) {
  const FilteredEntry first = filter(typed);
  require(first.beeps >= 0 && static_cast<std::size_t>(first.beeps) <= typed.size() + 1,
          "a beep for a character, and one for a limit");
  const FilteredEntry second = filter(first.text);
  const FilteredEntry third = filter(second.text);
  require(filter(third.text).text == third.text || third.text == first.text, "the filter takes its own text");
  return first.text;
}

void checkInteger(const IntegerParameter& parameter, std::string_view typed) {
  const bool ordered = parameter.min <= parameter.max && parameter.minDisplay <= parameter.maxDisplay;
  for (const ValueMode mode : {ValueMode::kDisplay, ValueMode::kRaw}) {
    const auto filter = [&](std::string_view text) { return filterInteger(parameter, text, mode); };
    const std::string kept = ordered ? checkFilter(typed, filter) : filter(typed).text;
    const std::string stored = storedInteger(parameter, kept, mode);
    require(isNumber(stored), "a number is stored");
    static_cast<void>(shownInteger(parameter, stored, mode));
    static_cast<void>(shownInteger(parameter, typed, mode));
  }
}

void checkFloat(const FloatParameter& parameter, bool incremental, std::string_view typed) {
  const bool ordered = parameter.min <= parameter.max && parameter.minDisplay <= parameter.maxDisplay;
  for (const ValueMode mode : {ValueMode::kDisplay, ValueMode::kRaw}) {
    const auto filter = [&](std::string_view text) {
      return filterFloat(parameter, incremental, text, mode);
    };
    const std::string kept = ordered || incremental ? checkFilter(typed, filter) : filter(typed).text;
    const std::string stored = storedFloat(parameter, incremental, kept, mode);
    require(isNumber(stored), "a number is stored");
    if (mode == ValueMode::kDisplay && incremental) {
      const double value = parseDouble(stored);
      require(value >= -2048 && value <= 2047, "an incremental value is in the panel's range");
    }
    static_cast<void>(shownFloat(parameter, incremental, stored, mode));
    static_cast<void>(shownFloat(parameter, incremental, typed, mode));
  }
}

void checkTimecode(std::string_view typed) {
  for (const int rate : {0, 25, 30}) {
    const FilteredEntry first = filterTimecode(typed, rate);
    const FilteredEntry second = filterTimecode(first.text, rate);
    require(second.text == first.text && second.beeps == 0, "the filter takes its own timecode");
    const std::string stored = storedTimecode(first.text, rate);
    require(stored.empty() == first.text.empty(), "an empty timecode stays empty");
    if (rate == 0) continue;
    const std::string shown = shownTimecode(stored, ValueMode::kDisplay);
    require(filterTimecode(shown, rate).beeps == 0, "the filter takes a shown timecode");
    require(shownTimecode(storedTimecode(shown, rate), ValueMode::kDisplay) == shown,
            "a shown timecode is stored as it is shown");
  }
  const Timecode read = Timecode::fromStored(typed);
  require(Timecode::fromPacked(Timecode::fromPacked(read.packed()).packed()) ==
              Timecode::fromPacked(read.packed()),
          "a packed timecode is packed the same again");
}

void run(FuzzInput input) {
  const std::uint8_t flags = input.byte();
  const std::string_view min = input.text(), max = input.text(), minShown = input.text(),
                         maxShown = input.text();
  const std::string_view typed = input.rest();
  IntegerParameter whole;
  whole.scaled = (flags & 1) != 0;
  whole.min = parseInt(min);
  whole.max = parseInt(max);
  whole.minDisplay = parseInt(minShown);
  whole.maxDisplay = parseInt(maxShown);
  checkInteger(whole, typed);
  FloatParameter real;
  real.min = floatLimit(min);
  real.max = floatLimit(max);
  real.minDisplay = floatLimit(minShown);
  real.maxDisplay = floatLimit(maxShown);
  checkFloat(real, (flags & 2) != 0, typed);
  checkTimecode(typed);
}

}  // namespace
}  // namespace tessaly

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessaly::run({data, size});
  return 0;
}
