#include <gmock/gmock.h>
#include <tinyxml.h>

#include "model/MacroFile.h"
#include "tests/support/LoadCommands.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kFile = R"(c:\work\macro007.mac)";
constexpr const char* kOther = R"(c:\work\other.mac)";
constexpr const char* kKey = R"(c:\work\key03.upk)";

std::string macro(const std::string& data) { return "<macro name='M'><data>" + data + "</data></macro>"; }

struct MacroFileTest : testing::Test, TestSite {
  MacroFileTest() {
    write(kEmptyMacro, R"(<macro name=""><data></data></macro>)");
    write(kFile, macro(""));
  }

  // The commands as "fid=value,value; "; an absent value shows as nothing.
  std::string commandsOf(const char* path) {
    MacroCommands commands;
    EXPECT_TRUE(loadCommands(access(), path, commands));
    std::string result;
    for (const MacroCommand& command : commands) {
      std::string values;
      for (const MacroParameter& parameter : command.parameters) values += parameter.value + ",";
      result += command.fid + "=" + values + "; ";
    }
    return result;
  }

  // Everything in `data`: the fid of a command, else the node's text.
  std::string nodes() {
    TiXmlDocument document;
    document.Parse(read(kFile).c_str());
    std::string result;
    for (auto* node = TiXmlHandle(&document).FirstChild("macro").FirstChild("data").FirstChild().ToNode();
         node; node = node->NextSibling()) {
      result += node->ValueStr() == "cmd" ? node->ToElement()->Attribute("fid") : node->ValueStr();
    }
    return result;
  }
};

TEST_F(MacroFileTest, ReadsCommandsAndNothingElse) {
  write(kFile, R"(<x><cmd fid="no"/></x><macro><note/><data><!-- c --><cmd widget="5" color="red" module="4"
      group="3" workplace="2" fid="QMF1.A"><other name="x"/><param value="7" name="p"/><param name="q"/></cmd>
      <sub><cmd fid="no"/></sub><cmd/><cmd fid='' note="&quot;1"><!--c--><param name='' value='' color='x'> <z/> <![CDATA[t]]></param><y/> <param name='q'>u</param>v</cmd></data><data><cmd fid="no"/></data></macro><macro><data><cmd/></data></macro>)");
  MacroCommands commands(3);
  ASSERT_TRUE(loadCommands(access(), kFile, commands));
  ASSERT_EQ(commands.size(), 3u);
  const auto& [fid, workplace, group, module, widget, parameters, unread] = commands[0];
  EXPECT_EQ(unread, " color=\"red\"<other name=\"x\"></other>");
  EXPECT_EQ(fid + workplace + group + module + widget, "QMF1.A2345");
  ASSERT_EQ(parameters.size(), 2u);
  EXPECT_EQ(parameters[0].name + parameters[0].value, "p7");
  EXPECT_TRUE(parameters[0].hasValue);
  EXPECT_EQ(parameters[1].name + parameters[1].value, "q");
  EXPECT_FALSE(parameters[1].hasValue);
  EXPECT_EQ(commands[1].fid, "");
  EXPECT_EQ(commands[2].unread,
            " fid=\"\" note=\"&quot;1\"<!--c--> parameter 1: name=\"\" color=\"x\" <z></z> <![CDATA[t]]>"
            " after 1: <y></y> after 1:   parameter 2:u after 2: v");
  EXPECT_EQ(
      readMacro(root, kFile)->unread(),
      "0 1 <x><cmd fid=\"no\"></cmd></x><macro><note></note><data><!-- c --><sub><cmd "
      "fid=\"no\"></cmd></sub></data><data><cmd fid=\"no\"></cmd></data></macro><macro><data><cmd></cmd>"
      "</data></macro>");
}

