#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <poll.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "platform/EndSignals.h"
#include "platform/RaiseSocket.h"
#include "platform/SiteLock.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

namespace fs = std::filesystem;
using Claim = SiteLock::Claim;

constexpr const char* kLock = ".tessaly.lock";
constexpr const char* kForeign = "4711\ntessaly\nstudio-2\nanna\n1700000000\n";

std::string ownHost() {
  char name[256] = {};
  ::gethostname(name, sizeof name - 1);
  return name;
}

TEST(SiteLockTest, OnlyAPersonDecidesAboutWhatAnotherHostLeft) {
  const struct {
    const char* what;
    std::string bytes;
    Claim claim;
  } cases[] = {
      {"empty", "", Claim::kHeld},
      {"no record", "something else\n\n\n", Claim::kHeld},
      {"of this host, its number another process's by now",
       "1\ntessaly\n" + ownHost() + "\nroot\n1600000000\n", Claim::kHeld},
      {"of another host", kForeign, Claim::kInUse},
      {"of another host, by an earlier version", "4711\ntessaly\nstudio-2\nf00d\nb007-1d\n", Claim::kInUse}};
  for (const auto& now : cases) {
    const TestSite site;
    site.write(kLock, now.bytes);
    SiteLock lock(site.root);
    EXPECT_EQ(lock.claim(), now.claim) << now.what;
    if (now.claim == Claim::kInUse) {
      EXPECT_EQ(site.read(kLock), now.bytes) << now.what << ": nobody has decided yet";
      EXPECT_EQ(lock.holder().host, "studio-2") << now.what;
      const bool whole = now.bytes == kForeign;
      EXPECT_EQ(lock.holder().user, whole ? "anna" : "") << now.what;
      EXPECT_EQ(lock.holder().process, 4711) << now.what;
      if (whole) {
        EXPECT_EQ(lock.holder().since, 1700000000);
      } else {
        EXPECT_GT(lock.holder().since, 1700000000) << "when the file was written";
      }
      EXPECT_EQ(lock.takeOver(), Claim::kHeld) << now.what;
    }
    SiteLock second(site.root);
    EXPECT_EQ(second.claim(), Claim::kInUse) << now.what;
    EXPECT_EQ(second.holder().process, ::getpid()) << now.what;
    EXPECT_EQ(second.holder().host, ownHost()) << now.what;
    const std::string since = std::to_string(second.holder().since);
    EXPECT_EQ(site.read(kLock), std::to_string(::getpid()) + "\ntessaly\n" + ownHost() + '\n' +
                                    second.holder().user + '\n' + since + '\n');
  }
}

TEST(SiteLockTest, ALockGoesWithItsHolderAndATakenOneIsNotGivenBackTwice) {
  const TestSite site;
  auto former = std::make_unique<SiteLock>(site.root);
  ASSERT_EQ(former->claim(), Claim::kHeld);
  former.reset();
  EXPECT_TRUE(fs::is_empty(site.root.path()));
  former = std::make_unique<SiteLock>(site.root);
  ASSERT_EQ(former->claim(), Claim::kHeld);
  SiteLock later(site.root);
  ASSERT_EQ(later.takeOver(), Claim::kHeld);
  former.reset();
  SiteLock third(site.root);
  EXPECT_EQ(third.claim(), Claim::kInUse);
}

TEST(SiteLockTest, WhatStandsInTheWayIsNeitherFollowedNorEmptiedNorWaitedFor) {
  const struct {
    const char* what;
    std::function<void(const fs::path& lock, const fs::path& victim)> put;
    Claim takenOver;
  } cases[] = {
      {"a link", [](auto& lock, auto& victim) { fs::create_symlink(victim, lock); }, Claim::kHeld},
      {"a link to nothing", [](auto& lock, auto& victim) { fs::create_symlink(victim.string() + "2", lock); },
       Claim::kHeld},
      {"a pipe", [](auto& lock, auto&) { ASSERT_EQ(::mkfifo(lock.c_str(), 0666), 0); }, Claim::kHeld},
      {"a folder", [](auto& lock, auto&) { fs::create_directory(lock); }, Claim::kNone}};
  for (const auto& now : cases) {
    const TestSite site;
    site.write("victim", "kept");
    now.put(site.root.path() / kLock, site.root.path() / "victim");
    SiteLock lock(site.root);
    EXPECT_EQ(lock.claim(), Claim::kInTheWay) << now.what;
    EXPECT_EQ(lock.takeOver(), now.takenOver) << now.what;
    EXPECT_EQ(site.read("victim"), "kept") << now.what;
    EXPECT_EQ(site.read("victim2"), "<missing>") << now.what;
  }
}

TEST(SiteLockTest, WhereThereIsNoFolderThereIsNoLock) {
  const TestSite site;
  site.write("file", "");
  for (const char* root : {"none", "file"}) {
    SiteLock lock{SiteRoot(site.root.path() / root)};
    EXPECT_EQ(lock.claim(), Claim::kNone) << root;
  }
}

TEST(EndSignalsTest, TheFirstWishIsTakenAndTheNextEnds) {
  const auto handlerOf = [](int number) {
    struct sigaction now {};
    ::sigaction(number, nullptr, &now);
    return now.sa_handler;
  };
  for (const int number : {SIGTERM, SIGINT})
    std::signal(number, SIG_DFL);  // whatever the test was started with
  std::signal(SIGHUP, SIG_IGN);
  {
    const EndSignals signals;
    pollfd wished{signals.descriptor(), POLLIN, 0};
    ::raise(SIGHUP);
    EXPECT_EQ(::poll(&wished, 1, 0), 0) << "what was ignored stays so";
    ::raise(SIGTERM);
    EXPECT_EQ(::poll(&wished, 1, 0), 1);
    EXPECT_EQ(handlerOf(SIGTERM), SIG_DFL);
    EXPECT_NE(handlerOf(SIGINT), SIG_DFL);
  }
  EXPECT_EQ(handlerOf(SIGINT), SIG_DFL);
  EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
  std::signal(SIGHUP, SIG_DFL);
}

TEST(RaiseSocketTest, OnlyAWindowThatAnswersCounts) {
  constexpr std::chrono::milliseconds kShort{20}, kLong{10000};
  const TestSite site, elsewhere;
  EXPECT_FALSE(askToRaise(site.root, kLong)) << "nobody listens";
  const RaiseSocket socket(site.root);
  EXPECT_FALSE(socket.answer()) << "nobody asks";
  EXPECT_FALSE(askToRaise(site.root, kShort)) << "the window hangs";
  EXPECT_FALSE(askToRaise(elsewhere.root, kLong));
  static_cast<void>(socket.answer());  // the one that nobody waits for any more
  std::thread window([&] {
    pollfd asked{socket.descriptor(), POLLIN, 0};
    while (::poll(&asked, 1, -1) != 1 || !socket.answer()) continue;
  });
  EXPECT_TRUE(askToRaise(SiteRoot(site.root.path() / "."), kLong));
  window.join();
}

}  // namespace
}  // namespace tessaly
