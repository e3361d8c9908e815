#include "cli/CommandJson.h"

#include <charconv>
#include <cmath>

#include "classic/ClassicDescription.h"
#include "cli/ValueAnswer.h"
#include "cli/ValueCheck.h"
#include "model/MacroFile.h"
#include "platform/Text.h"
#include "platform/Workplace.h"
#include "values/Destination.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;

using Function = std::optional<FunctionRecord>;

Function functionOf(CommandSession& session, const MacroCommand& command) {
  return command.classic() ? std::nullopt : session.dictionary().find(command.functionName());
}

const char* kindOf(const MacroCommand& command, const Function& function, const std::string& name) {
  if (command.classic()) return "classic";
  if (!function) return nullptr;
  const FunctionTemplate& known = function->definition();
  return parameterNamed(known.inputs, name)      ? "input"
         : parameterNamed(known.enums, name)     ? "enum"
         : parameterNamed(known.integers, name)  ? "integer"
         : parameterNamed(known.floats, name)    ? "float"
         : parameterNamed(known.timecodes, name) ? "timecode"
                                                 : nullptr;
}

// "5" and "05" are one number; what is none, or no parameter of numbers, is nothing.
Json numberOf(const char* kind, const std::string& stored) {
  if (!kind || std::string_view(kind) == "enum" || std::string_view(kind) == "classic") return {};
  if (const auto whole = exactNumber<std::int64_t>(stored)) return *whole;
  const auto number = exactNumber<double>(stored);
  return number && std::isfinite(*number) && std::string_view(kind) == "float" ? Json(*number) : Json();
}

Json shownOf(CommandSession& session, const MacroCommand& command, const Function& function,
             const std::string& name, const std::string& stored) {
  if (command.classic()) {
    ClassicCommand classic;
    return classic.decodeText(stored) ? Json(describeClassic(classic, session.decodingLists())) : Json();
  }
  if (!function || stored.empty()) return {};
  const auto answer = answerValue(session, *function, name, {.shown = {}, .stored = stored});
  return answer ? Json(displayUtf8(answer->shown)) : Json();
}

// A number where the text is one.
Json codeOf(const std::string& text) {
  const auto number = exactNumber<std::int32_t>(text);
  if (number && std::to_string(*number) == text) return *number;
  return text.empty() ? Json() : Json(displayUtf8(text));
}

Json parameterJson(CommandSession& session, const MacroCommand& command, const Function& function,
                   const MacroParameter& parameter) {
  const char* const kind = kindOf(command, function, parameter.name);
  const bool has = parameter.hasValue;
  return {{"name", displayUtf8(parameter.name)},
          {"kind", kind ? Json(kind) : Json()},
          {"stored", has ? Json(displayUtf8(parameter.value)) : Json()},
          {"number", has ? numberOf(kind, parameter.value) : Json()},
          {"shown", has ? shownOf(session, command, function, parameter.name, parameter.value) : Json()}};
}

Json commandJson(CommandSession& session, const MacroCommand& command, int number, std::string line) {
  const Function function = functionOf(session, command);
  const bool hasDestination = command.fid.find('.') != std::string::npos;
  Json json{{"number", number},
            {"line", displayUtf8(line)},
            {"destination", hasDestination ? Json(displayUtf8(command.destination())) : Json()},
            {"function", displayUtf8(command.functionName())},
            {"workplace", codeOf(command.workplace)},
            {"group", codeOf(command.group)},
            {"module", codeOf(command.module)},
            {"widget", codeOf(command.widget)},
            {"classic", command.classic()},
            {"known", function.has_value() || command.classic()},
            {"more", !command.unread.empty()},
            {"parameters", Json::array()}};
  for (const MacroParameter& parameter : command.parameters)
    json["parameters"].push_back(parameterJson(session, command, function, parameter));
  return json;
}

}  // namespace

Json commandsJson(CommandSession& session, const Macro& macro, const LineOptions& options) {
  const LineContext context{session.dictionary(), session.decodingLists()};
  Json json{{"schema", kSchema},
            {"name", macro.name() ? Json(displayUtf8(*macro.name())) : Json()},
            {"commands", Json::array()}};
  int number = 0;
  for (const MacroCommand& command : macro.commands())
    json["commands"].push_back(
        commandJson(session, command, number++, commandLine(command, options, context)));
  return json;
}

Outcome canHold(CommandSession& session, const MacroCommands& commands) {
  for (std::size_t i = 0; i < commands.size(); ++i) {
    const MacroCommand& command = commands[i];
    const auto wrong = [&](const std::string& text) {
      return Failure{Failure::Kind::kNothingTaken, "commands[" + std::to_string(i) + "]: " + text};
    };
    const auto destination = Destination::named(command.destination());
    if (!destination) return wrong("Unknown destination: " + command.fid);
    if (destination->isPanel() && !wholeNumber(command.workplace, 1, Workplace::kCount))
      return wrong("A command for the panel needs a workplace, 1 to 8");
    if (command.classic()) {
      const bool decodes =
          !command.parameters.empty() && ClassicCommand().decodeText(command.parameters.front().value);
      if (!decodes) return wrong("No classic command; --force stores it");
      continue;
    }
    const Function function = functionOf(session, command);
    if (!function) return wrong("Unknown function: " + std::string(command.functionName()));
    for (const MacroParameter& parameter : command.parameters) {
      if (!kindOf(command, function, parameter.name)) return wrong("Unknown parameter: " + parameter.name);
      const Outcome held = canHold(session.dictionary(), *function, parameter.name, parameter.value);
      if (!held) return wrong(held.failure().text);
    }
  }
  return {};
}

}  // namespace tessaly
