#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

#include "dictionary/FunctionDictionary.h"
#include "review/Saying.h"
#include "values/Timecode.h"

// Whether a function can hold a value as it is stored.
namespace tessaly {

enum class ValueFault {
  kNone,
  kNumber,    // does not read whole as a number
  kLimits,    // beyond the limits, those of a fixed-point number included
  kChoice,    // none of the listed values
  kSource,    // no input of the site
  kTimecode,  // no timecode of a clock
};

// What the numbers of a function are.
enum class NumberKind {
  kValue,       // its current value
  kFixedPoint,  // it has none: a float travels as value × 1024
  kStep         // so it does, and an integer has a sign: both are added, and the limits bind what comes of it
};

[[nodiscard]] NumberKind numberKindOf(const FunctionRecord& function);

// What values are judged by beside their function.
struct ValueBounds {
  // The inputs that a site has, by their stored numbers.
  [[nodiscard]] static std::unordered_set<std::string> inputsOf(const FunctionDictionary& dictionary);

  std::unordered_set<std::string> inputs;  // none: any input
  int frameRate = 0;                       // frames a second; 0 for any
};

struct ValueJudgement {
  ValueFault fault = ValueFault::kNone;
  Said can = {};             // what could be held, as told to a person; only with a fault
  std::string nearest = {};  // the one value that is certainly meant, as stored; empty without one
};

// Whether the clock and the frame rate (0 for any) have this timecode.
[[nodiscard]] bool onTheClock(const Timecode& timecode, int frameRate);

// The empty value stands for none and is always held; so is what the function has no parameter for. Limits
// that are equal are those that an interface file leaves out, and bind nothing. The nearest value is the
// limit, the only listed value that is two letters away at the most, or the last frame.
[[nodiscard]] ValueJudgement judge(const FunctionTemplate& function, NumberKind kind,
                                   std::string_view parameter, const std::string& value,
                                   const ValueBounds& bounds);

}  // namespace tessaly
