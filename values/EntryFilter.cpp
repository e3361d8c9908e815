#include "values/EntryFilter.h"

#include <algorithm>
#include <cstddef>

#include "platform/Text.h"

namespace tessaly {
namespace {

constexpr std::string_view kTimecodeSeparators = ".:";
constexpr std::size_t kTimecodeDigits = 8;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Refused characters are counted, not bytes: the later bytes of a UTF-8 character make no sound of their own.
bool beginsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }

// Keeps the characters of a number. "First" is judged in the filtered text, so "-.5" stays as it is.
FilteredEntry filterNumber(std::string_view typed, bool pointAllowed, bool minusAllowed) {
  FilteredEntry entry;
  bool pointSeen = false;
  for (char c : typed) {
    if (c == ',') c = '.';
    if (isDigit(c)) {
      entry.text += c;
    } else if (c == '.' && pointAllowed && !pointSeen) {
      pointSeen = true;
      entry.text += entry.text.empty() ? "0." : ".";
    } else if (c == '-' && minusAllowed && entry.text.empty()) {
      entry.text += c;
    } else if (beginsCharacter(c)) {
      ++entry.beeps;
    }
  }
  return entry;
}

void limit(FilteredEntry& entry, double min, double max, const std::string& minText,
           const std::string& maxText) {
  const double value = parseDouble(entry.text);
  if (value < min) {
    entry.text = minText;
  } else if (value > max) {
    entry.text = maxText;
  } else {
    return;
  }
  ++entry.beeps;
}

bool negativePossible(const FloatParameter& parameter, bool incremental, ValueMode mode) {
  if (incremental || parameter.min == parameter.max) return true;
  return mode == ValueMode::kRaw ? parameter.min < 0 : parameter.minDisplay < 0;
}

}  // namespace

FilteredEntry filterInteger(const IntegerParameter& parameter, std::string_view typed, ValueMode mode) {
  const bool display = mode == ValueMode::kDisplay;
  const bool scaled = display && parameter.scaled;
  // In raw mode an integer can never be typed negative: deliberate, a panel value has no sign to the user.
  FilteredEntry entry = filterNumber(typed, scaled, display && parameter.minDisplay < 0);
  const std::int32_t min = scaled ? parameter.minDisplay : parameter.min;
  const std::int32_t max = scaled ? parameter.maxDisplay : parameter.max;
  limit(entry, min, max, format("%d", min), format("%d", max));
  return entry;
}

FilteredEntry filterFloat(const FloatParameter& parameter, bool incremental, std::string_view typed,
                          ValueMode mode) {
  FilteredEntry entry = filterNumber(typed, true, negativePossible(parameter, incremental, mode));
  if (incremental) {
    if (mode == ValueMode::kRaw) {
      limit(entry, -2048, 2047, "-2048", "2047");
    } else {
      limit(entry, -2, 2, "-2.0000", "2.0000");
    }
  } else if (parameter.min == parameter.max) {
    return entry;
  } else if (mode == ValueMode::kRaw) {
    limit(entry, parameter.min, parameter.max, format("%2.4f", parameter.min),
          format("%2.4f", parameter.max));
  } else {
    // The width of 2 puts a blank before a limit of one digit: deliberate, the field has always shown it so.
    limit(entry, parameter.minDisplay, parameter.maxDisplay, format("%2.0f", parameter.minDisplay),
          format("%2.0f", parameter.maxDisplay));
  }
  return entry;
}

FilteredEntry filterTimecode(std::string_view typed, int frameRate) {
  FilteredEntry entry;
  for (char c : typed) {
    if (c == ',') c = '.';
    if (isDigit(c) || c == '.' || c == ':') {
      entry.text += c;
    } else if (beginsCharacter(c)) {
      ++entry.beeps;
    }
  }
  if (frameRate <= 0) return entry;
  const bool digitsAlone = entry.text.find_first_of(kTimecodeSeparators) == entry.text.npos;
  if (digitsAlone) {
    for (; entry.text.size() > kTimecodeDigits; entry.text.pop_back()) ++entry.beeps;
    if (entry.text.size() < kTimecodeDigits) return entry;
  }
  std::size_t begin = 0;
  for (const int count : {24, 60, 60, frameRate}) {
    const std::size_t end =
        digitsAlone ? begin + 2
                    : std::min(entry.text.find_first_of(kTimecodeSeparators, begin), entry.text.size());
    if (parseInt(std::string_view(entry.text).substr(begin, end - begin)) >= count) {
      const std::string most = format("%02d", count - 1);
      entry.text.replace(begin, end - begin, most);
      ++entry.beeps;
      begin += most.size();
    } else {
      begin = end;
    }
    if (!digitsAlone) ++begin;
    if (begin > entry.text.size()) break;
  }
  return entry;
}

}  // namespace tessaly
