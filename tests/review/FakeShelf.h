#pragma once

#include <functional>
#include <map>

#include "review/MacroShelf.h"

namespace tessaly {

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

}  // namespace tessaly
