#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/MacroKeeper.h"

namespace tessaly {

// A small text file of "key=value" lines, as the history and the recovery keep them (docs/history-format.md).
// Any bytes can be a value: "%" and control characters are written as "%" and two hexadecimal digits.
class RecordText {
 public:
  void set(const std::string& key, std::string_view value) { values_[key] = value; }
  void set(const std::string& key, std::uint64_t value) { values_[key] = std::to_string(value); }
  // A file's path, or a panel's address, workplace and number.
  void set(const MacroPlace& place);

  // Empty when there is no such line.
  [[nodiscard]] const std::string& get(const std::string& key) const;
  // Nothing unless the value is a plain decimal number.
  [[nodiscard]] std::optional<std::uint64_t> number(const std::string& key) const;
  // Nothing unless it names a file, or a panel with workplace and number.
  [[nodiscard]] std::optional<MacroPlace> place() const;

  [[nodiscard]] std::string text() const;
  // Nothing for a text that no record writes: one with a line without "=", with a control character, or
  // without its last line end.
  [[nodiscard]] static std::optional<RecordText> parse(std::string_view text);

 private:
  std::map<std::string, std::string> values_;
};

}  // namespace tessaly
