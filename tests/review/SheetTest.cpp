// Macros on paper: what a sheet tells, where its pages break, and what its files are.
#include <gmock/gmock.h>
#include <map>

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

SheetMacro macroOf(std::size_t commands, const std::string& line = "Level ==> 50.0%") {
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

// Long words, long lines, long names and more rows than a page: all of it is on the pages, inside of the
// margins, above the foot, and no piece over another.
TEST(Sheet, NothingIsCutOffOnAnyPaper) {
  const std::string words = "many words that go on until they wrap, ", word(400, 'W');
  Sheet sheet{"Show", true, {macroOf(300), macroOf(1, word), macroOf(1, replaceAll(word, "W", words)), {}}};
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

// The last row that a page takes, and the first that it does not; the heading goes on, and so do the numbers.
TEST(Sheet, BreaksBetweenRowsAndSaysWhereItGoesOn) {
  const SheetOptions plain{.after = false, .findings = false, .notes = false, .date = kDay};
  const auto one = [&](std::size_t commands) {
    Sheet sheet{"Show", false, {macroOf(commands)}};
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
  Sheet sheet{"Show", false, {macroOf(full)}};
  for (std::size_t i = 0; i + 1 < full; ++i) sheet.macros[0].commands[i].destination = "Mainframe1";
  EXPECT_TRUE(shows(pagesOf(sheet, plain).pages.at(1), "Mainframe2"));
  EXPECT_FALSE(shows(pagesOf(sheet, plain).pages.at(0), "Mainframe2"));
  // Notes have lines enough, on a page of their own if need be.
  SheetOptions notes = plain;
  notes.notes = true;
  Sheet noted{"Show", false, {macroOf(full)}};
  EXPECT_GE(pagesOf(noted, notes).pages.at(1).rules.size(), 4U);
}

// The numbers in the table are those of the pages, also where the table itself takes more than one.
TEST(Sheet, TheTableLeadsToThePages) {
  Sheet sheet{"c:\\m", true, {}};
  for (std::size_t i = 0; i < 120; ++i) {
    sheet.macros.push_back(macroOf(i));
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
  EXPECT_EQ(
      replaceAll(replaceAll(html.substr(html.find("<h1>")), "<div class=\"note\"></div>\n", "_"), "\n", ""),
      "<h1>Show</h1><h2>Macros</h2><h3>c:\\m</h3><table><thead><tr><th scope=\"col\">Number</th><th scope="
      "\"col\">Name</th></tr></thead><tbody><tr><td class=\"n\"><a href=\"#m1\">007</a></td><td><a "
      "href=\"#m1\""
      ">Opening</a></td></tr><tr><td class=\"n\"><a href=\"#m2\">008</a></td><td><a href=\"#m2\">Torn</a></td"
      "></tr></tbody></table><table><thead><tr><th scope=\"col\">Number</th><th scope=\"col\">Name</th></tr"
      "></thead><tbody><tr><td class=\"n\"><a href=\"#m3\"></a></td><td><a href=\"#m3\">Draft</a></td></tr></"
      "tbody></table><h3>c:\\n</h3><table><thead><tr><th scope=\"col\">Number</th><th scope=\"col\">Name</th"
      "></tr></thead><tbody><tr><td class=\"n\"><a href=\"#m4\">009</a></td><td><a href=\"#m4\">Cut</a></td><"
      "/tr></tbody></table><section id=\"m1\" aria-labelledby=\"m1h\"><h2 id=\"m1h\">007 - Opening</h2><p cla"
      "ss=\"place\">c:\\m</p><h3>Findings</h3><ul class=\"findings\"><li>warning: macro001.mac has the same "
      "name</li></ul><h3>Mainframe1</h3><table><thead><tr><th scope=\"col\">Number</th><th scope=\"col\">Co"
      "mmand</th></tr></thead><tbody><tr><td class=\"n\">1</td><td>Level ==&gt; 50.0%<ul class=\"findings\""
      "><li>error: VALUE: &quot;7&quot; is beyond the limits; right: 1</li></ul></td></tr><tr><td class"
      "=\"n\">2</td><td>Cut</td></tr></tbody></table><h3>Panel/Workplace3</h3><table><thead><tr><th scope"
      "=\"col\">Number</th><th scope=\"col\">Command</th></tr></thead><tbody><tr><td class=\"n\">3</td><td>Di"
      "mmer</td></tr></tbody></table><h3>After this macro</h3><h4>Mainframe1</h4><table class=\"after\"><"
      "thead><tr><th scope=\"col\">Name</th><th scope=\"col\">Value</th></tr></thead><tbody><tr><td>Level</"
      "td><td>50.0%</td></tr></tbody></table><table class=\"after\"><thead><tr><th scope=\"col\">Name</th><"
      "th scope=\"col\">Value</th></tr></thead><tbody><tr><td>Dimmer</td><td>unknown</td></tr></tbody></t"
      "able><p class=\"none\">What these commands do, or a part of it, cannot be told: 2, 3</p><h3>Notes<"
      "/h3>________</section><section id=\"m2\" aria-labelledby=\"m2h\"><h2 id=\"m2h\">008 - Torn</h2><p clas"
      "s=\"place\">c:\\m</p><p>cannot be read (no macro)</p><h3>Notes</h3>________</section><section id=\"m"
      "3\" aria-labelledby=\"m3h\"><h2 id=\"m3h\">Draft (unsaved changes)</h2><p class=\"none\">empty "
      "macro</p"
      "><h3>Notes</h3>________</section><section id=\"m4\" aria-labelledby=\"m4h\"><h2 id=\"m4h\">009 - Cut</"
      "h2><p class=\"place\">c:\\n</p><table><thead><tr><th scope=\"col\">Number</th><th "
      "scope=\"col\">Command"
      "</th></tr></thead><tbody><tr><td class=\"n\">1</td><td>Cut</td></tr></tbody></table><h3>After this"
      " macro</h3><p class=\"none\">no value that could be told is changed</p><h3>Notes</h3>________</sec"
      "tion></main><footer><p class=\"foot\">2026-11-25</p></footer></body></html>");
}

// Each text with its place, width, size and gray, and each rule.
TEST(Sheet, EachThingHasItsPlace) {
  Sheet sheet = everything();
  sheet.macros.erase(sheet.macros.begin() + 1, sheet.macros.end());
  const SheetPages pages = pagesOf(sheet, {.paper = Paper::kA5, .date = kDay});
  std::string text;
  for (const SheetPage& page : pages.pages) {
    text += '[' + page.bookmark + "]\n";
    for (const auto& [x, y, width, size, face, gray, letters] : page.texts)
      text +=
          format("%.1f %.1f %.1f %.1f%s %.2f ", x, y, width, size, face == PdfFace::kBold ? "b" : "", gray) +
          letters + '\n';
    for (const auto& [x, y, length, width, gray] : page.rules)
      text += format("%.1f %.1f %.1f %.1f %.2f\n", x, y, length, width, gray);
  }
  EXPECT_EQ(
      text,
      "[Macros]\n34.0 46.0 42.0 12.0b 0.00 Macros\n34.0 57.5 19.1 7.7 0.40 Show\n"
      "34.0 82.1 30.2 8.5 0.40 Number\n78.0 82.1 22.7 8.5 0.40 Name\n365.7 82.1 19.8 8.5 0.40 Page\n"
      "34.0 103.8 17.5 8.5b 0.00 c:\\m\n34.0 118.0 14.2 8.5 0.00 007\n78.0 118.0 32.1 8.5 0.00 Opening\n"
      "380.8 118.0 4.7 8.5 0.00 2\n34.0 561.3 40.9 8.0 0.40 2026-11-25\n"
      "345.5 561.3 40.0 8.0 0.40 page 1 of 2\n34.0 63.6 351.5 0.8 0.00\n34.0 86.0 351.5 0.4 0.75\n"
      "34.0 122.0 351.5 0.4 0.75\n34.0 549.3 351.5 0.4 0.75\n[007 - Opening]\n"
      "34.0 46.0 79.4 12.0b 0.00 007 - Opening\n34.0 57.5 14.5 7.7 0.40 c:\\m\n"
      "34.0 82.1 35.4 8.5b 0.00 Findings\n34.0 96.3 2.8 8.5b 0.00 !\n"
      "41.0 96.3 167.7 8.5 0.40 warning: macro001.mac has the same name\n"
      "34.0 118.0 47.2 8.5b 0.00 Mainframe1\n43.3 132.2 4.7 8.5 0.40 1\n"
      "55.0 132.2 64.0 8.5 0.00 Level ==> 50.0%\n55.0 143.4 2.8 8.5b 0.00 !\n"
      "62.0 143.4 171.4 8.5 0.40 error: VALUE: \"7\" is beyond the limits; right: 1\n"
      "43.3 157.2 4.7 8.5 0.40 2\n55.0 157.2 13.2 8.5 0.00 Cut\n"
      "34.0 178.9 72.8 8.5b 0.00 Panel/Workplace3\n43.3 193.1 4.7 8.5 0.40 3\n"
      "55.0 193.1 29.7 8.5 0.00 Dimmer\n34.0 214.8 117.6 8.5b 0.00 After this macro: Mainframe1\n"
      "34.0 229.0 20.3 8.5 0.00 Level\n258.9 229.0 24.1 8.5 0.00 50.0%\n"
      "34.0 250.8 65.2 8.5b 0.00 After this macro\n34.0 265.0 29.7 8.5 0.00 Dimmer\n"
      "258.9 265.0 34.0 8.5 0.00 unknown\n"
      "34.0 278.7 228.2 8.5 0.40 What these commands do, or a part of it, cannot be told: 2, 3\n"
      "34.0 300.4 23.6 8.5b 0.00 Notes\n34.0 561.3 40.9 8.0 0.40 2026-11-25\n"
      "345.5 561.3 40.0 8.0 0.40 page 2 of 2\n34.0 63.6 351.5 0.8 0.00\n34.0 233.0 351.5 0.4 0.75\n"
      "34.0 269.0 351.5 0.4 0.75\n34.0 324.1 351.5 0.4 0.40\n34.0 342.1 351.5 0.4 0.40\n"
      "34.0 360.1 351.5 0.4 0.40\n34.0 378.1 351.5 0.4 0.40\n34.0 396.1 351.5 0.4 0.40\n"
      "34.0 414.1 351.5 0.4 0.40\n34.0 432.1 351.5 0.4 0.40\n34.0 450.1 351.5 0.4 0.40\n"
      "34.0 468.1 351.5 0.4 0.40\n34.0 486.1 351.5 0.4 0.40\n34.0 504.1 351.5 0.4 0.40\n"
      "34.0 522.1 351.5 0.4 0.40\n34.0 540.1 351.5 0.4 0.40\n34.0 549.3 351.5 0.4 0.75\n");
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
