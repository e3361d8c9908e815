#pragma once

#include <condition_variable>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <vector>

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "classic/DecodingList.h"
#include "tests/review/FakeShelf.h"
#include "tests/support/SmallDictionary.h"
#include "tests/support/TestSite.h"
#include "tests/support/Told.h"
#include "windows/ReviewScope.h"

namespace tessaly {

inline constexpr const char* kClip =
    R"(<cmd fid="QMF1.ME1.KEY1.CLIP.SET" workplace="1"><param name="VALUE" value="0.5"/></cmd>)";

inline std::string macroOf(const std::string& name, const std::string& commands = {}) {
  return "<macro name=\"" + name + "\"><data>" + commands + "</data></macro>";
}

using Commands = std::vector<std::pair<std::string, std::string>>;  // function and value

inline std::string textOf(const Commands& commands, const std::string& goal = "QMF1.") {
  std::string text;
  for (const auto& [function, value] : commands)
    text += "<cmd fid=\"" + goal + function + "\" workplace=\"1\"><param name=\"VALUE\" value=\"" + value +
            "\"/></cmd>";
  return text;
}

// A workplace that has no 006 after all, while the read of 008 waits until it is cancelled.
class StuckShelf : public FakeShelf {
 public:
  StuckShelf() {
    listed = {6, 7, 8};
    files = {{7, macroOf("Seven", kClip)}};
  }
  std::string title() const override { return "workplace 1 of 127.0.0.1"; }
  Expected<std::string> read(MacroNumber number) override {
    if (number.value() != 8) return FakeShelf::read(number);
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return cancelled; });
    return Failure{Failure::Kind::kCancelled, "cancelled"};
  }
  void cancel() override {
    const std::lock_guard guard(mutex_);
    cancelled = true;
    changed_.notify_all();
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
};

// One that is not there.
class LostShelf : public StuckShelf {
 public:
  [[nodiscard]] Expected<std::vector<Held>> list() override {
    return Failure{Failure::Kind::kPanel, "the line was lost"};
  }
};

// A window and its controls, as a person finds them.
struct WindowFixture : testing::Test {
  static QString words(const Failure& failure) { return QString::fromStdString(failure.text); }
  [[nodiscard]] virtual QWidget& top() = 0;
  template <class Widget>
  [[nodiscard]] Widget& child(const char* name) {
    return *top().findChild<Widget*>(QLatin1String(name));
  }
  [[nodiscard]] std::string said(const char* label) { return child<QLabel>(label).text().toStdString(); }
  void click(const char* button) { QTest::mouseClick(&child<QPushButton>(button), Qt::LeftButton); }
  [[nodiscard]] bool enabled(const char* button) { return child<QPushButton>(button).isEnabled(); }
  // Where boxes have their mark.
  void tick(const char* box) {
    QTest::mouseClick(&child<QCheckBox>(box), Qt::LeftButton, {}, {8, child<QCheckBox>(box).height() / 2});
  }
  static void click(QAbstractItemView& view, const QModelIndex& cell) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(cell).center());
  }
  [[nodiscard]] static std::vector<std::string> column(const QAbstractItemModel& model, int column) {
    std::vector<std::string> texts;
    for (int row = 0; row < model.rowCount(); ++row)
      texts.push_back(model.index(row, column).data().toString().toStdString());
    return texts;
  }

  TestSite site;
  DecodingLists lists{site.root};
};

// One that looks at macros on a thread of its own, over a site of a test's.
struct ReviewFixture : WindowFixture {
  static const FunctionDictionary& dictionary() { return siteDictionary(); }
  template <class Shelf>
  static ReviewScope panel() {
    return {ReviewScope::Kind::kPanel, "the panel", ShelfContent{[] { return std::make_shared<Shelf>(); }}};
  }
  [[nodiscard]] bool idle() { return !child<QWidget>("cancel").isVisible(); }
  void awaitEnd() {
    ASSERT_TRUE(QTest::qWaitFor([this] { return idle(); }));
  }

  std::vector<ReviewScope> scopes;
};

}  // namespace tessaly
