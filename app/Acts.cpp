#include "app/Acts.h"

#include <utility>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QMenu>

#include "app/MenuLetters.h"

namespace tessaly {

namespace {

constexpr const char* kObstacle = "obstacle";

// The letters of those without a key are all keys of the panes or of other menus.
constexpr const char* kTitles[] = {
    QT_TRANSLATE_NOOP("ActMenu", "Ma&cro"),   QT_TRANSLATE_NOOP("ActMenu", "Edit"),
    QT_TRANSLATE_NOOP("ActMenu", "Comp&are"), QT_TRANSLATE_NOOP("ActMenu", "Review"),
    QT_TRANSLATE_NOOP("ActMenu", "Panel"),    QT_TRANSLATE_NOOP("ActMenu", "&View"),
    QT_TRANSLATE_NOOP("ActMenu", "Site"),     QT_TRANSLATE_NOOP("ActMenu", "&Help")};

bool possible(const QObject& control) {
  if (const auto* action = qobject_cast<const QAction*>(&control)) return action->isEnabled();
  const auto& button = static_cast<const QAbstractButton&>(control);
  return button.isEnabled() && !button.isHidden();
}

}  // namespace

QString actText(const char* text) { return QCoreApplication::translate("Acts", text); }

QString textInMenu(QString text) { return text.replace(QLatin1Char('&'), QLatin1String("&&")); }

QString obstacleOf(const QAction& action) { return action.property(kObstacle).toString(); }

Acts::Acts(const ActHands& hands, QMenuBar& bar) : hands_(hands) {
  entries_.reserve(acts().size());
  QMenu* menu = nullptr;
  int shown = -1;
  for (const Act& act : acts()) {
    if (const int place = static_cast<int>(act.menu); place != shown) {
      menu = bar.addMenu(QCoreApplication::translate("ActMenu", kTitles[shown = place]));
      menu->setToolTipsVisible(true);
    }
    add(act, *menu);
  }
}

void Acts::add(const Act& act, QMenu& menu) {
  if (act.begins) menu.addSeparator();
  const QString text = actText(act.text);
  auto* action = menu.addAction(text);
  action->setObjectName(QLatin1String(act.name));
  action->setShortcut(act.keys);
  // The pane answers to its keys itself; the menu only tells them.
  if (act.keysOf == ActKeys::kPane) action->setShortcutContext(Qt::WidgetShortcut);
  Entry entry{&act, action, {}, text, {}};
  if (act.run == nullptr)
    for (const Pane pane : kPanes)
      entry.controls[index(pane)] = hands_.view(pane).findChild<QObject*>(QLatin1String(act.name));
  const auto* button = qobject_cast<QAbstractButton*>(entry.controls.front());
  action->setCheckable(act.checked != nullptr || (button != nullptr && button->isCheckable()));
  entries_.push_back(entry);
  connect(action, &QAction::triggered, this, [this, place = entries_.size() - 1] { run(entries_[place]); });
}

void Acts::run(const Entry& entry) {
  QObject* const control = entry.controls[index(pane_)];
  if (entry.act->run != nullptr)
    entry.act->run(hands_, pane_);
  else if (auto* action = qobject_cast<QAction*>(control))
    action->trigger();
  else
    static_cast<QAbstractButton*>(control)->click();
  showChecked();  // the toolkit has turned the mark, whatever became of it
}

void Acts::show(Pane pane, const ActSituation& now) {
  pane_ = pane;
  for (const Entry& entry : entries_) showEntry(entry, now);
  for (std::size_t first = 0, end = 0; first < entries_.size(); first = end) end = showTexts(first, now);
  showChecked();
}

// Of the menu that begins at `first`; where it ends. The letters are given anew when a text has changed.
std::size_t Acts::showTexts(std::size_t first, const ActSituation& now) {
  bool same = true;
  std::size_t end = first;
  for (; end < entries_.size() && entries_[end].act->menu == entries_[first].act->menu; ++end) {
    Entry& entry = entries_[end];
    QString text = entry.act->called != nullptr ? entry.act->called(now) : QString();
    if (text.isEmpty()) text = entry.text;
    if (text == entry.shown) continue;
    entry.shown = std::move(text);
    same = false;
  }
  if (same) return end;
  QStringList texts;
  for (std::size_t place = first; place < end; ++place) texts << entries_[place].shown;
  separateLetters(texts);
  for (const QString& text : texts) entries_[first++].action->setText(text);
  return end;
}

void Acts::showEntry(const Entry& entry, const ActSituation& now) {
  const Act& act = *entry.act;
  const QObject* const control = entry.controls[index(pane_)];
  QString obstacle = obstacleTo(act.needs, now);
  if (obstacle.isEmpty() && control != nullptr && !possible(*control))
    obstacle = actText(QT_TRANSLATE_NOOP("Acts", "it is not possible in this pane now"));
  entry.action->setEnabled(obstacle.isEmpty());
  entry.action->setToolTip(obstacle);
  entry.action->setProperty(kObstacle, obstacle);
}

void Acts::showChecked() {
  for (const Entry& entry : entries_)
    if (entry.act->checked != nullptr)
      entry.action->setChecked(entry.act->checked(hands_, pane_));
    else if (entry.action->isCheckable())
      entry.action->setChecked(
          static_cast<const QAbstractButton*>(entry.controls[index(pane_)])->isChecked());
}

}  // namespace tessaly
