#include "app/ActFinder.h"

#include <algorithm>

#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTranslator>

#include "app/Acts.h"
#include "app/Language.h"
#include "ui_ActFinder.h"
#include "widgets/AtEach.h"

namespace tessaly {

namespace {

enum Column { kActColumn, kKeysColumn, kWhyNotColumn };
constexpr int kPlaceOfRow = Qt::UserRole;

QString plain(QString text) { return text.remove(QLatin1Char('&')); }

QStringList wordsOf(const QString& text) {
  static const QRegularExpression kBetween(QStringLiteral("[^\\w]+"),
                                           QRegularExpression::UseUnicodePropertiesOption);
  return plain(text).toLower().split(kBetween, Qt::SkipEmptyParts);
}

// What the act is called in all languages, and the other words for it.
QStringList wordsOf(const Act& act) {
  QStringList words = wordsOf(QLatin1String(act.text)) + wordsOf(QLatin1String(act.words));
  for (const QString& language : languages()) {
    QTranslator texts;
    if (!texts.load(QStringLiteral(":/i18n/tessaly_") + language)) continue;
    for (const char* text : {act.text, act.words}) words += wordsOf(texts.translate("Acts", text));
  }
  return words;
}

bool allFound(const QStringList& typed, const QStringList& words) {
  return std::ranges::all_of(typed, [&](const QString& part) {
    return std::ranges::any_of(words, [&](const QString& word) { return word.startsWith(part); });
  });
}

}  // namespace

ActFinder::ActFinder(const QMainWindow& window, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::ActFinder>()) {
  ui_->setupUi(this);
  ui_->acts->header()->setSectionResizeMode(kActColumn, QHeaderView::ResizeToContents);
  ui_->acts->header()->setSectionResizeMode(kKeysColumn, QHeaderView::ResizeToContents);
  ui_->words->installEventFilter(this);
  collect(window);
  connect(ui_->words, &QLineEdit::textChanged, this, &ActFinder::list);
  connect(ui_->words, &QLineEdit::returnPressed, this, &ActFinder::choose);
  nowAndAtEach(QEvent::PaletteChange, *this, [this] { showObstacles(); });
  connect(ui_->acts, &QTreeWidget::itemActivated, this, &ActFinder::choose);
  list({});
}

ActFinder::~ActFinder() = default;

void ActFinder::collect(const QMainWindow& window) {
  for (const QAction* const menu : window.menuBar()->actions())
    for (QAction* const action : menu->menu()->actions()) {
      if (action->isSeparator()) continue;
      Row row{action, tr("%1: %2").arg(plain(menu->text()), plain(action->text())), {}, {}};
      row.names = wordsOf(row.title);
      row.words = row.names + wordsOf(actNamed(action->objectName().toLatin1().constData()));
      rows_.push_back(std::move(row));
    }
}

// Those that are called so, then those that are meant; the first one that is possible is chosen.
void ActFinder::list(const QString& typed) {
  ui_->acts->clear();
  const QStringList parts = wordsOf(typed);
  for (const bool called : {true, false})
    for (const Row& row : rows_)
      if (allFound(parts, row.names) == called && (called || allFound(parts, row.words))) add(row);
  showObstacles();
  ui_->acts->setCurrentItem(ui_->acts->topLevelItem(0));
  for (int row = 0; row < ui_->acts->topLevelItemCount(); ++row)
    if (const QAction* const action = actionOf(*ui_->acts->topLevelItem(row)); action->isEnabled())
      return ui_->acts->setCurrentItem(ui_->acts->topLevelItem(row));
}

void ActFinder::add(const Row& row) {
  auto* item = new QTreeWidgetItem(ui_->acts);
  item->setText(kActColumn, row.title);
  item->setText(kKeysColumn, row.action->shortcut().toString(QKeySequence::NativeText));
  item->setText(kWhyNotColumn, obstacleOf(*row.action));
  item->setData(kActColumn, kPlaceOfRow, static_cast<qlonglong>(&row - rows_.data()));
}

void ActFinder::showObstacles() {
  const QBrush grey = palette().brush(QPalette::Disabled, QPalette::Text);
  for (int row = 0; row < ui_->acts->topLevelItemCount(); ++row) {
    QTreeWidgetItem& item = *ui_->acts->topLevelItem(row);
    if (actionOf(item)->isEnabled()) continue;
    for (const Column column : {kActColumn, kKeysColumn, kWhyNotColumn}) item.setForeground(column, grey);
  }
}

QAction* ActFinder::actionOf(const QTreeWidgetItem& item) const {
  return rows_[static_cast<std::size_t>(item.data(kActColumn, kPlaceOfRow).toLongLong())].action;
}

QAction* ActFinder::chosen() const {
  const QTreeWidgetItem* const item = ui_->acts->currentItem();
  return item == nullptr ? nullptr : actionOf(*item);
}

void ActFinder::choose() {
  if (const QAction* const action = chosen(); action != nullptr && action->isEnabled()) accept();
}

// The keyboard stays in the field, and the arrows move in the list.
bool ActFinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) switch (static_cast<const QKeyEvent*>(event)->key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown:
        QCoreApplication::sendEvent(ui_->acts, event);
        return true;
    }
  return QDialog::eventFilter(watched, event);
}

void findAct(QMainWindow& window) {
  ActFinder finder(window, &window);
  if (finder.exec() == QDialog::Accepted) finder.chosen()->trigger();
}

}  // namespace tessaly
