#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/cli/CommandFixture.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

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
