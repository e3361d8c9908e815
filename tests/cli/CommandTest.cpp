#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

#include "model/Settings.h"
#include "tests/cli/CommandFixture.h"

namespace tessaly {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST_F(Commands, MacroIsBuiltShownAndChanged) {
  output({"create", kMacro, "Opener"});
  EXPECT_EQ(output({"show", kMacro}), "empty macro\n");
  output({"insert", kMacro, "QMF2.ME1.SIZE.SET", "size=0.25"});
  output({"insert", kMacro, "PANEL.ME1.ALL.SET", "mode=0", "in=5", "level=128", "--at", "start",
          "--workplace", "3"});
  output({"insert-classic", kMacro, "23 10 05 01 ", "--at", "1", "--mainframe", "4"});
  EXPECT_EQ(output({"show", kMacro, "--destination", "--raw"}),
            "PANEL - ME1 - ALL - SET Parameter: mode: \"0\",  level: \"128\",  in: \"5\",  tc: \"\"\n"
            "QMF4 - QMF4NCSCOMMAND:  Set - Auxbus - Aux5 - kw: 01  | params:\n"
            "QMF2 - ME1 - SIZE - SET Parameter: size: \"0.25\"\n");
  output({"remove", kMacro, "1"});
  output({"set", kMacro, "1", "0.5"});
  EXPECT_EQ(output({"show", kMacro, "--destination"}),
            "Panel/Workplace3 - All ==>  Off ==> 50.2% ==> Camera 5 ==> 00:00:00:00\n"
            "Mainframe2 - Size set ==> 50.0%\n");
  EXPECT_EQ(output({"show", kMacro, "--tabs"}), "All\t Off\t50.2%\tCamera 5\t00:00:00:00\nSize set\t50.0%\n");
  EXPECT_EQ(nlohmann::json::parse(output({"show", kMacro, "--json"}))["commands"][1]["line"],
            "Size set ==> 50.0%");

