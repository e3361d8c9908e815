#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace tessaly {

// Why something was not done. The kind is what a program decides and translates by; `text` says the same in
// English, for the command-line twin, with what is particular to the case.
struct Failure {
  enum class Kind {
    kMissing,         // there is no such file or folder
    kInTheWay,        // something that is no regular file stands there, or the path names nothing
    kNoPermission,    // reading or writing is not allowed
    kWriteProtected,  // the file's owner has protected it
    kReadOnlyDisk,
    kFull,       // no room on the disk, or the quota is used up
    kDiskError,  // reading, writing or flushing failed
    kUnflushed,  // it is done, but may not survive a power cut
    kTooLarge,   // beyond our own bounds
    kNoMemory,
    kNotXml,        // does not parse
    kNotKept,       // parses, but saving would lose or change what nobody touched
    kNoMacro,       // parses, but holds no `macro` with a name, or none with `data`
    kNoCommand,     // no command has that number
    kTextNotHeld,   // the file's encoding lacks a character
    kNothingTaken,  // no parameter took the value
    kNoFragment,    // no commands that can be carried from one macro to another
    kChanged,       // somebody else has changed or taken away what was to be used
    kInUse,         // another program is changing it
    kPanel,         // a panel could not be reached, or refused; `text` says which
    kCancelled,     // the user has ended it
    kNoSnapshot,    // no snapshot, or a damaged one
  };
  Kind kind;
  std::string text;

  friend bool operator==(const Failure&, const Failure&) = default;
};

// Done, or why not.
class [[nodiscard]] Outcome {
 public:
  Outcome() = default;
  Outcome(Failure failure)
      : failure_(std::move(failure)) {}  // NOLINT(google-explicit-constructor): a return value

  [[nodiscard]] bool done() const { return !failure_; }
  explicit operator bool() const { return done(); }
  // The file is there as it was to be, even if it may not survive a power cut.
  [[nodiscard]] bool written() const { return done() || failure_->kind == Failure::Kind::kUnflushed; }
  [[nodiscard]] const Failure& failure() const { return *failure_; }  // only when it is not done

 private:
  std::optional<Failure> failure_;
};

// A value, or why there is none.
template <typename T>
class [[nodiscard]] Expected {
 public:
  Expected(T value) : held_(std::move(value)) {}  // NOLINT(google-explicit-constructor): a return value
  Expected(Failure failure)
      : held_(std::move(failure)) {}  // NOLINT(google-explicit-constructor): a return value

  [[nodiscard]] bool has_value() const { return held_.index() == 0; }
  explicit operator bool() const { return has_value(); }
  // Only when there is a value.
  [[nodiscard]] T& operator*() & { return *std::get_if<T>(&held_); }
  [[nodiscard]] const T& operator*() const& { return *std::get_if<T>(&held_); }
  [[nodiscard]] T&& operator*() && { return std::move(*std::get_if<T>(&held_)); }
  [[nodiscard]] T* operator->() { return std::get_if<T>(&held_); }
  [[nodiscard]] const T* operator->() const { return std::get_if<T>(&held_); }
  [[nodiscard]] T value_or(T other) const { return has_value() ? **this : std::move(other); }
  [[nodiscard]] const Failure& failure() const {
    return *std::get_if<Failure>(&held_);
  }  // only without a value

  template <typename U>
  friend bool operator==(const Expected& expected, const U& value) {
    return expected && *expected == value;
  }

 private:
  std::variant<T, Failure> held_;
};

}  // namespace tessaly
