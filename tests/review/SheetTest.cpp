// Macros on paper: what a sheet tells, where its pages break, and what its files are.
#include <gmock/gmock.h>
#include <map>
#include <regex>
#include <set>

#include "dictionary/InterfaceFile.h"
#include "platform/Text.h"
#include "review/SheetFiles.h"
#include "review/SheetFlow.h"
#include "review/SheetReading.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

constexpr std::chrono::year_month_day kDay{2026y, std::chrono::November, 25d};
constexpr double kFoot = 18;

SheetMacro sheetMacro(std::size_t commands, const std::string& line = "Level ==> 50.0%") {
  SheetMacro macro{"c:\\m\\macroWP1", "007", "Opening", {}};
  for (std::size_t i = 0; i < commands; ++i)
    macro.commands.push_back({i < commands / 2 ? "Mainframe1" : "Mainframe2", line + std::to_string(i)});
  return macro;
}

SheetPages pagesOf(const Sheet& sheet, const SheetOptions& options) {
  auto pages = layOut(sheet, options, {});
  if (!pages) throw std::runtime_error(pages.failure().text);
  return *std::move(pages);
}

// All that stands on a page from the top, without blanks: a line may break at one.
std::string packed(const SheetPage& page) {
  std::string text;
  for (const SheetText& piece : page.texts)
    for (const char letter : windows1252ToUtf8(piece.text))
      if (letter != ' ') text += letter;
  return text;
}

bool shows(const SheetPage& page, const std::string& text) {
  return std::ranges::any_of(page.texts, [&](const SheetText& piece) { return piece.text == text; });
}

TEST(Sheet, NothingIsCutOffOnAnyPaper) {
  const std::string words = "many words that go on until they wrap, ", word(400, 'W');
  Sheet sheet{
      "Show", true, {sheetMacro(300), sheetMacro(1, word), sheetMacro(1, replaceAll(word, "W", words)), {}}};
  sheet.macros[1].name = replaceAll(std::string(20, 'x'), "x", "Große “Straße” – ");
  sheet.macros[1].place = "c:\\" + word;
  sheet.macros[2].commands[0].destination = word + "E";
  sheet.macros[2].after = {{word + "A", {{word + "V", ""}, {"name", word + "S"}}}};
  sheet.macros[3].unread = word + "U";
  for (const Paper paper : kPapers) {
    const SheetLook& look = lookOf(paper);
    const SheetPages pages = pagesOf(sheet, {.paper = paper, .date = kDay});
    std::string all;
    for (const SheetPage& page : pages.pages) {
      all += packed(page);
      std::map<double, double> ends;  // of each base line
      for (const SheetText& text : page.texts) {
        EXPECT_GE(text.x, look.margin - 0.01) << text.text;
        EXPECT_LE(text.x + text.width, look.width - look.margin + 0.01) << text.text;
        EXPECT_LE(text.y, look.height - look.margin - (text.size < look.size * 0.95 ? 0 : kFoot))
            << text.text;
        EXPECT_GE(text.x, ends[text.y]) << text.text;
        ends[text.y] = text.x + text.width;
      }
    }
    for (const std::string& whole :
         {word + "0", word + "E", word + "A", word + "V", word + "S", "c:\\" + word, word + "U"})
      EXPECT_NE(all.find(whole), all.npos) << whole.back();
    EXPECT_NE(all.find(replaceAll(sheet.macros[1].title(), " ", "")), all.npos);
    EXPECT_NE(all.find("300Level"), all.npos);
  }
}