  output({"rename", kMacro, "Zwölf"});
  EXPECT_EQ(output({"name", kMacro}), "Zwölf\n");
}

TEST_F(Commands, RefusalsLeaveTheMacroAlone) {
  output({"create", kMacro, "Opener"});
  output({"insert", kMacro, "QMF1.ME1.SIZE.SET", "size=1.0000004"});
  output({"insert", "--force", kMacro, "QMF1.ME1.SIZE.SET", "size=9999"});
  output({"insert-classic", kMacro, "23 10 05 01 ", "--at", "1"});
  EXPECT_EQ(values(kMacro), "1.0000004,23 10 05 01 ,9999,");
  site.write("c:\\appli\\flat.mac", "<macro/>");
  site.write("c:\\appli\\folder.upk\\x", "");
  const std::string before = site.read(kMacro);
  const std::string changed = "The macro cannot be changed: ", renamed = "The macro cannot be renamed: ";
  const std::string created = "The macro cannot be created: ", letters = "\"\xD0\x9D\" has letters that";
  const std::string size = "QMF1.ME1.SIZE.SET", flat = "c:\\appli\\flat.mac";
  const std::string holds = " (a number, min: 0.0000   max: 1.0000); --force stores it\n";
  const struct {
    std::vector<std::string> words;
    int code;
    std::string reason;
  } cases[] = {
      {{"insert", kMacro, "QMF1.ME1.GONE"}, 1, "Unknown function: ME1.GONE\n"},
      {{"insert", kMacro, "QMF5.ME1.SIZE.SET"}, 1, "Unknown destination: QMF5.ME1.SIZE.SET"},
      {{"insert", kMacro, size, "speed=1"}, 1, "Unknown parameter: speed\n"},
      {{"insert", kMacro, size, "size"}, 2, "no = in size\nusage: tessaly-cli insert FILE"},
      {{"insert", kMacro, size, "size=1.1"}, 1, "size cannot hold 1.1" + holds},
      {{"set", kMacro, "0", "1.1"}, 1, "size cannot hold 1.1" + holds},
      {{"set", kMacro, "0", "0.5\u00e4"}, 1, "size cannot hold 0.5\u00e4" + holds},
      {{"set", kMacro, "1", "x"}, 1, "No classic command: x; --force stores it\n"},
      {{"insert", kMacro, size, "--at", "-1"}, 2, "--at takes"},
      {{"insert", kMacro, size, "--workplace", "9"}, 2, "--workplace takes"},
      {{"insert", kMacro, size, "--at"}, 2, "--at needs a value\n"},
      {{"insert-classic", kMacro, "23 10 05 01"}, 1, "No classic command: 23 10 05 01"},
      {{"insert-classic", kMacro, "23 10 05 01 ", "--mainframe", "0"}, 2, "--mainframe takes"},
      {{"remove", kMacro, "3"}, 1, "No command 3\n"},
      {{"remove", kMacro, "1x"}, 2, "N is the number"},
      {{"remove", kMacro, "0-3"}, 1, "No command 3\n"},
      {{"remove", kMacro, "1-0"}, 2, "N is the number"},
      {{"move", kMacro, "0"}, 2, "--to takes"},
      {{"move", kMacro, "0-4", "--to", "0"}, 1, "No command 3\n"},
      {{"copy", kMacro, "0", "3-1000000000"}, 1, "No command 3\n"},
      {{"copy", "c:\\none.upk", "0"}, 1, "No such file: c:\\none.upk\n"},
      {{"copy", flat, "0"}, 1, "No macro in the file: c:\\appli\\flat.mac\n"},
      {{"paste", "-"}, 2, "the commands come from standard input"},
      {{"paste", kMacro}, 1, "Standard input is no text of commands\n"},
      {{"remove", kMacro, "-1"}, 2, "N is the number"},
      {{"set", kMacro, "7", "x"}, 1, "No command from 7 on has a parameter with a value\n"},
      {{"rename", kMacro, "\xD0\x9D"}, 1, renamed + letters},
      {{"create", kMacro, "\xD0\x9D"}, 1, created + letters},
      {{"set", kMacro, "0", "\xD0\x9D", "--force"}, 1, changed + letters},
      {{"insert", kMacro, size, "size=\xFC", "--force"}, 1, changed + "this is"},
      {{"insert", flat, size}, 1, changed + "it holds no macro that takes commands\n"},
      {{"rename", flat, "New"}, 1, renamed + "it holds no macro with a name"},
      {{"show", kMacro, "--what"}, 2, "unknown option --what\nusage: tessaly-cli show"},
      {{"show", "c:\\none.mac"}, 1, "Cannot parse Macro: c:\\none.mac\n"},
      {{"show", "c:\\none.upk"}, 1, "No such file: c:\\none.upk\n"},
      {{"name", "c:\\none.upk"}, 1, "No such file: c:\\none.upk\n"},
      {{"show", "c:\\appli\\folder.upk"}, 1, "c:\\appli\\folder.upk cannot be "},
      {{"convert", "c:\\appli\\folder.upk", kMacro, "New"}, 1, "c:\\appli\\folder.upk cannot be "},
      {{"name", "c:\\none.mac"}, 1, "Cannot parse Macro: c:\\none.mac\n"},
      {{"convert", "c:\\none.upk", kMacro, "New"}, 1, "No such file: c:\\none.upk\n"},
      {{"create", "c:\\no\\folder.mac", "New"}, 1, created + "it cannot be written: No such file"},
      {{"settings", "--address-a", "\xD0\x9D"}, 1, "The settings cannot hold"},
      {{"show", kMacro, "--raw=yes"}, 2, "--raw takes no value\n"},
      {{"show", kMacro, "--root="}, 2, "--root needs a folder\n"},
      {{"help", "panels"}, 2, "unknown command panels\n"},
      {{"help", "show", "name"}, 2, "too many words: name\n"},
      {{"panels"}, 2, "unknown command panels"},
      {{"name", flat}, 1, "No name in the file: c:\\appli\\flat.mac\n"},
      {{"restore", "x", "y", "--workplace", "9"}, 2, "a workplace is 1 to 8\n"},
      {{"restore", "x", "y", "1000"}, 2, "a macro number is 0 to 999\n"},
      {{"restore", "c:\\none.zip", "c:\\appli"}, 1, "c:\\none.zip "},
      {{"snapshot", "c:\\appli", "-"}, 2, "a snapshot is a file, not a stream\n"},
      {{"panel", "x", "list", "--ftp-port", "0"}, 2, "a port is 1 to 65535\n"},
      {{"panel", "x", "list", "--control-port", "65536"}, 2, "a port is 1 to 65535\n"},
      {{}, 2, "usage: tessaly-cli"},
      {{"--nothing"}, 2, "unknown option --nothing"},
  };
  for (const auto& c : cases) {
    const Ran outcome = run(c.words);
    EXPECT_EQ(outcome.code, c.code) << c.reason;
    EXPECT_THAT(outcome.errors, StartsWith(c.reason));
    EXPECT_EQ(outcome.out, "") << c.reason;
  }
  EXPECT_EQ(site.read(kMacro), before);
}

TEST_F(Commands, KeyFileIsShownAndConverted) {
  site.write("c:\\k\\key03.upk",
             "#UPK\nBeginHeader\nFile=key03.upk\nName=MK04\nVersion=1.0\nEndHeader\ne3 10 05 01 \nx\n");
  EXPECT_EQ(output({"name", "c:\\k\\key03.upk"}), "MK04\n");
  EXPECT_EQ(output({"show", "c:\\k\\key03.upk", "--raw", "--destination"}),
            "QMF1 - NCSCOMMAND:  e3 10 05 01 \n"
            "QMF1 - NCSCOMMAND:  empty command line, use modify to create command...\n");
  EXPECT_EQ(run({"convert", "c:\\k\\key03.upk", "c:\\k\\new.mac", "Old key"}).code, 1);
  EXPECT_EQ(output({"show", "c:\\k\\new.mac", "--raw"}),
            "QMF1NCSCOMMAND:  Trigger - Auxbus - Aux5 - kw: 01  | params:\n"
            "QMF1NCSCOMMAND:  empty command line, use modify to create command...\n");
}

TEST_F(Commands, HostPathsReachTheSameFile) {
  output({"create", kMacro, "Opener"});
  const std::filesystem::path host = site.root.resolve(kMacro), here = std::filesystem::current_path();
  EXPECT_EQ(output({"name", host.string()}), "Opener\n");
  std::filesystem::current_path(host.parent_path());
  EXPECT_EQ(output({"name", host.filename().string()}), "Opener\n");
  std::filesystem::current_path(here);
}

TEST_F(Commands, WordsAreReadAsTheUsageShowsThem) {
  const std::string root = site.root.path().string();
  const std::string help =
      "usage: tessaly-cli source NUMBER\n\nthe name of a classic source\n\n  NUMBER  0 to 255\n";
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--version"}, "tessaly-cli 1."},
      {{"show", "x", "--version"}, "tessaly-cli 1."},
      {{"-h"}, "usage: tessaly-cli [--root DIR] COMMAND ...\n"},
      {{"help"}, "usage: tessaly-cli [--root DIR] COMMAND ...\n"},
      {{"source", "--help"}, help},
      {{"source", "-h"}, help},
      {{"help", "source"}, help},
      {{"source", "224", "--root", root}, "Virtual Input 00\n"},
      {{"source", "--root=" + root, "--", "224"}, "Virtual Input 00\n"},
      {{"value", "ME1.ALL.SET", "level", "--stored=128"}, "shown: 50.2\n"},
      {{"value", "ME1.SIZE.INC", "size", "--shown", "-0.5"}, "shown: -0.5\n"},
      {{"dictionary", "--list=all"}, "Number of FIDs: 2/3\nME1.ALL.SET\n"},
      {{"create", "-", "--", "--force"}, "<macro name=\"--force\""},
  };
  for (const auto& [words, begins] : cases) EXPECT_THAT(output(words), StartsWith(begins));
}

