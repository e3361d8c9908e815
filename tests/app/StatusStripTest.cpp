#include <gmock/gmock.h>

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QTest>
#include <QTreeView>

#include "app/StatusStrip.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {
namespace {

class StatusStripTest : public testing::Test {
 protected:
  StatusStripTest() {
    window_.show();
    QApplication::setActiveWindow(&window_);
  }
  [[nodiscard]] QString text(const char* name) const {
    const auto* label = strip_.findChild<QLabel*>(QLatin1String(name));
    return label->isVisible() ? label->text() : QString();
  }

  QWidget window_;
  StatusStrip strip_{&window_};
};

TEST_F(StatusStripTest, AFailureStaysUntilItIsSeen) {
  const auto other = [this] { strip_.say({Grade::kNote, QStringLiteral("else")}); };
  const auto fail = [this] { strip_.say({Grade::kFailure, QStringLiteral("NOT saved")}); };
  const auto key = [this] { QTest::keyClick(&window_, Qt::Key_Down); };
  fail();
  key();  // at once: nobody has read it
  other();
  EXPECT_EQ(text("statusStrip"), QStringLiteral("else"));
  EXPECT_EQ(text("unseen"), QStringLiteral("NOT saved"));
  fail();
  other();
  EXPECT_THAT(text("unseen").toStdString(), testing::StartsWith("NOT saved (and 1 failure"));
  WindowDriver::waitFor(
      [&] {
        key();
        return text("unseen").isEmpty();
      },
      "the moment after which a key counts");
  fail();
  strip_.showOwed(Pane::kA, QStringLiteral("NOT saved"));
  other();
  EXPECT_EQ(text("unseen"), QString()) << "it stands in its own line with the button";
  strip_.showOwed(Pane::kA, {});
  fail();
  other();
  EXPECT_EQ(text("unseen"), QStringLiteral("NOT saved")) << "those that were seen do not count";
}

TEST(NameInStrip, ALongOneKeepsItsEnds) {
  const std::string most(48, 'x');
  EXPECT_EQ(nameInStrip(most).toStdString(), most);
  EXPECT_EQ(nameInStrip("begin" + most + "end of twelv").toStdString(),
            "begin" + std::string(30, 'x') + "\u2026end of twelv");
}

TEST_F(StatusStripTest, WhatIsNoLookAtAFailureLeavesItThere) {
  QWidget dialog(&window_, Qt::Dialog);
  StatusStrip later(&dialog);
  dialog.show();
  for (StatusStrip* strip : {&strip_, &later})
    for (const Grade grade : {Grade::kFailure, Grade::kNote}) strip->say({grade, QStringLiteral("told")});
  WindowDriver::waitFor(
      [&] {
        QTest::keyClick(&dialog, Qt::Key_Down);
        return !later.findChild<QLabel*>(QStringLiteral("unseen"))->isVisible();
      },
      "the moment after which a key counts");
  EXPECT_EQ(text("unseen"), QStringLiteral("told")) << "the keys went to another window";
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, QString(), true);
  QApplication::sendEvent(&window_, &held);
  EXPECT_EQ(text("unseen"), QStringLiteral("told")) << "the key was down before";
  QEvent back(QEvent::WindowActivate);
  QApplication::sendEvent(&window_, &back);
  QTest::keyClick(&window_, Qt::Key_Down);
  EXPECT_EQ(text("unseen"), QStringLiteral("told")) << "nobody was there to see it";
}

TEST_F(StatusStripTest, AGradeIsHeardAndAllCanBeCopied) {
  const std::pair<Grade, const char*> heard[] = {{Grade::kDone, "text \u2013 here"},
                                                 {Grade::kWarning, "Warning: text \u2013 here"},
                                                 {Grade::kFailure, "Failure: text \u2013 here"}};
  for (const auto& [grade, name] : heard) {
    strip_.say({grade, QStringLiteral("text"), QStringLiteral("here")});
    const auto& label = *strip_.findChild<QLabel*>(QStringLiteral("statusStrip"));
    EXPECT_EQ(label.accessibleName().toStdString(), name);
    EXPECT_EQ(label.toolTip(), "<p>text</p><p>A click, or Ctrl+Shift+M, shows the messages before it.</p>");
  }
  for (std::size_t i = 0; i < MessageLog::kMost; ++i) strip_.say({Grade::kDone, QString::number(i)});
  auto* line = strip_.findChild<QLabel*>(QStringLiteral("statusStrip"));
  QTest::mouseClick(line, Qt::RightButton);
  EXPECT_EQ(window_.findChild<QTreeView*>(), nullptr);
  QTest::mouseClick(line, Qt::LeftButton);
  auto* list = window_.findChild<QTreeView*>(QStringLiteral("messages"));
  ASSERT_NE(list, nullptr);
  list->window()->close();
  QTest::keyClick(&window_, Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(list->isVisible());
  EXPECT_EQ(list->model()->rowCount(), static_cast<int>(MessageLog::kMost));
  QApplication::setActiveWindow(list->window());
  list->selectAll();
  QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
  const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
  EXPECT_THAT(lines.first().toStdString(), testing::EndsWith("\tDone\t199\t"));
  EXPECT_THAT(lines.value(199).toStdString(), testing::EndsWith("\tDone\t0\t"));
}

}  // namespace
}  // namespace tessaly
