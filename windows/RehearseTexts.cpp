#include "windows/RehearseTexts.h"

#include <QStringList>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

using Kind = ValueState::Kind;
using What = CommandEffect::What;

constexpr float kTint = 0.22F;      // of the hue; the rest is the palette's ground
constexpr float kHatchInk = 0.22F;  // of the text colour, over what is unknown
constexpr QRgb kChangedHue = 0xFFE0A000, kSameHue = 0xFF808080, kOtherThanNowHue = 0xFF2090D0;
constexpr std::size_t kMostChanges = 3;  // told of one command

// What a replay says, in its words; those that end in a blank go on with names.
constexpr const char* kReasons[] = {
    QT_TRANSLATE_NOOP("RehearseTexts", "the function is not in the dictionary"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its destination is unknown"),
    QT_TRANSLATE_NOOP("RehearseTexts", "the panel tells no value that it steps"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its value is missing"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its step is no number"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its value was no number before"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its value was none of its list before"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its text does not decode"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its action is unknown"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its last parameter holds no step"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its decoding list knows the step, not what it leads to"),
    QT_TRANSLATE_NOOP("RehearseTexts", "its bytes end before the last parameter"),
    QT_TRANSLATE_NOOP("RehearseTexts", "it gives no value"),
    QT_TRANSLATE_NOOP("RehearseTexts", "it has no step"),
};

constexpr const char* kReasonsWithNames[] = {
    QT_TRANSLATE_NOOP("RehearseTexts", "the function has no parameter "),
    QT_TRANSLATE_NOOP("RehearseTexts", "no value tells "),
    QT_TRANSLATE_NOOP("RehearseTexts", "there is no decoding list for "),
    QT_TRANSLATE_NOOP("RehearseTexts", "its decoding list has no entry for keyword "),
};

QColor tinted(const QPalette& palette, QRgb hue) {
  const QColor base = palette.color(QPalette::Active, QPalette::Base), tint = QColor::fromRgb(hue);
  const auto mix = [](float a, float b) { return kTint * a + (1 - kTint) * b; };
  return QColor::fromRgbF(mix(tint.redF(), base.redF()), mix(tint.greenF(), base.greenF()),
                          mix(tint.blueF(), base.blueF()));
}

}  // namespace

QString RehearseCell::signs() const {
  QStringList signs;
  if (change == Change::kChanged) signs << QStringLiteral("\u25CF");
  if (change == Change::kSoAlready) signs << QStringLiteral("=");
  if (kind == Kind::kUnknown) signs << QStringLiteral("?");
  if (kind == Kind::kChanged) signs << QStringLiteral("\u00B1");
  if (differsFromNow) signs << QStringLiteral("\u2260");
  return signs.join(QLatin1Char(' '));
}

QString RehearseCell::words() const {
  QStringList words;
  if (change == Change::kChanged) words << RehearseTexts::tr("changed by this command");
  if (change == Change::kSoAlready) words << RehearseTexts::tr("was so already");
  if (kind == Kind::kUnknown) words << RehearseTexts::tr("unknown");
  if (kind == Kind::kChanged) words << RehearseTexts::tr("known only by how much it has changed");
  if (differsFromNow) words << RehearseTexts::tr("not as the panel has it now");
  if (asNow) words << RehearseTexts::tr("as the panel has it now");
  return words.join(QStringLiteral(", "));
}

QBrush RehearseCell::ground(const QPalette& palette) const {
  if (change == Change::kChanged) return tinted(palette, kChangedHue);
  if (kind != Kind::kKnown) {
    QColor hatch = palette.color(QPalette::Active, QPalette::Text);
    hatch.setAlphaF(kHatchInk);
    return {hatch, Qt::BDiagPattern};
  }
  if (change == Change::kSoAlready) return tinted(palette, kSameHue);
  if (differsFromNow) return tinted(palette, kOtherThanNowHue);
  return {};
}

