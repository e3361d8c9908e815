// What a function can hold where an interface file says little, and what is meant by a value that it cannot.
#include <gtest/gtest.h>

#include "review/ValueJudgement.h"

namespace tessaly {
namespace {

TEST(ValueJudgement, BoundsBindAsFarAsTheyAreSaid) {
  FunctionTemplate function;
  function.enums.emplace_back().name = "FREE";
  EnumParameter& code = function.enums.emplace_back();
  code.name = "CODE";
  code.values = {{"3", "Three"}, {"4000", "Other"}, {"MIX", "Mix"}};
  function.integers.emplace_back().name = "WHOLE";
  IntegerParameter& gauge = function.integers.emplace_back();
  gauge.name = "GAUGE";
  gauge.max = 100;
  function.floats.emplace_back().name = "FREE_REAL";
  FloatParameter& real = function.floats.emplace_back();
  real.name = "REAL";
  real.max = 1;
  function.inputs.emplace_back().name = "INPUT";
  function.timecodes.emplace_back().name = "TIME";
  using enum ValueFault;
  const struct {
    const char *parameter, *value;
    ValueFault fault = kNone;
    const char* nearest = "";
    NumberKind kind = NumberKind::kValue;
  } cases[] = {
      {"FREE", "anything"},
      {"CODE", "33", kChoice},  // no misspelt 3
      {"WHOLE", "-5"},
      {"WHOLE", "-99999999999999999999", kLimits, "-2147483648"},
      {"WHOLE", "5 ", kNumber},
      {"GAUGE", "-5", kLimits, "0", NumberKind::kFixedPoint},  // a number of its own, as of a memory
      {"GAUGE", "-5", kNone, "", NumberKind::kStep},
      {"GAUGE", "2147483648", kLimits, "2147483647", NumberKind::kStep},
      {"REAL", "2047.0000005", kLimits, "2047", NumberKind::kStep},
      {"FREE_REAL", "-2048.5", kLimits, "-2048", NumberKind::kFixedPoint},
      {"REAL", "-2048", kNone, "", NumberKind::kStep},
      {"REAL", "1.0000005"},  // as it is rounded
      {"REAL", "nan", kNumber},
      {"REAL", ""},
      {"INPUT", "5"},                      // a site without inputs
      {"TIME", "24:00:01:27", kTimecode},  // nobody knows which hour
      {"TIME", "00:60:01:02", kTimecode},
      {"TIME", "00:01:60:02", kTimecode},
      {"OTHER", "x"},
  };
  for (const auto& [parameter, value, fault, nearest, kind] : cases) {
    const ValueJudgement judgement = judge(function, kind, parameter, value, {{}, 25});
    EXPECT_EQ(judgement.fault, fault) << parameter << ' ' << value;
    EXPECT_EQ(judgement.nearest, nearest) << parameter << ' ' << value;
  }
}

}  // namespace
}  // namespace tessaly
