#include "cli/Commands.h"
#include "model/Settings.h"
#include "platform/Text.h"

namespace tessaly {

int runSettings(CommandSession& session, Arguments& arguments) {
  const bool rewrite = arguments.flag("--rewrite");
  const auto addressA = arguments.option("--address-a");
  const auto addressB = arguments.option("--address-b");
  if (!arguments.complete(0, 0)) return session.wrongUsage(arguments.problem());
  Settings settings;
  readSettings(session.root(), settings);
  if (addressA) settings.addressA = utf8ToWindows1252(*addressA);
  if (addressB) settings.addressB = utf8ToWindows1252(*addressB);
  if ((rewrite || addressA || addressB) && !writeSettings(session.root(), settings)) {
    return session.failed("Cannot write " + std::string(kSettingsFile));
  }
  session.field("format", std::to_string(settings.format));
  session.field("frame rate", std::to_string(settings.frameRate));
  session.field("path A", settings.pathA);
  session.field("path B", settings.pathB);
  session.field("address A", settings.addressA);
  session.field("address B", settings.addressB);
  return kExitDone;
}

}  // namespace tessaly
