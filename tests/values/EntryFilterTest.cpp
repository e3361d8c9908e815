#include <gtest/gtest.h>

#include "tests/values/ParameterSamples.h"
#include "values/EntryFilter.h"

namespace tessaly {
namespace {

TEST(EntryFilter, Integers) {
  const IntegerParameter scaled = integer(true, 0, 255, -100, 100);
  const IntegerParameter plain = integer(false, -20, 255, -20, 255);
  const struct {
    IntegerParameter parameter;
    ValueMode mode;
    const char *typed, *text;
    int beeps;
  } cases[] = {
      {scaled, kDisplay, "5,5", "5.5", 0},
      {scaled, kDisplay, ",5", "0.5", 0},
      {scaled, kDisplay, "-.5", "-.5", 0},
      {scaled, kDisplay, "1.2.3", "1.23", 1},
      {scaled, kDisplay, "1-2", "12", 1},
      {scaled, kDisplay, "-250", "-100", 1},
      {scaled, kRaw, "1.5", "15", 1},
      {scaled, kRaw, "256", "255", 1},
      {plain, kDisplay, "-5", "-5", 0},
      {plain, kDisplay, "-", "-", 0},
      {plain, kRaw, "-5", "5", 1},  // never negative in raw mode
      {plain, kDisplay, "1.5", "15", 1},
      {plain, kDisplay,
       "a\xC3\xBC"
       "7",
       "7", 2},                                                    // a character of two bytes sounds once
      {integer(false, -20, 255, 0, 255), kDisplay, "-5", "5", 1},  // the display range decides on the sign
      {integer(false, 10, 99, 10, 99), kDisplay, "1", "10", 1},
      {integer(false, 10, 99, 10, 99), kDisplay, "", "10", 1},
      {integer(false, 10, 99, 10, 99), kDisplay, "x99999999999", "99", 2},
  };
  for (const auto& c : cases) {
    const FilteredEntry entry = filterInteger(c.parameter, c.typed, c.mode);
    EXPECT_EQ(entry.text, c.text) << c.typed;
    EXPECT_EQ(entry.beeps, c.beeps) << c.typed;
  }
}

TEST(EntryFilter, Floats) {
  const FloatParameter percent = decimal(-1, 1, 0, 100);
  const FloatParameter unlimited = decimal(0, 0, 5, 10);
  const struct {
    FloatParameter parameter;
    bool incremental;
    ValueMode mode;
    const char *typed, *text;
    int beeps;
  } cases[] = {
      {unlimited, true, kDisplay, "3", "2.0000", 1},
      {unlimited, true, kDisplay, "-2.1", "-2.0000", 1},
      {unlimited, true, kRaw, "3000", "2047", 1},
      {unlimited, true, kRaw, "-3000", "-2048", 1},
      {percent, true, kDisplay, "-1", "-1", 0},  // whatever the range says
      {unlimited, false, kDisplay, "-99999,5", "-99999.5", 0},
      {unlimited, false, kDisplay, "3", "3", 0},
      {unlimited, false, kDisplay, "11", "11", 0},
      {unlimited, false, kRaw, "", "", 0},
      {percent, false, kDisplay, "-5", "5", 1},
      {percent, false, kDisplay, "101", "100", 1},
      {percent, false, kRaw, "-.25", "-.25", 0},
      {percent, false, kRaw, "1.5", "1.0000", 1},
      {percent, false, kRaw, "-2", "-1.0000", 1},
      {decimal(0, 1, 5, 12.5), false, kDisplay, "1", " 5", 1},
      {decimal(0, 1, 5, 12.5), false, kDisplay, "13", "12", 1},
      {decimal(0, 1, 5, 12.5), false, kDisplay, "", " 5", 1},
      {decimal(0, 1, -9, 0), false, kDisplay, "1e3", " 0", 2},
  };
  for (const auto& c : cases) {
    const FilteredEntry entry = filterFloat(c.parameter, c.incremental, c.typed, c.mode);
    EXPECT_EQ(entry.text, c.text) << c.typed;
    EXPECT_EQ(entry.beeps, c.beeps) << c.typed;
  }
}

TEST(EntryFilter, Timecodes) {
  const struct {
    const char* typed;
    int frameRate;
    const char* text;
    int beeps;
  } cases[] = {
      {"10:20:30:24", 25, "10:20:30:24", 0},
      {"10:20:30:25", 25, "10:20:30:24", 1},
      {"10:20:30.30", 30, "10:20:30.29", 1},
      {"1:2:3,99:7", 30, "1:2:3.29:7", 1},
      {"10:20:30:99", 0, "10:20:30:99", 0},
      {"270544901", 0, "270544901", 0},
      {"-1h:2", 25, "1:2", 2},
      {"99", 25, "99", 0},  // the frames so far; more digits may follow
      {"10203005", 25, "10203005", 0},
      {"102030059", 25, "10203005", 1},
      {"99203099", 25, "23203024", 2},
      {"99:", 25, "23:", 1},
      {"10:75", 25, "10:59", 1},
      {"99:99:99.99", 30, "23:59:59.29", 4},
  };
  for (const auto& c : cases) {
    const FilteredEntry entry = filterTimecode(c.typed, c.frameRate);
    EXPECT_EQ(entry.text, c.text) << c.typed;
    EXPECT_EQ(entry.beeps, c.beeps) << c.typed;
  }
}

}  // namespace
}  // namespace tessaly
