#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "model/CommandLine.h"

// What a macro does to the values of a mixer, told without one (docs/effect.md).
namespace tessaly {

// One value that a macro changes.
struct EffectValue {
  // As the panel publishes it: "QMF1.ME1.KEY1.LEVEL". What a classic command changes is not published; its
  // name, "QMF1.NCSCOMMAND.10.05.03.0", is made of cd, co, keyword, what a parameter before it chooses, and
  // its own place.
  std::string name;
  bool classic = false;

  [[nodiscard]] std::string_view destination() const;  // "QMF1"
  // The mix effect or other unit: "ME1"; of a classic one the name of its device code, "Me1".
  [[nodiscard]] std::string_view section() const;
};

// What is known of a value at one step.
struct ValueState {
  enum class Kind {
    kUnknown,
    kKnown,
    kChanged  // by so much, from a value that is unknown
  };
  Kind kind = Kind::kUnknown;
  std::string stored = {};  // of a known one, as a macro stores it; of a classic one its bytes, as "0a 01"
  double by = 0;            // of a changed one: in the unit of what is stored, or rows of a list

  friend bool operator==(const ValueState&, const ValueState&) = default;
};

// What is said of a changed one; "%1" is by how much.
inline constexpr const char* kChangedBy = "changed by %1";

struct ValueChange {
  int command;  // from 0
  int value;    // place in values()
  ValueState after;
  bool soAlready = false;  // the value was known, and is the same in its unit
  int before = -1;         // the change of this value before it; -1: none
};

struct CommandEffect {
  enum class What {
    kSets,   // a value, or several
    kSteps,  // goes on from what the value is: an increment, a toggle
    kActs,   // changes no value that could be asked for: a cut, a start, a question
    kUntold
  };
  What what = What::kUntold;
  std::string why = {};  // it cannot be told; of what sets or steps, what else of it cannot
};

// Replays commands against a state of values. Immutable once made, and then for any thread. The dictionary
// outlives it, the commands need not.
//
// A command sets its function's value to that of its first parameter with a value, which is the one that an
// update writes. A step is added to a known value and ends at the limits of its parameter; a list is gone
// through in a circle. What acts changes nothing here, whatever it does on air.
class MacroEffect {
 public:
  // What a value is before the first command, as stored; nothing where that is unknown. Asked once a value.
  using Start = std::function<std::optional<std::string>(const std::string& name)>;

  MacroEffect(const MacroCommands& commands, const LineContext& context, const Start& start = {});
  ~MacroEffect();
  MacroEffect(MacroEffect&&) noexcept;
  MacroEffect& operator=(MacroEffect&&) noexcept;

  [[nodiscard]] int commandCount() const;
  [[nodiscard]] const CommandEffect& effect(int command) const;
  // In the order of a classic command's parameters; of any other command one at the most.
  [[nodiscard]] std::span<const ValueChange> changes(int command) const;
  // What the value was before.
  [[nodiscard]] const ValueState& before(const ValueChange& change) const;

  // Every value that a command changes, in the order of their first changes.
  [[nodiscard]] const std::deque<EffectValue>& values() const;
  // After so many commands: 0 is the start, commandCount() the end. Costs the logarithm of the value's
  // changes.
  [[nodiscard]] const ValueState& at(int value, int step) const;

  // Two stored values are one in the unit of the value: "0.5" and "0.500000".
  [[nodiscard]] bool equal(int value, std::string_view a, std::string_view b) const;

  // What the value is called in the lines: "ME 1 Key 1 Level Set".
  [[nodiscard]] std::string label(int value) const;
  // What is shown for a stored value: "50.0%"; as it is stored where nothing else is known.
  [[nodiscard]] std::string shown(int value, std::string_view stored) const;
  // The same of a known one; "+25.0%" for one that was changed from an unknown one; empty for an unknown one.
  [[nodiscard]] std::string shown(int value, const ValueState& state) const;
  // The same where it stands beside known ones: one that was changed in the words of `changed`.
  [[nodiscard]] std::string told(int value, const ValueState& state,
                                 std::string_view changed = kChangedBy) const;

 private:
  struct Told;
  class Replay;

  void replay(const MacroCommands& commands, DecodingLists& lists, const Start& start);

  std::unique_ptr<Told> told_;
};

}  // namespace tessaly