TEST_F(MacroFileTest, PlacesNewCommandsAmongOtherElements) {
  const auto start = InsertMode::kAtStart, at = InsertMode::kAtPosition, append = InsertMode::kAppend;
  const std::string two = "<!--#--><cmd fid='a'/><z/><cmd fid='b'/><z/>";
  const std::tuple<std::string, InsertMode, int, const char*> cases[] = {
      {"", start, 0, "N"},       {"", at, 0, "N"},        {"<z/>", start, 0, "zN"},
      {two, start, 1, "#Nazbz"}, {two, at, 0, "#Nazbz"},  {two, at, 1, "#azNbz"},
      {two, at, 2, "#azbzN"},    {two, at, -1, "#azbzN"}, {two, append, 0, "#azbzN"}};
  for (const auto& [data, mode, position, expected] : cases) {
    write(kFile, macro(data));
    EXPECT_TRUE(insertCommand(access(), kFile, position, {"N", {}}, 1, mode));
    EXPECT_EQ(nodes(), expected) << data << static_cast<int>(mode) << " at " << position;
    const auto number = static_cast<std::size_t>(insertedAt(*Macro::read(macro(data)), position, mode));
    EXPECT_EQ(readMacro(root, kFile)->commands().at(number).fid, "N") << data << " at " << position;
  }
}

TEST_F(MacroFileTest, WritesParametersInOrderWithoutEmptyOptionalOnes) {
  FunctionDictionary dictionary;
  FunctionTemplate definition;
  definition.name = "CLIP";
  definition.inputs = {{"in", "", "", false}};
  definition.floats.resize(1);
  definition.integers.resize(1);
  definition.integers[0].optional = true;
  definition.enums = {{"e", "", "", true, {}}, {"e2", "", "", false, {}}};
  definition.timecodes = {{"t", "", "", true}};
  dictionary.add(definition);
  CommandDraft draft = draftFor("QMF2.", *dictionary.find("CLIP"));
  ASSERT_EQ(draft.parameters.size(), 6u);
  draft.parameters[0].value = "<\"&ü>";
  draft.parameters[3].value = std::string("1\0cut", 5);  // a NUL would make the file unreadable
  draft.parameters[5].value = "5";

  ASSERT_TRUE(insertCommand(access(), kFile, 0, draft, 4, InsertMode::kAppend));
  MacroCommands commands;
  ASSERT_TRUE(loadCommands(access(), kFile, commands));
  const MacroCommand& command = commands.at(0);
  EXPECT_EQ(command.fid + command.workplace + command.group + command.module + command.widget,
            "QMF2.CLIP4000");
  EXPECT_EQ(commandsOf(kFile), "QMF2.CLIP=<\"&ü>,,1,,5,; ");
}

TEST_F(MacroFileTest, FindsTheFirstMacroThatHasAName) {
  const std::tuple<const char*, bool, const char*> cases[] = {
      {"<macro name='A &amp; B'/>", true, "A & B"},
      {"<x name='no'/><macro><data/></macro><macro name='later'/>", true, "later"},
      {"<macro name=''/><macro name='no'/>", true, ""},
      {"<macro><macro name='inner'/></macro>", false, "???"},
      {"<Macro name='no'/>", false, "???"}};
  for (const auto& [bytes, found, expected] : cases) {
    SCOPED_TRACE(bytes);
    write(kFile, bytes);
    std::string name, renamed = "renamed";
    EXPECT_EQ(readMacroName(access(), kFile, name), found);
    EXPECT_EQ(name, expected);
    EXPECT_EQ(renameMacro(access(), kFile, renamed).done(), found);
    EXPECT_EQ(readMacroName(access(), kFile, name), found);
    EXPECT_EQ(name, found ? "renamed" : "???");
    EXPECT_EQ(read(kFile) == bytes, !found);
  }
  EXPECT_THAT(messages.texts, IsEmpty());
}

