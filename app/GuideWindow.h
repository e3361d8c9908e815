#pragma once

#include <memory>

#include <QUrl>
#include <QVariant>
#include <QWidget>

namespace Ui {
class GuideWindow;
}

namespace tessaly {

// The documents of the program, which it carries along, in a window of its own: pages with links between
// them, the way back, and a field that finds in the page. Nothing is fetched from outside.
class GuideWindow : public QWidget {
  Q_OBJECT

 public:
  // A window of the owner, so that a dialog that holds up all others does not hold up this one.
  explicit GuideWindow(QWidget* owner);
  ~GuideWindow() override;

  // A page, such as "keys.html", and behind "#" a place of it. In front of all other windows.
  void show(const QString& place);

 private:
  void follow(const QUrl& link);
  void find(bool backwards);
  [[nodiscard]] QVariant picture(const QUrl& link) const;

  std::unique_ptr<Ui::GuideWindow> ui_;
};

// The one guide: for the window that is worked in, or over the dialog that holds it up.
void openGuide(QWidget& window, const QString& place);

}  // namespace tessaly
