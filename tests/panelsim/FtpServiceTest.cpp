#include <fstream>
#include <future>

#include "PanelFixture.h"
#include "panelsim/Prompt.h"
#include "platform/ChildProcess.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

using Result = FtpClient::Result;

TEST_F(PanelTest, TransfersSucceedOrFailAsTheFaultSays) {
  start();
  const std::string big(300000, 'b'), remote = folder(3) + "macro003.mac", inTree = "/" + remote.substr(1);
  std::string got;
  const struct {
    const char* what;
    FtpFaults faults;
    Result put, get;
    std::size_t left;  // bytes on the panel after the upload
  } table[] = {
      {"none", {}, Result::kDone, Result::kDone, big.size()},
      {"cut", {.cutAfter = 1000}, Result::kCut, Result::kCut, 1000},
      {"cut beyond the end", {.cutAfter = 400000}, Result::kDone, Result::kDone, big.size()},
      {"login", {.refuseLogin = true}, Result::kRefusedLogin, Result::kRefusedLogin, big.size()},
      {"full", {.diskFull = true}, Result::kFull, Result::kDone, 0},
      {"none again", {}, Result::kDone, Result::kDone, big.size()},
  };
  for (const auto& [what, faults, put, get, left] : table) {
    SCOPED_TRACE(what);
    ASSERT_TRUE(panel->setFaults({.control = {}, .ftp = faults}));
    EXPECT_EQ(ftp().put(big, remote), put);
    EXPECT_TRUE(soon([&, size = left] { return std::filesystem::file_size(hostPath(inTree)) == size; }));
    // What is to be fetched is whole again, whatever the upload left.
    std::ofstream(hostPath(inTree), std::ios::trunc) << big;
    EXPECT_EQ(ftp().get(remote, got), get);
  }
  EXPECT_EQ(ftp("wrong").get(remote, got), Result::kRefusedLogin);
  EXPECT_EQ(ftp().get(folder(3) + "macro004.mac", got), Result::kNotFound);
  EXPECT_EQ(ftp().get("/../../../../../etc/passwd", got), Result::kNotFound) << "the tree is the whole world";

  // A cancel ends what the panel holds up, whatever it leaves out: sending, reading, or the answer at the
  // end.
  const std::string huge(20'000'000, 'h');  // more than lies on the way to a panel that does not read
  const FtpFaults stall{.stallTransfer = true}, slow{.bytesPerSecond = 1000}, dead{.deadLine = true};
  for (const auto& [faults, bytes] : std::vector<std::pair<FtpFaults, const std::string*>>{
           {stall, nullptr}, {slow, nullptr}, {stall, &huge}, {stall, &big}, {slow, &huge}, {dead, &big}}) {
    ASSERT_TRUE(panel->setFaults({.control = {}, .ftp = faults}));
    FtpClient held = ftp();
    auto result = std::async(std::launch::async, [&held, &got, sent = bytes, &remote] {
      return sent != nullptr ? held.put(*sent, remote) : held.get(remote, got);
    });
    EXPECT_EQ(result.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    const auto start = std::chrono::steady_clock::now();
    held.cancel();
    EXPECT_EQ(result.get(), Result::kCancelled);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  }
  ASSERT_TRUE(panel->setFaults({}));
  EXPECT_EQ(ftp().put(big, remote), Result::kDone) << "what was cut off is in nobody's way";
  EXPECT_GE(logged("ftp: login target"), 5);
  panel->stop();
  EXPECT_FALSE(connect());
  EXPECT_EQ(ftp().get(remote, got), Result::kUnreachable);
}

TEST_F(PanelTest, APanelThatLiesStoresAndSendsAsTheFaultSays) {
  start();
  const std::string sent(100000, 'b'), remote = folder(3) + "macro003.mac";
  const auto put = [&] { return ftp().put(sent, remote); };
  const auto fetched = [&] {
    std::string bytes;
    EXPECT_EQ(ftp().get(remote, bytes), Result::kDone);
    return bytes;
  };
  const auto nonsense = [&](std::size_t from) {
    std::string bytes = sent;
    for (std::size_t i = from; i < bytes.size(); ++i) bytes[i] = static_cast<char>(bytes[i] ^ 0x5A);
    return bytes;
  };
  std::string flipped = sent;
  flipped[70000] ^= 1;  // in the second block that comes
  const struct {
    const char* fault;
    std::string stored, fetched;
  } cases[] = {
      {"flip-byte 70000", flipped, flipped},
      {"flip-byte 100000", sent, sent},  // beyond the end
      {"cut-silent 70000", sent.substr(0, 70000), sent.substr(0, 70000)},
      {"garble 70000", sent, nonsense(70000)},
      {"swap-after-upload", "<macro name=\"Another editor\"><data></data></macro>\n",
       "<macro name=\"Another editor\"><data></data></macro>\n"},
      {"slow-transfer 1000000", sent, sent},
  };
  for (const auto& [fault, stored, got] : cases) {
    SCOPED_TRACE(fault);
    ASSERT_TRUE(runPromptLine(*panel, "fault off").known);
    ASSERT_TRUE(runPromptLine(*panel, std::string("fault ") + fault).known);
    EXPECT_EQ(put(), Result::kDone) << "the panel says that all is well";
    EXPECT_TRUE(fetched() == got);
    EXPECT_TRUE(tree.read(hostPath("/" + remote.substr(1))) == stored);
  }

  ASSERT_TRUE(runPromptLine(*panel, "fault off").known &&
              runPromptLine(*panel, "fault refuse-download").known);
  std::string none;
  EXPECT_EQ(put(), Result::kDone);
  EXPECT_EQ(ftp().get(remote, none), Result::kPanelError);
  ASSERT_TRUE(runPromptLine(*panel, "fault off").known &&
              runPromptLine(*panel, "fault slow-transfer 200000").known);
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_EQ(put(), Result::kDone);
  EXPECT_GE(std::chrono::steady_clock::now() - begun, std::chrono::milliseconds(300));
}

TEST_F(PanelTest, TheProgramTalksAndItsFtpServerEndsWithIt) {
  ChildProcess program;
  ASSERT_TRUE(program.start({programPath("tessaly-panelsim"), "--control-port", "0", "--ftp-port", "0",
                             "--root", tree.root.path().string(), "--site", site.root.path().string()}));
  std::string ready;
  while (!ready.starts_with("ready ")) {
    const auto line = program.readLine(20000);
    ASSERT_TRUE(line);
    ready = *line;
  }
  const std::string mark = " ftp 127.0.0.1:";
  const int port = std::stoi(ready.substr(ready.find(mark) + mark.size()));
  FtpClient client("127.0.0.1", static_cast<std::uint16_t>(port), {.user = "target", .secret = "vintrosa"});
  const std::string local = macro("By FTP");
  EXPECT_EQ(client.put(local, folder(8) + "macro005.mac"), Result::kDone);
  // A line of this end comes; what the panel does is told with the time in front.
  const auto answers = [&](const std::string& command, const std::string& end) {
    std::optional<std::string> line;
    for (bool asked = program.writeLine(command); asked;) {
      line = program.readLine(10000);
      asked = line && !line->ends_with(end);
    }
    return line.has_value();
  };
  EXPECT_TRUE(answers("reload", "workplace 8, macro 005: By FTP"));
  EXPECT_TRUE(answers("mfd 8 3\nget PANEL.WP8.MFDCOUNT", "3"));
  EXPECT_TRUE(answers("fault refuse-login", "fault refuse-login"));
  EXPECT_EQ(client.put(local, folder(8) + "macro006.mac"), Result::kRefusedLogin);
  EXPECT_TRUE(answers("fault off", "fault off"));
  EXPECT_TRUE(answers("restart", " back"));
  EXPECT_EQ(client.put(local, folder(8) + "macro006.mac"), Result::kDone);
  program
      .stop();  // the end of its input leaves it serving, so it is killed: the server has to notice by itself
  EXPECT_TRUE(soon([&] { return client.put(local, folder(8) + "macro007.mac") == Result::kUnreachable; }));
}

}  // namespace
}  // namespace tessaly
