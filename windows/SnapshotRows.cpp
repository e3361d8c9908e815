#include "windows/SnapshotRows.h"

#include "widgets/DialogText.h"

namespace tessaly {

using State = RestoreRow::State;

void SnapshotRows::setRows(std::vector<RestoreRow> rows) {
  beginResetModel();
  const bool anew = rows.size() != rows_.size();
  rows_ = std::move(rows);
  ticked_.resize(rows_.size());
  for (std::size_t i = 0; i < rows_.size(); ++i)
    ticked_[i] = canTick(i) && (anew ? rows_[i].state != State::kUnread : ticked_[i]);
  endResetModel();
  emit tickChanged();
}

std::vector<std::size_t> SnapshotRows::ticked() const {
  std::vector<std::size_t> rows;
  for (std::size_t i = 0; i < ticked_.size(); ++i)
    if (ticked_[i]) rows.push_back(i);
  return rows;
}

void SnapshotRows::tickAll(bool on) {
  for (std::size_t i = 0; i < rows_.size(); ++i) ticked_[i] = on && canTick(i);
  if (!rows_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, 0), {Qt::CheckStateRole});
  emit tickChanged();
}

bool SnapshotRows::canTick(std::size_t row) const {
  const State state = rows_[row].state;
  return state != State::kSame && state != State::kRestored && state != State::kUnverified;
}

int SnapshotRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SnapshotRows::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QVariant SnapshotRows::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto at = static_cast<std::size_t>(index.row());
  const RestoreRow& row = rows_[at];
  if (role == Qt::CheckStateRole && index.column() == kWorkplace && canTick(at))
    return static_cast<int>(ticked_[at] ? Qt::Checked : Qt::Unchecked);
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  switch (index.column()) {
    case kWorkplace:
      return row.workplace == Snapshot::kFolder ? QString() : QString::number(row.workplace);
    case kMacro:
      return shown(row.macro->number.text() + " - " + row.macro->name);
    default:
      return stateText(row);
  }
}

QString SnapshotRows::stateText(const RestoreRow& row) const {
  const QString note = row.note.empty() ? QString() : QStringLiteral("; ") + shown(row.note);
  switch (row.state) {
    case State::kNotLooked:
      return {};
    case State::kSame:
      return tr("same: it stands there as it is in the snapshot");
    case State::kNew:
      return tr("new: nothing stands there");
    case State::kChanged:
      return tr("changed: something else stands there");
    case State::kUnread:
      return tr("unknown what stands there: %1").arg(words_(row.why));
    case State::kRestored:
      return tr("RESTORED and verified") + note;
    case State::kUnverified:
      return tr("RESTORED, not verified") + note;
    case State::kAsBefore:
      return tr("NOT restored: %1").arg(words_(row.why));
    case State::kUnknown:
      return tr("UNKNOWN what stands there now: %1").arg(words_(row.why));
  }
  return {};
}

QVariant SnapshotRows::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kWorkplace:
      return tr("Workplace");
    case kMacro:
      return tr("Macro");
    default:
      return tr("State");
  }
}

Qt::ItemFlags SnapshotRows::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  if (index.column() == kWorkplace && canTick(static_cast<std::size_t>(index.row())))
    flags |= Qt::ItemIsUserCheckable;
  return flags;
}

bool SnapshotRows::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid() || !canTick(static_cast<std::size_t>(index.row())))
    return false;
  ticked_[static_cast<std::size_t>(index.row())] = value.toInt() == Qt::Checked;
  emit dataChanged(index, index, {Qt::CheckStateRole});
  emit tickChanged();
  return true;
}

}  // namespace tessaly
