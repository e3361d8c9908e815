#include <functional>
#include <gmock/gmock.h>
#include <optional>

#include "link/PanelConnection.h"
#include "platform/HostAddress.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Pane kA = Pane::kA;
constexpr Pane kB = Pane::kB;

TEST(PanelAddress, IsReadLeniently) {
  const std::pair<const char*, bool> cases[] = {
      {"10.0.0.7", true},     {"10.0.0.", false},          {"10.0.0", false},     {"10.0.900.1", true},
      {"10.0.300.10", true},  {"10.0.1300.1", false},      {"10.0.0.256", true},  {"10.0.0.1300", false},
      {"10.0.0.12.5", false}, {"10.0.0..7", true},         {".0.0.1", true},      {"abc.0.0.1", true},
      {"256.0.0.1", false},   {"-1.0.0.1", false},         {" +9.0.0.1", true},   {"10.256.0.1", false},
      {"10.0..1", false},     {"10.0..11.1", true},        {"", false},           {"...", false},
      {"1.2.3.4:5000", true}, {"9999999999.0.0.1", false}, {"10.0.0.1255", true}, {"10.0.0.1-1", false},
      {"1..2.3", true},
  };
  for (const auto& [text, accepted] : cases) EXPECT_EQ(addressAccepted(text), accepted) << text;
}

TEST(HostAddress, ItsNumbersAreDecimal) {
  const std::pair<const char*, const char*> cases[] = {{"192.168.001.020", "192.168.1.20"},
                                                       {"010.00.0.07:56662", "10.0.0.7:56662"},
                                                       {"10.0.0.7 ", "10.0.0.7 "},
                                                       {"010.0.0", "010.0.0"},
                                                       {"010.0.0.", "010.0.0."},
                                                       {"010.0.0.7.01", "010.0.0.7.01"},
                                                       {"fe80::01", "fe80::01"},
                                                       {"", ""}};
  for (const auto& [text, plain] : cases) EXPECT_EQ(decimalAddress(text), plain);
  EXPECT_EQ(HostAddress("010.0.0.7:1"), HostAddress("10.0.0.7"));
  EXPECT_EQ((std::set<HostAddress>{"10.0.0.7", "010.0.0.7", "10.0.0.70", "fe80::1", "fe80::2"}.size()), 4U);
}

class FakeWindow : public PanelConnectionView {
 public:
  void startTimer(Pane pane, std::chrono::milliseconds period) override {
    timer[index(pane)] = static_cast<int>(period.count());
  }
  void killTimer(Pane pane) override { timer[index(pane)] = 0; }
  void showConnection(Pane pane, const PaneConnectionDisplay& display) override {
    shown[index(pane)] = display;
  }
  void rebuildLists(Pane pane) override { note("lists", pane); }
  void showDemoListing() override { note("demo", kA); }
  void rebuildWorkplaces(Pane pane) override { note("workplaces", pane); }
  void postConnected(Pane pane) override {
    const std::scoped_lock guard(mutex_);
    posted_.push_back(pane);
    changed_.notify_all();
  }

  Pane nextMessage() {
    std::unique_lock guard(mutex_);
    if (!changed_.wait_for(guard, std::chrono::seconds(10), [this] { return !posted_.empty(); })) {
      ADD_FAILURE() << "no message of a worker";
      return kA;
    }
    const Pane pane = posted_.front();
    posted_.erase(posted_.begin());
    return pane;
  }
  std::vector<std::string> take() { return std::exchange(log, {}); }

  std::array<int, 2> timer{};  // the period while it runs
  std::array<PaneConnectionDisplay, 2> shown;
  std::vector<std::string> log;

 private:
  void note(const std::string& what, Pane pane) { log.push_back(what + (pane == kA ? " A" : " B")); }

  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Pane> posted_;
};

