#include <nlohmann/json.hpp>
#include <optional>

#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "cli/ValueAnswer.h"
#include "platform/Text.h"
#include "values/SourceNames.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

int printAnswer(CommandSession& session, const ValueAnswer& result, bool json) {
  if (json)
    return printJson(session, {{"shown", displayUtf8(result.shown)},
                               {"stored", displayUtf8(result.stored)},
                               {"range", result.range.empty() ? Json() : Json(displayUtf8(result.range))},
                               {"beeps", result.beeps}});
  session.field("shown", result.shown);
  session.field("stored", result.stored);
  session.field("range", result.range);
  session.field("beeps", std::to_string(result.beeps));
  return kExitDone;
}

// By the name alone, or with a destination prefix in front.
std::optional<FunctionRecord> functionOf(const FunctionDictionary& dictionary, const std::string& fid) {
  if (auto function = dictionary.find(fid)) return function;
  const std::size_t dot = fid.find('.');
  return dot == std::string::npos ? std::nullopt : dictionary.find(std::string_view(fid).substr(dot + 1));
}

std::optional<std::uint32_t> packedNumber(std::string_view text) {
  const bool hexadecimal = text.starts_with("0x");
  if (hexadecimal) text.remove_prefix(2);
  return exactNumber<std::uint32_t>(text, hexadecimal ? 16 : 10);
}

Json jsonOf(std::uint32_t packed, const Timecode& timecode) {
  return {{"packed", packed},          {"display", timecode.display(true)}, {"plain", timecode.plain()},
          {"hours", timecode.hours},   {"minutes", timecode.minutes},       {"seconds", timecode.seconds},
          {"frames", timecode.frames}, {"dropFrame", timecode.dropFrame},   {"field", timecode.field}};
}

}  // namespace

int runValue(CommandSession& session, Arguments& arguments) {
  AskedValues question;
  question.shown = arguments.option("--shown");
  question.stored = arguments.option("--stored");
  const bool json = arguments.flag("--json");
  if (arguments.flag("--raw")) question.mode = ValueMode::kRaw;
  if (!arguments.complete(2, 2)) return session.wrongUsage(arguments.problem());
  if (question.shown.has_value() == question.stored.has_value()) {
    return session.wrongUsage("either --shown or --stored is needed");
  }

  const std::optional<FunctionRecord> function = functionOf(session.dictionary(), arguments[0]);
  if (!function) return session.failed("Unknown function: " + arguments[0]);
  const auto result = answerValue(session, *function, arguments[1], question);
  return result ? printAnswer(session, *result, json) : session.failed(result.failure().text);
}

int runSource(CommandSession& session, Arguments& arguments) {
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  const std::optional<int> number = wholeNumber(arguments[0], 0, 255);
  if (!number) return session.wrongUsage("NUMBER is 0 to 255");
  session.line(sourceName(static_cast<std::uint8_t>(*number)));
  return kExitDone;
}

int runTimecode(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  if (!arguments.complete(1, 1)) return session.wrongUsage(arguments.problem());
  const std::optional<std::uint32_t> packed = packedNumber(arguments[0]);
  if (!packed) return session.wrongUsage("PACKED is a 32-bit number, decimal or with 0x in front");
  const Timecode timecode = Timecode::fromPacked(*packed);
  if (json) return printJson(session, jsonOf(*packed, timecode));
  session.field("display", timecode.display(true));
  session.field("plain", timecode.plain());
  return kExitDone;
}

}  // namespace tessaly
