#pragma once

#include <filesystem>
#include <memory>

#include <QDialog>

namespace Ui {
class FirstStartDialog;
}

namespace tessaly {

// Says that the root holds no site and offers the three ways on. "Continue" does what was chosen and closes
// only when it worked: only then is anything written.
class FirstStartDialog : public QDialog {
  Q_OBJECT

 public:
  FirstStartDialog(std::filesystem::path root, std::filesystem::path sample, QWidget* parent = nullptr);
  ~FirstStartDialog() override;

  // Words for a program that works with the root already. A root that describes functions, made up or not, is
  // not to be mixed with the sample site.
  void askAgain(bool describesFunctions);

  // Host path of the site to work with; the root itself unless another installation was named.
  [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

 public slots:
  void accept() override;

 private:
  void browse();
  [[nodiscard]] bool setUpSample();
  [[nodiscard]] bool takeExisting();

  std::unique_ptr<Ui::FirstStartDialog> ui_;
  std::filesystem::path root_, sample_, folder_;
};

}  // namespace tessaly
