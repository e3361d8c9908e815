#include "app/WindowPlaces.h"

#include <QApplication>
#include <QEvent>
#include <QHeaderView>
#include <QSplitter>

#include "widgets/ListBox.h"

namespace tessaly {

namespace {

constexpr const char* kRestored = "placeRestored";
constexpr const char* kOurs = "tessaly::";
constexpr const char* kPanelSource = "panel";
constexpr int kNumberLength = 3;  // of a macro, in front of its name, which may be another one by now

// Windows of ours but the main one, which is no dialog and keeps its own places.
QString kindOf(const QWidget& window) {
  const QString kind = QLatin1String(window.metaObject()->className());
  const bool ours = window.isWindow() && kind.startsWith(QLatin1String(kOurs));
  return ours && kind != QLatin1String("tessaly::MainWindow") ? kind.mid(qstrlen(kOurs)) : QString();
}

// Columns of another number are another place.
QString placeOf(const QString& kind, const QHeaderView& header) {
  return QStringLiteral("%1-%2-%3").arg(kind, header.parent()->objectName()).arg(header.count());
}

// Rows, and columns that nobody can drag, are as many as a macro has commands: there would be a place for
// each number.
bool isKept(const QHeaderView& header) {
  return header.orientation() == Qt::Horizontal && header.count() > 0 &&
         header.sectionResizeMode(0) != QHeaderView::Fixed;
}

QString placeOf(const QString& kind, const QSplitter& splitter) {
  return kind + QLatin1Char('-') + splitter.objectName();
}

bool isKept(const QSplitter& /*splitter*/) { return true; }

template <class Part>
void restoreParts(const QWidget& window, const Preferences& preferences, const QString& kind) {
  for (Part* part : window.findChildren<Part*>())
    if (isKept(*part)) part->restoreState(preferences.place(placeOf(kind, *part)));
}

template <class Part>
void keepParts(const QWidget& window, Preferences& preferences, const QString& kind) {
  for (const Part* part : window.findChildren<Part*>())
    if (isKept(*part)) preferences.setPlace(placeOf(kind, *part), part->saveState());
}

std::array<ListBox*, 4> listsOf(MacroPane& pane) {
  return {&pane.applications(), &pane.controlPanels(), &pane.workplaces(), &pane.macros()};
}

QString placeOf(const MacroPane& pane) {
  return QString(QLatin1Char(pane.descriptor().letter)) + QLatin1String("-last");
}

int rowOf(ListBox& list, const QByteArray& text) {
  const std::vector<ListRow>& rows = list.rows().rows();
  for (std::size_t row = 0; row < rows.size(); ++row)
    if (rows[row].text == text.toStdString()) return static_cast<int>(row);
  return -1;
}

}  // namespace

WindowPlaces::WindowPlaces(Preferences& preferences) : preferences_(preferences) {
  qApp->installEventFilter(this);
}

bool WindowPlaces::eventFilter(QObject* watched, QEvent* event) {
  const bool shows = event->type() == QEvent::Show;
  if ((!shows && event->type() != QEvent::Hide) || event->spontaneous() || !watched->isWidgetType())
    return false;
  auto& window = static_cast<QWidget&>(*watched);
  if (kindOf(window).isEmpty()) return false;
  if (!shows)
    keep(window);
  else if (!window.property(kRestored).toBool())
    restore(window);
  return false;
}

void WindowPlaces::restore(QWidget& window) const {
  const QString kind = kindOf(window);
  window.setProperty(kRestored, true);
  window.restoreGeometry(preferences_.place(kind));
  restoreParts<QSplitter>(window, preferences_, kind);
  restoreParts<QHeaderView>(window, preferences_, kind);
}

void WindowPlaces::keep(QWidget& window) {
  const QString kind = kindOf(window);
  preferences_.setPlace(kind, window.saveGeometry());
  keepParts<QSplitter>(window, preferences_, kind);
  keepParts<QHeaderView>(window, preferences_, kind);
}

void keepPane(Preferences& preferences, MacroPane& pane, PaneSource source) {
  QByteArrayList lines;
  for (ListBox* const list : listsOf(pane)) {
    const ListRow* const row = list->selected();
    lines << (row == nullptr ? QByteArray() : QByteArray::fromStdString(row->text).replace('\n', ' '));
  }
  lines.last().truncate(kNumberLength);
  preferences.setPlace(placeOf(pane),
                       source == PaneSource::kPanel ? QByteArray(kPanelSource) : lines.join('\n'));
}

void restorePane(const Preferences& preferences, MacroPane& pane) {
  const QByteArray kept = preferences.place(placeOf(pane));
  if (kept == kPanelSource) {
    emit pane.sourceChosen(PaneSource::kPanel);
    return;
  }
  const QByteArrayList lines = kept.split('\n');
  const auto lists = listsOf(pane);
  if (lines.size() != static_cast<qsizetype>(lists.size())) return;
  for (std::size_t at = 0; at < lists.size(); ++at) {
    ListBox& list = *lists[at];
    const QByteArray& text = lines[static_cast<qsizetype>(at)];
    const int row = &list == &pane.macros() && !text.isEmpty() ? list.rows().rowOfNumber(text.toInt())
                                                               : rowOf(list, text);
    if (row < 0 || !list.isEnabled()) return;
    if (row == list.selectedRow()) continue;  // the only one there, chosen already
    list.selectRow(row);
    emit list.chosen(row);
  }
}

}  // namespace tessaly
