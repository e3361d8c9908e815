#include "windows/CheckModel.h"

#include <algorithm>
#include <iterator>

#include "widgets/DialogText.h"
#include "windows/FindingText.h"

namespace tessaly {

namespace {

constexpr std::array kGravestFirst{Severity::kError, Severity::kWarning, Severity::kNote};

}  // namespace

void CheckModel::clear() {
  beginResetModel();
  rows_.clear();
  counts_ = {};
  endResetModel();
}

// Behind the rows of that severity.
int CheckModel::endOf(Severity severity) const {
  int end = 0;
  for (const Severity one : kGravestFirst) {
    end += count(one);
    if (one == severity) break;
  }
  return end;
}

void CheckModel::add(std::vector<FindingRow> rows) {
  for (const Severity severity : kGravestFirst) {
    std::vector<FindingRow> own;
    for (FindingRow& row : rows)
      if (row.place && row.finding.severity == severity) own.push_back(std::move(row));
    if (own.empty()) continue;
    const int begin = endOf(severity);
    const int size = static_cast<int>(own.size());
    beginInsertRows({}, begin, begin + size - 1);
    rows_.insert(rows_.begin() + begin, std::make_move_iterator(own.begin()),
                 std::make_move_iterator(own.end()));
    counts_[static_cast<std::size_t>(severity)] += size;
    endInsertRows();
  }
}

void CheckModel::replace(const std::function<bool(const FindingRow&)>& stale, std::vector<FindingRow> rows) {
  for (int end = rowCount(); end > 0; --end) {
    if (!stale(rows_[static_cast<std::size_t>(end - 1)])) continue;
    beginRemoveRows({}, end - 1, end - 1);
    --counts_[static_cast<std::size_t>(rows_[static_cast<std::size_t>(end - 1)].finding.severity)];
    rows_.erase(rows_.begin() + end - 1);
    endRemoveRows();
  }
  add(std::move(rows));
}

const FindingRow* CheckModel::row(int index) const {
  return index >= 0 && index < rowCount() ? &rows_[static_cast<std::size_t>(index)] : nullptr;
}

int CheckModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int CheckModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QString CheckModel::text(const FindingRow& row, int column) {
  const Finding& finding = row.finding;
  switch (column) {
    case kSeverity:
      return severityText(finding.severity);
    case kMacro:
      return shown(row.place->title());
    case kCommand:
      return finding.command < 0 ? QString() : QString::number(finding.command + 1);
    case kRule:
      return QString::fromStdString(std::string(infoOf(finding.rule).name));
    case kWrong:
      return wrongInWindow(finding);
    case kRight:
      return rightInWindow(finding);
    default:
      return {};
  }
}

QVariant CheckModel::data(const QModelIndex& index, int role) const {
  const FindingRow* here = row(index.row());
  if (here == nullptr) return {};
  if (role == Qt::DisplayRole) return text(*here, index.column());
  if (role == Qt::DecorationRole && index.column() == kSeverity)
    return rowMarkIcon(markOf(here->finding.severity));
  if (role == Qt::TextAlignmentRole && index.column() == kCommand)
    return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::ToolTipRole) return {};
  switch (index.column()) {
    case kMacro:
      return shown(here->place->shown).toHtmlEscaped();
    case kRule:
      return ruleText(here->finding.rule).toHtmlEscaped();
    default:
      return text(*here, index.column()).toHtmlEscaped();
  }
}

QVariant CheckModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kSeverity:
      return tr("Severity");
    case kMacro:
      return tr("Macro");
    case kCommand:
      return tr("Command");
    case kRule:
      return tr("Rule");
    case kWrong:
      return tr("What is wrong");
    case kRight:
      return tr("What would be right");
    default:
      return {};
  }
}

}  // namespace tessaly