TEST_F(MacroFileTest, CreatesFromTheTemplate) {
  write(kEmptyMacro, "<macro/><macro name='' x='1'><data><keep/></data></macro>");
  ASSERT_TRUE(createMacro(access(), "New", kFile));
  EXPECT_THAT(read(kFile), testing::AllOf(HasSubstr("<macro name=\"New\" x=\"1\">"), HasSubstr("<keep />")));
  write(kEmptyMacro, "<macro/>");
  EXPECT_FALSE(createMacro(access(), "New", kOther));
  EXPECT_THAT(messages.take(), IsEmpty());
  write(kEmptyMacro, "<macro");
  EXPECT_FALSE(createMacro(access(), "New", kOther));
  EXPECT_FALSE(convertKeyFile(access(), "Key", kOther, kKey));
  EXPECT_THAT(messages.take(), ElementsAre("Cannot create Macro: New", "Cannot create Macro: Key"));
  EXPECT_EQ(read(kOther), "<missing>");
}

TEST_F(MacroFileTest, ConvertsKeyFiles) {
  ASSERT_TRUE(convertKeyFile(access(), "K", kFile, kKey));
  EXPECT_EQ(commandsOf(kFile), "QMF1.NCSCOMMAND=,; ") << "a missing key file has one empty command";
  EXPECT_THAT(read(kFile), testing::AllOf(HasSubstr("workplace=\"1\""), HasSubstr("<param name=\"CMD\"")));
  write(kKey, "\n\n\n\n\n\ne3 10 05 01 \nbroken\n24 10 05 01 0A \n");
  ASSERT_TRUE(convertKeyFile(access(), "K", kFile, kKey));
  EXPECT_EQ(commandsOf(kFile),
            "QMF1.NCSCOMMAND=e3 10 05 01 ,; QMF1.NCSCOMMAND=,; QMF1.NCSCOMMAND=24 10 05 01 0a ,; ");
  write(kEmptyMacro, "<macro name=''/>");
  EXPECT_FALSE(convertKeyFile(access(), "Bare", kFile, kKey));
  EXPECT_THAT(read(kFile), HasSubstr("name=\"Bare\"")) << "it is created, though it takes no command";
  write(kKey, "");
  ASSERT_TRUE(convertKeyFile(access(), "K", kFile, kKey));
  EXPECT_THAT(read(kFile), HasSubstr("name=\"K\""));
}

TEST_F(MacroFileTest, RemovesAndSetsByCommandNumber) {
  const std::string before = macro(
      "<z/><cmd fid='a'><param name='p'/></cmd><z/><cmd fid='b'><param/><param value='1'/><param "
      "value='2'/></cmd>"
      "<cmd fid='NCSCOMMAND'><param value='3'/></cmd><cmd fid='d'/>");
  const std::string a = "a=,; ", b = "b=,1,2,; ", c = "NCSCOMMAND=3,; ", d = "d=; ", bSet = "b=,N,2,; ";
  const std::tuple<int, std::string, std::string> cases[] = {// number, after remove, after set; "" for false
                                                             {-1, "", ""},
                                                             {0, b + c + d, a + bSet + c + d},
                                                             {1, a + c + d, a + bSet + c + d},
                                                             {2, a + b + d, a + b + "NCSCOMMAND=N,; " + d},
                                                             {3, a + b + c, ""},
                                                             {4, "", ""}};
  for (const auto& [number, removed, set] : cases) {
    SCOPED_TRACE(number);
    write(kFile, before);
    EXPECT_EQ(removeCommand(access(), kFile, number).done(), !removed.empty());
    EXPECT_EQ(read(kFile) == before, removed.empty());
    EXPECT_EQ(commandsOf(kFile), removed.empty() ? a + b + c + d : removed);

    write(kFile, before);
    const auto macro = readMacro(root, kFile);
    ASSERT_TRUE(macro);
    EXPECT_EQ(macro->takerOfValue(number) >= 0, !set.empty());
    const auto changed = apply(*macro, SetValues{{{number, "N"}}});
    EXPECT_EQ(read(kFile), before) << "an edit touches no file";
    EXPECT_TRUE(saveMacro(root, kOther, changed ? *changed : *reprint(*macro)));
    MacroCommands written;
    EXPECT_TRUE(loadCommands(access(), kOther, written));
    EXPECT_EQ((changed ? *changed : *macro).commands(), written);
    EXPECT_EQ(setCommandValue(access(), kFile, number, "N").done(), !set.empty());
    EXPECT_EQ(commandsOf(kFile), set.empty() ? a + b + c + d : set);
    EXPECT_EQ(read(kFile), read(kOther)) << "rewritten in every case";
  }
  write(kFile, before);
  EXPECT_TRUE(
      editMacroFile(access(), kFile, SetValues{{{3, "nowhere"}, {0, "N"}, {4, "nowhere"}, {2, "M"}}}));
  EXPECT_EQ(commandsOf(kFile), a + bSet + "NCSCOMMAND=M,; " + d);
}

