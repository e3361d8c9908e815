#include "windows/ScopeBox.h"

#include <algorithm>

namespace tessaly {

void ScopeBox::setSource(std::function<std::vector<ReviewScope>()> source) {
  source_ = std::move(source);
  refresh();
}

void ScopeBox::choose(ReviewScope::Kind kind) {
  refresh();
  if (const int row = findData(static_cast<int>(kind)); row >= 0) setCurrentIndex(row);
}

std::optional<ReviewScope> ScopeBox::current() {
  refresh();
  const int row = currentIndex();
  return row < 0 ? std::nullopt : std::optional(scopes_[static_cast<std::size_t>(row)]);
}

void ScopeBox::showPopup() {
  refresh();
  ChoiceBox::showPopup();
}

void ScopeBox::refresh() {
  const QVariant kind = currentData();
  scopes_ = source_();
  clear();
  for (const ReviewScope& scope : scopes_) addItem(scope.title, static_cast<int>(scope.kind));
  setCurrentIndex(std::max(count() > 0 ? 0 : -1, findData(kind)));
}

}  // namespace tessaly
