#include <gmock/gmock.h>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include "dictionary/FunctionDictionary.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

FunctionTemplate named(const std::string& name) {
  FunctionTemplate definition;
  definition.name = name;
  return definition;
}

std::vector<std::string> namesOf(const FunctionDictionary& dictionary) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i) names.emplace_back(dictionary.name(i));
  return names;
}

void addFamilies(FunctionDictionary& dictionary) {
  dictionary.add(IndexedFamily{"me", "ME", "Mix ", 1, 2, 10});
  dictionary.add(IndexedFamily{"none", "N", "N", 2, 1, 0});
  dictionary.add(EnumFamily{"key", {{"KEYA", "key a"}, {"KEYB", "key b"}}});
  dictionary.add(EnumFamily{"mode", {{"SET", "set"}, {"INC", "step"}, {"", "nothing"}}});
  dictionary.add(IndexedFamily{"", "E", "e", 0, 0, 0});
}

TEST(Expansion, NamesComeInOrderWithTheFirstSegmentSlowest) {
  const struct {
    std::string name;
    std::vector<std::string> expected;
  } cases[] = {
      {"A.B", {"A.B"}},
      {"", {""}},
      {".", {"."}},
      {"$me", {"ME1", "ME2"}},
      {"$me.$key.Clip", {"ME1.KEYA.Clip", "ME1.KEYB.Clip", "ME2.KEYA.Clip", "ME2.KEYB.Clip"}},
      {"X.$me..$me", {"X.ME1..ME1", "X.ME1..ME2", "X.ME2..ME1", "X.ME2..ME2"}},
      {"x$me.$key.", {"x$me.KEYA.", "x$me.KEYB."}},  // "$" inside a segment is no reference
      {"A.$.B", {"A.E0.B"}},                         // the family with the empty name
      {"$me.$none", {}},
      {"$me.$unknown", {}},
      {"$me2", {}},
  };
  for (const auto& [name, expected] : cases) {
    FunctionDictionary dictionary;
    addFamilies(dictionary);
    dictionary.add(named(name));
    EXPECT_THAT(namesOf(dictionary), ElementsAreArray(expected)) << name;
    EXPECT_EQ(dictionary.templateCount(), 1u) << name;
  }
}

TEST(Expansion, KeysFiveAndSixOfTheHalfMixEffectAreLeftOutAndTextsStayAligned) {
  FunctionDictionary dictionary;
  dictionary.add(IndexedFamily{"me", "ME", "ME ", 1, 5, 0});
  dictionary.add(IndexedFamily{"key", "KEY", "Key ", 1, 6, 0});
  FunctionTemplate clip = named("$me.$key.Clip");
  clip.sid = "$me/$key";
  dictionary.add(clip);
  dictionary.add(named("ME40.KEY50"));
  dictionary.add(named("KEY6xME4"));
  dictionary.add(named("ME3.KEY5"));
  EXPECT_EQ(dictionary.summary(), "Number of FIDs: 4/29");
  EXPECT_FALSE(dictionary.find("ME4.KEY5.Clip"));
  for (std::size_t i = 0; i < 28; ++i) {
    const FunctionRecord record = dictionary.function(i);
    EXPECT_EQ(record.name(), record.sid().substr(0, 3) + "." + record.sid().substr(4) + ".Clip");
  }
  EXPECT_EQ(dictionary.name(28), "ME3.KEY5");
}

TEST(Expansion, TextsTakeTheChosenValuesInOnePass) {
  const struct {
    std::string name, text, fidForm, displayForm;
  } cases[] = {
      {"$me.$key", "to $me, $key; $me", "to ME1, KEYA; ME1", "to Mix 11, key a; Mix 11"},
      {"$me", "$meA $meZ $mea $mez $me0 $me9 $me_", "$meA $meZ $mea $mez $me0 $me9 $me_",
       "$meA $meZ $mea $mez $me0 $me9 $me_"},
      {"$me", "$me@ $me[ $me` $me{ $me/ $me:", "ME1@ ME1[ ME1` ME1{ ME1/ ME1:",
       "Mix 11@ Mix 11[ Mix 11` Mix 11{ Mix 11/ Mix 11:"},
      {"$me.$me", "$me $me $me", "ME1 ME2 ME2", "Mix 11 Mix 12 Mix 12"},  // k-th reference, k-th choice
      {"$a.$ab", "$ab $a $abc", "$a$x $ab $abc", "<$ab> $x $abc"},        // longest wins, no second look
      {"Lit.$key", "Lit $keys", "Lit $keys", "Lit $keys"},
      {"$me", "$ $$me", "$ $ME1", "$ $Mix 11"},
  };
  for (const auto& row : cases) {
    FunctionDictionary dictionary;
    addFamilies(dictionary);
    dictionary.add(EnumFamily{"a", {{"$ab", "$x"}}});
    dictionary.add(EnumFamily{"ab", {{"$a$x", "<$ab>"}}});
    FunctionTemplate definition = named(row.name);
    definition.sid = definition.group = definition.description = definition.longDescription = row.text;
    dictionary.add(definition);
    const bool twice = row.name == "$me.$me";
    const FunctionRecord record = dictionary.function(twice ? 1 : 0);
    EXPECT_EQ(record.sid(), row.fidForm);
    EXPECT_EQ(record.group(), row.fidForm);
    EXPECT_EQ(record.description(), row.displayForm);
    EXPECT_EQ(record.longDescription(), row.text);
  }
}

