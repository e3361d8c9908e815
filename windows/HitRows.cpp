#include "windows/HitRows.h"

#include <algorithm>

namespace tessaly {

namespace {

std::string heading(const FoundHits& found) {
  const QString title = QString::fromStdString(found.place.title());
  const QString where = QString::fromStdString(found.place.shown);
  const int count = static_cast<int>(found.hits.size());
  const QString what = found.unread.isEmpty() ? HitRows::tr("%n commands", nullptr, count)
                                              : HitRows::tr("could not be read: %1").arg(found.unread);
  const QString whole = where.isEmpty() || where == title
                            ? HitRows::tr("%1: %2").arg(title, what)
                            : HitRows::tr("%1 (%2): %3").arg(title, where, what);
  return whole.toStdString();
}

}  // namespace

void HitRows::clear() {
  beginResetModel();
  rows_.clear();
  places_.clear();
  hits_ = macros_ = unread_ = 0;
  forgetWidths();
  endResetModel();
}

void HitRows::add(std::vector<FoundHits> found) {
  int more = 0;
  for (const FoundHits& one : found) more += 1 + static_cast<int>(one.hits.size());
  if (more == 0) return;
  beginInsertRows({}, rowCount(), rowCount() + more - 1);
  const auto add = [this](ListRow row, Place place) {
    measure(row.text);
    rows_.push_back(std::move(row));
    places_.push_back(std::move(place));
  };
  for (FoundHits& one : found) {
    hits_ += static_cast<int>(one.hits.size());
    (one.unread.isEmpty() ? macros_ : unread_) += 1;
    const std::string text = heading(one);
    const auto place = std::make_shared<const ReviewedPlace>(std::move(one.place));
    add({text, -1, false}, {place, -1});
    for (SearchHit& hit : one.hits)
      add({"    " + std::to_string(hit.command + 1) + '\t' + hit.line}, {place, hit.command});
  }
  endInsertRows();
}

const HitRows::Place* HitRows::place(int row) const {
  return row < 0 || row >= rowCount() ? nullptr : &places_[static_cast<std::size_t>(row)];
}

int HitRows::firstHit() const {
  const auto found =
      std::find_if(rows_.begin(), rows_.end(), [](const ListRow& row) { return row.choosable; });
  return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

const ListRow* HitRows::row(int index) const {
  return index < 0 || index >= rowCount() ? nullptr : &rows_[static_cast<std::size_t>(index)];
}

int HitRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

}  // namespace tessaly
