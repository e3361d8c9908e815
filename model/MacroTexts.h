#pragma once

#include <string>
#include <string_view>

#include "model/MacroEdit.h"
#include "platform/XmlSpelling.h"

namespace tessaly {

// How texts are spelled in the bytes of a macro, in its encoding. Any thread.
class MacroSpelling {
 public:
  explicit MacroSpelling(const Macro& macro);
  // As it stands between quotes; kTextNotHeld.
  [[nodiscard]] Expected<std::string> of(std::string_view text) const;

 private:
  XmlEncoding encoding_;
};

// The macro with other texts in some attributes of its commands, put into its bytes where they stand: every
// byte beside them is as it was. kNotKept when the outcome would not read as the same macro with those texts;
// else as `apply` fails.
[[nodiscard]] Expected<Macro> withTexts(const Macro& macro, const SetTexts& edit);

}  // namespace tessaly
