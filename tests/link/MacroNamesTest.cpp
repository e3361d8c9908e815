#include <future>
#include <gmock/gmock.h>

#include "link/MacroNames.h"
#include "link/WorkplaceNames.h"
#include "tests/link/FakeTransport.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MacroNumber, IsReadFromTheThirdField) {
  const std::pair<const char*, int> cases[] = {
      {"PANEL.MACRO1.REG7.NAME", 7},
      {"PANEL.MACRO8.REG999.NAME", 999},
      {"PANEL.MACRO1.REG007", 7},
      {"PANEL.MACRO1.REG.NAME", 0},
      {"PANEL.MACRO1.XREG5.NAME", 5},
      {"PANEL.MACRO1.NAME.REG5", -1},
      {"PANEL.REG5", -1},
      {"", -1},
      {"PANEL.MACRO1.REG-4.NAME", -4},
  };
  for (const auto& [name, number] : cases) EXPECT_EQ(macroNumberOf(name), number) << name;
}

class MacroNamesTest : public testing::Test, public MacroNamesView {
 protected:
  bool showsPanel(Pane pane) const override { return panelPane[index(pane)]; }
  void rebuildMacros(Pane pane) override { log.push_back(pane == Pane::kA ? "list A" : "list B"); }

  std::vector<std::string> arrives(const std::string& valueName, const std::string& text) {
    panel.value(valueName, text);
    return std::exchange(log, {});
  }

  FakePanel panel;
  PanelSubscriptions subscriptions{*panel.client};
  MacroNames names{*panel.client, subscriptions, *this};
  std::array<bool, 2> panelPane{true, false};
  std::vector<std::string> log;
};

TEST_F(MacroNamesTest, AListIsRebuiltOnlyWhenItsRowsCanHaveChanged) {
  panel.status(kPanelConnected);
  names.subscribe(1);
  EXPECT_THAT(arrives("PANEL.MACRO1.REG0.NAME", ""), ElementsAre("list A")) << "0 always rebuilds";
  EXPECT_THAT(arrives("PANEL.MACRO1.REG7.NAME", ""), IsEmpty());
  EXPECT_THAT(arrives("PANEL.MACRO1.REG7.NAME", "Opener"), ElementsAre("list A"));
  EXPECT_THAT(arrives("PANEL.MACRO1.REG7.NAME", "Opener"), ElementsAre("list A"));
  EXPECT_EQ(names.name(Pane::kA, 7), "Opener");
  EXPECT_EQ(names.name(Pane::kB, 7), "") << "shows the hard disk";
  panelPane = {true, true};
  EXPECT_THAT(arrives("PANEL.MACRO1.REG7.NAME", ""), ElementsAre("list A"));
  EXPECT_THAT(arrives("PANEL.MACRO1.REG7.NAME", ""), IsEmpty());
  EXPECT_THAT(arrives("PANEL.MACRO1.REG999.NAME", "Last"), ElementsAre("list A", "list B"));
  panel.client->subscribedValueReceived("PANEL.MACRO1.REG1000.NAME", ParameterValue("wild"));
  EXPECT_EQ(names.names(Pane::kB)[999], "Last");
  // No panel's names fill the lists' memory, and none ends within a character.
  arrives("PANEL.MACRO1.REG8.NAME", std::string(kLongestMacroName - 1, 'x') + "\u00fcx");
  EXPECT_EQ(names.name(Pane::kA, 8), std::string(kLongestMacroName - 1, 'x') + "\u2026");
  EXPECT_EQ(names.name(Pane::kB, 1000), "");
}

// Each row: what is asked, what the panel publishes then, and which requests are told, with their time in
// seconds.
TEST_F(MacroNamesTest, ARequestThatThePanelDoesNotConfirmIsToldOnce) {
  const MacroNames::Clock::time_point start{};
  const auto told = [&](int seconds) {
    std::string all;
    for (const auto& request : names.takeUnconfirmed(start + std::chrono::seconds(seconds)))
      all += std::to_string(request.workplace) + "/" + std::to_string(request.number) + request.name + " ";
    return all;
  };
  panel.status(kPanelConnected);
  names.subscribe(1);
  panel.value("PANEL.MACRO1.REG7.NAME", "Old");
  struct {
    const char* asked;
    const char* published;  // of macro 7; null: nothing
    const char* told;
  } const cases[] = {
      {"New", nullptr, "1/7New "}, {"New", "New", ""},     {"", nullptr, "1/7 "},        {"", "", ""},
      {"New", "Other", "1/7New "}, {"Other", nullptr, ""}, {"Gr\xfcn", "Gr\u00fcn", ""},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(std::string(row.asked) + " " + row.told);
    names.expect(7, row.asked, start);
    panel.value("PANEL.MACRO1.REG8.NAME", row.asked);
    if (row.published != nullptr) panel.value("PANEL.MACRO1.REG7.NAME", row.published);
    EXPECT_EQ(told(4), "");
    EXPECT_EQ(told(5), row.told);
    EXPECT_EQ(told(6), "") << "once";
  }
  names.expect(7, "First", start);
  names.expect(7, "Second", start + std::chrono::seconds(3));
  EXPECT_EQ(told(5), "");
  EXPECT_EQ(told(8), "1/7Second ");
  const std::string now = names.name(Pane::kA, 7);
  names.expect(7, "First", start);
  names.expect(7, now, start);
  EXPECT_EQ(told(5), "") << "the name that it has was asked for last";
  names.expect(7, "Unasked", start);
  names.forget(7);
  names.expect(8, "Elsewhere", start);
  names.subscribe(2);
  EXPECT_EQ(told(9), "");
  names.expect(9, "Lost", start);
  panel.status(kPanelNotConnected);
  EXPECT_EQ(told(0), "2/9Lost ") << "nothing comes any more";
}

