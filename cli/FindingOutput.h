#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "cli/CommandSession.h"
#include "review/CheckRules.h"

namespace tessaly {

// What macros of the site are checked against; what is wrong with the file of rules is told.
[[nodiscard]] CheckContext checkContextOf(CommandSession& session);

// Severity, rule and what is wrong with what would be right, a tab between them.
[[nodiscard]] std::string findingColumns(const Finding& finding);
// As docs/check.schema.json defines a finding.
[[nodiscard]] nlohmann::ordered_json findingJson(const Finding& finding);

}  // namespace tessaly
