#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "platform/CloseName.h"
#include "platform/FixedPoint.h"
#include "platform/MacroNumber.h"
#include "platform/Processors.h"
#include "platform/Text.h"
#include "platform/Workplace.h"

#ifdef __linux__
#include <sched.h>
#endif

namespace tessaly {
namespace {

TEST(SmallNumbers, HaveTheirBoundsAndSpellings) {
  struct {
    int number;
    const char* text;  // empty: no macro has it
    bool workplace;
  } const numbers[] = {{-1, "", false},   {0, "000", false},   {1, "001", true}, {8, "008", true},
                       {9, "009", false}, {999, "999", false}, {1000, "", false}};
  for (const auto& row : numbers) {
    EXPECT_EQ(MacroNumber::textOf(row.number), row.text);
    EXPECT_EQ(Workplace::of(row.number).has_value(), row.workplace) << row.number;
  }
  struct {
    const char* file;
    int number;  // -1: another file
  } const files[] = {{"macro007.mac", 7},  {"macro999.MAC", 999}, {"macro07.mac", -1}, {"macro0071.mac", -1},
                     {"macro+07.mac", -1}, {"Macro007.mac", -1},  {"macro.mac", -1},   {"", -1}};
  for (const auto& row : files) {
    const auto number = MacroNumber::ofFile(row.file);
    EXPECT_EQ(number ? number->value() : -1, row.number) << row.file;
  }
}

TEST(SmallNumbers, AreShownInFigures) {
  EXPECT_EQ(fixedPoint(-1.25, 1) + ' ' + fixedPoint(2, 4), "-1.2 2.0000");
  EXPECT_EQ(fixedPoint(1e60, 3) + ' ' + fixedPoint(1e80, 1), format("%.3f %.1f", 1e60, 1e80));
}

TEST(CloseName, IsTheOneThatFewestEditsLeadTo) {
  const struct {
    const char *a, *b;
    std::size_t edits;  // 3 for more than 2
  } pairs[] = {{"", "", 0},
               {"AZaz", "azAZ", 0},
               {"@[`{", "`{@[", 3},
               {"a", "", 1},
               {"", "ab", 2},
               {"abc", "", 3},
               {"cut", "cat", 1},
               {"cut", "ct", 1},
               {"abcd", "bcda", 2},
               {"abcd", "badc", 3},
               {"ab1c", "a1bc", 2},
               {"xabcx", "xdx", 3},
               {"kitten", "sitting", 3},
               {"aXbYc", "abc", 2}};
  for (const auto& [a, b, edits] : pairs) {
    EXPECT_EQ(editsBetween(a, b, 2), edits) << a << ' ' << b;
    EXPECT_EQ(editsBetween(b, a, 2), edits) << a << ' ' << b;
    if (edits > 0) {
      EXPECT_EQ(editsBetween(a, b, 0), 1U) << a << ' ' << b;
    }
  }
  EXPECT_EQ(editsBetween(std::string(255, 'a'), std::string(254, 'a') + 'b', 2), 1U);
  EXPECT_EQ(editsBetween(std::string(256, 'a'), std::string(256, 'a'), 2), 3U) << "nobody waits for these";
  const struct {
    const char* wanted;
    std::vector<const char*> names;
    const char* found;  // empty for none
  } names[] = {{"clip", {"clop", "clipxy", "flip2"}, "clop"},
               {"clip", {"clop", "flip"}, ""},
               {"clip", {"clop", "clop"}, "clop"},
               {"clip", {"clop", "flip", "clip"}, "clip"},
               {"clip", {"click2", "clipping"}, ""},
               {"cl", {"cx"}, "cx"},
               {"cl", {"xx"}, ""},
               {"abc", {"xyc"}, "xyc"},
               {"clip", {}, ""}};
  for (const auto& [wanted, offered, found] : names) {
    CloseName close(wanted);
    for (const char* name : offered) close.offer(name);
    EXPECT_EQ(close.found().value_or(""), found) << wanted;
  }
}

#ifdef __linux__
// Where there is another one.
TEST(ProcessorsTest, AThreadLeavesTheProcessorOfAnother) {
  const int first = processorNow();
  int second = first;
  std::thread([&] {
    leaveProcessor(first);
    second = processorNow();
  }).join();
  cpu_set_t ours;
  ASSERT_EQ(::sched_getaffinity(0, sizeof ours, &ours), 0);
  EXPECT_EQ(second != first, CPU_COUNT(&ours) > 1);
}
#endif

}  // namespace
}  // namespace tessaly
