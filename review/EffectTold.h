#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "classic/DecodingList.h"
#include "review/MacroEffect.h"

namespace tessaly {

// What a replay has found out.
struct MacroEffect::Told {
  // What a value is shown by: the function or the entry that changed it first.
  struct Source {
    std::optional<FunctionRecord> function = {};
    std::string_view parameter = {};  // the dictionary's
    std::shared_ptr<const KeywordEntry> entry = {};
    std::uint8_t cd = 0, co = 0;
    std::size_t place = 0;        // in the entry
    std::string chosenName = {};  // as in ClassicPart
    ValueState start = {};
    int lastChange = -1;
  };

  const FunctionDictionary& dictionary;
  std::vector<CommandEffect> effects = {};
  std::vector<std::size_t> firstChanges = {};  // of each command, and the end
  std::vector<ValueChange> changes = {};
  std::deque<EffectValue> values = {};
  std::vector<Source> sources = {};            // of each value
  std::vector<int> changesByValue = {};        // those of the first value, in their order, then of the next
  std::vector<std::size_t> firstOfValue = {};  // in changesByValue, and the end
};

}  // namespace tessaly
