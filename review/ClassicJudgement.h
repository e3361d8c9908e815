#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "classic/ClassicCommand.h"
#include "classic/DecodingList.h"
#include "review/CheckRules.h"

namespace tessaly {

// What can be wrong with a classic command: each fault with the rule that it breaks.
struct ClassicFault {
  CheckRule rule;
  std::string parameter = {};
  Said wrong, right = {};
  std::string meant = {};  // the text that certainly is meant
};

struct ClassicJudgement {
  ClassicCommand command;  // invalid when the text does not decode
  std::vector<ClassicFault> faults;
  bool oneValue = false;  // its keyword has one parameter
};

// A command as a macro stores it and a key file's line tells it.
[[nodiscard]] ClassicJudgement judgeClassic(std::string_view text, DecodingLists& lists, int frameRate);

}  // namespace tessaly
