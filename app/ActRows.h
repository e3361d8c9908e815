#pragma once

#include <utility>

#include "app/Act.h"

// The parts of the table of acts.
namespace tessaly {

// The acts of a menu, in the making.
class ActList {
 public:
  explicit ActList(ActMenu menu) : menu_(menu) {}

  // One that a control of the panes does, and has the name of.
  Act& ofPane(const char* name, const char* text, const QKeySequence& keys, ActNeeds needs,
              const char* words = "") {
    Act& act = ofWindow(name, text, keys, needs, nullptr, words);
    act.keysOf = ActKeys::kPane;
    return act;
  }
  Act& ofWindow(const char* name, const char* text, const QKeySequence& keys, ActNeeds needs,
                void (*run)(const ActHands& hands, Pane pane), const char* words = "") {
    return acts_.emplace_back(Act{menu_, name, text, keys, needs, run, words, std::exchange(begins_, false)});
  }
  // What follows is set apart from what was before.
  void beginPart() { begins_ = true; }

  [[nodiscard]] std::vector<Act> take() { return std::move(acts_); }

 private:
  ActMenu menu_;
  bool begins_ = false;
  std::vector<Act> acts_;
};

[[nodiscard]] std::vector<Act> viewActs();
[[nodiscard]] std::vector<Act> siteActs();
[[nodiscard]] std::vector<Act> helpActs();

}  // namespace tessaly
