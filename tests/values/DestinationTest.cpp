#include <gtest/gtest.h>

#include "values/Destination.h"

namespace tessaly {
namespace {

TEST(Destination, IsWhatAFidBeginsWithAndAnythingElseIsNone) {
  struct {
    const char* fid;
    int index;  // -1: none
  } const cases[] = {{"QMF1.ME1", 0}, {"QMF4.", 3},    {"PANEL.MACRO1", 4}, {"QMF4", -1}, {"QMF5.ME1", -1},
                     {"QMF0.X", -1},  {"QMF11.X", -1}, {"qmf1.X", -1},      {".X", -1},   {"", -1}};
  for (const auto& row : cases) {
    const auto found = Destination::ofFid(row.fid);
    EXPECT_EQ(found ? found->index() : -1, row.index) << row.fid;
  }
  EXPECT_EQ(Destination::mainframeOf("QMF3").index(), 2);
  for (const char* other : {"PANEL", "QMF9", ""}) EXPECT_EQ(Destination::mainframeOf(other).index(), 0);
}

}  // namespace
}  // namespace tessaly
