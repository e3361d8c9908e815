#include "app/AboutDialog.h"

#include <QApplication>

#include "ui_AboutDialog.h"

namespace tessaly {

namespace {
constexpr int kIconSize = 48;  // pixels
}

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::AboutDialog>()) {
  ui_->setupUi(this);
  ui_->icon->setPixmap(QApplication::windowIcon().pixmap(kIconSize));
  connect(ui_->ok, &QPushButton::clicked, this, &AboutDialog::accept);
}

AboutDialog::~AboutDialog() = default;

}  // namespace tessaly
