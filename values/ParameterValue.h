#pragma once

#include <string>
#include <string_view>

#include "dictionary/FunctionTemplate.h"

// Conversion between the panel value of a parameter (stored and sent, as text) and the text that is shown and
// typed. Raw mode shows and takes panel values as they stand.
namespace tessaly {

enum class ValueMode { kDisplay, kRaw };

[[nodiscard]] std::string shownInteger(const IntegerParameter& parameter, std::string_view stored,
                                       ValueMode mode);
[[nodiscard]] std::string shownFloat(const FloatParameter& parameter, bool incremental,
                                     std::string_view stored, ValueMode mode);

// `shown` has passed the entry filter. An empty text counts as 0, and is stored as "0" where nothing is
// converted.
[[nodiscard]] std::string storedInteger(const IntegerParameter& parameter, std::string_view shown,
                                        ValueMode mode);
[[nodiscard]] std::string storedFloat(const FloatParameter& parameter, bool incremental,
                                      std::string_view shown, ValueMode mode);

// A timecode is stored as the decimal packed form and shown in its display form. A shown empty text stays
// empty. `frameRate` is the entry filter's (0 stores the text as it is): what digits alone stand for beyond a
// clock's numbers is stored as the last ones.
[[nodiscard]] std::string shownTimecode(std::string_view stored, ValueMode mode);
[[nodiscard]] std::string storedTimecode(std::string_view shown, int frameRate);

// "min: 0   max: 255", "range: no limits" and so on.
[[nodiscard]] std::string rangeText(const IntegerParameter& parameter, ValueMode mode);
[[nodiscard]] std::string rangeText(const FloatParameter& parameter, bool incremental, ValueMode mode);

}  // namespace tessaly
