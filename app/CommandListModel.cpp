#include "app/CommandListModel.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QColor>

#include "values/Destination.h"
#include "widgets/DialogText.h"
#include "widgets/ListBoxDelegate.h"

namespace tessaly {

namespace {

constexpr std::size_t kFirstLines = 100;      // made at once: what may be seen, and a first idea of the width
constexpr std::size_t kLinesMeanwhile = 500;  // made in one go while the program has nothing else to do

// Three to one against the ground of both palettes, one a destination; of any other, none.
constexpr std::array<QRgb, Destination::kCount> kDestinationColours{0xFF3D85C6, 0xFFC76A00, 0xFF3A9140,
                                                                    0xFFB44BB0, 0xFF7A7A7A};

std::string destinationName(std::string_view destination, std::string_view workplace) {
  const std::string label = destinationLabel(destination, workplace);
  return label.substr(0, label.rfind(" - "));
}

}  // namespace

QVariant destinationColour(std::string_view destination) {
  const auto known = Destination::named(destination);
  return known ? QColor(kDestinationColours[static_cast<std::size_t>(known->index())]) : QVariant();
}

CommandListModel::CommandListModel(QObject* parent) : ListRows(parent) {
  connect(&meanwhile_, &QTimer::timeout, this, &CommandListModel::makeLinesMeanwhile);
}

void CommandListModel::showMacro(const std::string& of, ShownLines lines) {
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
      measure(line);
      rows_.push_back({std::move(line), static_cast<int>(rows_.size())});
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
    forgetWidths();
    fill();
    shownColumns_ = columns();
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
  measure(rows_[row].text);
}

void CommandListModel::makeLinesMeanwhile() {
  const std::size_t end = std::min(rows_.size(), nextLine_ + kLinesMeanwhile);
  for (; nextLine_ < end; ++nextLine_) makeLine(nextLine_);
  if (nextLine_ < rows_.size()) return;
  meanwhile_.stop();
  if (std::exchange(shownColumns_, columns()) != columns()) emit widened();
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

void CommandListModel::showDestinations(bool on) {
  if (std::exchange(destinations_, on) != on) emit marked();
}

// Of a command whose destination is to be seen.
const MacroCommand* CommandListModel::striped(int row) const {
  const bool holds = lines_.commands && row >= 0 && static_cast<std::size_t>(row) < lines_.commands->size();
  return destinations_ && holds ? &(*lines_.commands)[static_cast<std::size_t>(row)] : nullptr;
}

// What there is to say of a row beside its line; empty for nothing.
QString CommandListModel::about(int row) const {
  const auto found = marks_.find(row);
  QString text = found == marks_.end() ? QString() : shownLines(found->second.text);
  if (const MacroCommand* command = striped(row); command != nullptr) {
    if (!text.isEmpty()) text += QLatin1Char('\n');
    text += tr("goes to %1").arg(shown(destinationName(command->destination(), command->workplace)));
  }
  return text;
}

QVariant CommandListModel::data(const QModelIndex& index, int role) const {
  if (role == kRowMarkRole) {
    const auto found = marks_.find(index.row());
    return found == marks_.end() ? QVariant() : static_cast<int>(found->second.mark);
  }
  if (role == kRowStripeRole) {
    const MacroCommand* command = striped(index.row());
    return command == nullptr ? QVariant() : destinationColour(command->destination());
  }
  const bool describes = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
  const QString text = describes ? about(index.row()) : QString();
  if (text.isEmpty()) return ListRows::data(index, role);
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
