#pragma once

#include <memory>

#include <QDialog>

#include "app/OverwriteWarning.h"

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

  // What is told beside the name of a macro that would be overwritten.
  void setAbout(OverwriteWarning::About about);

  [[nodiscard]] int number() const { return number_; }
  [[nodiscard]] std::string name() const;  // UTF-8
  // There is a macro at that number.
  [[nodiscard]] bool overwrites() const { return overwrites_; }
  void accept() override;

 private:
  void checkNumber();
  void proposeName(const std::string& existing);
  void checkName();

  std::unique_ptr<Ui::CreateMacroDialog> ui_;
  MacroNameTable names_;
  QString ownName_;  // as the user typed it
  int number_ = -1;
  bool overwrites_ = false;
};

}  // namespace tessaly
