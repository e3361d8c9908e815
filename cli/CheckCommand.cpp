#include <algorithm>
#include <optional>

#include "cli/Commands.h"
#include "cli/FindingOutput.h"
#include "cli/PrintJson.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/FolderCheck.h"

namespace tessaly {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSchema = 1;  // of what --json prints (docs/check.schema.json)

// Findings on their way out, file by file.
class Report {
 public:
  Report(CommandSession& session, Severity least, bool json)
      : session_(session), least_(least), json_(json) {}

  void add(const CheckedFile& checked, const std::string& shown) {
    ++files_;
    Json findings = Json::array();
    for (const Finding& finding : checked.findings) {
      if (finding.severity < least_) continue;
      ++counts_[static_cast<std::size_t>(finding.severity)];
      if (json_) {
        findings.push_back(findingJson(finding));
      } else {
        session_.line(lineOf(finding, shown));
      }
    }
    if (json_ && !findings.empty())
      list_.push_back({{"path", displayUtf8(shown)},
                       {"name", displayUtf8(checked.name)},
                       {"findings", std::move(findings)}});
  }

  void end(const RulesOff& off) {
    const auto count = [this](Severity severity) { return counts_[static_cast<std::size_t>(severity)]; };
    if (!json_) {
      std::string names;
      for (const std::string_view name : off.names()) names.append(names.empty() ? "" : ", ").append(name);
      if (!names.empty()) session_.line("#\toff: " + names);
      session_.line("#\tfiles: " + std::to_string(files_) +
                    ", errors: " + std::to_string(count(Severity::kError)) +
                    ", warnings: " + std::to_string(count(Severity::kWarning)) +
                    ", notes: " + std::to_string(count(Severity::kNote)));
      return;
    }
    printJson(session_, {{"schema", kSchema},
                         {"files", files_},
                         {"errors", count(Severity::kError)},
                         {"warnings", count(Severity::kWarning)},
                         {"notes", count(Severity::kNote)},
                         {"off", off.names()},
                         {"checked", list_}});
  }

  [[nodiscard]] bool hasErrors() const { return counts_[static_cast<std::size_t>(Severity::kError)] > 0; }

 private:
  static std::string lineOf(const Finding& finding, const std::string& shown) {
    const std::string number = finding.command < 0 ? std::string() : std::to_string(finding.command);
    return outputName(shown) + '\t' + number + '\t' + findingColumns(finding);
  }

  CommandSession& session_;
  const Severity least_;
  const bool json_;
  std::size_t files_ = 0;
  std::size_t counts_[3] = {};
  Json list_ = Json::array();
};

// False when the path cannot be read; the reason is told.
bool checkPath(CommandSession& session, const std::string& word, MacroCheck& check, Report& report) {
  if (const std::string path = sitePathOf(word); word != "-" && isFolder(session.root(), path)) {
    for (const MacroFolder& folder : macroFoldersUnder(session.root(), path))
      checkFolder(session.root(), folder, check,
                  [&](const CheckedFile& checked) { report.add(checked, checked.path); });
    return true;
  }
  return session.readFrom(word, [&](const FileOperand& file) {
    report.add(checkFile(session.root(), file.path(), check), file.shown());
    return kExitDone;
  }) == kExitDone;
}

}  // namespace

int runCheck(CommandSession& session, Arguments& arguments) {
  const bool json = arguments.flag("--json");
  const std::string least =
      arguments.option("--severity").value_or(std::string(severityName(Severity::kNote)));
  constexpr std::size_t kMostPaths = 100'000;
  if (!arguments.complete(1, kMostPaths)) return session.wrongUsage(arguments.problem());
  const auto severity = severityNamed(least);
  if (!severity) return session.wrongUsage("--severity is note, warning or error");
  MacroCheck check(checkContextOf(session));
  Report report(session, *severity, json);
  bool read = true;
  for (std::size_t i = 0; i < arguments.size(); ++i)
    read = checkPath(session, arguments[i], check, report) && read;
  report.end(check.off());
  return read && !report.hasErrors() && session.dictionaryWhole() ? kExitDone : kExitFailed;
}

}  // namespace tessaly
