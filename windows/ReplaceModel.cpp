#include "windows/ReplaceModel.h"

#include <algorithm>

#include "widgets/DialogText.h"
#include "windows/FindingText.h"

namespace tessaly {

namespace {

constexpr quintptr kMacroRow = 0;  // the id of a macro's row; below it: the macro's number, from 1

std::size_t at(int row) { return static_cast<std::size_t>(row); }

}  // namespace

void ReplaceModel::clear() {
  beginResetModel();
  macros_.clear();
  outcomes_.clear();
  unjudged_.clear();
  endResetModel();
  emit tickedChanged();
}

void ReplaceModel::add(std::vector<FoundReplacement> found) {
  if (found.empty()) return;
  const int begin = rowCount();
  beginInsertRows({}, begin, begin + static_cast<int>(found.size()) - 1);
  for (FoundReplacement& one : found) {
    if (one.macro && !one.leftOut.isEmpty()) one.macro->ticked.assign(one.macro->ticked.size(), false);
    macros_.push_back(std::move(one));
  }
  outcomes_.resize(macros_.size());
  endInsertRows();
  emit tickedChanged();
}

void ReplaceModel::setOutcome(std::size_t macro, const QString& outcome) {
  outcomes_[macro] = outcome;
  const QModelIndex row = index(static_cast<int>(macro), 0);
  emit dataChanged(row, row.siblingAtColumn(kColumns - 1));
  if (const int count = rowCount(row); count > 0)
    emit dataChanged(index(0, 0, row), index(count - 1, kColumns - 1, row));
}

void ReplaceModel::judge(std::size_t macro, const std::vector<bool>& ticked, RetargetProposals judged) {
  RetargetedMacro& here = *macros_[macro].macro;
  if (here.ticked != ticked || judged.empty()) return;
  here.proposals = std::move(judged);
  const QModelIndex top = index(static_cast<int>(macro), 0);
  emit dataChanged(index(0, kFindings, top), index(rowCount(top) - 1, kFindings, top));
}

std::optional<std::size_t> ReplaceModel::macroOf(const QModelIndex& index) const {
  if (!index.isValid()) return std::nullopt;
  return index.internalId() == kMacroRow ? at(index.row()) : static_cast<std::size_t>(index.internalId() - 1);
}

const RetargetProposal* ReplaceModel::proposal(const QModelIndex& index) const {
  if (!index.isValid() || index.internalId() == kMacroRow) return nullptr;
  return &macros_[*macroOf(index)].macro->proposals[at(index.row())];
}

std::size_t ReplaceModel::ticked(std::size_t macro) const {
  return macros_[macro].macro && outcomes_[macro].isEmpty() ? macros_[macro].macro->tickedCount() : 0;
}

int ReplaceModel::ticked() const {
  std::size_t count = 0;
  for (std::size_t i = 0; i < macros_.size(); ++i) count += ticked(i);
  return static_cast<int>(count);
}

int ReplaceModel::impossible() const {
  std::ptrdiff_t count = 0;
  for (const FoundReplacement& one : macros_)
    if (one.macro)
      count += std::count_if(one.macro->proposals.begin(), one.macro->proposals.end(),
                             [](const RetargetProposal& proposal) { return !proposal.possible(); });
  return static_cast<int>(count);
}

QModelIndex ReplaceModel::index(int row, int column, const QModelIndex& parent) const {
  if (!hasIndex(row, column, parent)) return {};
  return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kMacroRow);
}

QModelIndex ReplaceModel::parent(const QModelIndex& child) const {
  if (!child.isValid() || child.internalId() == kMacroRow) return {};
  return createIndex(static_cast<int>(child.internalId()) - 1, 0, kMacroRow);
}

int ReplaceModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return static_cast<int>(macros_.size());
  if (parent.internalId() != kMacroRow || parent.column() != 0) return 0;
  const auto& macro = macros_[at(parent.row())].macro;
  return macro ? static_cast<int>(macro->proposals.size()) : 0;
}

int ReplaceModel::columnCount(const QModelIndex&) const { return kColumns; }

bool ReplaceModel::mayTick(const QModelIndex& index) const {
  const std::size_t number = *macroOf(index);
  const FoundReplacement& here = macros_[number];
  if (!here.macro || !here.leftOut.isEmpty() || !outcomes_[number].isEmpty()) return false;
  if (const RetargetProposal* one = proposal(index)) return one->possible();
  return std::any_of(here.macro->proposals.begin(), here.macro->proposals.end(),
                     [](const RetargetProposal& each) { return each.possible(); });
}

