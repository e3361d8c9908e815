#include <gtest/gtest.h>

#include "values/Timecode.h"

namespace tessaly {
namespace {

TEST(Timecode, PacksTwoDigitsAByteBesideTheMarks) {
  const struct {
    Timecode timecode;
    std::uint32_t packed;
  } cases[] = {
      {{}, 0},
      {{23, 59, 58, 29, false, false}, 0x23595829},
      {{23, 59, 58, 29, true, false}, 0x63595829},
      {{9, 7, 5, 3, false, true}, 0x09870503},
      {{39, 79, 99, 99, true, true}, 0x79F99999},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.timecode.packed(), c.packed);
    EXPECT_EQ(Timecode::fromPacked(c.packed), c.timecode);
  }
  // A number that stands in what is stored keeps its bits, as half a byte of 15 does.
  Timecode damaged = Timecode::fromPacked(0xBF8FFF0F);
  EXPECT_EQ(damaged.packedOver(0xBF8FFF0F), 0xBF8FFF0FU);
  damaged.seconds = 7;
  EXPECT_EQ(damaged.packedOver(0xBF8FFF0F), 0xBF8F070FU);
  // Hours beyond their digits leave the drop-frame mark alone.
  EXPECT_EQ((Timecode{45, 0, 0, 0, false, false}).packed(), 0x05000000U);
}

TEST(Timecode, ShowsItsTwoForms) {
  const Timecode marked{1, 2, 3, 4, true, true};
  EXPECT_EQ(marked.display(), "01:02:03.04");
  EXPECT_EQ(marked.display(true), "01:02:03.04*");
  EXPECT_EQ(marked.plain(), "01:02:03:04");
  EXPECT_EQ((Timecode{1, 2, 3, 4, false, false}).display(true), "01:02:03:04");
}

TEST(Timecode, ReadsTexts) {
  const struct {
    const char* text;
    Timecode timecode;
  } cases[] = {
      {"10:20:30:05", {10, 20, 30, 5, false, false}},
      {" 10\t:\n20 : 30 . 05 ", {10, 20, 30, 5, true, false}},
      {"10.20.30:05", {10, 20, 30, 5, false, false}},
      {"10:20", {10, 20, 0, 0, false, false}},
      {"::3", {0, 0, 3, 0, false, false}},
      {"1:2:3:4.9", {1, 2, 3, 4, false, false}},
      {"1:2x3:4", {1, 2, 0, 0, false, false}},
      {"999:2", {255, 2, 0, 0, false, false}},
      {" 10203005\n", {10, 20, 30, 5, false, false}},
      {"205", {0, 0, 2, 5, false, false}},
      {"99910203005", {255, 20, 30, 5, false, false}},
      {"", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(Timecode::fromText(c.text), c.timecode) << c.text;
}

TEST(Timecode, ReadsStoredValues) {
  EXPECT_EQ(Timecode::fromStored("1663643689").display(), "23:29:30.29");
  EXPECT_EQ(Timecode::fromStored("23:29:30.29").stored(), "1663643689");
  EXPECT_EQ(Timecode::fromStored("4294967295").packed(),
            Timecode::fromStored("99999999999999999999").packed());
  EXPECT_EQ(Timecode::fromStored(" 5").frames, 5);
  EXPECT_EQ(Timecode::fromStored("none"), Timecode());
}

}  // namespace
}  // namespace tessaly
