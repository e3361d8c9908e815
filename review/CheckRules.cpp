#include "review/CheckRules.h"

#include <algorithm>

#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

using enum CheckRule;

constexpr std::size_t kMostBytes = std::size_t{64} * 1024;
constexpr std::string_view kOff = "off";
constexpr std::string_view kBlanks = " \t\r\n";

constexpr std::array<CheckRuleInfo, kCheckRules> kRules{{
    {kUnreadable, "unreadable", Severity::kError, "the file cannot be read, or holds no macro"},
    {kEncoding, "encoding", Severity::kError, "the file's encoding cannot hold its text"},
    {kNoName, "no-name", Severity::kWarning, "the macro has no name"},
    {kNameTwice, "name-twice", Severity::kWarning, "another macro of the workplace has the same name"},
    {kFileName, "file-name", Severity::kWarning, "the file is not named by a number, as macro007.mac"},
    {kNoCommands, "empty-macro", Severity::kNote, "there are no commands"},
    {kDestination, "destination", Severity::kError, "the destination is unknown or missing"},
    {kWorkplace, "workplace", Severity::kError, "a command for the panel has no workplace 1 to 8"},
    {kUnknownFunction, "unknown-function", Severity::kError, "no interface description has the function"},
    {kUnknownParameter, "unknown-parameter", Severity::kError, "the function has no such parameter"},
    {kParameterTwice, "parameter-twice", Severity::kError, "a parameter stands there twice"},
    {kEmptyParameter, "empty-parameter", Severity::kError, "a parameter that must have a value has none"},
    {kNumber, "number", Severity::kError, "a value does not read whole as a number"},
    {kLimits, "limits", Severity::kError, "a value lies beyond its limits"},
    {kChoice, "choice", Severity::kError, "a value is none of those that are listed"},
    {kSource, "source", Severity::kError, "the site has no such source"},
    {kTimecode, "timecode", Severity::kError, "a value is no timecode at the site's frame rate"},
    {kClassicText, "classic-text", Severity::kError, "the text of a classic command does not decode"},
    {kClassicReadBack, "classic-readback", Severity::kError,
     "a classic command could not be read back once it is saved"},
    {kClassicAction, "classic-action", Severity::kError, "the action of a classic command is unknown"},
    {kClassicList, "classic-list", Severity::kNote, "no decoding list tells what a classic command means"},
    {kClassicKeyword, "classic-keyword", Severity::kError, "the keyword of a classic command is unknown"},
    {kClassicShort, "classic-short", Severity::kError, "a classic command has too few parameters"},
    {kSpill, "spill", Severity::kWarning, "an update would put the value into another command"},
    {kRepeated, "repeated", Severity::kWarning, "the same command stands there twice in a row"},
    {kSetAgain, "set-again", Severity::kWarning, "a value is set again before anything acts"},
}};

constexpr std::string_view kSeverities[] = {"note", "warning", "error"};

constexpr bool inOrder() {
  for (std::size_t i = 0; i < kCheckRules; ++i)
    if (static_cast<std::size_t>(kRules[i].rule) != i) return false;
  return true;
}
static_assert(inOrder());

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(kBlanks), text.size());
  text.remove_prefix(begin);
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// The rule that a line switches off, or why it does not: it says nothing, or is none that is understood.
struct RulesLine {
  const CheckRuleInfo* off = nullptr;
  bool empty = false;
};

RulesLine readLine(std::string_view line) {
  line = trimmed(line);
  if (line.empty() || line.starts_with('#')) return {.empty = true};
  const std::size_t blank = std::min(line.find_first_of(kBlanks), line.size());
  if (line.substr(0, blank) != kOff) return {};
  return {.off = checkRuleNamed(trimmed(line.substr(blank)))};
}

// Cuts the first line off, with what ends it.
std::string_view takeLine(std::string_view& bytes) {
  const std::string_view line = bytes.substr(0, std::min(bytes.find('\n'), bytes.size() - 1) + 1);
  bytes.remove_prefix(line.size());
  return line;
}

}  // namespace

std::span<const CheckRuleInfo, kCheckRules> checkRules() { return kRules; }

const CheckRuleInfo& infoOf(CheckRule rule) { return kRules[static_cast<std::size_t>(rule)]; }

const CheckRuleInfo* checkRuleNamed(std::string_view name) {
  const auto* const info =
      std::find_if(kRules.begin(), kRules.end(), [&](const CheckRuleInfo& row) { return row.name == name; });
  return info == kRules.end() ? nullptr : info;
}

std::string_view severityName(Severity severity) { return kSeverities[static_cast<std::size_t>(severity)]; }

std::optional<Severity> severityNamed(std::string_view name) {
  for (const Severity severity : {Severity::kNote, Severity::kWarning, Severity::kError})
    if (severityName(severity) == name) return severity;
  return std::nullopt;
}

Said wrongOf(const Finding& finding, int first) {
  Said wrong = finding.wrong;
  if (finding.other >= 0) wrong.values.push_back(std::to_string(finding.other + first));
  return wrong;
}

std::string wrongText(const Finding& finding) { return inEnglish(wrongOf(finding, 0)); }

std::string rightText(const Finding& finding) {
  const std::string right = inEnglish(finding.right);
  if (finding.meant.empty() || right.empty()) return finding.meant + right;
  return finding.meant + " (" + right + ')';
}

std::vector<std::string_view> RulesOff::names() const {
  std::vector<std::string_view> names;
  for (const CheckRuleInfo& info : kRules)
    if (contains(info.rule)) names.push_back(info.name);
  return names;
}

RulesOff RulesOff::parse(std::string_view bytes, std::vector<std::string>& problems) {
  RulesOff off;
  for (int number = 1; !bytes.empty(); ++number) {
    const RulesLine line = readLine(takeLine(bytes));
    if (line.off != nullptr)
      off.set(line.off->rule);
    else if (!line.empty)
      problems.push_back("line " + std::to_string(number) + " is no \"off RULE\"");
  }
  return off;
}

RulesOff RulesOff::load(const SiteRoot& root, std::vector<std::string>& problems) {
  const auto bytes = readFile(root, kCheckFile, kMostBytes);
  if (bytes) return parse(*bytes, problems);
  if (bytes.failure().kind != Failure::Kind::kMissing) problems.push_back(bytes.failure().text);
  return {};
}

Outcome RulesOff::store(const SiteRoot& root) const {
  const auto present = readFile(root, kCheckFile, kMostBytes);
  if (!present && present.failure().kind != Failure::Kind::kMissing) return present.failure();
  const std::string before = present.value_or("");
  std::string after;
  RulesOff told;
  for (std::string_view rest = before; !rest.empty();) {
    const std::string_view line = takeLine(rest);
    const RulesLine read = readLine(line);
    if (read.off != nullptr && !contains(read.off->rule)) continue;
    if (read.off != nullptr) told.set(read.off->rule);
    after += line;
  }
  for (const CheckRuleInfo& info : kRules) {
    if (!contains(info.rule) || told.contains(info.rule)) continue;
    if (!after.empty() && !after.ends_with('\n')) after += '\n';
    after.append(kOff).append(" ").append(info.name).append("\n");
  }
  return after == before ? Outcome() : writeFile(root, kCheckFile, after);
}

}  // namespace tessaly
