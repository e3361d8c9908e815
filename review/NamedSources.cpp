#include "review/NamedSources.h"

#include <algorithm>

#include "platform/Text.h"
#include "review/MacroSearch.h"
#include "values/SourceNames.h"

namespace tessaly {

NamedSources sourcesNamed(std::string_view text, const FunctionDictionary& dictionary) {
  if (text.find_first_not_of("0123456789") == text.npos) {
    if (text.empty()) return {};
    const SourceNumbers number{
        std::string(text.substr(std::min(text.find_first_not_of('0'), text.size() - 1)))};
    return {number, number};
  }
  NamedSources numbers;
  for (const PanelSource& source : inputSources(dictionary))
    if (fitsPattern(text, toUpperAscii(source.displayName)))
      numbers.panel.insert(inputNumberText(source.panelName));
  for (const ClassicSource& source : classicSources())
    if (fitsPattern(text, toUpperAscii(source.name))) numbers.classic.insert(std::to_string(source.number));
  if (numbers.classic.empty()) numbers.classic = numbers.panel;
  return numbers;
}

}  // namespace tessaly
