#include "app/PlaceText.h"

#include <QCoreApplication>
#include <QStringList>

#include "app/PaneState.h"
#include "platform/Text.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

const QString kWorkplaceFolder = QStringLiteral("macroWP");
const QString kKeyFolder = QStringLiteral("upk");

class PlaceText {
  Q_DECLARE_TR_FUNCTIONS(PlaceText)

 public:
  static QString onPanel(int workplace, const QString& address) {
    return tr("workplace %1 on %2").arg(QString::number(workplace), address);
  }
  // Of a file or a folder with a "\" or "/" at its end.
  static QString onDisk(const std::string& file) {
    QString folder = shown(file.substr(0, file.size() - fileNameOf(file).size()));
    QStringList parts = QString(folder).replace(QLatin1Char('\\'), QLatin1Char('/')).split(QLatin1Char('/'));
    parts.removeAll(QString());
    if (parts.size() < 3) return folder;
    const QString last = parts.takeLast();
    const QString panel = parts.takeLast();
    const QString whole = parts.last() + QLatin1Char('/') + panel;
    if (last.compare(kKeyFolder, Qt::CaseInsensitive) == 0) return tr("%1, key files").arg(whole);
    if (last.startsWith(kWorkplaceFolder, Qt::CaseInsensitive))
      return tr("%1, workplace %2").arg(whole, last.mid(kWorkplaceFolder.size()));
    return folder;
  }
  static QString inPane(QChar letter, const QString& number, const QString& place) {
    return number.isEmpty() ? tr("pane %1").arg(letter) : tr("pane %1, %2 of %3").arg(letter, number, place);
  }
};

}  // namespace

QString placeInWindow(const MacroPlace& place) {
  return place.file.empty() ? PlaceText::onPanel(place.workplace, shown(place.address.text()))
                            : PlaceText::onDisk(place.file);
}

QString placeInWindow(const PaneState& pane) {
  const std::optional<MacroTarget>& target = pane.copy.target();
  return PlaceText::inPane(QLatin1Char(pane.descriptor.letter),
                           target ? shown(target->numberText) : QString(),
                           target ? placeInWindow(*target) : QString());
}

}  // namespace tessaly
