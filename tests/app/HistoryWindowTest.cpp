// What the window overwrites or deletes can be had back.
#include <gmock/gmock.h>

#include <QLabel>
#include <QTreeView>

#include "app/HistoryDialog.h"
#include "tests/app/PanelWindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kTwo = R"(<macro name="Two%5"><data><cmd fid="A.B"/><cmd fid="A.C"/></data></macro>)";

class HistoryWindowTest : public PanelWindowTest {
 protected:
  HistoryWindowTest() {
    first_.tree.write(Panel::file(1, "007"), kTwo);
    first_.simulator.reload();
    driver().choose(a_.applications, "Evening News");
  }
  void connectB() {
    connectPane(Pane::kB, first_);
    chooseWorkplace(Pane::kB, 1, "007 - Two%5");
    driver().choose(b_.macros, "007");
  }
  void edit(const PaneDescriptor::ControlIds& ids) {
    removeFirst(ids);
    driver().press(ids.saveChanges);
  }
  void inHistory(const std::function<void(QDialog&)>& work) {
    WindowDriver::answerNext([work](QDialog& dialog) {
      work(dialog);
      dialog.reject();
    });
    action("history").trigger();
  }
  void keep(const char* bytes) {
    ASSERT_TRUE(fixture_.history.keep(bytes, {macroPath(1), {}, 0, {}}, MacroChange::kSave));
  }
  static void putBack(QDialog& dialog) { WindowDriver::click(dialog, "Put Back"); }
};

TEST_F(HistoryWindowTest, AListThatIsNotWholeSaysWhyAndNeverThatThereIsNothing) {
  HistoryDialog dialog([](const KeptMacro&) { return HistoryPreview(); });
  const auto* const outcome = dialog.findChild<QLabel*>("outcome");
  for (const char* why : {"unreadable", ""}) {
    dialog.setMacros({}, QLatin1String(why));
    EXPECT_EQ(outcome->text().startsWith("Nothing has been"), *why == 0);
    EXPECT_TRUE(*why == 0 || outcome->text() == QLatin1String(why));
  }
}

TEST_F(HistoryWindowTest, AMacroIsPutBackFromTheDialog) {
  const std::string file = macroPath(1);
  const std::string original = read(file);
  inHistory([](QDialog& dialog) {
    EXPECT_THAT(dialog.findChild<QLabel*>("outcome")->text().toStdString(), HasSubstr("Nothing has been"));
    EXPECT_FALSE(dialog.findChild<QAbstractButton*>("putBack")->isEnabled());
  });
  driver().choose(a_.macros, "001");
  const std::vector<std::string> lines = driver().texts(a_.commands);
  edit(a_);
  connectB();
  edit(b_);
  for (const KeptMacro& macro : fixture_.history.list()) EXPECT_EQ(macro.change, MacroChange::kSave);
  driver().choose(a_.macros, "001");
  asked();
  inHistory([&](QDialog& dialog) {
    auto* list = dialog.findChild<QTreeView*>("macros");
    EXPECT_EQ(list->model()->rowCount(), 2);
    for (const bool sends : {false, true}) {
      fixture_.site.messages.answering = [sends](const std::string& text) {
        return sends || text.find("Two%5 has 4 errors") == std::string::npos;
      };
      putBack(dialog);
      EXPECT_EQ(first_.read(1, "007") == kTwo, sends) << "errors are told before every send";
    }
    WindowDriver::type(dialog, "filter", QStringLiteral("evening"));
    ASSERT_EQ(list->model()->rowCount(), 1);
    std::vector<std::string> preview;
    for (const auto& row : dialog.findChild<ListBox*>("commands")->rows().rows()) preview.push_back(row.text);
    EXPECT_EQ(preview, lines);
    putBack(dialog);
    WindowDriver::type(dialog, "filter", QStringLiteral("nowhere"));
    EXPECT_EQ(list->model()->rowCount(), 0);
  });
  EXPECT_EQ(read(file), original);
  EXPECT_EQ(fixture_.history.list().size(), 4U) << "what was put back over can be had back, too";
  const std::vector<std::string> questions = asked();
  ASSERT_EQ(questions.size(), 5U);
  EXPECT_THAT(questions[0], testing::StartsWith("Put back \"Two%5\" of "));
  EXPECT_THAT(questions[0], HasSubstr("macro 007 of workplace 1 on the panel " + addressOf(first_)));
  EXPECT_THAT(questions[4], HasSubstr("It overwrites \""));
  EXPECT_THAT(told(), testing::StartsWith("written: "));
  EXPECT_EQ(driver().texts(a_.commands), lines) << "a pane shows what its macro holds";
}

