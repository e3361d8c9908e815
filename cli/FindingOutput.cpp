#include "cli/FindingOutput.h"

#include "model/Settings.h"
#include "platform/Text.h"

namespace tessaly {

using Json = nlohmann::ordered_json;

CheckContext checkContextOf(CommandSession& session) {
  Settings settings;
  static_cast<void>(readSettings(session.root(), settings));
  std::vector<std::string> problems;
  CheckContext context{session.dictionary(), session.decodingLists(), settings.frameRate,
                       RulesOff::load(session.root(), problems)};
  for (const std::string& problem : problems) session.warn(std::string(kCheckFile) + ' ' + problem);
  return context;
}

std::string findingColumns(const Finding& finding) {
  std::string text(severityName(finding.severity));
  text.append("\t").append(infoOf(finding.rule).name).append("\t");
  text += (finding.parameter.empty() ? std::string() : outputName(finding.parameter) + ": ") +
          outputName(wrongText(finding));
  const std::string right = rightText(finding);
  return right.empty() ? text : text + "; right: " + outputName(right);
}

Json findingJson(const Finding& finding) {
  const auto text = [](const std::string& value) {
    return value.empty() ? Json() : Json(displayUtf8(value));
  };
  return {{"rule", infoOf(finding.rule).name},
          {"severity", severityName(finding.severity)},
          {"command", finding.command < 0 ? Json() : Json(finding.command)},
          {"parameter", text(finding.parameter)},
          {"wrong", displayUtf8(wrongText(finding))},
          {"right", text(rightText(finding))},
          {"fix", finding.fix.has_value()}};
}

}  // namespace tessaly
