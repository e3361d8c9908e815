#include <gtest/gtest.h>

#include "platform/MacroNumber.h"
#include "platform/Workplace.h"

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

}  // namespace
}  // namespace tessaly
