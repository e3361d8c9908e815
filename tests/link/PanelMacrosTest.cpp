#include <gmock/gmock.h>
#include <map>

#include "link/PanelMacros.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Result = FtpClient::Result;

constexpr const char* kReload = "call PANEL.APPLICATION.LOAD.FINISH()";

constexpr const char* kFolder = "/flash/data/PANEL/macro/workplace";

class PanelMacrosTest : public testing::Test {
 protected:
  // Files that are stored and given back, and notes of it, but for what a test says.
  struct Transfer : MacroTransfer {
    Transfer(PanelMacrosTest& theTest, std::string theHost) : test(theTest), host(std::move(theHost)) {}
    Result get(const std::string& remotePath, std::string& bytes, std::chrono::seconds) override {
      const Result result = test.next(host + " get " + remotePath);
      const auto file = test.files.find(remotePath);
      if (result != Result::kDone) return result;
      if (file == test.files.end()) return Result::kNotFound;
      bytes = file->second;
      return result;
    }
    Result put(std::string_view bytes, const std::string& remotePath) override {
      if (cancelled) return Result::kCancelled;
      const Result result = test.next(host + " put " + remotePath);
      if (result == Result::kAltered)
        test.files[remotePath] = "flipped";
      else if (result == Result::kCut || result == Result::kCancelled)
        test.files[remotePath] = bytes.substr(0, 1);
      else if (result == Result::kDone)
        test.files[remotePath] = bytes;
      return result == Result::kAltered ? Result::kDone : result;
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
    macros.waitFor(
        {std::chrono::milliseconds(50), std::chrono::milliseconds(50), std::chrono::milliseconds(1)});
    site.write("c:\\x.mac", "<new/>");
  }
  Result next(const std::string& text) {
    log.push_back(text);
    if (during) during();
    return results.empty() ? Result::kDone
                           : std::exchange(results, {results.begin() + 1, results.end()}).front();
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
  int cancels = 0;
  MacroTransferFactory factory = [this](const std::string& host) {
    return std::make_unique<Transfer>(*this, host);
  };
  PanelMacros macros{*panel.client, site.root, factory};
};

TEST_F(PanelMacrosTest, WhatWasSentIsReadBackBeforeItIsAnnounced) {
  during = [&] { EXPECT_THAT(panel.transport->take(), IsEmpty()) << "told before it was read back"; };
  EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").holds, PanelHolds::kNew);
  EXPECT_THAT(take(), ElementsAre("10.0.0.1 get " + kOne, "10.0.0.1 put " + kOne, "10.0.0.1 get " + kOne));
  EXPECT_THAT(panel.transport->take(), ElementsAre(kReload));
  EXPECT_EQ(files[kOne], "<new/>");
  EXPECT_TRUE(macros.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\buffer.mac").done());
  EXPECT_EQ(files[std::string(kFolder) + "1/macro002.mac"], "<new/>");
  EXPECT_THAT(panel.transport->take(), ElementsAre(kReload));
  take();
  EXPECT_TRUE(macros.download("10.0.0.1", 1, "002", "c:\\back.mac").done());
  EXPECT_EQ(site.read("c:\\back.mac"), "<new/>");
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  EXPECT_FALSE(macros.copyOnPanel("10.0.0.1", 1, "003", "002", "c:\\back.mac").done());
  EXPECT_EQ(take().size(), 2U) << "what the buffer held before must not reach the panel";
}

// Whatever goes wrong, the panel holds one macro whole, and what is said of it is so.
TEST_F(PanelMacrosTest, AnUploadThatFailsLeavesTheOldMacroOrSaysThatItDoesNot) {
  constexpr Result kDone = Result::kDone, kAltered = Result::kAltered, kCut = Result::kCut;
  constexpr Result kGone = Result::kUnreachable, kRefused = Result::kRefusedLogin;
  using Holds = PanelHolds;
  struct Case {
    const char* what;
    std::vector<Result> results;  // old content first
    Result transfer;
    Holds holds;
    const char* file;
    std::size_t loads;
  };
  const Case cases[] = {
      {"wrong once", {kDone, kAltered}, kDone, Holds::kNew, "<new/>", 1},
      {"wrong twice", {kDone, kAltered, kDone, kAltered}, kAltered, Holds::kOld, "<old/>", 1},
      {"cut, then well", {kDone, kCut}, kDone, Holds::kNew, "<new/>", 1},
      {"cut twice", {kDone, kCut, kDone, kCut}, kCut, Holds::kOld, "<old/>", 1},
      {"cut, gone, back", {kDone, kCut, kGone, kGone, kGone}, kCut, Holds::kOld, "<old/>", 1},
      {"taken, then gone, back", {kDone, kDone, kGone}, kGone, Holds::kOld, "<old/>", 1},
      {"disk full", {kDone, Result::kFull, kDone}, Result::kFull, Holds::kOld, "<old/>", 1},
      {"wrong, then refused", {kDone, kAltered, kDone, kRefused}, kRefused, Holds::kOld, "<old/>", 1},
      {"taken, not found, is back",
       {kDone, kDone, Result::kNotFound},
       Result::kNotFound,
       Holds::kOld,
       "<old/>",
       1},
      {"cut, reading refused", {kDone, kCut, kRefused}, kCut, Holds::kOld, "<old/>", 1},
      {"cancelled while the old was read",
       {Result::kCancelled},
       Result::kCancelled,
       Holds::kAsBefore,
       "<old/>",
       0},
      {"login refused", {kDone, kRefused}, kRefused, Holds::kAsBefore, "<old/>", 0},
      {"taken, reading refused", {kRefused, kDone, kRefused}, kDone, Holds::kNewUnread, "<new/>", 1},
      {"old unknown, cut, back", {Result::kStalled, kCut, kGone, kGone}, kDone, Holds::kNew, "<new/>", 1},
      {"cancelled", {kDone, Result::kCancelled}, Result::kCancelled, Holds::kOld, "<old/>", 1},
      {"unreachable", {kGone}, kGone, Holds::kAsBefore, "<old/>", 0},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.what);
    const TransferOutcome outcome = upload(one.results);
    EXPECT_EQ(outcome.transfer, one.transfer);
    EXPECT_EQ(outcome.holds, one.holds) << outcome.describe();
    EXPECT_EQ(outcome.done(), one.file == std::string("<new/>"));
    EXPECT_EQ(files[kOne], one.file);
    EXPECT_EQ(panel.transport->take().size(), one.loads);
  }
}

TEST_F(PanelMacrosTest, APanelThatKeepsOnStoringWronglyIsNotSaidToHoldAnything) {
  const std::vector<Result> wrong = {Result::kDone, Result::kAltered};
  std::vector<Result> always;
  for (int i = 0; i < 100; ++i) always.insert(always.end(), wrong.begin(), wrong.end());
  const TransferOutcome altered = upload(always);
  EXPECT_EQ(altered.holds, PanelHolds::kUnknown);
  EXPECT_LT(take().size(), 14U) << "it is not written to for a minute";
  const TransferOutcome gone = upload({Result::kDone, Result::kCut, Result::kCut});
  static_cast<void>(gone);
  std::vector<Result> away(1000, Result::kUnreachable);
  away[0] = Result::kDone;
  away[1] = Result::kCut;
  panel.transport->take();
  EXPECT_EQ(upload(away).describe(),
            "the connection was cut; what the panel holds now is unknown: the panel cannot be reached");
  EXPECT_THAT(panel.transport->take(), IsEmpty()) << "nothing to be loaded";
}

TEST_F(PanelMacrosTest, WhereNothingStoodNothingIsLeft) {
  results = {Result::kNotFound, Result::kAltered, Result::kDone,
             Result::kAltered,  Result::kDone,    Result::kNotFound};
  EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").holds, PanelHolds::kOld);
  EXPECT_THAT(panel.transport->take(), ElementsAre("call PANEL.MACRO1.DELETE(REG=\"001\")", kReload));
}

// Notes what it gets.
struct Keeper : MacroKeeper {
  Outcome keep(std::string_view, const MacroPlace& place, MacroChange change) override {
    log += place.address + " " + std::to_string(place.workplace) + " " + place.number +
           (change == MacroChange::kDelete ? " deleted" : "");
    return {};
  }
  void notFetched(const Failure&) override { log += "missed"; }
  std::string log;
};

TEST_F(PanelMacrosTest, WhatComesIsReadBeforeItReplacesAnything) {
  PanelMacros reading(*panel.client, site.root, factory, false, [](std::string_view bytes) {
    return bytes == "macro" ? Outcome() : Outcome(Failure{Failure::Kind::kNotXml, "no XML"});
  });
  files[kOne] = "half";
  EXPECT_EQ(reading.download("10.0.0.1", 1, "001", "c:\\x.mac").describe(),
            "what the panel sent is no macro (no XML)");
  EXPECT_EQ(site.read("c:\\x.mac"), "<new/>");
  EXPECT_FALSE(reading.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\x.mac").done());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  Keeper keeper;
  reading.keepIn(keeper);
  EXPECT_TRUE(reading.upload("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_EQ(keeper.log, "10.0.0.1 1 001") << "what is kept is kept, whatever it is";
  files[kOne] = "macro";
  EXPECT_TRUE(reading.download("10.0.0.1", 1, "001", "c:\\x.mac").done());
}

TEST_F(PanelMacrosTest, NothingLeadsOutOfTheMacroFolders) {
  for (const char* number : {"", "7", "07", "0007", "../", "a07", " 07", "-07", "..."}) {
    EXPECT_FALSE(macros.download("10.0.0.1", 1, number, "c:\\x.mac").done()) << number;
    EXPECT_FALSE(macros.upload("10.0.0.1", 1, number, "c:\\x.mac").done()) << number;
    EXPECT_FALSE(macros.remove("10.0.0.1", 1, number).asked) << number;
    EXPECT_FALSE(macros.rename(1, number, "Name")) << number;
  }
  for (const int workplace : {-1, 0, 9}) {
    EXPECT_FALSE(macros.download("10.0.0.1", workplace, "001", "c:\\x.mac").done());
    EXPECT_FALSE(macros.remove("10.0.0.1", workplace, "001").asked);
  }
  EXPECT_EQ(macros.download("10.0.0.1", 1, "001", "c:\\..\\x.mac").transfer, Result::kLocalFile);
  EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\none.mac").transfer, Result::kLocalFile);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

TEST_F(PanelMacrosTest, DeleteAndRenameAskThePanel) {
  EXPECT_TRUE(macros.remove("10.0.0.1", 1, "007").asked);
  EXPECT_TRUE(macros.rename(8, "012", "New \"name\""));
  ParameterList renamed;
  renamed.addString("REG", "012");
  renamed.addString("NAME", "New \"name\"");
  EXPECT_THAT(panel.transport->take(), ElementsAre("call PANEL.MACRO1.DELETE(REG=\"007\")",
                                                   "call PANEL.MACRO8.NAME.SET(" + renamed.toString() + ")"));
}

TEST_F(PanelMacrosTest, OldContentIsKeptFirst) {
  struct Case {
    Result fetched;
    const char* kept;
    bool deleted;
  };
  const Case cases[] = {
      {Result::kDone, "10.0.0.1 1 001", true}, {Result::kNotFound, "", true},
      {Result::kCut, "missed", false},         {Result::kStalled, "missed", false},
      {Result::kUnreachable, "missed", false}, {Result::kCancelled, "missed", false},
  };
  for (const Case& one : cases) {
    Keeper keeper;
    macros.keepIn(keeper);
    upload({one.fetched});
    EXPECT_EQ(keeper.log, one.kept);
    results = {one.fetched};
    const PanelMacros::Deletion deletion = macros.remove("10.0.0.1", 1, "001");
    EXPECT_EQ(deletion.asked, one.deleted) << "what cannot be kept is not deleted unasked";
    EXPECT_EQ(deletion.kept.done(), one.deleted || one.fetched == Result::kCancelled);
    EXPECT_TRUE(macros.remove("10.0.0.1", 1, "001", PanelMacros::OldContent::kLost).asked);
  }
}

TEST_F(PanelMacrosTest, TheDemonstrationMovesNoFiles) {
  PanelMacros demo(*panel.client, site.root, factory, true);
  EXPECT_FALSE(demo.download("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_FALSE(demo.upload("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_FALSE(demo.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\x.mac").done());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  EXPECT_TRUE(demo.remove("10.0.0.1", 1, "001").asked) << "a call, and no file";
  EXPECT_THAT(log, IsEmpty());
}

// The second cancel is one of the putting back.
TEST_F(PanelMacrosTest, CancelReachesTheRunningTransferOnly) {
  macros.cancel();
  EXPECT_EQ(cancels, 0);
  during = [&] {
    if (log.size() >= 2) macros.cancel();
  };
  const TransferOutcome outcome = upload({Result::kDone, Result::kCancelled, Result::kCancelled});
  EXPECT_EQ(outcome.holds, PanelHolds::kUnknown);
  EXPECT_EQ(cancels, 2);
}

}  // namespace
}  // namespace tessaly
