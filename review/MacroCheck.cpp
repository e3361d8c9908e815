#include "review/MacroCheck.h"

#include <algorithm>

#include "platform/Text.h"
#include "platform/XmlSpelling.h"
#include "review/CommandRules.h"

namespace tessaly {
namespace {

using enum CheckRule;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kNoWindows1252 = "\x81\x8D\x8F\x90\x9D";  // bytes that are no character of it

// What of the file's text its encoding cannot hold; empty for a sound file.
Said encodingFault(std::string_view bytes) {
  if (isAscii(bytes)) return {};
  const bool marked = bytes.starts_with(kByteOrderMark);
  if (marked) bytes.remove_prefix(kByteOrderMark.size());
  const XmlEncoding encoding = xmlEncoding(bytes, marked);
  switch (encoding) {
    case XmlEncoding::kUtf8:
      return {};
    case XmlEncoding::kOnlyUtf8Said:
      return {Saying::kNoUtf8};
    case XmlEncoding::kUndeclared:
      if (isValidUtf8(bytes)) return {};
      [[fallthrough]];
    case XmlEncoding::kWindows1252:
      if (bytes.find_first_of(kNoWindows1252) == bytes.npos) return {};
      return {Saying::kNoWindows1252};
    case XmlEncoding::kUnknown:
      return {Saying::kOnlyAscii, {xmlEncodingName(bytes, encoding)}};
  }
  return {};
}

void checkCommands(CheckKnowledge& knowledge, const MacroCommands& commands, Told& told) {
  if (commands.empty()) told.add(kNoCommands, -1, {Saying::kNoCommands});
  SequenceRules sequence(commands);
  int number = 0;
  for (const MacroCommand& command : commands) {
    static const std::string kNoText;
    LookedCommand looked{command, number++};
    if (command.classic()) {
      looked.classic =
          &knowledge.classic(command.parameters.empty() ? kNoText : command.parameters.front().value);
    } else {
      looked.function = knowledge.function(command.functionName());
    }
    for (const CommandRule rule : commandRules()) rule(knowledge, looked, told);
    sequence.look(looked, told);
  }
}

void putInOrder(Findings& findings) {
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.command < b.command; });
}

}  // namespace

MacroCheck::MacroCheck(const CheckContext& context) : knowledge_(std::make_unique<CheckKnowledge>(context)) {}
MacroCheck::~MacroCheck() = default;

const RulesOff& MacroCheck::off() const { return knowledge_->context.off; }

Findings MacroCheck::check(const Macro& macro) {
  Findings findings;
  Told told(findings, off());
  knowledge_->begin();
  if (!macro.hasData()) {
    told.add(kUnreadable, -1, {Saying::kNoMacro});
    return findings;
  }
  if (Said fault = encodingFault(macro.bytes()); !fault.empty())
    told.add(kEncoding, -1, std::move(fault), {Saying::kEncodings});
  if (!macro.name() || macro.name()->empty()) told.add(kNoName, -1, {Saying::kNoName});
  checkCommands(*knowledge_, macro.commands(), told);
  putInOrder(findings);
  return findings;
}

Findings MacroCheck::errors(const Macro& macro) {
  Findings errors = check(macro);
  std::erase_if(errors, [](const Finding& finding) { return finding.severity != Severity::kError; });
  return errors;
}

std::optional<FaultyMacro> MacroCheck::faults(const std::string& number, const std::string& bytes) {
  const auto macro = Macro::read(bytes);
  Findings found = macro ? errors(*macro) : Findings();
  if (found.empty()) return std::nullopt;
  return FaultyMacro{number + " - " + macro->name().value_or(""), std::move(found)};
}

Findings MacroCheck::check(const KeyFile& keys) {
  Findings findings;
  Told told(findings, off());
  knowledge_->begin();
  if (keys.lines().empty()) {
    told.add(kNoCommands, -1, {Saying::kNoCommands});
    return findings;
  }
  int number = 0;
  for (const KeyFile::Line& line : keys.lines()) {
    for (const ClassicFault& fault : knowledge_->classic(line.text).faults)
      if (Finding* const finding = told.add(fault.rule, number, fault.wrong, fault.right)) {
        finding->parameter = fault.parameter;
        finding->meant = fault.meant;
      }
    ++number;
  }
  return findings;
}

}  // namespace tessaly
