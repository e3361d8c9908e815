// How commands that are written as data become those of a macro.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>
#include <set>

#include "cli/CommandJson.h"
#include "cli/ValueAnswer.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kInput = "-";
constexpr const char* kUsualCode = "0";  // of group, module and widget

Failure wrong(const std::string& place, const std::string& what) {
  return {Failure::Kind::kNoFragment, place + ' ' + what};
}

// One object of a text, at `place`, with what was wrong first.
class Members {
 public:
  Members(const Json& object, std::string place, std::initializer_list<std::string_view> known)
      : object_(object), place_(std::move(place)) {
    if (!object.is_object()) {
      fail("is no object");
      return;
    }
    for (const auto& [name, value] : object.items())
      if (std::find(known.begin(), known.end(), name) == known.end())
        fail("has an unknown member \"" + name + '"');
  }

  // Null where it is missing or null.
  const Json* find(const char* name) {
    const auto found = object_.is_object() ? object_.find(name) : object_.end();
    return !object_.is_object() || found == object_.end() || found->is_null() ? nullptr : &*found;
  }
  std::optional<std::string> text(const char* name) {
    const Json* const value = find(name);
    if (!value) return std::nullopt;
    if (!value->is_string()) return fail(std::string("has a ") + name + " that is no text"), std::nullopt;
    return value->get<std::string>();
  }
  // A number or a text.
  std::optional<std::string> code(const char* name) {
    const Json* const value = find(name);
    if (value && value->is_number_integer()) return value->dump();
    return text(name);
  }
  bool flag(const char* name) {
    const Json* const value = find(name);
    if (value && !value->is_boolean()) fail(std::string("has a ") + name + " that is neither true nor false");
    return value && value->is_boolean() && value->get<bool>();
  }

  void fail(const std::string& what) {
    if (!failure_) failure_ = wrong(place_, what);
  }
  [[nodiscard]] const std::optional<Failure>& failure() const { return failure_; }

 private:
  const Json& object_;
  std::string place_;
  std::optional<Failure> failure_;
};

// As few digits as give the number back.
std::string numberText(const Json& number) {
  if (number.is_number_integer()) return number.dump();
  const double value = number.get<double>();
  char digits[400];
  return {digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed).ptr};
}

// One command that is read, for its parameters.
class CommandReader {
 public:
  CommandReader(CommandSession& session, std::string place) : session_(session), place_(std::move(place)) {}

  Expected<MacroCommand> read(const Json& json) {
    Members members(json, place_,
                    {"number", "line", "destination", "function", "workplace", "group", "module", "widget",
                     "classic", "known", "more", "parameters"});
    const auto destination = members.text("destination"), function = members.text("function");
    if (!function) members.fail("has no function");
    command_.fid = (destination ? *destination + '.' : std::string()) + function.value_or("");
    command_.workplace = members.code("workplace").value_or("");
    command_.group = members.code("group").value_or(kUsualCode);
    command_.module = members.code("module").value_or(kUsualCode);
    command_.widget = members.code("widget").value_or(kUsualCode);
    if (members.flag("more"))
      members.fail(
          "had more in the file than can be told here, which copy and paste keep; without \"more\" it is "
          "left out");
    const Json* const parameters = members.find("parameters");
    if (parameters && !parameters->is_array()) members.fail("has parameters that are no list");
    if (members.failure()) return *members.failure();
    if (!command_.classic()) function_ = session_.dictionary().find(command_.functionName());
    for (std::size_t i = 0; parameters && i < parameters->size(); ++i) {
      auto parameter = this->parameter((*parameters)[i], place_ + ".parameters[" + std::to_string(i) + ']');
      if (!parameter) return parameter.failure();
      command_.parameters.push_back(*std::move(parameter));
    }
    return std::move(command_);
  }

 private:
  // What is given of a value has to be one value.
  Expected<MacroParameter> parameter(const Json& json, const std::string& place) {
    Members members(json, place, {"name", "kind", "stored", "number", "shown"});
    const auto name = members.text("name"), stored = members.text("stored"), shown = members.text("shown");
    const Json* const number = members.find("number");
    if (!name) members.fail("has no name");
    if (number && !number->is_number()) members.fail("has a number that is none");
    if (members.failure()) return *members.failure();
    std::optional<std::string> value = stored;
    if (number && !value) value = numberText(*number);
    if (number && stored && exactNumber<double>(*stored) != number->get<double>())
      return wrong(place, "has two values, stored and number: leave out the old one");
    if (shown && !value) {
      auto typed = typedValue(*name, *shown, place);
      if (!typed) return typed.failure();
      value = *std::move(typed);
    } else if (shown && function_) {
      const auto answer = answerValue(session_, *function_, *name, {.shown = {}, .stored = value});
      if (answer && answer->shown != *shown)
        return wrong(place, "has two values, one of them shown: leave out the old one");
    }
    return MacroParameter{*name, value.value_or(""), value.has_value()};
  }

  Expected<std::string> typedValue(const std::string& name, const std::string& shown,
                                   const std::string& place) {
    if (!function_) return wrong(place, "has a value that is shown, of no function that is known");
    auto answer = answerValue(session_, *function_, name, {.shown = shown, .stored = {}});
    if (!answer) return wrong(place, answer.failure().text);
    if (answer->beeps > 0) return wrong(place, "cannot be " + shown + ", but " + answer->shown);
    return std::move(answer->stored);
  }

