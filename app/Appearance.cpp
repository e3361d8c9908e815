#include "app/Appearance.h"

#include <algorithm>
#include <array>
#include <clocale>

#include <QApplication>
#include <QEvent>
#include <QFontDatabase>
#include <QIcon>
#include <QIconEngine>
#include <QLayout>
#include <QPainter>
#include <QPointer>
#include <QStyle>
#include <QTimer>
#include <QWidget>

#include "app/OwnStyle.h"
#include "widgets/FontsAhead.h"
#include "widgets/KeyboardWay.h"

static void initResources() { Q_INIT_RESOURCE(tessaly); }

namespace tessaly {

namespace {

const QString kLight = QStringLiteral("light");
const QString kDark = QStringLiteral("dark");
const QString kDesktop = QStringLiteral("desktop");
const QString kTextSizePlace = QStringLiteral("textSize");
// What there is without a desktop, and what paints a selection in colours that no palette tells, on which the
// lists' texts could not be read.
const QStringList kReplacedStyles{QStringLiteral("fusion"), QStringLiteral("windows"),
                                  QStringLiteral("windowsvista")};

struct Colours {
  QRgb window, base, alternateBase, button, text, faint, placeholder, highlight, quietHighlight, link;
};

constexpr Colours kLightColours{0xfff0f0f0, 0xffffffff, 0xfff6f6f6, 0xffe8e8e8, 0xff1a1a1a,
                                0xff646464, 0xff5f5f5f, 0xff1f6cad, 0xff5a6b7a, 0xff0b5cad};
constexpr Colours kDarkColours{0xff2b2b2b, 0xff1e1e1e, 0xff262626, 0xff3a3a3a, 0xffe4e4e4,
                               0xffa8a8a8, 0xffa6a6a6, 0xff2a6cb0, 0xff4d5c6b, 0xff7db8f0};

PaletteChoice current = PaletteChoice::kDesktop;

constexpr int kLeastTextSize = 50, kGreatestTextSize = 300;  // per cent
int currentTextSize = kUsualTextSize;

// A font that was set hides every later one of the desktop, so all three are known.
struct Fonts {
  QFont named;    // by the desktop, when it was asked last
  QFont desktop;  // whose size is 100 %
  QFont ours;
};

QFont namedFont() { return QFontDatabase::systemFont(QFontDatabase::GeneralFont); }

Fonts& fonts() {
  static Fonts known{namedFont(), QApplication::font(), QApplication::font()};
  return known;
}

// For texts that have become larger; a window whose least size is its own does not grow by itself.
void makeRoom(QWidget& window) {
  window.layout()->activate();
  QSize size = window.size().expandedTo(window.minimumSizeHint());
  if (window.layout()->hasHeightForWidth()) {
    size = size.expandedTo(window.sizeHint());
    size.setHeight(std::max(size.height(), window.layout()->totalHeightForWidth(size.width())));
  }
  window.resize(size);
}

void setFont() {
  QFont font = fonts().desktop;
  if (font.pointSizeF() > 0)
    font.setPointSizeF(font.pointSizeF() * currentTextSize / kUsualTextSize);
  else
    font.setPixelSize(std::max(1, qRound(font.pixelSize() * currentTextSize / qreal(kUsualTextSize))));
  fonts().ours = font;
  QApplication::setFont(font);
  for (QWidget* const window : QApplication::topLevelWidgets())
    if (window->isVisible() && window->layout() != nullptr)
      QTimer::singleShot(0, window, [window] { makeRoom(*window); });
}

// The desktop has another text size, or another font. Its colours are followed by the toolkit, as long as
// none are set.
void followFont() {
  const QFont named = namedFont(), used = QApplication::font();
  if (named == fonts().named && used == fonts().ours) return;
  fonts().desktop = named != fonts().named ? named : used;
  fonts().named = named;
  setFont();
}

// The program's pictures, each read when it is asked for, as by each new window, and kept by the toolkit's
// cache as long as that likes.
class ProgramIcon : public QIconEngine {
 public:
  void paint(QPainter* painter, const QRect& room, QIcon::Mode, QIcon::State) override {
    painter->drawPixmap(room, picture(room.size()));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override { return picture(size); }
  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    QList<QSize> sizes;
    for (const int size : kSizes) sizes << QSize(size, size);
    return sizes;
  }
  [[nodiscard]] QIconEngine* clone() const override { return new ProgramIcon; }

