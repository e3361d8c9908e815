#include "classic/ClassicCommand.h"
#include "classic/ClassicDescription.h"
#include "cli/Commands.h"
#include "cli/PrintJson.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

Json jsonOf(CommandSession& session, const ClassicCommand& command) {
  if (!command.valid()) return {{"valid", false}};
  const auto list = session.decodingLists().list(command.cd(), command.co());
  const auto entry = list ? list->find(command) : std::nullopt;
  return {{"valid", true},
          {"text", command.text()},
          {"debug", command.debugText()},
          {"description", describeClassic(command, session.decodingLists())},
          {"action", command.action()},
          {"cd", command.cd()},
          {"co", command.co()},
          {"kw", command.kw()},
          {"parameters", command.parameters()},
          {"keyword", entry ? Json(entry->longName) : Json()},
          {"readsBack", command.readsBack()}};
}

}  // namespace

int runClassic(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  ClassicCommand command;
  command.decodeText(arguments[0]);
  const bool valid = command.valid();
  if (json) {
    printJson(session, jsonOf(session, command));
    return valid ? kExitDone : kExitFailed;
  }
  session.field("valid", valid ? "yes" : "no");
  session.field("text", command.text());
  session.field("debug", valid ? command.debugText() : std::string());
  session.field("description", valid ? describeClassic(command, session.decodingLists()) : std::string());
  return valid ? kExitDone : kExitFailed;
}

}  // namespace tessaly