// Each command, with how few words it takes, and how many.
TEST_F(Commands, WordsAreCounted) {
  constexpr std::size_t kAny = 99;
  const std::tuple<const char*, std::size_t, std::size_t> cases[] = {
      {"dictionary", 0, 0}, {"list", 0, 4},       {"show", 1, 1},          {"name", 1, 1},
      {"rename", 2, 2},     {"create", 2, 2},     {"insert", 2, kAny},     {"insert-classic", 2, 2},
      {"copy", 2, kAny},    {"paste", 1, 1},      {"move", 2, 2},          {"remove", 2, 2},
      {"set", 3, 3},        {"convert", 3, 3},    {"copy-macro", 2, kAny}, {"delete-macro", 1, kAny},
      {"effect", 1, 1},     {"compare", 2, 2},    {"diff", 2, 2},          {"check", 1, kAny},
      {"find", 2, kAny},    {"replace", 2, kAny}, {"sheet", 1, kAny},      {"snapshot", 1, 2},
      {"restore", 2, kAny}, {"classic", 1, 1},    {"value", 2, 2},         {"source", 1, 1},
      {"timecode", 1, 1},   {"settings", 0, 0},   {"address", 1, 1},       {"help", 0, 1}};
  for (const auto& [name, least, most] : cases) {
    const auto errors = [&, command = std::string(name)](std::size_t count) {
      std::vector<std::string> words(count + 1, "x");
      words[0] = command;
      return run(words).errors;
    };
    EXPECT_THAT(least > 0 ? errors(least - 1) : "too few words\n", StartsWith("too few words\n")) << name;
    EXPECT_THAT(most < kAny ? errors(most + 1) : "too many words: x\n", StartsWith("too many words: x\n"))
        << name;
  }
}

