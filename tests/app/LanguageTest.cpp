// The same windows in another language: what is not translated, what must not be, what no longer fits.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

#include <QMenuBar>
#include <QShortcut>

#include "app/Language.h"
#include "app/TransferText.h"
#include "tests/app/CutOffTexts.h"
#include "tests/app/EveryDialog.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

std::map<int, std::string> numberedTexts(const QWidget& window) {
  std::map<int, std::string> texts;
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    const QVariant id = widget->property("controlId");
    if (!id.isValid()) continue;
    if (const auto* label = qobject_cast<const QLabel*>(widget))
      texts[id.toInt()] = label->text().toStdString();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
      texts[id.toInt()] = button->text().toStdString();
  }
  return texts;
}

// Tool tips of buttons, and menus: texts of the program's own.
std::vector<QString> ownTexts(const QMainWindow& window) {
  std::vector<QString> texts;
  for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
    if (!button->toolTip().isEmpty()) texts.push_back(button->toolTip());
  for (const QAction* menu : window.menuBar()->actions()) texts.push_back(menu->text());
  return texts;
}

// Menus whose Alt key is a pane's shortcut already, so that neither would answer to it, and entries without a
// letter of their own.
std::vector<std::string> takenMenuKeys(const QMainWindow& window) {
  std::vector<std::string> taken;
  const auto shortcuts = window.findChildren<QShortcut*>();
  for (const QAction* menu : window.menuBar()->actions()) {
    QList<QKeySequence> letters{QKeySequence()};
    for (const QAction* entry : menu->menu()->actions()) {
      const QKeySequence letter = QKeySequence::mnemonic(entry->text());
      if (!entry->isSeparator() && letters.contains(letter)) taken.push_back(entry->text().toStdString());
      letters << letter;
    }
    for (const QShortcut* shortcut : shortcuts)
      if (shortcut->key() == QKeySequence::mnemonic(menu->text()))
        taken.push_back(menu->text().toStdString());
  }
  return taken;
}

class LanguageTest : public testing::Test {
 protected:
  ~LanguageTest() override { speak({}); }
};

// The strip says, in its two ways, that a macro with a very long name could not be saved.
void failToSave(WindowFixture& fixture) {
  const auto& b = WindowFixture::ids(Pane::kB);
  const std::string file = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\macro003.mac";
  fixture.site.write(
      file, "<macro name=\"" + std::string(300, 'W') + "\"><data><cmd fid=\"QMF1.A\"/></data></macro>");
  std::filesystem::permissions(fixture.site.root.resolve(file), std::filesystem::perms::owner_read);
  fixture.driver->choose(b.applications, "Evening News");
  fixture.driver->choose(b.macros, "003");
  fixture.driver->clickRow(b.commands, 0);
  fixture.driver->press(b.deleteCommand);
  fixture.driver->press(b.saveChanges);
}

TEST_F(LanguageTest, NoTextIsCutOffAndNoKeyMeansTwoThings) {
  for (const QString& language : languages()) {
    speak(language);
    EveryDialog every;
    failToSave(every.fixture);
    EXPECT_THAT(
        every.fixture.status().toStdString(),
        testing::StartsWith(language == "de" ? "NICHT gespeichert: 003 - WWW" : "NOT saved: 003 - WWW"));
    EXPECT_THAT(cutOffTexts(*every.fixture.window), IsEmpty()) << language.toStdString();
    EXPECT_THAT(takenMenuKeys(*every.fixture.window), IsEmpty()) << language.toStdString();
    every.visit([&](QDialog& dialog, const char* name) {
      EXPECT_THAT(cutOffTexts(dialog), IsEmpty()) << name << " in " << language.toStdString();
    });
  }
}

TEST_F(LanguageTest, OwnTextsAreTranslatedAndTheSystemsStay) {
  speak(QStringLiteral("en"));
  const EveryDialog english;
  speak(QStringLiteral("de"));
  const EveryDialog german;
  const auto numbered = numberedTexts(*english.fixture.window);
  EXPECT_GT(numbered.size(), 40U);
  EXPECT_EQ(numberedTexts(*german.fixture.window), numbered);

  const std::vector<QString> ours = ownTexts(*english.fixture.window);
  const std::vector<QString> theirs = ownTexts(*german.fixture.window);
  ASSERT_EQ(theirs.size(), ours.size());
  for (std::size_t i = 0; i < ours.size(); ++i) EXPECT_NE(theirs[i], ours[i]) << ours[i].toStdString();
  EXPECT_EQ(german.fixture.status(), QStringLiteral("Befehl 1 gelöscht"));
}

TEST_F(LanguageTest, TransfersAreToldAsOnTheCommandLineAndInGerman) {
  using Result = FtpClient::Result;
  std::vector<TransferOutcome> outcomes;
  for (int result = 0; result <= static_cast<int>(Result::kFailed); ++result)
    outcomes.push_back({static_cast<Result>(result), true});
  for (int holds = 0; holds <= static_cast<int>(PanelHolds::kUnknown); ++holds)
    for (const bool announced : {false, true})
      outcomes.push_back({Result::kCut, true, announced, {}, PanelHolds{holds}, Result::kRefusedLogin});
  for (const TransferOutcome& outcome : outcomes) {
    speak({});
    EXPECT_EQ(transferText(outcome).toStdString(), outcome.describe());
    speak(QStringLiteral("de"));
    EXPECT_NE(transferText(outcome).toStdString(), outcome.describe());
  }
}

TEST(ChosenLanguageTest, WhatIsWantedElseWhatTheDesktopSpeaksElseEnglish) {
  const struct {
    const char* wanted;
    QStringList desktop;
    const char* spoken;
  } cases[] = {{"", {"de-AT", "en"}, "de"}, {"", {"fr-FR", "de-DE", "en"}, "de"},
               {"", {"fr", "C"}, "en"},     {"", {}, "en"},
               {"en", {"de-DE"}, "en"},     {"de", {"en-GB"}, "de"}};
  for (const auto& now : cases)
    EXPECT_EQ(languageToSpeak(now.wanted, now.desktop).toStdString(), now.spoken) << now.desktop.size();
}

TEST_F(LanguageTest, DatesFollowTheLanguageAndThenTheDesktopsCountry) {
  const struct {
    const char* language;
    QStringList desktop;
    const char* dates;
  } cases[] = {{"de", {"en-US"}, "de_DE"}, {"de", {"fr-FR", "de-AT"}, "de_AT"}, {"en", {"de-DE"}, "en_US"}};
  for (const auto& now : cases) {
    speak(QLatin1String(now.language), now.desktop);
    EXPECT_EQ(QLocale().name().toStdString(), now.dates);
  }
  QLocale::setDefault(QLocale::system());
}

}  // namespace
}  // namespace tessaly
