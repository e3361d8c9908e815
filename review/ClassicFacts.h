#pragma once

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

[[nodiscard]] ClassicFacts classicFacts(const ClassicCommand& command, DecodingLists& lists);
// Of the text that a macro stores.
[[nodiscard]] ClassicFacts classicFacts(const std::string& text, DecodingLists& lists);

}  // namespace tessaly
