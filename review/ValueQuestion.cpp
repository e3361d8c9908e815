#include "review/ValueQuestion.h"

namespace tessaly {

namespace {

constexpr std::string_view kClassicMark = "NCSCOMMAND";

}  // namespace

ValueQuestion valueQuestion(const MacroCommand& command, const FunctionDictionary& dictionary) {
  using Kind = ValueQuestion::Kind;
  if (command.fid.find(kClassicMark) != std::string::npos) return {Kind::kClassic, {}};
  const std::string_view destination = command.destination();
  if (destination.empty()) return {Kind::kNoDestination, {}};
  const auto function = dictionary.find(command.functionName());
  const std::string sid = function ? function->sid() : std::string();
  if (sid.empty()) return {Kind::kNoValue, {}};  // an incremental function has none
  return {Kind::kAsked, std::string(destination) + '.' + sid};
}

std::string fidOfValue(std::string_view name, const FunctionDictionary& dictionary) {
  const std::size_t dot = name.find('.');
  if (dot == std::string_view::npos) return {};
  const auto function = dictionary.findBySid(name.substr(dot + 1));
  return function ? std::string(name.substr(0, dot + 1)).append(function->name()) : std::string();
}

}  // namespace tessaly
