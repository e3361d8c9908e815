#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "review/CheckRules.h"
#include "review/ClassicJudgement.h"
#include "review/ValueJudgement.h"

namespace tessaly {

// A function as the rules look at it.
struct CheckedFunction {
  FunctionRecord record;
  const FunctionTemplate& definition;
  NumberKind numbers;
  bool sets;  // gives its value, and does nothing else
};

// What a check has learnt, kept within bounds. One thread at a time.
class CheckKnowledge {
 public:
  explicit CheckKnowledge(const CheckContext& context);

  // Null for an unknown one.
  [[nodiscard]] const CheckedFunction* function(std::string_view name);
  // Stays until the next call of `begin`.
  [[nodiscard]] const ClassicJudgement& classic(const std::string& text);
  // The one function that an unknown name was meant to be; empty without one. Costs milliseconds, so after
  // some hundred names no more are looked for.
  [[nodiscard]] std::string_view closeFunction(std::string_view name);
  // A new macro: what has grown beyond its bounds is forgotten, and what other decoding lists have told.
  void begin();

  const CheckContext context;
  const ValueBounds bounds;

 private:
  std::unordered_map<std::string_view, CheckedFunction> functions_;  // the names are the dictionary's
  std::unordered_map<std::string, ClassicJudgement> classics_;
  std::uint64_t lists_ = 0;  // the revision that they are of
  std::unordered_map<std::string, std::string_view> close_;
};

}  // namespace tessaly
