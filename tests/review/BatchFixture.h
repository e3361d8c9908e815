#pragma once

#include <gtest/gtest.h>

#include "review/MacroBatch.h"
#include "tests/review/FakeShelf.h"
#include "tests/support/TestSite.h"

namespace tessaly {

inline constexpr const char* kOld = "<old/>";
inline constexpr const char* kNew = "<new/>";

class MacroBatchTest : public testing::Test {
 protected:
  MacroBatchTest() {
    for (const int number : {0, 1, 2}) site.write(file(number), kOld);
  }
  static std::string file(int number) { return "c:\\wp\\" + macroFileName(MacroNumber::textOf(number)); }
  static MacroPlace disk(int number) { return {file(number), {}, 0, {}}; }
  static MacroPlace onPanel(int number) { return {{}, "10.0.0.1", 1, MacroNumber::textOf(number)}; }
  static BatchItem item(int number, std::optional<std::string> bytes = kNew,
                        HeldContent expected = HeldContent::of(kOld)) {
    return {disk(number), std::move(bytes), expected};
  }
  MacroBatch batchOf(std::vector<BatchItem> items, MacroBatch::Mode mode = MacroBatch::Mode::kAsManyAsGo) {
    return {places, "copy", MacroChange::kCopy, mode, std::move(items)};
  }
  static std::vector<MacroBatch::Row::State> statesOf(const MacroBatch& batch) {
    std::vector<MacroBatch::Row::State> states;
    for (const MacroBatch::Row& row : batch.rows()) states.push_back(row.state);
    return states;
  }
  std::vector<std::string> disk() const {
    std::vector<std::string> held;
    for (const int number : {0, 1, 2, 3}) held.push_back(site.read(file(number)));
    return held;
  }
  void protect(int number, bool on) const {
    using std::filesystem::perm_options, std::filesystem::perms;
    std::filesystem::permissions(site.root.resolve(file(number)), perms::owner_write,
                                 on ? perm_options::remove : perm_options::add);
  }

  TestSite site;
  MacroHistory history{site.root};
  FakeShelf panel;
  bool connected = true;
  BatchPlaces places{site.root, history, [this](const MacroPlace&) { return connected ? &panel : nullptr; }};
};

}  // namespace tessaly
