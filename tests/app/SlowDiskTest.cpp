// A disk that does not answer: what is waited for is told, and can be given up.
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <gmock/gmock.h>
#include <mutex>
#include <sys/syscall.h>
#include <unistd.h>

#include <QProgressDialog>

#include "tests/app/WindowFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

// Files whose path holds this text are not read before it is taken away.
class HungDisk {
 public:
  explicit HungDisk(std::string part) : part_(std::move(part)) { now = this; }
  ~HungDisk() { answer(); }
  void answer() {
    const std::scoped_lock guard(mutex_);
    now = nullptr;
    answers_ = true;
    answered_.notify_all();
  }
  static void wait(int file) {
    HungDisk* const hung = now;
    if (hung == nullptr) return;
    std::error_code none;
    const auto path = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(file), none).string();
    if (path.find(hung->part_) == std::string::npos) return;
    std::unique_lock guard(hung->mutex_);
    hung->reading_++;
    hung->answered_.wait(guard, [hung] { return hung->answers_; });
    hung->reading_--;
    hung->answered_.notify_all();
  }
  // Nobody is left in it.
  void awaitEnd() {
    answer();
    std::unique_lock guard(mutex_);
    answered_.wait(guard, [this] { return reading_ == 0; });
  }

 private:
  inline static std::atomic<HungDisk*> now = nullptr;
  std::string part_;
  std::mutex mutex_;
  std::condition_variable answered_;
  bool answers_ = false;
  int reading_ = 0;
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
  static void cancel(QProgressDialog& progress) { WindowDriver::click(progress, QStringLiteral("Cancel")); }
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
    HungDisk disk(now.file);
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
  HungDisk disk("macro001.mac");
  const std::string told =
      waitedFor([&] { user_.choose(a_.macros, "001"); }, [&](QProgressDialog&) { disk.answer(); });
  EXPECT_THAT(told, HasSubstr("macro001.mac"));
  EXPECT_THAT(status(), HasSubstr("opened: 001"));
  disk.awaitEnd();
}

}  // namespace
}  // namespace tessaly

// In place of the system's.
extern "C" ssize_t read(int file, void* space, size_t size) {
  tessaly::HungDisk::wait(file);
  return ::syscall(SYS_read, file, space, size);
}
