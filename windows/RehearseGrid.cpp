#include "windows/RehearseGrid.h"

#include <QFont>
#include <QGuiApplication>
#include <QPainter>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr int kFrame = 2;  // pixels, left and right of the column of the step

}  // namespace

RehearseGrid::RehearseGrid(const RehearseModel& values, const LineContext& lines, const LineOptions& options,
                           QObject* parent)
    : QAbstractTableModel(parent), values_(values), lines_(lines), options_(options) {}

void RehearseGrid::show(std::shared_ptr<const Rehearsal> rehearsal) {
  if (rehearsal && rehearsal_ && rehearsal->commands() == rehearsal_->commands()) {
    rehearsal_ = std::move(rehearsal);
    if (rowCount() > 0 && columnCount() > 0)
      emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    return;
  }
  beginResetModel();
  rehearsal_ = std::move(rehearsal);
  step_ = 0;
  endResetModel();
}

void RehearseGrid::setStep(int step) {
  const int left = step_;
  step_ = step;
  for (const int column : {left - 1, step - 1}) {
    if (column < 0 || column >= columnCount() || rowCount() == 0) continue;
    emit dataChanged(index(0, column), index(rowCount() - 1, column));
    emit headerDataChanged(Qt::Horizontal, column, column);
  }
}

int RehearseGrid::rowCount(const QModelIndex& parent) const { return values_.rowCount(parent); }

int RehearseGrid::columnCount(const QModelIndex& parent) const {
  return parent.isValid() || !rehearsal_ ? 0 : rehearsal_->effect().commandCount();
}

int RehearseGrid::valueOf(int row) const {
  const RehearsalRow* here = values_.row(row);
  return here != nullptr && here->kind == RehearsalRow::Kind::kValue ? here->index : -1;
}

RehearseCell RehearseGrid::cell(int value, int command) const {
  RehearseCell cell{.kind = rehearsal_->effect().at(value, command + 1).kind};
  if (const ValueChange* change = rehearsal_->change(value, command))
    cell.change = change->soAlready ? RehearseCell::Change::kSoAlready : RehearseCell::Change::kChanged;
  return cell;
}

QString RehearseGrid::line(int command) const {
  return tr("%1: %2").arg(
      QString::number(command + 1),
      shown(commandLine((*rehearsal_->commands())[static_cast<std::size_t>(command)], options_, lines_)));
}

// Only where the command comes to the value: the others are told by their ground.
QString RehearseGrid::text(int value, int command) const {
  const ValueChange* change = rehearsal_->change(value, command);
  if (change == nullptr) return {};
  const MacroEffect& effect = rehearsal_->effect();
  const QString signs = cell(value, command).signs();
  if (change->after.kind == ValueState::Kind::kUnknown) return signs;
  return signs + QLatin1Char(' ') + shown(effect.shown(value, change->after));
}

QString RehearseGrid::toolTip(int value, int command) const {
  const MacroEffect& effect = rehearsal_->effect();
  return QStringList{shown(effect.label(value)),
                     RehearseTexts::state(effect, value, effect.at(value, command + 1)),
                     cell(value, command).words(), line(command)}
      .join(QLatin1Char('\n'));
}

QVariant RehearseGrid::data(const QModelIndex& index, int role) const {
  const int value = valueOf(index.row());
  if (value < 0 || !rehearsal_)
    return role == Qt::BackgroundRole
               ? QVariant(QGuiApplication::palette().brush(QPalette::Active, QPalette::Button))
               : QVariant();
  switch (role) {
    case Qt::DisplayRole:
      return text(value, index.column());
    case Qt::AccessibleTextRole:
      return cell(value, index.column()).words();
    case Qt::ToolTipRole:
      return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>")
          .arg(toolTip(value, index.column()).toHtmlEscaped());
    case Qt::BackgroundRole:
      return cell(value, index.column()).ground(QGuiApplication::palette());
    default:
      return {};
  }
}

QVariant RehearseGrid::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || !rehearsal_) return {};
  switch (role) {
    case Qt::DisplayRole:
      return section == step_ - 1 ? QStringLiteral("\u25BE %1").arg(section + 1)
                                  : QString::number(section + 1);
    case Qt::ToolTipRole:
      return line(section).toHtmlEscaped();
    default:
      return {};
  }
}

void RehearseGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  const QColor ink = option.palette.color(QPalette::Active, QPalette::Highlight);
  const QRect& cell = option.rect;
  if (index.column() == grid_.step() - 1) {
    painter->fillRect(cell.left(), cell.top(), kFrame, cell.height(), ink);
    painter->fillRect(cell.right() - kFrame + 1, cell.top(), kFrame, cell.height(), ink);
  }
  if (index.row() == grid_.row()) {
    painter->fillRect(cell.left(), cell.top(), cell.width(), 1, ink);
    painter->fillRect(cell.left(), cell.bottom(), cell.width(), 1, ink);
  }
}

}  // namespace tessaly
