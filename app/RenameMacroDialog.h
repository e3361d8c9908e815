#pragma once

#include <memory>
#include <string>

#include <QDialog>

namespace Ui {
class RenameMacroDialog;
}

namespace tessaly {

// Asks for a macro's new name.
class RenameMacroDialog : public QDialog {
  Q_OBJECT

 public:
  explicit RenameMacroDialog(const std::string& oldName, QWidget* parent = nullptr);
  ~RenameMacroDialog() override;

  [[nodiscard]] std::string newName() const;  // UTF-8

 private:
  std::unique_ptr<Ui::RenameMacroDialog> ui_;
};

}  // namespace tessaly
