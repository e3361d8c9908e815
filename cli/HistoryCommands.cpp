#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "platform/Files.h"
#include "platform/LocalTime.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

int listHistory(CommandSession& session, bool json) {
  auto rows = nlohmann::ordered_json::array();
  Outcome whole;
  for (const KeptMacro& kept : session.history().list(nullptr, &whole)) {
    const std::string change(kept.place ? changeWord(kept.change) : std::string_view());
    if (json) {
      rows.push_back({{"id", kept.id},
                      {"when", kept.when},
                      {"change", change},
                      {"place", displayUtf8(kept.placeText())},
                      {"name", displayUtf8(kept.name)},
                      {"size", kept.size}});
      continue;
    }
    session.line(kept.id + '\t' + localTimeText(kept.when) + '\t' + change + '\t' + outputName(kept.name) +
                 '\t' + outputName(kept.placeText()));
  }
  if (json) printJson(session, rows);
  return whole ? kExitDone : session.failed("a part of the history " + whole.failure().text);
}

// Where a kept macro goes when no FILE is named.
Expected<std::string> placeOf(CommandSession& session, const KeptMacro& kept) {
  const auto refused = [](std::string text) { return Failure{Failure::Kind::kMissing, std::move(text)}; };
  if (!kept.place) return refused("Nobody knows where it came from: name a FILE.");
  const std::string& file = kept.place->file;
  if (file.empty())
    return refused("It came from a panel, " + kept.placeText() +
                   ": restore it to a FILE, and send that with panel ... put.");
  if (!session.history().isOfSite(kept))
    return refused("It came from outside the site, " + file + ": name the FILE.");
  return file;
}

int restore(CommandSession& session, const KeptMacro& kept, const Arguments& arguments) {
  const auto file = arguments.size() > 2 ? Expected<std::string>(arguments[2]) : placeOf(session, kept);
  if (!file) return session.failed(file.failure().text);
  // Read first: keeping what is there now may be what drives this one out.
  const auto bytes = readOwnFile(session.root(), kept.file);
  if (!bytes) return session.failed(kept.id + ' ' + bytes.failure().text);
  return session.writeTo(*file, FileUse::kWrite, MacroChange::kPutBack, [&](const std::string& path) {
    Outcome done = writeFile(session.root(), path, *bytes);
    return done.written() ? done : Failure{done.failure().kind, path + ' ' + done.failure().text};
  });
}

}  // namespace

int runHistory(CommandSession& session, Arguments& arguments) {
  const LineOptions options = lineOptions(arguments);
  const bool json = arguments.flag("--json");
  if (!arguments.complete(0, 3)) return session.wrongUsage(arguments.problem());
  if (arguments.size() == 0) return listHistory(session, json);
  const bool show = arguments[0] == "show";
  if (!show && arguments[0] != "restore")
    return session.wrongUsage("unknown history command " + arguments[0]);
  if (!arguments.complete(2, show ? 2 : 3)) return session.wrongUsage(arguments.problem());
  const auto kept = session.history().find(arguments[1]);
  if (!kept)
    return session.failed(kept.failure().kind == Failure::Kind::kMissing
                              ? "The history holds no " + arguments[1]
                              : "The history " + kept.failure().text);
  return show ? showLines(session, kept->file, options, json) : restore(session, *kept, arguments);
}

}  // namespace tessaly
