// How the windows look, measured in what is drawn.
#include <gmock/gmock.h>
#include <utility>

#include "app/Appearance.h"
#include "app/OwnStyle.h"
#include "tests/app/CutOffTexts.h"
#include "tests/app/EveryDialog.h"
#include "tests/app/TextContrast.h"

namespace tessaly {
namespace {

using testing::IsEmpty;

// As a desktop has it for people who see little.
QPalette highContrast() {
  QPalette palette(Qt::black, Qt::black);
  palette.setColor(QPalette::Highlight, Qt::yellow);
  palette.setColor(QPalette::HighlightedText, Qt::black);
  palette.setColor(QPalette::PlaceholderText, Qt::white);
  return palette;
}

TEST(LookTest, EveryTextCanBeReadWhateverTheColoursChangeTo) {
  EveryDialog every;
  const std::pair<const char*, QPalette> palettes[] = {{"light", ownPalette(PaletteChoice::kLight)},
                                                       {"dark", ownPalette(PaletteChoice::kDark)},
                                                       {"high contrast", highContrast()}};
  applyPalette(PaletteChoice::kLight);
  for (const auto& [colours, palette] : palettes) {
    QApplication::setPalette(palette);
    QApplication::processEvents();
    EXPECT_THAT(faintTexts(*every.fixture.window), IsEmpty()) << colours;
    every.visit([colours = colours](QDialog& dialog, const char* name) {
      dialog.show();
      QApplication::processEvents();
      EXPECT_THAT(faintTexts(dialog), IsEmpty()) << colours << ", " << name;
    });
  }
  applyPalette(PaletteChoice::kDesktop);
}

TEST(LookTest, TheToolkitsColoursGiveWayAndThoseOfADesktopStay) {
  OwnStyle style;
  QPalette toolkits = style.standardPalette(), desktops = highContrast();
  style.polish(toolkits);
  style.polish(desktops);
  EXPECT_EQ(toolkits, ownPalette(PaletteChoice::kLight));
  EXPECT_EQ(desktops, highContrast());
}

// Once nothing in it is worked out any more.
QImage grabbed(QDialog& dialog) {
  dialog.show();
  QImage before, now;
  do {
    before = std::exchange(now, dialog.grab().toImage());
    QTest::qWait(50);
  } while (now != before);
  return now;
}

TEST(LookTest, WhatIsOpenIsInTheDesktopsColoursAsIfOpenedInThem) {
  QApplication::setCursorFlashTime(0);
  EveryDialog every;
  const QPalette before = ownPalette(PaletteChoice::kLight), after = ownPalette(PaletteChoice::kDark);
  applyPalette(PaletteChoice::kDesktop);
  QApplication::setPalette(after);
  std::map<std::string, QImage> anew;
  every.visit([&](QDialog& dialog, const char* name) { anew[name] = grabbed(dialog); });
  QApplication::setPalette(before);
  every.visit([&](QDialog& dialog, const char* name) {
    grabbed(dialog);
    QApplication::setPalette(after);
    EXPECT_TRUE(grabbed(dialog) == anew[name]) << name;
    QApplication::setPalette(before);
  });
  applyPalette(PaletteChoice::kDesktop);
}

TEST(LookTest, WhatIsOpenGrowsWithTheDesktopsTextAndHasRoomForIt) {
  dressToolkit();
  constexpr int kOwn = 120;  // per cent
  applyTextSize(kOwn);
  EveryDialog every;
  const QFont before = QApplication::font();
  QFont larger = before;
  larger.setPointSizeF(before.pointSizeF() * 1.25);
  every.visit([&](QDialog& dialog, const char* name) {
    dialog.show();
    QApplication::setFont(larger);  // as a desktop does
    const double wanted = larger.pointSizeF() * kOwn / kUsualTextSize;
    WindowDriver::waitFor([&] { return std::abs(dialog.font().pointSizeF() - wanted) < 0.01; }, name);
    std::vector<std::string> cutOff{"not laid out"};
    for (int turn = 0; turn < 100 && !cutOff.empty(); ++turn) {
      QTest::qWait(5);
      cutOff.clear();
      collectCutOff(dialog, cutOff);
    }
    EXPECT_THAT(cutOff, IsEmpty()) << name;
    applyTextSize(kUsualTextSize);
    QApplication::setFont(before);
    applyTextSize(kOwn);
  });
  // Nobody has waited for it; the picture above is made smaller, and none larger.
  for (const auto& [asked, given] : {std::pair(24, 24), std::pair(40, 40), std::pair(200, 128)})
    EXPECT_EQ(QApplication::windowIcon().pixmap(asked).width(), given);
  QFont inPixels = before;
  inPixels.setPixelSize(15);
  QApplication::setFont(inPixels);
  WindowDriver::waitFor([] { return QApplication::font().pixelSize() == 18; }, "120 % of 15 pixels");
  applyTextSize(kUsualTextSize);
  QApplication::setFont(before);
}

class HintTest : public WindowTest {};

TEST_F(HintTest, AListThatOffersNothingSaysTheNextStep) {
  const std::pair<const char*, std::function<void()>> states[] = {
      {"nothing chosen", [] {}},
      {"key files",
       [&] { driver().choose(a_.applications, "Evening News"), driver().choose(a_.controlPanels, "CP7"); }},
      {"an empty macro",
       [&] {
         driver().choose(a_.controlPanels, "CP1");
         driver().choose(a_.macros, "001");
         QTest::keyClick(&driver().list(a_.commands), Qt::Key_A, Qt::ControlModifier);
         driver().press(a_.deleteCommand);
       }},
      {"no panel", [&] { driver().press(a_.discardChanges), driver().press(a_.panel); }}};
  for (const auto& [name, reach] : states) {
    reach();
    for (const int id : {a_.applications, a_.controlPanels, a_.workplaces, a_.macros, a_.commands}) {
      const RowsView& list = driver().list(id);
      const bool offers = driver().list(id).rows().rowCount() > 0 && driver().list(id).rows().enabled();
      const bool needless = id == a_.controlPanels && driver().control<QAbstractButton>(a_.panel).isChecked();
      EXPECT_EQ(list.accessibleDescription().isEmpty(), offers || needless)
          << name << ": " << list.objectName().toStdString();
    }
  }
}

TEST(LookTest, StripesOfDestinationsStandOutAndAreNamed) {
  for (const char* destination : {"QMF1", "QMF2", "QMF3", "QMF4", "PANEL"})
    for (const PaletteChoice choice : {PaletteChoice::kLight, PaletteChoice::kDark})
      EXPECT_GE(
          contrast(destinationColour(destination).value<QColor>(), ownPalette(choice).color(QPalette::Base)),
          3.0)
          << destination;
  MacroCommand command;
  command.fid = "QMF2.ME1.KEY1.CLIP.SET";
  CommandListModel rows;
  rows.showMacro("macro", {std::make_shared<MacroCommands>(MacroCommands{command}),
                           {},
                           {},
                           [](const auto&, const auto&, bool) { return "line"; }});
  const auto told = [&](int role) { return rows.data(rows.index(0), role); };
  EXPECT_FALSE(told(kRowStripeRole).isValid()) << "off at first";
  rows.showDestinations(true);
  EXPECT_TRUE(told(kRowStripeRole).isValid());
  EXPECT_TRUE(told(Qt::AccessibleDescriptionRole).toString().contains(QStringLiteral("Mainframe2")));
}

}  // namespace
}  // namespace tessaly
