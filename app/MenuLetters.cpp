#include "app/MenuLetters.h"

#include <QKeySequence>

namespace tessaly {

namespace {

constexpr QLatin1Char kMark('&');

// A doubled mark is a character of the text.
QString withoutMark(QString text) {
  for (qsizetype at = 0; (at = text.indexOf(kMark, at)) >= 0; at += 2)
    if (at + 1 >= text.size() || text[at + 1] != kMark) return text.remove(at, 1);
  return text;
}

QString withOtherLetter(const QString& named, const QList<QKeySequence>& taken) {
  QString text = withoutMark(named);
  for (const bool first : {true, false})
    for (qsizetype at = 0; at < text.size(); ++at) {
      const bool begins = at == 0 || !text[at - 1].isLetterOrNumber();
      if (begins != first || !text[at].isLetterOrNumber()) continue;
      QString marked = QString(text).insert(at, kMark);
      if (!taken.contains(QKeySequence::mnemonic(marked))) return marked;
    }
  return text;
}

}  // namespace

void separateLetters(QStringList& texts) {
  QList<QKeySequence> taken;
  QList<qsizetype> others;
  for (qsizetype place = 0; place < texts.size(); ++place) {
    const QKeySequence letter = QKeySequence::mnemonic(texts[place]);
    if (taken.contains(letter))
      others << place;
    else if (!letter.isEmpty())
      taken << letter;
  }
  for (const qsizetype place : others) {
    texts[place] = withOtherLetter(texts[place], taken);
    taken << QKeySequence::mnemonic(texts[place]);
  }
}

}  // namespace tessaly
