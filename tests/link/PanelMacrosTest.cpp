#include <gmock/gmock.h>
#include <map>

#include "link/PanelMacros.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::IsEmpty;
using Result = FtpClient::Result;

constexpr const char* kReload = "call PANEL.APPLICATION.LOAD.FINISH()";

constexpr const char* kFolder = "/flash/data/PANEL/macro/workplace";

class PanelMacrosTest : public testing::Test {
 protected:
  using enum FtpClient::Result;

  // Files that are stored and given back, and notes of it, but for what a test says.
  struct Transfer : MacroTransfer {
    Transfer(PanelMacrosTest& theTest, std::string theHost) : test(theTest), host(std::move(theHost)) {}
    Result get(const std::string& remotePath, std::string& bytes, std::chrono::seconds) override {
      const Result result = test.next(host + " get " + remotePath);
      const auto file = test.files.find(remotePath);
      if (result != kDone) return result;
      if (file == test.files.end()) return kNotFound;
      bytes = file->second + (test.garbled > 0 ? std::to_string(test.garbled--) : "");
      return result;
    }
    Result put(std::string_view bytes, const std::string& remotePath) override {
      if (cancelled) return kCancelled;
      const Result told = test.next(host + " put " + remotePath);
      const Result result = test.alters ? kAltered : told;
      if (test.takes-- <= 0) return kStalled;
      if (result == kAltered)
        test.files[remotePath] = "flipped";
      else if (result == kCut || result == kCancelled)
        test.files[remotePath] = bytes.substr(0, 1);
      else if (result == kDone)
        test.files[remotePath] = bytes;
      return result == kAltered ? kDone : result;
    }
    void cancel() override {
      cancelled = true;
      ++test.cancels;
    }
    PanelMacrosTest& test;
    std::string host;
    bool cancelled = false;
  };

  PanelMacrosTest() {
    EXPECT_TRUE(panel.client->connect("10.0.0.1"));
    panel.transport->take();
    macros.waitFor({milliseconds(20'000), milliseconds(20'000), milliseconds(1)});
    site.write("c:\\x.mac", "<new/>");
  }
  Result next(const std::string& text) {
    log.push_back(text);
    if (during) during();
    return results.empty() ? kDone : std::exchange(results, {results.begin() + 1, results.end()}).front();
  }
  std::vector<std::string> take() { return std::exchange(log, {}); }
  TransferOutcome upload(std::vector<Result> scripted) {
    results = std::move(scripted);
    files[kOne] = "<old/>";
    const TransferOutcome outcome = macros.upload("10.0.0.1", 1, "001", "c:\\x.mac");
    results.clear();
    return outcome;
  }

  const std::string kOne = std::string(kFolder) + "1/macro001.mac";
  TestSite site;
  FakePanel panel;
  std::map<std::string, std::string> files;  // of the panel
  std::vector<std::string> log;
  std::vector<Result> results;  // the next ones; then all is well
  std::function<void()> during;
  bool alters = false;  // each upload
  int takes = 1000;     // uploads, and none after them
  int garbled = 0;      // the next downloads, each in its own way
  int cancels = 0;
  MacroTransferFactory factory = [this](const std::string& host) {
    return std::make_unique<Transfer>(*this, host);
  };
  static Outcome reads(std::string_view bytes) {
    if (bytes.ends_with("/>")) return {};
    return Failure{Failure::Kind::kNotXml, "no XML"};
  }
  PanelMacros macros{*panel.client, site.root, factory, &reads};
};

