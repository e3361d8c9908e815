#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {

// What a function of the panel stands at. Every value name of the dictionary, with a destination before it
// ("QMF1." to "QMF4.", "PANEL."), has a value within the range of the function's first mandatory parameter
// (else its first one), in the form that a macro stores; it follows from the name alone and so is the same in
// every run. One thread at a time.
class CurrentValues {
 public:
  // Observes the dictionary, which must not change any more.
  explicit CurrentValues(const FunctionDictionary& dictionary) : dictionary_(dictionary) {}

  void set(const std::string& name, const std::string& value) { values_.insert_or_assign(name, value); }

  // What was set for the name, whatever it is, else a value of the dictionary; nothing for an unknown name.
  [[nodiscard]] std::optional<std::string> of(const std::string& name) const;

 private:
  const FunctionDictionary& dictionary_;
  std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace tessaly
