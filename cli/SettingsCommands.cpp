#include <utility>

#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "model/Settings.h"
#include "platform/SitePlace.h"
#include "platform/Text.h"

namespace tessaly {

int runSettings(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  const bool rewrite = arguments.flag("--rewrite");
  const auto addressA = arguments.option("--address-a");
  const auto addressB = arguments.option("--address-b");
  if (!arguments.complete(0, 0)) return session.wrongUsage(arguments.problem());
  Settings settings;
  const Outcome read = readSettings(session.root(), settings);
  if (!read && !isNothing(read.failure()))
    return session.failed(std::string(kSettingsFile) + ' ' + read.failure().text);
  for (const auto& [given, address] :
       {std::pair{&addressA, &settings.addressA}, {&addressB, &settings.addressB}}) {
    if (!*given) continue;
    if (!settingsHold(**given)) return session.failed("The settings cannot hold this address");
    *address = utf8ToWindows1252(**given);
  }
  Outcome written;
  if (rewrite || addressA || addressB) {
    written = writeSettings(session.root(), settings);
    if (!written.written())
      return session.failed("Cannot write " + std::string(kSettingsFile) + ": it " + written.failure().text);
    if (!written) session.warn(std::string(kSettingsFile) + ' ' + written.failure().text);
  }
  const int code = written ? kExitDone : kExitFailed;
  if (json) {
    printJson(session, {{"format", settings.format},
                        {"frameRate", settings.frameRate},
                        {"pathA", windows1252ToUtf8(settings.pathA)},
                        {"pathB", windows1252ToUtf8(settings.pathB)},
                        {"addressA", windows1252ToUtf8(settings.addressA)},
                        {"addressB", windows1252ToUtf8(settings.addressB)}});
    return code;
  }
  session.field("format", std::to_string(settings.format));
  session.field("frame rate", std::to_string(settings.frameRate));
  session.field("path A", windows1252ToUtf8(settings.pathA));
  session.field("path B", windows1252ToUtf8(settings.pathB));
  session.field("address A", windows1252ToUtf8(settings.addressA));
  session.field("address B", windows1252ToUtf8(settings.addressB));
  return code;
}

}  // namespace tessaly
