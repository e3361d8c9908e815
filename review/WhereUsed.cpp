#include "review/WhereUsed.h"

#include <algorithm>

#include "platform/Text.h"
#include "review/ClassicFacts.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

using Kind = UsedThing::Kind;

// Under the name that the site or the classic table gives it, else its number.
std::string nameOfSource(const std::string& number, bool classic, const FunctionDictionary& dictionary) {
  for (const PanelSource& source : inputSources(dictionary))
    if (inputNumberText(source.panelName) == number) return source.displayName;
  if (classic)
    for (const ClassicSource& source : classicSources())
      if (std::to_string(source.number) == number) return source.name;
  return number;
}

std::vector<std::string> sourcesOf(const MacroCommand& command, const LineContext& context) {
  if (command.classic())
    return command.parameters.empty()
               ? std::vector<std::string>()
               : classicFacts(command.parameters.front().value, context.decodingLists).sources;
  std::vector<std::string> sources;
  const auto function = context.dictionary.find(command.functionName());
  if (!function) return sources;
  for (const MacroParameter& parameter : command.parameters)
    if (!parameter.value.empty() && parameterNamed(function->definition().inputs, parameter.name))
      sources.push_back(parameter.value);
  return sources;
}

}  // namespace

std::string queryWord(std::string_view field, std::string text) {
  std::erase(text, '"');
  if (text.empty()) return {};
  if (text.find_first_of(" \t:") != text.npos) text = '"' + text + '"';
  return field.empty() ? text : std::string(field) + ':' + text;
}

std::vector<UsedThing> usedBy(const MacroCommand& command, const LineContext& context) {
  std::vector<UsedThing> things;
  const auto add = [&](Kind kind, std::string_view field, const std::string& name, const std::string& text) {
    std::string query = queryWord(field, text);
    const bool known = std::any_of(things.begin(), things.end(),
                                   [&](const UsedThing& thing) { return thing.query == query; });
    if (!query.empty() && !known) things.push_back({kind, name, std::move(query)});
  };
  if (command.classic()) {
    if (!command.parameters.empty()) {
      const std::string group = classicFacts(command.parameters.front().value, context.decodingLists).group;
      add(Kind::kGroup, "group", group, group);
    }
  } else {
    const std::string function(command.functionName());
    add(Kind::kFunction, "function", function, function);
  }
  constexpr std::size_t kEnd = 3;  // " - "
  std::string destination = destinationLabel(command.destination(), command.workplace);
  destination.resize(destination.size() - kEnd);
  add(Kind::kDestination, "destination", destination, destination);
  for (const std::string& number : sourcesOf(command, context))
    add(Kind::kSource, "source", nameOfSource(number, command.classic(), context.dictionary), number);
  return things;
}

}  // namespace tessaly
