#include "app/CommandListModel.h"

#include <algorithm>
#include <utility>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr std::size_t kFirstLines = 100;      // made at once: what may be seen, and a first idea of the width
constexpr std::size_t kLinesMeanwhile = 500;  // made in one go while the program has nothing else to do

}  // namespace

CommandListModel::CommandListModel(QObject* parent) : ListRows(parent) {
  connect(&meanwhile_, &QTimer::timeout, this, &CommandListModel::makeLinesMeanwhile);
}

void CommandListModel::showMacro(const std::string& of, CommandLines lines) {
  const std::size_t count = lines.commands->size();
  show(of, count, [&] {
    lines_ = std::move(lines);
    made_.assign(count, false);
    rows_.assign(count, {});
    for (std::size_t row = 0; row < count; ++row) rows_[row].number = static_cast<int>(row);
    for (; nextLine_ < std::min(count, kFirstLines); ++nextLine_) makeLine(nextLine_);
  });
  setEnabled(true);
  if (nextLine_ < count) meanwhile_.start();
}

void CommandListModel::showLines(const std::string& of, std::vector<std::string> lines) {
  show(of, lines.size(), [&] {
    made_.assign(lines.size(), true);
    rows_.clear();
    for (std::string& line : lines) {
      const auto row = static_cast<int>(rows_.size());
      measure(row, line);
      rows_.push_back({std::move(line), row});
    }
    nextLine_ = rows_.size();
  });
  setEnabled(true);
}

void CommandListModel::showNotice(const std::string& of, const std::string& text) {
  showLines(of, {text});
  setEnabled(false);
}

void CommandListModel::clear() { showLines({}, {}); }

// `fill` leaves `count` rows. A row of the same macro keeps its position.
void CommandListModel::show(const std::string& of, std::size_t count, const std::function<void()>& fill) {
  const auto refill = [&] {
    meanwhile_.stop();
    lines_ = {};
    nextLine_ = 0;
    forgetLengths();
    fill();
    shownLongest_ = longestRow();
  };
  if (of == of_ && !of.empty()) {
    changeLayout(refill, [count](int row) { return static_cast<std::size_t>(row) < count ? row : -1; });
  } else {
    beginResetModel();
    refill();
    endResetModel();
    of_ = of;
  }
}

void CommandListModel::makeLine(std::size_t row) const {
  if (made_[row]) return;
  made_[row] = true;
  rows_[row].text = lines_.line((*lines_.commands)[row], lines_.options,
                                row < lines_.updated.size() && lines_.updated[row]);
  measure(static_cast<int>(row), rows_[row].text);
}

void CommandListModel::makeLinesMeanwhile() {
  const std::size_t end = std::min(rows_.size(), nextLine_ + kLinesMeanwhile);
  for (; nextLine_ < end; ++nextLine_) makeLine(nextLine_);
  if (nextLine_ < rows_.size()) return;
  meanwhile_.stop();
  if (std::exchange(shownLongest_, longestRow()) != longestRow()) emit widened();
}

const ListRow* CommandListModel::row(int index) const {
  if (index < 0 || index >= rowCount()) return nullptr;
  const auto at = static_cast<std::size_t>(index);
  makeLine(at);
  return &rows_[at];
}

void CommandListModel::setMarks(std::map<int, CommandMark> marks) {
  if (marks.empty() && marks_.empty()) return;
  marks_ = std::move(marks);
  emit marked();
}

QVariant CommandListModel::data(const QModelIndex& index, int role) const {
  const bool describes = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
  if (role != kRowMarkRole && !describes) return ListRows::data(index, role);
  const auto found = marks_.find(index.row());
  if (found == marks_.end()) return ListRows::data(index, role);
  if (!describes) return static_cast<int>(found->second.mark);
  const QString text = shownLines(found->second.text);
  if (role == Qt::AccessibleDescriptionRole) return text;
  return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

Qt::ItemFlags CommandListModel::flags(const QModelIndex& index) const {
  return index.isValid() ? ListRows::flags(index) | Qt::ItemIsDragEnabled : ListRows::flags(index);
}

int CommandListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

}  // namespace tessaly
