#include <functional>
#include <gmock/gmock.h>

#include "model/MacroFile.h"
#include "platform/Text.h"
#include "tests/model/OddFiles.h"
#include "tests/support/LoadCommands.h"
#include "tests/support/TestSite.h"

// What an operation does not touch stays byte for byte, or the operation writes nothing.
namespace tessaly {
namespace {

constexpr const char* kWorkMacro = R"(c:\work\macro007.mac)";
constexpr const char* kWorkKey = R"(c:\work\key03.upk)";

struct Operation {
  const char* what;
  std::function<Outcome(const SiteAccess&, const std::string&)> run;          // with a text to store
  std::function<std::pair<std::string, std::string>(const OddFile&)> change;  // the bytes before and after
};

const char* const kNew =
    "        <cmd fid=\"NEW\" workplace=\"1\" group=\"0\" module=\"0\" widget=\"0\" />\n";

const Operation kOperations[] = {
    {"insert",
     [](auto& site, auto& text) {
       return insertCommand(site, kWorkMacro, 1, {text, {}}, 1, InsertMode::kAtPosition);
     },
     [](auto& file) { return std::pair(file.second(), kNew + file.second()); }},
    {"insert classic",
     [](auto& site, auto&) {
       return appendClassicCommand(site, kWorkMacro, 0, {}, InsertMode::kAtStart, Destination::mainframe(2));
     },
     [](auto& file) {
       return std::pair(file.first(),
                        replaceAll(replaceAll(kNew, "NEW", "QMF2.NCSCOMMAND"), " />",
                                   ">\n            <param name=\"CMD\" value=\"\" />\n        </cmd>") +
                            file.first());
     }},
    {"paste",
     [](auto& site, auto& text) {
       const auto empty = Macro::read("<?xml version='1.0'?><macro name=''><data/></macro>");
       const auto macro = apply(*empty, InsertCommands{{{text, {}}}});
       if (!macro) return Outcome(macro.failure());
       return editMacroFile(site, kWorkMacro,
                            InsertFragment{*CommandFragment::of(*macro, {0}), 1, InsertMode::kAtPosition});
     },
     [](auto& file) { return std::pair(file.second(), kNew + file.second()); }},
    {"remove", [](auto& site, auto&) { return removeCommand(site, kWorkMacro, 0); },
     [](auto& file) { return std::pair(file.first(), std::string()); }},
    {"replace",
     [](auto& site, auto& text) {
       return editMacroFile(site, kWorkMacro, ReplaceCommand{0, {text, {}}, 1});
     },
     [](auto& file) { return std::pair(file.first(), std::string(kNew)); }},
    {"set value", [](auto& site, auto& text) { return setCommandValue(site, kWorkMacro, 0, text); },
     [](auto&) { return std::pair<std::string, std::string>("\"OLD\"", "\"NEW\""); }},
    {"set a text",
     [](auto& site, auto& text) {
       return editMacroFile(site, kWorkMacro, SetTexts{{{1, SetTexts::Part::kFid, -1, text}}});
     },
     [](auto&) { return std::pair<std::string, std::string>("\"B\"", "\"NEW\""); }},
    {"set the text of a value",
     [](auto& site, auto& text) {
       return editMacroFile(site, kWorkMacro, SetTexts{{{0, SetTexts::Part::kValue, 0, text}}});
     },
     [](auto&) { return std::pair<std::string, std::string>("\"OLD\"", "\"NEW\""); }},
    {"move",
     [](auto& site, auto&) {
       return editMacroFile(site, kWorkMacro, MoveCommands{{0}, 0});
     },
     [](auto&) { return std::pair<std::string, std::string>("\"M\"", "\"M\""); }},
    {"rename", [](auto& site, std::string text) { return renameMacro(site, kWorkMacro, text); },
     [](auto&) { return std::pair<std::string, std::string>("name=\"M\"", "name=\"NEW\""); }},
    {"create", [](auto& site, auto& text) { return createMacro(site, text, kWorkMacro); },
     [](auto&) { return std::pair<std::string, std::string>("name=\"M\"", "name=\"NEW\""); }},
    {"convert", [](auto& site, auto& text) { return convertKeyFile(site, text, kWorkMacro, kWorkKey); },
     [](auto&) { return std::pair<std::string, std::string>("name=\"M\"", "name=\"NEW\""); }},
};

struct MacroBytesTest : testing::Test, TestSite {
  void put(const std::string& bytes) {
    write(kWorkMacro, bytes);
    write(kEmptyMacro, bytes);
    write(kWorkKey, "#UPK\n");  // no commands
  }
};

TEST_F(MacroBytesTest, NothingChangesOutsideOfWhatAnOperationChanges) {
  for (const OddFile& file : kOddFiles) {
    for (const Operation& operation : kOperations) {
      const auto [before, after] = operation.change(file);
      std::string expected = file.bytes();
      ASSERT_NE(expected.find(before), std::string::npos);
      expected.replace(expected.find(before), before.size(), after);
      put(file.bytes());
      EXPECT_TRUE(operation.run(access(), "NEW")) << operation.what << file.bytes();
      EXPECT_EQ(read(kWorkMacro), expected) << operation.what;
    }
  }
}

TEST_F(MacroBytesTest, WhatCannotBeKeptIsNotSaved) {
  const std::string plain = kOddFiles[0].bytes();
  for (const std::string& bytes :
       {plain + "text", plain + "text\n" + plain, replaceAll(plain, "\"p\"", "p"), plain + "<a b='c'd='e'/>",
        replaceAll(plain, "plain", "\x01"), replaceAll(plain, "<note", "<note xml:space='preserve'")}) {
    for (const Operation& operation : kOperations) {
      put(bytes);
      EXPECT_FALSE(operation.run(access(), "NEW")) << operation.what << ": " << bytes;
      EXPECT_EQ(read(kWorkMacro), bytes) << operation.what;
    }
  }
}

TEST_F(MacroBytesTest, BrokenFilesAreToldAndLeftAlone) {
  const std::string plain = kOddFiles[0].bytes();
  std::string deep;
  for (int i = 0; i < 300; ++i) deep = "<macro>" + deep + "</macro>";
  const std::pair<std::string, bool> cases[] = {
      {"", true},
      {plain.substr(0, plain.size() / 2), true},
      {std::string("<macro name='\0'/>", 17), true},
      {std::string("\x7F\x45\x4C\x46\x02\x01\0\0", 8), true},
      {"<!DOCTYPE macro [<!ENTITY a 'b'>]>" + plain, true},
      {deep, true},
      {"no markup at all", true},
      {"<x><macro name='a'/></x>", false},  // this and the rest parse
      {"<macro/>", false},
      {"<macro><x><data/></x></macro>", false}};
  for (const auto& [bytes, told] : cases) {
    SCOPED_TRACE(bytes.substr(0, 40));
    put(bytes);
    for (const Operation& operation : kOperations) {
      EXPECT_FALSE(operation.run(access(), "NEW")) << operation.what;
      EXPECT_EQ(messages.take().size(), told ? 1U : 0U) << operation.what;
    }
    std::string name = "???", renamed = "new";
    MacroCommands commands;
    EXPECT_FALSE(readMacroName(access(), kWorkMacro, name) || renameMacro(access(), kWorkMacro, renamed) ||
                 loadCommands(access(), kWorkMacro, commands));
    EXPECT_EQ(name + renamed, told ? "??????" : "???new");
    EXPECT_EQ(messages.take(),
              std::vector<std::string>(told ? 3 : 0, R"(Cannot parse Macro: c:\work\macro007.mac)"));
    EXPECT_EQ(read(kWorkMacro), bytes);
  }
}

// Each operation stores its texts in the encoding of the file, or nothing.
TEST_F(MacroBytesTest, TextsAreStoredInTheEncodingOfTheFileOrNotAtAll) {
  const std::string western = "<?xml version='1.0' encoding='ISO-8859-1'?>\n";
  const struct {
    std::string head, text, stored;  // empty: refused
  } cases[] = {{"", "Grün–", "Gr\xFCn\x96"},
               {"", "Новости", ""},
               {western, "€", "\x80"},
               {western, "Новости", ""},
               {"<?xml version='1.0' encoding='KOI8-R'?>\n", "Новости", ""},
               {"<?xml version='1.0'?>\n", "Новости", "Новости"},
               {"<?xml version='1.0' encoding='utf-8'?>\n", "ü&", "ü&amp;"},
               {"\xEF\xBB\xBF", "Новости", "Новости"},
               {"<?xml version='1.0'?>\n", "a\x02", ""}};
  for (const auto& c : cases) {
    const std::string bytes = OddFile{c.head, "", "<z />", "plain", ""}.bytes();
    for (const Operation& operation : kOperations) {
      const std::string change = operation.change(kOddFiles[0]).second;
      if (change.find("NEW") == std::string::npos) continue;  // stores no text
      put(bytes);
      EXPECT_EQ(operation.run(access(), c.text).done(), !c.stored.empty())
          << operation.what << c.head << c.text;
      if (c.stored.empty()) {
        EXPECT_EQ(read(kWorkMacro), bytes) << operation.what;
      } else {
        EXPECT_THAT(read(kWorkMacro), testing::HasSubstr('"' + c.stored + '"')) << operation.what << c.head;
      }
    }
  }
  write(kWorkMacro,
        "<macro name='\xFC'><data><cmd fid='\xFC'><param value='\xC3\xBC'/></cmd></data></macro>");
  MacroCommands commands;
  std::string name;
  EXPECT_TRUE(loadCommands(access(), kWorkMacro, commands) && readMacroName(access(), kWorkMacro, name));
  EXPECT_EQ(name + commands.at(0).fid + commands[0].parameters.at(0).value, "üüü");
}

}  // namespace
}  // namespace tessaly
