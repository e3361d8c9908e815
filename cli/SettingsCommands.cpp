#include <optional>

#include "cli/Commands.h"
#include "model/Settings.h"
#include "platform/Text.h"

namespace tessaly {

namespace {

// Puts an address given as UTF-8 into its setting; false when the settings' code page lacks a character of
// it.
bool take(const std::optional<std::string>& given, std::string& address) {
  if (!given) return true;
  address = utf8ToWindows1252(*given);
  return windows1252ToUtf8(address) == *given;
}

}  // namespace

int runSettings(CommandSession& session, Arguments& arguments) {
  const bool rewrite = arguments.flag("--rewrite");
  const auto addressA = arguments.option("--address-a");
  const auto addressB = arguments.option("--address-b");
  if (!arguments.complete(0, 0)) return session.wrongUsage(arguments.problem());
  Settings settings;
  readSettings(session.root(), settings);
  if (!take(addressA, settings.addressA) || !take(addressB, settings.addressB))
    return session.failed("The settings cannot hold this address");
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
