#include <future>
#include <gmock/gmock.h>

#include "link/PanelMacros.h"
#include "tests/link/FakeTransport.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Result = FtpClient::Result;

constexpr const char* kReload = "call PANEL.APPLICATION.LOAD.FINISH()";

class PanelMacrosTest : public testing::Test {
 protected:
  // Notes each transfer with the local path inside the site, and answers from a list.
  struct Transfer : MacroTransfer {
    Transfer(PanelMacrosTest& theTest, std::string theHost) : test(theTest), host(std::move(theHost)) {}
    Result get(const std::string& remotePath, const std::string& hostPath,
               const FtpClient::Check& check) override {
      if (check && !check(test.sent)) return Result::kUnreadable;
      return test.transfer(host + " get " + remotePath + " " + test.inSite(hostPath));
    }
    Result put(const std::string& hostPath, const std::string& remotePath) override {
      return test.transfer(host + " put " + test.inSite(hostPath) + " " + remotePath);
    }
    void cancel() override { test.cancelled.set_value(); }
    PanelMacrosTest& test;
    std::string host;
  };

  Result transfer(const std::string& text) {
    log.push_back(text);
    if (during) during();
    return results.empty() ? Result::kDone
                           : std::exchange(results, {results.begin() + 1, results.end()}).front();
  }
  std::string inSite(const std::string& hostPath) const {
    return std::filesystem::path(hostPath).lexically_relative(site.root.path()).string();
  }
  std::vector<std::string> take() { return std::exchange(log, {}); }

  TestSite site;
  FakePanel panel;
  std::vector<std::string> log;
  std::vector<Result> results;  // the next ones; then all is well
  std::string sent;             // by the panel
  std::function<void()> during;
  std::promise<void> cancelled;
  MacroTransferFactory factory = [this](const std::string& host) {
    return std::make_unique<Transfer>(*this, host);
  };
  PanelMacros macros{*panel.client, site.root, factory};
};

