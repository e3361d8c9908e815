#include <gtest/gtest.h>
#include <map>

#include "classic/ClassicDescription.h"
#include "classic/ClassicGroups.h"
#include "platform/Sha256.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

DecodingList listOf(const std::string& entries) {
  return DecodingList::parse("CD 0x00\nCO 0x20\n" + entries, 1, 0x20).value();
}

std::string described(const DecodingList* list, std::vector<std::uint8_t> parameters,
                      std::uint8_t action = 0x20) {
  ClassicCommand command;
  command.build(action, 1, 0x20, 0x01, parameters);
  return describeClassic(command, list);
}

TEST(ClassicDescription, DescribesEveryParameterType) {
  const std::string bi = "pt_AnalogBi \"pos\"\n:0x00 0x00 \"l\"\n:0x64 0x00 \"n\"\n:0x2c 0x01 \"r\"\n";
  const struct {
    std::string parameters;
    std::vector<std::uint8_t> bytes;
    const char* text;
  } cases[] = {
      {"", {1, 2}, ""},
      {"pt_Byte \"0\"\n", {200}, " - 200"},
      {"pt_Byte \"0\"\n:0x9c\n:0x64\n", {0x9c}, " - -100"},
      {"pt_Word \"0\"\npt_Long \"0\"\n", {1, 2, 0xff, 0xff, 0xff, 0xff}, " - 513 - 4294967295"},
      {"pt_ByteEnum \"mode\"\n:0x01 \"on\" \"switched on\"\n", {1}, " - mode: switched on"},
      {"pt_ByteEnum \"mode\"\n:0x01 \"on\"\n", {2}, " - mode: 2"},
      {"pt_ByteEnum \"a\"\n:0x01 \"on\"\npt_ByteEnum \"b\"\n:0x02 \"off\"\n", {2, 2}, " - a: 2 - b: off"},
      {"pt_Analog \"gain\"\n", {0x10, 0x27}, " - gain: 10000"},
      {"pt_Analog \"gain\"\n:0x00 0x00 \"\"\n:0xe8 0x03 \"\"\n", {0xf4, 0x01}, " - gain: 50%"},
      {"pt_Analog \"gain\"\n:0x00 0x00 \"\"\n:0xe8 0x03 \"\"\n", {0x05, 0x00}, " - gain: 1%"},
      {"pt_Analog \"gain\"\n:0x9c 0xff \"\"\n:0x64 0x00 \"\"\n", {0xce, 0xff}, " - gain: 25%"},
      {"pt_Analog \"gain\"\n:0x05 0x00 \"\"\n:0x05 0x00 \"\"\n", {5, 0}, " - gain: 5"},
      {bi, {0x64, 0x00}, " - pos: 0%"},
      {bi, {0x00, 0x00}, " - pos: -100%"},
      {bi, {0xc8, 0x00}, " - pos: 50%"},
      {"pt_AnalogBi \"pos\"\n:0x00 0x00 \"l\"\n:0x64 0x00 \"n\"\n", {5, 0}, " - pos: 5"},
      // Falls from 9 over 5 to 4; 2 is beyond the end.
      {"pt_AnalogBi \"\"\n:0x09 0x00 \"\"\n:0x05 0x00 \"\"\n:0x04 0x00 \"\"\n", {8, 0}, " - -75%"},
      {"pt_AnalogBi \"\"\n:0x09 0x00 \"\"\n:0x05 0x00 \"\"\n:0x04 0x00 \"\"\n", {2, 0}, " - 300%"},
      {"pt_Timecode \"at\"\n", {0x05, 0x30, 0x20, 0x10}, " - at: 10:20:30:05"},
      {"pt_String \"s\"\npt_Clipname \"\"\n", {'a', 'b', 0, 'c'}, " - s: ab - c"},
      {"pt_Input \"src\"\n", {7}, " - src: Input 07"},
      {"pt_Input \"\"\npt_Byte \"0\"\n", {0, 1, 9}, " - Black source hold on - 9"},
      {"pt_Input \"\"\n", {97, 0}, " - unknown input source hold off"},
      {"pt_Input \"\"\npt_Byte \"0\"\n", {254, 1, 9}, " - unknown input source hold on - 9"},
      {"pt_Input \"\"\npt_Byte \"0\"\n", {255, 0, 0, 0}, " - extended input"},
      {"pt_Own \"u\"\npt_Byte \"0\"\n", {4}, " - u:  - 4"},
      {"pt_Byte \"0\"\npt_Word \"0\"\npt_Word \"0\"\n", {4, 1}, " - 4- not enough params!!!"},
      {"pt_Clipname \"c\"\n", {}, "- not enough params!!!"},
      {"pt_Input \"c\"\n", {}, "- not enough params!!!"},
  };
  for (const auto& entry : cases) {
    const DecodingList list = listOf("[0x01] 0x07 \"n\" \"Name\"\n" + entry.parameters);
    EXPECT_EQ(described(&list, entry.bytes), std::string("Set - Me1 - Key1 - Name") + entry.text)
        << entry.parameters;
  }
}

