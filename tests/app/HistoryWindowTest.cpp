// What the window overwrites or deletes can be had back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <QTreeView>

#include "model/MacroFile.h"
#include "panelsim/PanelSimulator.h"
#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

constexpr const char* kFolder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
constexpr const char* kTwo = R"(<macro name="Two%5"><data><cmd fid="A.B"/><cmd fid="A.C"/></data></macro>)";

class HistoryWindowTest : public testing::Test {
 protected:
  HistoryWindowTest() : panel_(options(tree_.root.path().string()), [](const std::string&) {}) {
    tree_.write(kRemote, kTwo);
    std::string reason;
    if (!panel_.start(reason)) throw std::runtime_error(reason);
    fixture_ = std::make_unique<WindowFixture>(client(), panel_.ftpPort());
    driver().choose(a_.applications, "Evening News");
  }
  ~HistoryWindowTest() override {
    fixture_->window.reset();
    client().disconnect();
  }
  static PanelOptions options(const std::string& root) {
    PanelOptions options;
    options.root = root;
    options.controlPort = 0;
    options.ftpPort = 0;
    return options;
  }
  static PanelClient& client() {
    static auto* client = new PanelClient;
    return *client;
  }

  [[nodiscard]] WindowDriver& driver() { return *fixture_->driver; }
  [[nodiscard]] std::vector<KeptMacro> kept() { return fixture_->history.list(); }
  [[nodiscard]] std::string read(const std::string& path) { return fixture_->site.read(path); }
  void connectB() {
    driver().press(b_.panel);
    auto& edit = driver().control<QLineEdit>(b_.address);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit,
                     QString::fromStdString(panel_.address() + ":" + std::to_string(panel_.controlPort())));
    driver().press(b_.connectButton);
    await(b_.workplaces, "Workplace 1");
    driver().choose(b_.workplaces, "Workplace 1");
    await(b_.macros, "007 - Two%5");
    driver().choose(b_.macros, "007");
  }
  void await(int listId, const std::string& text) {
    WindowDriver::waitFor(
        [&] {
          const auto rows = driver().texts(listId);
          return std::find(rows.begin(), rows.end(), text) != rows.end();
        },
        text.c_str());
  }
  static std::function<void(QDialog&)> numbered(int number, const char* name = nullptr) {
    return [number, name](QDialog& dialog) {
      WindowDriver::type(dialog, "position", QString::number(number));
      if (name != nullptr) WindowDriver::type(dialog, "name", QLatin1String(name));
      WindowDriver::click(dialog, QStringLiteral("OK"));
    };
  }
  void edit(const PaneDescriptor::ControlIds& ids) {
    driver().clickRow(ids.commands, 0);
    driver().press(ids.deleteCommand);
    driver().press(ids.saveChanges);
  }
  void inHistory(const std::function<void(QDialog&)>& work) {
    WindowDriver::answerNext([work](QDialog& dialog) {
      work(dialog);
      dialog.reject();
    });
    for (QAction* menu : fixture_->window->menuBar()->actions())
      for (QAction* action : menu->menu()->actions())
        if (action->text() == QStringLiteral("&History...")) action->trigger();
  }

  static constexpr const char* kRemote = "flash/data/PANEL/macro/workplace1/macro007.mac";
  TestSite tree_;
  PanelSimulator panel_;
  std::unique_ptr<WindowFixture> fixture_;
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const PaneDescriptor::ControlIds& b_ = WindowFixture::ids(Pane::kB);
};