TEST_F(MacroFileTest, EditsLeaveWhatStandsBetweenTheCommands) {
  const std::string before =
      macro("<!--1--><cmd fid='a'/><z/><cmd fid='b'/><!--2--><cmd fid='c'/><cmd fid='d'/>");
  const CommandDraft n{"N", {}}, m{"M", {}};
  const Macro other = *Macro::read(macro("<cmd fid='N'/><!--x--><cmd fid='M'/>"));
  const std::tuple<const char*, MacroEdit, const char*> cases[] = {
      {"a block keeps its order at the start", InsertCommands{{n, m}, 1, 3, InsertMode::kAtStart},
       "1NMazb2cd"},
      {"and before a command", InsertCommands{{n, m}, 1, 2, InsertMode::kAtPosition}, "1azb2NMcd"},
      {"and where there is none", InsertCommands{{n, m}, 1, 9, InsertMode::kAtPosition}, "1azb2cdNM"},
      {"many go at once, however they are named", RemoveCommands{{3, 0, 3}}, "1zb2c"},
      {"none goes when one is missing", RemoveCommands{{0, 4}}, ""},
      {"down", MoveCommands{{0, 1}, 3}, "1z2cabd"},
      {"up", MoveCommands{{3, 2}, 0}, "1cdazb2"},
      {"to the end", MoveCommands{{1}, 9}, "1az2cdb"},
      {"a move of what is not there", MoveCommands{{4}, 0}, ""},
      {"behind itself, and no comment gets in between", MoveCommands{{1}, 2}, "1azb2cd"},
      {"taken in the place of others", TakeCommands{other, {{1, 2, {1, 0}}}}, "1azMN2d"},
      {"of the last ones", TakeCommands{other, {{2, 2, {0}}}}, "1azb2N"},
      {"and behind them", TakeCommands{other, {{0, 1, {}}, {4, 0, {0}}}}, "1zb2cdN"},
      {"one that is not there", TakeCommands{other, {{0, 1, {2}}}}, ""},
      {"none", TakeCommands{other, {{0, 1, {-1}}}}, ""},
      {"in no place", TakeCommands{other, {{5, 0, {0}}}}, ""},
      {"before all places", TakeCommands{other, {{-1, 1, {0}}}}, ""},
      {"for more than there are", TakeCommands{other, {{3, 2, {0}}}}, ""},
      {"for fewer than none", TakeCommands{other, {{0, -1, {0}}}}, ""},
      {"in its place", ReplaceCommand{1, n, 1}, "1azN2cd"},
      {"in no place", ReplaceCommand{-1, n, 1}, ""}};
  for (const auto& [what, edit, after] : cases) {
    SCOPED_TRACE(what);
    write(kFile, before);
    EXPECT_EQ(editMacroFile(access(), kFile, edit).done(), *after != 0);
    EXPECT_EQ(*after == 0 ? read(kFile) : nodes(), *after == 0 ? before : after);
  }
}

TEST(UnreadOfAMacro, WhiteSpaceBetweenCommandsIsLayoutUntilTextStandsBesideIt) {
  const auto unread = [](const std::string& data) {
    return Macro::read("<macro name=\"M\"><data>" + data + "</data></macro>")->unread();
  };
  EXPECT_EQ(unread("<cmd fid=\"A\"/>\n  <cmd fid=\"B\"/>"), unread("<cmd fid=\"A\"/><cmd fid=\"B\"/>"));
  EXPECT_NE(unread("x<cmd fid=\"A\"/> <cmd fid=\"B\"/>"), unread("x<cmd fid=\"A\"/><cmd fid=\"B\"/>"));
  EXPECT_NE(unread("x<cmd fid=\"A\"/>"), unread("<cmd fid=\"A\"/>"));
}

