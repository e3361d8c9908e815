#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tessaly {

inline constexpr std::uint8_t kSeparatorCode = 255;

struct ClassicSubgroup {
  const char* name;  // empty for a blank separator row (code 255)
  std::uint8_t low, high;
};

// One row of the group menu: a heading or blank row has the code 255 and no subgroups.
struct ClassicGroup {
  const char* name;
  std::uint8_t cd;
  std::vector<ClassicSubgroup> subgroups;
};

// All rows in menu order, headings and blank rows included.
[[nodiscard]] const std::vector<ClassicGroup>& classicGroups();

// The group of a device code, or null.
[[nodiscard]] const ClassicGroup* classicGroup(std::uint8_t cd);

// "Crossbar", "Key1" (no blank before the number), or "" when the co is in none of the group's ranges.
[[nodiscard]] std::string subgroupName(const ClassicGroup& group, std::uint8_t co);

// "Me3 - Key2"; "cd: 09 - co: 05" for codes outside the table.
[[nodiscard]] std::string groupName(std::uint8_t cd, std::uint8_t co);

}  // namespace tessaly
