#include <nlohmann/json.hpp>

#include "cli/Commands.h"

namespace tessaly {
namespace {

int listHistory(CommandSession& session, bool json) {
  auto rows = nlohmann::ordered_json::array();
  for (const KeptMacro& kept : session.history().list()) {
    const std::string change(kept.place ? changeWord(kept.change) : std::string_view());
    if (json) {
      rows.push_back({{"id", kept.id},
                      {"when", kept.when},
                      {"change", change},
                      {"place", outputText(kept.placeText())},
                      {"name", outputText(kept.name)},
                      {"size", kept.size}});
      continue;
    }
    session.line(kept.id + '\t' + localTimeText(kept.when) + '\t' + change + '\t' + kept.name + '\t' +
                 kept.placeText());
  }
  if (json) session.out() << rows.dump(2) << '\n';
  return kExitDone;
}

int restore(CommandSession& session, const KeptMacro& kept, const Arguments& arguments) {
  const auto putBack = [&](const std::string& path) {
    const Outcome done = session.history().putBack(kept, path);
    return done ? kExitDone : session.failed(path + ' ' + done.failure().text);
  };
  if (arguments.size() > 2) return putBack(sitePathOf(arguments[2]));
  if (!kept.place) return session.failed("Nobody knows where it came from: name a FILE.");
  if (kept.place->file.empty())
    return session.failed("It came from a panel, " + kept.placeText() +
                          ": restore it to a FILE, and send that with panel ... put.");
  if (!session.history().isOfSite(kept))
    return session.failed("It came from outside the site, " + kept.placeText() + ": name that FILE.");
  return putBack(kept.place->file);
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
  if (!kept) return session.failed("The history holds no " + arguments[1]);
  return show ? showLines(session, kept->file, options, json) : restore(session, *kept, arguments);
}

}  // namespace tessaly
