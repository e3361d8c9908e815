#include "review/CommandFix.h"

#include "platform/Text.h"

namespace tessaly {
namespace {

// The command as a draft that is written as it stands; nothing when it would be written otherwise.
std::optional<ReplaceCommand> replacing(const MacroCommand& command, int number) {
  constexpr const char* kAlways = "0";
  const auto workplace = exactNumber<int>(command.workplace);
  if (!workplace || std::to_string(*workplace) != command.workplace) return std::nullopt;
  ReplaceCommand edit{.number = number, .draft = {command.fid, {}}, .workplace = *workplace};
  if (!command.unread.empty() || command.group != kAlways || command.module != kAlways ||
      command.widget != kAlways)
    return std::nullopt;
  for (const MacroParameter& parameter : command.parameters) {
    if (!parameter.hasValue) return std::nullopt;
    edit.draft.parameters.push_back({ParameterKind::kEnum, parameter.name, parameter.value, false});
  }
  return edit;
}

}  // namespace

std::optional<MacroEdit> withFid(const MacroCommand& command, int number, std::string fid) {
  auto edit = replacing(command, number);
  if (!edit) return std::nullopt;
  edit->draft.fid = std::move(fid);
  return *std::move(edit);
}

std::optional<MacroEdit> withParameterName(const MacroCommand& command, int number, std::size_t place,
                                           std::string name) {
  auto edit = replacing(command, number);
  if (!edit) return std::nullopt;
  edit->draft.parameters[place].name = std::move(name);
  return *std::move(edit);
}

std::optional<MacroEdit> withValue(const MacroCommand& command, int number, std::size_t place,
                                   std::string value) {
  std::size_t first = 0;
  while (first < command.parameters.size() && !command.parameters[first].hasValue) ++first;
  if (place == first) return SetValues{{{number, std::move(value)}}};
  auto edit = replacing(command, number);
  if (!edit) return std::nullopt;
  edit->draft.parameters[place].value = std::move(value);
  return *std::move(edit);
}

}  // namespace tessaly
