#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <vector>

#include "review/BatchPlaces.h"
#include "review/MacroShelf.h"

namespace tessaly {

// A number of two workplaces that stand beside each other.
struct WorkplaceRow {
  enum class State {
    kSame,     // the same bytes
    kRenamed,  // the same bytes but for the value of the macro's name
    kDifferent,
    kOnlyLeft,
    kOnlyRight,
    kUnreadable  // of one side at least it is not known what it holds; `trouble` tells why
  };
  MacroNumber number;
  State state;
  std::string left, right;    // names, UTF-8; empty where there is no macro
  HeldContent leftHeld = {};  // what was read there; not of rows that are the same
  HeldContent rightHeld = {};
  std::string trouble = {};
};

// The macros of one workplace beside those of another, wherever they lie. Blocking, on a thread of its own;
// `cancel` from another one.
class WorkplaceComparison {
 public:
  // What has been read so far. `all` is the count of rows that there will be.
  using Told = std::function<void(const WorkplaceRow& row, std::size_t all)>;

  // Observes both; they may be the same.
  WorkplaceComparison(MacroShelf& left, MacroShelf& right) : left_(left), right_(right) {}

  // A row for each number that either side has, in their order, told on this thread while it reads. Not done
  // when a side cannot be listed, or with kCancelled.
  Outcome run(const Told& told);
  // Both shelves take nothing more.
  void cancel();

 private:
  MacroShelf& left_;
  MacroShelf& right_;
  std::atomic<bool> cancelled_{false};
};

// Whether two macros differ in the value of their name alone.
[[nodiscard]] bool differInNameOnly(std::string_view left, std::string_view right);

}  // namespace tessaly
