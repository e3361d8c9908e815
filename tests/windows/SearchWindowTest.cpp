// The search window over a site of a few macros: what is found, said and led to.
#include <QLineEdit>
#include <QProgressBar>
#include <QSignalSpy>

#include "tests/windows/ReviewFixture.h"
#include "windows/HitList.h"
#include "windows/SearchWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\m\\macroWP1\\";
constexpr const char* kOther =
    R"(<cmd fid="QMF2.ME2.KEY1.CLIP.SET" workplace="1"><param name="VALUE" value="0.5"/></cmd>)";

struct SearchWindowTest : ReviewFixture {
  SearchWindowTest() {
    site.write(std::string(kFolder) + "macro001.mac", macroOf("One", kClip + std::string(kOther)));
    site.write(std::string(kFolder) + "macro002.mac", macroOf("Two", kOther));
    site.write(std::string(kFolder) + "macro003.mac", "no macro");
    std::filesystem::create_directories(site.root.resolve("c:\\empty"));
    scopes = {{ReviewScope::Kind::kSite, "all", FolderContent{"c:\\m"}}};
    window.present();
    QApplication::setActiveWindow(&window);
  }
  QWidget& top() override { return window; }
  [[nodiscard]] std::vector<std::string> rows() {
    std::vector<std::string> rows;
    for (int i = 0; i < list.rows().rowCount(); ++i) rows.push_back(list.rows().row(i)->text);
    return rows;
  }
  void type(const char* field, const char* text) {
    auto& edit = child<QLineEdit>(field);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QLatin1String(text));
    QTest::keyClick(&edit, Qt::Key_Return);
  }
  SearchWindow window{{site.root, {dictionary(), lists}, [this] { return scopes; }, words}};
  HitList& list = child<HitList>("hits");
};

TEST_F(SearchWindowTest, GroupsByMacroTellsWhatCannotBeReadAndLeadsToTheCommand) {
  window.search("destination:Mainframe2 clip", ReviewScope::Kind::kSite);
  awaitEnd();
  EXPECT_THAT(
      rows(),
      ElementsAre(
          "001 - One (macroWP1\\macro001.mac): 1 commands",
          "    2\tMainframe2 - ME 2 Key 1 Clip Set ==> 50.0%",
          "002 - Two (macroWP1\\macro002.mac): 1 commands",
          "    1\tMainframe2 - ME 2 Key 1 Clip Set ==> 50.0%",
          "003 (macroWP1\\macro003.mac): could not be read: is not well formed: Error document empty."));
  EXPECT_EQ(said("outcome"), "2 commands in 2 macros; 3 macros looked at in all. 1 files could not be read.");
  EXPECT_EQ(shutIn(window), "; cancel progress");
  EXPECT_EQ(list.selectedRow(), 1);
  QSignalSpy wanted(&window, &SearchWindow::openWanted);
  QTest::keyClick(window.focusWidget(), Qt::Key_Down);
  QTest::keyClick(window.focusWidget(), Qt::Key_Return);
  ASSERT_EQ(wanted.count(), 1) << "a heading is no command";
  EXPECT_EQ(wanted[0][0].value<ReviewedPlace>().place.file, std::string(kFolder) + "macro002.mac");
  EXPECT_EQ(wanted[0][1].toInt(), 0);
}

TEST_F(SearchWindowTest, FieldsPutTheQueryTogetherAndAWrongOneIsToldBelowIt) {
  type("function", "ME1.KEY1");
  type("value", "VALUE=0.5");
  type("text", "a b");
  EXPECT_EQ(child<QLineEdit>("query").text(), "function:ME1.KEY1 value:VALUE=0.5 \"a b\"");
  awaitEnd();
  EXPECT_EQ(said("outcome"), "Nothing found: 3 macros looked at in all. 1 files could not be read.");
  type("query", "colour:red");
  EXPECT_THAT(said("problem"), HasSubstr("there is no field \"colour\""));
  EXPECT_EQ(child<QLineEdit>("function").text(), "");
  QTest::keyClicks(&child<QLineEdit>("text"), "a");
  EXPECT_EQ(said("problem"), "");
  for (const auto& [field, word] :
       {std::pair{"destination", "destination:1"}, {"source", "source:1"}, {"group", "group:1"}}) {
    child<QLineEdit>("text").clear();
    QTest::keyClicks(&child<QLineEdit>(field), "1");
    EXPECT_EQ(child<QLineEdit>("query").text(), word);
    QTest::keyClick(&child<QLineEdit>(field), Qt::Key_Backspace);
    EXPECT_EQ(child<QLineEdit>("query").text(), "");
    QTest::keyClick(&child<QLineEdit>(field), Qt::Key_Down);
    EXPECT_EQ(window.focusWidget(), &list);
  }
  type("query", "clip");
  EXPECT_EQ(said("problem"), "");
  awaitEnd();
  const struct {
    std::vector<ReviewScope> scopes;
    const char* outcome;
  } cases[] = {{{}, "There is nothing to be searched: choose a macro or a folder in a pane first."},
               {{{ReviewScope::Kind::kSite, "nowhere", FolderContent{"c:\\empty"}}},
                "There are no macros in nowhere."},
               {{panel<LostShelf>()}, "NOT searched: the panel (the line was lost)"}};
  for (const auto& row : cases) {
    scopes = row.scopes;
    QTest::keyClick(&window, Qt::Key_F5);
    awaitEnd();
    EXPECT_EQ(said("outcome"), row.outcome);
    EXPECT_EQ(list.rows().rowCount(), 0);
  }
  EXPECT_EQ(list.accessibleDescription(),
            "take a part of the query away, or choose other macros to search in");
}

TEST_F(SearchWindowTest, ShowsWhatItHasWhileItReadsAndCanBeCancelled) {
  for (const bool closes : {false, true}) {
    scopes = {panel<StuckShelf>()};
    type("query", "clip");
    ASSERT_TRUE(QTest::qWaitFor([this] { return list.rows().hits() == 1; }));
    EXPECT_TRUE(child<QProgressBar>("progress").isVisible());
    if (closes) return;
    click("cancel");
    awaitEnd();
    EXPECT_EQ(said("outcome"), "Cancelled. 1 commands in 1 macros; 1 macros looked at in the panel.");
    EXPECT_THAT(rows(), ElementsAre("007 - Seven (workplace 1 of 127.0.0.1): 1 commands",
                                    "    1\tMainframe1 - ME 1 Key 1 Clip Set ==> 50.0%"));
  }
}

}  // namespace
}  // namespace tessaly
