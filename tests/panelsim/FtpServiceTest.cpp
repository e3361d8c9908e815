#include <fstream>
#include <future>

#include "PanelFixture.h"
#include "panelsim/Prompt.h"
#include "platform/ChildProcess.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

using Result = FtpClient::Result;

TEST_F(PanelTest, TransfersGoAsTheFaultSays) {
  start();
  const std::string big(300000, 'b'), cut = big.substr(0, 70000), remote = folder(3) + "macro003.mac",
                                      inTree = hostPathOfTree(3, "macro003.mac"),
                                      another = "<macro name=\"Another editor\"><data></data></macro>\n";
  std::string flipped = big, garbled = big, got;
  flipped[70000] ^= 1;  // in the second block that comes
  for (std::size_t i = 70000; i < big.size(); ++i) garbled[i] ^= 0x5A;
  const struct {
    const char* fault;
    Result put;
    std::string stored;
    Result get;
    std::string fetched;
  } table[] = {{"off", Result::kDone, big, Result::kDone, big},
               {"cut-transfer 70000", Result::kCut, cut, Result::kCut, cut},
               {"cut-transfer 400000", Result::kDone, big, Result::kDone, big},
               {"refuse-login", Result::kRefusedLogin, big, Result::kRefusedLogin, ""},
               {"disk-full", Result::kFull, "", Result::kDone, big},
               {"flip-byte 70000", Result::kDone, flipped, Result::kDone, flipped},
               {"flip-byte 300000", Result::kDone, big, Result::kDone, big},
               {"cut-silent 70000", Result::kDone, cut, Result::kDone, cut},
               {"garble 70000", Result::kDone, big, Result::kDone, garbled},
               {"swap-after-upload", Result::kDone, another, Result::kDone, another},
               {"refuse-download", Result::kDone, big, Result::kPanelError, ""},
               {"slow-transfer 1000000", Result::kDone, big, Result::kDone, big}};
  for (const auto& [fault, put, stored, get, fetched] : table) {
    SCOPED_TRACE(fault);
    ASSERT_TRUE(runPromptLine(*panel, "fault off").known);
    ASSERT_TRUE(runPromptLine(*panel, std::string("fault ") + fault).known);
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(ftp().put(big, remote), put);
    const std::chrono::milliseconds least(std::string_view(fault).starts_with("slow") ? 200 : 0);
    EXPECT_GE(std::chrono::steady_clock::now() - begun, least);
    EXPECT_TRUE(soon([&, left = stored] { return tree.read(inTree) == left; }));
    // What is to be fetched is whole again when the upload failed.
    if (put != Result::kDone) std::ofstream(inTree, std::ios::trunc) << big;
    EXPECT_EQ(ftp().get(remote, got), get);
    EXPECT_TRUE(get != Result::kDone || got == fetched);
  }
  ASSERT_TRUE(panel->setFaults({}));
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
  EXPECT_FALSE(connect() || panel->connections() > 0);
  EXPECT_EQ(ftp().get(remote, got), Result::kUnreachable);
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
