#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "classic/ClipList.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using ::testing::ElementsAre;

TEST(ClipList, ReadsOneNameALine) {
  TestSite site;
  EXPECT_TRUE(clipNames(site.root).empty());
  site.write("C:\\Programme\\RV48\\bin\\MPoolList.txt", "opener\r\n\r\n \nClip two \n\n\rlast");
  EXPECT_THAT(clipNames(site.root), ElementsAre("opener", "Clip two ", "last"));
  std::string many;
  for (int i = 0; i < 10000; ++i) many += "clip\n";
  site.write("C:\\Programme\\RV48\\bin\\MPoolList.txt", many);
  EXPECT_EQ(clipNames(site.root).size(), 10000u);
}

}  // namespace
}  // namespace tessaly
