#pragma once

#include <QProxyStyle>

namespace tessaly {

// The toolkit's own style with what the program's palettes need: it draws frames darker than the ground,
// which nobody sees on a dark one, gives some buttons of a dialog a picture and others none, and leaves the
// captions of long buttons no room. A flat group box has neither frame nor margins, and nothing moves by
// itself.
class OwnStyle : public QProxyStyle {
  Q_OBJECT

 public:
  OwnStyle();

  // The program's own colours, dark where those of the toolkit are, under a desktop that names none.
  void polish(QPalette& palette) override;
  using QProxyStyle::polish;
  [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                const QWidget* widget) const override;
  [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                   const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                     SubControl part, const QWidget* widget) const override;
  [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* returned) const override;
  [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                       const QWidget* widget) const override;
};

}  // namespace tessaly
