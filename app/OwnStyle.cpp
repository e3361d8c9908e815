#include "app/OwnStyle.h"

#include <algorithm>

#include <QDialog>
#include <QGroupBox>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include "app/Appearance.h"
#include "widgets/InkIcon.h"

namespace tessaly {

namespace {

constexpr int kButtonRoom = 16;  // pixels for a button's caption, both sides together
constexpr int kIconGap = 3;      // pixels, more than the toolkit leaves between picture and caption
constexpr float kOutlineAlpha = 0.55F;
constexpr qreal kCorner = 2;    // pixels
constexpr int kCornerEnd = 4;   // pixels, behind which the sides are straight
constexpr int kFocusWidth = 2;  // pixels, of the frame of the list that has the keyboard

// Three to one against the ground of both palettes.
QColor outline(const QStyleOption& option) {
  QColor colour = option.palette.color(QPalette::Active, QPalette::Text);
  colour.setAlphaF((option.state & QStyle::State_Enabled) != 0 ? kOutlineAlpha : kOutlineAlpha / 2);
  return colour;
}

bool hasIconAndText(const QStyleOptionButton& button) {
  return !button.icon.isNull() && !button.text.isEmpty();
}

// A dark desktop may colour empty boxes as if they were ticked.
QStyleOptionButton onPlainGround(QStyleOptionButton button) {
  const QPalette::ColorGroup group = button.palette.currentColorGroup();
  button.palette.setBrush(group, QPalette::Base, QGuiApplication::palette().brush(group, QPalette::Base));
  return button;
}

// For smooth lines, until the painter is restored.
void saveAndTake(QPainter& painter, const QPen& pen) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(pen);
}

// A rounded frame within a place. What takes many pieces to draw, as a long line of a pen and a high
// rectangle do, the toolkit hands to threads, which takes longer than to draw it.
void drawFrame(QPainter& painter, const QRect& place, const QColor& colour, int width) {
  // At a ratio that is not whole two parts would meet within a pixel.
  const qreal ratio = painter.device()->devicePixelRatioF();
  const int part = ratio == 1 || ratio == 2 ? 47 : std::max(1, place.height());
  const QRectF middle = QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5);
  const int end = std::min({kCornerEnd, place.height() / 2, place.width() / 2});
  QPainterPath corner(QPointF(middle.left(), place.top() + end));
  corner.arcTo(QRectF(middle.topLeft(), QSizeF(2 * kCorner, 2 * kCorner)), 180, -90);
  corner.lineTo(place.left() + end, middle.top());
  const QTransform across(-1, 0, 0, 1, middle.left() + middle.right(), 0);
  const QTransform down(1, 0, 0, -1, 0, middle.top() + middle.bottom());
  saveAndTake(painter, QPen(colour, width, Qt::SolidLine, Qt::FlatCap));
  for (const QTransform& way : {QTransform(), across, down, across * down}) painter.drawPath(way.map(corner));
  QColor shade = colour;
  for (int depth = 0; depth <= width / 2; ++depth) {
    const float covered = std::min(1.0F, (static_cast<float>(width) + 1) / 2 - static_cast<float>(depth));
    shade.setAlphaF(colour.alphaF() * covered);
    for (const int y : {place.top() + depth, place.bottom() - depth})
      painter.fillRect(place.left() + end, y, place.width() - 2 * end, 1, shade);
    const int last = place.bottom() + 1 - end;
    for (int top = place.top() + end; top < last; top += part) {
      for (const int x : {place.left() + depth, place.right() - depth})
        painter.fillRect(x, top, 1, std::min(part, last - top), shade);
    }
  }
  painter.restore();
}

void drawCircle(QPainter& painter, const QRect& place, const QColor& colour) {
  saveAndTake(painter, colour);
  painter.drawEllipse(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5));
  painter.restore();
}

bool isFlat(const QStyleOption* option) {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  return frame != nullptr && frame->features.testFlag(QStyleOptionFrame::Flat);
}

// Of what stands behind the end of the menu bar.
void drawMore(QPainter& painter, const QRectF& room, const QColor& ink) {
  constexpr double kWing = 0.15, kStep = 0.2;  // parts of the room
  const double wing = kWing * room.height(), step = kStep * room.width();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ink, 1.5));
  for (const double x : {room.center().x() - step, room.center().x() + step / 2}) {
    const QPointF tip(x + wing, room.center().y());
    painter.drawPolyline(QPolygonF({tip + QPointF(-wing, -wing), tip, tip + QPointF(-wing, wing)}));
  }
}