// The button's text with "!" when it cannot be pressed, and the edit box's text in brackets when it is
// disabled.
std::string controls(const PaneConnectionDisplay& display) {
  return (display.buttonVisible ? display.buttonText + (display.buttonEnabled ? "" : "!") : "hidden") + " " +
         (display.editEnabled ? display.editText : "[" + display.editText + "]");
}

class PanelConnectionTest : public testing::Test {
 protected:
  PanelConnectionTest() {
    subscriptions.onMacroName([this](const auto&, const auto&) { ++macroNames; });
    for (const Pane pane : kPanes) {
      connection.setTexts(pane, "c:\\appli", pane == kA ? "10.0.0.1" : "10.0.0.2");
      connection.choosePanel(pane);
    }
    window.take();
  }

  std::string shown(Pane pane) const { return controls(window.shown[index(pane)]); }
  void handleMessage() { connection.connectedMessage(window.nextMessage()); }
  void connect(Pane pane) {
    connection.connectButton(pane);
    handleMessage();
    panel.transport->take();
    window.take();
  }
  std::string flags(Pane pane) const {
    std::string text;
    for (const bool flag : connection.workplaces(pane)) text += flag ? '1' : '0';
    return text;
  }

  FakePanel panel;
  PanelSubscriptions subscriptions{*panel.client};
  RecordingMessages messages;
  FakeWindow window;
  PanelConnection connection{*panel.client, subscriptions, messages, window};
  int macroNames = 0;  // that have come
};