TEST(Expansion, ChosenIncrementLeavesSidAndGroupEmpty) {
  FunctionDictionary dictionary;
  addFamilies(dictionary);
  FunctionTemplate definition = named("A.$mode");
  definition.sid = definition.group = "v.$mode";
  definition.description = "do $mode";
  dictionary.add(definition);
  definition.name = "INC.A";  // literal segments count too
  dictionary.add(definition);
  definition.name = "INCA.B";
  dictionary.add(definition);
  definition.name = "C.$mode";
  definition.sid = "$mode";
  dictionary.add(definition);
  const struct {
    std::string name, sid, group, description;
  } rows[] = {{"A.SET", "v.SET", "v.SET", "do set"},
              {"A.INC", "", "", "do step"},
              {"A.", "v.", "v.", "do nothing"},
              {"INC.A", "", "", "do $mode"},
              {"INCA.B", "v.$mode", "v.$mode", "do $mode"},
              {"C.", "", "v.", "do nothing"}};
  for (const auto& row : rows) {
    const auto record = dictionary.find(row.name);
    ASSERT_TRUE(record) << row.name;
    EXPECT_EQ(record->sid(), row.sid) << row.name;
    EXPECT_EQ(record->incremental(), row.sid.empty()) << row.name;
    EXPECT_EQ(record->group(), row.group) << row.name;
    EXPECT_EQ(record->description(), row.description) << row.name;
  }
}

TEST(Dictionary, FirstOfEqualKeysStaysButEveryDuplicateIsListed) {
  FunctionDictionary dictionary;
  dictionary.add(IndexedFamily{"f", "F", "", 1, 1, 0});
  dictionary.add(EnumFamily{"f", {{"G", ""}}});  // an indexed family of the same name goes first
  dictionary.add(IndexedFamily{"f", "H", "", 1, 1, 0});
  dictionary.add(AliasEntry{"F1", "first", "", ""});
  dictionary.add(AliasEntry{"F1", "second", "", ""});
  FunctionTemplate older = named("$f.X");
  older.description = "older";
  older.source = FunctionSource::kOlderFamily;
  dictionary.add(older);
  FunctionTemplate panel = named("F1.X");
  panel.description = "panel";
  dictionary.add(panel);
  EXPECT_THAT(namesOf(dictionary), ElementsAre("F1.X", "F1.X"));
  EXPECT_EQ(dictionary.function(1).description(), "panel");
  EXPECT_EQ(dictionary.function(1).source(), FunctionSource::kPanel);
  EXPECT_EQ(dictionary.find("F1.X")->description(), "older");
  EXPECT_EQ(dictionary.find("F1.X")->source(), FunctionSource::kOlderFamily);
  EXPECT_EQ(dictionary.alias("F1")->description, "first");
  EXPECT_FALSE(dictionary.find("F1"));
}

TEST(Dictionary, SidsAreFoundByTheFirstFunctionAlsoAfterFurtherTemplatesAndFromThreads) {
  FunctionDictionary dictionary;
  dictionary.add(IndexedFamily{"n", "N", "", 0, 999, 0});
  FunctionTemplate definition = named("A.$n");
  definition.sid = "value.$n";
  dictionary.add(definition);
  definition.name = "B.$n";
  dictionary.add(definition);
  EXPECT_FALSE(dictionary.findBySid("other"));
  definition.name = "C";
  definition.sid = "other";
  dictionary.add(definition);
  dictionary.add(named("D"));
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&dictionary] {
      EXPECT_EQ(dictionary.findBySid("value.N700")->name(), "A.N700");
      EXPECT_EQ(dictionary.findBySid("other")->name(), "C");
      EXPECT_FALSE(dictionary.findBySid("value.N1000"));
      EXPECT_FALSE(dictionary.findBySid(""));
    });
  }
  for (std::thread& thread : threads) thread.join();
}

