// Functions of the sample site, found as people speak of them.
#include <gmock/gmock.h>
#include <numeric>

#include "model/FunctionSearch.h"
#include "tests/support/SmallDictionary.h"

namespace tessaly {
namespace {

struct FunctionSearchTest : testing::Test {
  static const FunctionDictionary& dictionary() { return siteDictionary(); }
  static FunctionSearch::Functions all() {
    FunctionSearch::Functions all(dictionary().functionCount());
    std::iota(all.begin(), all.end(), 0U);
    return all;
  }
  [[nodiscard]] std::string best(const char* text) const {
    const auto found = search.find(text, all());
    return found.empty() ? "none" : std::string(dictionary().name(found.front()));
  }

  const FunctionSearch search{dictionary()};
};

TEST_F(FunctionSearchTest, BestMatchComesFirst) {
  const struct {
    const char *text, *name;
  } cases[] = {
      {"RamRec 1", "RAMCHAN1.PLAY"},
      {"ramrec1 stop", "RAMCHAN1.STOP"},
      {"stop RAMREC 01", "RAMCHAN1.STOP"},
      {"aux 3", "AUX3.SOURCE.SET"},
      {"key 2 clip", "ME0.KEY2.CLIP.SET"},  // and not key 1 of ME 2
      {"clip inc me 2 key 1", "ME2.KEY1.CLIP.INC"},
      {"transition rate", "ME0.TRANSI.RATE.SET"},
      {"tran rat", "ME0.TRANSI.RATE.SET"},  // while it is being typed
      {"dimmer", "LIGHT.DIMMER.SET"},       // of the panel
      {"RAMCHAN1.STOP", "RAMCHAN1.STOP"},   // a name as it is stored
      {"key 99", "none"},
  };
  for (const auto& [text, name] : cases) EXPECT_EQ(best(text), name) << text;
}

// The ways for many and for few functions agree, and a number is whole.
TEST_F(FunctionSearchTest, FindsExactlyThoseThatHaveEveryWord) {
  const FunctionSearch::Functions all = this->all();
  for (const char* text : {"key 1", "e", "1", "me 1 key 1 clip", "  ", "aux"}) {
    FunctionSearch::Functions some;
    for (std::size_t i = 0; i < all.size(); i += 97) some.push_back(all[i]);
    auto found = search.find(text, some);
    std::sort(found.begin(), found.end());
    FunctionSearch::Functions expected;
    for (const std::uint32_t function : some)
      if (!search.find(text, {function}).empty()) expected.push_back(function);
    EXPECT_EQ(found, expected) << text;
  }
  for (const std::uint32_t function : search.find("key 1", all))
    EXPECT_THAT(dictionary().function(function).description(), testing::Not(testing::HasSubstr("Key 12")))
        << function;
}

}  // namespace
}  // namespace tessaly
