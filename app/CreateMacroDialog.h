#pragma once

#include <memory>

#include <QDialog>

#include "app/PositionCheck.h"

namespace Ui {
class CreateMacroDialog;
}

namespace tessaly {

// Asks for the position and the name of a new macro.
class CreateMacroDialog : public QDialog {
  Q_OBJECT

 public:
  CreateMacroDialog(int preselected, MacroNameTable names, QWidget* parent = nullptr);
  ~CreateMacroDialog() override;

  [[nodiscard]] int number() const { return number_; }
  [[nodiscard]] std::string name() const;  // UTF-8
  void accept() override;

 private:
  void checkNumber();
  void checkName();

  std::unique_ptr<Ui::CreateMacroDialog> ui_;
  MacroNameTable names_;
  int number_ = -1;
};

}  // namespace tessaly
