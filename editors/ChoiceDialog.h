#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QDialog>

class QCheckBox;

namespace Ui {
class ChoiceDialog;
}

namespace tessaly {

// A list to pick one row from. OK takes a selected row only; Enter and a double click on a row mean OK.
class ChoiceDialog : public QDialog {
  Q_OBJECT

 public:
  ChoiceDialog(const QString& title, const std::vector<std::string>& rows, QWidget* parent = nullptr);
  ~ChoiceDialog() override;

  // The picked row; -1 unless OK was pressed.
  [[nodiscard]] int selectedRow() const { return row_; }
  // Before the dialog is shown: selects the row that stands now; -1 none.
  void mark(int row);
  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  // Puts a further question under the list, between it and the buttons.
  void ask(QCheckBox& question);

 private:
  std::unique_ptr<Ui::ChoiceDialog> ui_;
  int row_ = -1;
};

}  // namespace tessaly
