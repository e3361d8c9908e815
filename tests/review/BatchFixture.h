#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <map>

#include "model/MacroHistory.h"
#include "review/MacroBatch.h"
#include "tests/support/TestSite.h"

namespace tessaly {

inline constexpr const char* kOld = "<old/>";
inline constexpr const char* kNew = "<new/>";

// A workplace that holds files, and refuses those that a test says.
class FakeShelf : public MacroShelf {
 public:
  std::string title() const override { return "fake"; }
  MacroPlace place(MacroNumber number) const override { return {{}, "10.0.0.1", 1, number.text()}; }
  Expected<std::vector<Held>> list() override {
    std::vector<Held> held;
    for (const int number : listed) held.push_back({*MacroNumber::of(number), {}});
    return held;
  }
  Expected<std::string> read(MacroNumber number) override {
    if (onRead) onRead();
    if (number.value() == unreadable) return Failure{Failure::Kind::kPanel, "cannot be read"};
    const auto file = files.find(number.value());
    if (file == files.end()) return Failure{Failure::Kind::kMissing, "is not there"};
    return file->second;
  }
  Outcome writable() const override { return able; }
  ShelfWrite write(MacroNumber number, std::string_view bytes, MacroChange,
                   const BeforeWrite& before) override {
    if (onAsked) onAsked();
    if (Outcome asked = before({read(number), {}}); !asked)
      return {ShelfWrite::State::kAsBefore, asked.failure()};
    ++writes;
    if (onWrite) onWrite();
    if (tears) files[number.value()] = bytes.substr(0, 2);
    if (tears) return {ShelfWrite::State::kUnknown, {Failure::Kind::kDiskError, "it stored something else"}};
    if (refused == number.value() || losses-- > 0)
      return {ShelfWrite::State::kAsBefore, {Failure::Kind::kPanel, "the disk is full"}};
    files[number.value()] = bytes;
    return {ShelfWrite::State::kWritten};
  }
  ShelfWrite remove(MacroNumber number, const BeforeWrite&) override {
    files.erase(number.value());
    return {ShelfWrite::State::kWritten};
  }
  void cancel() override { cancelled = true; }

  std::map<int, std::string> files;
  std::vector<int> listed;
  int unreadable = -1;
  int refused = -1;
  int losses = 0;  // so many writes fail
  int writes = 0;
  bool tears = false, cancelled = false;
  Outcome able = {};
  std::function<void()> onRead, onAsked, onWrite;
};

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
