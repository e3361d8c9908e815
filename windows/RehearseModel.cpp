#include "windows/RehearseModel.h"

#include <algorithm>

#include <QFont>
#include <QGuiApplication>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

using Kind = RehearsalRow::Kind;

QString tip(const QString& text) {
  return text.isEmpty() ? text
                        : QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

}  // namespace

RehearseModel::RehearseModel(Shows shows, const LineContext& lines, const LineOptions& options,
                             const RehearseNow& now, QObject* parent)
    : QAbstractTableModel(parent), shows_(shows), lines_(lines), options_(options), now_(now) {}

void RehearseModel::show(std::shared_ptr<const Rehearsal> rehearsal) {
  const bool same = rehearsal && rehearsal_ && rehearsal->commands() == rehearsal_->commands();
  if (same) {
    rehearsal_ = std::move(rehearsal);
    tellColumns(kNow, kState);
    return;
  }
  beginResetModel();
  rehearsal_ = std::move(rehearsal);
  list();
  endResetModel();
}

void RehearseModel::list() {
  rows_.clear();
  step_ = 0;
  if (!rehearsal_) return;
  rows_ = rehearsal_->rows();
  rowOfValue_.assign(rehearsal_->effect().values().size(), -1);
  for (int place = 0; place < rowCount(); ++place)
    if (row(place)->kind == Kind::kValue) rowOfValue_[static_cast<std::size_t>(row(place)->index)] = place;
  if (shows_ == Shows::kStep) return;
  step_ = rehearsal_->effect().commandCount();
  const auto add = [this](const QString& heading, const std::vector<int>& commands) {
    if (commands.empty()) return;
    rows_.push_back({Kind::kHeading, -1, heading.toStdString()});
    for (const int command : commands) rows_.push_back({Kind::kCommand, command});
  };
  add(tr("Acts, and changes no value that could be asked for"), rehearsal_->acting());
  add(tr("What it does cannot be told"), rehearsal_->untold());
}

void RehearseModel::setStep(int step) {
  step_ = step;
  tellColumns(kSigns, kState);
}

void RehearseModel::tellNow() { tellColumns(kNow, kState); }

void RehearseModel::tellColumns(int first, int last) {
  if (!rows_.empty()) emit dataChanged(index(0, first), index(rowCount() - 1, last));
  emit headerDataChanged(Qt::Horizontal, first, last);
}

const RehearsalRow* RehearseModel::row(int row) const {
  return row >= 0 && row < rowCount() ? &rows_[static_cast<std::size_t>(row)] : nullptr;
}

int RehearseModel::rowOf(const std::string& name) const {
  for (int row = 0; row < rowCount(); ++row)
    if (const std::string* here = nameOf(row); here != nullptr && *here == name) return row;
  return -1;
}

const std::string* RehearseModel::nameOf(int place) const {
  const RehearsalRow* here = row(place);
  if (here == nullptr || here->kind != Kind::kValue) return nullptr;
  return &rehearsal_->effect().values()[static_cast<std::size_t>(here->index)].name;
}

std::optional<RehearseCell> RehearseModel::cell(int place) const {
  const RehearsalRow* here = row(place);
  if (here == nullptr || here->kind != Kind::kValue) return std::nullopt;
  RehearseCell cell = RehearseTexts::cell(*rehearsal_, now_, here->index, step_);
  // At the end it is of no interest what the last command has done.
  if (shows_ == Shows::kAfter) cell.change = RehearseCell::Change::kNone;
  return cell;
}

int RehearseModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RehearseModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QString RehearseModel::line(int command) const {
  return tr("%1: %2").arg(
      QString::number(command + 1),
      shown(commandLine((*rehearsal_->commands())[static_cast<std::size_t>(command)], options_, lines_)));
}

QString RehearseModel::text(const RehearsalRow& row, int column) const {
  const MacroEffect& effect = rehearsal_->effect();
  switch (row.kind) {
    case Kind::kHeading:
      return column == kName ? shown(row.heading) : QString();
    case Kind::kCommand: {
      if (column != kName) return {};
      const QString why = RehearseTexts::why(effect.effect(row.index).why);
      return why.isEmpty() ? line(row.index) : tr("%1 \u2013 %2").arg(line(row.index), why);
    }
    case Kind::kValue:
      break;
  }
  switch (column) {
    case kName:
      return shown(effect.label(row.index));
    case kNow: {
      const std::string* has = now_.value(effect.values()[static_cast<std::size_t>(row.index)].name);
      return has != nullptr ? shown(effect.shown(row.index, *has)) : QStringLiteral("\u2013");
    }
    case kSigns:
      return cell(static_cast<int>(&row - rows_.data()))->signs();
    case kState:
      return RehearseTexts::state(effect, row.index, effect.at(row.index, step_));
    default:
      return {};
  }
}

QString RehearseModel::toolTip(const RehearsalRow& row, int column) const {
  if (row.kind != Kind::kValue) return text(row, column);
  const EffectValue& value = rehearsal_->effect().values()[static_cast<std::size_t>(row.index)];
  switch (column) {
    case kName:
      return text(row, column) + QLatin1Char('\n') + shown(value.name);
    case kNow:
      if (now_.value(value.name) != nullptr) return text(row, column);
      return value.classic ? tr("A panel tells no values of classic commands.") : tr("It has not come.");
    default:
      return (QStringList(text(row, kState)) << cell(static_cast<int>(&row - rows_.data()))->words())
          .join(QLatin1Char('\n'));
  }
}

QVariant RehearseModel::data(const QModelIndex& index, int role) const {
  const RehearsalRow* here = row(index.row());
  if (here == nullptr) return {};
  const bool heading = here->kind == Kind::kHeading;
  switch (role) {
    case Qt::DisplayRole:
      return text(*here, index.column());
    case Qt::AccessibleTextRole:
      return index.column() == kSigns && here->kind == Kind::kValue ? cell(index.row())->words()
                                                                    : text(*here, index.column());
    case Qt::ToolTipRole:
      return tip(toolTip(*here, index.column()));
    case Qt::BackgroundRole:
      if (heading) return QGuiApplication::palette().brush(QPalette::Active, QPalette::Button);
      if (here->kind == Kind::kValue && index.column() >= kSigns)
        return cell(index.row())->ground(QGuiApplication::palette());
      return {};
    case Qt::FontRole: {
      QFont font;
      const auto signs = index.column() >= kSigns ? cell(index.row()) : std::nullopt;
      font.setBold(heading || (signs && signs->differsFromNow));
      return font;
    }
    case Qt::TextAlignmentRole:
      return index.column() == kSigns ? QVariant(Qt::AlignCenter)
                                      : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant RehearseModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  if (role != Qt::DisplayRole) return {};
  switch (section) {
    case kName:
      return tr("Value");
    case kNow:
      return tr("Now");
    case kState:
      return shows_ == Shows::kAfter ? tr("After this macro")
             : step_ == 0            ? tr("At the start")
                                     : tr("At step %1").arg(step_);
    default:
      return {};
  }
}

Qt::ItemFlags RehearseModel::flags(const QModelIndex& index) const {
  const RehearsalRow* here = row(index.row());
  if (here == nullptr) return Qt::NoItemFlags;
  return here->kind == Kind::kHeading ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace tessaly
