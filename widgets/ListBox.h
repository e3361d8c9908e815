#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>
#include <QTimer>

namespace tessaly {

// One row: the text as bytes (shown as UTF-8, or as Windows-1252 when it is none) and the number it stands
// for.
struct ListRow {
  std::string text;
  int number = -1;
  bool choosable = true;  // false for headings and blank rows

  friend bool operator==(const ListRow&, const ListRow&) = default;
};

// The rows of a list box. `setRows`, `rows` and `setEnabled` may be called from any thread and never wait for
// the GUI thread: off it, the rows are kept beside the shown ones and taken over by one queued step, however
// many calls come before it runs. On the GUI thread the views follow at once.
class ListBoxModel : public QAbstractListModel {
  Q_OBJECT

 public:
  explicit ListBoxModel(QObject* parent = nullptr);

  void setRows(std::vector<ListRow> rows, bool enabled = true);
  // Rows 0 to count - 1, each with its own number, whose texts are made when they are first needed; those
  // that nobody looks at are made little by little while the program has nothing else to do. GUI thread only,
  // as is `rows` while they are shown.
  void setLines(int count, std::function<std::string(int row)> line);
  void clear(bool enabled = true) { setRows({}, enabled); }
  [[nodiscard]] std::vector<ListRow> rows() const;  // the latest, shown or still to be shown

  // GUI thread only from here on.
  [[nodiscard]] const ListRow* row(int index) const;  // null outside; the shown rows
  [[nodiscard]] int rowOfNumber(int number) const;    // -1 when no row has it
  [[nodiscard]] bool enabled() const { return shownEnabled_; }
  // The row whose text takes the most room, a tab counted as a column; -1 when empty.
  [[nodiscard]] int longestRow() const { return longest_; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  // Rows left by a call from another thread are taken over now rather than at the next turn of the event
  // loop.
  void takeOver();

 signals:
  void rowsChanged();  // after the shown rows or the enabled flag changed
  void widened();      // a row that was made later takes more room than those before

 private:
  mutable std::mutex mutex_;
  std::vector<ListRow> latest_;  // guarded by mutex_
  bool latestEnabled_ = true;    // guarded by mutex_
  bool pending_ = false;         // guarded by mutex_

  // GUI thread; a text that is made later is none that another thread may look at.
  void measure(int row) const;
  void makeLine(int row) const;
  void makeLinesMeanwhile();

  mutable std::vector<ListRow> shown_;
  bool shownEnabled_ = true;
  mutable int longest_ = -1;
  mutable std::size_t longestRoom_ = 0;
  std::function<std::string(int)> line_;  // empty while the rows were given whole
  mutable std::vector<bool> made_;        // a flag a row, for lines
  int nextLine_ = 0;                      // lines before it are made
  int measuredLongest_ = -1;              // as the view knows it
  QTimer meanwhile_;
};

// Draws rows of one height, with tab stops given in dialog units (a quarter of the average character width).
class ListBoxDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void setTabStops(std::vector<int> dialogUnits) { tabStops_ = std::move(dialogUnits); }
  // Pixels that a row's text needs.
  [[nodiscard]] int textWidth(const QString& text, const QFontMetrics& metrics) const;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  // Calls `cell` with each tab-separated cell and its offset in pixels; returns where the last one ends.
  int layOut(const QString& text, const QFontMetrics& metrics,
             const std::function<void(int x, const QString& text)>& cell) const;

  std::vector<int> tabStops_;
};

class ListFinder;

// A single-selection list box over a ListBoxModel of its own. Ctrl+F finds in it. With an elide mode
// (QAbstractItemView) long rows are cut to the width of the list and told by a tool tip; without one the list
// scrolls sideways.
class ListBox : public QListView {
  Q_OBJECT

 public:
  explicit ListBox(QWidget* parent = nullptr);

  [[nodiscard]] ListBoxModel& rows() { return model_; }
  [[nodiscard]] int selectedRow() const;  // -1 when none
  [[nodiscard]] const ListRow* selected() const;

  // Selects without telling `chosen`; -1 selects nothing.
  void selectRow(int row);
  // The list takes clicks and keys while it is allowed to and its rows are enabled.
  void setAllowed(bool allowed);
  // Where the keyboard goes on from, without selecting; the last row when the list has become shorter.
  void makeCurrent(int row);
  // Small, so that layouts decide: a list takes the room that it is given.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  // Columns start at these dialog units; the list gets a horizontal scroll bar when its rows are wider.
  void setTabStops(std::vector<int> dialogUnits);
  // Shown in grey while the list has no rows.
  void setPlaceholder(const QString& text);
  // The row that the finder stands on; it is marked without being selected.
  [[nodiscard]] QModelIndex found() const;

 signals:
  // The user chose a row, also the one that was selected already; -1 when the selection was cleared.
  void chosen(int row);

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void paintEvent(QPaintEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void followModel();
  void keepPlace();
  [[nodiscard]] QSize sizeOfRows(int rows) const;

  ListBoxModel model_;
  ListBoxDelegate* delegate_;
  ListFinder* finder_;
  QString placeholder_;
  int place_ = 0;  // of the scroll bar before the rows change
  bool allowed_ = true;
  bool quiet_ = false;           // a selection by program is under way
  bool changedByPress_ = false;  // the press that is being released has changed the selection
};

}  // namespace tessaly