TEST_F(Commands, MacroGoesThroughAPipe) {
  const std::string empty = output({"create", "-", "Opener"});
  const std::string one = output({"insert", "-", "QMF1.ME1.SIZE.SET", "size=0.5"}, empty);
  const std::string two = output({"insert-classic", "-", "23 10 05 01 ", "--at=start"}, one);
  const std::string set = output({"set", "-", "1", "0.25"}, output({"rename", "-", "Closer"}, two));
  EXPECT_EQ(output({"show", "-"}, output({"remove", "-", "0"}, set)), "Size set ==> 25.0%\n");
  EXPECT_EQ(output({"name", "-"}, set), "Closer\n");
  const std::string key = "#UPK\n\nFile=\nName=MK04\n\n\ne3 10 05 01 \n";
  EXPECT_EQ(output({"name", "-"}, key), "MK04\n");
  EXPECT_THAT(output({"show", "-"}, key), StartsWith("Classic:  Trigger - "));
  EXPECT_THAT(output({"convert", "-", "-", "Key"}, key), HasSubstr("e3 10 05 01 "));

  const Ran broken = run({"remove", "-", "0"}, "<macro");
  EXPECT_EQ(broken.code, 1);
  EXPECT_EQ(broken.out, "") << "a command that fails writes nothing on";
  EXPECT_EQ(broken.errors, "Cannot parse Macro: -\n");
  EXPECT_EQ(run({"show", "-"}, "<macro/>").errors, "No macro in the file: -\n");
}

TEST_F(Commands, CommandsGoFromMacroToMacro) {
  output({"create", kMacro, "Opener"});
  for (const char* size : {"size=0.1", "size=0.2", "size=0.3"})
    output({"insert", kMacro, "QMF1.ME1.SIZE.SET", size});
  const std::string other = "c:\\appli\\macro008.mac";
  output({"create", other, "Closer"});
  output({"insert-classic", other, "e3 10 05 01 "});
  output({"paste", other, "--at", "start"}, output({"copy", kMacro, "2", "0-1"}));
  EXPECT_EQ(values(other), "0.1,0.2,0.3,e3 10 05 01 ,");
  output({"move", other, "1-2", "--to", "9"});
  EXPECT_EQ(values(other), "0.1,e3 10 05 01 ,0.2,0.3,");
  output({"move", other, "2-3", "--to", "1"});
  EXPECT_EQ(values(other), "0.1,0.2,0.3,e3 10 05 01 ,");
  output({"remove", other, "0-2"});
  output({"paste", other}, output({"copy", "-", "0"}, site.read(kMacro)));
  EXPECT_EQ(values(other), "e3 10 05 01 ,0.1,");

  const std::string before = site.read(other);
  site.write(kMacro, "<?xml version='1.0'?><macro><data><cmd fid='\xD0\x9D' /></data></macro>");
  const Ran lacking = run({"paste", other}, output({"copy", kMacro, "0"}));
  EXPECT_EQ(lacking.code, 1);
  EXPECT_THAT(lacking.errors, StartsWith("The macro cannot be changed: \"\xD0\x9D\" has letters that"));
  EXPECT_EQ(site.read(other), before);

  // A line of a key file that no macro can hold goes along as what it becomes, and is named.
  const std::string key = "#UPK\n\nFile=\nName=MK04\n\n\ne3 10 05 01 \nx\n";
  output({"paste", other, "--at", "0"}, output({"copy", "-", "0"}, key));
  EXPECT_EQ(values(other), "e3 10 05 01 ,e3 10 05 01 ,0.1,");
  const Ran lost = run({"copy", "-", "0-1"}, key);
  EXPECT_EQ(lost.code, 1);
  EXPECT_EQ(lost.errors, "1 of 2 commands cannot be read in the macro: line 8 of -\n");
}

