#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>

namespace tessaly {

// One row: the text as bytes (shown as UTF-8, or as Windows-1252 when it is none; a tab starts the next
// column) and the number it stands for.
struct ListRow {
  std::string text;
  int number = -1;
  bool choosable = true;  // false for headings and blank rows

  friend bool operator==(const ListRow&, const ListRow&) = default;
};

// What a column has to have room for, each the widest of its kind as far as the shapes of its letters tell.
struct ColumnCells {
  std::string inner;  // another cell follows in its row
  std::string last;   // ends its row

  friend bool operator==(const ColumnCells&, const ColumnCells&) = default;
};

// What a list shows. A model reset means another list, which begins at its top and has nothing chosen; a
// change of layout means the same list with other rows, which stays where it is. GUI thread.
class ListRows : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  [[nodiscard]] virtual const ListRow* row(int index) const = 0;  // null outside; valid until rows change
  // Whether the rows take clicks and keys; a notice in place of rows does not.
  [[nodiscard]] bool enabled() const { return enabled_; }
  // Column by column, of the rows that were made by now. A cell that is far too long for a column does not
  // count: its row runs over.
  [[nodiscard]] const std::vector<ColumnCells>& columns() const { return columns_; }

  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 signals:
  void enabledChanged();
  void widened();  // a row that was made later takes more room than those before

 protected:
  void setEnabled(bool enabled);
  // Forgets how wide the rows were, or takes one more into account.
  void forgetWidths() const { columns_.clear(); }
  void measure(const std::string& text) const;
  // Whoever holds on to a row, as a selection does, holds it after the change where `place` finds it; -1 for
  // a row that has gone.
  template <class Change, class Place>
  void changeLayout(Change change, Place place);

 private:
  bool enabled_ = true;
  mutable std::vector<ColumnCells> columns_;
};

// Rows that are given whole.
class ListBoxModel : public ListRows {
  Q_OBJECT

 public:
  using ListRows::ListRows;

  // `of` names what the rows are a list of, such as a folder: other rows of the same are the same list, in
  // which a row is known by its number, or by its text where it has none. Without a name every change of the
  // rows makes another list. The rows that are there already change nothing.
  void setRows(std::vector<ListRow> rows, bool enabled = true, std::string of = {});
  void clear(bool enabled = true) { setRows({}, enabled); }

  [[nodiscard]] const std::vector<ListRow>& rows() const { return rows_; }
  [[nodiscard]] int rowOfNumber(int number) const;  // -1 when no row has it
  [[nodiscard]] const ListRow* row(int index) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;

 private:
  void take(std::vector<ListRow> rows);
  [[nodiscard]] int rowLike(const ListRow& old) const;

  std::vector<ListRow> rows_;
  std::string of_;
};

template <class Change, class Place>
void ListRows::changeLayout(Change change, Place place) {
  emit layoutAboutToBeChanged();
  const QModelIndexList before = persistentIndexList();
  change();
  QModelIndexList after;
  for (const QModelIndex& index : before) after.append(this->index(place(index.row()), 0));
  changePersistentIndexList(before, after);
  emit layoutChanged();
}

}  // namespace tessaly
