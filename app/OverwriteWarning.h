#pragma once

#include <functional>

#include <QFrame>
#include <QLabel>

#include "app/PositionCheck.h"

namespace tessaly {

// What a dialog for a macro's position would overwrite: a sign, a colour and the name, with the place and the
// number of commands of what stands there. Hidden where nothing does.
class OverwriteWarning : public QFrame {
 public:
  explicit OverwriteWarning(QWidget* parent = nullptr);

  // Tells of the macro with a number where it stands and how large it is.
  using About = std::function<QString(int number)>;
  void setAbout(About about) { about_ = std::move(about); }
  void tell(const PositionCheck& position);
  // For a screen reader; empty while it is hidden.
  [[nodiscard]] QString spoken() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QLabel* addLine(const char* objectName, int row);

  QLabel* sign_;
  QLabel* words_;
  QLabel* name_;
  QLabel* place_;
  About about_;
};

// Behind its words, in both palettes.
[[nodiscard]] QColor warningGround(const QPalette& palette);

}  // namespace tessaly
