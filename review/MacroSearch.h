#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/CommandLine.h"
#include "model/KeyFile.h"
#include "model/Macro.h"

namespace tessaly {

// What is looked for in macros (docs/find.md): words that must all hold for one command, as "function:ME1.*
// source:5 clip". An immutable value, cheap to copy. Any thread.
class MacroQuery {
 public:
  static constexpr std::size_t kLongest = 1'000;  // bytes
  static constexpr std::size_t kMostWords = 32;

  // kNothingTaken with what is wrong: no word, an unknown or empty field, a quote without its end, a query
  // that is too long or no UTF-8.
  [[nodiscard]] static Expected<MacroQuery> parse(std::string_view text);

 private:
  friend class MacroSearch;
  friend class QueryReader;
  enum class Field { kLine, kFunction, kDestination, kSource, kValue, kGroup };
  struct Word {
    Field field;
    std::string text;       // in capital letters; of a value after its "="
    std::string parameter;  // of a value; empty for any
  };
  std::vector<Word> words_;
};

struct SearchHit {
  int command;       // from 0
  std::string line;  // as it is shown, with its destination
};

// Asks a query of macro after macro. What it has learnt of a function or a classic command serves the next
// one. One thread at a time; the context outlives it.
class MacroSearch {
 public:
  MacroSearch(MacroQuery query, const LineContext& context);
  ~MacroSearch();
  MacroSearch(const MacroSearch&) = delete;
  MacroSearch& operator=(const MacroSearch&) = delete;

  [[nodiscard]] std::vector<SearchHit> find(const Macro& macro);
  [[nodiscard]] std::vector<SearchHit> find(const KeyFile& keys);

 private:
  class Asking;
  std::unique_ptr<Asking> asking_;
};

// Whether a pattern with "*" for any characters fits the whole text, both in capital letters. Time is bounded
// by the product of their lengths.
[[nodiscard]] bool fitsPattern(std::string_view pattern, std::string_view text);

}  // namespace tessaly
