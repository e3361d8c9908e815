#include "review/ClassicFacts.h"

#include "classic/ClassicGroups.h"
#include "review/NamedSources.h"

namespace tessaly {

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
