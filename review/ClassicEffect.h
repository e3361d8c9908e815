#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "classic/DecodingList.h"
#include "review/MacroEffect.h"

// What a classic command does, as its decoding list tells it.
namespace tessaly {

// A value of a classic command: one parameter of a keyword.
struct ClassicPart {
  std::size_t place;            // of the parameter in the entry
  std::string chosen = {};      // in its name: what chooses it among its likes, "01." of an axis X
  std::string chosenName = {};  // as a line shows them, where they are not all that the entry can choose
  std::string bytes = {};       // what it is set to, as "0a 01"
  std::int64_t step = 0;        // added to it, in rows of a list or in its own unit; only of what steps
};

struct ClassicEffect {
  CommandEffect told;
  std::uint8_t cd = 0, co = 0, kw = 0;
  std::shared_ptr<const KeywordEntry> entry = {};  // null where nothing is changed
  std::vector<ClassicPart> parts = {};
};

[[nodiscard]] ClassicEffect classicEffect(std::string_view text, DecodingLists& lists);

// `bytes` a step further, as long as they are a value of the parameter: the next row in the circle of a list,
// a number within the limits.
[[nodiscard]] std::optional<std::string> stepped(const KeywordEntry& entry, const ClassicPart& part,
                                                 std::string_view bytes);

// "50%", "Input 05 source hold on"; the bytes where they are no value of the parameter.
[[nodiscard]] std::string shownClassic(const KeywordEntry& entry, std::size_t place, std::string_view bytes);

}  // namespace tessaly
