#pragma once

#include <QString>

#include "review/CheckRules.h"
#include "widgets/RowMark.h"

// Findings as people are told of them, in the window's language.
namespace tessaly {

[[nodiscard]] RowMark markOf(Severity severity);
[[nodiscard]] QString severityText(Severity severity);        // "error"
[[nodiscard]] QString ruleText(CheckRule rule);               // what the rule looks for
[[nodiscard]] QString wrongInWindow(const Finding& finding);  // with the name of the parameter in front
// What would be right; empty where nothing better can be said.
[[nodiscard]] QString rightInWindow(const Finding& finding);
// "error: what is wrong; right: what would be right"
[[nodiscard]] QString findingText(const Finding& finding);
// "2 errors, 1 warning"; empty without any.
[[nodiscard]] QString countText(const Findings& findings);
// What is off, for people; empty when nothing is.
[[nodiscard]] QString offText(const RulesOff& off);

}  // namespace tessaly
