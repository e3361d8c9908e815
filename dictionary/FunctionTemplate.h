#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly {

// Which interface description file a function came from.
enum class FunctionSource : std::uint8_t { kPanel = 0, kOlderFamily = 1 };

enum class FloatUnit : std::uint8_t { kNone = 0, kPercent = 1, kDegree = 2 };

struct EnumValue {
  std::string value;        // as sent to the panel
  std::string description;  // as shown
};

struct EnumParameter {
  std::string name, description, sid;
  bool optional = false;
  std::vector<EnumValue> values;
};

struct IntegerParameter {
  std::string name, description, sid;
  bool optional = false;
  bool scaled = false;                          // shown and entered as a percentage
  std::int32_t min = 0, max = 0;                // of the value sent
  std::int32_t minDisplay = 0, maxDisplay = 0;  // of the value shown
};

struct FloatParameter {
  std::string name, description, sid;
  bool optional = false;
  FloatUnit unit = FloatUnit::kNone;
  double min = 0, max = 0;                // of the value sent
  double minDisplay = 0, maxDisplay = 0;  // of the value shown
};

struct InputParameter {
  std::string name, description, sid;
  bool optional = false;
};

struct TimecodeParameter {
  std::string name, description, sid;
  bool optional = false;
};

// The parameter of that name, or null.
template <typename Parameter>
const Parameter* parameterNamed(const std::vector<Parameter>& parameters, std::string_view name) {
  for (const Parameter& parameter : parameters) {
    if (parameter.name == name) return &parameter;
  }
  return nullptr;
}

// One "fid" element: a name template whose "$" segments stand for families, and the texts and parameters that
// all its concrete functions share. Texts are UTF-8, as read, before substitution.
struct FunctionTemplate {
  std::string name, sid, group, description, longDescription;
  FunctionSource source = FunctionSource::kPanel;
  std::vector<EnumParameter> enums;
  std::vector<IntegerParameter> integers;
  std::vector<FloatParameter> floats;
  std::vector<InputParameter> inputs;
  std::vector<TimecodeParameter> timecodes;
};

}  // namespace tessaly