 private:
  static constexpr std::array kSizes = {16, 22, 24, 32, 48, 64, 128};

  // The smallest one that fills the room, made as large as it.
  static QPixmap picture(const QSize& room) {
    const int side = std::min(room.width(), room.height());
    const auto fits = std::find_if(kSizes.begin(), kSizes.end(), [&](int size) { return size >= side; });
    const QPixmap found(
        QStringLiteral(":/icons/tessaly-%1.png").arg(fits == kSizes.end() ? kSizes.back() : *fits));
    return found.width() > side ? found.scaledToWidth(side, Qt::SmoothTransformation) : found;
  }
};

// Nobody waits for it: once the window is painted.
void showProgramIcon() { QApplication::setWindowIcon(QIcon(new ProgramIcon)); }

// Some desktops tell the windows, some the program, and some nobody until one comes back from its settings.
class DesktopWatch : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool told = watched == qApp && (event->type() == QEvent::ApplicationFontChange ||
                                          event->type() == QEvent::ApplicationPaletteChange ||
                                          event->type() == QEvent::ApplicationActivate);
    if (told || event->type() == QEvent::ThemeChange) followFont();
    return false;
  }
};

}  // namespace

PaletteChoice paletteNamed(const QString& name) {
  return name == kLight  ? PaletteChoice::kLight
         : name == kDark ? PaletteChoice::kDark
                         : PaletteChoice::kDesktop;
}

QString paletteName(PaletteChoice choice) {
  switch (choice) {
    case PaletteChoice::kDesktop:
      return kDesktop;
    case PaletteChoice::kLight:
      return kLight;
    case PaletteChoice::kDark:
      return kDark;
  }
  return {};
}

QPalette ownPalette(PaletteChoice choice) {
  const Colours& colours = choice == PaletteChoice::kDark ? kDarkColours : kLightColours;
  QPalette palette(QColor::fromRgb(colours.button), QColor::fromRgb(colours.window));
  const auto set = [&](QPalette::ColorRole role, QRgb colour) {
    palette.setColor(QPalette::All, role, QColor::fromRgb(colour));
  };
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
    set(role, colours.text);
  set(QPalette::Base, colours.base);
  set(QPalette::AlternateBase, colours.alternateBase);
  set(QPalette::ToolTipBase, colours.button);
  set(QPalette::PlaceholderText, colours.placeholder);
  set(QPalette::Highlight, colours.highlight);
  set(QPalette::HighlightedText, 0xffffffff);
  set(QPalette::Link, colours.link);
  set(QPalette::LinkVisited, colours.link);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colours.faint));
  // What takes no input lies flat on the ground, where its faint text can still be read.
  for (const auto role : {QPalette::Base, QPalette::Button})
    palette.setColor(QPalette::Disabled, role, QColor::fromRgb(colours.window));
  // What is selected in a list that the keyboard is not in, or that takes no input, steps back.
  palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor::fromRgb(colours.quietHighlight));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor::fromRgb(colours.quietHighlight));
  return palette;
}

void applyPalette(PaletteChoice choice) {
  static const QString desktopStyle = QApplication::style()->name();
  current = choice;
  const bool desktops = choice == PaletteChoice::kDesktop;
  if (desktops && !kReplacedStyles.contains(desktopStyle))
    QApplication::setStyle(desktopStyle);
  else
    QApplication::setStyle(new OwnStyle);
  QApplication::setPalette(desktops ? QPalette() : ownPalette(choice));
}

PaletteChoice currentPalette() { return current; }

void applyTextSize(int percent) {
  currentTextSize = std::clamp(percent, kLeastTextSize, kGreatestTextSize);
  setFont();
}

int textSize() { return currentTextSize; }

void restoreTextSize(const Preferences& preferences) {
  const QByteArray kept = preferences.place(kTextSizePlace);
  applyTextSize(kept.isEmpty() ? kUsualTextSize : kept.toInt());
}

void keepTextSize(Preferences& preferences) {
  preferences.setPlace(kTextSizePlace, QByteArray::number(currentTextSize));
}

void dressToolkit() {
  static QPointer<DesktopWatch> watch;
  if (watch != nullptr) return;
  watch = new DesktopWatch(qApp);
  qApp->installEventFilter(watch);
  initResources();
  std::setlocale(LC_NUMERIC, "C");  // the toolkit has switched it to the user's
  KeyboardWay::open();
  QTimer::singleShot(kUntilPainted, qApp, showProgramIcon);
}

}  // namespace tessaly