TEST_F(PanelMacrosTest, FilesGoToTheirPlacesAndUploadsAreAnnounced) {
  EXPECT_TRUE(macros.download("10.0.0.1", 2, "007", "c:\\x\\tempB.mac").done());
  EXPECT_TRUE(macros.download("10.0.0.1:5000", 8, "999", "c:\\x\\macro003.mac").done());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  EXPECT_THAT(take(),
              ElementsAre("10.0.0.1 get /flash/data/PANEL/macro/workplace2/macro007.mac "
                          "c/x/tempB.mac",
                          "10.0.0.1 get /flash/data/PANEL/macro/workplace8/macro999.mac c/x/macro003.mac"));
  EXPECT_TRUE(macros.upload("10.0.0.1", 1, "000", "c:\\x\\tempA.mac").done());
  EXPECT_TRUE(macros.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\x\\buffer.mac").done());
  EXPECT_THAT(take(), ElementsAre("10.0.0.1 put c/x/tempA.mac "
                                  "/flash/data/PANEL/macro/workplace1/macro000.mac",
                                  "10.0.0.1 get /flash/data/PANEL/macro/workplace1/macro001.mac "
                                  "c/x/buffer.mac",
                                  "10.0.0.1 put c/x/buffer.mac "
                                  "/flash/data/PANEL/macro/workplace1/macro002.mac"));
  EXPECT_THAT(panel.transport->take(), ElementsAre(kReload, kReload));
}

TEST_F(PanelMacrosTest, AFailureIsNeitherAnnouncedNorFollowedUp) {
  results = {Result::kCut, Result::kCut, Result::kDone, Result::kFull};
  EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").describe(),
            "the connection was cut; the panel may hold a part of the macro");
  EXPECT_EQ(macros.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\b.mac").describe(),
            "the connection was cut");
  EXPECT_EQ(take().size(), 2U) << "what the buffer held before must not reach the panel";
  EXPECT_FALSE(macros.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\b.mac").done());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

// Notes what it gets; fetched files go to the site's root.
struct Keeper : MacroKeeper {
  explicit Keeper(std::string theFile) : file(std::move(theFile)) {}
  Expected<std::string> fetchFile() override {
    if (file.empty()) return Failure{Failure::Kind::kFull, "full"};
    return file;
  }
  Outcome keepFetched(const std::string&, const MacroPlace& place, MacroChange change) override {
    log += place.address + " " + std::to_string(place.workplace) + " " + place.number +
           (change == MacroChange::kDelete ? " deleted" : "");
    return {};
  }
  void notFetched(const Failure&) override { log += "missed"; }
  std::string file;
  std::string log;
};

TEST_F(PanelMacrosTest, WhatComesIsReadBeforeItReplacesAnything) {
  PanelMacros reading(*panel.client, site.root, factory, false, [](std::string_view bytes) {
    return bytes == "macro" ? Outcome() : Outcome(Failure{Failure::Kind::kNotXml, "no XML"});
  });
  EXPECT_EQ(reading.download("10.0.0.1", 1, "001", "c:\\x.mac").describe(),
            "what the panel sent is no macro (no XML)");
  EXPECT_FALSE(reading.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\x.mac").done());
  EXPECT_THAT(take(), IsEmpty());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
  sent = "macro";
  EXPECT_EQ(reading.download("10.0.0.1", 1, "001", "c:\\x.mac").describe(), "the transfer is done");
  site.write("c:\\x.mac", "<macro/>");
  Keeper keeper((site.root.path() / "fetched").string());
  reading.keepIn(keeper);
  sent.clear();
  EXPECT_TRUE(reading.upload("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_EQ(keeper.log, "10.0.0.1 1 001") << "what is kept is kept, whatever it is";
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

TEST_F(PanelMacrosTest, OldContentIsKeptFirstAndNeverDecides) {
  site.write("c:\\x.mac", "<macro/>");
  struct Case {
    Result fetched;
    const char* kept;
    std::size_t transfers;  // of an upload
    Result uploaded;
    bool deleted;
  };
  const Case cases[] = {
      {Result::kDone, "10.0.0.1 1 001", 2, Result::kDone, true},
      {Result::kNotFound, "", 2, Result::kDone, true},
      {Result::kCut, "missed", 2, Result::kDone, false},
      {Result::kStalled, "missed", 2, Result::kDone, false},
      {Result::kLocalFile, "missed", 2, Result::kDone, false},
      {Result::kUnreachable, "missed", 1, Result::kUnreachable, false},
      {Result::kCancelled, "missed", 1, Result::kCancelled, false},
  };
  for (const Case& one : cases) {
    Keeper keeper((site.root.path() / "fetched").string());
    macros.keepIn(keeper);
    results = {one.fetched};
    EXPECT_EQ(macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").transfer, one.uploaded) << one.kept;
    EXPECT_EQ(keeper.log, one.kept);
    EXPECT_EQ(take().size(), one.transfers);
    results = {one.fetched};
    const PanelMacros::Deletion deletion = macros.remove("10.0.0.1", 1, "001");
    EXPECT_EQ(deletion.asked, one.deleted) << "what cannot be kept is not deleted unasked";
    EXPECT_EQ(deletion.kept.done(), one.deleted || one.fetched == Result::kCancelled);
    EXPECT_TRUE(macros.remove("10.0.0.1", 1, "001", PanelMacros::OldContent::kLost).asked);
    results.clear();
    take();
  }
  Keeper unwritable("");
  macros.keepIn(unwritable);
  EXPECT_TRUE(macros.upload("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_EQ(unwritable.log, "missed");
}

TEST_F(PanelMacrosTest, TheDemonstrationMovesNoFiles) {
  PanelMacros demo(*panel.client, site.root, factory, true);
  EXPECT_FALSE(demo.download("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_FALSE(demo.upload("10.0.0.1", 1, "001", "c:\\x.mac").done());
  EXPECT_FALSE(demo.copyOnPanel("10.0.0.1", 1, "001", "002", "c:\\x.mac").done());
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THAT(panel.transport->take(), IsEmpty());
}

TEST_F(PanelMacrosTest, CancelReachesTheRunningTransferOnly) {
  macros.cancel();
  during = [&] {
    macros.cancel();
    EXPECT_EQ(cancelled.get_future().wait_for(std::chrono::seconds(0)), std::future_status::ready);
  };
  EXPECT_TRUE(macros.download("10.0.0.1", 1, "001", "c:\\x.mac").done());
}

}  // namespace
}  // namespace tessaly
