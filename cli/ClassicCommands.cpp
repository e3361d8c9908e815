#include "classic/ClassicCommand.h"
#include "classic/ClassicDescription.h"
#include "cli/Commands.h"

namespace tessaly {

int runClassic(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  ClassicCommand command;
  command.decodeText(arguments[0]);
  const bool valid = command.valid();
  session.field("valid", valid ? "yes" : "no");
  session.field("text", command.text());
  session.field("debug", valid ? command.debugText() : std::string());
  session.field("description", valid ? describeClassic(command, session.decodingLists()) : std::string());
  return valid ? kExitDone : kExitFailed;
}

}  // namespace tessaly
