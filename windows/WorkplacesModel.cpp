#include "windows/WorkplacesModel.h"

#include <algorithm>
#include <utility>

#include "widgets/DialogText.h"

namespace tessaly {

using State = WorkplaceRow::State;

QString stateText(State state) {
  switch (state) {
    case State::kSame:
      return WorkplacesModel::tr("= same");
    case State::kRenamed:
      return WorkplacesModel::tr("≈ renamed only");
    case State::kDifferent:
      return WorkplacesModel::tr("≠ different");
    case State::kOnlyLeft:
      return WorkplacesModel::tr("← only left");
    case State::kOnlyRight:
      return WorkplacesModel::tr("→ only right");
    case State::kUnreadable:
      return WorkplacesModel::tr("? unreadable");
  }
  return {};
}

bool WorkplacesModel::isShown(const Row& row) const {
  return !onlyDifferences_ || row.compared.state != State::kSame;
}

void WorkplacesModel::clear() {
  rows_.clear();
  showAnew();
}

void WorkplacesModel::setTitles(Title left, Title right) {
  left_ = std::move(left);
  right_ = std::move(right);
  emit headerDataChanged(Qt::Horizontal, kLeft, kRight);
}

void WorkplacesModel::showAnew() {
  beginResetModel();
  shown_.clear();
  for (std::size_t row = 0; row < rows_.size(); ++row)
    if (isShown(rows_[row])) shown_.push_back(row);
  endResetModel();
}

void WorkplacesModel::add(std::vector<WorkplaceRow> compared) {
  std::vector<std::size_t> fresh;
  for (WorkplaceRow& row : compared) {
    rows_.push_back({std::move(row)});
    if (isShown(rows_.back())) fresh.push_back(rows_.size() - 1);
  }
  if (fresh.empty()) return;
  const int first = rowCount();
  beginInsertRows({}, first, first + static_cast<int>(fresh.size()) - 1);
  shown_.insert(shown_.end(), fresh.begin(), fresh.end());
  endInsertRows();
}

void WorkplacesModel::showOnlyDifferences(bool only) {
  onlyDifferences_ = only;
  showAnew();
}

void WorkplacesModel::rowChanged(std::size_t row) {
  const auto found = std::ranges::lower_bound(shown_, row);
  if (found == shown_.end() || *found != row) return;
  const int at = static_cast<int>(found - shown_.begin());
  emit dataChanged(index(at, 0), index(at, kColumns - 1));
}

void WorkplacesModel::setResult(std::size_t row, const QString& result, bool failed) {
  rows_[row].result = result;
  rows_[row].failed = failed;
  rowChanged(row);
}

void WorkplacesModel::clearResults() {
  for (Row& row : rows_) {
    row.result.clear();
    row.failed = false;
  }
  if (rowCount() > 0) emit dataChanged(index(0, kResult), index(rowCount() - 1, kResult));
}

void WorkplacesModel::noteCopied(std::size_t row, bool fromLeft) {
  WorkplaceRow& compared = rows_[row].compared;
  (fromLeft ? compared.right : compared.left) = fromLeft ? compared.left : compared.right;
  compared.state = State::kSame;
  rows_[row].ticked = false;
  rowChanged(row);
}

void WorkplacesModel::tick(std::size_t row, bool on) {
  rows_[row].ticked = on;
  rowChanged(row);
  emit ticked();
}

void WorkplacesModel::tickDifferent() {
  for (Row& row : rows_)
    row.ticked = row.compared.state != State::kSame && row.compared.state != State::kUnreadable;
  if (rowCount() > 0) emit dataChanged(index(0, kNumber), index(rowCount() - 1, kNumber));
  emit ticked();
}

int WorkplacesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int WorkplacesModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QVariant WorkplacesModel::data(const QModelIndex& index, int role) const {
  const Row& row = rows_[rowAt(index)];
  if (role == Qt::CheckStateRole && index.column() == kNumber)
    return row.ticked ? Qt::Checked : Qt::Unchecked;
  if (role == Qt::ToolTipRole && index.column() == kState && !row.compared.trouble.empty())
    return shown(row.compared.trouble);
  if (role == Qt::ToolTipRole && index.column() == kResult) return row.result;
  if (role != Qt::DisplayRole) return {};
  switch (static_cast<Column>(index.column())) {
    case kNumber:
      return QString::fromStdString(row.compared.number.text());
    case kLeft:
      return shown(row.compared.left);
    case kState:
      return stateText(row.compared.state);
    case kRight:
      return shown(row.compared.right);
    case kResult:
      return row.result;
    case kColumns:
      break;
  }
  return {};
}

QVariant WorkplacesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool place = section == kLeft || section == kRight;
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::ToolTipRole && place) return (section == kLeft ? left_ : right_).whole.toHtmlEscaped();
  if (role != Qt::DisplayRole) return {};
  switch (static_cast<Column>(section)) {
    case kNumber:
      return tr("Number");
    case kLeft:
      return left_.cut;
    case kState:
      return tr("State");
    case kRight:
      return right_.cut;
    case kResult:
      return tr("Result");
    case kColumns:
      break;
  }
  return {};
}

Qt::ItemFlags WorkplacesModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.column() == kNumber ? flags | Qt::ItemIsUserCheckable : flags;
}

bool WorkplacesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != kNumber) return false;
  tick(rowAt(index), value.toInt() == Qt::Checked);
  return true;
}

}  // namespace tessaly
