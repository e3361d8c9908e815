#include <gtest/gtest.h>

#include <QPointer>
#include <QTest>

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

}  // namespace
}  // namespace tessaly
