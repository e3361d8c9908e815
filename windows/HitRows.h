#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QString>

#include "review/MacroSearch.h"
#include "widgets/ListRows.h"
#include "windows/ReviewScope.h"

namespace tessaly {

// What was found in one macro, or why it could not be read.
struct FoundHits {
  ReviewedPlace place;
  std::vector<SearchHit> hits;
  QString unread;
};

// The rows of the search: a heading a macro, and below it a row a command. Rows come at the end only.
class HitRows : public ListRows {
  Q_DECLARE_TR_FUNCTIONS(HitRows)

 public:
  using ListRows::ListRows;

  void clear();
  void add(std::vector<FoundHits> found);

  struct Place {
    std::shared_ptr<const ReviewedPlace> place;
    int command = -1;  // from 0; -1 for a heading
  };
  [[nodiscard]] const Place* place(int row) const;  // null outside
  [[nodiscard]] int hits() const { return hits_; }
  [[nodiscard]] int macros() const { return macros_; }
  [[nodiscard]] int unread() const { return unread_; }
  // The first row that can be chosen; -1 without one.
  [[nodiscard]] int firstHit() const;

  [[nodiscard]] const ListRow* row(int index) const override;
  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;

 private:
  std::vector<ListRow> rows_;
  std::vector<Place> places_;  // of each row
  int hits_ = 0, macros_ = 0, unread_ = 0;
};

}  // namespace tessaly
