#pragma once

#include <string>
#include <vector>

#include "model/CommandLine.h"

namespace tessaly {

// What a command names that can be looked for elsewhere, with the query that finds it (docs/find.md).
struct UsedThing {
  enum class Kind { kFunction, kDestination, kSource, kGroup };
  Kind kind;
  std::string name;   // for people: "Mainframe2", "Input 5"; UTF-8
  std::string query;  // "destination:Mainframe2"
};

// Each once; without what no query could find.
[[nodiscard]] std::vector<UsedThing> usedBy(const MacroCommand& command, const LineContext& context);

// A word of a query: the field, which may be empty, and the text between quotes where it needs them. Empty
// for a text without what a word could hold.
[[nodiscard]] std::string queryWord(std::string_view field, std::string text);

}  // namespace tessaly