TEST(Dictionary, EveryNameIsFoundAgainAndStandsInTheJoinedText) {
  // Beside the number from which on a table has wide slots, and without and with a name that has wide
  // offsets, those behind it too.
  for (const int count : {65'532, 65'533}) {
    const bool wide = count == 65'533;
    FunctionDictionary dictionary;
    dictionary.add(IndexedFamily{"n", "N", "", 1, count, 0});
    dictionary.add(IndexedFamily{"m", "M", "", 1, 2, 0});
    dictionary.add(named("Some.Longer.Name.$n"));
    dictionary.add(named(std::string(wide ? 70'000 : 60'000, 'L')));
    dictionary.add(named("Last.$m"));
    for (int pass = 0; pass < 2; ++pass) {
      const std::string_view all = dictionary.allNames();
      ASSERT_EQ(dictionary.functionCount(), static_cast<std::size_t>(count) + 3);
      for (std::size_t i = 0; i < dictionary.functionCount(); ++i) {
        const std::string_view name = dictionary.name(i);
        ASSERT_EQ(dictionary.find(name)->index(), i);
        const std::size_t offset = dictionary.nameOffset(i);
        ASSERT_EQ(all.substr(offset, name.size() + 1), std::string(name) + '\n');
        ASSERT_EQ(dictionary.functionAtOffset(offset), i);
        ASSERT_EQ(dictionary.functionAtOffset(offset + name.size()), i);
      }
      EXPECT_FALSE(dictionary.find("Some.Longer.Name.N0"));
      dictionary.finish();
    }
    const std::size_t beyond = dictionary.functionBytes() - dictionary.allNames().size();
    EXPECT_LE(beyond, (wide ? 13 : 7) * dictionary.functionCount());
    EXPECT_GE(beyond, 4 * dictionary.functionCount());
  }
}

TEST(Dictionary, ExpansionsThatExplodeAreLeftOutAndTheRestGoesOn) {
  constexpr std::int32_t kLow = std::numeric_limits<std::int32_t>::min();
  constexpr std::int32_t kHigh = std::numeric_limits<std::int32_t>::max();
  std::string twelve = "$k", manySegments = "$low";
  for (int i = 0; i < 11; ++i) twelve += ".$k";
  for (int i = 0; i < 100'000; ++i) manySegments += ".$low";
  const std::string leavesOutAMillion = "ME4.KEY5.$k.$k";
  for (const std::string& name : {std::string("$all"), twelve, manySegments, std::string("$long.$k"),
                                  std::string("$k.$none.$all"), leavesOutAMillion}) {
    FunctionDictionary dictionary;
    dictionary.add(IndexedFamily{"all", "", "", kLow, kHigh, kHigh});
    dictionary.add(IndexedFamily{"low", "", "", kLow, kLow + 1, kLow});
    dictionary.add(IndexedFamily{"k", "K", "", 1, 1000, 0});
    dictionary.add(IndexedFamily{"none", "", "", 1, 0, 0});
    dictionary.add(EnumFamily{"long", {{std::string(1'000'000, 'x'), ""}}});
    FunctionTemplate low = named("$low");
    low.description = "$low";
    dictionary.add(low);
    for (int i = 0; i < 5; ++i) dictionary.add(named(name));
    dictionary.add(named("Last"));
    EXPECT_EQ(dictionary.leftOutCount(), name == "$k.$none.$all"     ? 0u
                                         : name == leavesOutAMillion ? 2u
                                                                     : 5u)
        << name.substr(0, 40);
    EXPECT_EQ(dictionary.templateCount(), 7u);
    EXPECT_THAT(namesOf(dictionary), ElementsAre("-2147483648", "-2147483647", "Last")) << name.substr(0, 40);
    EXPECT_EQ(dictionary.function(0).description(), "-4294967296");
  }
  EXPECT_THAT(alternativesOf({"all", "", "", kLow, kHigh, 0}), IsEmpty());
  EXPECT_EQ(alternativesOf({"most", "", "", 1, kLargestFamily, 0}).size(), std::size_t{kLargestFamily});
}

}  // namespace
}  // namespace tessaly
