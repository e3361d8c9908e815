#include "windows/FindingText.h"

#include <algorithm>

#include <QCoreApplication>
#include <QStringList>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

QString translated(const char* text) { return QCoreApplication::translate("FindingText", text); }

// As CheckRules.cpp has them, in its order.
constexpr const char* kRules[] = {
    QT_TRANSLATE_NOOP("FindingText", "the file cannot be read, or holds no macro"),
    QT_TRANSLATE_NOOP("FindingText", "the file's encoding cannot hold its text"),
    QT_TRANSLATE_NOOP("FindingText", "the macro has no name"),
    QT_TRANSLATE_NOOP("FindingText", "another macro of the workplace has the same name"),
    QT_TRANSLATE_NOOP("FindingText", "the file is not named by a number, as macro007.mac"),
    QT_TRANSLATE_NOOP("FindingText", "there are no commands"),
    QT_TRANSLATE_NOOP("FindingText", "the destination is unknown or missing"),
    QT_TRANSLATE_NOOP("FindingText", "a command for the panel has no workplace 1 to 8"),
    QT_TRANSLATE_NOOP("FindingText", "no interface description has the function"),
    QT_TRANSLATE_NOOP("FindingText", "the function has no such parameter"),
    QT_TRANSLATE_NOOP("FindingText", "a parameter stands there twice"),
    QT_TRANSLATE_NOOP("FindingText", "a parameter that must have a value has none"),
    QT_TRANSLATE_NOOP("FindingText", "a value does not read whole as a number"),
    QT_TRANSLATE_NOOP("FindingText", "a value lies beyond its limits"),
    QT_TRANSLATE_NOOP("FindingText", "a value is none of those that are listed"),
    QT_TRANSLATE_NOOP("FindingText", "the site has no such source"),
    QT_TRANSLATE_NOOP("FindingText", "a value is no timecode at the site's frame rate"),
    QT_TRANSLATE_NOOP("FindingText", "the text of a classic command does not decode"),
    QT_TRANSLATE_NOOP("FindingText", "a classic command could not be read back once it is saved"),
    QT_TRANSLATE_NOOP("FindingText", "the action of a classic command is unknown"),
    QT_TRANSLATE_NOOP("FindingText", "no decoding list tells what a classic command means"),
    QT_TRANSLATE_NOOP("FindingText", "the keyword of a classic command is unknown"),
    QT_TRANSLATE_NOOP("FindingText", "a classic command has too few parameters"),
    QT_TRANSLATE_NOOP("FindingText", "an update would put the value into another command"),
    QT_TRANSLATE_NOOP("FindingText", "the same command stands there twice in a row"),
    QT_TRANSLATE_NOOP("FindingText", "a value is set again before anything acts"),
};
static_assert(std::size(kRules) == kCheckRules);

}  // namespace

RowMark markOf(Severity severity) {
  switch (severity) {
    case Severity::kNote:
      return RowMark::kNote;
    case Severity::kWarning:
      return RowMark::kWarning;
    case Severity::kError:
      return RowMark::kError;
  }
  return RowMark::kNone;
}

QString severityText(Severity severity) {
  switch (severity) {
    case Severity::kNote:
      return translated(QT_TRANSLATE_NOOP("FindingText", "note"));
    case Severity::kWarning:
      return translated(QT_TRANSLATE_NOOP("FindingText", "warning"));
    case Severity::kError:
      return translated(QT_TRANSLATE_NOOP("FindingText", "error"));
  }
  return {};
}

QString ruleText(CheckRule rule) { return translated(kRules[static_cast<std::size_t>(rule)]); }

QString wrongInWindow(const Finding& finding) {
  const QString wrong = shown(wrongText(finding, 1));
  return finding.parameter.empty() ? wrong : shown(finding.parameter) + QStringLiteral(": ") + wrong;
}

QString findingText(const Finding& finding) {
  const QString severity = severityText(finding.severity);
  if (finding.right.empty())
    return translated(QT_TRANSLATE_NOOP("FindingText", "%1: %2")).arg(severity, wrongInWindow(finding));
  return translated(QT_TRANSLATE_NOOP("FindingText", "%1: %2; right: %3"))
      .arg(severity, wrongInWindow(finding), shown(finding.right));
}

QString countText(const Findings& findings) {
  const auto count = [&](Severity severity) {
    return static_cast<int>(std::count_if(findings.begin(), findings.end(), [severity](const Finding& one) {
      return one.severity == severity;
    }));
  };
  QStringList parts;
  if (const int errors = count(Severity::kError); errors > 0)
    parts << QCoreApplication::translate("FindingText", "%n errors", nullptr, errors);
  if (const int warnings = count(Severity::kWarning); warnings > 0)
    parts << QCoreApplication::translate("FindingText", "%n warnings", nullptr, warnings);
  if (const int notes = count(Severity::kNote); notes > 0)
    parts << QCoreApplication::translate("FindingText", "%n notes", nullptr, notes);
  return parts.join(QStringLiteral(", "));
}

QString offText(const RulesOff& off) {
  QStringList names;
  for (const std::string_view name : off.names())
    names << QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  return names.join(QStringLiteral(", "));
}

}  // namespace tessaly
