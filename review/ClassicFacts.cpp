#include "review/ClassicFacts.h"

#include "classic/ClassicDescription.h"
#include "classic/ClassicGroups.h"
#include "classic/ClassicParameter.h"

namespace tessaly {

ClassicFacts classicFacts(const ClassicCommand& command, DecodingLists& lists) {
  ClassicFacts facts;
  if (!command.valid()) return facts;
  facts.group = groupName(command.cd(), command.co());
  const auto list = lists.list(command.cd(), command.co());
  const auto entry = list ? list->find(command) : std::nullopt;
  if (!entry) return facts;
  std::size_t position = 0;
  for (const ParameterDescriptor& descriptor : entry->parameters) {
    const std::size_t begin = position;
    if (!parameterText(command, *entry, descriptor, position)) break;
    if (descriptor.type != ParameterType::kInput) continue;
    if (command.parameter(begin) == kExtendedInput) break;
    facts.sources.push_back(std::to_string(command.parameter(begin)));
  }
  return facts;
}

ClassicFacts classicFacts(const std::string& text, DecodingLists& lists) {
  ClassicCommand decoded;
  static_cast<void>(decoded.decodeText(text));
  return classicFacts(decoded, lists);
}

}  // namespace tessaly
