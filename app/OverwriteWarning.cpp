#include "app/OverwriteWarning.h"

#include <QGridLayout>
#include <QPainter>

#include "widgets/AtEach.h"
#include "widgets/DialogText.h"
#include "widgets/RowMark.h"
#include "windows/ElidedLine.h"

namespace tessaly {

namespace {

constexpr const char* kWords = "You will overwrite";
constexpr int kSignSize = 28;  // pixels
constexpr int kMargin = 6;
constexpr int kCorner = 3;
constexpr QColor kAmber(0xff, 0xb0, 0x00);
constexpr double kAmberPart = 0.3;  // of the ground

}  // namespace

QColor warningGround(const QPalette& palette) {
  const QColor window = palette.color(QPalette::Active, QPalette::Window);
  const auto mixed = [](int ground, int amber) {
    return static_cast<int>(ground * (1 - kAmberPart) + amber * kAmberPart);
  };
  return {mixed(window.red(), kAmber.red()), mixed(window.green(), kAmber.green()),
          mixed(window.blue(), kAmber.blue())};
}

OverwriteWarning::OverwriteWarning(QWidget* parent) : QFrame(parent), sign_(new QLabel(this)) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  grid->setHorizontalSpacing(kMargin + kMargin);
  grid->setVerticalSpacing(2);
  grid->addWidget(sign_, 0, 0, 3, 1, Qt::AlignVCenter);
  grid->setColumnStretch(1, 1);
  words_ = addLine("overwriteLabel", 0);
  name_ = addLine("overwriteName", 1);
  place_ = addLine("overwritePlace", 2);
  words_->setText(QLatin1String(kWords));
  QFont bold = words_->font();
  bold.setBold(true);
  words_->setFont(bold);
  sign_->setFixedWidth(kSignSize);
  nowAndAtEach(QEvent::PaletteChange, *this,
               [this] { sign_->setPixmap(rowMarkIcon(RowMark::kWarning).pixmap(kSignSize)); });
  keepSpaceWhenHidden({this});
}

QLabel* OverwriteWarning::addLine(const char* objectName, int row) {
  // Names are of any length, and at the end of a place is how many commands would be lost.
  auto* line = new ElidedLine(this, Qt::ElideMiddle);
  line->setObjectName(QLatin1String(objectName));
  static_cast<QGridLayout*>(layout())->addWidget(line, row, 1);
  return line;
}

void OverwriteWarning::tell(const PositionCheck& position) {
  const bool taken = !position.existing.empty();
  setVisible(taken);
  name_->setText(taken ? quoted(position.existing) : QString());
  place_->setText(taken && about_ ? about_(position.number) : QString());
}

QString OverwriteWarning::spoken() const {
  return isHidden()
             ? QString()
             : words_->text() + QLatin1Char(' ') + name_->text() + QLatin1String(", ") + place_->text();
}

void OverwriteWarning::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(kAmber, 2));
  painter.setBrush(warningGround(palette()));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCorner, kCorner);
}

}  // namespace tessaly
