#pragma once

#include <functional>
#include <optional>
#include <string>

#include "classic/DecodingList.h"
#include "panelsim/CommandRun.h"

namespace tessaly {

// What a classic command makes of the values that it changes; `now` gives the present one of a name, `prefix`
// stands before the codes in their names ("QMF1.NCSCOMMAND.").
[[nodiscard]] CommandRun::Result runClassic(
    const std::string& prefix, const std::string& text, DecodingLists& lists,
    const std::function<std::optional<std::string>(const std::string& name)>& now);

}  // namespace tessaly
