// The search window over a site of a few macros: what is found, said and led to.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "dictionary/InterfaceFile.h"
#include "tests/support/BuildPaths.h"
#include "tests/support/TestSite.h"
#include "windows/HitList.h"
#include "windows/SearchWindow.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* kFolder = "c:\\m\\macroWP1\\";
constexpr const char* kClip =
    R"(<cmd fid="QMF1.ME1.KEY1.CLIP.SET" workplace="1"><param name="VALUE" value="0.5"/></cmd>)";
constexpr const char* kOther =
    R"(<cmd fid="QMF2.ME2.KEY1.CLIP.SET" workplace="1"><param name="VALUE" value="0.5"/></cmd>)";

std::string macroOf(const char* name, const std::string& commands) {
  return "<macro name=\"" + std::string(name) + "\"><data>" + commands + "</data></macro>";
}

// A shelf whose first read waits until it is cancelled.
class StuckShelf : public MacroShelf {
 public:
  [[nodiscard]] std::string title() const override { return "workplace 1 of 127.0.0.1"; }
  [[nodiscard]] MacroPlace place(MacroNumber number) const override {
    return {{}, "127.0.0.1", 1, number.text()};
  }
  [[nodiscard]] Expected<std::vector<Held>> list() override {
    return std::vector<Held>{{*MacroNumber::of(7), "Seven"}, {*MacroNumber::of(8), "Eight"}};
  }
  [[nodiscard]] Expected<std::string> read(MacroNumber number) override {
    if (number.value() == 7) return macroOf("Seven", kClip);
    std::unique_lock lock(mutex_);
    cancelled_.wait(lock, [this] { return stop_; });
    return Failure{Failure::Kind::kCancelled, "cancelled"};
  }
  [[nodiscard]] Outcome writable() const override { return {}; }
  [[nodiscard]] ShelfWrite write(MacroNumber, std::string_view, MacroChange, const BeforeWrite&) override {
    return {};
  }
  [[nodiscard]] ShelfWrite remove(MacroNumber, const BeforeWrite&) override { return {}; }
  void cancel() override {
    const std::lock_guard guard(mutex_);
    stop_ = true;
    cancelled_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable cancelled_;
  bool stop_ = false;
};

struct SearchWindowTest : testing::Test {
  SearchWindowTest() {
    site.write(std::string(kFolder) + "macro001.mac", macroOf("One", kClip + std::string(kOther)));
    site.write(std::string(kFolder) + "macro002.mac", macroOf("Two", kOther));
    site.write(std::string(kFolder) + "macro003.mac", "no macro");
    window.present();
    QApplication::setActiveWindow(&window);
  }
  static const FunctionDictionary& dictionary() {
    static FunctionDictionary& dictionary = *new FunctionDictionary;
    if (dictionary.functionCount() == 0) loadFunctionDictionary(SiteRoot(sourcePath("site")), dictionary, {});
    return dictionary;
  }
  template <class Widget>
  [[nodiscard]] Widget& child(const char* name) {
    return *window.findChild<Widget*>(QLatin1String(name));
  }
  [[nodiscard]] std::string said(const char* label) { return child<QLabel>(label).text().toStdString(); }
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
  void awaitEnd() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return !child<QProgressBar>("progress").isVisible(); }));
  }

  TestSite site;
  DecodingLists lists{site.root};
  std::vector<ReviewScope> scopes{{ReviewScope::Kind::kSite, "all", FolderContent{"c:\\m"}}};
  SearchWindow window{{site.root,
                       {dictionary(), lists},
                       [this] { return scopes; },
                       [](const Failure& failure) { return QString::fromStdString(failure.text); }}};
  HitList& list = child<HitList>("hits");
};

TEST_F(SearchWindowTest, GroupsByMacroTellsWhatCannotBeReadAndLeadsToTheCommand) {
  window.search("destination:Mainframe2 clip", ReviewScope::Kind::kSite);
  awaitEnd();
  EXPECT_THAT(rows(), ElementsAre(AllOf(StartsWith("001 - One (macroWP1"), HasSubstr("1 command")),
                                  StartsWith("    2\tMainframe2"), StartsWith("002 - Two"),
                                  StartsWith("    1\tMainframe2"), HasSubstr("could not be read")));
  EXPECT_THAT(said("outcome"), AllOf(StartsWith("2 commands in 2 macros"), HasSubstr("1 file")));
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
  EXPECT_THAT(said("outcome"), StartsWith("Nothing found: 3 macros looked at"));
  type("query", "colour:red");
  EXPECT_THAT(said("problem"), HasSubstr("there is no field \"colour\""));
  EXPECT_EQ(child<QLineEdit>("function").text(), "");
  type("query", "clip");
  EXPECT_EQ(said("problem"), "");
}

// A panel that does not answer holds up neither the window nor its end.
TEST_F(SearchWindowTest, ShowsWhatItHasWhileItReadsAndCanBeCancelled) {
  for (const bool closes : {false, true}) {
    scopes = {
        {ReviewScope::Kind::kPanel, "panel", ShelfContent{[] { return std::make_shared<StuckShelf>(); }}}};
    type("query", "clip");
    ASSERT_TRUE(QTest::qWaitFor([this] { return list.rows().hits() == 1; }));
    EXPECT_TRUE(child<QProgressBar>("progress").isVisible());
    if (closes) return;
    QTest::mouseClick(&child<QPushButton>("cancel"), Qt::LeftButton);
    awaitEnd();
    EXPECT_THAT(said("outcome"), StartsWith("Cancelled. 1 command"));
    EXPECT_THAT(rows(), ElementsAre(HasSubstr("workplace 1 of 127.0.0.1"), HasSubstr("Clip Set")));
  }
}

}  // namespace
}  // namespace tessaly
