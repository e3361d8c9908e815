#include "cli/PanelRun.h"

#include <chrono>
#include <optional>
#include <string>

#include "link/MacroNames.h"
#include "platform/MacroNumber.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kAnswer{3000};  // a panel that has not answered by then does not answer
constexpr milliseconds kLook{500};     // at the line, while a macro runs

// The next value of one name; nothing when none came in time, or the line is lost.
std::optional<std::string> nextOf(PanelLine& line, const std::string& name, milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (true) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
    const auto value = line.next(left);
    if (!value || value->name == name) return value ? std::optional(value->text) : std::nullopt;
  }
}

int unconfirmed(CommandSession& session, const PanelLine& line) {
  return session.failed(line.connected() ? "the panel did not say that the macro runs"
                                         : "the connection to the panel was lost");
}

}  // namespace

int runOnPanel(CommandSession& session, const PanelPlace& place, int workplace, int number) {
  PanelLine line(session.root(), session.history(), place);
  if (!line.open()) return session.failed("cannot connect to the panel at " + place.control());
  const std::string text = MacroNumber::textOf(number), nameValue = macroNameValue(workplace, number);
  const std::string running = format("PANEL.MACRO%d.RUNNING", workplace);
  line.subscribe(nameValue);
  const auto name = nextOf(line, nameValue, kAnswer);
  if (!name) return unconfirmed(session, line);
  if (name->empty())
    return session.failed("workplace " + std::to_string(workplace) + " has no macro " + text);
  line.subscribe(running);
  if (!nextOf(line, running, kAnswer) || !line.run(workplace, number)) return unconfirmed(session, line);
  const auto begun = nextOf(line, running, kAnswer);
  if (begun != text) return unconfirmed(session, line);
  session.line(text + " - " + outputName(*name) + " runs");
  session.out().flush();
  while (true) {
    const auto value = nextOf(line, running, kLook);
    if (!value && line.connected()) continue;
    if (value == "") break;
    return session.failed(value ? "macro " + *value + " runs in its place"
                                : "the connection to the panel was lost");
  }
  session.line(text + " has run");
  return kExitDone;
}

}  // namespace tessaly
