#include "app/SettingsText.h"

#include <QCoreApplication>
#include <QValidator>

#include "model/Settings.h"

namespace tessaly {

namespace {

class SettingsTextValidator : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& text, int&) const override {
    return settingsHold(text.toStdString()) ? Acceptable : Invalid;
  }
};

}  // namespace

void keepToSettingsText(QLineEdit& field) { field.setValidator(new SettingsTextValidator(&field)); }

QString settingsTextRefused() {
  return QCoreApplication::translate(
      "SettingsText",
      "not taken: the settings file cannot keep this character (it knows those of Windows-1252)");
}

}  // namespace tessaly