TEST(Sheet, BreaksBetweenRowsAndSaysWhereItGoesOn) {
  const SheetOptions plain{.after = false, .findings = false, .notes = false, .date = kDay};
  const auto one = [&](std::size_t commands) {
    Sheet sheet{"Show", false, {sheetMacro(commands)}};
    for (SheetCommand& command : sheet.macros[0].commands) command.destination = "Mainframe1";
    return pagesOf(sheet, plain);
  };
  std::size_t full = 1;
  while (one(full + 1).pages.size() == 1) ++full;
  const SheetPages two = one(full + 1);
  ASSERT_EQ(two.pages.size(), 2U);
  EXPECT_GT(full, 40U);
  EXPECT_TRUE(shows(two.pages[0], std::to_string(full)) && shows(two.pages[0], "page 1 of 2"));
  EXPECT_TRUE(shows(two.pages[1], "Mainframe1 (continued)") && shows(two.pages[1], std::to_string(full + 1)));
  EXPECT_TRUE(shows(two.pages[1], "007 - Opening") && shows(two.pages[1], "2026-11-25"));
  EXPECT_EQ(two.pages[0].bookmark, "007 - Opening");
  EXPECT_EQ(two.pages[1].bookmark, "");
  // A heading is never the last on its page.
  Sheet sheet{"Show", false, {sheetMacro(full)}};
  for (std::size_t i = 0; i + 1 < full; ++i) sheet.macros[0].commands[i].destination = "Mainframe1";
  EXPECT_TRUE(shows(pagesOf(sheet, plain).pages.at(1), "Mainframe2"));
  EXPECT_FALSE(shows(pagesOf(sheet, plain).pages.at(0), "Mainframe2"));
  // Notes have lines enough, on a page of their own if need be.
  SheetOptions notes = plain;
  notes.notes = true;
  Sheet noted{"Show", false, {sheetMacro(full)}};
  EXPECT_GE(pagesOf(noted, notes).pages.at(1).rules.size(), 4U);
}

TEST(Sheet, TheTableLeadsToThePages) {
  Sheet sheet{"c:\\m", true, {}};
  for (std::size_t i = 0; i < 120; ++i) {
    sheet.macros.push_back(sheetMacro(i));
    sheet.macros.back().name = "Macro " + std::to_string(i);
    sheet.macros.back().number = std::to_string(i);
  }
  const SheetPages pages = pagesOf(sheet, {.paper = Paper::kA5, .date = kDay});
  ASSERT_EQ(pages.pages[1].bookmark, "") << "the table has a second page";
  std::map<std::string, std::string> told;  // page by name
  for (const SheetPage& page : pages.pages) {
    if (!page.bookmark.empty() && page.bookmark != "Macros") break;
    for (std::size_t i = 1; i + 1 < page.texts.size(); ++i)
      if (page.texts[i].text.starts_with("Macro ")) told[page.texts[i].text] = page.texts[i + 1].text;
  }
  ASSERT_EQ(told.size(), 120U);
  for (std::size_t i = 0; i < pages.pages.size(); ++i) {
    const std::string& mark = pages.pages[i].bookmark;
    if (const auto name = mark.find("Macro "); name != mark.npos) {
      EXPECT_EQ(told[mark.substr(name)], std::to_string(i + 1)) << mark;
    }
  }
}

TEST(Sheet, HtmlAndCsvAreSafeWhateverTheMacrosSay) {
  const struct {
    const char *line, *html, *csv;
  } rows[] = {
      {"<script>\"a\" & b", "<td>&lt;script&gt;&quot;a&quot; &amp; b", "\"<script>\"\"a\"\" & b\""},
      {"=1+1", "<td>=1+1<", ",'=1+1,"},
      {"+1", "<td>+1<", ",'+1,"},
      {"-1", "<td>-1<", ",'-1,"},
      {"@SUM(A1)", "<td>@SUM(A1)<", ",'@SUM(A1),"},
      {"=a,b", "<td>=a,b<", ",\"'=a,b\","},
      {"a\r\n=b\t\xe2\x80\xae", "a[U+000D][U+000A]=b", ",a[U+000D][U+000A]=b[U+0009][U+202E],"},
      {"\"", "<td>&quot;<", ",\"\"\"\","},
      {"a=b ==> %1", "<td>a=b ==&gt; %1<", ",a=b ==> %1,"},
  };
  for (const auto& [line, html, csv] : rows) {
    Sheet sheet{"<i>", false, {{"", "007", "", {{"Mainframe1", line}}}}};
    EXPECT_THAT(*writeSheet(sheet, {}, {}, SheetFormat::kHtml),
                AllOf(HasSubstr(html), HasSubstr("<h1>&lt;i&gt;<")));
    EXPECT_THAT(*writeSheet(sheet, {}, {}, SheetFormat::kCsv),
                AllOf(HasSubstr(csv), HasSubstr("\r\n,007,,1,Mainframe1,"), EndsWith(",\r\n")));
  }
}

