#include <nlohmann/json.hpp>

#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "platform/Text.h"
#include "review/MacroEffect.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;

const char* whatName(CommandEffect::What what) {
  switch (what) {
    case CommandEffect::What::kSets:
      return "sets";
    case CommandEffect::What::kSteps:
      return "steps";
    case CommandEffect::What::kActs:
      return "acts";
    case CommandEffect::What::kUntold:
      return "untold";
  }
  return "";
}

Json jsonOf(const MacroEffect& effect) {
  using Kind = ValueState::Kind;
  Json values = Json::array(), commands = Json::array();
  for (int value = 0; value < static_cast<int>(effect.values().size()); ++value) {
    const ValueState& after = effect.at(value, effect.commandCount());
    const std::string shown = effect.shown(value, after);
    values.push_back({{"name", displayUtf8(effect.values()[static_cast<std::size_t>(value)].name)},
                      {"label", displayUtf8(effect.label(value))},
                      {"shown", shown.empty() ? Json() : Json(displayUtf8(shown))},
                      {"stored", after.kind == Kind::kKnown ? Json(displayUtf8(after.stored)) : Json()},
                      {"by", after.kind == Kind::kChanged ? Json(after.by) : Json()}});
  }
  for (int number = 0; number < effect.commandCount(); ++number) {
    const CommandEffect& command = effect.effect(number);
    commands.push_back({{"number", number},
                        {"what", whatName(command.what)},
                        {"why", command.why.empty() ? Json() : Json(displayUtf8(command.why))}});
  }
  return {{"schema", kSchema}, {"values", std::move(values)}, {"commands", std::move(commands)}};
}

// A row a value, then one for each command that changes none.
void print(CommandSession& session, const MacroEffect& effect) {
  for (int value = 0; value < static_cast<int>(effect.values().size()); ++value) {
    const std::string shown = effect.told(value, effect.at(value, effect.commandCount()));
    session.line(outputName(effect.label(value)) + '\t' + (shown.empty() ? "?" : outputName(shown)) + '\t' +
                 outputName(effect.values()[static_cast<std::size_t>(value)].name));
  }
  for (int number = 0; number < effect.commandCount(); ++number) {
    const CommandEffect& command = effect.effect(number);
    const bool changes =
        command.what == CommandEffect::What::kSets || command.what == CommandEffect::What::kSteps;
    if (changes && command.why.empty()) continue;
    session.line("#\t" + std::to_string(number) + '\t' + whatName(command.what) + '\t' +
                 outputName(command.why));
  }
}

}  // namespace

int runEffect(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  return session.readFrom(arguments[0], [&](const FileOperand& file) {
    const auto macro = macroAt(session, file.path(), file.shown());
    if (!macro) return session.failed(macro.failure().text);
    const MacroEffect effect(macro->commands(), {session.dictionary(), session.decodingLists()});
    if (json) return printJson(session, jsonOf(effect));
    print(session, effect);
    return kExitDone;
  });
}

}  // namespace tessaly
