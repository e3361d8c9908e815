#pragma once

#include <memory>

#include <QDialog>

namespace Ui {
class AboutDialog;
}

namespace tessaly {

class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  explicit AboutDialog(QWidget* parent = nullptr);
  ~AboutDialog() override;

 private:
  std::unique_ptr<Ui::AboutDialog> ui_;
};

}  // namespace tessaly
