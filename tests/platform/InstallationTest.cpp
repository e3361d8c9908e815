#include <gtest/gtest.h>

#include "platform/Installation.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

TEST(InstallationTest, TheSampleSiteIsFoundFromTheProgram) {
  const std::filesystem::path site = installedSiteFolder();
  ASSERT_FALSE(site.empty());
  EXPECT_TRUE(std::filesystem::equivalent(site, sourcePath("site")));
}

}  // namespace
}  // namespace tessaly
