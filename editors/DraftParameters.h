#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dictionary/FunctionDictionary.h"
#include "model/MacroCommand.h"
#include "values/EntryFilter.h"
#include "values/ParameterValue.h"
#include "values/SourceNames.h"

namespace tessaly {

// Without this parameter's value the command is not complete.
[[nodiscard]] bool missing(const CommandDraft::Parameter& parameter);

// The parameters of a command that is being put together: how they are shown, what may be typed, and whether
// something is missing. Works on a copy of the command. Rows count the parameters in writing order.
class DraftParameters {
 public:
  struct Choice {
    std::string text;   // as shown
    std::string value;  // as stored
  };

  // `sources` are offered for input parameters; without any the panel's fixed names are.
  explicit DraftParameters(const std::vector<PanelSource>& sources);

  // `draft` has the parameters of `function`, whose dictionary outlives this object.
  void begin(const FunctionRecord& function, CommandDraft draft);
  void setMode(ValueMode mode) { mode_ = mode; }

  [[nodiscard]] const CommandDraft& draft() const { return draft_; }
  [[nodiscard]] std::size_t count() const { return draft_.parameters.size(); }
  [[nodiscard]] bool complete() const;

  [[nodiscard]] std::string label(std::size_t row) const;
  [[nodiscard]] std::string shownValue(std::size_t row) const;  // empty for an empty value
  [[nodiscard]] std::string range(std::size_t row) const;       // integers and floats
  [[nodiscard]] bool typed(std::size_t row) const;              // rather than chosen from a list
  [[nodiscard]] bool timecode(std::size_t row) const;
  [[nodiscard]] bool mayBeEmpty(std::size_t row) const;
  [[nodiscard]] std::vector<Choice> choices(std::size_t row) const;  // enums and inputs

  // The user changed the field from `before` to `text`: filters it, stores what it stands for and returns
  // what to put back. Nothing is stored when that is `before` again: shown digits can be fewer than the
  // stored ones.
  FilteredEntry enter(std::size_t row, std::string_view before, std::string_view text, int frameRate);
  void setValue(std::size_t row, std::string value);
  // What was entered last becomes "0" when it has no digit, as a lone "-". True when that was so. What else
  // came or stood there stays, whatever it is.
  bool finishEntry();

 private:
  template <typename Visitor>
  auto visit(std::size_t row, Visitor visitor) const;

  const std::vector<PanelSource>& sources_;
  const FunctionTemplate* definition_ = nullptr;
  bool incremental_ = false;
  ValueMode mode_ = ValueMode::kDisplay;
  CommandDraft draft_;
  std::optional<std::size_t> entered_;  // the row that was typed into last
};

}  // namespace tessaly
