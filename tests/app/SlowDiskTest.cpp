// A disk that does not answer: what is waited for is told, and can be given up.
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <mutex>
#include <sys/syscall.h>
#include <unistd.h>

#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

enum class Call { kRead, kFlush, kRename };

// Such a call does not return, for files whose path and "$" hold this text, before the disk answers.
class HungDisk {
 public:
  HungDisk(Call call, std::string part) : call_(call), part_(std::move(part)) { now = this; }
  ~HungDisk() { answer(); }
  void answer() {
    const std::scoped_lock guard(mutex_);
    now = nullptr;
    answers_ = true;
    answered_.notify_all();
  }
  static void wait(Call call, const std::function<std::string()>& path) {
    HungDisk* const hung = now;
    if (hung == nullptr || hung->call_ != call || (path() + '$').find(hung->part_) == std::string::npos)
      return;
    std::unique_lock guard(hung->mutex_);
    hung->waiting_++;
    hung->answered_.wait(guard, [hung] { return hung->answers_; });
    hung->waiting_--;
    hung->answered_.notify_all();
  }
  static void wait(Call call, int file) {
    wait(call, [file] {
      std::error_code none;
      // Of what is on its way to a name, its folder.
      const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), none);
      return (path.filename().string().starts_with(".tessaly-") ? path.parent_path() / "*" : path).string();
    });
  }
  // Nobody is left in it.
  void awaitEnd() {
    answer();
    std::unique_lock guard(mutex_);
    answered_.wait(guard, [this] { return waiting_ == 0; });
  }

 private:
  inline static std::atomic<HungDisk*> now = nullptr;
  const Call call_;
  const std::string part_;
  std::mutex mutex_;
  std::condition_variable answered_;
  bool answers_ = false;
  int waiting_ = 0;
};

class SlowDiskTest : public WindowTest {};

TEST_F(SlowDiskTest, WhatHangsIsNamedAndGivenUpWithNothingChanged) {
  driver().choose(a_.applications, "Evening News");
  const struct {
    const char* file;
    std::function<void()> act;
    const char *waiting, *outcome;
  } cases[] = {
      {"macroWP2", [&] { driver().choose(a_.workplaces, "Workplace 2"); }, "macroWP2", "NOT listed: "},
      {"macro001.mac", [&] { driver().choose(a_.macros, "001"); }, "macro001.mac", "NOT opened: 001"},
      {"macro001.mac", [&] { rename(a_.renameMacro, "Other"); }, "macro001.mac", "NOT renamed: 001"},
      {"macro003.mac", [&] { create(a_.createMacro, 3); }, "macro003.mac", "NOT written to 003"}};
  const std::string first = read(macroPath(1));
  const std::string third = read(macroPath(3));
  for (const auto& now : cases) {
    HungDisk disk(Call::kRead, now.file);
    EXPECT_THAT(waitedFor(now.act, &cancel), HasSubstr(now.waiting)) << now.outcome;
    EXPECT_THAT(told(), HasSubstr(now.outcome));
    disk.awaitEnd();
    driver().choose(a_.workplaces, "Workplace 1");
    driver().choose(a_.macros, "001");
  }
  EXPECT_EQ(read(macroPath(1)), first);
  EXPECT_EQ(read(macroPath(3)), third);
}

TEST_F(SlowDiskTest, AVersionOfTheHistoryThatHangsIsGivenUp) {
  ASSERT_TRUE(fixture_.history.keep(R"(<macro name="Old"><data/></macro>)", {macroPath(1), {}, 0, {}},
                                    MacroChange::kSave));
  WindowDriver::answerNext([this](QDialog& dialog) {
    HungDisk disk(Call::kRead, std::string(fileNameOf(fixture_.history.list().front().file)));
    EXPECT_THAT(waitedFor([&] { WindowDriver::type(dialog, "filter", "O"); }, &cancel),
                HasSubstr("Reading "));
    EXPECT_EQ(dialog.findChild<ListBox*>("commands")->rows().row(0)->text, "it was cancelled");
    disk.awaitEnd();
    dialog.reject();
  });
  action("history").trigger();
}

