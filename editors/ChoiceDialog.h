#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QDialog>

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
  void accept() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::unique_ptr<Ui::ChoiceDialog> ui_;
  int row_ = -1;
};

}  // namespace tessaly
