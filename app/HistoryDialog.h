#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QDialog>

#include "app/HistoryModel.h"

namespace Ui {
class HistoryDialog;
}

namespace tessaly {

// Shows what macros held before they were overwritten or deleted. Writes nothing itself: it says what the
// user wants and shows what came of it.
class HistoryDialog : public QDialog {
  Q_OBJECT

 public:
  // Gives the rows that show a kept macro.
  using Preview = std::function<std::vector<std::string>(const KeptMacro& macro)>;

  explicit HistoryDialog(Preview preview, QWidget* parent = nullptr);
  ~HistoryDialog() override;

  void setMacros(std::vector<KeptMacro> macros);
  void showOutcome(const QString& text);
  // Where the choices of "Save As..." appear; global.
  [[nodiscard]] QPoint menuPlace() const;

 signals:
  void putBackPressed(const tessaly::KeptMacro& macro);
  void saveAsPressed(const tessaly::KeptMacro& macro);

 private:
  [[nodiscard]] const KeptMacro* current() const;
  void chooseFirst();
  void showCurrent();

  std::unique_ptr<Ui::HistoryDialog> ui_;
  Preview preview_;
  HistoryModel model_;
};

}  // namespace tessaly
