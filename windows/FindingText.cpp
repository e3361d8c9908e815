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

// As Saying.h has them, to a letter: a sentence that is not told here does not compile.
constexpr const char* kSentences[] = {
    "",
    "%1",
    QT_TRANSLATE_NOOP("FindingText", "the destination is missing"),
    QT_TRANSLATE_NOOP("FindingText", "the destination \"%1\" is unknown"),
    QT_TRANSLATE_NOOP("FindingText", "the workplace is missing"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" is no workplace"),
    QT_TRANSLATE_NOOP("FindingText", "no function is called \"%1\""),
    QT_TRANSLATE_NOOP("FindingText", "the function has no parameter \"%1\""),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" stands there twice"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" is missing"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" has no value"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" is no number"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" is beyond the limits"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" is none of the values"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" is no source of the site"),
    QT_TRANSLATE_NOOP("FindingText", "\"%1\" is no timecode"),
    QT_TRANSLATE_NOOP("FindingText", "an update would put its value into command %1"),
    QT_TRANSLATE_NOOP("FindingText", "the same command as %1"),
    QT_TRANSLATE_NOOP("FindingText", "it is set again before anything acts, by command %1"),
    QT_TRANSLATE_NOOP("FindingText", "the macro has no name"),
    QT_TRANSLATE_NOOP("FindingText", "there are no commands"),
    QT_TRANSLATE_NOOP("FindingText", "there is no macro with data in the file"),
    QT_TRANSLATE_NOOP("FindingText", "the file says UTF-8, but its bytes are none"),
    QT_TRANSLATE_NOOP("FindingText", "the file has bytes that are no character of Windows-1252"),
    QT_TRANSLATE_NOOP("FindingText", "the file says %1, of which only ASCII is understood"),
    QT_TRANSLATE_NOOP("FindingText", "the file is not named by its number"),
    QT_TRANSLATE_NOOP("FindingText", "%1 has the same name"),
    QT_TRANSLATE_NOOP("FindingText", "there is no command text"),
    QT_TRANSLATE_NOOP("FindingText", "the text does not decode"),
    QT_TRANSLATE_NOOP("FindingText", "the byte \"%1\" is not written in the digits 0 to 9 and a to f"),
    QT_TRANSLATE_NOOP("FindingText", "%1 parameter bytes would not be read back after a save"),
    QT_TRANSLATE_NOOP("FindingText", "the action %1 is unknown"),
    QT_TRANSLATE_NOOP("FindingText", "there is no decoding list for cd %1, co %2"),
    QT_TRANSLATE_NOOP("FindingText", "%1 has no entry in the decoding list"),
    QT_TRANSLATE_NOOP("FindingText", "%1 is beyond the limits"),
    QT_TRANSLATE_NOOP("FindingText", "%1 is no source"),
    QT_TRANSLATE_NOOP("FindingText", "%1 is no timecode of a clock with %2 frames a second"),
    QT_TRANSLATE_NOOP("FindingText", "the bytes end before %1"),
    QT_TRANSLATE_NOOP("FindingText", "the bytes end before the last parameter"),
    QT_TRANSLATE_NOOP("FindingText", "the keyword %1 is in no decoding list"),
    QT_TRANSLATE_NOOP("FindingText", "QMF1 to QMF4, or PANEL"),
    QT_TRANSLATE_NOOP("FindingText", "1 to 8"),
    QT_TRANSLATE_NOOP("FindingText", "once"),
    QT_TRANSLATE_NOOP("FindingText", "a value: the parameter is not optional"),
    QT_TRANSLATE_NOOP("FindingText", "a parameter with a value"),
    QT_TRANSLATE_NOOP("FindingText", "one of the two"),
    QT_TRANSLATE_NOOP("FindingText", "UTF-8 or Windows-1252"),
    QT_TRANSLATE_NOOP("FindingText", "an input of the site, such as %1"),
    QT_TRANSLATE_NOOP("FindingText", "one of %1"),
    QT_TRANSLATE_NOOP("FindingText", "one of %1 ..."),
    QT_TRANSLATE_NOOP("FindingText", "a whole number, %1"),
    QT_TRANSLATE_NOOP("FindingText", "a number, %1"),
    QT_TRANSLATE_NOOP("FindingText", "a packed timecode of a clock"),
    QT_TRANSLATE_NOOP("FindingText", "a packed timecode of a clock with %1 frames a second"),
    QT_TRANSLATE_NOOP("FindingText", "27 at the most"),
    QT_TRANSLATE_NOOP("FindingText", "min: %1   max: %2"),
};
static_assert(std::equal(kSayings.begin(), kSayings.end(), std::begin(kSentences), std::end(kSentences),
                         [](std::string_view a, std::string_view b) { return a == b; }));

// Values go in at once: one may hold the mark of another.
QString inWindow(const Said& said) {
  const char* const sentence = kSentences[static_cast<std::size_t>(said.saying)];
  const QString text = *sentence == '\0' ? QString() : translated(sentence);
  switch (said.values.size()) {
    case 0:
      return text;
    case 1:
      return text.arg(shown(said.values[0]));
    default:
      return text.arg(shown(said.values[0]), shown(said.values[1]));
  }
}

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
  const QString wrong = inWindow(wrongOf(finding, 1));
  return finding.parameter.empty() ? wrong : shown(finding.parameter) + QStringLiteral(": ") + wrong;
}

QString rightInWindow(const Finding& finding) {
  const QString meant = shown(finding.meant), right = inWindow(finding.right);
  if (meant.isEmpty() || right.isEmpty()) return meant + right;
  return translated(QT_TRANSLATE_NOOP("FindingText", "%1 (%2)")).arg(meant, right);
}

QString findingText(const Finding& finding) {
  const QString severity = severityText(finding.severity), right = rightInWindow(finding);
  if (right.isEmpty())
    return translated(QT_TRANSLATE_NOOP("FindingText", "%1: %2")).arg(severity, wrongInWindow(finding));
  return translated(QT_TRANSLATE_NOOP("FindingText", "%1: %2; right: %3"))
      .arg(severity, wrongInWindow(finding), right);
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
