#include "review/MacroDiff.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "review/Pairing.h"

namespace tessaly {
namespace {

using Kind = DiffRow::Kind;

const MacroCommand& commandOf(const Macro& macro, int number) {
  return macro.commands()[static_cast<std::size_t>(number)];
}

std::size_t& countOf(DiffCounts& counts, Kind kind) {
  switch (kind) {
    case Kind::kSame:
      return counts.same;
    case Kind::kSameMeaning:
      return counts.sameMeaning;
    case Kind::kChanged:
      return counts.changed;
    case Kind::kOnlyA:
      return counts.onlyA;
    case Kind::kOnlyB:
      return counts.onlyB;
    case Kind::kMovedFrom:
    case Kind::kMovedTo:
      return counts.moved;
  }
  return counts.same;
}

}  // namespace

MacroDiff::MacroDiff(Macro a, Macro b, const FunctionDictionary* dictionary)
    : a_(std::move(a)), b_(std::move(b)), dictionary_(dictionary), identical_(a_.bytes() == b_.bytes()) {
  addRows(pairCommands(a_.commands(), b_.commands(), dictionary_));
  counts_.moved /= 2;  // each has a row in either column
  onlyLayout_ = !identical_ && differences_.empty() && !nameDiffers() && !surroundingsDiffer();
}

void MacroDiff::addRows(const Pairing& pairing) {
  minimal_ = pairing.minimal;
  rows_.reserve(std::max(pairing.a.size(), pairing.b.size()));
  std::vector<int> movedRows(pairing.a.size(), -1);  // where a command was first met
  const auto addMoved = [&](Kind kind, int inA, int inB, int block) {
    int& counterpart = movedRows[static_cast<std::size_t>(inA)];
    const int row = static_cast<int>(rows_.size());
    addRow({kind, inA, inB, block, counterpart});
    if (counterpart >= 0) rows_[static_cast<std::size_t>(counterpart)].counterpart = row;
    counterpart = row;
  };
  std::size_t j = 0;
  const auto addB = [&](std::size_t end) {
    for (; j < end; ++j) {
      const Mate& mate = pairing.b[j];
      const int number = static_cast<int>(j);
      if (mate.how == Mate::How::kMoved)
        addMoved(Kind::kMovedTo, mate.other, number, mate.block);
      else
        addRow({.kind = Kind::kOnlyB, .b = number});
    }
  };
  for (std::size_t i = 0; i < pairing.a.size(); ++i) {
    const Mate& mate = pairing.a[i];
    const int number = static_cast<int>(i);
    if (mate.inOrder()) {
      addB(static_cast<std::size_t>(mate.other));
      const bool same = commandOf(a_, number) == commandOf(b_, mate.other);
      addRow({.kind = mate.how == Mate::How::kChanged ? Kind::kChanged
                      : same                          ? Kind::kSame
                                                      : Kind::kSameMeaning,
              .a = number,
              .b = mate.other});
      ++j;
    } else if (mate.how == Mate::How::kMoved) {
      addMoved(Kind::kMovedFrom, number, mate.other, mate.block);
    } else {
      addRow({.kind = Kind::kOnlyA, .a = number});
    }
  }
  addB(pairing.b.size());
}

void MacroDiff::addRow(DiffRow row) {
  ++countOf(counts_, row.kind);
  const std::size_t place = rows_.size();
  if (row.differs()) {
    const bool goesOn = !differences_.empty() && differences_.back().end == place &&
                        rows_.back().block == row.block && (row.block < 0 || rows_.back().kind == row.kind);
    if (!goesOn) differences_.push_back({place, place});
    differences_.back().end = place + 1;
  }
  rows_.push_back(row);
}

std::vector<CommandChange> MacroDiff::changes(const DiffRow& row) const {
  if (row.a < 0 || row.b < 0 || row.kind == Kind::kSame) return {};
  return changesBetween(commandOf(a_, row.a), commandOf(b_, row.b), dictionary_);
}

TakeCommands MacroDiff::taking(const std::vector<std::size_t>& rows, Side into) const {
  const Side from = into == Side::kA ? Side::kB : Side::kA;
  std::vector<bool> chosen(rows_.size(), false);
  for (const std::size_t row : rows) {
    if (row >= rows_.size() || !rows_[row].differs()) continue;
    chosen[row] = true;
    if (rows_[row].counterpart >= 0) chosen[static_cast<std::size_t>(rows_[row].counterpart)] = true;
  }
  TakeCommands edit{of(from), {}};
  int at = 0;
  bool goesOn = false;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (chosen[i]) {
      if (!goesOn) edit.pieces.push_back({at, 0, {}});
      TakeCommands::Piece& piece = edit.pieces.back();
      if (rows_[i].shows(into)) ++piece.removed;
      if (rows_[i].shows(from)) piece.taken.push_back(from == Side::kA ? rows_[i].a : rows_[i].b);
    }
    goesOn = chosen[i];
    if (rows_[i].shows(into)) ++at;
  }
  return edit;
}

TakeCommands MacroDiff::takingAll(Side into) const {
  std::vector<std::size_t> all(rows_.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  return taking(all, into);
}

}  // namespace tessaly