TEST_F(SlowDiskTest, WhatComesLateIsTakenAllTheSame) {
  driver().choose(a_.applications, "Evening News");
  HungDisk disk(Call::kRead, "macro001.mac");
  const std::string waited =
      waitedFor([&] { driver().choose(a_.macros, "001"); }, [&](QProgressDialog&) { disk.answer(); });
  EXPECT_THAT(waited, HasSubstr("macro001.mac"));
  EXPECT_THAT(told(), HasSubstr("opened: 001"));
  disk.awaitEnd();
}

// Each row: where a save hangs, whether it is cancelled there, and what is told then and shown as unsaved.
TEST_F(SlowDiskTest, ASaveThatHangsShowsWhatItIsAtAndCanBeGivenUp) {
  driver().choose(a_.applications, "Evening News");
  const struct {
    Call call;
    const char *part, *waiting;
    bool cancelled;
    const char* outcome;
    bool saved;
  } rows[] = {
      {Call::kFlush, "macroWP1/*", "Saving 001", false, "^saved: 001", true},
      {Call::kFlush, "macroWP1/*", "Saving 001", true, "NOT saved: 001.*cancelled.*still unsaved", false},
      {Call::kRename, "macro001.mac", "Saving 001", true, "NOT saved: 001.*may do it yet", false},
      {Call::kFlush, "macroWP1$", "Saving 001", true, "^saved: 001.*may not survive a power cut", true},
      {Call::kFlush, "paneA.steps", "working copy", true, "NOT saved: 001.*cancelled.*still unsaved", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.outcome);
    driver().choose(a_.workplaces, "Workplace 1");
    driver().choose(a_.macros, "001");
    const std::string before = read(macroPath(1));
    driver().clickRow(a_.commands, 0);
    driver().press(a_.deleteCommand);
    HungDisk disk(row.call, row.part);
    const std::string waited = waitedFor([&] { driver().press(a_.saveChanges); },
                                         [&](QProgressDialog& progress) {
                                           shortcut(Qt::Key_S, Qt::ControlModifier);
                                           if (row.cancelled) cancel(progress);
                                           if (!row.cancelled || progress.labelText().contains("Cancelling"))
                                             disk.answer();
                                         });
    EXPECT_THAT(waited, HasSubstr(row.waiting));
    EXPECT_THAT(told(), testing::ContainsRegex(row.outcome));
    EXPECT_EQ(read(macroPath(1)) != before, row.saved) << "whole, and not behind anybody's back";
    EXPECT_EQ(edited(Pane::kA), !row.saved);
    disk.awaitEnd();
    if (row.saved) continue;
    shortcut(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(edited(Pane::kA)) << "its steps are there";
  }
}

TEST_F(SlowDiskTest, AWindowThatIsClosedWhileItSavesClosesOnceItHas) {
  driver().choose(a_.applications, "Evening News");
  driver().choose(a_.macros, "001");
  driver().clickRow(a_.commands, 0);
  driver().press(a_.deleteCommand);
  HungDisk disk(Call::kFlush, "macroWP1/*");
  static_cast<void>(waitedFor([&] { driver().press(a_.saveChanges); },
                              [&](QProgressDialog&) {
                                fixture_.window->close();
                                EXPECT_TRUE(fixture_.window->isVisible());
                                disk.answer();
                              }));
  disk.awaitEnd();
  WindowDriver::waitFor([this] { return !fixture_.window->isVisible(); }, "the window to close");
  EXPECT_THAT(told(), HasSubstr("saved: 001"));
}

}  // namespace
}  // namespace tessaly

// In place of the system's.
extern "C" ssize_t read(int file, void* space, size_t size) {
  tessaly::HungDisk::wait(tessaly::Call::kRead, file);
  return ::syscall(SYS_read, file, space, size);
}
extern "C" int fsync(int file) {
  tessaly::HungDisk::wait(tessaly::Call::kFlush, file);
  return static_cast<int>(::syscall(SYS_fsync, file));
}
extern "C" int rename(const char* from, const char* to) noexcept {
  tessaly::HungDisk::wait(tessaly::Call::kRename, [to] { return std::string(to); });
  return ::renameat(AT_FDCWD, from, AT_FDCWD, to);
}
