#pragma once

#include <functional>

#include <QMimeData>

#include "app/CommandListModel.h"
#include "widgets/RowsView.h"

namespace tessaly {

class CommandList;

// What is dropped on a list of commands.
struct CommandDrop {
  const QMimeData& data;  // while the signal is handled
  int before = 0;         // the command in front of which it goes; their number for behind the last one
  const CommandList* from = nullptr;  // null when it comes from another program
  bool moves = false;                 // taken away from there
};

// The list of a pane's commands. Many can be selected: with Shift from where the selection began, with Ctrl
// one by one. They are dragged out of it, and dropped between two of its rows, where a line shows the place:
// within the list a drag moves (with Ctrl it copies), from another one it copies (with Shift it moves).
class CommandList : public RowsView {
  Q_OBJECT

 public:
  explicit CommandList(QWidget* parent = nullptr);

  [[nodiscard]] CommandListModel& rows() override { return rows_; }
  // Makes what a drag carries when it begins; null to begin none.
  void setCarrier(std::function<std::unique_ptr<QMimeData>()> carrier) { carrier_ = std::move(carrier); }
  // Whether what is dragged over the list can be dropped there.
  void setTaker(std::function<bool(const QMimeData&)> taker) { taker_ = std::move(taker); }
  [[nodiscard]] bool takes(const QMimeData& carried) const { return taker_ && taker_(carried); }

 signals:
  void opened();  // Enter or a double click on the one that is selected
  void dropped(const tessaly::CommandDrop& drop);

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void startDrag(Qt::DropActions supported) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void extendTo(const QModelIndex& end);
  [[nodiscard]] QModelIndex endOfKey(const QKeyEvent& event);
  [[nodiscard]] int placeAt(const QPoint& at) const;
  [[nodiscard]] const CommandList* sourceOf(const QDropEvent& event) const;
  [[nodiscard]] bool moves(const QDropEvent& event) const;
  void showPlace(int place);

  CommandListModel rows_;
  std::function<std::unique_ptr<QMimeData>()> carrier_;
  std::function<bool(const QMimeData&)> taker_;
  QPersistentModelIndex anchor_;  // where the selection began
  bool extending_ = false;        // the anchor stays
  int place_ = -1;                // in front of which row the line is; -1 for none
};

}  // namespace tessaly
