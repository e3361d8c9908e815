#include "editors/EnterTimecodeDialog.h"

#include <algorithm>

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeyEvent>

#include "platform/Text.h"
#include "ui_EnterTimecodeDialog.h"

namespace tessaly {

namespace {

// Frames end at 29 whatever the frame rate: deliberate, the panel takes both kinds of timecode.
constexpr std::array<NumberRange, 4> kRanges{{{0, 23}, {0, 59}, {0, 59}, {0, 29}}};
constexpr int kDigits = 2;  // of a field

}  // namespace

EnterTimecodeDialog::EnterTimecodeDialog(const Timecode& timecode, QWidget* parent, Beep beep)
    : QDialog(parent),
      ui_(std::make_unique<Ui::EnterTimecodeDialog>()),
      timecode_(timecode),
      beep_(std::move(beep)) {
  ui_->setupUi(this);
  fields_ = {ui_->hours, ui_->minutes, ui_->seconds, ui_->frames};
  const std::array numbers{timecode.hours, timecode.minutes, timecode.seconds, timecode.frames};
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    opened_[i] = QString::fromStdString(format("%02d", numbers[i]));
    fields_[i]->setMaxLength(std::max(kDigits, static_cast<int>(opened_[i].size())));
    fields_[i]->setText(opened_[i]);
    fields_[i]->installEventFilter(this);
    connect(fields_[i], &QLineEdit::textChanged, this, [this, i] { check(i); });
  }
  connect(ui_->ok, &QPushButton::clicked, this, &EnterTimecodeDialog::accept);
  connect(ui_->cancel, &QPushButton::clicked, this, &EnterTimecodeDialog::reject);
  ui_->hours->setFocus();
  ui_->hours->selectAll();
}

EnterTimecodeDialog::~EnterTimecodeDialog() = default;

bool EnterTimecodeDialog::eventFilter(QObject* watched, QEvent* event) {
  auto* field = static_cast<QLineEdit*>(watched);
  if (event->type() == QEvent::FocusIn && !typingOn_) {
    // Queued: the click that gives a field the focus would place the caret afterwards.
    QMetaObject::invokeMethod(field, &QLineEdit::selectAll, Qt::QueuedConnection);
  }
  if (event->type() == QEvent::KeyPress) {
    auto& key = *static_cast<QKeyEvent*>(event);
    if (key.matches(QKeySequence::Paste) ? paste() : typeOn(*field, key)) return true;
  }
  return QDialog::eventFilter(watched, event);
}

// A digit behind a full field begins the next one, so that a timecode can be typed without separators.
bool EnterTimecodeDialog::typeOn(const QLineEdit& field, QKeyEvent& key) {
  const auto* const place = std::find(fields_.begin(), fields_.end(), &field);
  const bool full = field.text().size() >= kDigits && field.cursorPosition() == field.text().size();
  const QString text = key.text();
  if (!full || field.hasSelectedText() || text.size() != 1 || !text[0].isDigit()) return false;
  if (place == fields_.end() || place + 1 == fields_.end() || !(*(place + 1))->isEnabled()) return false;
  QLineEdit* const next = *(place + 1);
  typingOn_ = true;
  next->setFocus();
  typingOn_ = false;
  next->selectAll();
  return QCoreApplication::sendEvent(next, &key);
}

// False when the clipboard has no more than a field's number, which the field takes itself.
bool EnterTimecodeDialog::paste() {
  const QString text = QGuiApplication::clipboard()->text().trimmed();
  if (text.size() <= kDigits) return false;
  const Timecode pasted = Timecode::fromText(text.toStdString());
  const std::array numbers{pasted.hours, pasted.minutes, pasted.seconds, pasted.frames};
  for (std::size_t i = 0; i < fields_.size() && fields_[i]->isEnabled(); ++i) {
    fields_[i]->selectAll();
    fields_[i]->insert(QString::fromStdString(format("%02d", numbers[i])));
  }
  return true;
}

EntryState EnterTimecodeDialog::state(std::size_t field) const {
  const QString text = fields_[field]->text();
  return text == opened_[field] ? EntryState::kValid : checkEntry(text.toStdString(), kRanges[field]);
}

void EnterTimecodeDialog::check(std::size_t changed) {
  QLineEdit* field = fields_[changed];
  const bool invalid = state(changed) == EntryState::kInvalid;
  lockOthers(field, invalid);
  bool valid = true;
  for (std::size_t i = 0; i < fields_.size(); ++i) valid = valid && state(i) == EntryState::kValid;
  ui_->ok->setEnabled(valid);
  if (!invalid) return;
  beep_();
  field->selectAll();
}

void EnterTimecodeDialog::lockOthers(const QLineEdit* field, bool locked) {
  for (QLineEdit* other : fields_)
    if (other != field) other->setEnabled(!locked);
}

void EnterTimecodeDialog::accept() {
  if (!ui_->ok->isEnabled()) return;
  const std::array numbers{&timecode_.hours, &timecode_.minutes, &timecode_.seconds, &timecode_.frames};
  for (std::size_t i = 0; i < fields_.size(); ++i)
    *numbers[i] = static_cast<std::uint8_t>(parseLong(fields_[i]->text().toStdString()));
  QDialog::accept();
}

}  // namespace tessaly