// All that a sheet can hold.
Sheet everything() {
  const Finding limits{CheckRule::kLimits, Severity::kError, 0, "VALUE", {Saying::kBeyond, {"7"}}, {}, "1"};
  const Finding twice{
      CheckRule::kNameTwice, Severity::kWarning, -1, {}, {Saying::kSameName, {"macro001.mac"}}};
  return {
      "Show",
      true,
      {{"c:\\m",
        "007",
        "Opening",
        {{"Mainframe1", "Level ==> 50.0%", {limits}}, {"Mainframe1", "Cut"}, {"Panel/Workplace3", "Dimmer"}},
        {{"Mainframe1", {{"Level", "50.0%"}}}, {"", {{"Dimmer", "unknown"}}}},
        {1, 2},
        {twice}},
       {"c:\\m", "008", "Torn", {}, {}, {}, {}, "no macro"},
       {"", "", "Draft", {}, {}, {}, {}, {}, true},
       {"c:\\n", "009", "Cut", {{"", "Cut"}}}}};
}

TEST(Sheet, HtmlAndCsvTellAllOfIt) {
  EXPECT_EQ(*writeSheet(everything(), {}, {}, SheetFormat::kCsv),
            "place,number,name,step,destination,line,findings\r\n"
            "c:\\m,007,Opening,,,,warning: macro001.mac has the same name\r\n"
            "c:\\m,007,Opening,1,Mainframe1,Level ==> 50.0%,\"error: VALUE: \"\"7\"\" is beyond the limits; "
            "right: 1\"\r\n"
            "c:\\m,007,Opening,2,Mainframe1,Cut,\r\nc:\\m,007,Opening,3,Panel/Workplace3,Dimmer,\r\n"
            "c:\\m,008,Torn,,,,cannot be read (no macro)\r\n,,Draft,,,,\r\nc:\\n,009,Cut,1,,Cut,\r\n");
  const std::string html =
      *writeSheet(everything(), {.paper = Paper::kA5, .date = kDay}, {}, SheetFormat::kHtml);
  EXPECT_NE(html.find("@page { size: A5 portrait;"), html.npos);
  EXPECT_THAT(html, AllOf(HasSubstr("<a href=\"#m4\">Cut</a>"), HasSubstr("<h2 id=\"m4h\">009 - Cut</h2>")));
  const auto count = [&html](const std::string& text) { return replaceAll(html, text, text + '.').size(); };
  for (const std::string tag : {"main", "section", "table", "thead", "tbody", "tr", "td", "ul", "h2", "h3"})
    EXPECT_EQ(count('<' + tag), count("</" + tag + '>')) << tag;
  const std::string told =
      std::regex_replace(html.substr(html.find("<h1>")), std::regex("(<[^>]*>|\n)+"), "|");
  EXPECT_EQ(
      told,
      "|Show|Macros|c:\\m|Number|Name|007|Opening|008|Torn|Number|Name|Draft|c:\\n|Number|Name|009|Cut|"
      "007 - Opening|c:\\m|Findings|warning: macro001.mac has the same name|Mainframe1|Number|Command|1|"
      "Level ==&gt; 50.0%|error: VALUE: &quot;7&quot; is beyond the limits; right: 1|2|Cut|"
      "Panel/Workplace3|Number|Command|3|Dimmer|After this macro|Mainframe1|Name|Value|Level|50.0%|Name|"
      "Value|Dimmer|unknown|What these commands do, or a part of it, cannot be told: 2, 3|Notes|"
      "008 - Torn|c:\\m|cannot be read (no macro)|Notes|Draft (unsaved changes)|empty macro|Notes|"
      "009 - Cut|c:\\n|Number|Command|1|Cut|After this macro|no value that could be told is changed|"
      "Notes|2026-11-25|");
}

