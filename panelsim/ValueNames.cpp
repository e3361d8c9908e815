#include "panelsim/ValueNames.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "platform/CloseName.h"
#include "platform/Text.h"
#include "values/Destination.h"
#include "values/ParameterValue.h"
#include "values/SourceNames.h"
#include "values/Timecode.h"

namespace tessaly {
namespace {

constexpr std::size_t kMostNames = 5;
constexpr std::size_t kMostEdits = 3;
constexpr std::size_t kListedChoices = 12;

template <typename Limits, typename Number>
bool within(const Limits& limits, Number number) {
  const auto [low, high] = std::minmax(limits.min, limits.max);
  return low == high || (number >= low && number <= high);
}

// What a parameter can hold; empty when the value is that.
std::string refusal(const EnumParameter& parameter, const std::string& value) {
  std::string choices;
  for (std::size_t i = 0; i < parameter.values.size(); ++i) {
    if (parameter.values[i].value == value) return {};
    if (i < kListedChoices) choices += (choices.empty() ? "one of " : ", ") + parameter.values[i].value;
  }
  return choices + (parameter.values.size() > kListedChoices ? " ..." : "");
}
std::string refusal(const IntegerParameter& parameter, const std::string& value) {
  const auto number = exactNumber<std::int32_t>(value);
  return number && within(parameter, *number) ? std::string()
                                              : "a whole number, " + rangeText(parameter, ValueMode::kRaw);
}
std::string refusal(const FloatParameter& parameter, const std::string& value) {
  const auto number = exactNumber<double>(value);
  return number && within(parameter, *number) ? std::string()
                                              : "a number, " + rangeText(parameter, false, ValueMode::kRaw);
}
std::string refusal(const InputParameter&, const std::string& value) {
  return exactNumber<std::uint16_t>(value) ? std::string() : "the number of an input";
}
std::string refusal(const TimecodeParameter&, const std::string& value) {
  const auto number = exactNumber<std::uint32_t>(value);
  return number && Timecode::fromPacked(*number).packed() == *number ? std::string() : "a packed timecode";
}

}  // namespace

std::vector<std::string> nearNames(const FunctionDictionary& dictionary, const std::string& name) {
  const auto destination = Destination::ofFid(name);
  if (!destination) return {};
  const std::string prefix(destination->prefix()), wanted = name.substr(prefix.size());
  std::set<std::pair<std::size_t, std::string>> close;  // by edits
  std::vector<std::string> names;
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i) {
    const std::string sid = dictionary.function(i).sid();
    if (sid.empty()) continue;
    if (const std::size_t edits = editsBetween(wanted, sid, kMostEdits); edits <= kMostEdits)
      close.emplace(edits, prefix + sid);
    if (names.size() < kMostNames && !wanted.empty() && sid.starts_with(wanted) &&
        std::find(names.begin(), names.end(), prefix + sid) == names.end())
      names.push_back(prefix + sid);
  }
  for (const auto& [edits, known] : close)
    if (names.size() < kMostNames && std::find(names.begin(), names.end(), known) == names.end())
      names.push_back(known);
  return names;
}

std::string cannotHold(const FunctionDictionary& dictionary, const std::string& name,
                       const std::string& value) {
  const auto destination = Destination::ofFid(name);
  const auto function =
      destination ? dictionary.findBySid(std::string_view(name).substr(destination->prefix().size()))
                  : std::nullopt;
  if (!function) return {};
  std::string could;
  bool held = false;
  const auto look = [&](const auto& parameters) {
    for (const auto& parameter : parameters) {
      const std::string refused = refusal(parameter, value);
      held = held || refused.empty();
      could += (could.empty() ? "" : "; or ") + refused;
    }
  };
  const FunctionTemplate& known = function->definition();
  look(known.enums);
  look(known.integers);
  look(known.floats);
  look(known.inputs);
  look(known.timecodes);
  return held ? std::string() : could;
}

}  // namespace tessaly
