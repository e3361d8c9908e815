#include "model/MacroCommand.h"

namespace tessaly {

std::string_view MacroCommand::destination() const {
  const std::size_t dot = fid.find('.');
  return dot == std::string::npos ? std::string_view() : std::string_view(fid).substr(0, dot);
}

std::string_view MacroCommand::functionName() const {
  const std::size_t dot = fid.find('.');
  return dot == std::string::npos ? std::string_view(fid) : std::string_view(fid).substr(dot + 1);
}

bool MacroCommand::classic() const { return functionName().find("NCSCOMMAND") != std::string_view::npos; }

CommandDraft draftFor(std::string_view destinationPrefix, const FunctionRecord& function) {
  CommandDraft draft;
  draft.fid = std::string(destinationPrefix).append(function.name());
  const auto addAll = [&draft](ParameterKind kind, const auto& parameters) {
    for (const auto& parameter : parameters) {
      draft.parameters.push_back({kind, parameter.name, {}, parameter.optional});
    }
  };
  const FunctionTemplate& definition = function.definition();
  addAll(ParameterKind::kEnum, definition.enums);
  addAll(ParameterKind::kInteger, definition.integers);
  addAll(ParameterKind::kFloat, definition.floats);
  addAll(ParameterKind::kInput, definition.inputs);
  addAll(ParameterKind::kTimecode, definition.timecodes);
  return draft;
}

}  // namespace tessaly
