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

#include <QProgressDialog>

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

class SlowDiskTest : public testing::Test {
 protected:
  // While `act` waits, each time: what is waited for is noted, and `then` done.
  std::string waitedFor(const std::function<void()>& act, const std::function<void(QProgressDialog&)>& then) {
    std::string told;
    QTimer looking;
    QObject::connect(&looking, &QTimer::timeout, [&] {
      auto* progress = fixture_.window->findChild<QProgressDialog*>();
      if (progress == nullptr || !progress->isVisible()) return;
      told = progress->labelText().toStdString();
      then(*progress);
    });
    looking.start(5);
    act();
    return told;
  }
  // Once it is offered.
  static void cancel(QProgressDialog& progress) {
    if (progress.findChild<QAbstractButton*>() != nullptr)
      WindowDriver::click(progress, QStringLiteral("Cancel"));
  }
  // With Ctrl, whatever window has the keyboard.
  void press(Qt::Key key) const {
    QApplication::setActiveWindow(fixture_.window.get());
    QTest::keyClick(fixture_.window.get(), key, Qt::ControlModifier);
  }
  [[nodiscard]] std::string status() const { return fixture_.status().toStdString(); }

  WindowFixture fixture_{offlineClient()};
  const PaneDescriptor::ControlIds& a_ = WindowFixture::ids(Pane::kA);
  const WindowDriver& user_ = *fixture_.driver;
};

TEST_F(SlowDiskTest, WhatHangsIsNamedAndGivenUpWithNothingChanged) {
  user_.choose(a_.applications, "Evening News");
  const struct {
    const char* file;
    std::function<void()> act;
    const char *waiting, *outcome;
  } cases[] = {
      {"macroWP2", [&] { user_.choose(a_.workplaces, "Workplace 2"); }, "macroWP2", "NOT listed: "},
      {"macro001.mac", [&] { user_.choose(a_.macros, "001"); }, "macro001.mac", "NOT opened: 001"},
      {"macro001.mac",
       [&] {
         user_.press(a_.renameMacro, [](QDialog& dialog) {
           WindowDriver::type(dialog, "newName", QStringLiteral("Other"));
           WindowDriver::click(dialog, QStringLiteral("OK"));
         });
       },
       "macro001.mac", "NOT renamed: 001"},
      {"macro003.mac",
       [&] {
         user_.press(a_.createMacro, [](QDialog& dialog) {
           WindowDriver::type(dialog, "position", QStringLiteral("3"));
           WindowDriver::type(dialog, "name", QStringLiteral("Other"));
           WindowDriver::click(dialog, QStringLiteral("OK"));
         });
       },
       "macro003.mac", "NOT written to 003"},
  };
  const std::string folder = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\";
  const std::string first = fixture_.site.read(folder + "macro001.mac");
  const std::string third = fixture_.site.read(folder + "macro003.mac");
  for (const auto& now : cases) {
    HungDisk disk(Call::kRead, now.file);
    EXPECT_THAT(waitedFor(now.act, &cancel), HasSubstr(now.waiting)) << now.outcome;
    EXPECT_THAT(status(), HasSubstr(now.outcome));
    disk.awaitEnd();
    user_.choose(a_.workplaces, "Workplace 1");
    user_.choose(a_.macros, "001");
  }
  EXPECT_EQ(fixture_.site.read(folder + "macro001.mac"), first);
  EXPECT_EQ(fixture_.site.read(folder + "macro003.mac"), third);
}

TEST_F(SlowDiskTest, WhatComesLateIsTakenAllTheSame) {
  user_.choose(a_.applications, "Evening News");
  HungDisk disk(Call::kRead, "macro001.mac");
  const std::string told =
      waitedFor([&] { user_.choose(a_.macros, "001"); }, [&](QProgressDialog&) { disk.answer(); });
  EXPECT_THAT(told, HasSubstr("macro001.mac"));
  EXPECT_THAT(status(), HasSubstr("opened: 001"));
  disk.awaitEnd();
}

// Each row: where a save hangs, whether it is cancelled there, and what is told then and shown as unsaved.
TEST_F(SlowDiskTest, ASaveThatHangsShowsWhatItIsAtAndCanBeGivenUp) {
  const std::string file = "c:\\programme\\rv48\\appli\\Evening News\\CP1\\macroWP1\\macro001.mac";
  user_.choose(a_.applications, "Evening News");
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
    user_.choose(a_.workplaces, "Workplace 1");
    user_.choose(a_.macros, "001");
    const std::string before = fixture_.site.read(file);
    user_.clickRow(a_.commands, 0);
    user_.press(a_.deleteCommand);
    HungDisk disk(row.call, row.part);
    const std::string told = waitedFor([&] { user_.press(a_.saveChanges); },
                                       [&](QProgressDialog& progress) {
                                         press(Qt::Key_S);
                                         if (row.cancelled) cancel(progress);
                                         if (!row.cancelled || progress.labelText().contains("Cancelling"))
                                           disk.answer();
                                       });
    EXPECT_THAT(told, HasSubstr(row.waiting));
    EXPECT_THAT(status(), testing::ContainsRegex(row.outcome));
    EXPECT_EQ(fixture_.site.read(file) != before, row.saved) << "whole, and not behind anybody's back";
    EXPECT_EQ(user_.control<QWidget>(a_.saveChanges).isVisible(), !row.saved);
    disk.awaitEnd();
    if (row.saved) continue;
    press(Qt::Key_Z);
    EXPECT_FALSE(user_.control<QWidget>(a_.saveChanges).isVisible()) << "its steps are there";
  }
}

TEST_F(SlowDiskTest, AWindowThatIsClosedWhileItSavesClosesOnceItHas) {
  user_.choose(a_.applications, "Evening News");
  user_.choose(a_.macros, "001");
  user_.clickRow(a_.commands, 0);
  user_.press(a_.deleteCommand);
  HungDisk disk(Call::kFlush, "macroWP1/*");
  static_cast<void>(waitedFor([&] { user_.press(a_.saveChanges); },
                              [&](QProgressDialog&) {
                                fixture_.window->close();
                                EXPECT_TRUE(fixture_.window->isVisible());
                                disk.answer();
                              }));
  disk.awaitEnd();
  WindowDriver::waitFor([this] { return !fixture_.window->isVisible(); }, "the window to close");
  EXPECT_THAT(status(), HasSubstr("saved: 001"));
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
