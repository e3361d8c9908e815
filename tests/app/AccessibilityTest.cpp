// What a screen reader, a pair of eyes at night and the next start get to know of the window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>

#include "app/Appearance.h"
#include "tests/app/EveryDialog.h"
#include "tests/app/TextContrast.h"
#include "widgets/ListFinder.h"
#include "windows/CompareDelegate.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

bool isControl(QAccessible::Role role) {
  switch (static_cast<int>(role)) {
    case QAccessible::PushButton:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::RadioButton:
    case QAccessible::CheckBox:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::List:
    case QAccessible::ListItem:
    case QAccessible::Table:
    case QAccessible::Tree:
    case QAccessible::MenuItem:
    case QAccessible::PageTab:
    case QAccessible::PageTabList:
      return true;
    default:
      return false;
  }
}

// Controls without a name, and widgets that take the keyboard without being a control to a screen reader.
void collectNameless(QAccessibleInterface* node, std::vector<std::string>& found) {
  if (node == nullptr || node->role() == QAccessible::ScrollBar || node->role() == QAccessible::Separator)
    return;
  QObject* object = node->object();
  const auto* widget = qobject_cast<QWidget*>(object);
  const bool viewport = widget != nullptr && widget->objectName() == QLatin1String("qt_scrollarea_viewport");
  const bool takesKeys = widget != nullptr && !widget->isWindow() && !viewport &&
                         widget->focusProxy() == nullptr && (widget->focusPolicy() & Qt::TabFocus) != 0;
  const std::string name = object != nullptr ? object->objectName().toStdString() : "row";
  const bool heading = node->role() == QAccessible::ListItem && !node->state().selectable;
  if (isControl(node->role()) && !heading && node->text(QAccessible::Name).trimmed().isEmpty())
    found.push_back(name + " has no name");
  if (takesKeys && !isControl(node->role())) found.push_back(name + " has no role");
  if (node->role() == QAccessible::ComboBox) return;  // its list is told under its own name
  constexpr int kRows = 3;                            // of a list; the others are alike
  const int children =
      node->role() == QAccessible::List ? std::min(kRows, node->childCount()) : node->childCount();
  for (int i = 0; i < children; ++i) collectNameless(node->child(i), found);
}

std::vector<std::string> nameless(QWidget& window) {
  window.show();
  QApplication::processEvents();
  std::vector<std::string> found;
  collectNameless(QAccessible::queryAccessibleInterface(&window), found);
  return found;
}

TEST(AccessibilityTest, EveryControlOfEveryWindowHasNameAndRole) {
  EveryDialog every;
  EXPECT_THAT(nameless(*every.fixture.window), IsEmpty());
  every.visit([](QDialog& dialog, const char* name) {
    EXPECT_THAT(nameless(dialog), IsEmpty()) << name;
    for (const QAbstractItemView* list : dialog.findChildren<QAbstractItemView*>())
      EXPECT_TRUE(list->focusPolicy() == Qt::NoFocus || list->window() != &dialog ||
                  list->findChild<ListFinder*>() != nullptr)
          << name << ": no Ctrl+F in " << list->objectName().toStdString();
  });
}

TEST(AppearanceTest, TextStandsOutInBothPalettes) {
  using Role = QPalette::ColorRole;
  const std::pair<Role, Role> pairs[] = {
      {QPalette::WindowText, QPalette::Window},       {QPalette::Text, QPalette::Base},
      {QPalette::Text, QPalette::AlternateBase},      {QPalette::PlaceholderText, QPalette::Base},
      {QPalette::ButtonText, QPalette::Button},       {QPalette::HighlightedText, QPalette::Highlight},
      {QPalette::ToolTipText, QPalette::ToolTipBase}, {QPalette::Link, QPalette::Base}};
  for (const PaletteChoice choice : {PaletteChoice::kLight, PaletteChoice::kDark}) {
    const QPalette palette = ownPalette(choice);
    for (const auto group : {QPalette::Active, QPalette::Inactive})
      for (const auto& [ink, ground] : pairs)
        EXPECT_GE(contrast(palette.color(group, ink), palette.color(group, ground)), 4.5)
            << paletteName(choice).toStdString() << ' ' << group << ' ' << ink << " on " << ground;
    for (const auto kind : {DiffRow::Kind::kSameMeaning, DiffRow::Kind::kChanged, DiffRow::Kind::kOnlyA,
                            DiffRow::Kind::kMovedTo})
      for (const bool marked : {false, true})
        EXPECT_GE(contrast(palette.color(QPalette::Text), compareGround(palette, kind, marked)), 4.5)
            << paletteName(choice).toStdString() << ' ' << static_cast<int>(kind) << marked;
    for (const auto where :
         {PaneSubject::Where::kDisk, PaneSubject::Where::kPanel, PaneSubject::Where::kLost})
      EXPECT_GE(contrast(headingColours(palette, where).ink, headingColours(palette, where).ground), 4.5);
    for (const Grade grade : {Grade::kDone, Grade::kNote, Grade::kWarning, Grade::kFailure})
      EXPECT_GE(contrast(gradeInk(palette, grade), palette.color(QPalette::Window)), 4.5);
    const auto disabled = [&](Role role) { return palette.color(QPalette::Disabled, role); };
    EXPECT_GE(contrast(disabled(QPalette::HighlightedText), disabled(QPalette::Highlight)), 4.5);
    EXPECT_GE(contrast(disabled(QPalette::ButtonText), disabled(QPalette::Button)), 4.5);
    EXPECT_GE(contrast(disabled(QPalette::Text), disabled(QPalette::Base)), 4.5);
    EXPECT_EQ(paletteNamed(paletteName(choice)), choice);
  }
}

TEST(PreferencesTest, TheWindowComesBackAsItWasLeft) {
  WindowFixture fixture(offlineClient());
  const QString file = QString::fromStdString((fixture.site.root.path() / "tessaly.ini").string());
  Preferences preferences(file);
  fixture.setPreferences(preferences);
  fixture.open();
  const auto splitter = [&](const char* name) {
    return fixture.window->findChild<QSplitter*>(QLatin1String(name));
  };
  fixture.window->resize(1040, 700);
  splitter("panes")->setSizes({600, 380});
  splitter("paneSplitter")->setSizes({200, 400});
  QApplication::processEvents();
  const auto sizes = splitter("panes")->sizes();
  const auto heights = splitter("paneSplitter")->sizes();
  fixture.driver->close();
  fixture.open();
  EXPECT_EQ(fixture.window->size(), QSize(1040, 700));
  EXPECT_EQ(splitter("panes")->sizes(), sizes);
  EXPECT_EQ(splitter("paneSplitter")->sizes(), heights);
  EXPECT_EQ(fixture.site.read("c:\\Programme\\RV48\\bin\\MacroFid\\Settings.dat").find("places"),
            std::string::npos)
      << "the settings file keeps its form";
}

}  // namespace
}  // namespace tessaly
