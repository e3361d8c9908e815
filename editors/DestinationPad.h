#pragma once

#include <functional>

#include <QWidget>

#include "editors/DestinationTable.h"

class QBoxLayout;
class QButtonGroup;
class QGridLayout;
class QToolButton;

namespace tessaly {

// A button a destination: the mix effects as a matrix, the numbered banks below. A button's object name is
// its destination name. Tab goes from group to group, the arrow keys to the nearest button.
class DestinationPad : public QWidget {
  Q_OBJECT

 public:
  explicit DestinationPad(QWidget* parent = nullptr);

 signals:
  void pressed(const DestinationNames& destination);
  void correctionPressed(const InputCorrection& correction);

 private:
  void addMixEffects(QBoxLayout& layout);
  void addBanks(QBoxLayout& layout);
  [[nodiscard]] QWidget* makeBank(const DestinationGroup& group);
  [[nodiscard]] QWidget* makeCorrections();
  // Places the group's buttons with their upper left corner at `row` and `column`.
  void addButtons(const DestinationGroup& group, QGridLayout& grid, int row, int column);
  [[nodiscard]] QToolButton* makeButton(const QString& caption, const std::function<int()>& width);

  QButtonGroup* buttons_;
};

}  // namespace tessaly
