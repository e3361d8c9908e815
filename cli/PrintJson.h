#pragma once

#include <nlohmann/json.hpp>

#include "cli/CommandSession.h"

namespace tessaly {

// What `--json` prints, in the forms of docs/json.schema.json; the exit code of a command that is done.
inline int printJson(CommandSession& session, const nlohmann::ordered_json& json) {
  session.out() << json.dump(2) << '\n';
  return kExitDone;
}

}  // namespace tessaly
