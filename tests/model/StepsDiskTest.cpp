#include <csignal>
#include <sys/resource.h>

#include "tests/model/StepsFixture.h"

namespace tessaly {
namespace {

TEST_F(StepsFileTest, AFullDiskTakesTheFileAndNotTheSteps) {
  Copy copy = worked();
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit none{read(kPath).size() + 20, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &none);
  copy.step("full");
  ::setrlimit(RLIMIT_FSIZE, &before);
  const auto trouble = copy.file.takeTrouble();
  ASSERT_TRUE(trouble);
  EXPECT_FALSE(trouble->found);
  EXPECT_EQ(copy.file.row().size(), 2U);
  EXPECT_EQ(Copy(root, "full").file.row().size(), 0U) << "no row that lacks a step";
  copy.step("room again");
  EXPECT_FALSE(copy.file.takeTrouble());
  EXPECT_EQ(Copy(root, "room again").file.row().size(), 3U);
}

}  // namespace
}  // namespace tessaly
