#include <gmock/gmock.h>

#include "model/FunctionFinder.h"
#include "model/SegmentSearch.h"
#include "tests/support/SmallDictionary.h"

namespace tessaly {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> names(const FunctionDictionary& dictionary,
                               const FunctionFinder::Functions& functions) {
  std::vector<std::string> result;
  for (const std::uint32_t function : functions) result.emplace_back(dictionary.name(function));
  return result;
}

FinderFilters filters(std::vector<std::pair<std::size_t, const char*>> texts) {
  FinderFilters result;
  for (const auto& [place, text] : texts) result[place] = text;
  return result;
}

TEST(FunctionFinderTest, ATextIsAWholeSegmentButForTheLastOne) {
  struct Case {
    const char* name;
    const char* text;
    bool passes;
  };
  const Case cases[] = {
      {"ME1.KEY1.SET", "ME1", true},
      {"ME12.KEY1", "ME1", false},
      {"KEY1.ME12", "ME1", true},  // the beginning of the last segment
      {"KEY1.AME1", "ME1", false},
      {"XME1.ME1.SET", "ME1", false},  // only the first occurrence counts
      {"ME1.KEY1.SET", "KEY1.SET", true},
      {"ME1.KEY1.SET", "KEY2", false},
      {"ME1", "ME1", true},
  };
  for (const Case& test : cases)
    EXPECT_EQ(segmentPosition(test.name, test.text) != std::string_view::npos, test.passes)
        << test.text << " in " << test.name;
}

TEST(FunctionFinderTest, IncrementsAreOfferedAloneOrNotAtAll) {
  FunctionDictionary dictionary;
  for (const char* name : {"ME1.INC", "ME1.SET", "ME1.INC.INC", "ME1.INCH", "ME1.PINC"}) {
    FunctionTemplate definition;
    definition.name = name;
    if (name != std::string_view("ME1.INCH")) definition.source = FunctionSource::kOlderFamily;
    dictionary.add(definition);
  }
  FunctionFinder finder(dictionary);
  EXPECT_THAT(names(dictionary, finder.find(filters({{0, "ME1"}}), true)),
              ElementsAre("ME1.INC", "ME1.PINC"));
  EXPECT_THAT(names(dictionary, finder.find(filters({{0, "ME1"}}), false)),
              ElementsAre("ME1.SET", "ME1.INC.INC", "ME1.INCH"));
  EXPECT_THAT(finder.find({}, false), IsEmpty());
  for (int time = 0; time < 2; ++time) {
    EXPECT_THAT(names(dictionary, finder.panelFunctions()), ElementsAre("ME1.INCH")) << "of the panel's file";
    EXPECT_THAT(names(dictionary, finder.otherFunctions(true)), ElementsAre("ME1.INC", "ME1.PINC"));
    EXPECT_THAT(names(dictionary, finder.otherFunctions(false)), ElementsAre("ME1.SET", "ME1.INC.INC"));
  }
}

TEST(FunctionFinderTest, NarrowingAndWideningGiveWhatAFreshSearchGives) {
  const FunctionDictionary& dictionary = siteDictionary();
  FunctionFinder kept(dictionary);
  const FinderFilters steps[] = {filters({{0, "ME1"}}),
                                 filters({{0, "ME1"}, {1, "KEY2"}}),
                                 filters({{0, "ME1"}, {1, "KEY2"}, {5, "CLIP"}}),
                                 filters({{0, "ME1"}, {5, "CLIP"}}),
                                 filters({{1, "KEY2"}, {5, "CLIP"}}),
                                 filters({{8, "SET"}}),
                                 filters({{8, ""}}),
                                 filters({{3, "S"}, {8, ""}}),
                                 filters({{0, "a\nb"}})};
  for (const bool increments : {false, true}) {
    for (const FinderFilters& step : steps) {
      FunctionFinder::Functions expected;
      for (std::uint32_t i = 0; i < dictionary.functionCount(); ++i) {
        const std::string_view name = dictionary.name(i);
        const std::size_t first = name.find("INC");
        bool passes = (first != std::string_view::npos && first + 3 == name.size()) == increments;
        for (const auto& text : step)
          passes = passes && (!text || segmentPosition(name, *text) != std::string_view::npos);
        if (passes) expected.push_back(i);
      }
      EXPECT_EQ(kept.find(step, increments), expected);
    }
  }
}

TEST(FunctionFinderTest, SegmentsBehindAChoice) {
  FunctionFinder finder(smallDictionary());
  EXPECT_THAT(finder.segmentsBehind(0, filters({{0, "ME1"}, {1, "KEY9"}}), false), Contains("RATE"));
  EXPECT_THAT(finder.segmentsBehind(1, filters({{0, "ME1"}, {1, "KEY9"}}), false),
              ElementsAre("CLIP", "TYPE"));
  EXPECT_THAT(finder.segmentsBehind(1, filters({{0, "ME1"}, {1, "KEY9"}}), true), ElementsAre("CLIP"));
  EXPECT_THAT(finder.segmentsBehind(1, filters({{0, "ME1"}}), false), IsEmpty());
  EXPECT_THAT(finder.segmentsBehind(1, filters({{0, "ME1"}, {1, "RA"}}), false), IsEmpty());
  EXPECT_THAT(finder.segmentsOf(filters({{0, "ME1"}, {1, "KEY9"}}), false),
              testing::UnorderedElementsAre("ME1", "KEY9", "CLIP", "TYPE", "SET"));
}

TEST(SegmentSearchTest, LooksInSegmentDescriptionAndSecondText) {
  const SegmentSearch search(smallDictionary());
  for (const char* text : {"clip", "LIP", "thresh", "Level"})
    EXPECT_THAT(search.find(text), ElementsAre("CLIP")) << text;
  EXPECT_THAT(search.find("many"), ElementsAre("MANY"));
  EXPECT_THAT(search.find(""), IsEmpty());
  EXPECT_THAT(search.find("nowhere"), IsEmpty());
  const std::vector<std::string> keys = search.find("key1");
  EXPECT_THAT(keys, ElementsAre("KEY1", "KEY10", "KEY11", "KEY12"));
  EXPECT_EQ(SegmentSearch::likeliest(keys, "key12"), 3);
  EXPECT_EQ(SegmentSearch::likeliest({"MASKEY", "KEY1"}, "key"), 1);
  EXPECT_EQ(SegmentSearch::likeliest({"CLIP"}, "thresh"), 0);
  EXPECT_EQ(SegmentSearch::likeliest({}, "x"), -1);
  const FunctionDictionary none;
  EXPECT_THAT(SegmentSearch(none).find("a"), IsEmpty());
  EXPECT_THAT(FunctionFinder(none).find(filters({{0, "a"}}), false), IsEmpty());
}

}  // namespace
}  // namespace tessaly
