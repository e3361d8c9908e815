#pragma once

#include <QBrush>
#include <QCoreApplication>
#include <QPalette>
#include <QString>

#include "windows/Rehearsal.h"
#include "windows/RehearseNow.h"

namespace tessaly {

// What is told of a value at a step. Every sign differs by its shape, and has words for tool tips and screen
// readers.
struct RehearseCell {
  enum class Change { kNone, kChanged, kSoAlready };
  Change change = Change::kNone;  // by the command of the step
  ValueState::Kind kind = ValueState::Kind::kUnknown;
  bool differsFromNow = false;
  bool asNow = false;  // known to be what the panel has

  [[nodiscard]] QString signs() const;  // "●", "=", "?", "±" and "≠", those that hold
  [[nodiscard]] QString words() const;
  // The ground of its row in a list: a tint, or hatched for what is unknown.
  [[nodiscard]] QBrush ground(const QPalette& palette) const;
};

// Texts of a rehearsal. Plain.
class RehearseTexts {
  Q_DECLARE_TR_FUNCTIONS(RehearseTexts)

 public:
  RehearseTexts() = delete;
  // At a step, beside what the panel has now.
  [[nodiscard]] static RehearseCell cell(const Rehearsal& rehearsal, const RehearseNow& now, int value,
                                         int step);
  // What a value is there: "50.0%", "changed by +25.0%", "unknown".
  [[nodiscard]] static QString state(const MacroEffect& effect, int value, const ValueState& state);
  // As long as such texts usually are.
  [[nodiscard]] static QString widestState();
  // What the command of a step does; `step` is at least 1.
  [[nodiscard]] static QString done(const Rehearsal& rehearsal, int step);
  // What is known before the first one.
  [[nodiscard]] static QString start(bool fromNow, const RehearseNow& now);
  [[nodiscard]] static QString why(const std::string& why);
  // Where the values of the panel are.
  [[nodiscard]] static QString now(const RehearseNow& now);
  // How many values the macro leaves as, or unlike, the panel has them.
  [[nodiscard]] static QString comparison(const Rehearsal& rehearsal, const RehearseNow& now);
};

}  // namespace tessaly
