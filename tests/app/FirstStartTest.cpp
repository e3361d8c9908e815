#include <gtest/gtest.h>

#include <QLabel>
#include <QRadioButton>

#include "app/FirstStart.h"
#include "tests/support/BuildPaths.h"
#include "tests/support/TestSite.h"
#include "tests/support/WindowDriver.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;

const fs::path kSample = sourcePath("site");

class FirstStartTest : public testing::Test {
 protected:
  FirstStartTest() { qunsetenv("TESSALY_ROOT"); }

  // The root of a start that names `root`; the dialog is answered by keys alone.
  [[nodiscard]] std::optional<SiteRoot> start(const std::string& root,
                                              const std::function<void(QDialog&)>& answer) {
    WindowDriver::answerNext(answer);
    return chooseRoot(root, kSample, preferences_);
  }
  static void press(QDialog& dialog, Qt::Key key, int times = 1) {
    for (int i = 0; i < times; ++i) QTest::keyClick(dialog.focusWidget(), key);
  }

  TestSite empty_, home_;
  std::string root_ = empty_.root.path().string();
  Preferences preferences_{QString::fromStdString((home_.root.path() / "tessaly.ini").string())};
};

TEST_F(FirstStartTest, NothingIsWrittenWithoutAnAnswer) {
  EXPECT_FALSE(start(root_, [&](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QLabel*>(QStringLiteral("root"))->text().toStdString(), root_);
    press(dialog, Qt::Key_Escape);
  }));
  const auto went = start(root_, [](QDialog& dialog) {
    press(dialog, Qt::Key_Down, 2);
    press(dialog, Qt::Key_Return);
  });
  ASSERT_TRUE(went);
  EXPECT_EQ(went->path(), empty_.root.path());
  EXPECT_TRUE(fs::is_empty(empty_.root.path())) << "starting empty is for the program to fill";
  EXPECT_TRUE(preferences_.siteFolder().isEmpty());
}

TEST_F(FirstStartTest, TheSampleSiteIsSetUpAndKeepsWhatIsThere) {
  empty_.write("c:\\programme\\RV48\\appli\\notes.txt", "mine");
  const auto site = start(root_, [](QDialog& dialog) { press(dialog, Qt::Key_Return); });
  ASSERT_TRUE(site);
  EXPECT_TRUE(holdsSite(*site));
  EXPECT_EQ(empty_.read("c:\\programme\\RV48\\appli\\notes.txt"), "mine");
  EXPECT_EQ(std::distance(fs::directory_iterator(empty_.root.path()), {}), 1) << "the drive alone";
  // The next start asks nothing.
  EXPECT_TRUE(chooseRoot(root_, kSample, preferences_));
  EXPECT_FALSE(copySampleSite(kSample, "/dev/null/no folder") || sampleToWorkOn({}));
}

TEST_F(FirstStartTest, AnExistingInstallationIsRememberedBelowANamedRoot) {
  const auto site = start(root_, [](QDialog& dialog) {
    press(dialog, Qt::Key_Down);
    press(dialog, Qt::Key_Tab);
    QTest::keyClicks(dialog.focusWidget(), QStringLiteral("/no/site"));
    press(dialog, Qt::Key_Return);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.findChild<QLabel*>(QStringLiteral("problem"))->text().isEmpty());
    // The field has the keyboard again, its text selected; a folder inside the site will do.
    QTest::keyClicks(dialog.focusWidget(), QString::fromStdString((kSample / "c" / "programme").string()));
    press(dialog, Qt::Key_Return);
  });
  ASSERT_TRUE(site);
  EXPECT_TRUE(fs::equivalent(site->path(), kSample));
  EXPECT_TRUE(fs::is_empty(empty_.root.path()));

  EXPECT_TRUE(fs::equivalent(chooseRoot({}, kSample, preferences_)->path(), kSample));
  TestSite named;
  named.write("c:\\programme\\rv48\\appli\\News\\devices.ini", "");
  EXPECT_EQ(chooseRoot(named.root.path().string(), kSample, preferences_)->path(), named.root.path());
  qputenv("TESSALY_ROOT", QByteArray::fromStdString(named.root.path().string()));
  EXPECT_EQ(chooseRoot({}, kSample, preferences_)->path(), named.root.path());
  qunsetenv("TESSALY_ROOT");
}

TEST_F(FirstStartTest, TheChoiceCanBeMadeLaterFromTheWindow) {
  empty_.write(kSettingsFile, "");  // as an empty start leaves it
  QWidget window;
  const auto later = [&](const std::function<void(QDialog&)>& answer) {
    WindowDriver::answerNext(answer);
    return chooseOtherRoot(empty_.root, kSample, preferences_, window);
  };
  const auto sample = later([](QDialog& dialog) {
    EXPECT_FALSE(dialog.findChild<QRadioButton*>(QStringLiteral("empty"))->isVisible());
    press(dialog, Qt::Key_Return);
  });
  ASSERT_TRUE(sample);
  EXPECT_EQ(sample->path(), empty_.root.path());
  EXPECT_TRUE(describesFunctions(empty_.root));
  // A site that is there is never mixed with the sample.
  EXPECT_FALSE(later([](QDialog& dialog) {
    EXPECT_FALSE(dialog.findChild<QRadioButton*>(QStringLiteral("sample"))->isEnabled());
    press(dialog, Qt::Key_Escape);
  }));
}

}  // namespace
}  // namespace tessaly
