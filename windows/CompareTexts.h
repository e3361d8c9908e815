#pragma once

#include <array>

#include <QString>
#include <QStringList>

#include "review/MacroDiff.h"

namespace tessaly {

// What people are told of a comparison. The sides have names such as "A" and "the target". GUI thread.
class CompareTexts {
 public:
  void setNames(std::array<QString, 2> names) { names_ = std::move(names); }
  [[nodiscard]] const QString& name(Side side) const { return names_[side == Side::kA ? 0 : 1]; }

  // The word beside a row, which tells what is with it; empty for one that is alike.
  [[nodiscard]] QString sign(const MacroDiff& diff, const DiffRow& row) const;
  // The longest ones that can come, for the room that they need.
  [[nodiscard]] QStringList longestSigns(const MacroDiff& diff) const;
  // What differs between the two commands of a row, a line each; values as they are stored.
  [[nodiscard]] static QStringList changes(const MacroDiff& diff, const DiffRow& row);
  // "3 changed, 1 only in A, 2 moved, 40 alike", or that nothing differs.
  [[nodiscard]] QString counts(const MacroDiff& diff) const;
  // What differs beside the commands.
  [[nodiscard]] static QStringList notes(const MacroDiff& diff);

 private:
  std::array<QString, 2> names_;
};

}  // namespace tessaly
