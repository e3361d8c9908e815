#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/MacroKeeper.h"
#include "platform/MacroNumber.h"
#include "platform/Outcome.h"

namespace tessaly {

// What became of a macro that was to be written to a shelf.
struct ShelfWrite {
  enum class State {
    kWritten,     // the new bytes are there, verified
    kUnverified,  // the new bytes were taken by a panel that does not let them be read
    kAsBefore,    // what stood there stands there still, or again
    kUnknown      // what stands there could not be found out
  };
  State state = State::kAsBefore;
  Failure why = {};       // unless the new bytes are there; kUnflushed when they may not stay
  std::string note = {};  // what else a person is to know, such as a panel that was not told; else empty

  [[nodiscard]] bool written() const { return state == State::kWritten || state == State::kUnverified; }
};

// What stands under a number that is about to be written over or deleted.
struct ShelfStanding {
  Expected<std::string> bytes;      // kMissing where nothing stands; another failure: it cannot be read
  std::optional<std::string> kept;  // its id in the history; nothing where there was nothing to keep
};
// Asked, unless it is empty, once what stands there is kept and before anything is written; a failure leaves
// it there and is the reason that is told.
using BeforeWrite = std::function<Outcome(const ShelfStanding& standing)>;

// A place for a thousand numbered macros, wherever it lies: a folder of the disk, a workplace of a panel, a
// workplace in a snapshot. Whole macros only are read and written. Calls block, one at a time, on any thread;
// `cancel` comes from another one, and whatever is called after it fails at once (kCancelled).
class MacroShelf {
 public:
  struct Held {
    MacroNumber number;
    std::string name;  // UTF-8, may be empty
  };

  virtual ~MacroShelf() = default;

  // Where it is, for people; UTF-8, as "workplace 2 of 10.0.0.5".
  [[nodiscard]] virtual std::string title() const = 0;
  // Where a macro of it belongs; for the history and for what is told of it.
  [[nodiscard]] virtual MacroPlace place(MacroNumber number) const = 0;
  // In the order of their numbers; the names where they are known without reading the macros. Without a name
  // there may turn out to be none under a number: none that is there is left out.
  [[nodiscard]] virtual Expected<std::vector<Held>> list() = 0;
  // The bytes as they are stored, whether or not they are a macro; kMissing where there is none.
  [[nodiscard]] virtual Expected<std::string> read(MacroNumber number) = 0;
  // The reason why nothing can be written at all; done where it can.
  [[nodiscard]] virtual Outcome writable() const = 0;
  // Replaces what stands there, which goes to the history first. What can be read and not kept stays there.
  [[nodiscard]] virtual ShelfWrite write(MacroNumber number, std::string_view bytes, MacroChange change,
                                         const BeforeWrite& before) = 0;
  // Deletes what stands there, in the same way. kMissing where there is nothing.
  [[nodiscard]] virtual ShelfWrite remove(MacroNumber number, const BeforeWrite& before) = 0;
  virtual void cancel() = 0;
};

// Of what a list tells and cannot be read: there is none after all. What has a name there is there.
[[nodiscard]] inline bool isNone(const MacroShelf::Held& listed, const Failure& failure) {
  return failure.kind == Failure::Kind::kMissing && listed.name.empty();
}

}  // namespace tessaly
