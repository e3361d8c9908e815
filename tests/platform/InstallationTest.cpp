#include <gtest/gtest.h>

#include "platform/Installation.h"

namespace tessaly {
namespace {

TEST(InstallationTest, TheSampleSiteIsFoundFromTheProgram) {
  const std::filesystem::path site = installedSiteFolder();
  ASSERT_FALSE(site.empty());
  EXPECT_TRUE(std::filesystem::equivalent(site, std::filesystem::path(TESSALY_SOURCE_DIR) / "site"));
}

}  // namespace
}  // namespace tessaly