TEST_F(HistoryWindowTest, EveryOperationKeepsWhatWasThere) {
  const std::string onDisk = macroFile(kFolder, 1);
  connectB();
  struct Case {
    MacroChange change;
    std::string file;  // on disk; empty for the panel's
    std::function<void()> work;
  };
  const Case cases[] = {
      {MacroChange::kSave, onDisk, [&] { edit(a_); }},
      {MacroChange::kSave, "", [&] { edit(b_); }},
      {MacroChange::kCopy, onDisk, [&] { driver().press(a_.copyMacro, numbered(1)); }},
      {MacroChange::kCopy, "",
       [&] {
         driver().choose(a_.macros, "002");
         driver().press(b_.copyMacro, numbered(7));
       }},
      {MacroChange::kCreate, onDisk, [&] { driver().press(a_.createMacro, numbered(1, "Fresh")); }},
      {MacroChange::kCreate, "", [&] { driver().press(b_.createMacro, numbered(7, "Fresh")); }},
      {MacroChange::kRename, onDisk,
       [&] {
         driver().choose(a_.macros, "001");
         driver().press(a_.renameMacro, [](QDialog& dialog) {
           WindowDriver::type(dialog, "newName", QStringLiteral("Renamed"));
           WindowDriver::click(dialog, QStringLiteral("OK"));
         });
       }},
      {MacroChange::kDelete, onDisk,
       [&] {
         driver().choose(a_.macros, "001");
         driver().press(a_.deleteMacro);
       }},
      {MacroChange::kDelete, "",
       [&] {
         await(b_.macros, "007 - Fresh");
         driver().choose(b_.macros, "007");
         driver().press(b_.deleteMacro);
       }},
  };
  driver().choose(a_.macros, "001");
  std::size_t count = 0;
  for (const Case& one : cases) {
    const std::string before = one.file.empty() ? tree_.read(kRemote) : read(one.file);
    one.work();
    ASSERT_EQ(kept().size(), ++count) << fixture_->status().toStdString();
    const KeptMacro newest = kept().front();
    EXPECT_EQ(newest.change, one.change) << count;
    EXPECT_TRUE(newest.place->file == one.file || fixture_->site.root.same(newest.place->file, one.file));
    EXPECT_EQ(newest.place->number, one.file.empty() ? "007" : "");
    EXPECT_EQ(read(newest.file), before) << count;
  }
}

TEST_F(HistoryWindowTest, AMacroIsPutBackFromTheDialog) {
  const std::string file = macroFile(kFolder, 1);
  const std::string original = read(file);
  inHistory([](QDialog& dialog) {
    EXPECT_THAT(dialog.findChild<QLabel*>(QStringLiteral("outcome"))->text().toStdString(),
                HasSubstr("Nothing has been"));
    EXPECT_FALSE(dialog.findChild<QAbstractButton*>(QStringLiteral("putBack"))->isEnabled());
  });
  driver().choose(a_.macros, "001");
  const std::vector<std::string> lines = driver().texts(a_.commands);
  edit(a_);
  connectB();
  edit(b_);
  driver().choose(a_.macros, "001");
  fixture_->site.messages.take();
  inHistory([&](QDialog& dialog) {
    auto* list = dialog.findChild<QTreeView*>(QStringLiteral("macros"));
    EXPECT_EQ(list->model()->rowCount(), 2);
    WindowDriver::click(dialog, QStringLiteral("Put Back"));
    EXPECT_EQ(tree_.read(kRemote), kTwo);
    WindowDriver::type(dialog, "filter", QStringLiteral("evening"));
    ASSERT_EQ(list->model()->rowCount(), 1);
    std::vector<std::string> preview;
    for (const ListRow& row : dialog.findChild<ListBox*>(QStringLiteral("commands"))->rows().rows())
      preview.push_back(row.text);
    EXPECT_EQ(preview, lines);
    WindowDriver::click(dialog, QStringLiteral("Put Back"));
    WindowDriver::type(dialog, "filter", QStringLiteral("nowhere"));
    EXPECT_EQ(list->model()->rowCount(), 0);
  });
  EXPECT_EQ(read(file), original);
  EXPECT_EQ(kept().size(), 4U) << "what was put back over can be had back, too";
  const std::vector<std::string> questions = fixture_->site.messages.take();
  ASSERT_EQ(questions.size(), 2U);
  EXPECT_THAT(questions[0], testing::StartsWith("Put back \"Two%5\" of "));
  EXPECT_THAT(questions[0], HasSubstr("overwrites macro 007 of workplace 1 on the panel 127.0.0.1"));
  EXPECT_THAT(questions[1], HasSubstr("It overwrites \""));
  EXPECT_THAT(fixture_->status().toStdString(), testing::StartsWith("written: "));
  EXPECT_EQ(driver().texts(a_.commands), lines) << "a pane shows what its macro holds";
}

