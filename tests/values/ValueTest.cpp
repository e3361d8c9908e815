#include <gtest/gtest.h>
#include <limits>

#include "tests/values/ParameterSamples.h"
#include "values/ParameterValue.h"

namespace tessaly {
namespace {

constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();

struct IntegerCase {
  IntegerParameter parameter;
  ValueMode mode;
  const char *from, *to;
};

struct FloatCase {
  FloatParameter parameter;
  bool incremental;
  ValueMode mode;
  const char *from, *to;
};

TEST(ParameterValue, ShowsStoredIntegers) {
  const IntegerCase cases[] = {
      {integer(true, 0, 255, 0, 100), kDisplay, "128", "50.2"},
      {integer(true, 0, 255, 0, 100), kDisplay, "", "0.0"},
      {integer(true, 0, 255, 0, 100), kRaw, "128", "128"},
      {integer(true, -512, 512, -100, 100), kDisplay, "-512", "-100.0"},
      {integer(true, 7, 7, 0, 100), kDisplay, "007", "007"},
      {integer(false, 0, 255, 0, 100), kDisplay, "12x", "12x"},
      {integer(true, kLeast, kMost, kLeast, kMost), kDisplay, "2147483647", "2147483647.0"},
  };
  for (const auto& c : cases) EXPECT_EQ(shownInteger(c.parameter, c.from, c.mode), c.to) << c.from;
}

TEST(ParameterValue, StoresShownIntegers) {
  const IntegerCase cases[] = {
      {integer(true, 0, 255, 0, 100), kDisplay, "50", "128"},
      {integer(true, 0, 255, 0, 100), kDisplay, "", "0"},
      {integer(true, -512, 512, -100, 100), kDisplay, "-100", "-511"},  // 0.5 up, then towards zero
      {integer(true, 0, 255, 0, 100), kRaw, "50", "50"},
      {integer(true, 0, 255, 9, 9), kDisplay, "50.5", "50.5"},
      {integer(false, 0, 255, 0, 100), kDisplay, "-", "-"},
      {integer(false, 5, 255, 0, 100), kDisplay, "", "0"},
      {integer(true, kLeast, kMost, 0, 1), kDisplay, "1", "2147483647"},
      {integer(true, kLeast, kMost, 0, 1), kDisplay, "99", "2147483647"},
      {integer(true, kLeast, kMost, 0, 1), kDisplay, "-99", "-2147483648"},
      {integer(true, 0, 1, kLeast, kMost), kDisplay, "2147483647", "1"},
  };
  for (const auto& c : cases) EXPECT_EQ(storedInteger(c.parameter, c.from, c.mode), c.to) << c.from;
}

TEST(ParameterValue, ShowsStoredFloats) {
  const FloatCase cases[] = {
      {decimal(0, 0, 0, 0), true, kDisplay, "512", "0.5000"},
      {decimal(0, 1, 0, 100), true, kDisplay, "-2048", "-2.0000"},
      {decimal(0, 0, 0, 0), true, kRaw, "512", "512"},
      {decimal(0, 1, 0, 100), false, kDisplay, "0.25", "25.0"},
      {decimal(-1, 1, -180, 180), false, kDisplay, "", "0.0"},
      {decimal(3, 3, 0, 100), false, kDisplay, "1e2", "1e2"},
      {decimal(0, 1, 0, 100), false, kRaw, "0.25", "0.25"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(shownFloat(c.parameter, c.incremental, c.from, c.mode), c.to) << c.from;
}

TEST(ParameterValue, StoresShownFloats) {
  const FloatCase cases[] = {
      {decimal(0, 0, 0, 0), true, kDisplay, "-0.5", "-511"},
      {decimal(0, 0, 0, 0), true, kDisplay, "0.5000", "512"},
      {decimal(0, 0, 0, 0), true, kDisplay, "2.0000", "2047"},
      {decimal(0, 0, 0, 0), true, kDisplay, "-2.0000", "-2047"},  // -2048 can only be typed in raw mode
      {decimal(0, 0, 0, 0), true, kDisplay, "-90", "-2048"},
      {decimal(0, 0, 0, 0), true, kRaw, "-2048", "-2048"},
      {decimal(-1, 3, -180, 20), false, kDisplay, "-30", "2.000000"},
      {decimal(0, 1, 0, 100), false, kDisplay, "", "0.000000"},
      {decimal(0, 1, 0, 100), false, kRaw, "", "0"},
      {decimal(0, 1, 5, 5), false, kDisplay, "25", "25"},
      {decimal(4, 4, 0, 100), false, kDisplay, "25", "25"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(storedFloat(c.parameter, c.incremental, c.from, c.mode), c.to) << c.from;
}

TEST(ParameterValue, TellsTheRange) {
  EXPECT_EQ(rangeText(integer(true, 0, 255, -10, 100), kDisplay), "min: -10%   max: 100%");
  EXPECT_EQ(rangeText(integer(true, 0, 255, -10, 100), kRaw), "min: 0   max: 255");
  EXPECT_EQ(rangeText(integer(false, 0, 255, -10, 100), kDisplay), "min: 0   max: 255");
  EXPECT_EQ(rangeText(decimal(0, 0, 0, 0), true, kRaw), "min: -2048   max: 2047");
  EXPECT_EQ(rangeText(decimal(0, 1, 0, 1), true, kDisplay), "min: -2.0000   max: 2.0000");
  for (const ValueMode mode : {kRaw, kDisplay})
    EXPECT_EQ(rangeText(decimal(3, 3, 0, 100), false, mode), "range: no limits");
  EXPECT_EQ(rangeText(decimal(-0.5, 1, 0, 100), false, kRaw), "min: -0.5000   max: 1.0000");
  EXPECT_EQ(rangeText(decimal(-0.5, 1, 0, 100), false, kDisplay), "min:  0%   max: 100%");
}

TEST(ParameterValue, ConvertsTimecodes) {
  EXPECT_EQ(shownTimecode("270544901", kDisplay), "10:20:30:05");
  EXPECT_EQ(shownTimecode("270544901", kRaw), "270544901");
  const struct {
    const char* shown;
    int frameRate;
    const char* stored;
  } cases[] = {
      {"10:20:30:05", 25, "270544901"},
      {"77", 0, "77"},
      {"", 25, ""},
      {"10203005", 25, "270544901"},
      {"3005", 25, "12293"},             // 30 seconds and 5 frames
      {"99:99:99:99", 25, "593058084"},  // 23:59:59:24, two digits a byte
      {"99", 30, "41"},                  // 29 frames
  };
  for (const auto& c : cases) EXPECT_EQ(storedTimecode(c.shown, c.frameRate), c.stored) << c.shown;
}

}  // namespace
}  // namespace tessaly
