#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "classic/DecodingList.h"
#include "dictionary/FunctionDictionary.h"
#include "model/MacroEdit.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"
#include "review/Saying.h"

// What a check looks for, and what it finds.
namespace tessaly {

enum class Severity { kNote, kWarning, kError };  // in rising order

enum class CheckRule {
  // Of a file.
  kUnreadable,
  kEncoding,
  kNoName,
  kNameTwice,
  kFileName,
  kNoCommands,
  // Of a command.
  kDestination,
  kWorkplace,
  kUnknownFunction,
  kUnknownParameter,
  kParameterTwice,
  kEmptyParameter,
  kNumber,
  kLimits,
  kChoice,
  kSource,
  kTimecode,
  kClassicText,
  kClassicReadBack,
  kClassicAction,
  kClassicList,
  kClassicKeyword,
  kClassicShort,
  // Of commands that follow each other.
  kSpill,
  kRepeated,
  kSetAgain,
};
inline constexpr std::size_t kCheckRules = static_cast<std::size_t>(CheckRule::kSetAgain) + 1;

struct CheckRuleInfo {
  CheckRule rule;
  std::string_view name;     // fixed: "unknown-function"
  Severity severity;         // the highest of its findings
  std::string_view meaning;  // one line of English
};

// In the order of the enumeration.
[[nodiscard]] std::span<const CheckRuleInfo, kCheckRules> checkRules();
[[nodiscard]] const CheckRuleInfo& infoOf(CheckRule rule);
[[nodiscard]] const CheckRuleInfo* checkRuleNamed(std::string_view name);  // null for a name that is none

[[nodiscard]] std::string_view severityName(Severity severity);  // "error"
[[nodiscard]] std::optional<Severity> severityNamed(std::string_view name);

// One thing that is wrong. Values are UTF-8.
struct Finding {
  CheckRule rule = CheckRule::kUnreadable;
  Severity severity = Severity::kError;
  int command = -1;            // from 0; -1 for the macro as a whole
  std::string parameter = {};  // its name, where the finding is about one
  Said wrong = {};
  Said right = {};         // what would be right; empty where nothing better can be said
  std::string meant = {};  // the one value or name that certainly is meant; empty without one
  // What mends it, for the macro as it was checked; only where one thing is certainly meant.
  std::optional<MacroEdit> fix = {};
  int other = -1;  // the other command that it is about, from 0; `wrong` lacks its number
};
// What is wrong, whole; a program tells numbers of commands from `first` on.
[[nodiscard]] Said wrongOf(const Finding& finding, int first);
// In English, numbers from 0; what would be right is empty where nothing better can be said.
[[nodiscard]] std::string wrongText(const Finding& finding);
[[nodiscard]] std::string rightText(const Finding& finding);
using Findings = std::vector<Finding>;

// The rules that do not count, told by a file of the site (docs/check.md).
inline constexpr std::string_view kCheckFile = "c:\\Programme\\RV48\\bin\\MacroFid\\Check.txt";

class RulesOff {
 public:
  void set(CheckRule rule, bool off = true) { off_.set(static_cast<std::size_t>(rule), off); }
  [[nodiscard]] bool contains(CheckRule rule) const { return off_.test(static_cast<std::size_t>(rule)); }
  [[nodiscard]] std::vector<std::string_view> names() const;

  // Lines "off RULE"; empty ones and those that begin with "#" say nothing. Each other line, and what cannot
  // be read, is told in `problems`.
  [[nodiscard]] static RulesOff parse(std::string_view bytes, std::vector<std::string>& problems);
  // Nothing is off without the file.
  [[nodiscard]] static RulesOff load(const SiteRoot& root, std::vector<std::string>& problems);
  // Makes the file tell the same. What else stands in it stays as it is: remarks, and lines that say nothing.
  [[nodiscard]] Outcome store(const SiteRoot& root) const;

  friend bool operator==(const RulesOff&, const RulesOff&) = default;

 private:
  std::bitset<kCheckRules> off_;
};

// What macros are checked against; the references outlive the check.
struct CheckContext {
  const FunctionDictionary& dictionary;
  DecodingLists& decodingLists;
  int frameRate = 25;  // frames a second
  RulesOff off = {};
};

}  // namespace tessaly
