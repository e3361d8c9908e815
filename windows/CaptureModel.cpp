#include "windows/CaptureModel.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr std::chrono::milliseconds kBetweenRefreshes{100};  // while answers come

}  // namespace

CaptureModel::CaptureModel(const LineContext& lines, const LineOptions& options)
    : lines_(lines), options_(options) {
  burst_.setSingleShot(true);
  burst_.setInterval(kBetweenRefreshes);
  connect(&burst_, &QTimer::timeout, this, [this] {
    if (!refreshDue_) return;
    burst_.start();
    refresh();
  });
}

void CaptureModel::begin(Capture capture) {
  beginResetModel();
  capture_ = std::move(capture);
  shown_ = wanted();
  endResetModel();
  emit changed();
}

void CaptureModel::setOnlyDifferences(bool only) {
  onlyDifferences_ = only;
  refresh();
}

std::vector<std::size_t> CaptureModel::wanted() const {
  std::vector<std::size_t> rows;
  rows.reserve(capture_.rows().size());
  for (std::size_t row = 0; row < capture_.rows().size(); ++row)
    if (!onlyDifferences_ || capture_.rows()[row].state == Capture::State::kDiffers) rows.push_back(row);
  return rows;
}

bool CaptureModel::take(const std::vector<PanelAnswer>& answers) {
  bool any = false;
  for (const PanelAnswer& answer : answers) any = capture_.answer(answer.name, answer.value) || any;
  refreshDue_ = any || refreshDue_;
  if (burst_.isActive() && !capture_.complete()) return any;
  burst_.start();
  refresh();
  return any;
}

void CaptureModel::refresh() {
  refreshDue_ = false;
  std::vector<std::size_t> rows = wanted();
  if (rows != shown_) {
    emit rowsAboutToChange();
    beginResetModel();
    shown_ = std::move(rows);
    endResetModel();
  } else if (!shown_.empty()) {
    emit dataChanged(index(0, 0), index(rowCount() - 1, kColumns - 1));
  }
  emit changed();
}

int CaptureModel::placeOf(std::size_t captured) const {
  const auto place = std::lower_bound(shown_.begin(), shown_.end(), captured);
  return place == shown_.end() ? rowCount() - 1 : static_cast<int>(place - shown_.begin());
}

int CaptureModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int CaptureModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

Qt::ItemFlags CaptureModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
  const bool tickable =
      index.column() == kStep && capture_.rows()[captured(index.row())].state == Capture::State::kDiffers;
  return tickable ? flags | Qt::ItemIsUserCheckable : flags;
}

bool CaptureModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid() || index.column() != kStep) return false;
  if (!capture_.tick(captured(index.row()), value.toInt() != Qt::Unchecked)) return false;
  emit dataChanged(index, index, {Qt::CheckStateRole});
  emit changed();
  return true;
}

QVariant CaptureModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const std::size_t number = captured(index.row());
  const Capture::Row& row = capture_.rows()[number];
  if (role == Qt::CheckStateRole && (flags(index) & Qt::ItemIsUserCheckable) != 0)
    return row.ticked ? Qt::Checked : Qt::Unchecked;
  if (role == Qt::DisplayRole) return text(number, index.column());
  // Beside rows without a box.
  if (role == Qt::TextAlignmentRole && index.column() == kStep)
    return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
  if (role == Qt::ToolTipRole) return text(number, index.column()).toHtmlEscaped();
  return {};
}

QString CaptureModel::text(std::size_t row, int column) const {
  const Capture::Row& here = capture_.rows()[row];
  switch (column) {
    case kStep:
      return QString::number(here.command + 1);
    case kCommand:
      return commandText(row);
    case kOld:
      return here.parameter < 0 ? QString() : valueText(row, here.old);
    case kNew:
      return here.now ? valueText(row, *here.now) : QString();
    case kState:
      return stateText(here);
    default:
      return {};
  }
}

// With the value that the macro has by now.
QString CaptureModel::commandText(std::size_t row) const {
  const Capture::Row& here = capture_.rows()[row];
  MacroCommand command = capture_.command(row);
  if (here.parameter >= 0) command.parameters[static_cast<std::size_t>(here.parameter)].value = here.old;
  return shown(commandLine(command, options_, lines_));
}

QString CaptureModel::valueText(std::size_t row, const std::string& stored) const {
  const MacroCommand& command = capture_.command(row);
  const auto function = lines_.dictionary.find(command.functionName());
  if (!function || options_.raw) return shown(stored);
  const auto parameter = static_cast<std::size_t>(capture_.rows()[row].parameter);
  return shown(shownValue(*function, command.parameters[parameter].name, stored, lines_.dictionary));
}

QString CaptureModel::stateText(const Capture::Row& row) {
  switch (row.state) {
    case Capture::State::kWaiting:
      return tr("waiting");
    case Capture::State::kMissing:
      return tr("did not come");
    case Capture::State::kSame:
      return tr("same");
    case Capture::State::kDiffers:
      return tr("differs");
    case Capture::State::kChanged:
      return tr("changed in the macro meanwhile");
    case Capture::State::kCannot:
      break;
  }
  switch (row.obstacle) {
    case Capture::Obstacle::kNone:
      break;
    case Capture::Obstacle::kClassic:
      return tr("cannot be asked: a classic command");
    case Capture::Obstacle::kNoDestination:
      return tr("cannot be asked: no destination");
    case Capture::Obstacle::kNoValue:
      return tr("cannot be asked: the function has no value");
    case Capture::Obstacle::kOtherFunction:
      return tr("cannot be asked: the value is that of another function");
    case Capture::Obstacle::kNothingToFill:
      return tr("cannot be asked: the command has no value");
  }
  return {};
}

QVariant CaptureModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kStep:
      return tr("Step");
    case kCommand:
      return tr("Command");
    case kOld:
      return tr("In the macro");
    case kNew:
      return tr("On the panel");
    case kState:
      return tr("State");
    default:
      return {};
  }
}

}  // namespace tessaly
