// How the program comes to its site and leaves it.
#include <csignal>
#include <gmock/gmock.h>

#include <QMessageBox>
#include <QTimer>

#include "app/Application.h"
#include "app/MainWindow.h"
#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kLock = ".tessaly.lock";
constexpr const char* kForeign = "4711\ntessaly\nstudio-2\nan\x1bna\n1700000000\n";

TEST(StartTest, AnotherHostsLockIsAskedAboutOnce) {
  const struct {
    const char* button;
    RootClaim claim;
  } answers[] = {{"Quit", RootClaim::kGivenUp}, {"Take Over", RootClaim::kOurs}};
  TestSite site;
  site.write(kLock, kForeign);
  for (const auto& answer : answers) {
    std::string told;
    WindowDriver::answerNext([&](QDialog& dialog) {
      told = dynamic_cast<QMessageBox&>(dialog).informativeText().toStdString();
      WindowDriver::click(dialog, QLatin1String(answer.button));
    });
    SiteLock lock(site.root);
    EXPECT_EQ(claimSite(lock, site.root), answer.claim) << answer.button;
    EXPECT_THAT(told,
                AllOf(HasSubstr("studio-2"), HasSubstr("an[U+001B]na"), HasSubstr("4711"), HasSubstr("23")))
        << "the year of the record";
  }
  SiteLock lock(site.root);
  EXPECT_EQ(claimSite(lock, site.root), RootClaim::kOurs) << "taken over once, it is ours";
}

TEST(StartTest, AnEmptySiteIsOneLineAtItsFootAndItsRootStandsInTheTitle) {
  TestSite site;
  Application application({site.root.path().string()});
  ASSERT_EQ(application.claimRoot(), RootClaim::kOurs);
  application.start();
  int boxes = 0;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      ++boxes;
      box->accept();
    }
  });
  watch.start(1);
  const WindowDriver driver(*application.window());
  driver.waitUntilLoaded();
  QApplication::processEvents();
  EXPECT_EQ(boxes, 0);
  EXPECT_THAT(application.window()->findChild<QLabel*>(QStringLiteral("statusStrip"))->text().toStdString(),
              HasSubstr("Choose..."));
  EXPECT_THAT(application.window()->windowTitle().toStdString(), HasSubstr(site.root.path().string()));
}

TEST(StartTest, TheMenuLeadsToAnotherSiteOnceTheWindowHasClosed) {
  TestSite site, elsewhere;
  elsewhere.write("c:\\programme\\rv48\\appli\\News\\devices.ini", "");
  const std::string other = elsewhere.root.path().string();
  Preferences preferences(QString::fromStdString(other + "/tessaly.ini"));
  Application application({site.root.path().string()}, &preferences);
  ASSERT_EQ(application.claimRoot(), RootClaim::kOurs);
  application.start();
  WindowDriver(*application.window()).waitUntilLoaded();
  WindowDriver::answerNext([&](QDialog& dialog) {
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
    WindowDriver::type(dialog, "existingFolder", QString::fromStdString(other));
    WindowDriver::click(dialog, QStringLiteral("Continue"));
  });
  application.window()->findChild<QAction*>(QStringLiteral("chooseSite"))->trigger();
  EXPECT_EQ(application.nextRoot(), other);
  EXPECT_FALSE(application.window()->isVisible());
  EXPECT_EQ(preferences.siteFolder().toStdString(), other);
}

class EndTest : public WindowTest {
 protected:
  [[nodiscard]] QLineEdit& path() { return driver().control<QLineEdit>(b_.address); }
  // Key by key, also those that the keyboard of the tests lacks.
  void typePath(const QString& text) {
    path().selectAll();
    for (const QChar character : text)
      QTest::sendKeyEvent(QTest::Click, &path(), Qt::Key_unknown, QString(character), Qt::NoModifier);
  }
};

// The question about unsaved changes is open, as it may be when the machine goes down.
TEST_F(EndTest, TheSystemsWishToEndIsFollowedWithoutAQuestionAndNothingIsLost) {
  const std::function<void()> wishes[] = {[] { std::raise(SIGTERM); }, [] { std::raise(SIGHUP); },
                                          [] {
                                            QEvent quit(QEvent::Quit);  // of a session that ends
                                            QCoreApplication::sendEvent(qApp, &quit);
                                          }};
  open(a_);
  removeFirst(a_);
  for (const auto& wish : wishes) {
    std::filesystem::remove(fixture_.site.root.resolve(kSettingsFile));
    typePath(QStringLiteral("/srv/K\u00fcche"));
    const OrderlyEnd end({[] {}, [this] { return fixture_.window->end(); }});
    WindowDriver::answerNext([&](QDialog&) { wish(); });
    QTimer::singleShot(0, fixture_.window.get(), &QWidget::close);
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_TRUE(fixture_.window->isVisible()) << "cancelled, so that the record stays";
    EXPECT_THAT(read(kSettingsFile), HasSubstr("/srv/K\xfc"
                                               "che"));
    EXPECT_THAT(read("recovery\\paneA.txt"), HasSubstr("macro001.mac"));
  }
}

TEST_F(EndTest, ACharacterThatTheSettingsCannotKeepIsRefusedAtTheKey) {
  typePath(QStringLiteral("/srv/\u0416\u00fc\u20ac"));
  EXPECT_EQ(path().text(), QStringLiteral("/srv/\u00fc\u20ac"));
  EXPECT_THAT(told(), HasSubstr("Windows-1252"));
}

}  // namespace
}  // namespace tessaly
