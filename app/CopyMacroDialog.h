#pragma once

#include <memory>

#include <QDialog>

#include "app/OverwriteWarning.h"

namespace Ui {
class CopyMacroDialog;
}

namespace tessaly {

// The wanted number if it is free, else the first free one from there on, and from 0 again; -1 when all are
// taken.
[[nodiscard]] int freeNumber(const MacroNameTable& names, int wanted);

// Asks for the position that a macro is copied to. Names are shown as bytes of their files.
class CopyMacroDialog : public QDialog {
  Q_OBJECT

 public:
  // `preselected` is -1 for none. `names` is the target pane's table.
  CopyMacroDialog(const std::string& sourceNumber, const std::string& sourceName, int preselected,
                  MacroNameTable names, QWidget* parent = nullptr);
  ~CopyMacroDialog() override;

  // What is told beside the name of a macro that would be overwritten.
  void setAbout(OverwriteWarning::About about);

  [[nodiscard]] int number() const { return number_; }
  // There is a macro at that number.
  [[nodiscard]] bool overwrites() const { return overwrites_; }
  void accept() override;

 private:
  void check();

  std::unique_ptr<Ui::CopyMacroDialog> ui_;
  MacroNameTable names_;
  int number_ = -1;
  bool overwrites_ = false;
};

}  // namespace tessaly
