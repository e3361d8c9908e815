#include "app/PaneHeading.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "app/Browser.h"
#include "app/PaneState.h"
#include "app/PanelBridge.h"
#include "windows/ElidedLine.h"

namespace tessaly {

namespace {

constexpr QRgb kPanelGround = 0xFF8A4B00;
constexpr QRgb kPanelStripe = 0xFFF9A825;
constexpr QRgb kLostGround = 0xFFA31515;
constexpr QRgb kLostStripe = 0xFFFF9D94;
constexpr int kStripe = 6;  // pixels, as all below
constexpr int kGap = 6;
constexpr int kCorner = 3;
const QString kUnsavedSign = QStringLiteral("\u25CF ");

}  // namespace

HeadingColours headingColours(const QPalette& palette, PaneSubject::Where where) {
  switch (where) {
    case PaneSubject::Where::kPanel:
      return {QColor(kPanelGround), Qt::white, QColor(kPanelStripe)};
    case PaneSubject::Where::kLost:
      return {QColor(kLostGround), Qt::white, QColor(kLostStripe)};
    case PaneSubject::Where::kDisk:
    case PaneSubject::Where::kNotConnected:
    case PaneSubject::Where::kSnapshot:
    case PaneSubject::Where::kKeyFile:
    case PaneSubject::Where::kHistory:
    case PaneSubject::Where::kNoPlace:
      break;
  }
  return {palette.color(QPalette::Active, QPalette::Button),
          palette.color(QPalette::Active, QPalette::ButtonText),
          palette.color(QPalette::Active, QPalette::PlaceholderText)};
}

// Two lines, each with something at its left that gives way and something at its right. A label to screen
// readers, with all of it as its name.
class PaneHeading::Band : public QLabel {
 public:
  explicit Band(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("subject"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  }

  void setSubject(const PaneSubject& subject) {
    if (subject == subject_) return;
    subject_ = subject;
    const QStringList parts = subject.parts();
    setAccessibleName(parts.join(QStringLiteral(", ")));
    setToolTip(QStringLiteral("<p>%1</p>")
                   .arg(parts.join(QLatin1Char('\n'))
                            .toHtmlEscaped()
                            .replace(QLatin1Char('\n'), QStringLiteral("<br>"))));
    update();
  }

  [[nodiscard]] QSize sizeHint() const override { return {0, 2 * fontMetrics().height() + 2 * kGap}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const HeadingColours colours = headingColours(palette(), subject_.where);
    painter.fillRect(rect(), colours.ground);
    painter.fillRect(0, 0, kStripe, height(), colours.stripe);
    painter.setPen(colours.ink);
    const int half = fontMetrics().height();
    QRect upper(kStripe + kGap, kGap / 2, width() - kStripe - 2 * kGap, half + kGap / 2);
    const QRect lower(upper.left(), upper.bottom() + 1 + kGap / 2, upper.width(), half);
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    upper.setLeft(paintWord(painter, upper, colours) + kGap);
    paintLine(painter, upper, subject_.title,
              subject_.unsaved.isEmpty() ? QString() : kUnsavedSign + subject_.unsaved);
    painter.setFont(font());
    paintLine(painter, lower, subject_.place, subject_.lastStep);
  }

 private:
  // Turned round, in a frame; where it ends.
  int paintWord(QPainter& painter, const QRect& room, const HeadingColours& colours) const {
    const QString word = subject_.word();
    const QRect frame(room.left(), room.top(), painter.fontMetrics().horizontalAdvance(word) + 2 * kGap,
                      room.height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.ink);
    painter.drawRoundedRect(frame, kCorner, kCorner);
    painter.setPen(colours.ground);
    painter.drawText(frame, Qt::AlignCenter, word);
    painter.setPen(colours.ink);
    return frame.right();
  }

  static void paintLine(QPainter& painter, const QRect& room, const QString& left, const QString& right) {
    const QFontMetrics metrics = painter.fontMetrics();
    const int most = std::max(room.width() / 2, room.width() - metrics.horizontalAdvance(left) - kGap);
    const QString ending = metrics.elidedText(right, Qt::ElideRight, most);
    const int rest = room.width() - (right.isEmpty() ? 0 : metrics.horizontalAdvance(ending) + kGap);
    constexpr int kLook = Qt::AlignVCenter | Qt::TextSingleLine;
    painter.drawText(room, kLook | Qt::AlignLeft, metrics.elidedText(left, Qt::ElideMiddle, rest));
    painter.drawText(room, kLook | Qt::AlignRight, ending);
  }

  PaneSubject subject_;
};

PaneHeading::PaneHeading(QWidget* parent)
    : QWidget(parent),
      band_(new Band(this)),
      lost_(new QWidget(this)),
      lostText_(new ElidedLine(lost_)),
      again_(new QPushButton(tr("Connect again"), lost_)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins({});
  column->setSpacing(2);
  column->addWidget(band_);
  column->addWidget(lost_);
  again_->setObjectName(QStringLiteral("connectAgain"));
  again_->setAutoDefault(false);
  auto* line = new QHBoxLayout(lost_);
  line->setContentsMargins(kStripe + kGap, 0, 0, 0);
  line->addWidget(lostText_, 1);
  line->addWidget(again_);
  lostText_->setText(tr("The line to the panel is lost; nothing is behind this pane."));
  lost_->hide();
  connect(again_, &QPushButton::clicked, this, &PaneHeading::connectAgainPressed);
}

void PaneHeading::follow(const PaneState& pane, const Browser& browser, const PanelConnection& connection,
                         const PanelBridge& bridge, const MacroHistory& history) {
  const auto look = [this, &pane, &browser, &connection, &history] {
    const Pane which = pane.descriptor.pane;
    showSubject(subjectOf(pane, browser, connection, history));
    // Also when the macro that is open has no place there any more.
    lost_->setVisible(connection.source(which) == PaneSource::kPanel &&
                      connection.line(which) == PaneLine::kLost);
  };
  connect(&browser, &Browser::changed, this, look);
  connect(&pane.view, &MacroPane::lineChanged, this, look);
  connect(&bridge, &PanelBridge::connectionShown, this, look);
  look();
}

void PaneHeading::showBand(bool shown) { band_->setVisible(shown); }

bool PaneHeading::showsBand() const { return !band_->isHidden(); }

void PaneHeading::showSubject(const PaneSubject& subject) { band_->setSubject(subject); }

}  // namespace tessaly