  CommandSession& session_;
  const std::string place_;
  MacroCommand command_;
  std::optional<FunctionRecord> function_;
};

void appendAttribute(std::string& xml, std::string_view name, std::string_view value) {
  xml.append(1, ' ').append(name).append("=\"");
  for (const char character : value) {
    switch (character) {
      case '&':
        xml += "&amp;";
        break;
      case '<':
        xml += "&lt;";
        break;
      case '>':
        xml += "&gt;";
        break;
      case '"':
        xml += "&quot;";
        break;
      default:
        xml += character;
    }
  }
  xml += '"';
}

Expected<CommandFragment> fragmentOf(std::span<const MacroCommand> commands) {
  std::string xml =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tessaly-commands version=\"1\" encoding=\"UTF-8\"><data>";
  for (const MacroCommand& command : commands) {
    xml += "<cmd";
    appendAttribute(xml, "fid", command.fid);
    if (!command.workplace.empty()) appendAttribute(xml, "workplace", command.workplace);
    appendAttribute(xml, "group", command.group);
    appendAttribute(xml, "module", command.module);
    appendAttribute(xml, "widget", command.widget);
    xml += '>';
    for (const MacroParameter& parameter : command.parameters) {
      appendAttribute(xml += "<param", "name", parameter.name);
      if (parameter.hasValue) appendAttribute(xml, "value", parameter.value);
      xml += "/>";
    }
    xml += "</cmd>";
  }
  return CommandFragment::read(xml + "</data></tessaly-commands>");
}

}  // namespace

namespace {

// Of two members of one name nobody knows which is meant, so the first such name is told.
Expected<Json> parsed(const std::string& text) {
  std::vector<std::set<std::string>> names;  // of the objects around
  std::optional<std::string> twice;
  const auto look = [&](int, Json::parse_event_t event, Json& value) {
    if (event == Json::parse_event_t::object_start) names.emplace_back();
    if (event == Json::parse_event_t::object_end) names.pop_back();
    if (event == Json::parse_event_t::key && !names.back().insert(value.get<std::string>()).second && !twice)
      twice = value.get<std::string>();
    return true;
  };
  Json json = Json::parse(text, look, false);
  if (json.is_discarded()) return wrong("The text", "is no JSON");
  if (twice) return wrong("The text", "has the member \"" + *twice + "\" twice in one place");
  return json;
}

}  // namespace

bool looksLikeJson(std::string_view text) {
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  return first != text.npos && (text[first] == '{' || text[first] == '[');
}

Expected<CommandsRead> readCommands(CommandSession& session, const std::string& text) {
  const auto json = parsed(text);
  if (!json) return json.failure();
  CommandsRead read;
  const Json* list = &*json;
  if (!json->is_array()) {
    Members members(*json, "The text", {"schema", "name", "commands"});
    read.name = members.text("name");
    list = members.find("commands");
    if (!list || !list->is_array()) members.fail("has no list of commands");
    if (const Json* const schema = members.find("schema"); schema && *schema != 1)
      members.fail("is of another schema than 1");
    if (members.failure()) return *members.failure();
  }
  for (std::size_t i = 0; i < list->size(); ++i) {
    auto command = CommandReader(session, "commands[" + std::to_string(i) + ']').read((*list)[i]);
    if (!command) return command.failure();
    read.commands.push_back(*std::move(command));
  }
  return read;
}

Outcome insertCommands(CommandSession& session, const std::string& path, const MacroCommands& commands,
                       InsertPlace place) {
  auto macro = loadMacro(session.site(), path);
  for (std::size_t at = 0; macro && at < commands.size(); at += kMostFragmentCommands) {
    const auto piece = std::span(commands).subspan(at, std::min(kMostFragmentCommands, commands.size() - at));
    const auto fragment = fragmentOf(piece);
    if (!fragment) return fragment.failure();
    macro = apply(*macro, InsertFragment{*fragment, place.position, place.mode});
    if (place.mode == InsertMode::kAtStart) place = {InsertMode::kAtPosition, 0};
    place.position += static_cast<int>(piece.size());
  }
  if (!macro) return macro.failure();
  return saveMacro(session.root(), path, *macro);
}

Expected<CommandsRead> commandsOnInput(CommandSession& session, const std::string& word) {
  if (word == kInput)
    return Failure{Failure::Kind::kNothingTaken,
                   "The commands come from standard input, so FILE must be a file"};
  const auto input =
      FileOperand::open(session.root(), session.streams(), std::string(kInput), FileUse::kRead);
  if (!input) return Failure{input.failure().kind, "Standard input " + input.failure().text};
  const auto text = readFile(session.root(), input->path());
  if (!text) return Failure{text.failure().kind, "Standard input " + text.failure().text};
  return readCommands(session, *text);
}

int insertData(CommandSession& session, const std::string& word, InsertPlace place, bool force) {
  const auto read = commandsOnInput(session, word);
  if (!read) return session.failed(read.failure().text);
  const Outcome can = force ? Outcome() : canHold(session, read->commands);
  if (!can) return session.failed(can.failure().text);
  return session.writeTo(word, FileUse::kChange, MacroChange::kEdit, [&](const std::string& path) {
    return told(kNotChanged, insertCommands(session, path, read->commands, place));
  });
}

}  // namespace tessaly
