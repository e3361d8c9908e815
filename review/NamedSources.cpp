#include "review/NamedSources.h"

#include <algorithm>

#include "classic/ClassicDescription.h"
#include "classic/ClassicParameter.h"
#include "platform/Text.h"
#include "review/MacroSearch.h"
#include "values/SourceNames.h"

namespace tessaly {

SourceNumbers sourcesNamed(std::string_view text, const FunctionDictionary& dictionary) {
  if (text.find_first_not_of("0123456789") == text.npos) {
    if (text.empty()) return {};
    return {std::string(text.substr(std::min(text.find_first_not_of('0'), text.size() - 1)))};
  }
  SourceNumbers numbers;
  for (const PanelSource& source : inputSources(dictionary))
    if (fitsPattern(text, toUpperAscii(source.displayName)))
      numbers.insert(inputNumberText(source.panelName));
  for (const ClassicSource& source : classicSources())
    if (fitsPattern(text, toUpperAscii(source.name))) numbers.insert(std::to_string(source.number));
  return numbers;
}

std::vector<std::size_t> classicSourcePlaces(const ClassicCommand& command, DecodingLists& lists) {
  std::vector<std::size_t> places;
  const auto list = lists.list(command.cd(), command.co());
  const auto entry = list ? list->find(command) : std::nullopt;
  if (!entry) return places;
  std::size_t position = 0;
  for (const ParameterDescriptor& descriptor : entry->parameters) {
    const std::size_t begin = position;
    if (!parameterText(command, *entry, descriptor, position)) break;
    if (descriptor.type != ParameterType::kInput) continue;
    if (command.parameter(begin) == kExtendedInput) break;
    places.push_back(begin);
  }
  return places;
}

}  // namespace tessaly
