#include <utility>

#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "model/Settings.h"
#include "platform/Text.h"

namespace tessaly {

int runSettings(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  const bool rewrite = arguments.flag("--rewrite");
  const auto addressA = arguments.option("--address-a");
  const auto addressB = arguments.option("--address-b");
  if (!arguments.complete(0, 0)) return session.wrongUsage(arguments.problem());
  Settings settings;
  readSettings(session.root(), settings);
  for (const auto& [given, address] :
       {std::pair{&addressA, &settings.addressA}, {&addressB, &settings.addressB}}) {
    if (!*given) continue;
    if (!settingsHold(**given)) return session.failed("The settings cannot hold this address");
    *address = utf8ToWindows1252(**given);
  }
  if ((rewrite || addressA || addressB) && !writeSettings(session.root(), settings)) {
    return session.failed("Cannot write " + std::string(kSettingsFile));
  }
  if (json)
    return printJson(session, {{"format", settings.format},
                               {"frameRate", settings.frameRate},
                               {"pathA", displayUtf8(settings.pathA)},
                               {"pathB", displayUtf8(settings.pathB)},
                               {"addressA", displayUtf8(settings.addressA)},
                               {"addressB", displayUtf8(settings.addressB)}});
  session.field("format", std::to_string(settings.format));
  session.field("frame rate", std::to_string(settings.frameRate));
  session.field("path A", settings.pathA);
  session.field("path B", settings.pathB);
  session.field("address A", settings.addressA);
  session.field("address B", settings.addressB);
  return kExitDone;
}

}  // namespace tessaly
