#pragma once

#include <cstddef>
#include <memory>

#include <QDialog>

#include "model/EditHistory.h"

namespace Ui {
class StepsDialog;
}

namespace tessaly {

// Lists the steps of a macro from the first on, and lets the user choose one to go to. The present one is
// chosen to begin with; those that are saved say so.
class StepsDialog : public QDialog {
  Q_OBJECT

 public:
  explicit StepsDialog(const EditHistory& row, QWidget* parent = nullptr);
  ~StepsDialog() override;

  // That was chosen; of the row as it was given.
  [[nodiscard]] std::size_t position() const;

 private:
  std::unique_ptr<Ui::StepsDialog> ui_;
};

}  // namespace tessaly
