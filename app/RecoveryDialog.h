#pragma once

#include <array>
#include <memory>

#include <QDialog>

#include "app/PaneDescriptor.h"

namespace Ui {
class RecoveryDialog;
}

namespace tessaly {

// What is offered for one pane.
struct RecoveryOffer {
  QString macro;
  QString place;
  QString changes;
  QString warning;       // empty when all is as it was left
  bool readable = true;  // else the changes can only be left to the history
};

// Asks what becomes of changes that an earlier run of the program left unsaved, for both panes at once.
// Rejected: to be asked again.
class RecoveryDialog : public QDialog {
  Q_OBJECT

 public:
  explicit RecoveryDialog(QWidget* parent = nullptr);
  ~RecoveryDialog() override;

  void offer(const PaneDescriptor& pane, const RecoveryOffer& offer);
  [[nodiscard]] bool takenUp(const PaneDescriptor& pane) const;

 private:
  template <class Widget>
  [[nodiscard]] Widget* part(const char* name, const PaneDescriptor& pane) const {
    return findChild<Widget*>(QLatin1String(name) + QLatin1Char(pane.letter));
  }

  std::unique_ptr<Ui::RecoveryDialog> ui_;
};

}  // namespace tessaly
