#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "classic/ClassicCommand.h"
#include "classic/DecodingList.h"

namespace tessaly {

// What a classic command names.
struct ClassicFacts {
  std::string group;                 // "Me3 - Key2"; empty where there is none
  std::vector<std::string> sources;  // numbers, of whatever parameter
};

// Where among its parameter bytes a classic command holds the number of a source.
[[nodiscard]] std::vector<std::size_t> classicSourcePlaces(const ClassicCommand& command,
                                                           DecodingLists& lists);

[[nodiscard]] ClassicFacts classicFacts(const ClassicCommand& command, DecodingLists& lists);
// Of the text that a macro stores.
[[nodiscard]] ClassicFacts classicFacts(const std::string& text, DecodingLists& lists);

}  // namespace tessaly
