#include "windows/CompareModel.h"

#include <algorithm>

#include "review/LineChanges.h"
#include "widgets/DialogText.h"
#include "windows/CompareSide.h"

namespace tessaly {

namespace {

// Of UTF-8 into parts of the text that it becomes.
std::vector<TextPart> partsIn(const std::string& line, const std::vector<LinePart>& parts) {
  const auto length = [&](std::size_t bytes) {
    return QString::fromUtf8(line.data(), static_cast<qsizetype>(bytes)).size();
  };
  std::vector<TextPart> result;
  for (const LinePart& part : parts) result.push_back({length(part.begin), length(part.end)});
  return result;
}

}  // namespace

CompareModel::CompareModel(const LineContext& lines, const LineOptions& options, QObject* parent)
    : QAbstractTableModel(parent), context_(lines), options_(options) {}

void CompareModel::show(std::shared_ptr<const MacroDiff> diff, std::array<QString, 2> names) {
  beginResetModel();
  diff_ = std::move(diff);
  texts_.setNames(std::move(names));
  lines_.clear();
  fillRows();
  endResetModel();
}

void CompareModel::setOptions(const LineOptions& options) {
  options_ = options;
  lines_.clear();
  if (!rows_.empty()) emit dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
}

void CompareModel::setOnlyDifferences(bool only) {
  beginResetModel();
  onlyDifferences_ = only;
  fillRows();
  endResetModel();
}

void CompareModel::setRefusals(std::array<QString, 2> refusals) {
  refusals_ = std::move(refusals);
  if (!rows_.empty()) emit dataChanged(index(0, kTakeA), index(rowCount() - 1, kTakeB));
}

void CompareModel::fillRows() {
  rows_.clear();
  if (!diff_) return;
  const std::vector<DiffRow>& all = diff_->rows();
  for (std::size_t i = 0; i < all.size(); ++i)
    if (!onlyDifferences_ || all[i].differs()) rows_.push_back(i);
}

int CompareModel::rowAt(std::size_t diffRow) const {
  const auto found = std::lower_bound(rows_.begin(), rows_.end(), diffRow);
  return static_cast<int>(std::min<std::ptrdiff_t>(found - rows_.begin(), std::ssize(rows_) - 1));
}

const DiffRange* CompareModel::differenceOf(std::size_t diffRow) const {
  if (!diff_) return nullptr;
  const std::vector<DiffRange>& ranges = diff_->differences();
  const auto found =
      std::upper_bound(ranges.begin(), ranges.end(), diffRow,
                       [](std::size_t row, const DiffRange& range) { return row < range.end; });
  return found != ranges.end() && found->begin <= diffRow ? &*found : nullptr;
}

bool CompareModel::begins(int row) const {
  const DiffRange* range = differenceOf(diffRow(row));
  return range != nullptr && range->begin == diffRow(row);
}

const CompareModel::Lines& CompareModel::lines(int row) const {
  const auto [made, isNew] = lines_.try_emplace(diffRow(row));
  Lines& lines = made->second;
  if (!isNew) return lines;
  const DiffRow& here = at(row);
  std::array<std::string, 2> utf8;
  for (const Side side : {Side::kA, Side::kB}) {
    if (!here.shows(side)) continue;
    const auto number = static_cast<std::size_t>(side == Side::kA ? here.a : here.b);
    utf8[sideIndex(side)] = visibleUtf8(commandLine(diff_->of(side).commands()[number], options_, context_));
    lines.text[sideIndex(side)] = QString::fromStdString(utf8[sideIndex(side)]);
  }
  if (!here.differs() || !here.shows(Side::kA) || !here.shows(Side::kB)) return lines;
  const LineChanges changes = changesInside(utf8[0], utf8[1]);
  lines.marks = {partsIn(utf8[0], changes.a), partsIn(utf8[1], changes.b)};
  return lines;
}

const std::vector<TextPart>& CompareModel::marks(int row, Side side) const {
  return lines(row).marks[sideIndex(side)];
}

int CompareModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int CompareModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QString CompareModel::text(int row, int column) const {
  const DiffRow& here = at(row);
  switch (column) {
    case kNumberA:
      return here.shows(Side::kA) ? QString::number(here.a + 1) : QString();
    case kNumberB:
      return here.shows(Side::kB) ? QString::number(here.b + 1) : QString();
    case kLineA:
      return lines(row).text[0];
    case kLineB:
      return lines(row).text[1];
    case kSign:
      return texts_.sign(*diff_, here);
    default:
      return {};
  }
}

// A cell by itself: a screen reader reads one at a time.
QString CompareModel::spoken(int row, int column) const {
  const DiffRow& here = at(row);
  const QString sign = texts_.sign(*diff_, here);
  switch (column) {
    case kLineA:
    case kLineB: {
      const QString& line = lines(row).text[column == kLineA ? 0 : 1];
      if (line.isEmpty() && here.differs()) return tr("%1; nothing here").arg(sign);
      return sign.isEmpty() ? line : tr("%1: %2").arg(sign, line);
    }
    case kTakeA:
    case kTakeB:
      return begins(row) ? tr("take into %1").arg(texts_.name(column == kTakeA ? Side::kA : Side::kB))
                         : QString();
    case kSign:
      return sign.isEmpty()
                 ? tr("alike")
                 : (QStringList(sign) + CompareTexts::changes(*diff_, here)).join(QLatin1String("; "));
    default:
      return text(row, column);
  }
}

QString CompareModel::toolTip(int row, int column) const {
  if (column == kTakeA || column == kTakeB) {
    if (!begins(row)) return {};
    const Side side = column == kTakeA ? Side::kA : Side::kB;
    if (refuses(side)) return refusals_[sideIndex(side)];
    return (side == Side::kA ? tr("Take this difference into %1; of what is selected: Alt+Left")
                             : tr("Take this difference into %1; of what is selected: Alt+Right"))
        .arg(texts_.name(side));
  }
  if (column == kSign) return CompareTexts::changes(*diff_, at(row)).join(QLatin1Char('\n'));
  return text(row, column);
}

QVariant CompareModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !diff_) return {};
  switch (role) {
    case Qt::DisplayRole:
      return text(index.row(), index.column());
    case Qt::AccessibleTextRole:
      return spoken(index.row(), index.column());
    case Qt::ToolTipRole: {
      const QString tip = toolTip(index.row(), index.column());
      return tip.isEmpty()
                 ? QVariant()
                 : QVariant(
                       QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(tip.toHtmlEscaped()));
    }
    case Qt::TextAlignmentRole:
      if (index.column() == kNumberA || index.column() == kNumberB)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
      return index.column() == kSign ? QVariant(Qt::AlignCenter) : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant CompareModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kNumberA:
    case kNumberB:
      return tr("number");
    case kLineA:
      return texts_.name(Side::kA);
    case kLineB:
      return texts_.name(Side::kB);
    case kSign:
      return tr("difference");
    default:
      return {};
  }
}

}  // namespace tessaly
