#include <gtest/gtest.h>

#include <QPointer>
#include <QTest>
#include <QWindow>

#include "windows/ReviewWindow.h"

namespace tessaly {
namespace {

TEST(ReviewWindow, StandsBesideTheOthersAndGoesForGoodByItsKeys) {
  for (const QKeySequence& key : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
    const QPointer window = new ReviewWindow("Compare");
    window->present();
    QApplication::setActiveWindow(window);
    EXPECT_FALSE(window->isModal());
    QTest::keyClick(window.data(), static_cast<Qt::Key>(key[0].key()), key[0].keyboardModifiers());
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isNull(); })) << key.toString().toStdString();
  }
}

// Over the macro that was opened from it a search would lie for good; over a modal dialog it has to.
TEST(ReviewWindow, LetsItsOwnerComeBeforeItUnlessThatHoldsUpAll) {
  using Stands = ReviewWindow::Stands;
  struct Row {
    bool modal;
    Stands stands;
    bool inFront;
  };
  for (const auto& [modal, stands, inFront] :
       {Row{false, Stands::kInFront, true}, Row{false, Stands::kBeside, false},
        Row{true, Stands::kBeside, true}}) {
    QDialog owner;
    owner.setModal(modal);
    owner.show();
    auto* const window = new ReviewWindow("Search", &owner, stands);
    window->present();
    EXPECT_EQ(window->windowHandle()->transientParent() != nullptr, inFront) << modal;
  }
}

}  // namespace
}  // namespace tessaly
