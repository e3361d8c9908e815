#include "cli/ValueCheck.h"

#include "review/ValueJudgement.h"
#include "values/SourceNames.h"

namespace tessaly {

std::vector<EnumValue> inputChoices(const FunctionDictionary& dictionary) {
  std::vector<EnumValue> choices;
  for (const PanelSource& source : inputSources(dictionary))
    choices.push_back({inputNumberText(source.panelName), source.displayName});
  return choices;
}

Outcome canHold(const FunctionDictionary& dictionary, const FunctionRecord& function,
                std::string_view parameter, const std::string& value) {
  const ValueBounds bounds{ValueBounds::inputsOf(dictionary)};
  const ValueJudgement judgement =
      judge(function.definition(), numberKindOf(function), parameter, value, bounds);
  if (judgement.fault == ValueFault::kNone) return {};
  return Failure{Failure::Kind::kNothingTaken, std::string(parameter) + " cannot hold " + value + " (" +
                                                   inEnglish(judgement.can) + "); --force stores it"};
}

}  // namespace tessaly