TEST_F(MacroNamesTest, OneWorkplaceIsSubscribedForBothPanes) {
  names.subscribe(2);
  EXPECT_EQ(names.workplace(), kNoWorkplace) << "not connected";
  panel.status(kPanelConnected);
  panel.value("PANEL.MACRO2.REG5.NAME", "Known");
  names.subscribe(2);
  const std::vector<std::string> asked = panel.transport->take();
  EXPECT_EQ(asked.size(), 999U) << "but for the one that is known";
  EXPECT_EQ(asked.front(), "subscribe PANEL.MACRO2.REG0.NAME");
  EXPECT_EQ(asked.back(), "subscribe PANEL.MACRO2.REG999.NAME");
  EXPECT_EQ(names.name(Pane::kA, 5), "Known");
  names.subscribe(3);
  EXPECT_EQ(names.workplace(), 3);
  EXPECT_EQ(names.name(Pane::kA, 5), "") << "all tables are emptied";
  log.clear();
  EXPECT_THAT(arrives("PANEL.MACRO2.REG0.NAME", "Late"), IsEmpty());
  panelPane = {true, true};
  arrives("PANEL.MACRO3.REG6.NAME", "x");
  names.renew(3);
  EXPECT_THAT(log, IsEmpty()) << "they came over this line";
  panel.status(kPanelConnected);
  panel.status(7);
  names.renew(4);
  EXPECT_EQ(names.workplace(), 3);
  names.subscribe(4);
  EXPECT_EQ(names.workplace(), kNoWorkplace) << "only status 0 is connected";
  EXPECT_EQ(names.names(Pane::kB), MacroNames::Names(MacroNumber::kCount));
}

TEST_F(MacroNamesTest, TheDemonstrationReplacesBothTables) {
  panel.status(kPanelConnected);
  names.subscribe(1);
  arrives("PANEL.MACRO1.REG2.NAME", "Real");
  names.showDemo();
  std::string all;
  for (const Pane pane : kPanes) {
    for (int number = 0; number < MacroNumber::kCount; ++number)
      if (const auto name = names.name(pane, number); !name.empty())
        all += std::to_string(number) + name + " ";
  }
  EXPECT_EQ(all, "1M001 35MyTest 46MySurprise 1M001 13MyHope 18MyDay ");
}

// Catches a snapshot that is called whole although the line died in the middle of the names.
TEST(WorkplaceNames, WhatDidNotComeIsNotTakenForNothing) {
  FakePanel panel;
  ASSERT_TRUE(panel.client->connect("10.0.0.1"));
  const std::atomic<bool> cancelled{false};
  auto names = std::async(std::launch::async, [&] {
    return readWorkplaceNames(*panel.client, 1, cancelled, std::chrono::seconds(1));
  });
  panel.transport->await("subscribe " + macroNameValue(1, 999));
  panel.value(macroNameValue(1, 7), "Seven");
  panel.value(macroNameValue(1, 8), "");
  const auto came = names.get();
  ASSERT_TRUE(came);
  EXPECT_EQ(came->size(), 999U);
  EXPECT_EQ(came->at(7), "Seven");
  EXPECT_EQ(came->at(9), "");
  EXPECT_FALSE(came->contains(8));
  const auto text = [&](int workplace, const std::atomic<bool>& cancel) {
    return readWorkplaceNames(*panel.client, workplace, cancel, std::chrono::milliseconds(1)).failure().text;
  };
  const std::atomic<bool> ended{true};
  EXPECT_EQ(text(2, cancelled), "the panel sent no macro names");
  EXPECT_EQ(text(1, ended), "was cancelled");
  panel.status(kPanelNotConnected);
  EXPECT_EQ(text(1, cancelled), "the connection to the panel was lost");
}

}  // namespace
}  // namespace tessaly
