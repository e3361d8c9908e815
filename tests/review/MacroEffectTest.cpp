#include <gmock/gmock.h>
#include <map>

#include "fuzz/effect/RandomMacros.h"
#include "review/MacroEffect.h"
#include "tests/review/SampleMacros.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

MacroCommand of(const std::string& fid, std::vector<MacroParameter> parameters = {}) {
  return {fid, "1", "0", "0", "0", std::move(parameters)};
}
MacroCommand value(const std::string& fid, const std::string& text) { return of(fid, {{"VALUE", text}}); }
MacroCommand coded(const std::string& text) { return of("QMF1.NCSCOMMAND", {{"CMD", text}}); }

struct MacroEffectTest : SampleMacrosTest {
  MacroEffect replay(const MacroCommands& commands) {
    return {commands, {dictionary(), lists}, [this](const std::string& name) {
              const auto known = start.find(name);
              return known == start.end() ? std::nullopt : std::optional(known->second);
            }};
  }

  std::map<std::string, std::string> start;
};

// What a command does, with the values that it changes and why the rest of it is not told.
std::string toldOf(const MacroEffect& effect, int command) {
  static constexpr const char* kWhat[] = {"sets", "steps", "acts", "untold"};
  std::string told = kWhat[static_cast<std::size_t>(effect.effect(command).what)];
  for (const ValueChange& change : effect.changes(command))
    told += ' ' + effect.values()[static_cast<std::size_t>(change.value)].name + '=' + change.after.stored +
            " (" + effect.shown(change.value, change.after) + (change.soAlready ? ") already" : ")");
  return told + (effect.effect(command).why.empty() ? "" : ": ") + effect.effect(command).why;
}

// Each row: what the last command does to a value that the others have made what it is.
TEST_F(MacroEffectTest, TableOfCommands) {
  const std::string level = "QMF1.ME1.KEY1.CLIP", clip = level + ".SET", more = level + ".INC";
  const std::string sets = "sets " + level, steps = "steps " + level, code = "QMF1.NCSCOMMAND.10.05.";
  const MacroCommand rate = of("QMF2.ME1.KEY1.RATE.SET", {{"X", "", false}, {"CURVE", "1"}, {"RATE", "25"}});
  const struct {
    MacroCommands commands;
    std::string told;
  } rows[] = {
      {{value(clip, "0.25")}, sets + "=0.25 (25.0%)"},
      {{value(clip, "0.25"), value(clip, "0.250000")}, sets + "=0.250000 (25.0%) already"},
      {{rate}, "sets QMF2.ME1.KEY1.RATE=1 (Slow In): no value tells RATE"},  // as an update writes it
      {{of("QMF1.ME1.TRANSI.SOURCE.SET", {{"INPUT", "5"}})}, "sets QMF1.ME1.PST.SOURCE=5 (Input 5)"},
      {{value(clip, "0.25"), value(more, "512")}, steps + "=0.750000 (75.0%)"},
      {{value(clip, "0.75"), value(more, "512")}, steps + "=1.000000 (100.0%)"},
      {{value(clip, "0.25"), value(more, "-512")}, steps + "=0.000000 (0.0%)"},
      {{value(more, "512"), value(more, "-256")}, steps + "= (+25.0%)"},
      {{value(more, "512"), value(clip, "0.5")}, sets + "=0.5 (50.0%)"},
      {{value(clip, "half"), value(more, "512")}, steps + "= (): its value was no number before"},
      {{value("QMF1.ME1.IDPM.CHANNEL1.ROTATION_X.INC", "1")},
       "untold: the panel tells no value that it steps"},
      {{value(more, "much")}, "untold: its step is no number"},
      {{of("QMF1.ME1.TRANSI.CUT")}, "acts"},
      {{of(clip)}, "untold: its value is missing"},
      {{of(clip, {{"VALEU", "1"}})}, "untold: the function has no parameter VALEU"},
      {{value("QMF1.NOTHING.SET", "1")}, "untold: the function is not in the dictionary"},
      {{value("QMF9.ME1.KEY1.CLIP.SET", "1")}, "untold: its destination is unknown"},
      {{of("QMF9.NCSCOMMAND", {{"CMD", "e3 10 05 30 "}})}, "untold: its destination is unknown"},
      {{coded("24 10 05 03 c8 ")}, "sets " + code + "03.0=c8 (200)"},
      {{coded("24 10 05 03 c8 "), coded("24 10 05 03 c8 ")}, "sets " + code + "03.0=c8 (200) already"},
      {{coded("24 10 05 03 c8 "), coded("44 10 05 03 64 ")}, "steps " + code + "03.0=fa (250)"},
      {{coded("24 10 05 10 01 "), coded("44 10 05 10 01 ")}, "steps " + code + "10.0=00 (Off)"},
      {{coded("24 10 05 10 00 "), coded("c4 10 05 10 ff ")}, "steps " + code + "10.0=01 (On)"},
      {{coded("24 10 05 10 09 "), coded("44 10 05 10 01 ")},
       "steps " + code + "10.0= (): its value was none of its list before"},
      {{coded("28 00 a1 01 01 01 00 00 00 "), coded("28 00 a1 01 02 05 00 00 00 "),
        coded("48 00 a1 01 01 07 00 00 00 ")},
       "steps QMF1.NCSCOMMAND.00.a1.01.01.1=08 00 00 00 (8)"},  // another axis was set between
      {{coded("26 00 20 19 01 05 00 "), coded("26 00 20 19 02 06 00 ")},
       "sets QMF1.NCSCOMMAND.00.20.19.0=02 (Outline) QMF1.NCSCOMMAND.00.20.19.02.1=06 00 (6)"},
      {{coded("44 10 05 10 01 ")}, "steps " + code + "10.0= (+1)"},
      {{coded("44 10 05 18 01 ")}, "untold: its decoding list knows the step, not what it leads to"},
      {{coded("e3 10 05 30 ")}, "acts"},
      {{coded("24 10 05 77 01 ")}, "untold: its decoding list has no entry for keyword 77"},
      {{coded("24 10 77 03 01 ")}, "untold: there is no decoding list for cd 10, co 77"},
      {{coded("")}, "untold: its text does not decode"},
  };
  for (const auto& [commands, told] : rows) {
    const MacroEffect effect = replay(commands);
    EXPECT_EQ(toldOf(effect, effect.commandCount() - 1), told);
  }
}

