#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/KeyFile.h"
#include "model/Macro.h"
#include "model/MacroEdit.h"
#include "platform/SiteRoot.h"

// The words by which a command line names commands of a macro and places in it, and what is said when they
// cannot be changed.
namespace tessaly {

inline constexpr int kMostCommandNumber = 1'000'000'000;
inline constexpr std::string_view kNotChanged = "The macro cannot be changed: ";
inline constexpr const char* kNoRange = "N is the number of a command, N-M those from one to another";
inline constexpr const char* kNoPlace = "--at takes start, end or the number of a command";

// Where a command is put.
struct InsertPlace {
  InsertMode mode = InsertMode::kAppend;
  int position = 0;
};

// The value of --at; nothing for one that is wrong.
[[nodiscard]] std::optional<InsertPlace> insertPlace(const std::optional<std::string>& at);

// "3" or "3-7", both ends in it.
struct CommandRange {
  int first = 0, last = 0;
};

[[nodiscard]] std::optional<CommandRange> commandRange(const std::string& word);

// The numbers in the ranges; kNoCommand with the first number that none of `count` commands has.
[[nodiscard]] Expected<std::vector<int>> numbersIn(const std::vector<CommandRange>& ranges,
                                                   std::size_t count);

// A failure with what could not be done in front of the cause.
[[nodiscard]] Outcome told(std::string_view what, Outcome outcome);

// A key file, called `shown`. The model takes one that cannot be read for a key without commands; here it is
// a mistyped name, or nobody's to read.
[[nodiscard]] Expected<KeyFile> keyAt(const SiteRoot& root, const std::string& path,
                                      const std::string& shown);

}  // namespace tessaly
