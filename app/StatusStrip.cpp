#include "app/StatusStrip.h"

#include <utility>

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>

#include "app/MessagesDialog.h"
#include "widgets/DialogText.h"
#include "windows/ElidedLine.h"

namespace tessaly {

namespace {

constexpr qsizetype kLongestName = 48;  // characters of a name in the strip
constexpr qint64 kMomentMilliseconds = 1500;
constexpr int kSignSize = 16;   // pixels
constexpr int kWhereShare = 2;  // a place takes one part in so many of the width at most

// As it is read out: everybody hears that something was done from its verdict.
QString spoken(const Message& message) {
  const QString text = message.grade < Grade::kWarning
                           ? message.text
                           : gradeWord(message.grade) + QStringLiteral(": ") + message.text;
  return message.where.isEmpty() ? text : text + QStringLiteral(" \u2013 ") + message.where;
}

QLabel* textLabel(QWidget* parent, const QString& name) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  policy.setHorizontalStretch(1);
  policy.setHeightForWidth(true);
  label->setSizePolicy(policy);
  return label;
}

}  // namespace

StatusStrip::StatusStrip(QWidget* parent) : QFrame(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins({});
  column->setSpacing(4);
  for (const Pane pane : kPanes) {
    owed_[index(pane)] = addRow(QStringLiteral("owed%1").arg(index(pane)), tr("Save Again"));
    connect(owed_[index(pane)].button, &QPushButton::clicked, this,
            [this, pane] { emit saveAgainPressed(pane); });
  }
  waiting_ = addRow(QStringLiteral("waiting"), tr("Cancel"));
  connect(waiting_.button, &QPushButton::clicked, this, &StatusStrip::cancelPressed);
  unseen_ = addLine(QStringLiteral("unseen"));
  unseen_.widget->hide();
  finding_ = new ElidedLine(this);
  finding_->setObjectName(QStringLiteral("finding"));
  finding_->hide();  // until there is one; then the line keeps its room, so that nothing moves under the hand
  column->addWidget(finding_);
  said_ = addLine(QStringLiteral("statusStrip"));
  auto* keys = new QShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_M, this);
  connect(keys, &QShortcut::activated, this, &StatusStrip::showMessages);
}

StatusStrip::Line StatusStrip::addLine(const QString& name) {
  Line made{new QWidget(this), nullptr, nullptr, nullptr};
  auto* line = new QHBoxLayout(made.widget);
  line->setContentsMargins({});
  made.sign = new QLabel(made.widget);
  made.sign->setFixedWidth(kSignSize);
  made.text = textLabel(made.widget, name);
  made.text->setTextInteractionFlags(Qt::NoTextInteraction);  // a click opens the list, whence it is copied
  made.where = new ElidedLine(made.widget);
  made.where->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  line->addWidget(made.sign);
  made.where->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);  // the text has the rest
  line->addWidget(made.text, 1);
  line->addWidget(made.where);
  made.widget->setCursor(Qt::PointingHandCursor);
  layout()->addWidget(made.widget);
  return made;
}

StatusStrip::Row StatusStrip::addRow(const QString& name, const QString& caption) {
  Row row{new QWidget(this), nullptr, nullptr};
  auto* line = new QHBoxLayout(row.widget);
  line->setContentsMargins({});
  row.text = textLabel(row.widget, name);
  QFont bold = row.text->font();
  bold.setBold(true);
  row.text->setFont(bold);
  row.button = new QPushButton(caption, row.widget);
  row.button->setObjectName(name + QStringLiteral("Button"));
  row.button->setAutoDefault(false);
  line->addWidget(row.text);
  line->addWidget(row.button);
  layout()->addWidget(row.widget);
  row.widget->hide();
  return row;
}

void StatusStrip::Row::show(const QString& what) const {
  text->setText(what);
  widget->setVisible(!what.isEmpty());
}

void StatusStrip::Line::show(const Message& message, const QPalette& palette, const QString& also) const {
  sign->setPixmap(rowMarkIcon(gradeMark(message.grade)).pixmap(kSignSize));
  sign->setAccessibleName(gradeWord(message.grade));
  QPalette ink = palette;
  ink.setColor(QPalette::WindowText, gradeInk(palette, message.grade));
  text->setPalette(ink);
  text->setText(message.text + also);
  text->setToolTip(QStringLiteral("<p>%1</p><p>%2</p>")
                       .arg(text->text().toHtmlEscaped(),
                            tr("A click, or Ctrl+Shift+M, shows the messages before it.").toHtmlEscaped()));
  text->setAccessibleName(spoken(message) + also);
  where->setText(message.where);
  where->setMaximumWidth(widget->width() / kWhereShare);
  where->setVisible(!message.where.isEmpty());
}

void StatusStrip::say(const Message& message) {
  keepUnseen();
  now_ = message;
  nowUnseen_ = message.grade == Grade::kFailure;
  log_.add(message);
  said_.show(message, palette());
  if (nowUnseen_) {
    stands_.start();
    qApp->installEventFilter(this);
  }
  QAccessibleEvent told(said_.text,
                        message.grade < Grade::kWarning ? QAccessible::NameChanged : QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

// A save that is owed stands in a line of its own already.
void StatusStrip::keepUnseen() {
  const bool owed = now_.text == this->owed(Pane::kA) || now_.text == this->owed(Pane::kB);
  if (!std::exchange(nowUnseen_, false) || owed) return;
  before_ = now_;
  ++unseenBefore_;
  showUnseen();
}

void StatusStrip::showUnseen() {
  const int more = unseenBefore_ - 1;
  unseen_.show(*before_, palette(), more > 0 ? tr(" (and %n failures before it)", nullptr, more) : QString());
  unseen_.widget->show();
}

void StatusStrip::noteSeen() {
  qApp->removeEventFilter(this);
  nowUnseen_ = false;
  before_.reset();
  unseenBefore_ = 0;
  unseen_.widget->hide();
}

// Only while something is unseen.
bool StatusStrip::eventFilter(QObject* watched, QEvent* event) {
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || widget->window() != window()) return QFrame::eventFilter(watched, event);
  const bool pressed = event->type() == QEvent::MouseButtonPress ||
                       ((event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) &&
                        !static_cast<const QKeyEvent*>(event)->isAutoRepeat());
  if (event->type() == QEvent::WindowActivate)
    stands_.start();
  else if (pressed && stands_.hasExpired(kMomentMilliseconds))
    noteSeen();
  return QFrame::eventFilter(watched, event);
}

bool StatusStrip::event(QEvent* event) {
  if (event->type() == QEvent::PaletteChange && !now_.text.isEmpty()) {
    said_.show(now_, palette());
    if (before_) showUnseen();
  }
  return QFrame::event(event);
}

void StatusStrip::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) showMessages();
}

void StatusStrip::showMessages() {
  noteSeen();
  if (!messages_) messages_ = new MessagesDialog(log_, window());
  messages_->present();
}

void StatusStrip::showFinding(const QString& text) {
  if (text == finding_->text()) return;
  finding_->setText(text);
  finding_->show();
}

void StatusStrip::showOwed(Pane pane, const QString& text) { owed_[index(pane)].show(text); }

QString StatusStrip::owed(Pane pane) const { return owed_[index(pane)].text->text(); }

void StatusStrip::showWaiting(const QString& text) { waiting_.show(text); }

QString nameInStrip(const std::string& bytes) {
  QString name = shown(bytes);
  if (name.size() <= kLongestName) return name;
  constexpr qsizetype kEnd = 12;
  return name.left(kLongestName - kEnd - 1) + QChar(0x2026) + name.right(kEnd);
}

}  // namespace tessaly