TEST_F(PanelMacrosTest, WhatWasSentIsReadBackBeforeItIsAnnounced) {
  during = [&] { EXPECT_THAT(panel.transport->take(), IsEmpty()) << "told before it was read back"; };
  EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").holds, PanelHolds::kNew);
  EXPECT_THAT(take(), ElementsAre("10.0.0.1 get " + kOne, "10.0.0.1 put " + kOne, "10.0.0.1 get " + kOne));
  EXPECT_THAT(panel.transport->take(), ElementsAre(kReload));
  EXPECT_EQ(files[kOne], "<new/>");
  EXPECT_TRUE(macros.download("10.0.0.1", 1, "001", "c:\\back.mac").done());
  EXPECT_EQ(site.read("c:\\back.mac"), "<new/>");
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

TEST_F(PanelMacrosTest, AnUploadThatFailsLeavesTheOldMacroOrSaysThatItDoesNot) {
  constexpr Result kGone = kUnreachable, kRefused = kRefusedLogin;
  using Holds = PanelHolds;
  struct Case {
    const char* what;
    std::vector<Result> results;  // old content first
    Result transfer;
    Holds holds;
    const char* file;
    std::size_t loads;
  };
  const std::vector<Result> stalls{kDone,    kCut,  kDone,    kCut,  kDone,   kDone,
                                   kStalled, kDone, kStalled, kDone, kStalled};
  const Case cases[] = {
      {"wrong once", {kDone, kAltered}, kDone, Holds::kNew, "<new/>", 1},
      {"wrong twice", {kDone, kAltered, kDone, kAltered}, kAltered, Holds::kOld, "<old/>", 1},
      {"cut, then well", {kDone, kCut}, kDone, Holds::kNew, "<new/>", 1},
      {"cut twice, then stalled", stalls, kCut, Holds::kOld, "<old/>", 1},
      {"cut, gone, back", {kDone, kCut, kGone, kGone, kGone}, kCut, Holds::kOld, "<old/>", 1},
      {"taken, then gone, back with it", {kDone, kDone, kGone}, kDone, Holds::kNew, "<new/>", 1},
      {"disk full", {kDone, kFull, kDone}, kFull, Holds::kOld, "<old/>", 1},
      {"wrong, then refused", {kDone, kAltered, kDone, kRefused}, kRefused, Holds::kOld, "<old/>", 1},
      {"taken, not found, is back", {kDone, kDone, kNotFound}, kDone, Holds::kNew, "<new/>", 1},
      {"cancelled too late", {kDone, kDone, kCancelled}, kDone, Holds::kNew, "<new/>", 1},
      {"cut, reading refused", {kDone, kCut, kRefused}, kCut, Holds::kOld, "<old/>", 1},
      {"cancelled at once", {kCancelled}, kCancelled, Holds::kAsBefore, "<old/>", 0},
      {"login refused", {kDone, kRefused}, kRefused, Holds::kAsBefore, "<old/>", 0},
      {"taken, reading refused", {kRefused, kDone, kRefused}, kDone, Holds::kNewUnread, "<new/>", 1},
      {"old unknown, cut, back", {kStalled, kCut, kGone, kGone}, kDone, Holds::kNew, "<new/>", 1},
      {"cancelled", {kDone, kCancelled}, kCancelled, Holds::kOld, "<old/>", 1},
      {"unreachable", {kGone}, kGone, Holds::kAsBefore, "<old/>", 0},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    const TransferOutcome outcome = upload(one.results);
    EXPECT_EQ(outcome.transfer, one.transfer);
    EXPECT_EQ(outcome.holds, one.holds);
    EXPECT_EQ(outcome.describe(),
              one.holds == Holds::kNew         ? "verified"
              : one.holds == Holds::kNewUnread ? "not verified: " + std::string(FtpClient::describe(kRefused))
              : one.holds == Holds::kAsBefore
                  ? FtpClient::describe(one.transfer)
                  : FtpClient::describe(one.transfer) +
                        std::string("; the panel holds again what it held before, verified"));
    EXPECT_EQ(outcome.done(), one.file == std::string("<new/>"));
    EXPECT_EQ(files[kOne], one.file);
    EXPECT_EQ(panel.transport->take().size(), one.loads);
  }
}

TEST_F(PanelMacrosTest, APanelThatKeepsOnStoringWronglyIsNotSaidToHoldAnything) {
  alters = true;
  const TransferOutcome altered = upload({});
  alters = false;
  EXPECT_EQ(altered.holds, PanelHolds::kUnknown);
  EXPECT_LT(take().size(), 15U) << "it is not written to for a minute";
  std::vector<Result> away(1000, kUnreachable);
  away[0] = kDone;
  away[1] = kCut;
  macros.waitFor({milliseconds(50), milliseconds(20'000), milliseconds(1)});
  panel.transport->take();
  EXPECT_EQ(upload(away).describe(),
            "the connection was cut; what the panel holds now is unknown: the panel cannot be reached");
  EXPECT_THAT(panel.transport->take(), IsEmpty()) << "nothing to be loaded";
}

TEST_F(PanelMacrosTest, WhereNothingStoodNothingIsLeft) {
  const std::vector<Result> missingAndTakenWrongly = {kNotFound, kAltered, kDone,    kAltered,
                                                      kDone,     kDone,    kNotFound};
  const auto deletes = ElementsAre("call PANEL.MACRO1.DELETE(REG=\"001\")", kReload);
  const auto send = [&] {
    results = missingAndTakenWrongly;
    return macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").holds;
  };
  EXPECT_EQ(send(), PanelHolds::kOld);
  EXPECT_THAT(panel.transport->take(), deletes);
  files[kOne] = "<old/>";
  results.clear();
  ASSERT_TRUE(macros.download("10.0.0.1", 1, "001", "c:\\back.mac").done());
  EXPECT_EQ(send(), PanelHolds::kNew);
  EXPECT_THAT(panel.transport->take(), ElementsAre(kReload)) << "seen there, whatever the panel says";
  results.clear();
  EXPECT_TRUE(macros.remove("10.0.0.1", 1, "001").asked);
  panel.transport->take();
  EXPECT_EQ(send(), PanelHolds::kOld);
  EXPECT_THAT(panel.transport->take(), deletes) << "deleted from here";
}

// Notes what it gets.
struct Keeper : MacroKeeper {
  Outcome keep(std::string_view content, const MacroPlace& place, MacroChange change) override {
    log += place.address.text() + " " + std::to_string(place.workplace) + " " + place.number +
           (change == MacroChange::kDelete ? " deleted" : "");
    bytes = content;
    return {};
  }
  void notFetched(const Failure&) override { bytes = log += "missed"; }
  std::string log, bytes;
};

TEST_F(PanelMacrosTest, WhatComesIsReadBeforeItReplacesAnything) {
  files[kOne] = "half";
  EXPECT_EQ(macros.download("10.0.0.1", 1, "001", "c:\\x.mac").describe(),
            "what the panel sent is no macro (no XML)");
  EXPECT_EQ(site.read("c:\\x.mac"), "<new/>");
}

// A line that garbled the old macro must not have the garbage kept for the macro, or put back over it. What
// really stands there can be replaced, whatever it is, and is kept.
TEST_F(PanelMacrosTest, OldContentThatIsNoMacroIsFetchedTwice) {
  using Holds = PanelHolds;
  const struct {
    const char* stands;
    int garbled;
    std::vector<Result> results;
    const char* kept;
    Holds holds;
    const char* file;  // afterwards
  } cases[] = {
      {"<old/>", 1, {}, "<old/>", Holds::kNew, "<new/>"},
      {"<old/>", 2, {}, "missed", Holds::kNew, "<new/>"},
      {"<old/>", 1, {kDone, kCut}, "missed", Holds::kNew, "<new/>"},
      {"<old/>", 2, {kDone, kDone, kCut, kDone, kCut}, "missed", Holds::kNew, "<new/>"},
      {"<old/>", 2, {kDone, kDone, kDone, kNotFound}, "missed", Holds::kNew, "<new/>"},
      {"half", 0, {}, "half", Holds::kNew, "<new/>"},                                 // really no macro
      {"half", 0, {kDone, kDone, kCut, kDone, kCut}, "half", Holds::kNew, "<new/>"},  // never put back
      {"half", 0, {kDone, kDone, kFull}, "half", Holds::kOld, "half"},
      {"", 0, {kDone, kDone, kFull}, "", Holds::kOld, ""},
  };
  for (const auto& one : cases) {
    SCOPED_TRACE(testing::Message() << one.stands << ' ' << one.garbled << ' ' << one.results.size());
    Keeper keeper;
    macros.keepIn(keeper);
    files[kOne] = one.stands;
    garbled = one.garbled;
    results = one.results;
    EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").holds, one.holds);
    results.clear();
    EXPECT_EQ(keeper.bytes, one.kept);
    EXPECT_EQ(files[kOne], one.file);
  }
}

// A panel that takes nothing more, and still tells what stands there, is not unknown.
TEST_F(PanelMacrosTest, WhatStandsThereIsLookedAtBeforeItIsWrittenOver) {
  takes = 0;
  EXPECT_EQ(upload({}).holds, PanelHolds::kOld);
  takes = 1;
  EXPECT_EQ(upload({kDone, kDone, kCut}).holds, PanelHolds::kNew);
  takes = 0;
  results.assign(4, kNotFound);
  panel.transport->take();
  EXPECT_EQ(macros.upload("10.0.0.1", 1, "002", "c:\\x.mac").holds, PanelHolds::kOld);
  EXPECT_THAT(panel.transport->take(), ElementsAre(kReload)) << "nothing stood there, and nothing is deleted";
}

TEST_F(PanelMacrosTest, NothingLeadsOutOfTheMacroFolders) {
  for (const char* number : {"", "7", "07", "0007", "../", "a07", " 07", "-07", "..."}) {
    EXPECT_FALSE(macros.download("10.0.0.1", 1, number, "c:\\x.mac").done()) << number;
    EXPECT_FALSE(macros.upload("10.0.0.1", 1, number, "c:\\x.mac").done()) << number;
    EXPECT_FALSE(macros.remove("10.0.0.1", 1, number).asked) << number;
    EXPECT_FALSE(macros.rename("10.0.0.1", 1, number, "Name")) << number;
  }
  for (const int workplace : {-1, 0, 9}) {
    EXPECT_FALSE(macros.download("10.0.0.1", workplace, "001", "c:\\x.mac").done());
    EXPECT_FALSE(macros.remove("10.0.0.1", workplace, "001").asked);
  }
  EXPECT_EQ(macros.download("10.0.0.1", 1, "001", "c:\\..\\x.mac").transfer, kLocalFile);
  EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\none.mac").transfer, kLocalFile);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

TEST_F(PanelMacrosTest, DeleteAndRenameAskThePanel) {
  EXPECT_TRUE(macros.remove("10.0.0.1", 1, "007").asked);
  EXPECT_TRUE(macros.rename("10.0.0.1", 8, "012", "New \"name\""));
  ParameterList renamed;
  renamed.addString("REG", "012");
  renamed.addString("NAME", "New \"name\"");
  EXPECT_THAT(panel.transport->take(), ElementsAre("call PANEL.MACRO1.DELETE(REG=\"007\")",
                                                   "call PANEL.MACRO8.NAME.SET(" + renamed.toString() + ")"));
}

// Files go to the address of a pane, calls over the one line: a macro under the same number of another panel
// must not be struck, least of all by the putting back of what the user gave up.
TEST_F(PanelMacrosTest, NoOtherPanelThanTheOneThatIsMeantIsAsked) {
  const std::string file = std::string(kFolder) + "1/macro002.mac";
  for (const Result end : {kCut, kCancelled}) {
    files.erase(file);
    results = {kDone, end, kStalled, kStalled};
    const TransferOutcome sent = macros.upload("10.0.0.2", 1, "002", "c:\\x.mac");
    EXPECT_EQ(take().size(), end == kCut ? 8U : 7U) << "not written over while it is not known";
    EXPECT_EQ(sent.holds, PanelHolds::kNew);
    EXPECT_EQ(files[file], "<new/>") << "a whole macro, since the part of one cannot be deleted";
    EXPECT_FALSE(sent.announced) << "that panel does not know of it";
    EXPECT_THAT(panel.transport->take(), ElementsAre(kReload));
  }
  EXPECT_FALSE(macros.remove("10.0.0.2", 1, "002").asked);
  EXPECT_FALSE(macros.rename("10.0.0.2", 1, "002", "Name") || macros.run("10.0.0.2", 1, "002"));
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  EXPECT_THAT(take(), IsEmpty()) << "nor is anything kept of it";
  EXPECT_TRUE(macros.run("10.00.0.001", 1, "002")) << "the same address";
}

TEST_F(PanelMacrosTest, OldContentIsKeptFirst) {
  struct Case {
    Result fetched;
    const char* kept;
    bool deleted;
  };
  const Case cases[] = {
      {kDone, "10.0.0.1 1 001", true}, {kNotFound, "", true},           {kCut, "missed", false},
      {kStalled, "missed", false},     {kUnreachable, "missed", false}, {kCancelled, "missed", false},
  };
  for (const Case& one : cases) {
    Keeper keeper;
    macros.keepIn(keeper);
    upload({one.fetched});
    EXPECT_EQ(keeper.log, one.kept);
    results = {one.fetched};
    const PanelMacros::Deletion deletion = macros.remove("10.0.0.1", 1, "001");
    EXPECT_EQ(deletion.asked, one.deleted) << "what cannot be kept is not deleted unasked";
    EXPECT_EQ(deletion.kept.done(), one.deleted || one.fetched == kCancelled);
    if (!deletion.kept.done()) {
      EXPECT_EQ(deletion.kept.failure().kind, Failure::Kind::kPanel) << "no file of ours is missing";
    }
    EXPECT_TRUE(macros.remove("10.0.0.1", 1, "001", PanelMacros::OldContent::kLost).asked);
  }
}

TEST_F(PanelMacrosTest, TheDemonstrationMovesNoFiles) {
  PanelMacros demo(*panel.client, site.root, factory, &reads, true);
  EXPECT_FALSE(demo.download("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_FALSE(demo.upload("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  EXPECT_TRUE(demo.remove("10.0.0.1", 1, "001").asked) << "a call, and no file";
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(PanelMacrosTest, ManyInARowStayConnectedAndRememberWhatWasSeen) {
  std::string made;
  PanelMacros first(*panel.client, site.root, factory, &reads);
  first.takeForMany([&](const std::string& host) {
    made += host.back();
    return factory(host);
  });
  const auto many = first.forMany();
  const auto send = [&](const char* host, const BeforePanelWrite& before = {}) {
    return many->uploadBytes(host, 1, "001", "<a/>", MacroChange::kEdit, before);
  };
  EXPECT_EQ(send("10.0.0.1").describe(), "verified");
  EXPECT_EQ(many->read("10.00.0.1", 1, "001").bytes, "<a/>");
  EXPECT_EQ(made, "1") << "the same panel";
  EXPECT_EQ(many->read("10.0.0.2", 1, "001").bytes, "<a/>");
  EXPECT_EQ(many->read("10.0.0.1", 1, "001").bytes, "<a/>");
  EXPECT_EQ(made, "121");
  for (const char* host : {"10.0.0.1", "10.0.0.2"}) {
    during = [&] { many->cancel(); };
    EXPECT_EQ(many->read(host, 1, "001").bytes, "<a/>");
    during = {};
    EXPECT_EQ(many->read("10.0.0.1", 1, "001").bytes, "<a/>");
  }
  EXPECT_EQ(made, "121121") << "a cancelled one is of no more use, nor is one to another panel";
  many->cancel();
  EXPECT_EQ(cancels, 2) << "nothing runs any more";
  EXPECT_EQ(many->read("10.0.0.1", 9, "001").fetched, kFailed);
  const TransferOutcome refused = send("10.0.0.3", [](const PanelStanding& standing) {
    EXPECT_EQ(standing.old.bytes, "<a/>");
    return false;
  });
  EXPECT_EQ(refused.transfer, kCancelled);
  EXPECT_EQ(refused.holds, PanelHolds::kAsBefore);
  const auto seen = [&](const char* host) { return first.seen().of({{}, host, 1, "001"}); };
  EXPECT_EQ(seen("10.0.0.001"), contentCheck("<a/>"));
  EXPECT_EQ(seen("10.0.0.2"), std::nullopt) << "it was only read";
  EXPECT_EQ(seen("10.0.0.3"), std::nullopt);
  EXPECT_TRUE(first.rename("10.0.0.1", 1, "002", "Other") && first.rename("10.0.0.1", 2, "001", "Other"));
  EXPECT_EQ(seen("10.0.0.1"), contentCheck("<a/>"));
  EXPECT_TRUE(first.rename("10.0.0.1", 1, "001", "Name"));
  EXPECT_EQ(seen("10.0.0.1"), std::nullopt);
  panel.transport->take();
  EXPECT_TRUE(many->run("10.0.0.1", 2, "007"));
  EXPECT_FALSE(many->run("10.0.0.1", 9, "007") || many->run("10.0.0.1", 2, "7"));
  EXPECT_THAT(panel.transport->take(), ElementsAre("call PANEL.MACRO2.RUN(REG=\"007\")"));
}

// The user who cancels the sending does not wait for a panel that is gone as long as one who does not, and
// one who cancels the putting back does not wait at all.
TEST_F(PanelMacrosTest, CancelEndsTheTransferAndThenThePuttingBack) {
  macros.cancel();
  EXPECT_EQ(cancels, 0) << "nothing runs";
  macros.waitFor({milliseconds(5000), milliseconds(20), milliseconds(1)});
  std::vector<Result> away(100'000, kUnreachable);
  away[0] = kDone;
  away[1] = kCancelled;
  EXPECT_EQ(upload(away).holds, PanelHolds::kUnknown);
  EXPECT_LT(take().size(), 100U);
  macros.waitFor({milliseconds(5000), milliseconds(5000), milliseconds(1)});
  during = [&] {
    if (log.size() >= 2) macros.cancel();
  };
  EXPECT_EQ(upload({kDone, kCancelled, kCancelled}).holds, PanelHolds::kUnknown);
  EXPECT_EQ(cancels, 2);
  EXPECT_EQ(take().size(), 3U);
}

}  // namespace
}  // namespace tessaly
