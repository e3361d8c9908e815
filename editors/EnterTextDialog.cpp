#include "editors/EnterTextDialog.h"

#include <algorithm>
#include <utility>

#include <QValidator>

#include "ui_EnterTextDialog.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

qsizetype lacking(const QString& text) {
  return std::count_if(text.begin(), text.end(), [](QChar character) {
    const std::string utf8 = QString(character).toStdString();
    return windows1252ToUtf8(utf8ToWindows1252(utf8)) != utf8;
  });
}

// Refuses a change that makes a text less fit than it was. A loaded text may be unfit: it can then be mended.
class FittingText : public QValidator {
 public:
  FittingText(QLineEdit& field, qsizetype room) : QValidator(&field), room_(room), before_(field.text()) {
    connect(&field, &QLineEdit::textChanged, this, [this](const QString& text) { before_ = text; });
  }

  State validate(QString& text, int& /*caret*/) const override {
    const bool tooLong = text.size() > std::max(room_, before_.size());
    return tooLong || lacking(text) > lacking(before_) ? Invalid : Acceptable;
  }

 private:
  qsizetype room_;
  QString before_;
};

}  // namespace

EnterTextDialog::EnterTextDialog(const std::string& text, const QString& hint, std::size_t room,
                                 QWidget* parent, Beep beep)
    : QDialog(parent),
      ui_(std::make_unique<Ui::EnterTextDialog>()),
      text_(text),
      room_(static_cast<int>(room)),
      opened_(QString::fromStdString(displayUtf8(text))) {
  ui_->setupUi(this);
  ui_->hint->setText(hint);
  ui_->text->setText(opened_);
  ui_->text->setValidator(new FittingText(*ui_->text, room_));
  ui_->text->setFocus();
  ui_->text->selectAll();
  showState();
  connect(ui_->text, &QLineEdit::textChanged, this, &EnterTextDialog::showState);
  connect(ui_->text, &QLineEdit::inputRejected, this, std::move(beep));
  connect(ui_->ok, &QPushButton::clicked, this, &EnterTextDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &EnterTextDialog::reject);
}

EnterTextDialog::~EnterTextDialog() = default;

void EnterTextDialog::showState() {
  const QString text = ui_->text->text();
  ui_->count->setText(tr("%1 of %n characters", nullptr, room_).arg(text.size()));
  ui_->ok->setEnabled(text == opened_ || (text.size() <= room_ && lacking(text) == 0));
}

void EnterTextDialog::accept() {
  if (!ui_->ok->isEnabled()) return;
  if (ui_->text->text() != opened_) text_ = utf8ToWindows1252(ui_->text->text().toStdString());
  QDialog::accept();
}

}  // namespace tessaly
