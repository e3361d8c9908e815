#include "widgets/ListRows.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>

#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr std::size_t kUsualLetter = 4;  // as wide as most
constexpr std::size_t kWidestCell = 80 * kUsualLetter;

// About how wide a letter is drawn, byte by byte.
constexpr std::array<std::uint8_t, 256> kLetters = [] {
  std::array<std::uint8_t, 256> widths{};
  widths.fill(kUsualLetter);
  for (const char narrow : std::string_view("ijlI|!.,:;'`[]()ft r"))
    widths[static_cast<unsigned char>(narrow)] = 2;
  for (const char wide : std::string_view("mwMW@%")) widths[static_cast<unsigned char>(wide)] = 6;
  for (unsigned continued = 0x80; continued < 0xC0; ++continued) widths[continued] = 0;
  return widths;
}();

std::size_t width(std::string_view cell) {
  std::size_t sum = 0;
  for (const char letter : cell) sum += kLetters[static_cast<unsigned char>(letter)];
  return sum;
}

}  // namespace

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

void ListRows::measure(const std::string& text) const {
  std::string_view rest = text;
  for (std::size_t column = 0;; ++column) {
    if (column == columns_.size()) columns_.emplace_back();
    const std::size_t tab = rest.find('\t');
    const std::string_view cell = rest.substr(0, tab);
    const bool ends = tab == rest.npos;
    std::string& widest = ends ? columns_[column].last : columns_[column].inner;
    if ((ends || width(cell) <= kWidestCell) && width(cell) > width(widest)) widest = cell;
    if (ends) return;
    rest.remove_prefix(tab + 1);
  }
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
  forgetWidths();
  for (const ListRow& row : rows_) measure(row.text);
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
