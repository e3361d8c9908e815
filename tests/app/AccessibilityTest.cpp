// What a screen reader, a pair of eyes at night and the next start get to know of the window.
#include <gmock/gmock.h>
#include <set>

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QSplitter>

#include "app/Appearance.h"
#include "app/WindowPlaces.h"
#include "tests/app/EveryDialog.h"
#include "tests/app/TextContrast.h"
#include "widgets/ListFinder.h"
#include "windows/CompareDelegate.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

bool isControl(QAccessible::Role role) {
  using enum QAccessible::Role;
  static const std::set<int> controls{
      PushButton, ButtonMenu, ButtonDropDown, RadioButton, CheckBox, ComboBox, EditableText, SpinBox,
      Slider,     List,       ListItem,       Table,       Tree,     MenuItem, PageTab,      PageTabList};
  return controls.contains(role);
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
  using enum QPalette::ColorRole;
  for (const PaletteChoice choice : {PaletteChoice::kLight, PaletteChoice::kDark}) {
    const QPalette palette = ownPalette(choice);
    const QColor text = palette.color(Text);
    std::vector<std::pair<QColor, QColor>> drawn;
    for (const auto kind : {DiffRow::Kind::kSameMeaning, DiffRow::Kind::kChanged, DiffRow::Kind::kOnlyA,
                            DiffRow::Kind::kMovedTo})
      for (const bool marked : {false, true}) drawn.emplace_back(text, compareGround(palette, kind, marked));
    for (const auto where :
         {PaneSubject::Where::kDisk, PaneSubject::Where::kPanel, PaneSubject::Where::kLost})
      drawn.emplace_back(headingColours(palette, where).ink, headingColours(palette, where).ground);
    for (const Grade grade : {Grade::kDone, Grade::kNote, Grade::kWarning, Grade::kFailure})
      drawn.emplace_back(gradeInk(palette, grade), palette.color(Window));
    for (const auto& [ink, ground] : drawn)
      EXPECT_GE(contrast(ink, ground), 4.5)
          << paletteName(choice).toStdString() << ' ' << ink.name().toStdString() << " on "
          << ground.name().toStdString();
    EXPECT_EQ(paletteNamed(paletteName(choice)), choice);
  }
}

class PreferencesTest : public WindowTest {};

// Catches a pane that opens elsewhere than it was left, and a panel that is connected by a start.
TEST_F(PreferencesTest, TheWindowComesBackAsItWasLeft) {
  Preferences preferences(QString::fromStdString((fixture_.site.root.path() / "tessaly.ini").string()));
  fixture_.setPreferences(preferences);
  const WindowPlaces places(preferences);
  fixture_.open();
  const auto sizes = [this](const char* name) {
    return fixture_.window->findChild<QSplitter*>(QLatin1String(name))->sizes();
  };
  fixture_.window->resize(1040, 700);
  fixture_.window->findChild<QSplitter*>("panes")->setSizes({600, 380});
  fixture_.window->findChild<QSplitter*>("paneSplitter")->setSizes({200, 400});
  QApplication::processEvents();
  const auto panes = sizes("panes"), heights = sizes("paneSplitter");
  open(a_, "002");
  const auto lines = driver().texts(a_.commands);
  driver().press(b_.panel);
  action("rehearse").trigger();
  fixture_.driver->close();
  EXPECT_FALSE(preferences.place("RehearseWindow").isEmpty()) << "it was open to the end";
  fixture_.open();
  EXPECT_EQ(fixture_.window->size(), QSize(1040, 700));
  EXPECT_EQ(sizes("panes"), panes);
  EXPECT_EQ(sizes("paneSplitter"), heights);
  EXPECT_EQ(driver().texts(a_.commands), lines);
  EXPECT_TRUE(driver().control<QAbstractButton>(b_.panel).isChecked());
  EXPECT_EQ(driver().control<QPushButton>(b_.connectButton).text(), "connect");
  EXPECT_THAT(read(kSettingsFile), testing::Not(testing::HasSubstr("places"))) << "it keeps its form";
}

}  // namespace
}  // namespace tessaly
