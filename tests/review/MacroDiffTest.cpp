#include <gmock/gmock.h>

#include "fuzz/diff/MacroPairs.h"
#include "review/LineChanges.h"

namespace tessaly {
namespace {

using Kind = DiffRow::Kind;

// fuzz/diff makes more of them.
TEST(MacroDiff, SaysWhatAPlainComparisonSaysAndTakesExactly) {
  for (unsigned seed = 0; seed < 1000; ++seed) ASSERT_EQ(MacroPairs(seed).check(), "") << seed;
}

TEST(Alignment, IsTheLongestAcrossTheWordsOfItsRows) {
  for (unsigned seed = 0; seed < 200; ++seed) ASSERT_EQ(MacroPairs(seed).checkAlignment(300), "") << seed;
}

TEST(MacroDiff, ValuesAreComparedInTheirUnit) {
  const struct {
    const char *function, *parameter, *a, *b;
    bool same;
  } cases[] = {
      {"F", "p", "0.5", "0.50", true},
      {"F", "p", "500", "5e2", true},
      {"F", "p", "-0", "0.0", true},
      {"F", "p", "0.5", "0.500001", false},
      {"F", "p", "0.5", "0.5 ", false},
      {"F", "p", "0", "", false},
      {"F", "p", "nan", "nan(1)", false},
      {"F", "q", "0.5", "0.50", false},  // not a parameter of the function
      {"I", "p", "7", "007", true},
      {"I", "p", "7", "7.0", false},
      {"I", "p", "9007199254740993", "9007199254740992", false},  // one as doubles
      {"T", "p", "01:02:03:04", "1:2:3:4", true},
      {"T", "p", "1:2:3:4", "16909060", true},
      {"T", "p", "1:2:3.4", "1:2:3:4", false},  // drop frame
      {"T", "p", "1:2:3.4", "01:02:03.04", true},
      {"T", "p", "1.2:3:4", "01.2:3:4", false},
      {"T", "p", "90:2:3:4", "16909060", false},  // packs into other hours
      {"T", "p", "15", "21", false},              // 0x0F and 0x15 read as the same timecode
      {"T", "p", "1:2:3", "0:1:2:3", false},
      {"E", "p", "1", "01", false},
      {"U", "p", "0.5", "0.50", false},
      {"NCSCOMMAND", "p", "1", "01", false},
  };
  for (const auto& [function, parameter, a, b, same] : cases) {
    const auto command = [function = function, parameter = parameter](const char* value) {
      MacroCommand made;
      made.fid = std::string("QMF1.") + function;
      made.parameters.push_back({parameter, value});
      return made;
    };
    const auto changes = changesBetween(command(a), command(b), &pairDictionary());
    ASSERT_EQ(changes.size(), 1U) << function << a << b;
    EXPECT_EQ(changes[0].sameInUnit, same) << function << ' ' << a << ' ' << b;
    EXPECT_EQ(meaningOf(command(a), &pairDictionary()) == meaningOf(command(b), &pairDictionary()), same)
        << function << ' ' << a << ' ' << b;
    EXPECT_EQ(changes[0].a, a);
    EXPECT_NE(meaningOf(command(a), nullptr), meaningOf(command(b), nullptr));
  }
}

TEST(MacroDiff, EachThingThatDiffersIsTold) {
  const auto read = [](const std::string& command) {
    return Macro::read("<macro><data><cmd " + command + "</cmd></data></macro>")->commands()[0];
  };
  const std::string one = "<param name='p' value='1'/>", two = "<param name='q' value='2'/>";
  const struct {
    std::string a, b, told;
  } cases[] = {
      {"fid='QMF1.F'>" + one, "fid='QMF2.F'>" + one, "0:QMF1>QMF2 "},
      {"fid='QMF1.F'>" + one, "fid='QMF1.I'>" + one, "1:F>I "},
      {"fid='QMF1.F'>", "fid='QMF2.I'>", "0:QMF1>QMF2 1:F>I "},
      {"fid='F'>", "fid='.F'>", "1:F>.F "},
      {"fid='A' workplace='1' group='2' module='3' widget='4'>", "fid='A'>", "2:1> 3:2> 4:3> 5:4> "},
      {"fid='A' x='1'>", "fid='A'>", "8: x=\"1\"> "},
      {"fid='A'>" + one + two, "fid='A'>" + two + one, "7:"},
      {"fid='A'>" + one + two, "fid='A'>" + two, "6:p 1>none 0/-1 "},
      {"fid='A'>" + two, "fid='A'>" + one + two, "6:p none>1 -1/0 "},
      {"fid='A'>" + one + one, "fid='A'>" + two + one, "6:p 1>none 1/-1 6:q none>2 -1/0 "},
      {"fid='A'><param name='p'/>", "fid='A'>" + one, "6:p none>1 0/0 "},
      {"fid='QMF1.F'>" + one, "fid='QMF1.F'><param name='p' value='1.0'/>", "6:p 1>1.0= 0/0 "},
  };
  for (const auto& [a, b, expected] : cases) {
    std::string told;
    for (const CommandChange& change : changesBetween(read(a), read(b), &pairDictionary())) {
      told += std::to_string(static_cast<int>(change.what)) + ':';
      if (change.what == CommandChange::What::kParameter)
        told += change.name + ' ' + change.a.value_or("none") + '>' + change.b.value_or("none") +
                (change.sameInUnit ? "= " : " ") + std::to_string(change.placeInA) + '/' +
                std::to_string(change.placeInB) + ' ';
      else if (change.a)
        told += *change.a + '>' + change.b.value_or("none") + ' ';
    }
    EXPECT_EQ(told, expected) << a << ' ' << b;
  }
}

// Each command is a function's letter with a digit as its value.
Macro macroOf(std::string_view commands) {
  std::string text = "<macro name=\"M\"><data>";
  for (std::size_t i = 0; i < commands.size(); i += 2)
    text +=
        format("<cmd fid=\"QMF1.%c\"><param name=\"v\" value=\"%c\"/></cmd>", commands[i], commands[i + 1]);
  return *Macro::read(text + "</data></macro>");
}

std::string rowsOf(const MacroDiff& diff) {
  constexpr const char* kMarks[] = {"=", "~", "!", "-", "+", "<", ">"};
  std::string marks;
  for (const DiffRow& row : diff.rows()) marks += kMarks[static_cast<std::size_t>(row.kind)];
  return marks;
}

TEST(MacroDiff, ChangesStandBesideTheirOldLinesAndBlocksAreMoved) {
  const struct {
    const char *a, *b, *rows;
    std::size_t differences;
  } cases[] = {
      {"", "", "", 0},
      {"A1B1C1", "A1B2C1", "=!=", 1},
      {"A1B1C1", "A1X1C1", "=-+=", 1},  // another function is no change
      {"A1B1C1D1E1", "A1X1B2C1D3E1", "=+!=!=", 2},
      {"A1A2", "A3", "!-", 1},
      {"X1Y1A1B1C1", "A1B1C1X1Y1", "<<===>>", 2},               // a block
      {"A1B1", "B1A1", ">=<", 2},                               // a single one
      {"X1Y1A1B1C1D1E1", "X2A1B1C1X1Y1D1E1", "<<+===>>==", 3},  // a moved block is no change
      {"X1X3A1B1C1", "X2A1B1C1X1", "<!===>", 3},                // what stands elsewhere is not the old one
      {"X1A1B1C1", "X2A1B1X1C1", "!==+=", 2},                   // but a single one is
      {"A1B1C1D1", "D1C1B1A1", ">>>=<<<", 6},
  };
  for (const auto& [a, b, rows, differences] : cases) {
    const MacroDiff diff(macroOf(a), macroOf(b), nullptr);
    EXPECT_EQ(rowsOf(diff), rows) << a << ' ' << b;
    EXPECT_EQ(diff.differences().size(), differences) << a << ' ' << b;
    EXPECT_EQ(diff.counts().moved, static_cast<std::size_t>(std::ranges::count(std::string_view(rows), '<')));
  }
  const auto of = [](const char* fid) {
    return *Macro::read(std::string("<macro><data><cmd fid=\"") + fid + "\"/></data></macro>");
  };
  EXPECT_EQ(rowsOf(MacroDiff(of("QMF1.A"), of("QMF2.A"), nullptr)), "!") << "of another mainframe";
  EXPECT_TRUE(MacroDiff(of("A"), of("A"), nullptr).taking({0, 7}, Side::kA).pieces.empty());
}

TEST(MacroDiff, WhatStandsBesideTheCommandsIsTold) {
  const std::string base = "<macro name=\"M\"><data><cmd fid=\"A\"/></data></macro>";
  const struct {
    const char* other;
    bool name, surroundings, layout, row;
  } cases[] = {
      {"<macro name=\"N\"><data><cmd fid=\"A\"/></data></macro>", true, false, false, false},
      {"<macro><data><cmd fid=\"A\"/></data></macro>", true, false, false, false},
      {"<macro name=\"M\" x=\"1\"><data><cmd fid=\"A\"/></data></macro>", false, true, false, false},
      {"<macro name=\"M\"><data><cmd fid=\"A\"/><!-- c --></data></macro>", false, true, false, false},
      {"<?xml version=\"1.0\"?><macro name=\"M\"><data><cmd fid=\"A\"/></data></macro>", false, true, false,
       false},
      {"<macro name='M'>\n<data ><cmd fid=\"&#x41;\"></cmd>\n</data></macro>\r\n", false, false, true, false},
      {"\xEF\xBB\xBF<macro name=\"M\"><data><cmd fid=\"A\"/></data></macro>", false, false, true, false},
      {"<macro name=\"M\"><data><cmd fid=\"A\" x=\"\"/></data></macro>", false, false, false, true},
      {"<macro name=\"M\"><data><cmd fid=\"A\"> t</cmd></data></macro>", false, false, false, true},
  };
  for (const auto& [other, name, surroundings, layout, row] : cases) {
    const MacroDiff diff(*Macro::read(base), *Macro::read(other), nullptr);
    EXPECT_FALSE(diff.identical()) << other;
    EXPECT_EQ(diff.nameDiffers(), name) << other;
    EXPECT_EQ(diff.surroundingsDiffer(), surroundings) << other;
    EXPECT_EQ(diff.onlyLayoutDiffers(), layout) << other;
    EXPECT_EQ(!diff.differences().empty(), row) << other;
  }
  // Where a comment stands among the commands is told, too.
  const std::string two = "<macro><data><cmd fid=\"A\"/><!--c--><cmd fid=\"A\"/></data></macro>";
  EXPECT_TRUE(MacroDiff(*Macro::read(two),
                        *Macro::read(replaceAll(two, "<cmd fid=\"A\"/><!--c-->", "<!--c--><cmd fid=\"A\"/>")),
                        nullptr)
                  .surroundingsDiffer());
}

TEST(MacroDiff, CommandsAreTakenAcrossEncodings) {
  const std::string inner =
      "<macro name=\"M\"><data><cmd fid=\"A\" x=\"\xC3\xBC&#8364;\"><!--\xC3\xBC "
      "&amp;--></cmd></data></macro>";
  const std::string utf8 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
  const std::string latin = "<?xml version=\"1.0\" encoding=\"windows-1252\"?>";
  const Macro from = *Macro::read(utf8 + inner);
  for (const std::string& head : {latin, std::string()}) {
    const MacroDiff diff(*Macro::read(head + "<macro><data/></macro>"), from, nullptr);
    const auto taken = apply(diff.a(), diff.takingAll(Side::kA));
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->commands(), from.commands()) << taken->bytes();
  }
  const Macro greek = *Macro::read(utf8 + "<macro><data><cmd><!--\xCE\xA9--></cmd></data></macro>");
  const MacroDiff diff(*Macro::read(latin + "<macro><data/></macro>"), greek, nullptr);
  const auto refused = apply(diff.a(), diff.takingAll(Side::kA));
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.failure().kind, Failure::Kind::kTextNotHeld);
}

TEST(LineChanges, MarkWholeWordsAndCutNoCharacter) {
  const LineChanges changes = changesInside("Clip ==> 50.0%", "Clip ==> 60.0%  K\xC3\xBC");
  EXPECT_EQ(changes.a, (std::vector<LinePart>{{9, 13}}));
  EXPECT_EQ(changes.b, (std::vector<LinePart>{{9, 13}, {14, 19}}));
  EXPECT_EQ(changesInside(std::string_view("ab cd").substr(0, 4), "ab x").a, (std::vector<LinePart>{{3, 4}}));
  const LineChanges letter = changesInside("K\xC3\xBC", "K\xC3\xA4");
  EXPECT_EQ(letter.a, (std::vector<LinePart>{{0, 3}}));
}

}  // namespace
}  // namespace tessaly