// Below the title, where the toolkit's own is, for which it stretches a picture.
void drawGroupFrame(const QStyle& style, const QStyleOption& option, QPainter& painter,
                    const QWidget* widget) {
  constexpr int kAbove = 3;  // pixels
  constexpr float kAlpha = 0.15F;
  const auto* const box = qobject_cast<const QGroupBox*>(widget);
  const bool titled = box == nullptr || box->isCheckable() || !box->title().isEmpty();
  const int mark = style.pixelMetric(QStyle::PM_IndicatorHeight);
  const int title = titled ? std::max(mark, option.fontMetrics.height()) : 0;
  QColor colour = option.palette.color(QPalette::Active, QPalette::WindowText);
  colour.setAlphaF(kAlpha);
  drawFrame(painter, option.rect.adjusted(1, title + kAbove + 1, 0, 0), colour, 1);
}

}  // namespace

OwnStyle::OwnStyle() : QProxyStyle(QStringLiteral("fusion")) {}

// Those of the toolkit, in which faint texts are too faint to be read, come from most desktops.
void OwnStyle::polish(QPalette& palette) {
  constexpr int kHalfLight = 128;
  if (palette != standardPalette()) return;
  const bool dark = palette.color(QPalette::Window).lightness() < kHalfLight;
  palette = ownPalette(dark ? PaletteChoice::kDark : PaletteChoice::kLight);
}

// Pictures grow with the captions beside them.
int OwnStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  const int usual = QProxyStyle::pixelMetric(metric, option, widget);
  return metric == PM_ButtonIconSize && widget != nullptr ? std::max(usual, widget->fontMetrics().height())
                                                          : usual;
}

// The toolkit's is black on every ground, and read from three files at each start.
QIcon OwnStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  return icon == SP_ToolBarHorizontalExtensionButton ? inkIcon(QPalette::ButtonText, drawMore)
                                                     : QProxyStyle::standardIcon(icon, option, widget);
}

void OwnStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                           const QWidget* widget) const {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  if (element != CE_PushButtonLabel || button == nullptr || !hasIconAndText(*button))
    return QProxyStyle::drawControl(element, option, painter, widget);
  QStyleOptionButton wider = *button;
  wider.iconSize.rwidth() += kIconGap;
  QProxyStyle::drawControl(element, &wider, painter, widget);
}

void OwnStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
  if (element == PE_FrameGroupBox)
    return isFlat(option) ? void() : drawGroupFrame(*this, *option, *painter, widget);
  const bool box = element == PE_IndicatorCheckBox;
  const bool circle = element == PE_IndicatorRadioButton;
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  if ((box || circle) && button != nullptr) {
    const QStyleOptionButton plain = onPlainGround(*button);
    QProxyStyle::drawPrimitive(element, &plain, painter, widget);
  } else {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
  const bool list = element == PE_Frame;
  const bool focused = (option->state & State_HasFocus) != 0;
  const bool field = list || (element == PE_FrameLineEdit && !focused);  // which shows the keyboard itself
  if (circle)
    drawCircle(*painter, option->rect, outline(*option));
  else if (list && focused)
    drawFrame(*painter, option->rect, option->palette.color(QPalette::Active, QPalette::Highlight),
              kFocusWidth);
  else if (box || field)
    drawFrame(*painter, option->rect, outline(*option), 1);
}

QRect OwnStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                               const QWidget* widget) const {
  const QRect usual = QProxyStyle::subControlRect(control, option, part, widget);
  const auto* group = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
  const bool flat = group != nullptr && group->features.testFlag(QStyleOptionFrame::Flat);
  if (!flat || part != SC_GroupBoxContents) return usual;
  const int margin = usual.left() - option->rect.left();
  return usual.adjusted(-margin, -margin, margin, margin);
}

int OwnStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                        QStyleHintReturn* returned) const {
  return hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_Widget_Animation_Duration
             ? 0
             : QProxyStyle::styleHint(hint, option, widget, returned);
}

QSize OwnStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                 const QWidget* widget) const {
  const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
  if (type != CT_PushButton || button == nullptr || widget == nullptr)
    return QProxyStyle::sizeFromContents(type, option, size, widget);
  const int gap = hasIconAndText(*button) ? kIconGap : 0;
  const QSize needed = QProxyStyle::sizeFromContents(type, option, size + QSize(gap, 0), widget);
  if (qobject_cast<QDialog*>(widget->window()) != nullptr)
    return needed.expandedTo({size.width() + gap + kButtonRoom, 0});
  // The panes of the main window have to stand side by side on a small screen.
  return button->text.contains(QLatin1Char('\n'))
             ? needed.boundedTo({size.width() + kButtonRoom, needed.height()})
             : needed;
}

}  // namespace tessaly
