#include "widgets/ListRows.h"

#include <algorithm>
#include <utility>

#include "widgets/DialogText.h"

namespace tessaly {

Qt::ItemFlags ListRows::flags(const QModelIndex& index) const {
  const ListRow* shownRow = row(index.row());
  return shownRow != nullptr && shownRow->choosable ? QAbstractListModel::flags(index) : Qt::NoItemFlags;
}

QVariant ListRows::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const ListRow* shownRow = row(index.row());
  if (shownRow == nullptr) return {};
  const QString text = shown(shownRow->text);
  return role == Qt::DisplayRole ? text : text.toHtmlEscaped();
}

void ListRows::setEnabled(bool enabled) {
  if (std::exchange(enabled_, enabled) != enabled) emit enabledChanged();
}

void ListRows::forgetLengths() const {
  longest_ = -1;
  longestRoom_ = 0;
}

void ListRows::measure(int row, const std::string& text) const {
  constexpr std::size_t kColumn = 60;  // characters that a tab may stand for
  const auto tabs = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\t'));
  const std::size_t room = text.size() + kColumn * tabs;
  if (longest_ >= 0 && room <= longestRoom_) return;
  longest_ = row;
  longestRoom_ = room;
}

void ListBoxModel::setRows(std::vector<ListRow> rows, bool enabled, std::string of) {
  const bool same = of == of_;
  if (!same || rows != rows_) {
    if (same && !of.empty()) {
      const std::vector<ListRow> old = rows_;
      changeLayout([&] { take(std::move(rows)); },
                   [&](int row) { return rowLike(old[static_cast<std::size_t>(row)]); });
    } else {
      beginResetModel();
      take(std::move(rows));
      endResetModel();
    }
    of_ = std::move(of);
  }
  setEnabled(enabled);
}

void ListBoxModel::take(std::vector<ListRow> rows) {
  rows_ = std::move(rows);
  forgetLengths();
  for (int row = 0; row < rowCount(); ++row) measure(row, rows_[static_cast<std::size_t>(row)].text);
}

int ListBoxModel::rowLike(const ListRow& old) const {
  if (old.number >= 0) return rowOfNumber(old.number);
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [&old](const auto& row) { return row.text == old.text; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

int ListBoxModel::rowOfNumber(int number) const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [number](const auto& row) { return row.number == number; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

const ListRow* ListBoxModel::row(int index) const {
  return index < 0 || index >= rowCount() ? nullptr : &rows_[static_cast<std::size_t>(index)];
}

int ListBoxModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

}  // namespace tessaly
