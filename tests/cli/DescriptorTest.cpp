#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "model/MacroHistory.h"
#include "review/MacroBatch.h"
#include "tests/cli/CommandFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

#ifndef __clang__  // whose sanitizers want descriptors of their own
class NoDescriptors {
 public:
  NoDescriptors() {
    ::getrlimit(RLIMIT_NOFILE, &before_);
    const rlimit none{0, before_.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;

 private:
  rlimit before_{};
};

// Catches what cannot be read for a moment and passes for nothing: settings would be written over by the
// defaults, a batch that was cut short stays so unseen, and nobody would look again.
TEST_F(Commands, WhatCannotBeReadNowIsNotNothing) {
  output({"settings", "--address-a", "10.1.1.1", "--address-b", "10.2.2.2"});
  site.write("batches\\note", "");
  const std::string why = ": Too many open files\n", batches = "the folder of them cannot be read" + why;
  std::vector<Ran> ran;
  {
    const NoDescriptors none;
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"settings", "--address-a", "10.3.3.3"}, {"list", "c:\\appli"}})
      ran.push_back(run(words));
  }
  for (const Ran& each : ran) {
    EXPECT_EQ(each.code, 1);
    EXPECT_EQ(each.out, "");
    EXPECT_THAT(each.errors, testing::StartsWith("nobody knows whether a batch was cut short: " + batches));
    EXPECT_GT(each.errors.size(), each.errors.find(why) + why.size());
    EXPECT_THAT(each.errors, testing::EndsWith(why));
  }
  EXPECT_THAT(output({"settings"}), testing::HasSubstr("10.2.2.2"));
  EXPECT_THAT(output({"settings"}), testing::HasSubstr("10.1.1.1"));
}

// An undo of many macros would be forgotten.
TEST_F(Commands, AHistoryThatCannotBeReadIsNotEmpty) {
  const MacroPlace place{"c:\\appli\\macro007.mac", {}, 0, {}};
  MacroHistory history(site.root);
  ASSERT_TRUE(history.keep("<old/>", place, MacroChange::kCopy));
  const std::vector<BatchTrace> traces{
      {place, HeldContent::of("<old/>"), history.takeKept(), HeldContent::of("<new/>")}};
  std::size_t lost = 0;
  {
    const NoDescriptors none;
    const Ran ran = run({"history"});
    EXPECT_EQ(ran.code, 1);
    EXPECT_EQ(ran.errors, "a part of the history cannot be read: Too many open files\n");
    EXPECT_FALSE(undoing(traces, site.root, history, lost));
  }
  EXPECT_THAT(*undoing(traces, site.root, history, lost), SizeIs(1));
  std::filesystem::remove_all(site.root.path() / "history");
  EXPECT_THAT(*undoing(traces, site.root, history, lost), IsEmpty());
  EXPECT_EQ(lost, 1U) << "what is surely gone can be undone no more";
}
#endif

TEST_F(Commands, WhatIsOpenIsWrittenToAndNotReplaced) {
  const std::filesystem::path pipe = site.root.path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const int reader = ::open(pipe.c_str(), O_RDWR);
  output({"create", pipe.string(), "Opener"});
  output({"create", "/dev/fd/" + std::to_string(reader), "Second"});
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
  std::string got(200, '\0');
  got.resize(static_cast<std::size_t>(std::max<ssize_t>(0, ::read(reader, got.data(), got.size()))));
  EXPECT_THAT(got, testing::AllOf(HasSubstr("Opener"), HasSubstr("Second")));
  ::close(reader);
  EXPECT_THAT(output({"create", "/dev/stdout", "Third"}), HasSubstr("Third"));
  std::filesystem::create_symlink("/dev/stdout", site.root.path() / "link");
  EXPECT_THAT(output({"create", (site.root.path() / "link").string(), "Fourth"}), HasSubstr("Fourth"));
}

}  // namespace
}  // namespace tessaly
