#include <gtest/gtest.h>

#include "platform/Installation.h"
#include "platform/LoadedLibrary.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

TEST(InstallationTest, TheSampleSiteIsFoundFromTheProgram) {
  const std::filesystem::path site = installedSiteFolder();
  ASSERT_FALSE(site.empty());
  EXPECT_TRUE(std::filesystem::equivalent(site, sourcePath("site")));
}

// As when the system has no descriptor left for a moment.
struct LoadsLater {
  int tries = 0;
  bool load() { return ++tries == 2; }
};

TEST(InstallationTest, ALibraryThatCouldNotBeLoadedIsTriedAgainUntilItIs) {
  EXPECT_EQ(loadedFunctions<LoadsLater>(), nullptr);
  for (int time = 0; time < 2; ++time) {
    const LoadsLater* there = loadedFunctions<LoadsLater>();
    ASSERT_NE(there, nullptr);
    EXPECT_EQ(there->tries, 2);
  }
}

}  // namespace
}  // namespace tessaly