TEST(ReadsAsMacro, IsWhatTakesCommands) {
  for (const auto& [bytes, reads] : {std::pair("<macro><data/></macro>", true),
                                     {"<macro name='x'/>", false},
                                     {"<mfd><data/></mfd>", false},
                                     {"<macro><data>", false},
                                     {"", false}})
    EXPECT_EQ(readsAsMacro(bytes).done(), reads) << bytes;
}

TEST(SetTexts, NothingChangesBesideTheTexts) {
  const std::string start = "<?x <?><!----><macro ><data\n><![CDATA[]]><z/><cmd fid = ",
                    between = "  workplace=\"1\" ><param value\n=\n",
                    end =
                        "/><param value=''/></cmd><cmd fid='D'/></data ><data><cmd "
                        "fid='B'/></data></macro><macro><data><cmd fid='C'/></data></macro>\n";
  const auto macro = Macro::read(start + "'A'" + between + "'V'" + end);
  ASSERT_TRUE(macro);
  using Part = SetTexts::Part;
  const auto set = apply(*macro, SetTexts{{{0, Part::kFid, -1, "N&"}, {0, Part::kValue, 0, "W"}}});
  ASSERT_TRUE(set) << set.failure().text;
  EXPECT_EQ(set->bytes(), start + "'N&amp;'" + between + "'W'" + end);
  for (const SetTexts::Text& none : {SetTexts::Text{2, Part::kFid, -1, "x"},
                                     {-1, Part::kFid, -1, "x"},
                                     {0, Part::kValue, 2, "x"},
                                     {0, Part::kValue, -1, "x"},
                                     {1, Part::kWorkplace, -1, "x"}})
    EXPECT_EQ(apply(*macro, SetTexts{{none}}).failure().kind, Failure::Kind::kNoCommand);
}

// An edit that changes nothing is none: not even the layout of the file changes, and it is not written.
TEST_F(MacroFileTest, WhatChangesNothingLeavesEachByte) {
  const std::string bytes =
      "<?xml version='1.0' encoding='ISO-8859-1'?><macro name='\xFC' ><data>\n"
      "<cmd fid='A'   workplace='1' group='0' module='0' widget='0'><param name='P' value='&#xE4;'/></cmd>"
      "<!--c--><cmd fid='B' note='x'/><cmd fid='B' note='x'/></data></macro>";
  const auto macro = Macro::read(bytes);
  ASSERT_TRUE(macro);
  const CommandDraft same{"A", {{ParameterKind::kEnum, "P", "ä", false}}};
  const std::pair<const char*, MacroEdit> cases[] = {
      {"moved to its place", MoveCommands{{1, 2}, 1}},
      {"moved behind an equal one", MoveCommands{{1}, 9}},
      {"none moved", MoveCommands{{}, 1}},
      {"none removed", RemoveCommands{}},
      {"none inserted", InsertCommands{}},
      {"replaced by an equal one", ReplaceCommand{0, same, 1}},
      {"taken from itself", TakeCommands{*macro, {{0, 1, {0}}}}},
      {"set to its value", SetValues{{{0, "ä"}}}},
      {"renamed to its name", SetMacroName{"ü"}},
  };
  for (const auto& [what, edit] : cases) {
    const auto edited = apply(*macro, edit);
    EXPECT_EQ(edited ? edited->bytes() : edited.failure().text, bytes) << what;
  }
  const auto unlike = apply(*macro, ReplaceCommand{1, {"B", {}}, 1});
  EXPECT_NE(unlike->bytes(), bytes) << "its unknown attribute goes";
  write(kFile, bytes);
  std::filesystem::permissions(root.resolve(kFile), std::filesystem::perms::owner_read);
  EXPECT_TRUE(editMacroFile(access(), kFile, MoveCommands{{0}, 0})) << "it cannot be written, and is not";
}

}  // namespace
}  // namespace tessaly
