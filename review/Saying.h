#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// What is said of a command, a value or a file: a sentence with places for what is particular, so that a
// program can say it in another language. There is no other way to tell a finding, and whoever translates
// keeps a table as long as this one.
enum class Saying {
  kNothing,
  kPlain,  // a text that is no sentence of ours
  // What is wrong.
  kDestinationMissing,
  kDestinationUnknown,
  kWorkplaceMissing,
  kWorkplaceUnknown,
  kNoFunction,
  kNoParameter,
  kTwice,
  kMissing,
  kNoValue,
  kNoNumber,
  kBeyond,
  kNoChoice,
  kNoSiteSource,
  kNoTimecode,
  kSpills,  // three whose last value is the number of the other command
  kSameAs,
  kSetAgainBy,
  kNoName,
  kNoCommands,
  kNoMacro,
  kNoUtf8,
  kNoWindows1252,
  kOnlyAscii,
  kNoNumberedName,
  kSameName,
  kNoText,
  kTextUndecoded,
  kMisspeltByte,
  kNotReadBack,
  kNoAction,
  kNoList,
  kNoRow,
  kNumberBeyond,
  kNoSource,
  kNotOnClock,
  kEndsBefore,
  kEndsBeforeLast,
  kNoKeyword,
  // What would be right.
  kDestinations,
  kWorkplaces,
  kOnce,
  kSomeValue,
  kSomeParameter,
  kOneOfTwo,
  kEncodings,
  kSuchInput,
  kOneOf,
  kOneOfAndMore,
  kWholeNumber,
  kNumber,
  kTimecode,
  kTimecodeAtRate,
  kMostBytes,
  kRange,
};

// In the order of the enumeration; "%1" and "%2" stand for the values.
inline constexpr std::array<std::string_view, static_cast<std::size_t>(Saying::kRange) + 1> kSayings{
    "",
    "%1",
    "the destination is missing",
    "the destination \"%1\" is unknown",
    "the workplace is missing",
    "\"%1\" is no workplace",
    "no function is called \"%1\"",
    "the function has no parameter \"%1\"",
    "\"%1\" stands there twice",
    "\"%1\" is missing",
    "\"%1\" has no value",
    "\"%1\" is no number",
    "\"%1\" is beyond the limits",
    "\"%1\" is none of the values",
    "\"%1\" is no source of the site",
    "\"%1\" is no timecode",
    "an update would put its value into command %1",
    "the same command as %1",
    "it is set again before anything acts, by command %1",
    "the macro has no name",
    "there are no commands",
    "there is no macro with data in the file",
    "the file says UTF-8, but its bytes are none",
    "the file has bytes that are no character of Windows-1252",
    "the file says %1, of which only ASCII is understood",
    "the file is not named by its number",
    "%1 has the same name",
    "there is no command text",
    "the text does not decode",
    "the byte \"%1\" is not written in the digits 0 to 9 and a to f",
    "%1 parameter bytes would not be read back after a save",
    "the action %1 is unknown",
    "there is no decoding list for cd %1, co %2",
    "%1 has no entry in the decoding list",
    "%1 is beyond the limits",
    "%1 is no source",
    "%1 is no timecode of a clock with %2 frames a second",
    "the bytes end before %1",
    "the bytes end before the last parameter",
    "the keyword %1 is in no decoding list",
    "QMF1 to QMF4, or PANEL",
    "1 to 8",
    "once",
    "a value: the parameter is not optional",
    "a parameter with a value",
    "one of the two",
    "UTF-8 or Windows-1252",
    "an input of the site, such as %1",
    "one of %1",
    "one of %1 ...",
    "a whole number, %1",
    "a number, %1",
    "a packed timecode of a clock",
    "a packed timecode of a clock with %1 frames a second",
    "27 at the most",
    "min: %1   max: %2",
};

struct Said {
  Saying saying = Saying::kNothing;
  std::vector<std::string> values = {};

  [[nodiscard]] bool empty() const { return saying == Saying::kNothing; }
};

[[nodiscard]] std::string inEnglish(const Said& said);

}  // namespace tessaly
