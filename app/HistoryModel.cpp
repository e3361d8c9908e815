#include "app/HistoryModel.h"

#include <QCoreApplication>

#include "platform/LocalTime.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

QString changeText(MacroChange change) {
  switch (change) {
    case MacroChange::kSave:
      return HistoryModel::tr("saved over");
    case MacroChange::kCopy:
      return HistoryModel::tr("copied over");
    case MacroChange::kCreate:
      return HistoryModel::tr("created over");
    case MacroChange::kRename:
      return HistoryModel::tr("renamed");
    case MacroChange::kDelete:
      return HistoryModel::tr("deleted");
    case MacroChange::kConvert:
      return HistoryModel::tr("converted over");
    case MacroChange::kEdit:
      return HistoryModel::tr("edited");
    case MacroChange::kPutBack:
      return HistoryModel::tr("put back over");
    case MacroChange::kUnsaved:
      return HistoryModel::tr("changes not saved");
  }
  return {};
}

}  // namespace

void HistoryModel::setMacros(std::vector<KeptMacro> macros) {
  macros_ = std::move(macros);
  applyFilter();
}

void HistoryModel::setFilter(const QString& text) {
  filter_ = text;
  applyFilter();
}

void HistoryModel::applyFilter() {
  beginResetModel();
  rows_.clear();
  for (std::size_t i = 0; i < macros_.size(); ++i) {
    bool found = filter_.isEmpty();
    for (int column = 0; column < kColumns && !found; ++column)
      found = text(macros_[i], column).contains(filter_, Qt::CaseInsensitive);
    if (found) rows_.push_back(i);
  }
  endResetModel();
}

const KeptMacro* HistoryModel::macro(int row) const {
  return row >= 0 && row < rowCount() ? &macros_[rows_[static_cast<std::size_t>(row)]] : nullptr;
}

int HistoryModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int HistoryModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QString HistoryModel::text(const KeptMacro& macro, int column) {
  switch (column) {
    case kWhen:
      return QString::fromStdString(localTimeText(macro.when));
    case kWhat:
      return macro.place ? changeText(macro.change) : tr("unknown");
    case kName:
      return shown(macro.name);
    case kWhere:
      return macro.place ? shown(macro.placeText()) : tr("unknown");
    default:
      return {};
  }
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
  const KeptMacro* kept = macro(index.row());
  if (kept == nullptr) return {};
  if (role == Qt::DisplayRole) return text(*kept, index.column());
  if (role == Qt::ToolTipRole) return text(*kept, index.column()).toHtmlEscaped();
  return {};
}

QVariant HistoryModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kWhen:
      return tr("When");
    case kWhat:
      return tr("What happened");
    case kName:
      return tr("Name");
    case kWhere:
      return tr("Where from");
    default:
      return {};
  }
}

}  // namespace tessaly
