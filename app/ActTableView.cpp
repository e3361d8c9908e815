#include <QWhatsThis>

#include "app/AboutDialog.h"
#include "app/ActFinder.h"
#include "app/ActRows.h"
#include "app/Appearance.h"
#include "app/Language.h"
#include "app/MainWindow.h"
#include "app/PaneHeading.h"
#include "app/Preferences.h"

namespace tessaly {

namespace {

using Hands = const ActHands&;
using enum ActNeed;

constexpr const char* kAbout = "&About Tessaly...";  // the system's own caption

template <PaletteChoice kChoice>
void choosePalette(Hands hands, Pane) {
  applyPalette(kChoice);
  if (hands.preferences != nullptr) hands.preferences->setPalette(paletteName(kChoice));
}

template <PaletteChoice kChoice>
bool isPalette(Hands, Pane) {
  return currentPalette() == kChoice;
}

bool showsStripes(Hands hands, Pane) { return hands.view(Pane::kA).commands().rows().showsDestinations(); }

void toggleStripes(Hands hands, Pane pane) {
  const bool on = !showsStripes(hands, pane);
  for (const Pane each : kPanes) hands.view(each).commands().rows().showDestinations(on);
  if (hands.preferences != nullptr) hands.preferences->setDestinationStripes(on);
}

bool showsHeadings(Hands hands, Pane) { return hands.view(Pane::kA).heading().showsBand(); }

void toggleHeadings(Hands hands, Pane pane) {
  const bool on = !showsHeadings(hands, pane);
  for (const Pane each : kPanes) hands.view(each).heading().showBand(on);
  if (hands.preferences != nullptr) hands.preferences->setHeadings(on);
}

// A step larger or smaller; 0 is the size of the desktop.
template <int kStep>
void chooseTextSize(Hands hands, Pane) {
  applyTextSize(kStep == 0 ? kUsualTextSize : textSize() + kStep * kTextSizeStep);
  if (hands.preferences != nullptr) keepTextSize(*hands.preferences);
}

// 0 is that of the desktop, then those that there are.
template <int kPlace>
QString language() {
  return kPlace == 0 ? QString() : languages()[kPlace - 1];
}

template <int kPlace>
void chooseLanguage(Hands hands, Pane) {
  if (hands.preferences == nullptr) return;
  keepLanguage(*hands.preferences, language<kPlace>());
  hands.window.say({Grade::kNote, actText(QT_TRANSLATE_NOOP(
                                      "Acts", "the language is another one from the next start on"))});
}

template <int kPlace>
bool isLanguage(Hands hands, Pane) {
  return (hands.preferences == nullptr ? QString() : keptLanguage(*hands.preferences)) == language<kPlace>();
}

template <SiteWish kWish>
void wantSite(Hands hands, Pane) {
  emit hands.window.siteWanted(kWish);
}

}  // namespace

std::vector<Act> viewActs() {
  ActList list(ActMenu::kView);
  list.ofWindow(
      "otherPane", QT_TRANSLATE_NOOP("Acts", "&Other Pane"), Qt::Key_F6, {},
      [](Hands hands, Pane) { hands.window.switchPane(); }, QT_TRANSLATE_NOOP("Acts", "switch change side"));
  list.beginPart();
  list.ofPane("showDestination", QT_TRANSLATE_NOOP("Acts", "Desti&nations of the Commands"),
              Qt::ALT | Qt::Key_I, {kLoaded, kLines}, QT_TRANSLATE_NOOP("Acts", "mainframe"));
  list.ofPane("showRaw", QT_TRANSLATE_NOOP("Acts", "Commands as &Stored"), Qt::ALT | Qt::Key_W,
              {kLoaded, kLines}, QT_TRANSLATE_NOOP("Acts", "raw"));
  list.ofPane("useTabs", QT_TRANSLATE_NOOP("Acts", "Names and &Values in Columns"), Qt::ALT | Qt::Key_B,
              {kLoaded, kLines}, QT_TRANSLATE_NOOP("Acts", "tabs"));
  list.ofWindow("destinationStripes", QT_TRANSLATE_NOOP("Acts", "Stri&pes by Destination"), {}, {},
                toggleStripes, QT_TRANSLATE_NOOP("Acts", "colours rows mainframe"))
      .checked = showsStripes;
  list.ofWindow("headings", QT_TRANSLATE_NOOP("Acts", "&Headings over the Commands"), {}, {}, toggleHeadings,
                QT_TRANSLATE_NOOP("Acts", "band place what am I looking at"))
      .checked = showsHeadings;
  list.beginPart();
  list.ofWindow("coloursDesktop", QT_TRANSLATE_NOOP("Acts", "Colours of the Des&ktop"), {}, {},
                choosePalette<PaletteChoice::kDesktop>)
      .checked = isPalette<PaletteChoice::kDesktop>;
  list.ofWindow("coloursLight", QT_TRANSLATE_NOOP("Acts", "&Light"), {}, {},
                choosePalette<PaletteChoice::kLight>, QT_TRANSLATE_NOOP("Acts", "colours palette day"))
      .checked = isPalette<PaletteChoice::kLight>;
  list.ofWindow("coloursDark", QT_TRANSLATE_NOOP("Acts", "&Dark, for the Night"), {}, {},
                choosePalette<PaletteChoice::kDark>, QT_TRANSLATE_NOOP("Acts", "colours palette"))
      .checked = isPalette<PaletteChoice::kDark>;
  list.beginPart();
  list.ofWindow("largerText", QT_TRANSLATE_NOOP("Acts", "La&rger Text"), QKeySequence::ZoomIn, {},
                chooseTextSize<1>, QT_TRANSLATE_NOOP("Acts", "zoom size font"));
  list.ofWindow("smallerText", QT_TRANSLATE_NOOP("Acts", "S&maller Text"), QKeySequence::ZoomOut, {},
                chooseTextSize<-1>, QT_TRANSLATE_NOOP("Acts", "zoom size font"));
  list.ofWindow("usualText", QT_TRANSLATE_NOOP("Acts", "&Usual Text Size"), Qt::CTRL | Qt::Key_0, {},
                chooseTextSize<0>, QT_TRANSLATE_NOOP("Acts", "zoom size font"));
  list.beginPart();
  list.ofWindow("languageDesktop", QT_TRANSLATE_NOOP("Acts", "Lan&guage of the Desktop"), {}, {},
                chooseLanguage<0>)
      .checked = isLanguage<0>;
  list.ofWindow("languageGerman", "Deuts&ch", {}, {}, chooseLanguage<1>,
                QT_TRANSLATE_NOOP("Acts", "German language"))
      .checked = isLanguage<1>;
  list.ofWindow("languageEnglish", "&English", {}, {}, chooseLanguage<2>,
                QT_TRANSLATE_NOOP("Acts", "language"))
      .checked = isLanguage<2>;
  return list.take();
}

std::vector<Act> siteActs() {
  ActList list(ActMenu::kSite);
  list.ofWindow("openSite", QT_TRANSLATE_NOOP("Acts", "&Open..."), {}, {}, wantSite<SiteWish::kOpen>,
                QT_TRANSLATE_NOOP("Acts", "site folder root installation"));
  list.ofWindow("chooseSite", QT_TRANSLATE_NOOP("Acts", "&Choose..."), {}, {}, wantSite<SiteWish::kChoose>,
                QT_TRANSLATE_NOOP("Acts", "site first start set up"));
  list.ofWindow("sampleSite", QT_TRANSLATE_NOOP("Acts", "Open the &Sample Site"), {}, {},
                wantSite<SiteWish::kSample>, QT_TRANSLATE_NOOP("Acts", "practise training example"));
  return list.take();
}

std::vector<Act> helpActs() {
  ActList list(ActMenu::kHelp);
  list.ofWindow(
      "guide", QT_TRANSLATE_NOOP("Acts", "User &Guide"), QKeySequence::HelpContents, {},
      [](Hands hands, Pane) { hands.window.showGuide(); }, QT_TRANSLATE_NOOP("Acts", "help manual"));
  list.ofWindow(
      "keys", QT_TRANSLATE_NOOP("Acts", "&Keys"), {}, {},
      [](Hands hands, Pane) { hands.window.showGuide(QStringLiteral("keys.html")); },
      QT_TRANSLATE_NOOP("Acts", "shortcuts keyboard help"));
  list.ofWindow(
      "whatsThis", QT_TRANSLATE_NOOP("Acts", "&What's This?"), Qt::SHIFT | Qt::Key_F1, {},
      [](Hands, Pane) { QWhatsThis::enterWhatsThisMode(); }, QT_TRANSLATE_NOOP("Acts", "explain help"));
  list.ofWindow(
      "actFinder", QT_TRANSLATE_NOOP("Acts", "&Find an Act..."), Qt::CTRL | Qt::SHIFT | Qt::Key_P, {},
      [](Hands hands, Pane) { findAct(hands.window); }, QT_TRANSLATE_NOOP("Acts", "palette menu search"));
  list.beginPart();
  list.ofWindow(
      "about", kAbout, {}, {}, [](Hands hands, Pane) { AboutDialog(&hands.window).exec(); },
      QT_TRANSLATE_NOOP("Acts", "version licence"));
  return list.take();
}

}  // namespace tessaly