TEST(ClassicDescription, NamesActions) {
  const std::string one = "[0x01] 0x07 \"N\"\npt_ByteEnum \"\"\n:0x01 \"up\"\n:0xff \"down\"\n";
  const DecodingList single = listOf(one), several = listOf(one + one);
  const struct {
    std::uint8_t action;
    const DecodingList* list;
    std::uint8_t value;
    const char* text;
  } cases[] = {
      {0x20, &several, 1, "Set - Me1 - Key1 - N - up"},
      {0xA0, &several, 1, "Set - Me1 - Key1 - N - up"},
      {0x40, &single, 0xff, "Increment - Me1 - Key1 - N - down"},
      {0x40, &several, 1, "Toggle up - Me1 - Key1 - N - up"},
      {0xC0, &several, 0xff, "Toggle down - Me1 - Key1 - N - down"},
      {0x40, &several, 2, "Increment - Me1 - Key1 - kw: 01  | params: 02"},
      {0x60, &single, 1, "Read - Me1 - Key1 - N - up"},
      {0xE0, &single, 1, "Trigger - Me1 - Key1 - N - up"},
      {0x80, nullptr, 1, "ac: 80 - Me1 - Key1 - kw: 01  | params: 01"},
      {0x00, nullptr, 1, "ac: 00 - Me1 - Key1 - kw: 01  | params: 01"},
  };
  for (const auto& entry : cases) EXPECT_EQ(described(entry.list, {entry.value}, entry.action), entry.text);
  EXPECT_EQ(described(nullptr, {}), "Set - Me1 - Key1 - kw: 01  | params:");
}

TEST(ClassicGroups, NameEveryPairOnce) {
  const struct {
    std::uint8_t cd, co;
    const char* name;
  } cases[] = {
      {3, 1, "Me3 - Crossbar"},
      {1, 35, "Me1 - Key4"},
      {0, 36, "PP - Ext-Key1"},
      {4, 16, "cd: 04 - co: 10"},
      {19, 24, "DVE - DVx Global"},
      {19, 255, "cd: 13 - co: ff"},
      {255, 255, "cd: ff - co: ff"},
      {29, 95, "Machine Control - Media Player LAN32"},
      {9, 5, "cd: 09 - co: 05"},
      {2, 161, "Me2 - Dpm Channel1"},
      {30, 0, "Master TimeMemo - Default Application"},
  };
  for (const auto& entry : cases) EXPECT_EQ(groupName(entry.cd, entry.co), entry.name);

  // No device code and no command code twice, and the menu as it is on every panel.
  std::map<int, int> devices;
  std::string menu;
  for (const ClassicGroup& group : classicGroups()) {
    EXPECT_TRUE(++devices[group.cd] == 1 || group.cd == kSeparatorCode) << group.name;
    menu += format("%s %d\n", group.name, group.cd);
    std::map<int, int> commands;
    for (const ClassicSubgroup& subgroup : group.subgroups) {
      menu += format("  %s %d-%d\n", subgroup.name, subgroup.low, subgroup.high);
      for (int co = subgroup.low; co <= subgroup.high; ++co)
        EXPECT_TRUE(++commands[co] == 1 || co == 255) << co;
    }
    EXPECT_EQ(group.subgroups.empty(), group.cd == kSeparatorCode) << group.name;
  }
  EXPECT_EQ(sha256Text(menu).value_or("").substr(0, 16), "fd41a8fc5b77cddd") << menu;
}

}  // namespace
}  // namespace tessaly
