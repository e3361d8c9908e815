#include <gmock/gmock.h>
#include <map>

#include "dictionary/InterfaceFile.h"
#include "fuzz/effect/RandomMacros.h"
#include "review/MacroEffect.h"
#include "tests/support/BuildPaths.h"

namespace tessaly {
namespace {

using Kind = ValueState::Kind;
using What = CommandEffect::What;

MacroCommand command(const std::string& fid, std::vector<MacroParameter> parameters = {}) {
  return {fid, "1", "0", "0", "0", std::move(parameters)};
}
MacroCommand value(const std::string& fid, const std::string& text) {
  return command(fid, {{"VALUE", text}});
}
MacroCommand classic(const std::string& text) { return command("QMF1.NCSCOMMAND", {{"CMD", text}}); }

// The sample site's dictionary and lists.
struct MacroEffectTest : testing::Test {
  static void SetUpTestSuite() { loadFunctionDictionary(root(), dictionary(), {}); }
  static const SiteRoot& root() {
    static const SiteRoot root{sourcePath("site")};
    return root;
  }
  static FunctionDictionary& dictionary() {
    static FunctionDictionary dictionary;
    return dictionary;
  }
  MacroEffect replay(const MacroCommands& commands) {
    return {commands, {dictionary(), lists}, [this](const std::string& name) {
              const auto known = start.find(name);
              return known == start.end() ? std::nullopt : std::optional(known->second);
            }};
  }

