#include "editors/EnterTimecodeDialog.h"

#include <QEvent>

#include "editors/EntryCheck.h"
#include "platform/Text.h"
#include "ui_EnterTimecodeDialog.h"

namespace tessaly {

namespace {

// Frames end at 29 whatever the frame rate: deliberate, the panel takes both kinds of timecode.
constexpr std::array<NumberRange, 4> kRanges{{{0, 23}, {0, 59}, {0, 59}, {0, 29}}};

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
    fields_[i]->setText(QString::fromStdString(format("%02d", numbers[i])));
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
  // Queued: the click that gives a field the focus would place the caret afterwards.
  if (event->type() == QEvent::FocusIn)
    QMetaObject::invokeMethod(static_cast<QLineEdit*>(watched), &QLineEdit::selectAll, Qt::QueuedConnection);
  return QDialog::eventFilter(watched, event);
}

void EnterTimecodeDialog::check(std::size_t changed) {
  QLineEdit* field = fields_[changed];
  const EntryState state = checkEntry(field->text().toStdString(), kRanges[changed]);
  lockOthers(field, state == EntryState::kInvalid);
  ui_->ok->setEnabled(state == EntryState::kValid);
  if (state != EntryState::kInvalid) return;
  beep_();
  field->selectAll();
}

void EnterTimecodeDialog::lockOthers(const QLineEdit* field, bool locked) {
  for (QLineEdit* other : fields_)
    if (other != field) other->setEnabled(!locked);
}

void EnterTimecodeDialog::accept() {
  if (!ui_->ok->isEnabled()) return;
  const auto number = [this](std::size_t i) {
    return static_cast<std::uint8_t>(wholeNumber(fields_[i]->text().toStdString()));
  };
  timecode_.hours = number(0);
  timecode_.minutes = number(1);
  timecode_.seconds = number(2);
  timecode_.frames = number(3);
  QDialog::accept();
}

}  // namespace tessaly
