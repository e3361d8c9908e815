#include <future>
#include <set>

#include "PanelFixture.h"
#include "dictionary/InterfaceFile.h"
#include "panelsim/Prompt.h"

namespace tessaly {
namespace {

TEST_F(PanelTest, EveryNameOfAWorkplaceComesAndChangesFollow) {
  tree.write(hostPathOfTree(1, "macro007.mac"), macro("Seven"));
  start();
  ASSERT_TRUE(connect());
  for (int number = 0; number < MacroNumber::kCount; ++number)
    ASSERT_TRUE(connection.subscribe(nameOf(1, number)));
  ASSERT_TRUE(connection.subscribe(nameOf(8, 0)));
  ASSERT_TRUE(connection.subscribe("PANEL.WP3.MFDCOUNT"));
  EXPECT_TRUE(recorder.waitFor("value PANEL.WP3.MFDCOUNT=2"));
  const auto events = recorder.events();
  EXPECT_EQ(std::set(events.begin(), events.end()).size(), 1003U);
  EXPECT_TRUE(recorder.waitFor("value " + nameOf(1, 7) + "=Seven"));
  EXPECT_TRUE(recorder.waitFor("value " + nameOf(1, 8) + "="));

  ParameterList rename = registerNumber("007");
  rename.addString("NAME", "Grün \"7\"");
  EXPECT_TRUE(connection.callFunctionId("PANEL.MACRO1.NAME.SET", rename));
  EXPECT_TRUE(recorder.waitFor("value " + nameOf(1, 7) + "=Grün \"7\""));
  EXPECT_NE(tree.read(hostPathOfTree(1, "macro007.mac")).find("Grün &quot;7&quot;"), std::string::npos);

  EXPECT_EQ(ftp().put(macro("Eight"), folder(8) + "macro000.mac"), FtpClient::Result::kDone);
  EXPECT_TRUE(connection.callFunctionId("PANEL.APPLICATION.LOAD.FINISH", {}));
  EXPECT_TRUE(recorder.waitFor("value " + nameOf(8, 0) + "=Eight"));

  const std::size_t before = recorder.events().size();
  for (const char* text : {"", "1000", "-07", "0x7", "../7", "999"}) {
    EXPECT_TRUE(connection.callFunctionId("PANEL.MACRO1.DELETE", registerNumber(text)));
  }
  EXPECT_TRUE(connection.callFunctionId("PANEL.MACRO9.DELETE", registerNumber("007")));
  EXPECT_TRUE(connection.callFunctionId("PANEL.MACRO1.NAME.SET", registerNumber("007")));
  EXPECT_TRUE(connection.callFunctionId("PANEL.MACRO1.DELETE", registerNumber("007")));
  EXPECT_TRUE(connection.callFunctionId("PANEL.MACRO8.DELETE", registerNumber("0")));
  EXPECT_TRUE(soon([&] { return recorder.events().size() == before + 2; }));
  EXPECT_EQ(recorder.events()[before], "value " + nameOf(1, 7) + "=");
  EXPECT_EQ(logged("nothing done: no such function or macro"), 8);
  EXPECT_EQ(tree.read(hostPathOfTree(1, "macro007.mac")) + tree.read(hostPathOfTree(8, "macro000.mac")),
            "<missing><missing>");
}

TEST_F(PanelTest, ReadingAgainFindsAFileOfTheSameSizeAndABrokenOne) {
  tree.write(hostPathOfTree(2, "macro000.mac"), macro("AAA"));
  tree.write(hostPathOfTree(2, "macro1.mac"), macro("no number"));
  start();
  tree.write(hostPathOfTree(2, "macro000.mac"), macro("BBB"));
  tree.write(hostPathOfTree(2, "macro999.mac"), "<macro name=\"cut");
  tree.write(hostPathOfTree(2, "macro998.mac"), macro(""));
  panel->reload();
  EXPECT_EQ(panel->macros(2),
            (std::vector<std::pair<int, std::string>>{{0, "BBB"}, {998, "???"}, {999, "???"}}));
  EXPECT_EQ(logged("read the macros: 1, 1 changed"), 1);
  EXPECT_EQ(logged("read the macros: 3, 3 changed\nworkplace 2, macro 000: BBB"), 1);
  EXPECT_EQ(logged("workplace 2, macro 000: AAA"), 0) << "of the first time";
}

TEST_F(PanelTest, FunctionsStandAtASteadyValueWithinTheirRange) {
  site.write(kPanelInterface, R"(<mfd>
    <fidsegment_indexed name="K" fidseg="KEY" displayname="Key " min="1" max="4" offset="0"/>
    <fid name="E.$K" sid="E.$K.V" description=""><enum_parameter name="e"><enum value="ON" description="on"/><enum value="OFF" description="off"/></enum_parameter></fid>
    <fid name="I.$K" sid="I.$K.V" description=""><int_parameter name="i" min="-3" max="3"/></fid>
    <fid name="F.$K" sid="F.$K.V" description=""><float_parameter name="f" min="0.5" max="0.75"/></fid>
    <fid name="T.$K" sid="T.$K.V" description=""><timecode_parameter name="t"/></fid>
    <fid name="N.$K" sid="N.$K.V" description=""><input_parameter name="n"/></fid>
    <fid name="O.$K" sid="O.$K.V" description=""><int_parameter name="i" use="optional" min="5" max="5"/><input_parameter name="n"/></fid>
    <fid name="X.$K" sid="X.$K.V" description=""><int_parameter name="i" use="optional" min="5" max="5"/></fid></mfd>)");
  site.write(kOlderFamilyInterface, "<mfd/>");
  PanelOptions withSite = options();
  withSite.site = site.root.path().string();
  start(withSite);
  std::string values;
  for (const char* kind : {"E", "I", "F", "T", "N", "O", "X"})
    for (const char* destination : {"QMF1.", "QMF2.", "PANEL."})
      for (const char* key : {"KEY1", "KEY2", "KEY3", "KEY4"})
        values += panel->value(std::string(destination) + kind + '.' + key + ".V").value_or("none") +
                  (std::string_view(key) == "KEY4" ? "\n" : " ");
  // By chance, but the same on every machine and in every run.
  EXPECT_EQ(values,
            "OFF ON OFF ON\nON ON OFF OFF\nOFF OFF ON ON\n-1 -1 -3 0\n0 -1 -2 -2\n0 1 -1 1\n"
            "0.566750 0.717250 0.614500 0.747500\n0.698000 0.562250 0.532000 0.709250\n"
            "0.515000 0.584000 0.528000 0.549000\n352720128 559415828 340211985 53493782\n"
            "408223749 287780880 138747939 388055586\n590620933 272769304 319312660 389497624\n"
            "1 43 22 61\n18 84 60 95\n83 60 41 66\n35 60 89 41\n89 77 48 76\n37 62 43 91\n"
            "5 5 5 5\n5 5 5 5\n5 5 5 5\n");
  for (const char* name :
       {"QMF5.I.KEY1.V", "I.KEY1.V", "QMF1.", "QMF1.I.KEY9.V", "PANEL.WP9.MFDCOUNT", "PANEL.MACRO9.REG1.NAME",
        "PANEL.MACRO1.REG1000.NAME", "PANEL.MACRO1.REG01.NAME"}) {
    EXPECT_FALSE(panel->value(name)) << name;
  }
  EXPECT_EQ(logged("values for Number of FIDs: 7/28"), 1);
  ASSERT_TRUE(connect());
  ASSERT_TRUE(connection.subscribe("QMF1.X"));
  panel->set("QMF1.X", "99");
  EXPECT_TRUE(recorder.waitFor("value QMF1.X=99"));
  panel->trigger("PANEL.T", "1");
  EXPECT_TRUE(recorder.waitFor("trigger PANEL.T=1"));
}

TEST_F(PanelTest, ControlFaultsDoWhatTheySay) {
  PanelOptions silent = options();
  silent.faults.control.neverAnswer = true;
  start(silent);
  EXPECT_LE(panel->controlPort(), 32700) << "not of those that programs get for their own connections";
  auto attempt = std::async(std::launch::async, [&] { return connect(); });
  EXPECT_TRUE(soon([&] { return panel->connections() == 1; }));
  connection.disconnect();
  EXPECT_FALSE(attempt.get());

  ASSERT_TRUE(panel->setFaults({.control = {.delay = std::chrono::milliseconds(120)}, .ftp = {}}));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_TRUE(connect());
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(120));