  DecodingLists lists{root()};
  std::map<std::string, std::string> start;
};

// Each row: what the last command does to a value that the others have made what it is.
TEST_F(MacroEffectTest, TableOfCommands) {
  const std::string level = "QMF1.ME1.KEY1.CLIP", clip = level + ".SET", more = level + ".INC";
  const std::string position = "QMF1.NCSCOMMAND.10.05.03.0", protect = "QMF1.NCSCOMMAND.10.05.10.0";
  const struct {
    const char* says;
    MacroCommands commands;
    What what;
    std::string name, after, shown;
    bool so = false;
    std::string why = {};
  } rows[] = {
      {"a value is set", {value(clip, "0.25")}, What::kSets, level, "0.25", "25.0%"},
      {"the same in its unit",
       {value(clip, "0.25"), value(clip, "0.250000")},
       What::kSets,
       level,
       "0.250000",
       "25.0%",
       true},
      {"the first parameter, as an update writes it",
       {command("QMF2.ME1.KEY1.RATE.SET", {{"X", "", false}, {"CURVE", "1"}, {"RATE", "25"}})},
       What::kSets,
       "QMF2.ME1.KEY1.RATE",
       "1",
       "Slow In",
       false,
       "no value tells RATE"},
      {"the value of another function",
       {command("QMF1.ME1.TRANSI.SOURCE.SET", {{"INPUT", "5"}})},
       What::kSets,
       "QMF1.ME1.PST.SOURCE",
       "5",
       "Input 5"},
      {"a step", {value(clip, "0.25"), value(more, "512")}, What::kSteps, level, "0.750000", "75.0%"},
      {"to the limit", {value(clip, "0.75"), value(more, "512")}, What::kSteps, level, "1.000000", "100.0%"},
      {"at the limit",
       {value(clip, "1"), value(more, "512")},
       What::kSteps,
       level,
       "1.000000",
       "100.0%",
       true},
      {"from nothing known", {value(more, "512"), value(more, "-256")}, What::kSteps, level, "", "+25.0%"},
      {"known again", {value(more, "512"), value(clip, "0.5")}, What::kSets, level, "0.5", "50.0%"},
      {"from no number",
       {value(clip, "half"), value(more, "512")},
       What::kSteps,
       level,
       "",
       "",
       false,
       "its value was no number before"},
      {"what no function sets",
       {value("QMF1.ME1.IDPM.CHANNEL1.ROTATION_X.INC", "1")},
       What::kUntold,
       "",
       "",
       "",
       false,
       "the panel tells no value that it steps"},
      {"a step that is none",
       {value(more, "much")},
       What::kUntold,
       "",
       "",
       "",
       false,
       "its step is no number"},
      {"a cut", {command("QMF1.ME1.TRANSI.CUT")}, What::kActs, "", "", ""},
      {"an optional value left out", {command("PANEL.STOPWATCH.START")}, What::kActs, "", "", ""},
      {"a value left out", {command(clip)}, What::kUntold, "", "", "", false, "its value is missing"},
      {"no such parameter",
       {command(clip, {{"VALEU", "1"}})},
       What::kUntold,
       "",
       "",
       "",
       false,
       "the function has no parameter VALEU"},
      {"no such function",
       {value("QMF1.NOTHING.SET", "1")},
       What::kUntold,
       "",
       "",
       "",
       false,
       "the function is not in the dictionary"},
      {"no such destination",
       {value("QMF9.ME1.KEY1.CLIP.SET", "1")},
       What::kUntold,
       "",
       "",
       "",
       false,
       "its destination is unknown"},
      {"classic, a number", {classic("24 10 05 03 c8 ")}, What::kSets, position, "c8", "200"},
      {"classic, up to the limit",
       {classic("24 10 05 03 c8 "), classic("44 10 05 03 64 ")},
       What::kSteps,
       position,
       "fa",
       "250"},
      {"classic, round the list",
       {classic("24 10 05 10 01 "), classic("44 10 05 10 01 ")},
       What::kSteps,
       protect,
       "00",
       "Off"},
      {"classic, down",
       {classic("24 10 05 10 00 "), classic("c4 10 05 10 ff ")},
       What::kSteps,
       protect,
       "01",
       "On"},
      {"classic, from nothing known", {classic("44 10 05 10 01 ")}, What::kSteps, protect, "", "+1"},
      {"classic, a list of steps",
       {classic("44 10 05 18 01 ")},
       What::kUntold,
       "",
       "",
       "",
       false,
       "its decoding list knows the step, not what it leads to"},
      {"classic, a cut", {classic("e3 10 05 30 ")}, What::kActs, "", "", ""},
      {"classic, no such keyword",
       {classic("24 10 05 77 01 ")},
       What::kUntold,
       "",
       "",
       "",
       false,
       "its decoding list has no entry for keyword 77"},
      {"classic, no text", {classic("")}, What::kUntold, "", "", "", false, "its text does not decode"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.says);
    const MacroEffect effect = replay(row.commands);
    const int last = effect.commandCount() - 1;
    EXPECT_EQ(effect.effect(last).what, row.what) << effect.effect(last).why;
    EXPECT_EQ(effect.effect(last).why, row.why);
    if (row.name.empty()) {
      EXPECT_TRUE(effect.changes(last).empty());
      continue;
    }
    ASSERT_EQ(effect.changes(last).size(), 1U);
    const ValueChange& change = effect.changes(last).front();
    EXPECT_EQ(effect.values()[static_cast<std::size_t>(change.value)].name, row.name);
    EXPECT_EQ(change.after.stored, row.after);
    EXPECT_EQ(effect.shown(change.value, change.after), row.shown);
    EXPECT_EQ(change.soAlready, row.so);
  }
}

// A jump to any step gives what a replay of the commands until there gives.
TEST_F(MacroEffectTest, EveryStepIsWhatAShorterReplayEndsWith) {
  start["QMF1.ME1.KEY1.CLIP"] = "0.1";
  MacroCommands commands;
  for (int i = 0; i < 40; ++i) {
    const std::string key = "QMF1.ME1.KEY" + std::to_string(1 + i % 3) + ".CLIP.";
    commands.push_back(i % 5 == 2 ? value(key + "SET", "0." + std::to_string(i)) : value(key + "INC", "16"));
    if (i % 7 == 0) commands.push_back(command("QMF1.ME1.TRANSI.CUT"));
  }
  const MacroEffect whole = replay(commands);
  ASSERT_EQ(whole.values().size(), 3U);
  EXPECT_EQ(whole.at(0, 0).stored, "0.1");
  for (int step = 1; step <= whole.commandCount(); ++step) {
    const MacroEffect part = replay({commands.begin(), commands.begin() + step});
    for (int i = 0; i < static_cast<int>(part.values().size()); ++i) {
      EXPECT_EQ(whole.at(i, step), part.at(i, step)) << step;
      EXPECT_EQ(whole.at(i, step - 1), part.at(i, step - 1)) << step;
    }
  }
  const ValueChange& first = whole.changes(0).front();
  EXPECT_EQ(whole.before(first).stored, "0.1");
  EXPECT_EQ(whole.values()[0].destination(), "QMF1");
  EXPECT_EQ(whole.values()[0].section(), "ME1");
  EXPECT_EQ(whole.label(0), "ME 1 Key 1 Clip Set");
}

// The panel's own code comes to the same values, at the end of each macro and, of some, at every step.
TEST(EffectOfRandomMacros, IsWhatTheSimulatedPanelMakesOfItsValues) {
  const SampleDictionary sample;
  RandomMacros::Seen seen;
  for (unsigned number = 0; number < 10'000; ++number)
    ASSERT_EQ(RandomMacros(sample, number).check(number % 20 == 0, seen), "") << number;
  EXPECT_GT(std::min({seen.sets, seen.steps, seen.acts}), 30'000U) << "most is told";
}

}  // namespace
}  // namespace tessaly
