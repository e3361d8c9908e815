#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

#include "platform/LocalTime.h"

namespace tessaly {
namespace {

TEST(LocalTime, IsThatOfTheZone) {
  ::setenv("TZ", "UTC-2", 1);
  ::tzset();
  EXPECT_EQ(localTimeText(1'956'314'096'789), "2031-12-29 14:34:56");
}

}  // namespace
}  // namespace tessaly
