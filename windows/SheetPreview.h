#pragma once

#include <memory>
#include <optional>

#include <QAbstractScrollArea>

#include "review/SheetPages.h"

namespace tessaly {

// The pages of a sheet below each other, to be scrolled through; Ctrl with the wheel, "+" or "-" zooms. GUI
// thread.
class SheetPreview : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit SheetPreview(QWidget* parent = nullptr);

  // Null for none. The page that is looked at stays where there is still one.
  void setPages(std::shared_ptr<const SheetPages> pages);
  // 1 is the size on paper; nothing: as wide as the window.
  void setZoom(std::optional<double> zoom);
  [[nodiscard]] int pageCount() const;
  // The one that takes most of the view, from 0; -1 without pages.
  [[nodiscard]] int page() const;
  void showPage(int page);

 signals:
  void pageChanged(int page);
  void zoomChanged(double zoom);  // by wheel or key

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  [[nodiscard]] double scale() const;   // pixels a point
  [[nodiscard]] double stride() const;  // from page to page, pixels
  void place();
  void zoomBy(double factor);
  void tell();

  std::shared_ptr<const SheetPages> pages_;
  std::optional<double> zoom_;
  int told_ = -1;
};

}  // namespace tessaly
