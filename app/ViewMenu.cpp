#include "app/ViewMenu.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QMenu>

#include "app/Appearance.h"

namespace tessaly {

namespace {

QString translated(const char* text) { return QCoreApplication::translate("ViewMenu", text); }

struct PaletteEntry {
  PaletteChoice choice;
  const char* text;
};
constexpr PaletteEntry kPalettes[] = {
    {PaletteChoice::kDesktop, QT_TRANSLATE_NOOP("ViewMenu", "Colours of the Des&ktop")},
    {PaletteChoice::kLight, QT_TRANSLATE_NOOP("ViewMenu", "&Light")},
    {PaletteChoice::kDark, QT_TRANSLATE_NOOP("ViewMenu", "&Dark, for the Night")}};

}  // namespace

void addViewMenu(QMenuBar& bar, Preferences* preferences, const std::function<void()>& switchPane) {
  QMenu* view = bar.addMenu(translated(QT_TRANSLATE_NOOP("ViewMenu", "&View")));
  QAction* other = view->addAction(translated(QT_TRANSLATE_NOOP("ViewMenu", "&Other Pane")));
  other->setShortcut(Qt::Key_F6);
  QObject::connect(other, &QAction::triggered, view, switchPane);
  view->addSeparator();
  auto* palettes = new QActionGroup(view);
  for (const PaletteEntry& entry : kPalettes) {
    QAction* action = palettes->addAction(view->addAction(translated(entry.text)));
    action->setCheckable(true);
    action->setChecked(entry.choice == currentPalette());
    QObject::connect(action, &QAction::triggered, view, [preferences, choice = entry.choice] {
      applyPalette(choice);
      if (preferences != nullptr) preferences->setPalette(paletteName(choice));
    });
  }
}

}  // namespace tessaly
