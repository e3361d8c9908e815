#include <gmock/gmock.h>

#include "fuzz/retarget/RetargetModel.h"
#include "review/MacroRetarget.h"
#include "tests/review/SampleMacros.h"

namespace tessaly {
namespace {

using testing::HasSubstr;

struct MacroRetargetTest : SampleMacrosTest {
  [[nodiscard]] CheckContext context() { return {dictionary(), lists}; }
};

std::string function(const char* fid, const char* name, const char* value, const char* workplace = "1") {
  return command(fid, parameter(name, value), workplace);
}

// Each row would be changed wrongly, or silently not, by a rule that looks at texts alone.
TEST_F(MacroRetargetTest, ChangesWhatTheRuleMeansAndTellsWhatItCannot) {
  const std::string key = function("QMF1.ME1.KEY1.FILL.SET", "INPUT", "5");
  const std::string rate = function("QMF1.ME1.TRANSI.RATE.SET", "RATE", "5");
  const std::string clip = function("QMF1.ME1.KEY1.CLIP.SET", "VALUE", "0.5");
  const std::string dimmer = function("PANEL.LIGHT.DIMMER.SET", "VALUE", "0.500000");
  const std::string fill = classic("25 03 21 09 05 00 ");
  const std::string bare = command("QMF1.NCSCOMMAND") + command("QMF1.NCSCOMMAND", "<param name=\"CMD\"/>");
  const struct {
    const char* rule;
    std::string before, after;
    const char* reason = "";  // of the only proposal
  } cases[] = {
      {"destination:Mainframe 1->QMF3", key, function("QMF3.ME1.KEY1.FILL.SET", "INPUT", "5")},
      {"destination:QMF1->QMF2", fill, function("QMF2.NCSCOMMAND", "CMD", "25 03 21 09 05 00 ")},
      {"destination:Panel/Workplace3->Workplace 5", function("PANEL.LIGHT.DIMMER.SET", "VALUE", "0.5", "3"),
       function("PANEL.LIGHT.DIMMER.SET", "VALUE", "0.5", "5")},
      {"destination:Workplace1->Workplace2", key, key},  // a mainframe's command has a workplace, too
      {"segment:ME1->me 2", key, function("QMF1.ME2.KEY1.FILL.SET", "INPUT", "5")},
      {"segment:ME1.KEY1->PP.KEY3", key, function("QMF1.ME0.KEY3.FILL.SET", "INPUT", "5")},
      {"segment:E1->E2", key, key},
      {"segment:KEY1->KEY77", key, key, "no function \"ME1.KEY77.FILL.SET\""},
      {"segment:FILL.SET->CLIP.SET", key, key, "other parameters"},
      {"segment:X->Y", function("QMF1.X.SET", "A", "1"), function("QMF1.X.SET", "A", "1"), "not known"},
      {"segment:ME3->ME1", fill, classic("25 01 21 09 05 00 ")},
      {"segment:ME3.KEY2->PP.KEY4", fill, classic("25 00 23 09 05 00 ")},
      {"segment:ME3->PP.KEY1", fill, fill, "no counterpart"},
      {"segment:SET->INC", clip, clip, "other parameters"},  // of another unit
      {"value:.5->0.500000", dimmer, dimmer},
      {"segment:KEY2->KEY7", fill, fill, "no counterpart"},
      {"segment:ME1->ME4", classic("24 01 10 01 01 "), classic("24 01 10 01 01 "), "no counterpart"},
      {"source:5->7", key + fill,
       function("QMF1.ME1.KEY1.FILL.SET", "INPUT", "7") + classic("25 03 21 09 07 00 ")},
      {"source:Input 5->input 12", classic("25 03 21 09 05 FF "), classic("25 03 21 09 0c FF ")},
      {"source:Input 05->PP A", key + fill, key + classic("25 03 21 09 a0 00 ")},
      {"source:5->Color Bgnd 1", key, key, "only classic commands"},
      {"segment:KEY2->WIPE1", fill, fill, "does not have the command"},
      {"source:5->7", bare, bare},
      {"source:5->255", fill, fill, "0 to 254"},
      {"source:5->7", rate, rate},
      {"value:.5->0.25", dimmer, function("PANEL.LIGHT.DIMMER.SET", "VALUE", "0.25")},
      {"value:input=05->6", key, key},  // an input is no number
      {"value:RATE=05->6 where function:ME1", rate + key,
       function("QMF1.ME1.TRANSI.RATE.SET", "RATE", "6") + key},
      {"value:RATE=5->6 where function:ME2", rate, rate},
      {"value:5->\xE2\x86\x92", key, key, "lacks"},
  };
  for (const auto& [text, before, after, reason] : cases) {
    const auto rule = RetargetRule::parse(text);
    ASSERT_TRUE(rule) << text;
    auto retarget = MacroRetarget::make(*rule, context());
    ASSERT_TRUE(retarget) << text << ": " << retarget.failure().text;
    const auto macro = Macro::read(macroOf(before));
    const RetargetProposals proposals = retarget->propose(*macro);
    const auto made = apply(*macro, MacroRetarget::editOf(proposals, std::vector(proposals.size(), true)));
    ASSERT_TRUE(made) << text;
    EXPECT_EQ(made->bytes(), macroOf(after)) << text;
    EXPECT_EQ(std::ranges::count(proposals, false, &RetargetProposal::possible), *reason ? 1 : 0) << text;
    if (!proposals.empty()) {
      EXPECT_THAT(proposals[0].reason, HasSubstr(reason)) << text;
    }
  }
}

// A finding at a command that is not changed itself must not be lost, and ticks change what is told.
TEST_F(MacroRetargetTest, TellsWhatIsMadeWrongAndWhatIsMended) {
  const auto macro = Macro::read(macroOf(function("QMF1.ME1.KEY1.FILL.SET", "INPUT", "5") +
                                         function("QMF2.ME1.KEY1.FILL.SET", "INPUT", "5") +
                                         function("QMF1.ME1.KEY1.CLIP.SET", "VALUE", "7")));
  auto retarget = MacroRetarget::make(*RetargetRule::parse("destination:QMF1->QMF2"), context());
  RetargetProposals proposals = retarget->propose(*macro);
  ASSERT_EQ(proposals.size(), 2U);
  ASSERT_EQ(proposals[0].made.size(), 1U) << "command 1 repeats command 0 now";
  EXPECT_EQ(proposals[0].made[0].rule, CheckRule::kRepeated);
  EXPECT_EQ(proposals[0].made[0].command, 1);
  retarget->judge(*macro, proposals, {false, true});
  EXPECT_TRUE(proposals[0].made.empty());
  auto mending = MacroRetarget::make(*RetargetRule::parse("value:VALUE=7->0.7"), context());
  proposals = mending->propose(*macro);
  ASSERT_EQ(proposals.size(), 1U);
  ASSERT_EQ(proposals[0].mended.size(), 1U);
  EXPECT_EQ(proposals[0].mended[0].rule, CheckRule::kLimits);
}

TEST_F(MacroRetargetTest, HostileRulesEndWithAReason) {
  const std::pair<std::string, const char*> cases[] = {
      {"", "begins with"},
      {"colour:1->2", "begins with"},
      {"source:5", "\"->\""},
      {"source:5->6->7", "one \"->\""},
      {"source:\"5->7", "no end"},
      {"source:->7", "replaced is empty"},
      {"value:=5->7", "parameter is empty"},
      {"source:5->", "place is empty"},
      {"source:5->5", "is there"},
      {"source:5->\"Input 5\"", "is there"},
      {"source:Nobody->7", "no source \"Nobody\""},
      {"source:*->7", "\"*\""},
      {"segment:ME1.->ME2", "segment of the rule is empty"},
      {"destination:QMF5->QMF1", "neither"},
      {"destination:QMF1->Workplace1", "gives way"},
      {"source:5->7 where", "followed by a query"},
      {"source:5->7 where a:b", "no field \"a\""},
      {std::string("source:5->7\0", 12), "control"},
      {"source:5->\xFF", "UTF-8"},
      {"value:5->5", "what is there"},
      {"segment:me 1->ME1", "what is there"},
      {"value:1->" + std::string(RetargetRule::kLongest, 'x'), "2000 bytes"},
  };
  for (const auto& [text, reason] : cases) {
    const auto rule = RetargetRule::parse(text);
    const auto made = rule ? MacroRetarget::make(*rule, context()) : Expected<MacroRetarget>(rule.failure());
    ASSERT_FALSE(made) << text;
    EXPECT_THAT(made.failure().text, HasSubstr(reason)) << text;
  }
  const auto typed = RetargetRule::parse(R"(value:"A B"="x->y = where z"->"" where "a where b")");
  ASSERT_TRUE(typed);
  EXPECT_EQ(typed->from, "x->y = where z");
  EXPECT_EQ(RetargetRule::parse(typed->text()), *typed);
  EXPECT_EQ(RetargetRule::parse("value:a->b wherever")->to, "b wherever");
  const RetargetRule built{.kind = RetargetRule::Kind::kValue, .from = "a\nb", .to = "c"};
  EXPECT_FALSE(MacroRetarget::make(built, context())) << "what cannot be typed is no rule";
}

TEST(RetargetModelTest, ChangesExactlyTheTickedCommands) {
  for (unsigned number = 0; number < 500; ++number) ASSERT_EQ(RetargetModel(number).check(), "") << number;
}

}  // namespace
}  // namespace tessaly