Qt::CheckState ReplaceModel::tick(const QModelIndex& index) const {
  const RetargetedMacro& macro = *macros_[*macroOf(index)].macro;
  if (proposal(index)) return macro.ticked[at(index.row())] ? Qt::Checked : Qt::Unchecked;
  const std::size_t count = macro.tickedCount();
  const auto possible =
      static_cast<std::size_t>(std::count_if(macro.proposals.begin(), macro.proposals.end(),
                                             [](const RetargetProposal& each) { return each.possible(); }));
  return count == 0 ? Qt::Unchecked : count == possible ? Qt::Checked : Qt::PartiallyChecked;
}

Qt::ItemFlags ReplaceModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractItemModel::flags(index);
  const bool tickable = index.isValid() && index.column() == kCommand && mayTick(index);
  return tickable ? flags | Qt::ItemIsUserCheckable : flags;
}

bool ReplaceModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid() || !mayTick(index)) return false;
  const bool on = value.toInt() != Qt::Unchecked;
  RetargetedMacro& macro = *macros_[*macroOf(index)].macro;
  if (proposal(index)) {
    macro.ticked[at(index.row())] = on;
  } else {
    for (std::size_t i = 0; i < macro.ticked.size(); ++i)
      macro.ticked[i] = on && macro.proposals[i].possible();
  }
  unjudged_.insert(*macroOf(index));
  const QModelIndex top = proposal(index) ? parent(index) : index.siblingAtColumn(0);
  emit dataChanged(top, top, {Qt::CheckStateRole});
  emit dataChanged(this->index(0, 0, top), this->index(rowCount(top) - 1, 0, top), {Qt::CheckStateRole});
  emit tickedChanged();
  return true;
}

QString ReplaceModel::macroText(std::size_t macro, int column) const {
  const FoundReplacement& here = macros_[macro];
  switch (column) {
    case kCommand:
      return shown(here.place.title());
    case kBefore:
      return shown(here.place.shown);
    case kAfter:
      return outcomes_[macro].isEmpty() ? here.leftOut : outcomes_[macro];
    default:
      return {};
  }
}

QString ReplaceModel::findingsText(const RetargetProposal& proposal, const QString& between) const {
  QStringList texts;
  const auto add = [&](const Findings& findings, const QString& pattern) {
    for (const Finding& finding : findings)
      texts << pattern.arg(findingText(finding), QString::number(finding.command + 1));
  };
  add(proposal.made, tr("makes in command %2: %1"));
  add(proposal.mended, tr("mends in command %2: %1"));
  return texts.join(between);
}

QVariant ReplaceModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const RetargetProposal* const one = proposal(index);
  const int column = index.column();
  if (role == Qt::CheckStateRole && column == kCommand && mayTick(index)) return tick(index);
  if (role == Qt::DecorationRole && column == kFindings && one && !one->made.empty()) {
    const auto worst =
        std::max_element(one->made.begin(), one->made.end(),
                         [](const Finding& a, const Finding& b) { return a.severity < b.severity; });
    return rowMarkIcon(markOf(worst->severity));
  }
  if (role == Qt::ToolTipRole && column == kFindings && one)
    return findingsText(*one, QStringLiteral("\n"))
        .toHtmlEscaped()
        .replace(QLatin1Char('\n'), QStringLiteral("<br>"));
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  QString text;
  if (!one) {
    text = macroText(*macroOf(index), column);
  } else if (column == kCommand) {
    text = QString::number(one->command + 1);
  } else if (column == kBefore) {
    text = shown(one->before);
  } else if (column == kAfter) {
    text = one->possible() ? shown(one->after) : tr("stays: %1").arg(shown(one->reason));
  } else {
    text = findingsText(*one, QStringLiteral("; "));
  }
  return role == Qt::ToolTipRole ? text.toHtmlEscaped() : text;
}

QVariant ReplaceModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kCommand:
      return tr("Command");
    case kBefore:
      return tr("Before");
    case kAfter:
      return tr("After");
    case kFindings:
      return tr("Findings, when what is ticked is changed");
    default:
      return {};
  }
}

}  // namespace tessaly
