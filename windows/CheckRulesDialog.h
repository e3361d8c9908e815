#pragma once

#include <memory>

#include <QDialog>

#include "review/CheckRules.h"

namespace Ui {
class CheckRulesDialog;
}

namespace tessaly {

// Which rules of the check count at a site.
class CheckRulesDialog : public QDialog {
  Q_OBJECT

 public:
  explicit CheckRulesDialog(const RulesOff& off, QWidget* parent = nullptr);
  ~CheckRulesDialog() override;

  [[nodiscard]] RulesOff off() const;

 private:
  std::unique_ptr<Ui::CheckRulesDialog> ui_;
};

}  // namespace tessaly