// Each kind of text and of rule with its left edge, and each way from one line to the next.
TEST(Sheet, EachThingHasItsPlace) {
  Sheet sheet = everything();
  sheet.macros.erase(sheet.macros.begin() + 1, sheet.macros.end());
  const SheetPages pages = pagesOf(sheet, {.paper = Paper::kA5, .date = kDay});
  std::set<std::string> texts, rules, ways;
  for (const SheetPage& page : pages.pages) {
    double above = 0;
    for (const auto& [x, y, width, size, face, gray, letters] : page.texts) {
      texts.insert(format("%.1f %.1f%s %.2f", x, size, face == PdfFace::kBold ? "b" : "", gray));
      ways.insert(format("%.1f", y - above));
      above = y;
    }
    above = 0;
    for (const auto& [x, y, length, width, gray] : page.rules) {
      rules.insert(format("%.1f %.1f %.1f %.2f", x, length, width, gray));
      ways.insert(format("rule %.1f", y - above));
      above = y;
    }
  }
  const auto joined = [](const std::set<std::string>& all) {
    std::string line;
    for (const std::string& one : all) line += one + ", ";
    return line;
  };
  EXPECT_EQ(joined(texts),
            "258.9 8.5 0.00, 34.0 12.0b 0.00, 34.0 7.7 0.40, 34.0 8.0 0.40, 34.0 8.5 0.00, 34.0 8.5 0.40, "
            "34.0 8.5b 0.00, 345.5 8.0 0.40, 365.7 8.5 0.40, 380.8 8.5 0.00, 41.0 8.5 0.40, 43.3 8.5 0.40, "
            "55.0 8.5 0.00, 55.0 8.5b 0.00, 62.0 8.5 0.40, 78.0 8.5 0.00, 78.0 8.5 0.40, ");
  EXPECT_EQ(joined(rules), "34.0 351.5 0.4 0.40, 34.0 351.5 0.4 0.75, 34.0 351.5 0.8 0.00, ");
  EXPECT_EQ(joined(ways),
            "0.0, 11.2, 11.5, 13.7, 14.2, 21.7, 24.6, 260.9, 443.3, 46.0, rule 169.4, rule 18.0, rule 22.5, "
            "rule 35.9, rule 427.3, rule 55.2, rule 63.6, rule 9.1, ");
}

TEST(Sheet, TellsWhatAMacroDoesAndWhatIsWrongWithIt) {
  TestSite site;
  const char* file = "c:\\functions.xml";
  site.write(
      file,
      R"(<mfd><fid name="A.SET" sid="A" description="Size"><int_parameter name="P" min="0" max="9"/></fid></mfd>)");
  FunctionDictionary dictionary;
  ASSERT_TRUE(readInterfaceFile(site.root, file, FunctionSource::kPanel, dictionary, {}));
  DecodingLists lists(site.root);
  SheetReading reading({dictionary, lists}, {});
  reading.beginFolder();
  const auto read = [&](const std::string& path, Expected<std::string> bytes) {
    return reading.read({SheetReading::placeText({path, {}, 0, {}}), SheetReading::numberOf(path), "told"},
                        path, std::move(bytes));
  };
  const auto set = [](const char* fid, const char* value) {
    return std::string("<cmd fid='") + fid + "' workplace='3'><param name='P' value='" + value + "'/></cmd>";
  };
  const SheetMacro macro =
      read("c:\\m\\macro007.mac", "<macro name='M'><data>" + set("QMF2.A.SET", "5") + set("PANEL.NONE", "1") +
                                      set("QMF2.A.SET", "10") + "</data></macro>");
  EXPECT_EQ(macro.title() + '|' + macro.place, "007 - M|c:\\m");
  ASSERT_EQ(macro.commands.size(), 3U);
  EXPECT_EQ(macro.commands[0].destination + '|' + macro.commands[0].line, "Mainframe2|Size ==> 5");
  EXPECT_EQ(macro.commands[1].destination, "Panel/Workplace3");
  ASSERT_EQ(macro.commands[2].findings.size(), 1U);
  EXPECT_THAT(SheetWords().finding(macro.commands[2].findings[0]),
              HasSubstr("error: P: \"10\" is beyond the limits; right: 9"));
  ASSERT_EQ(macro.after.size(), 1U);
  EXPECT_EQ(macro.after[0].destination + '|' + macro.after[0].values.at(0).name + '|' +
                macro.after[0].values[0].shown,
            "Mainframe2|Size|10");
  EXPECT_THAT(macro.untold, ElementsAre(1));

  const SheetMacro again = read("c:\\m\\macro008.mac", std::string("<macro name='M'><data/></macro>"));
  ASSERT_FALSE(again.findings.empty());
  EXPECT_EQ(again.findings[0].rule, CheckRule::kNameTwice) << "within a folder";
  EXPECT_THAT(read("c:\\m\\macro009.mac", std::string("no macro")).unread, HasSubstr("not well formed"));
  EXPECT_EQ(read("c:\\m\\macro009.mac", Failure{Failure::Kind::kMissing, "gone"}).title(), "009 - told");
  EXPECT_EQ(read("c:\\m\\odd.mac", std::string("<macro/>")).place, "c:\\m\\odd.mac");
  EXPECT_EQ(SheetReading::numberOf("/m/key03.upk"), "03");
  EXPECT_EQ(SheetReading::placeText({{}, "10.0.0.5", 2, "007"}), "workplace 2 of 10.0.0.5");
}

}  // namespace
}  // namespace tessaly
