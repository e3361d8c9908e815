#pragma once

#include <string>
#include <string_view>

#include "values/ParameterValue.h"

// What the value field makes of its text after every change by the user: characters that cannot stand are
// dropped, a value outside the limits is replaced by the limit.
namespace tessaly {

struct FilteredEntry {
  std::string text;  // to be put back, caret at its end
  int beeps = 0;     // one a refused character, one for a replaced limit
};

[[nodiscard]] FilteredEntry filterInteger(const IntegerParameter& parameter, std::string_view typed,
                                          ValueMode mode);
[[nodiscard]] FilteredEntry filterFloat(const FloatParameter& parameter, bool incremental,
                                        std::string_view typed, ValueMode mode);
// Keeps digits, "." and ":". With a frame rate (25 or 30; 0 leaves a packed number as it is) hours, minutes,
// seconds and frames beyond a clock's become the last ones, with a beep. Digits alone are judged when all
// eight stand there, as each further one moves those before it to the left; a ninth is refused.
[[nodiscard]] FilteredEntry filterTimecode(std::string_view typed, int frameRate);

}  // namespace tessaly
