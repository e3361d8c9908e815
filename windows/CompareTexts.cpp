#include "windows/CompareTexts.h"

#include <algorithm>

#include <QCoreApplication>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

using Kind = DiffRow::Kind;
using What = CommandChange::What;

class Texts {
  Q_DECLARE_TR_FUNCTIONS(CompareTexts)

 public:
  static QString onlyIn(const QString& name) { return tr("only in %1").arg(name); }
  static QString movedTo(int number) { return tr("moved to %1").arg(number); }
  static QString movedFrom(int number) { return tr("moved from %1").arg(number); }
  static QString changed() { return tr("changed"); }
  static QString otherSpelling() { return tr("other spelling"); }
  static QString unknownParts() { return tr("unknown parts"); }

  static QString what(const CommandChange& change) {
    switch (change.what) {
      case What::kDestination:
        return tr("destination");
      case What::kFunction:
        return tr("function");
      case What::kWorkplace:
        return tr("workplace");
      case What::kGroup:
        return tr("group");
      case What::kModule:
        return tr("module");
      case What::kWidget:
        return tr("widget");
      case What::kParameter:
        return shown(change.name);
      case What::kOrder:
        return tr("order of the parameters");
      case What::kUnread:
        return tr("what the program does not know of");
    }
    return {};
  }

  static QString value(const std::optional<std::string>& text) {
    return text ? quoted(*text) : tr("none", "value");
  }

  static QString line(const CommandChange& change) {
    if (change.what == What::kOrder) return what(change);
    const QString line = QStringLiteral("%1: %2 | %3").arg(what(change), value(change.a), value(change.b));
    return change.sameInUnit ? tr("%1 (the same value)").arg(line) : line;
  }

  static QStringList notes(const MacroDiff& diff) {
    QStringList notes;
    if (diff.nameDiffers())
      notes << tr("The names differ: %1 | %2.").arg(value(diff.a().name()), value(diff.b().name()));
    if (diff.surroundingsDiffer())
      notes << tr("Comments, attributes or something else beside the commands differ.");
    if (diff.onlyLayoutDiffers())
      notes << tr("Only the layout differs: white space, quotes, references or the encoding.");
    if (!diff.minimal()) notes << tr("The macros are so unlike that there may be a shorter way to tell it.");
    return notes;
  }

  static QString counts(const MacroDiff& diff, const QString& a, const QString& b) {
    if (diff.identical()) return tr("No difference: both hold the same bytes.");
    const DiffCounts& counts = diff.counts();
    const auto of = [](std::size_t count) { return QString::number(count); };
    const std::pair<std::size_t, QString> parts[] = {
        {counts.changed, tr("%1 changed").arg(of(counts.changed))},
        {counts.onlyA, tr("%1 only in %2").arg(of(counts.onlyA), a)},
        {counts.onlyB, tr("%1 only in %2").arg(of(counts.onlyB), b)},
        {counts.moved, tr("%1 moved").arg(of(counts.moved))},
        {counts.sameMeaning, tr("%1 of the same meaning, written differently").arg(of(counts.sameMeaning))},
        {counts.same, tr("%1 alike").arg(of(counts.same))}};
    QStringList told;
    for (const auto& [count, text] : parts)
      if (count > 0) told << text;
    return told.isEmpty() ? tr("No commands in either.") : told.join(QStringLiteral(", "));
  }
};

}  // namespace

QString CompareTexts::sign(const MacroDiff& diff, const DiffRow& row) const {
  switch (row.kind) {
    case Kind::kSame:
      return {};
    case Kind::kSameMeaning: {
      const auto changes = diff.changes(row);
      const bool spelt = std::any_of(changes.begin(), changes.end(),
                                     [](const CommandChange& change) { return change.sameInUnit; });
      return spelt ? Texts::otherSpelling() : Texts::unknownParts();
    }
    case Kind::kChanged:
      return Texts::changed();
    case Kind::kOnlyA:
      return Texts::onlyIn(name(Side::kA));
    case Kind::kOnlyB:
      return Texts::onlyIn(name(Side::kB));
    case Kind::kMovedFrom:
      return Texts::movedTo(row.b + 1);
    case Kind::kMovedTo:
      return Texts::movedFrom(row.a + 1);
  }
  return {};
}

QStringList CompareTexts::longestSigns(const MacroDiff& diff) const {
  const auto most = static_cast<int>(std::max(diff.a().commands().size(), diff.b().commands().size()));
  return {Texts::changed(),
          Texts::otherSpelling(),
          Texts::unknownParts(),
          Texts::onlyIn(name(Side::kA)),
          Texts::onlyIn(name(Side::kB)),
          Texts::movedTo(most),
          Texts::movedFrom(most)};
}

QStringList CompareTexts::changes(const MacroDiff& diff, const DiffRow& row) {
  QStringList lines;
  for (const CommandChange& change : diff.changes(row)) lines << Texts::line(change);
  return lines;
}

QString CompareTexts::counts(const MacroDiff& diff) const {
  return Texts::counts(diff, name(Side::kA), name(Side::kB));
}

QStringList CompareTexts::notes(const MacroDiff& diff) { return Texts::notes(diff); }

}  // namespace tessaly