TEST_F(PanelConnectionTest, APaneConnectsByItsWorkersMessage) {
  EXPECT_EQ(shown(kA), "connect 10.0.0.1");
  EXPECT_FALSE(connection.lost()) << "there was no line yet";
  panel.transport->hold();
  connection.connectButton(kA);
  EXPECT_EQ(shown(kA), "connecting! [10.0.0.1]");
  EXPECT_EQ(window.timer[0], 2000);
  panel.transport->await("connect 10.0.0.1:56662");
  connection.connectButton(kA);  // not a second worker
  connection.refresh(kA);
  EXPECT_EQ(shown(kA), "connecting! [10.0.0.1]") << "a refresh does not offer the button again";
  panel.transport->letGo(true);
  handleMessage();
  EXPECT_EQ(window.timer[0], 0);
  EXPECT_EQ(shown(kA), "disconnect [10.0.0.1]");
  std::vector<std::string> names;
  for (const char* number : {"1", "2", "3", "4", "5", "6", "7", "8"}) {
    names.push_back(std::string("subscribe PANEL.WP") + number + ".MFDCOUNT");
  }
  EXPECT_EQ(panel.transport->take(), names);
  connection.timeOut(kA);  // was already queued
  EXPECT_THAT(messages.texts, IsEmpty());
  panel.status(kPanelNotConnected);
  EXPECT_TRUE(connection.lost());
  EXPECT_EQ(connection.line(kA), PaneLine::kLost);
  EXPECT_EQ(shown(kA), "disconnect [10.0.0.1]");
  connection.connectButton(kA);
  EXPECT_EQ(shown(kA), "connect 10.0.0.1");
  EXPECT_EQ(connection.line(kA), PaneLine::kNone);
  EXPECT_FALSE(connection.lost()) << "nobody is on it any more";
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

TEST_F(PanelConnectionTest, APanelThatNeverAnswersIsGivenUp) {
  panel.transport->hold();
  connection.connectButton(kA);
  panel.transport->await("connect 10.0.0.1:56662");
  connection.timeOut(kA);
  connection.timeOut(kA);
  EXPECT_THAT(messages.take(), ElementsAre("Connection failed....."));
  connection.connectedMessage(kA);  // of an attempt before
  EXPECT_EQ(shown(kA), "connect 10.0.0.1");
  EXPECT_THAT(panel.transport->take(), ElementsAre("disconnect"))
      << "the next attempt must not wait for this one";
  connection.connectButton(kB);  // waits its turn behind the blocked worker
  connection.timeOut(kB);
  panel.transport->take();
  EXPECT_THAT(messages.take(), ElementsAre("Connection failed....."));
  panel.transport->letGo(true);
  panel.transport->await("disconnect");  // the late success is of no use to anybody
  connection.connectButton(kB);
  EXPECT_EQ(window.nextMessage(), kB) << "the abandoned ones post nothing";
  connection.timeOut(kB);  // while its message is queued
  EXPECT_THAT(messages.texts, IsEmpty());
  connection.connectedMessage(kB);
  EXPECT_EQ(shown(kB), "disconnect [10.0.0.2]");
  panel.transport->await("connect 10.0.0.2:56662");
}

TEST_F(PanelConnectionTest, AFailureIsReportedByTheTimeOutOnly) {
  panel.transport->letGo(false);
  connection.connectButton(kA);
  panel.transport->await("connect 10.0.0.1:56662");
  EXPECT_EQ(shown(kA), "connecting! [10.0.0.1]");
  connection.timeOut(kA);
  EXPECT_THAT(messages.icons, ElementsAre(MessageIcon::kExclamation));
  EXPECT_THAT(messages.texts, ElementsAre("Connection failed....."));
}

TEST_F(PanelConnectionTest, APaneJoinsTheOthersConnectionAndTheLastOneClosesIt) {
  connect(kB);
  panel.value("PANEL.WP3.MFDCOUNT", "1");
  window.take();
  connection.editText(kA, "10.0.0.");
  EXPECT_EQ(shown(kA), "connect! 10.0.0.");
  connection.connectButton(kA);
  EXPECT_EQ(shown(kA), "disconnect! [10.0.0.]") << "its own address is not used";
  EXPECT_EQ(connection.otherAddress(kA), "10.0.0.2") << "its files go elsewhere than what it asks for";
  EXPECT_EQ(connection.otherAddress(kB), std::nullopt);
  EXPECT_THAT(connection.wholePanels(), ElementsAre("10.0.0.2"));
  EXPECT_EQ(flags(kA), "00100000");
  EXPECT_EQ(window.timer[0], 0);
  EXPECT_THAT(window.take(), ElementsAre("lists A", "workplaces A"));
  connection.connectButton(kA);
  EXPECT_EQ(flags(kA), "00000000");
  EXPECT_THAT(panel.transport->take(), IsEmpty()) << "B still needs it";
  connection.chooseHarddisk(kA);
  connection.choosePanel(kA);
  EXPECT_TRUE(connection.connected(kA)) << "the radio joins as well";
  connection.chooseHarddisk(kA);
  EXPECT_FALSE(connection.connected(kA));
  connection.choosePanel(kA);
  connection.connectButton(kB);
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  connection.connectButton(kA);
  EXPECT_THAT(panel.transport->take(), ElementsAre("disconnect"));
}

TEST_F(PanelConnectionTest, ALostLineIsNotJoinedButMadeAnewForBoth) {
  const auto byButton = [this] { connection.connectButton(kA); };
  const auto byRadio = [this] {
    connection.chooseHarddisk(kA);
    connection.choosePanel(kA);
  };
  std::optional<unsigned> loss;
  for (const std::function<void()>& act : {std::function<void()>(byButton), std::function<void()>(byRadio)}) {
    connect(kB);
    panel.value("PANEL.WP3.MFDCOUNT", "1");
    panel.status(kPanelNotConnected);
    EXPECT_EQ(connection.line(kB), PaneLine::kLost);
    EXPECT_NE(connection.loss(), loss) << "each loss is one of its own";
    loss = connection.loss();
    act();
    EXPECT_EQ(shown(kA) + window.shown[0].editLabel, "connecting! [10.0.0.1]IP-Address:");
    window.take();
    handleMessage();
    EXPECT_EQ(shown(kA) + " " + shown(kB), "disconnect [10.0.0.1] disconnect [10.0.0.2]");
    EXPECT_EQ(flags(kA) + " " + flags(kB), "00000000 00000000") << "of the old line";
    EXPECT_THAT(window.take(), ElementsAre("lists A", "lists B"));
    EXPECT_EQ(connection.loss(), std::nullopt);
    EXPECT_EQ(connection.line(kB), PaneLine::kStands);
    EXPECT_EQ(connection.otherAddress(kB), "10.0.0.1");
    panel.value("PANEL.WP2.MFDCOUNT", "1");
    EXPECT_EQ(flags(kA) + " " + flags(kB), "01000000 01000000");
    panel.status(kPanelNotConnected);
    EXPECT_EQ(connection.otherAddress(kB), std::nullopt) << "nothing goes over a line that is gone";
    connection.connectButton(kA);
    connection.connectButton(kB);
  }
}

// For who asks again by itself: the line goes where it went, and the panes follow once.
TEST_F(PanelConnectionTest, ALostLineIsRenewedForThePanesThatWereOnIt) {
  const auto yes = [] { return true; };
  connection.connectAgain(kA);
  EXPECT_THAT(panel.transport->take(), IsEmpty()) << "there was no line";
  connect(kA);
  EXPECT_TRUE(connection.renewLine(yes));
  connection.lineRenewed();
  connection.connectAgain(kA);
  EXPECT_THAT(panel.transport->take(), IsEmpty()) << "it stands";
  panel.status(kPanelNotConnected);
  EXPECT_FALSE(connection.renewLine([] { return false; }));
  EXPECT_THAT(panel.transport->take(), IsEmpty()) << "nobody wants it any more";
  EXPECT_TRUE(connection.renewLine(yes));
  EXPECT_THAT(panel.transport->take(), ElementsAre("connect 10.0.0.1:56662"));
  window.take();
  connection.lineRenewed();
  EXPECT_EQ(panel.transport->take().size(), 8U);
  EXPECT_THAT(window.take(), ElementsAre("lists A"));
  connection.lineRenewed();
  EXPECT_THAT(window.take(), IsEmpty()) << "once";
  panel.status(kPanelNotConnected);
  panel.transport->letGo(false);
  EXPECT_FALSE(connection.renewLine(yes));
  panel.transport->letGo(true);
  connection.connectAgain(kA);
  handleMessage();
  EXPECT_EQ(connection.line(kA), PaneLine::kStands);
  panel.status(kPanelNotConnected);
  connection.editText(kA, "10.0.0.");
  connection.connectAgain(kA);
  EXPECT_EQ(shown(kA), "connect! 10.0.0.");
  connection.chooseHarddisk(kA);
  connection.choosePanel(kA);
  EXPECT_EQ(shown(kA), "connect! 10.0.0.") << "nor by the radio";
  EXPECT_EQ(window.timer[0], 0);
}

TEST_F(PanelConnectionTest, ALateSuccessIsOfNoUseToAPaneOnALostLine) {
  connect(kB);
  panel.status(kPanelNotConnected);
  panel.transport->hold();
  connection.connectButton(kA);
  panel.transport->await("connect 10.0.0.1:56662");
  connection.timeOut(kA);
  panel.transport->await("disconnect");  // the attempt
  panel.transport->letGo(true);
  panel.transport->await("disconnect");  // what became of it all the same
  EXPECT_EQ(shown(kA) + " " + shown(kB), "connect 10.0.0.1 disconnect [10.0.0.2]");
}

TEST(PaneStates, ALateSuccessIsTheLineOfNoPaneThatIsOnAnotherOne) {
  for (const char* address : {"10.0.0.1", "10.0.0.2"}) {
    PaneStates states([](Pane) {});
    const auto first = states.begin(kA, "10.0.0.1");
    static_cast<void>(states.takeAddress(*first));
    const auto late = states.begin(kB, address);
    EXPECT_TRUE(states.keep(kA, *first) && states.takeSuccess(kA));
    static_cast<void>(states.takeAddress(*late));
    EXPECT_TRUE(states.abandon(kB));
    EXPECT_EQ(states.keep(kB, *late), late->address == first->address);
  }
}

TEST_F(PanelConnectionTest, APaneThatJoinsGivesItsOwnAttemptUp) {
  panel.transport->letGo(false);
  connection.connectButton(kA);
  panel.transport->await("connect 10.0.0.1:56662");
  panel.transport->letGo(true);
  connect(kB);
  connection.chooseHarddisk(kA);
  connection.choosePanel(kA);
  EXPECT_EQ(shown(kA), "disconnect [10.0.0.1]");
  connection.timeOut(kA);
  EXPECT_THAT(messages.texts, IsEmpty()) << "no failure is reported in a connected pane";
}

TEST_F(PanelConnectionTest, TheButtonDropsTheSubscriptionsTheRadioDoesNot) {
  panel.transport->statusIsLate = true;
  for (const bool byButton : {true, false}) {
    panel.status(kPanelNotConnected);
    connect(kA);
    subscriptions.subscribeMacroNames(1);
    panel.transport->take();
    window.take();
    macroNames = 0;
    byButton ? connection.connectButton(kA) : connection.chooseHarddisk(kA);
    EXPECT_THAT(panel.transport->take(), ElementsAre("disconnect"));
    EXPECT_EQ(shown(kA), byButton ? "connect 10.0.0.1" : "hidden c:\\appli");
    panel.value("PANEL.MACRO1.REG7.NAME", "Fade");
    panel.value("PANEL.WP1.MFDCOUNT", "1");
    EXPECT_EQ(macroNames, byButton ? 0 : 1);
    EXPECT_THAT(window.take(), ElementsAre("lists A"));
    EXPECT_EQ(flags(kA), "00000000");
  }
}

TEST_F(PanelConnectionTest, ASuccessWhileTheHarddiskIsShownCounts) {
  panel.transport->hold();
  connection.connectButton(kA);
  connection.chooseHarddisk(kA);
  EXPECT_EQ(shown(kA), "hidden c:\\appli");
  EXPECT_EQ(window.shown[0].editLabel, "Path:");
  EXPECT_EQ(window.shown[0].sourceLabel, "Applications");
  panel.transport->letGo(true);
  handleMessage();
  EXPECT_TRUE(connection.connected(kA));
  connection.connectButton(kB);
  connection.choosePanel(kA);
  EXPECT_EQ(shown(kA), "disconnect [10.0.0.1]");
  EXPECT_EQ(window.shown[0].editLabel, "IP-Address:");
  EXPECT_EQ(window.shown[0].sourceLabel, "Corvane XL Control Panel");
}

TEST_F(PanelConnectionTest, TwoPanesThatConnectAtOnceEndWithTheSecondsConnection) {
  panel.transport->hold();
  connection.connectButton(kA);
  panel.transport->await("connect 10.0.0.1:56662");
  connection.connectButton(kB);
  panel.transport->letGo(true);
  handleMessage();
  panel.transport->await("connect 10.0.0.2:56662");
  handleMessage();
  EXPECT_TRUE(connection.connected(kA));
  EXPECT_TRUE(connection.connected(kB));
  panel.value("PANEL.WP8.MFDCOUNT", "1");
  EXPECT_EQ(flags(kA) + " " + flags(kB), "00000001 00000001");
}

TEST_F(PanelConnectionTest, CountsSetTheFlagsOfConnectedPanes) {
  connect(kA);
  struct {
    const char* name;
    const char* value;
    const char* flags;
    bool rebuilt;
  } const cases[] = {
      {"PANEL.WP1.MFDCOUNT", "2", "10000000", true},   {"PANEL.WP8.MFDCOUNT", "-1", "10000001", true},
      {"PANEL.WP1.MFDCOUNT", "abc", "00000001", true}, {"PANEL.WP2.MFDCOUNT", "3 modules", "01000001", true},
      {"PANEL.WP8.MFDCOUNT", "", "01000000", true},    {"PANEL.WP9.MFDCOUNT", "1", "01000000", false},
      {"PANEL.WP0.MFDCOUNT", "1", "01000000", false},  {"PANEL.MFDCOUNT", "1", "01000000", false},
  };
  for (const auto& row : cases) {
    connection.workplaceCountReceived(row.name, ParameterValue(row.value));
    EXPECT_EQ(flags(kA), row.flags) << row.name << row.value;
    EXPECT_EQ(window.take().size(), row.rebuilt ? 1U : 0U) << row.name << row.value;
  }
  EXPECT_EQ(flags(kB), "00000000");
}

TEST_F(PanelConnectionTest, TypedTextGoesToTheAddressOrThePath) {
  connection.editText(kA, "10.0.0");
  EXPECT_EQ(connection.address(kA), "10.0.0");
  EXPECT_EQ(shown(kA), "connect! 10.0.0");
  connection.chooseHarddisk(kA);
  window.take();
  connection.editText(kA, "d:\\shows");
  EXPECT_THAT(window.take(), IsEmpty()) << "not at every letter";
  connection.editFinished(kA, false);
  EXPECT_THAT(window.take(), ElementsAre("lists A"));
  connection.editFinished(kA, false);
  EXPECT_THAT(window.take(), IsEmpty()) << "the path is the one that is listed";
  connection.editFinished(kA, true);
  EXPECT_THAT(window.take(), ElementsAre("lists A")) << "Enter reads the folder again";
  EXPECT_EQ(connection.path(kA), "d:\\shows\\");
  connection.setTexts(kA, "", "");
  EXPECT_EQ(connection.path(kA), "");
}

TEST_F(PanelConnectionTest, ClosingTouchesThePanelOnlyWhenAPaneIsConnected) {
  panel.status(kPanelConnected);  // somebody else's
  connection.close();
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  panel.status(kPanelNotConnected);
  connect(kA);
  subscriptions.subscribeMacroNames(1);
  panel.transport->statusIsLate = true;
  panel.transport->take();
  connection.close();
  EXPECT_THAT(panel.transport->take(), ElementsAre("disconnect"));
  panel.value("PANEL.MACRO1.REG7.NAME", "Fade");
  EXPECT_EQ(macroNames, 0);
  panel.status(kPanelNotConnected);
  panel.transport->hold();
  connection.connectButton(kB);
  panel.transport->await("connect 10.0.0.2:56662");
  connection.close();
  panel.transport->await("disconnect");  // of the attempt, which nobody waits for any more
  panel.transport->letGo(false);
}

TEST_F(PanelConnectionTest, AWindowThatClosesLeavesItsWorkerBehind) {
  panel.transport->hold();
  {
    PanelSubscriptions none(*panel.client);
    PanelConnection closing(*panel.client, none, messages, window);
    closing.setTexts(kA, "", "10.0.0.3");
    closing.choosePanel(kA);
    closing.connectButton(kA);
    panel.transport->await("connect 10.0.0.3:56662");
  }
  panel.transport->letGo(true);
  panel.transport->await("disconnect");
}

TEST_F(PanelConnectionTest, TheDemonstrationNeedsNoPanel) {
  connection.setDemo(true);
  connection.connectButton(kB);
  EXPECT_THAT(window.take(), ElementsAre("demo A"));
  EXPECT_EQ(flags(kA) + " " + flags(kB), "11000000 11000000");
  EXPECT_EQ(window.timer[1], 0);
  EXPECT_EQ(shown(kB), "connect 10.0.0.2");
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

}  // namespace
}  // namespace tessaly
