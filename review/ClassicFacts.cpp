#include "review/ClassicFacts.h"

#include "classic/ClassicDescription.h"
#include "classic/ClassicGroups.h"
#include "classic/ClassicParameter.h"

namespace tessaly {

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

ClassicFacts classicFacts(const ClassicCommand& command, DecodingLists& lists) {
  ClassicFacts facts;
  if (!command.valid()) return facts;
  facts.group = groupName(command.cd(), command.co());
  for (const std::size_t place : classicSourcePlaces(command, lists))
    facts.sources.push_back(std::to_string(command.parameter(place)));
  return facts;
}

ClassicFacts classicFacts(const std::string& text, DecodingLists& lists) {
  ClassicCommand decoded;
  static_cast<void>(decoded.decodeText(text));
  return classicFacts(decoded, lists);
}

}  // namespace tessaly