  ASSERT_TRUE(panel->setFaults({.control = {.delay = std::chrono::milliseconds(50), .dropAfter = 5}}));
  for (int number = 0; number < 100; ++number) (void)connection.subscribe(nameOf(1, number));
  EXPECT_TRUE(recorder.waitFor("status 1"));
  EXPECT_EQ(recorder.events().size(), 7U) << "status 0, five values, status 1";

  ASSERT_TRUE(panel->setFaults({}));
  const std::pair ports(panel->controlPort(), panel->ftpPort());
  ASSERT_TRUE(connect());
  const auto gone = std::chrono::steady_clock::now();
  ASSERT_TRUE(runPromptLine(*panel, "wait 40").known);
  ASSERT_TRUE(runPromptLine(*panel, "restart 50").known);
  EXPECT_GE(std::chrono::steady_clock::now() - gone, std::chrono::milliseconds(90));
  EXPECT_EQ(logged("gone") + logged("back"), 2);
  EXPECT_TRUE(soon([&] { return !connection.subscribe("A"); }));
  EXPECT_EQ(std::pair(panel->controlPort(), panel->ftpPort()), ports);
  EXPECT_TRUE(connect());
  ASSERT_TRUE(runPromptLine(*panel, "drop").known);
  EXPECT_TRUE(soon([&] { return panel->connections() == 0; }));
}

TEST_F(PanelTest, NonsenseADeadLineAndALostCallDoWhatTheySay) {
  start();
  const auto count = [&](const std::string& start) {
    const auto events = recorder.events();
    return std::count_if(events.begin(), events.end(),
                         [&](const std::string& event) { return event.starts_with(start); });
  };
  ASSERT_TRUE(panel->setFaults({.control = {.garbleAfter = 2}}));
  ASSERT_TRUE(connect());
  for (int number = 0; number < 100; ++number) (void)connection.subscribe(nameOf(1, number));
  EXPECT_TRUE(soon([&] { return count("status 1") == 1; }));
  EXPECT_EQ(count("value "), 2);

  tree.write(hostPathOfTree(1, "macro001.mac"), macro("New"));
  ASSERT_TRUE(panel->setFaults({}));
  ASSERT_TRUE(connect());
  ASSERT_TRUE(runPromptLine(*panel, "fault answer-after 100").known);
  ASSERT_TRUE(connection.subscribe("PANEL.WP1.MFDCOUNT"));
  EXPECT_TRUE(soon([&] { return logged("editor 2: subscribes 1 value: PANEL.WP1.MFDCOUNT") == 1; }));
  ASSERT_TRUE(runPromptLine(*panel, "fault dead-line").known);
  ASSERT_TRUE(runPromptLine(*panel, "fault answer-after 0").known);
  panel->set("PANEL.WP1.MFDCOUNT", "9");
  EXPECT_TRUE(connection.callFunctionId("PANEL.APPLICATION.LOAD.FINISH", {}));
  std::string got;
  EXPECT_NE(ftp().get(folder(1) + "macro001.mac", got, std::chrono::seconds(1)), FtpClient::Result::kDone);
  EXPECT_EQ(count("status 1"), 1) << "nobody is told";
  EXPECT_EQ(count("value "), 2) << "neither what was on its way nor what changes comes any more";
  ASSERT_TRUE(runPromptLine(*panel, "fault off").known);
  EXPECT_TRUE(soon([&] { return count("status 1") == 2; }));
  EXPECT_TRUE(panel->macros(1).empty()) << "what was sent on a dead line is carried out";

  ASSERT_TRUE(runPromptLine(*panel, "fault lose-reload").known);
  ASSERT_TRUE(connect());
  EXPECT_TRUE(connection.callFunctionId("PANEL.APPLICATION.LOAD.FINISH", {}));
  EXPECT_TRUE(soon([&] { return logged("the call to read the macros is lost") == 1; }));
  EXPECT_TRUE(panel->macros(1).empty());
}

TEST_F(PanelTest, PanelsShareAPortOnAddressesOfTheirOwnAndSayWhenItIsTaken) {
  start();
  PanelOptions other = options();
  other.address = "127.0.0.2";
  other.controlPort = panel->controlPort();
  TestSite otherTree;
  other.root = otherTree.root.path().string();
  PanelSimulator second(other, [](const std::string&) {});
  std::string reason;
  EXPECT_TRUE(second.start(reason)) << reason;
  other.address = "127.0.0.1";
  EXPECT_FALSE(
      PanelSimulator(other, [](const std::string&) {}).restart(std::chrono::milliseconds(0), reason));
  EXPECT_EQ(reason, "cannot listen on 127.0.0.1 port " + std::to_string(other.controlPort) +
                        ": Address already in use");
  other.controlPort = 0;
  other.ftpPort = panel->ftpPort();
  PanelSimulator third(other, [](const std::string&) {});
  EXPECT_FALSE(third.start(reason));
  EXPECT_TRUE(
      reason.starts_with("no FTP service on 127.0.0.1 port " + std::to_string(other.ftpPort) + ": ") &&
      reason.ends_with("Address already in use"))
      << reason;
  EXPECT_FALSE(connection.connect("127.0.0.1", third.controlPort(), &recorder)) << "nothing listens";
  other.root = hostPathOfTree(1, "macro001.mac");
  tree.write(other.root, "in the way");
  EXPECT_FALSE(PanelSimulator(other, [](const std::string&) {}).start(reason));
  EXPECT_EQ(reason, "cannot make the panel's folders under " + other.root);
}

TEST_F(PanelTest, HostileEditorsAreSentAwayAndTheOthersStay) {
  start();
  ASSERT_TRUE(connect());
  int number = 1;
  const auto request = [](const std::string& method, const std::string& rest) {
    return R"({"jsonrpc":"2.0","id":1,"method":")" + method + "\",\"params\":{" + rest + "}}\n";
  };
  const auto subscribe = [&](const std::string& name) {
    return request("subscribe", R"("name":")" + name + '"');
  };
  const auto call = [&](const std::string& name) {
    return request("call", R"("function":")" + name + R"(","parameters":[])");
  };
  std::string names;
  for (int i = 0; i < 70; ++i) names += subscribe(std::to_string(i) + std::string(1'000'000, 'n'));
  const struct {
    std::string bytes, last;  // what comes back at the end
    std::string told = "connected";
  } cases[] = {
      {"GET / HTTP/1.1\r\n\r\n", errorLine("null", kErrorNoJson, "no JSON"), "ended: sent no JSON"},
      {std::string(2 * kLongestLine, 'x'), "", "ended: line without end"},
      {"[1,2]\n", errorLine("null", kErrorNoRequest, "no request")},
      {request("format", ""), errorLine("1", kErrorNoMethod, "no such method")},
      {request("subscribe", "\"name\":4"), errorLine("1", kErrorBadParameters, "\"name\" is no text")},
      {subscribe("PANEL.WP1.MFDCOUNT"), answerLine("1") + valueLine(kValueMethod, "PANEL.WP1.MFDCOUNT", "4"),
       "subscribes 1 value: PANEL.WP1.MFDCOUNT"},
      {names, "", "ended: subscribed too much"},
      {request("call", ""),
       errorLine("1", kErrorBadParameters, "\"function\" is no text or \"parameters\" no list")},
      {subscribe("A") + subscribe("B") + call("PANEL.APPLICATION.LOAD.FINISH"), answerLine("1"),
       "subscribes 2 values: A to B\neditor 10: calls PANEL.APPLICATION.LOAD.FINISH "},
      {call("PANEL.MACRO1.STOP") + call("PANEL.MACRO8.STOP"), answerLine("1") + answerLine("1")},
      {call("PANEL.MACRO9.STOP"),
       errorLine("1", kErrorBadParameters, "no such function, or not with these parameters")}};
  for (const auto& [bytes, last, told] : cases) {
    ++number;
    Socket socket = Socket::beginConnect("127.0.0.1", panel->controlPort());
    std::string_view left = bytes;
    std::string heard;
    for (bool open = true; open;) {
      std::array<Watch, 1> watch{Watch{.socket = &socket, .forWrite = !left.empty()}};
      ASSERT_TRUE(waitFor(watch, 10000));
      std::size_t count = 0;
      if (watch[0].writable && !left.empty()) {
        if (socket.send(left, count) == Socket::Transfer::kClosed) count = left.size();
        left.remove_prefix(count);
        if (left.empty()) socket.finishSending();
      }
      std::array<char, 4096> buffer;
      count = 0;
      open = !watch[0].readable || socket.receive(buffer, count) != Socket::Transfer::kClosed;
      heard.append(buffer.data(), count);
    }
    EXPECT_TRUE(heard.ends_with(last)) << bytes.substr(0, 80) << " -> " << heard;
    EXPECT_EQ(logged("editor " + std::to_string(number) + ": " + told), 1) << told;
  }
  EXPECT_TRUE(soon([&] { return panel->connections() == 1; })) << "the others are gone";

