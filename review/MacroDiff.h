#pragma once

#include <cstddef>
#include <vector>

#include "model/Macro.h"
#include "model/MacroEdit.h"
#include "review/CommandMeaning.h"

namespace tessaly {

struct Pairing;

enum class Side { kA, kB };

// A row of two macros set beside each other. Commands are numbered from 0.
struct DiffRow {
  enum class Kind {
    kSame,         // in both, alike to the last attribute
    kSameMeaning,  // in both; values are spelt differently, or what the program does not know of differs
    kChanged,      // the same function in both, with something else
    kOnlyA,
    kOnlyB,
    kMovedFrom,  // in column A: where A has a command that stands elsewhere in B
    kMovedTo,    // in column B: where B has it
  };
  Kind kind = Kind::kSame;
  int a = -1, b = -1;    // the command in A and in B; -1 where there is none. Of a moved one both are told
  int block = -1;        // of moved commands: those of one number moved together, in one piece
  int counterpart = -1;  // of a moved one: the number of the row where it stands in the other column

  // Whether the row has a command in the column of A, of B.
  [[nodiscard]] bool shows(Side side) const {
    return side == Side::kA ? a >= 0 && kind != Kind::kMovedTo : b >= 0 && kind != Kind::kMovedFrom;
  }
  [[nodiscard]] bool differs() const { return kind != Kind::kSame; }

  friend bool operator==(const DiffRow&, const DiffRow&) = default;
};

// Rows that differ and follow each other; a moved block is one of its own.
struct DiffRange {
  std::size_t begin = 0, end = 0;  // of rows
};

struct DiffCounts {
  std::size_t same = 0, sameMeaning = 0, changed = 0, onlyA = 0, onlyB = 0, moved = 0;  // commands

  friend bool operator==(const DiffCounts&, const DiffCounts&) = default;
};

// Two macros set beside each other: an immutable value that any thread may make and read. It holds both
// macros; the dictionary, null for none, outlives it.
//
// Commands with the same meaning (CommandMeaning.h) stand beside each other, as many as can be in one order
// (Alignment.h has the bounds of time and memory). Of the others, blocks of two and more that stand in both,
// but elsewhere, were moved; then a command stands beside the next one with the same identifier, else the
// same function, between the same neighbours, as its change; then single ones that stand elsewhere were
// moved. Every command of each macro stands in its column exactly once, in its order.
class MacroDiff {
 public:
  MacroDiff(Macro a, Macro b, const FunctionDictionary* dictionary);

  [[nodiscard]] const Macro& a() const { return a_; }
  [[nodiscard]] const Macro& b() const { return b_; }
  [[nodiscard]] const Macro& of(Side side) const { return side == Side::kA ? a_ : b_; }

  // The bytes are the same. Otherwise a row differs, or one of the three below is true.
  [[nodiscard]] bool identical() const { return identical_; }
  [[nodiscard]] bool nameDiffers() const { return a_.name() != b_.name(); }
  // Comments, attributes, elements beside the commands, the declaration.
  [[nodiscard]] bool surroundingsDiffer() const { return a_.unread() != b_.unread(); }
  // White space, quotes, the order of attributes, references, the encoding; told when nothing else differs.
  [[nodiscard]] bool onlyLayoutDiffers() const { return onlyLayout_; }

  [[nodiscard]] const std::vector<DiffRow>& rows() const { return rows_; }
  [[nodiscard]] const std::vector<DiffRange>& differences() const { return differences_; }
  [[nodiscard]] const DiffCounts& counts() const { return counts_; }
  // False only for macros beyond the bounds: there may then be a way to say the same with fewer rows.
  [[nodiscard]] bool minimal() const { return minimal_; }

  // What differs between the two commands of a row; nothing for a row of one.
  [[nodiscard]] std::vector<CommandChange> changes(const DiffRow& row) const;

  // The edit of the macro `into` that makes it hold, at these rows, what the other one holds: one step. The
  // other place of a moved command is taken with it. Commands come as they stand there, with what the program
  // does not know of; with all rows, `into` then has the other's commands exactly. No pieces when there is
  // nothing to do.
  [[nodiscard]] TakeCommands taking(const std::vector<std::size_t>& rows, Side into) const;
  [[nodiscard]] TakeCommands takingAll(Side into) const;

 private:
  void addRows(const Pairing& pairing);
  void addRow(DiffRow row);

  Macro a_, b_;
  const FunctionDictionary* dictionary_;
  std::vector<DiffRow> rows_;
  std::vector<DiffRange> differences_;
  DiffCounts counts_;
  bool identical_ = false, onlyLayout_ = false, minimal_ = true;
};

}  // namespace tessaly
