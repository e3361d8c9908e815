#include "review/NamedSources.h"

#include <algorithm>

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

}  // namespace tessaly
