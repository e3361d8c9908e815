#include <gtest/gtest.h>

#include "model/MacroHistory.h"
#include "platform/Files.h"
#include "tests/support/TestSite.h"
#include "tests/support/WatchedFlushes.h"

namespace tessaly {
namespace {

constexpr const char* kKeptMacro = "c:\\appli\\macro007.mac";

// Whatever cannot be brought to the disk: a macro has its record, and a record its macro.
TEST(MacroHistoryDiskTest, WhatIsKeptIsKeptWithItsRecordOrNotAtAll) {
  const TestSite site;
  MacroHistory history(site.root, {},
                       [] { return std::chrono::system_clock::time_point(std::chrono::hours(24 * 20000)); });
  std::size_t flushed = 1;
  bool unflushed = false;
  for (std::size_t failing = 1; failing <= flushed; ++failing) {
    site.write(kKeptMacro, std::to_string(failing));
    const Flushes flushes(failing);
    const Outcome kept = history.keepFile(kKeptMacro, MacroChange::kSave);
    flushed = std::max(flushed, flushes.names.size());
    unflushed = unflushed || (!kept && kept.written());
    const std::vector<KeptMacro> all = history.list();
    ASSERT_FALSE(kept.written() && all.empty()) << failing;
    for (const KeptMacro& macro : all) EXPECT_TRUE(macro.place) << failing;
    if (kept.written()) {
      EXPECT_EQ(site.read(all.front().file), std::to_string(failing));
    }
    EXPECT_EQ(listFolder(site.root, "history\\2024-10-04")->size(), 2 * all.size()) << failing;
  }
  EXPECT_TRUE(unflushed);
}

}  // namespace
}  // namespace tessaly