  EXPECT_TRUE(connection.subscribe("PANEL.WP1.MFDCOUNT"));
  EXPECT_TRUE(recorder.waitFor("value PANEL.WP1.MFDCOUNT=4"));
}

TEST_F(PanelTest, StormOfEditorsAndChangesEndsWithTheLastValueEverywhere) {
  tree.write(hostPathOfTree(1, "macro000.mac"), macro("start"));
  start();
  std::vector<std::thread> threads;
  std::array<Recorder, 3> recorders;
  for (Recorder& own : recorders) {
    threads.emplace_back([&] {
      XCTLConnection line(kXctlTransportTcp);
      for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(line.connect("127.0.0.1", panel->controlPort(), &own));
        for (int number = 0; number < 200; ++number) (void)line.subscribe(nameOf(1, number));
        (void)line.callFunctionId("PANEL.APPLICATION.LOAD.FINISH", {});
      }
      (void)line.subscribe("PANEL.END");
      EXPECT_TRUE(own.waitFor("value PANEL.END=end"));
    });
  }
  for (int i = 0; i < 200; ++i) {
    panel->set(nameOf(1, i), std::to_string(i));
    if (i % 20 == 0) (void)panel->renameMacro(1, 0, std::to_string(i));
  }
  panel->set("PANEL.END", "end");
  for (std::thread& thread : threads) thread.join();
}

}  // namespace
}  // namespace tessaly
