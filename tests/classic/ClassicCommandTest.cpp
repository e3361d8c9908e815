#include <gtest/gtest.h>
#include <numeric>

#include "classic/ClassicCommand.h"

namespace tessaly {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes counted(std::size_t count) {
  Bytes bytes(count);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
  return bytes;
}

ClassicCommand built(std::size_t parameters, std::uint8_t action = 0x20) {
  ClassicCommand command;
  command.build(action, 0x10, 0x05, 0x01, counted(parameters));
  return command;
}

TEST(ClassicCommand, ReadsTextByTheBufferRule) {
  const struct {
    const char* text;
    const char* debug;  // null: refused
  } cases[] = {
      {"23 10 05 01 ", "ac: 20 | cd: 10 | co: 05 | kw: 01"},
      {"e4 1F 05 aB 0A trailing", "ac: e0 | cd: 1f | co: 05 | kw: ab | params: 0a"},
      {"23 10 05 01", nullptr},    // the last byte needs its blank
      {"23 10 05 01  ", nullptr},  // two blanks in a row
      {" 23 10 05 01 ", nullptr},
      {"23 10 05 01 \t", "ac: 20 | cd: 10 | co: 05 | kw: 01"},
      {"23\t10 05 01 ", nullptr},
      {"23 10 05 001 ", nullptr},
      {"3 1 5 1 ", nullptr},  // one-digit bytes only fill the buffer
      {"23 1 5 1 ", nullptr},
      {"23 10 5 1 ", "ac: 20 | cd: 10 | co: 05 | kw: 01"},
      {"3 0 5 1 xx", "ac: 00 | cd: 00 | co: 05 | kw: 01"},
      {"2g z0 05 0! ff ", nullptr},  // 2g is 20: length 0
      {"2g3", nullptr},
      {"g3 z1 0x 01 ", "ac: 00 | cd: 01 | co: 00 | kw: 01"},
      {"24 10 05 01 ", nullptr},                                 // one byte short
      {"23 10 05 01 77 ", "ac: 20 | cd: 10 | co: 05 | kw: 01"},  // extra bytes
      {"", nullptr},
      {" ", nullptr},
  };
  for (const auto& entry : cases) {
    ClassicCommand command = built(2);
    EXPECT_EQ(command.decodeText(entry.text), entry.debug != nullptr) << entry.text;
    EXPECT_EQ(command.valid(), entry.debug != nullptr) << entry.text;
    EXPECT_EQ(command.debugText(), entry.debug ? entry.debug : ClassicCommand().debugText()) << entry.text;
  }
}

TEST(ClassicCommand, ReadsLengthsOfBothByteForms) {
  const struct {
    Bytes head;
    std::size_t following;  // bytes after the head
    int parameters;         // -1: refused
    std::uint16_t longLength;
  } cases[] = {
      {{0x20}, 9, -1, 0},
      {{0x21}, 9, -1, 0},
      {{0x22}, 9, -1, 0},
      {{0x23}, 2, -1, 0},
      {{0x23}, 3, 0, 0},
      {{0x3E}, 30, 27, 0},
      {{0x3E}, 29, -1, 0},
      {{0x3F}, 1, -1, 0},
      {{0x3F, 0, 2}, 9, -1, 0},
      {{0x3F, 0, 3}, 3, 0, 3},
      {{0x3F, 1, 0}, 254, -1, 0},
      {{0x3F, 1, 0}, 255, 252, 255},
      {{0x3F, 255, 255}, 65280, 65277, 65280},
  };
  for (const auto& entry : cases) {
    Bytes bytes = entry.head;
    const Bytes tail = counted(entry.following);
    bytes.insert(bytes.end(), tail.begin(), tail.end());
    ClassicCommand command;
    ASSERT_EQ(command.decode(bytes), entry.parameters >= 0) << int(entry.head[0]) << " " << entry.following;
    if (entry.parameters < 0) continue;
    EXPECT_EQ(command.action(), 0x20);
    EXPECT_EQ(command.kw(), 3);
    EXPECT_EQ(command.parameters().size(), static_cast<std::size_t>(entry.parameters));
    EXPECT_EQ(command.longLength(), entry.longLength);
    EXPECT_EQ(command.longForm(), entry.longLength != 0);
  }
}

// A length of 31 is written short and taken for the long form's mark when read: cd and co become the length.
TEST(ClassicCommand, WritesThirtyOneShortAndReadsItLong) {
  ClassicCommand command = built(28);
  EXPECT_FALSE(command.longForm());
  EXPECT_EQ(command.text().substr(0, 12), "3f 10 05 01 ");
  ClassicCommand back;
  command.build(0x20, 0, 9, 7, counted(28));
  ASSERT_TRUE(back.decodeText(command.text()));
  EXPECT_EQ(back.debugText(), "ac: 20 | cw: 09 | 00 | cd: 07 | co: 01 | kw: 02 | params: 03 04 05 06 07 08");
}

TEST(ClassicCommand, WritesALongTextThatNoReaderTakesBack) {
  EXPECT_FALSE(built(28).readsBack() || built(29).readsBack());
  EXPECT_EQ(built(29).text().substr(0, 20), "20 20 0010 05 01 01 ");
  EXPECT_EQ(built(300).text().substr(0, 11), "20 2f 0110 ");
  EXPECT_EQ(built(300).debugText().substr(0, 49), "ac: 20 | cw: 2f | 01 | cd: 10 | co: 05 | kw: 01 |");
  EXPECT_EQ(built(70000).longLength(), 0xFFFF);
}

TEST(ClassicCommand, TakesItsOwnParameters) {
  ClassicCommand command;
  command.build(0x20, 1, 2, 3, Bytes{0x44, 9, 8, 7, 6});
  command.build(0x40, 1, 2, 3, command.parameters());
  EXPECT_EQ(command.text(), "48 01 02 03 44 09 08 07 06 ");
  ASSERT_TRUE(command.decode(command.parameters()));
  EXPECT_EQ(command.text(), "44 09 08 07 06 ");
  EXPECT_EQ(command.parameter(0), 6);
  EXPECT_EQ(command.parameter(1), 0);
}

}  // namespace
}  // namespace tessaly