TEST_F(HistoryWindowTest, OnlyWhatCanBeReadIsPutBackAndAFilterKeepsTheChoice) {
  for (const char* bytes :
       {"", R"(<macro name="Good"><data/></macro>)", R"(<macro name="New"><data/></macro>)"})
    keep(bytes);
  inHistory([](QDialog& dialog) {
    auto* list = dialog.findChild<QTreeView*>("macros");
    auto* putBack = dialog.findChild<QAbstractButton*>("putBack");
    const auto clickRow = [list](int row) {
      QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                        list->visualRect(list->model()->index(row, 0)).center());
    };
    clickRow(2);
    EXPECT_FALSE(putBack->isEnabled()) << "a broken transfer has left no bytes";
    clickRow(1);
    EXPECT_TRUE(putBack->isEnabled());
    for (const char* filter : {"macro", "Good", ""}) {
      WindowDriver::type(dialog, "filter", QLatin1String(filter));
      EXPECT_EQ(list->currentIndex().siblingAtColumn(2).data().toString(), QStringLiteral("Good")) << filter;
    }
  });
}

TEST_F(HistoryWindowTest, AVersionIsSavedWhereAPersonSaysUnlessAPaneHasUnsavedChangesOfIt) {
  fixture_.site.write("c:\\BACKUP.MAC", "another file");
  keep(kTwo);
  const auto saveAs = [this](Qt::Key way, const std::function<void(QDialog&)>& answer) {
    inHistory([&](QDialog& dialog) {
      QTimer::singleShot(0, &dialog, [&] {
        WindowDriver::answerNext(answer);
        takeFromMenu(way);
      });
      WindowDriver::click(dialog, "Save As...");
    });
  };
  const std::string root = (fixture_.site.root.path() / "c").string(), before = read(macroPath(1));
  saveAs(Qt::Key_Up, [&](QDialog& choice) { nameFile(choice, root + "/backup"); });  // the last one
  EXPECT_EQ(read(root + "/backup.mac"), kTwo);
  EXPECT_EQ(read(root + "/BACKUP.MAC"), "another file");
  driver().choose(a_.macros, "001");
  removeFirst(a_);
  open(b_, "002");
  fixture_.site.messages.answer = false;
  const auto over = [&](QDialog& choice) {
    WindowDriver::answerNext([](QDialog& question) { WindowDriver::click(question, "Yes"); });
    nameFile(choice, fixture_.site.root.resolve(macroPath(1)).string());
  };
  const auto saveShown = [&](const PaneDescriptor::ControlIds& pane) {
    driver().clickRow(pane.commands, 0);
    action("saveAs").trigger();
    WindowDriver::answerNext(over);
    takeFromMenu(Qt::Key_Up);
  };
  saveAs(Qt::Key_Down, filledIn({{"position", "1"}}));
  saveAs(Qt::Key_Up, over);
  saveShown(b_);
  const auto unsaved = HasSubstr("A shows this macro with unsaved changes");
  EXPECT_THAT(asked(), testing::ElementsAre(unsaved, unsaved, unsaved));
  EXPECT_EQ(read(macroPath(1)), before);
  saveShown(a_);
  EXPECT_EQ(read(macroPath(1)), held(Pane::kA)) << "unasked: they are its own";
}

// By each that overwrites or deletes; the user says no.
TEST_F(HistoryWindowTest, WhatCannotBeKeptIsNeitherDeletedNorOverwrittenUnasked) {
  connectB();
  const std::string file = macroPath(1), before = read(file);
  keep(kTwo);
  // The day of today is in the way; what was kept stays to be had from another one.
  const std::filesystem::path history = fixture_.site.root.path() / "history";
  for (const auto& day : std::filesystem::directory_iterator(history))
    if (day.is_directory()) {
      const std::filesystem::path today = day.path();
      std::filesystem::rename(today, history / "2020-01-01");
      fixture_.site.write("history\\" + today.filename().string(), "in the way");
      break;
    }
  const std::pair<std::function<void()>, const char*> overwrites[] = {
      {[&] { create(a_.createMacro, 1); }, "001"},
      {[&] { driver().choose(a_.macros, "001"), copyTo(b_.copyMacro, 7); }, "007"},
      {[&] { driver().press(b_.deleteMacro); }, "007"},
      {[&] { inHistory(&putBack); }, "001"}};
  for (const auto& [overwrite, number] : overwrites) {
    fixture_.site.messages.answering = [](const std::string& text) {
      return text.find("could not keep") == std::string::npos;
    };
    asked();
    overwrite();
    const std::vector<std::string> questions = asked();
    ASSERT_FALSE(questions.empty()) << &overwrite - &overwrites->first;
    EXPECT_THAT(questions.back(), testing::AllOf(HasSubstr("could not keep"), HasSubstr(number)));
  }
  EXPECT_EQ(read(file), before);
  EXPECT_EQ(first_.read(1, "007"), kTwo);
}

}  // namespace
}  // namespace tessaly
