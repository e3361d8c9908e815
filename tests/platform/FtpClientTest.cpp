#include <chrono>
#include <future>
#include <string_view>

#include "TemporarySite.h"
#include "platform/ChildProcess.h"
#include "platform/FtpClient.h"
#include "platform/Text.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

using Result = FtpClient::Result;

// A server process over `folder`; it goes with this object, or with the test program.
class Server {
 public:
  explicit Server(const std::string& folder, const char* connections = "10") {
    const std::string script = sourcePath("tests/platform/ftp_server.py");
    EXPECT_TRUE(process_.start({"/usr/bin/python3", script, folder, connections}));
    port_ = static_cast<std::uint16_t>(parseInt(process_.readLine().value_or("")));
  }

  std::uint16_t port() const { return port_; }

 private:
  ChildProcess process_;
  std::uint16_t port_ = 0;
};

TEST(ChildProcessTest, IsTalkedToInLinesUntilEitherEnds) {
  ChildProcess child;
  EXPECT_FALSE(child.start({}) || child.start({"/none"}) || child.running());
  ASSERT_TRUE(child.start({"/bin/cat"}));
  EXPECT_FALSE(child.start({"/bin/cat"})) << "it runs already";
  const std::string long_(60'000, 'x');
  for (const std::string& line : {std::string("one"), std::string(), long_})
    EXPECT_TRUE(child.writeLine(line));
  for (const std::string& line : {std::string("one"), std::string(), long_})
    EXPECT_EQ(child.readLine(), line);
  EXPECT_EQ(child.readLine(0), std::nullopt);
  child.stop();
  EXPECT_FALSE(child.running() || child.readLine() || child.writeLine("gone"));
  ASSERT_TRUE(
      child.start({"/bin/sh", "-c", "echo $0; head -c 66000 /dev/zero; echo; exec sleep 1000", "two"}));
  EXPECT_EQ(child.readLine(), "two");
  EXPECT_EQ(child.readLine(10'000), std::nullopt) << "no line is that long";
  const auto start = std::chrono::steady_clock::now();
  child.stop();
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(2)) << "its time to end by itself";
}

class FtpClientTest : public TemporarySite {
 protected:
  FtpClientTest() {
    put("panel/flash/one #1%.mac", "abc");
    for (const char* name : {"cut", "stall", "drip", "broken", "more", "fewer"})
      put(std::string("panel/") + name + ".mac", std::string(5000, 'x'));
  }

  FtpClient client(const std::string& user = "target", const std::string& secret = "right") const {
    return {"127.0.0.1", server_.port(), {user, secret}};
  }

  Result get(const std::string& remote) { return client().get(remote, got_); }
  Result send(const std::string& remote) const { return client().put("old", remote); }

  std::string got_;
  const Server server_{host("").string()};
};

TEST_F(FtpClientTest, FilesGoThereAndBack) {
  const std::string large(3'000'000, '\r');  // a transfer as text would change every byte
  EXPECT_EQ(client().put(large, "/panel/flash/new.mac"), Result::kDone);
  EXPECT_EQ(bytes("panel/flash/new.mac"), large);
  EXPECT_EQ(get("/panel/flash/one #1%.mac"), Result::kDone);
  EXPECT_EQ(got_, "abc");
  EXPECT_EQ(get("/panel/flash/new.mac"), Result::kDone);
  EXPECT_EQ(got_, large);
}

TEST_F(FtpClientTest, AServerCannotSendTheClientElsewhere) {
  EXPECT_EQ(client("liar").get("/panel/flash/one #1%.mac", got_), Result::kDone)
      << "the data comes from the server itself, whatever address it names";
  EXPECT_EQ(client("liar").put(got_, "/panel/flash/new.mac"), Result::kDone);
  EXPECT_EQ(client("plain").get("/panel/flash/new.mac", got_), Result::kDone) << "it tells no sizes";
  EXPECT_EQ(bytes("panel/flash/new.mac"), "abc");
}

TEST_F(FtpClientTest, AFailedTransferSaysWhy) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(get("/panel/flash/none.mac"), Result::kNotFound);
  EXPECT_EQ(get("/panel/cut.mac"), Result::kCut);
  EXPECT_EQ(send("/panel/away.mac"), Result::kCut) << "it may have begun to write";
  EXPECT_EQ(get("/panel/more.mac"), Result::kCut) << "than came was announced";
  EXPECT_EQ(get("/panel/fewer.mac"), Result::kCut) << "not what it announces, and done";
  EXPECT_EQ(get("/panel/broken.mac"), Result::kPanelError);
  EXPECT_EQ(send("/panel/broken.mac"), Result::kPanelError);
  EXPECT_EQ(get("/panel/cut.mac\r\nDELE cut.mac"), Result::kNotFound) << "no second command";
  for (const char* path : {"", "/", "/panel/flash/", "panel/flash/one.mac"})
    EXPECT_EQ(get(path), Result::kNotFound) << path;
  EXPECT_EQ(send("/panel/none/x.mac"), Result::kNotFound);
  EXPECT_EQ(send("/panel/full.mac"), Result::kFull);
  EXPECT_EQ(client("target", "wrong").get("/panel/cut.mac", got_), Result::kRefusedLogin);
  for (const char* address : {"", "127.0.0.1/x", "a@127.0.0.1", "127.0.0.1 ", "none.invalid"}) {
    EXPECT_EQ(FtpClient(address, server_.port(), {"target", "right"}).get("/panel/cut.mac", got_),
              Result::kUnreachable)
        << address;
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "")
      << "neither the login nor anything else is printed";
}

TEST_F(FtpClientTest, AServerThatIsGoneOrFullCannotBeReached) {
  const Server crowded(host("").string(), "1");
  EXPECT_EQ(FtpClient("127.0.0.1", crowded.port(), {}).get("/panel/cut.mac", got_), Result::kUnreachable);
  std::uint16_t port = 0;
  { port = Server(host("").string()).port(); }
  EXPECT_EQ(FtpClient("127.0.0.1", port, {}).get("/panel/cut.mac", got_), Result::kUnreachable);
}

// A batch of many macros must not pay for a connection each, nor fail because one has ended meanwhile.
TEST_F(FtpClientTest, AKeptConnectionServesUntilItEnds) {
  constexpr const char* kOne = "/panel/flash/one #1%.mac";
  constexpr const char* kNew = "/panel/flash/new.mac";
  constexpr auto kKept = FtpClient::Connections::kKept;
  {
    FtpClient kept("127.0.0.1", server_.port(), {"target", "right"}, kKept);
    EXPECT_EQ(kept.get(kOne, got_), Result::kDone);
    EXPECT_EQ(kept.put("new", kNew), Result::kDone);
    EXPECT_EQ(kept.get("/panel/none.mac", got_), Result::kNotFound);
    EXPECT_EQ(kept.get(kNew, got_), Result::kDone);
    EXPECT_EQ(got_, "new");
    EXPECT_EQ(bytes("connections"), "c");
    EXPECT_EQ(kept.get("/panel/cut.mac", got_), Result::kCut);
    EXPECT_EQ(kept.get(kOne, got_), Result::kDone) << "what failed is not built upon";
    EXPECT_EQ(kept.put("new", "/panel/away.mac"), Result::kCut) << "not again: it may have been written";
    EXPECT_EQ(bytes("connections"), "cc");
  }
  for (const char* user : {"brief", "idle"}) {
    FtpClient kept("127.0.0.1", server_.port(), {user, "right"}, kKept);
    EXPECT_EQ(kept.get(kOne, got_), Result::kDone);
    EXPECT_EQ(kept.put("newer", kNew), Result::kDone) << "it was ended before anything was sent";
  }
  EXPECT_EQ(bytes("connections"), "cccccc");
}

TEST_F(FtpClientTest, CancelEndsASilentTransferAtOnce) {
  for (const char* user : {"target", "silent"}) {
    FtpClient client = this->client(user);
    auto result = std::async(std::launch::async, [&] { return client.get("/panel/stall.mac", got_); });
    EXPECT_EQ(result.wait_for(std::chrono::milliseconds(200)), std::future_status::timeout);
    const auto start = std::chrono::steady_clock::now();
    client.cancel();
    EXPECT_EQ(result.get(), Result::kCancelled) << user;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2)) << user;
    EXPECT_EQ(client.get("/panel/flash/one #1%.mac", got_), Result::kCancelled) << user;
  }
}

TEST_F(FtpClientTest, ASilentOrDrippingServerIsGivenUp) {
  auto login = std::async(std::launch::async, [&] { return client("silent").put("old", "/panel/x.mac"); });
  auto slow = std::async(std::launch::async, [&] {
    std::string bytes;
    return client().get("/panel/drip.mac", bytes);
  });
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(get("/panel/stall.mac"), Result::kStalled);
  EXPECT_EQ(slow.get(), Result::kTooSlow) << "a byte a second is not enough";
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(14));
  EXPECT_EQ(login.get(), Result::kStalled);
}

}  // namespace
}  // namespace tessaly