RehearseCell RehearseTexts::cell(const Rehearsal& rehearsal, const RehearseNow& now, int value, int step) {
  const MacroEffect& effect = rehearsal.effect();
  const ValueState& state = effect.at(value, step);
  RehearseCell cell{.kind = state.kind};
  if (const ValueChange* change = step > 0 ? rehearsal.change(value, step - 1) : nullptr)
    cell.change = change->soAlready ? RehearseCell::Change::kSoAlready : RehearseCell::Change::kChanged;
  const std::string* has = now.value(effect.values()[static_cast<std::size_t>(value)].name);
  if (has == nullptr || state.kind != Kind::kKnown) return cell;
  cell.asNow = effect.equal(value, *has, state.stored);
  cell.differsFromNow = !cell.asNow;
  return cell;
}

QString RehearseTexts::state(const MacroEffect& effect, int value, const ValueState& state) {
  switch (state.kind) {
    case Kind::kUnknown:
      return tr("unknown");
    case Kind::kKnown:
      return shown(effect.shown(value, state));
    case Kind::kChanged:
      return tr("changed by %1").arg(shown(effect.shown(value, state)));
  }
  return {};
}

QString RehearseTexts::widestState() { return tr("changed by %1").arg(QStringLiteral("+100.0%")); }

QString RehearseTexts::start(bool fromNow, const RehearseNow& now) {
  return fromNow && !now.values().empty()
             ? tr("The values are what the panel has now, as far as they have come.")
             : tr("Nothing is known of the values.");
}

QString RehearseTexts::why(const std::string& why) {
  for (const char* reason : kReasons)
    if (why == reason) return tr(reason);
  for (const char* reason : kReasonsWithNames)
    if (why.starts_with(reason))
      return tr(reason) + shown(why.substr(std::char_traits<char>::length(reason)));
  return shown(why);
}

QString RehearseTexts::done(const Rehearsal& rehearsal, int step) {
  const MacroEffect& effect = rehearsal.effect();
  const CommandEffect& told = effect.effect(step - 1);
  QStringList parts;
  const auto changes = effect.changes(step - 1);
  for (const ValueChange& change : changes.first(std::min(changes.size(), kMostChanges))) {
    const QString after = state(effect, change.value, change.after);
    const QString label = shown(effect.label(change.value));
    parts << (change.soAlready ? tr("%1 is %2 already").arg(label, after)
                               : tr("%1: %2 \u2192 %3")
                                     .arg(label, state(effect, change.value, effect.before(change)), after));
  }
  if (changes.size() > kMostChanges)
    parts << tr("and %n more", nullptr, static_cast<int>(changes.size() - kMostChanges));
  if (told.what == What::kActs) parts << tr("acts, and changes no value that could be asked for");
  if (told.what == What::kUntold)
    parts << tr("what it does cannot be told: %1").arg(why(told.why));
  else if (!told.why.empty())
    parts << why(told.why);
  return parts.join(QStringLiteral("; "));
}

QString RehearseTexts::now(const RehearseNow& now) {
  const QString came = QString::number(now.wanted() - now.missing()), all = QString::number(now.wanted());
  switch (now.state()) {
    case RehearseNow::State::kNoPanel:
      return tr("No panel is connected: what the values are now is not known.");
    case RehearseNow::State::kLost:
      return tr("The panel is gone: what the values are now is no longer known.");
    case RehearseNow::State::kAsking:
      return tr("Asking %1: %2 of %3 values have come...").arg(now.panel(), came, all);
    case RehearseNow::State::kMissing:
      return tr("%1 has told %2 of %3 values, the others have not come: they can be asked for again.")
          .arg(now.panel(), came, all);
    case RehearseNow::State::kThere:
      return now.wanted() == 0
                 ? tr("%1 tells none of these values.").arg(now.panel())
                 : tr("%1 has told all %n values.", nullptr, static_cast<int>(now.wanted())).arg(now.panel());
  }
  return {};
}

QString RehearseTexts::comparison(const Rehearsal& rehearsal, const RehearseNow& now) {
  if (now.values().empty()) return {};
  int other = 0, same = 0;
  const int values = static_cast<int>(rehearsal.effect().values().size());
  for (int value = 0; value < values; ++value) {
    const RehearseCell after = cell(rehearsal, now, value, rehearsal.effect().commandCount());
    if (after.differsFromNow) ++other;
    if (after.asNow) ++same;
  }
  return tr("After this macro: %1 not as now (\u2260), %2 as now.")
      .arg(QString::number(other), QString::number(same));
}

}  // namespace tessaly
