#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/Outcome.h"

namespace tessaly {

// What is to be replaced by what in macros, and where (docs/replace.md). Texts are UTF-8.
struct RetargetRule {
  static constexpr std::size_t kLongest = 2'000;  // bytes of the typed form

  enum class Kind {
    kDestination,  // "QMF1" by "QMF2", "Panel/Workplace1" by "Panel/Workplace3"
    kSegment,      // "ME1" by "ME2", "ME1.KEY2" by "ME3.KEY1"
    kSource,       // a number or a name by another one
    kValue         // a stored value by another one
  };
  Kind kind = Kind::kDestination;
  std::string parameter = {};  // of a value; empty for any
  std::string from = {}, to = {};
  std::string where =
      {};  // a query that holds for each command that is changed (docs/find.md); empty for all

  // From what was typed, "source:5->7 where function:ME1.*". kNothingTaken with what is wrong; what the
  // words mean, and the query, is judged by MacroRetarget::make.
  [[nodiscard]] static Expected<RetargetRule> parse(std::string_view text);
  // As it is typed.
  [[nodiscard]] std::string text() const;

  friend bool operator==(const RetargetRule&, const RetargetRule&) = default;
};

}  // namespace tessaly