TEST_F(Commands, WhatTheSaveMakesUnreadableIsCounted) {
  output({"create", kMacro, "Opener"});
  std::string longest = "1f 00 1f 10 05 01 ";
  for (int i = 0; i < 28; ++i) longest += "00 ";
  EXPECT_EQ(run({"insert-classic", kMacro, longest}).code, 1);
  EXPECT_THAT(output({"show", kMacro}), StartsWith("QMF1Classic:  empty command line"))
      << "inserted as it is";
  const std::string key = "#UPK\n\n\nName=K\n\n\n23 10 05 01 \r\n\r\n23 10 05 01\r" + longest + "\n";
  const Ran outcome = run({"convert", "-", "-", "Key"}, key);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "2 of 3 commands cannot be read in the macro: lines 9, 10 of -\n");
  EXPECT_THAT(outcome.out, HasSubstr("23 10 05 01 ")) << "the conversion itself stays";
}

TEST_F(Commands, NamesCannotSteerTheTerminal) {
  const std::string name =
      "<macro name=\"a\x1B[2J&#x0A;&#x09;&#x7F;\xC2\x9B\u202e\u200b\ufeffb\"><data/></macro>";
  site.write(kMacro, "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>" + name);
  EXPECT_EQ(output({"name", kMacro}), "a\\x1b[2J\\n\\t\\x7f\\u009b\\u202e\\u200b\\ufeffb\n");
}

TEST_F(Commands, SettingsArePrintedAndRewritten) {
  const std::string defaults =
      "format: 1\nframe rate: 25\npath A: c:\\programme\\rv48\\appli\\\npath B: "
      "c:\\programme\\rv48\\appli\\\n"
      "address A: 192.168.1.10\naddress B: 192.168.1.10\n";
  EXPECT_EQ(output({"settings"}), defaults);
  EXPECT_EQ(site.read(kSettingsFile), "<missing>");
  EXPECT_EQ(output({"settings", "--rewrite"}), defaults);
  EXPECT_THAT(output({"settings", "--address-b", "127.0.0.1"}), testing::HasSubstr("address B: 127.0.0.1\n"));
  EXPECT_THAT(output({"settings"}), testing::HasSubstr("address A: 192.168.1.10\naddress B: 127.0.0.1\n"));
  EXPECT_EQ(output({"settings", "--address-b", "192.168.1.10"}), defaults);
  EXPECT_EQ(site.read(kSettingsFile).size(), 8U + 2 * (6 + 24) + 2 * (6 + 12));
}

