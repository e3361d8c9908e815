#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ContentCheck.h"

namespace tessaly {

// What two contents differ by, without their common beginning and end.
struct ByteChange {
  std::size_t at = 0;  // bytes from the front
  std::string removed, added;

  friend bool operator==(const ByteChange&, const ByteChange&) = default;
};

[[nodiscard]] ByteChange byteChange(std::string_view before, std::string_view after);

// One change of a working copy, whatever made it. Snapshots and no inverse commands: a value that is set may
// run on into the next command, and what no command shows lies between them.
struct EditStep {
  std::string name;                                // for people, UTF-8: "delete 3 commands"
  std::vector<int> selectedBefore, selectedAfter;  // numbers of commands, from 0
  ByteChange change;
  ContentCheck after;  // of the bytes that it leads to

  friend bool operator==(const EditStep&, const EditStep&) = default;
};

// The steps that have led a working copy to its bytes, and those that were undone. It holds no whole content:
// whoever has the present bytes gets those of any position back, to the byte. Position 0 lies before the
// oldest step that is kept. Bounded; the oldest steps go. One thread.
class EditHistory {
 public:
  static constexpr std::size_t kMostSteps = 10'000;
  static constexpr std::size_t kMostBytes = std::size_t{64} * 1024 * 1024;  // as weighed by `weight`

  // `first` is of the bytes that everything begins with; `cut` when older steps have gone.
  explicit EditHistory(ContentCheck first = {}, bool cut = false) : first_(first), cut_(cut) {}

  [[nodiscard]] std::size_t size() const { return steps_.size(); }
  [[nodiscard]] std::size_t position() const { return position_; }
  [[nodiscard]] bool canUndo() const { return position_ > 0; }
  [[nodiscard]] bool canRedo() const { return position_ < size(); }
  [[nodiscard]] bool cut() const { return cut_; }
  // Step `number` leads from position `number` to the next.
  [[nodiscard]] const EditStep& step(std::size_t number) const { return steps_[number]; }
  [[nodiscard]] ContentCheck checkAt(std::size_t position) const {
    return position == 0 ? first_ : steps_[position - 1].after;
  }
  [[nodiscard]] ContentCheck check() const { return checkAt(position_); }
  // What is to be selected after the way from the present position to that one.
  [[nodiscard]] std::vector<int> selectedAt(std::size_t position) const;
  // The bytes of a position when `now` are those of the present one; nothing when they are not.
  [[nodiscard]] std::optional<std::string> bytesAt(std::size_t position, std::string now) const;

  // Behind the present position; what was undone goes.
  void add(EditStep step);
  void moveTo(std::size_t position) { position_ = position; }  // at most size()

  // What the macro's place holds, as far as it is known. Every position with these bytes is a saved one.
  void setSaved(std::optional<ContentCheck> saved) { saved_ = saved; }
  [[nodiscard]] const std::optional<ContentCheck>& saved() const { return saved_; }
  [[nodiscard]] bool savedAt(std::size_t position) const { return saved_ == checkAt(position); }

  // All steps together, in bytes.
  [[nodiscard]] std::size_t weight() const { return weight_; }
  // At least what it takes in memory beside its fixed size, and in a file.
  [[nodiscard]] static std::size_t weight(const EditStep& step);

 private:
  void dropOldest();
  void dropUndone();

  std::deque<EditStep> steps_;
  std::size_t position_ = 0;
  std::size_t weight_ = 0;
  ContentCheck first_;
  std::optional<ContentCheck> saved_;
  bool cut_;
};

}  // namespace tessaly
