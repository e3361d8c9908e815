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

// A kept macro as it would be shown.
struct HistoryPreview {
  bool readable = false;  // as a macro; only such a one can be put back
  std::vector<std::string> rows;
};

// Shows what macros held before they were overwritten or deleted. Writes nothing itself: it says what the
// user wants and shows what came of it.
class HistoryDialog : public QDialog {
  Q_OBJECT

 public:
  using Preview = std::function<HistoryPreview(const KeptMacro& macro)>;

  explicit HistoryDialog(Preview preview, QWidget* parent = nullptr);
  ~HistoryDialog() override;

  // `shortfall` says why they are not all, if so.
  void setMacros(std::vector<KeptMacro> macros, const QString& shortfall);
  void showOutcome(const QString& text);
  // Where the choices of "Save As..." and of "Compare..." appear; global.
  [[nodiscard]] QPoint menuPlace() const;
  [[nodiscard]] QPoint compareMenuPlace() const;

 signals:
  void putBackPressed(const tessaly::KeptMacro& macro);
  void saveAsPressed(const tessaly::KeptMacro& macro);
  void comparePressed(const tessaly::KeptMacro& macro);

 private:
  [[nodiscard]] const KeptMacro* current() const;
  // Fills the list anew; what was chosen stays chosen as long as it is listed.
  void fill(const std::function<void()>& change);
  void showCurrent();

  std::unique_ptr<Ui::HistoryDialog> ui_;
  Preview preview_;
  HistoryModel model_;
  QString shortfall_;
};

}  // namespace tessaly