TEST_F(MacroEffectTest, TheOnlyChoiceIsToldWhereAnotherEntrySetsIt) {
  const TestSite site;
  site.write(decodingListPath(0x10, 0x05),
             "CD=0x10\nCO=0x05\n[0x01] 0x01 \"Wide\"\npt_ByteEnum \"T\"\n: 0x02 \"B\"\npt_Word \"W\"\n"
             "[0x01] 0x01 \"Type\"\npt_ByteEnum \"T\"\n: 0x01 \"A\"\n: 0x02 \"B\"\n");
  DecodingLists own(site.root);
  const MacroEffect effect({coded("26 10 05 01 02 07 00 ")}, {dictionary(), own}, {});
  EXPECT_EQ(toldOf(effect, 0),
            "sets QMF1.NCSCOMMAND.10.05.01.0=02 (B) QMF1.NCSCOMMAND.10.05.01.02.1=07 00 (7)");
}

TEST_F(MacroEffectTest, AValueIsCalledAndBeginsAsItIs) {
  start["QMF1.ME1.KEY1.CLIP"] = "0.1";
  const MacroEffect effect = replay(
      {value("QMF1.ME1.KEY1.CLIP.INC", "16"), coded("26 00 20 19 02 06 00 "), coded("24 ff 05 03 c8 ")});
  ASSERT_EQ(effect.values().size(), 3U);
  EXPECT_EQ(effect.at(0, 0).stored + ' ' + effect.at(0, 1).stored, "0.1 0.115625");
  EXPECT_EQ(effect.before(effect.changes(0).front()), effect.at(0, 0));
  EXPECT_TRUE(effect.equal(0, "0.5", "0.50") && !effect.equal(1, "0.5", "0.50"));
  std::string called;
  for (int i = 0; i < 3; ++i) {
    const EffectValue& named = effect.values()[static_cast<std::size_t>(i)];
    called +=
        effect.label(i) + '|' + std::string(named.destination()) + '|' + std::string(named.section()) + '\n';
  }
  EXPECT_EQ(called,
            "ME 1 Key 1 Clip Set|QMF1|ME1\nPP - Key1 - Border Width - Mode|QMF1|PP\n"
            "PP - Key1 - Border Width - Outline|QMF1|PP\n");
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
