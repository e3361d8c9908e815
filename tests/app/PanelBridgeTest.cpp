#include <gtest/gtest.h>
#include <memory>
#include <thread>

#include <QCoreApplication>
#include <QEvent>
#include <QtTest>

#include "app/PaneDescriptor.h"
#include "app/PanelBridge.h"

namespace tessaly {
namespace {

// Notes the messages that it is posted.
class Window : public QObject {
 public:
  bool event(QEvent* event) override {
    if (event->type() >= QEvent::User) messages += QString::number(event->type(), 16) + " ";
    return QObject::event(event);
  }
  QString messages;
};

struct BridgeTest : testing::Test {
  BridgeTest() {
    const auto note = [this](const char* what) {
      return [this, what](Pane pane) { said += QLatin1String(what) + (pane == Pane::kA ? "A " : "B "); };
    };
    QObject::connect(bridge.get(), &PanelBridge::workplacesChanged, note("workplaces"));
    QObject::connect(bridge.get(), &PanelBridge::macroNamesChanged, note("names"));
    QObject::connect(bridge.get(), &PanelBridge::timedOut, note("late"));
  }
  // What the library's thread asks for in a burst.
  void burst() {
    std::thread([this] {
      for (int i = 0; i < 1000; ++i) {
        bridge->rebuildMacros(Pane::kA);
        bridge->rebuildMacros(Pane::kB);
        bridge->rebuildWorkplaces(Pane::kB);
      }
    }).join();
  }
  QString turn() {
    QCoreApplication::processEvents();
    return std::exchange(said, {});
  }

  Window window;
  std::unique_ptr<PanelBridge> bridge = std::make_unique<PanelBridge>(&window);
  QString said;
};

TEST_F(BridgeTest, ABurstIsSaidOnceATurnAndNothingBehindTheEnd) {
  burst();
  EXPECT_EQ(said, "") << "not on the library's thread";
  EXPECT_EQ(turn(), "workplacesB namesA namesB ");
  EXPECT_EQ(turn(), "");
  burst();
  EXPECT_EQ(turn(), "workplacesB namesA namesB ") << "again the next time";
  burst();
  bridge.reset();
  EXPECT_EQ(turn(), "");
}

TEST_F(BridgeTest, EachPaneHasItsOwnTimerAndMessage) {
  bridge->startTimer(Pane::kB, std::chrono::milliseconds(1));
  bridge->startTimer(Pane::kA, std::chrono::milliseconds(1));
  bridge->killTimer(Pane::kB);
  ASSERT_TRUE(QTest::qWaitFor([this] { return !said.isEmpty(); }));
  EXPECT_EQ(said, "lateA ") << "B's, killed, would have come before";
  bridge->postConnected(Pane::kB);
  bridge->postConnected(Pane::kA);
  QCoreApplication::processEvents();
  EXPECT_EQ(window.messages, "403 402 ");
}

}  // namespace
}  // namespace tessaly