TEST_F(HistoryWindowTest, UnsavedChangesAreToldBeforeTheirMacroIsPutBack) {
  driver().choose(a_.macros, "001");
  edit(a_);
  driver().choose(a_.macros, "001");
  driver().clickRow(a_.commands, 0);
  driver().press(a_.deleteCommand);
  const std::vector<std::string> lines = driver().texts(a_.commands);
  fixture_->site.messages.take();
  inHistory([](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Put Back")); });
  EXPECT_THAT(fixture_->site.messages.take(),
              testing::ElementsAre(HasSubstr("A shows this macro with unsaved")));
  EXPECT_EQ(driver().texts(a_.commands), lines) << "and they stay";
}

TEST_F(HistoryWindowTest, OnlyWhatCanBeReadIsPutBackAndAFilterKeepsTheChoice) {
  const MacroPlace place{macroFile(kFolder, 1), {}, 0, {}};
  for (const char* bytes :
       {"", R"(<macro name="Good"><data/></macro>)", R"(<macro name="New"><data/></macro>)"})
    ASSERT_TRUE(fixture_->history.keep(bytes, place, MacroChange::kSave));
  inHistory([](QDialog& dialog) {
    auto* list = dialog.findChild<QTreeView*>(QStringLiteral("macros"));
    auto* putBack = dialog.findChild<QAbstractButton*>(QStringLiteral("putBack"));
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

TEST_F(HistoryWindowTest, AFileThatAPersonNamesIsThatFile) {
  fixture_->site.write("c:\\BACKUP.MAC", "another file");
  ASSERT_TRUE(fixture_->history.keep(kTwo, {macroFile(kFolder, 1), {}, 0, {}}, MacroChange::kSave));
  const QString named = QString::fromStdString((fixture_->site.root.path() / "c/backup").string());
  inHistory([&](QDialog& dialog) {
    QTimer::singleShot(0, &dialog, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      WindowDriver::answerNext([&](QDialog& choice) {
        auto* name = choice.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        name->setFocus();
        name->selectAll();
        QTest::keyClicks(name, named);
        QTest::keyClick(name, Qt::Key_Return);
      });
      QTest::keyClick(menu, Qt::Key_Up);  // the last one
      QTest::keyClick(menu, Qt::Key_Return);
    });
    WindowDriver::click(dialog, QStringLiteral("Save As..."));
  });
  EXPECT_EQ(read((fixture_->site.root.path() / "c/backup.mac").string()), kTwo);
  EXPECT_EQ(read((fixture_->site.root.path() / "c/BACKUP.MAC").string()), "another file");
}

TEST_F(HistoryWindowTest, WhatCannotBeKeptIsNeitherDeletedNorOverwrittenUnasked) {
  connectB();
  fixture_->site.write("history", "in the way");
  driver().choose(a_.applications, "Evening News");
  driver().press(a_.createMacro, [](QDialog& dialog) {
    WindowDriver::type(dialog, "position", QStringLiteral("1"));
    WindowDriver::click(dialog, QStringLiteral("OK"));
  });
  EXPECT_THAT(fixture_->site.messages.take(), testing::ElementsAre(HasSubstr("what stands at 001")));
  driver().press(b_.deleteMacro);
  EXPECT_THAT(fixture_->site.messages.take(),
              testing::ElementsAre(HasSubstr("Delete macro: "), HasSubstr("could not keep 007")));
}

// By what overwrites with a dialog of its own; the user says no.
TEST_F(HistoryWindowTest, WhatCannotBeKeptIsNotOverwrittenUnasked) {
  connectB();
  const std::string file = macroFile(kFolder, 1), before = read(file);
  ASSERT_TRUE(fixture_->history.keep(kTwo, {file, {}, 0, {}}, MacroChange::kSave));
  // The day of today is in the way; what was kept stays to be had from another one.
  const std::filesystem::path history = fixture_->site.root.path() / "history";
  for (const auto& day : std::filesystem::directory_iterator(history))
    if (day.is_directory()) {
      const std::filesystem::path today = day.path();
      std::filesystem::rename(today, history / "2020-01-01");
      fixture_->site.write("history\\" + today.filename().string(), "in the way");
      break;
    }
  const std::function<void()> overwrites[] = {
      [&] { driver().press(a_.createMacro, numbered(1, "New")); },
      [&] {
        driver().choose(a_.macros, "001");
        driver().press(b_.copyMacro, numbered(7));
      },
      [&] { inHistory([](QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("Put Back")); }); }};
  driver().choose(a_.macros, "001");
  fixture_->site.messages.take();
  for (const auto& overwrite : overwrites) {
    std::vector<std::string> asked;
    fixture_->site.messages.answering = [&asked](const std::string& text) {
      asked.push_back(text);
      return text.find("could not keep") == std::string::npos;
    };
    overwrite();
    ASSERT_FALSE(asked.empty()) << &overwrite - overwrites;
    EXPECT_THAT(asked.back(), HasSubstr("could not keep")) << &overwrite - overwrites;
  }
  EXPECT_EQ(read(file), before);
  EXPECT_EQ(tree_.read(kRemote), kTwo);
}

}  // namespace
}  // namespace tessaly
