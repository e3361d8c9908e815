#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "model/CommandLine.h"

namespace tessaly {

// The lines of command after command: what was put together for a function serves the next command of it. One
// thread at a time; what the context names outlives it.
class CommandLines {
 public:
  CommandLines(const LineOptions& options, const LineContext& context)
      : options_(options), context_(context) {}

  // As `commandLine`; stays until the next call.
  [[nodiscard]] const std::string& of(const MacroCommand& command);

  // A function as lines show it.
  struct Function {
    FunctionRecord record;
    std::string description = {};
    std::optional<bool> incremental = {};  // once a value has asked for it
  };

 private:
  struct Hash : std::hash<std::string_view> {
    using is_transparent = void;
  };

  [[nodiscard]] Function* known(std::string_view name);

  const LineOptions options_;
  const LineContext context_;
  std::unordered_map<std::string, Function, Hash, std::equal_to<>> functions_;
  std::string line_;
};

}  // namespace tessaly
