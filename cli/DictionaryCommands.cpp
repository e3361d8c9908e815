#include <numeric>
#include <optional>

#include "cli/Commands.h"
#include "cli/PrintJson.h"
#include "model/FunctionSearch.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

// One parameter of a record: its kind, its name and what else there is to say, in the order of printing.
struct ParameterFacts {
  const char* kind;
  std::string name;
  std::vector<std::pair<const char*, std::string>> facts;
  Json json = {};  // the same with their types
};

template <typename Parameter>
ParameterFacts factsOf(const char* kind, const Parameter& parameter) {
  return {kind,
          parameter.name,
          {{"description", parameter.description}, {"optional", parameter.optional ? "yes" : "no"}},
          {{"kind", kind},
           {"name", displayUtf8(parameter.name)},
           {"description", displayUtf8(parameter.description)},
           {"optional", parameter.optional}}};
}

std::string whole(double value) { return format("%.0f", value); }
std::string fraction(double value) { return format("%.10g", value); }

template <typename Parameter>
void addRanges(ParameterFacts& row, const Parameter& parameter, std::string (*text)(double)) {
  const auto add = [&](const char* key, auto value) {
    row.facts.emplace_back(key, text(value));
    row.json[key] = value;
  };
  add("min", parameter.min);
  add("max", parameter.max);
  add("minDisp", parameter.minDisplay);
  add("maxDisp", parameter.maxDisplay);
}

const char* unitName(FloatUnit unit) {
  switch (unit) {
    case FloatUnit::kNone:
      return "none";
    case FloatUnit::kPercent:
      return "percent";
    case FloatUnit::kDegree:
      return "degree";
  }
  return "";
}

std::string valueList(const std::vector<EnumValue>& values) {
  std::string list;
  for (const EnumValue& value : values) {
    if (!list.empty()) list += '|';
    list.append(value.value).append(":").append(value.description);
  }
  return list;
}

std::vector<ParameterFacts> parametersOf(const FunctionTemplate& definition) {
  std::vector<ParameterFacts> rows;
  for (const EnumParameter& parameter : definition.enums) {
    rows.push_back(factsOf("enum", parameter));
    rows.back().facts.emplace_back("values", valueList(parameter.values));
    rows.back().json["values"] = Json::array();
    for (const EnumValue& value : parameter.values)
      rows.back().json["values"].push_back(
          {{"stored", displayUtf8(value.value)}, {"shown", displayUtf8(value.description)}});
  }
  for (const IntegerParameter& parameter : definition.integers) {
    rows.push_back(factsOf("integer", parameter));
    rows.back().facts.emplace_back("scaled", parameter.scaled ? "yes" : "no");
    rows.back().json["scaled"] = parameter.scaled;
    addRanges(rows.back(), parameter, whole);
  }
  for (const FloatParameter& parameter : definition.floats) {
    rows.push_back(factsOf("float", parameter));
    rows.back().facts.emplace_back("unit", unitName(parameter.unit));
    rows.back().json["unit"] = unitName(parameter.unit);
    addRanges(rows.back(), parameter, fraction);
  }
  for (const InputParameter& parameter : definition.inputs) rows.push_back(factsOf("input", parameter));
  for (const TimecodeParameter& parameter : definition.timecodes)
    rows.push_back(factsOf("timecode", parameter));
  return rows;
}

// The fields of a record above its parameters.
std::vector<std::pair<const char*, std::string>> fieldsOf(const FunctionRecord& function) {
  return {{"name", std::string(function.name())},
          {"sid", function.sid()},
          {"group", function.group()},
          {"description", function.description()},
          {"source", std::to_string(static_cast<int>(function.source()))},
          {"template", function.definition().name}};
}

void printRecord(CommandSession& session, const FunctionRecord& function) {
  for (const auto& [name, text] : fieldsOf(function)) session.field(name, text);
  for (const ParameterFacts& parameter : parametersOf(function.definition())) {
    std::string line = std::string(parameter.kind).append(" ").append(parameter.name);
    for (const auto& [key, text] : parameter.facts) {
      const bool quoted = std::string_view(key) == "description" || std::string_view(key) == "values";
      line.append(" ").append(key).append("=").append(quoted ? '"' + text + '"' : text);
    }
    session.field("parameter", line);
  }
}

Json recordJson(const FunctionRecord& function) {
  Json record;
  for (const auto& [name, text] : fieldsOf(function)) record[name] = displayUtf8(text);
  record["source"] = static_cast<int>(function.source());
  record["incremental"] = function.incremental();
  record["parameters"] = Json::array();
  for (ParameterFacts& parameter : parametersOf(function.definition()))
    record["parameters"].push_back(std::move(parameter.json));
  return record;
}

std::vector<std::string_view> namesWith(const FunctionDictionary& dictionary, const std::string& text) {
  const std::string wanted = toUpperAscii(text);
  std::vector<std::string_view> names;
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i) {
    const std::string_view name = dictionary.name(i);
    if (wanted.empty() || toUpperAscii(name).find(wanted) != std::string::npos) names.push_back(name);
  }
  return names;
}

// As the finder of the editors has them.
std::vector<std::string_view> namesFound(const FunctionDictionary& dictionary, const std::string& words) {
  FunctionSearch::Functions all(dictionary.functionCount());
  std::iota(all.begin(), all.end(), 0U);
  std::vector<std::string_view> names;
  for (const std::uint32_t found : FunctionSearch(dictionary).find(words, all))
    names.push_back(dictionary.name(found));
  return names;
}

void printJson(CommandSession& session, const FunctionDictionary& dictionary,
               const std::optional<std::vector<std::string_view>>& names,
               const std::optional<FunctionRecord>& function) {
  Json report{{"templates", dictionary.templateCount()}, {"functions", dictionary.functionCount()}};
  if (names) {
    report["names"] = Json::array();
    for (const std::string_view name : *names) report["names"].push_back(displayUtf8(name));
  }
  if (function) report["function"] = recordJson(*function);
  printJson(session, report);
}

}  // namespace

int runDictionary(CommandSession& session, Arguments& arguments) {
  const bool list = arguments.flag("--list");
  const bool json = arguments.flag("--json");
  const std::optional<std::string> wanted = arguments.option("--show");
  const std::optional<std::string> words = arguments.option("--find");
  if (!arguments.complete(0, list ? 1 : 0)) return session.wrongUsage(arguments.problem());
  if (list && words) return session.wrongUsage("either --list or --find");
  if (words && !FunctionSearch::hasWords(*words)) return session.wrongUsage("--find takes words");

  const FunctionDictionary& dictionary = session.dictionary();
  std::optional<std::vector<std::string_view>> names;
  if (list) names = namesWith(dictionary, arguments.size() > 0 ? arguments[0] : std::string());
  if (words) names = namesFound(dictionary, *words);
  std::optional<FunctionRecord> function;
  if (wanted) {
    function = dictionary.find(*wanted);
    if (!function) return session.failed("Unknown function: " + *wanted);
  }

  const int result = session.dictionaryWhole() && !(names && names->empty()) ? kExitDone : kExitFailed;
  if (json) {
    printJson(session, dictionary, names, function);
    return result;
  }
  session.line(dictionary.summary());
  if (names) {
    for (const std::string_view name : *names) session.line(name);
  }
  if (function) printRecord(session, *function);
  return result;
}

}  // namespace tessaly
