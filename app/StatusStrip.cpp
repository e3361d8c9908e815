#include "app/StatusStrip.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr qsizetype kLongestName = 48;  // characters of a name in the strip

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

QSize ElidedLabel::minimumSizeHint() const { return {0, fontMetrics().height()}; }

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

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
  finding_ = new ElidedLabel(this);
  finding_->setObjectName(QStringLiteral("finding"));
  finding_->setTextFormat(Qt::PlainText);
  finding_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  column->addWidget(finding_);
  said_ = textLabel(this, QStringLiteral("statusStrip"));
  column->addWidget(said_);
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

void StatusStrip::say(const QString& text) {
  said_->setText(text);
  said_->setToolTip(text.toHtmlEscaped());
  QAccessibleEvent told(said_, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

void StatusStrip::showFinding(const QString& text) {
  if (text == finding_->text()) return;
  finding_->setText(text);
  finding_->setToolTip(text.toHtmlEscaped());
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
