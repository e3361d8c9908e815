#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "classic/ClassicCommand.h"
#include "classic/DecodingList.h"

namespace tessaly {

// Stands where the bytes end before the parameters do.
inline constexpr const char* kNotEnoughParameters = "- not enough params!!!";

// "Set - ", "Toggle up - ", "ac: 80 - ".
[[nodiscard]] std::string actionText(const ClassicCommand& command, const KeywordEntry* entry);

// Name of the input number of a classic command: a source's, or "extended input" for the mark of one.
[[nodiscard]] std::string inputName(std::uint8_t number);

// The readable line of a valid command, with the list of its (cd, co) or null.
[[nodiscard]] std::string describeClassic(const ClassicCommand& command, const DecodingList* list);

// The same with the site's lists.
[[nodiscard]] std::string describeClassic(const ClassicCommand& command, DecodingLists& lists);

// Value text of one parameter, read at `position`, which moves past it; nothing when the bytes run out before
// it.
[[nodiscard]] std::optional<std::string> parameterText(const ClassicCommand& command,
                                                       const KeywordEntry& entry,
                                                       const ParameterDescriptor& descriptor,
                                                       std::size_t& position);

}  // namespace tessaly