TEST_F(Commands, DataThatIsNoCommandsIsRefusedWhole) {
  site.write(kMacro, R"(<macro name="A"><data></data></macro>)");
  const std::string good = R"({"function": "ME1.SIZE.SET", "destination": "QMF1", "parameters": [)";
  const struct {
    std::string given, says;
  } cases[] = {
      {"[", "is no JSON"},
      {std::string(100'000, '['), "is no JSON"},
      {"[" + std::string(100'000, '[') + std::string(100'000, ']') + "]", "commands[0] is no object"},
      {"{\"commands\": [{\"function\": \"\xFC\"}]}", "is no JSON"},
      {"[1e999]", "is no JSON"},
      {R"({"commands": {}})", "has no list of commands"},
      {R"([{"function": "A", "function": "B"}])", "has the member \"function\" twice"},
      {R"([{"function": "A", "parameters": [[]]}])", "parameters[0] is no object"},
      {R"([{"function": "A", "workplace": 1.5}])", "a workplace that is no text"},
      {R"([{"function": "A", "parameters": [{"name": "P", "number": "1"}]}])", "a number that is none"},
      {R"({"schema": 2, "commands": []})", "another schema"},
      {R"([{"fid": "QMF1.ME1.SIZE.SET"}])", "commands[0] has an unknown member \"fid\""},
      {R"([{"destination": "QMF1"}])", "commands[0] has no function"},
      {R"([{"function": 1}])", "a function that is no text"},
      {R"([{"function": "ME1.SIZE.SET", "more": true}])", "copy and paste keep"},
      {"[" + good + R"({"name": "size", "stored": 0.5}]}])", "parameters[0] has a stored that is no text"},
      {"[" + good + R"({"name": "size", "stored": "0.5", "number": 0.7}]}])",
       "two values, stored and number"},
      {"[" + good + R"({"name": "size", "stored": "0.5", "shown": "70.0"}]}])",
       "two values, one of them shown"},
      {"[" + good + R"({"name": "size", "shown": "170"}]}])", "cannot be 170, but 100"},
      {"[" + good + R"({"name": "none", "shown": "1"}]}])", "Unknown parameter: none"},
      {"[" + good + R"({"name": "size", "stored": "0.5"}]},)" + good +
           R"({"name": "size", "stored": "\u0001"}]}])",
       "control character"},
  };
  for (const auto& [given, says] : cases) {
    const Ran refused = run({"paste", kMacro}, given);
    EXPECT_EQ(refused.code, 1) << given;
    EXPECT_THAT(refused.errors, HasSubstr(says)) << given;
    EXPECT_EQ(output({"show", kMacro}), "empty macro\n");
  }
  // What paste takes as it is, insert holds against the functions.
  for (const std::string& given :
       {"[" + good + R"({"name": "size", "number": 7}]}])",
        std::string(R"([{"function": "NONE", "destination": "QMF1"}])"),
        std::string(R"([{"function": "ME1.SIZE.SET"}])"),
        std::string(R"([{"function": "ME1.SIZE.SET", "destination": "PANEL", "workplace": 9}])")}) {
    EXPECT_EQ(run({"insert", kMacro, "--json"}, given).code, 1) << given;
    EXPECT_EQ(run({"insert", kMacro, "--json", "--force"}, given).code, 0) << given;
    EXPECT_EQ(run({"paste", kMacro}, given).code, 0) << given;
  }
  output({"create", kMacro, "Values"});
  output({"paste", kMacro}, "[" + good + R"({"name": "size", "shown": "25"}]},)" + good +
                                R"({"name": "size", "number": 0.125}, {"name": "b", "stored": "<&>\"'"}]}])");
  EXPECT_EQ(values(kMacro), "0.250000,0.125,<&>\"',") << "what is shown is stored";
  EXPECT_EQ(run({"create", kMacro, "--json"}, "[]").errors,
            "Standard input gives the macro no name, nor does the command\n");
  EXPECT_EQ(run({"insert", "-", "--json"}, "[]").code, 1);
  output({"create", kMacro, "--json"},
         R"({"commands": [{"function": "A", "parameters": [{"name": "P"}]}], "name": "Outside"})");
  EXPECT_EQ(output({"name", kMacro}), "Outside\n") << "a member inside has the same name, and is another";

  // More than one text of commands can hold, in their order, at the place.
  std::string many = "[";
  for (int i = 0; i < 5'200; ++i)
    many += (i == 0 ? "" : ",") + good + R"({"name": "size", "stored": ")" + std::to_string(i) + "\"}]}";
  output({"create", kMacro, "Many"});
  output({"insert", kMacro, "QMF1.ME1.SIZE.SET", "size=1"});
  EXPECT_EQ(run({"paste", kMacro, "--at", "start"}, many + "]").code, 0);
  const auto rows = nlohmann::json::parse(output({"show", kMacro, "--json"}))["commands"];
  ASSERT_EQ(rows.size(), 5'201U);
  for (std::size_t i = 0; i < 5'200; ++i) ASSERT_EQ(rows[i]["parameters"][0]["number"], i);
}

}  // namespace
}  // namespace tessaly
