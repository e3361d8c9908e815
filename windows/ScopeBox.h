#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "widgets/ChoiceBox.h"
#include "windows/ReviewScope.h"

namespace tessaly {

// What can be looked at just now: asked anew whenever somebody is about to choose. GUI thread.
class ScopeBox : public ChoiceBox {
 public:
  explicit ScopeBox(QWidget* parent = nullptr) : ChoiceBox(parent) {}

  void setSource(std::function<std::vector<ReviewScope>()> source);
  // Of that kind, or, where there is none now, the one that is chosen.
  void choose(ReviewScope::Kind kind);
  // As it is now; nothing when there is nothing to be looked at.
  [[nodiscard]] std::optional<ReviewScope> current();
  void showPopup() override;

 private:
  // The kind that is chosen stays so while there is one.
  void refresh();

  std::function<std::vector<ReviewScope>()> source_;
  std::vector<ReviewScope> scopes_;
};

}  // namespace tessaly
