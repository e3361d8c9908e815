#include "TemporarySite.h"
#include "platform/XmlFile.h"

namespace tessaly {
namespace {

using XmlFileTest = TemporarySite;

std::string repeated(int count, const std::string& text) {
  std::string result;
  while (count-- > 0) result += text;
  return result;
}

std::string attributes(int count) {
  std::string result;
  while (count-- > 0) result += " a" + std::to_string(count) + "='='";
  return result;
}

TEST_F(XmlFileTest, WhatCannotBeTrustedIsRefused) {
  const std::string deep = repeated(257, "<a>") + repeated(257, "</a>");
  const auto notXml = Failure::Kind::kNotXml, tooLarge = Failure::Kind::kTooLarge;
  const struct {
    const char* what;
    Failure::Kind kind;
    std::string bytes;
  } cases[] = {{"empty", notXml, ""},
               {"binary", notXml,
                std::string("\x7F"
                            "ELF\x02\x01")},
               {"truncated", notXml, "<a><b"},
               {"wrong end", notXml, "<a><b></a></b>"},
               {"NUL in an element", notXml, std::string("<a>x\0</a>", 9)},
               {"NUL behind the root", notXml, std::string("<a/>\0<b/>", 9)},
               {"UTF-16", notXml, std::string("\xFF\xFE<\0a\0/\0>\0", 10)},
               {"internal subset", notXml, "<!DocType a [<!ENTITY x 'y'>]><a/>"},
               {"cut identifier", notXml, "<!DOCTYPE a SYSTEM 'x>y'><a/>"},
               {"comment without its end", notXml, "<a/><!-- "},
               {"instruction without its end", notXml, "<a/><?b"},
               {"character data without its end", notXml, "<![CDATA[a"},
               {"too deep", tooLarge, deep},
               {"endless start", tooLarge, repeated(100'000, "<a>")},
               {"too many attributes", tooLarge, "<a" + attributes(1001) + "/>"},
               {"5.4 GB of nodes", tooLarge, repeated(5'000'001, "<a/>")},
               {"depth behind a quoted end of an instruction", tooLarge, "<a><?xml b='><!-- -->" + deep},
               {"depth behind a comment that only looks closed", tooLarge, "<!--><!-- -->" + deep},
               {"byte before the end", notXml, "\xEF\xBB\xBF<a>\xC3"}};
  for (const auto& c : cases) {
    XmlDocument document;
    document.Parse("<old/>");
    const Outcome parsed = parseXml(c.bytes, document);
    ASSERT_FALSE(parsed) << c.what;
    EXPECT_EQ(parsed.failure().kind, c.kind) << c.what << ": " << parsed.failure().text;
    EXPECT_TRUE(document.NoChildren()) << c.what;
  }
  XmlDocument document;
  for (const char* path : {"c:", "c:\\none.mac", ""}) EXPECT_FALSE(loadXml(root_, path, document)) << path;
  put("c/x.mac", "");
  std::filesystem::resize_file(host("c/x.mac"), 256ull * 1024 * 1024 + 1);
  EXPECT_FALSE(loadXml(root_, "c:\\x.mac", document));
}

// The parser by itself would change or lose something in each of these.
TEST_F(XmlFileTest, WhatWasReadIsPrinted) {
  const std::pair<std::string, std::string> cases[] = {
      {"<a></a>", "<a />\n"},
      {"<?xml version='1.0'?>\r\n<a>\r<b c=\"x\r\ny\">t</b>\r\r\n</a>\r",
       "<?xml version='1.0'?>\n<a>\n    <b c=\"x\ny\">t</b>\n</a>\n"},
      {"<?XML version='1\"0' encoding='&#85;TF-8' other=x ?><a/>",
       "<?XML version='1\"0' encoding='&#85;TF-8' other=x ?>\n<a />\n"},
      {"<?xml-stylesheet href='a' ?><a><?xmlx > b ?></a>",
       "<?xml-stylesheet href='a' ?>\n<a><?xmlx > b ?></a>\n"},
      {"\xEF\xBB\xBF<a b='\xC3\xBC&#xFC;\xEF\xBB\xBF\xC3'/>",
       "\xEF\xBB\xBF<a b=\"\xC3\xBC&#xFC;\xEF\xBB\xBF\xC3\" />\n"},
      {"<?xml version='1.0' encoding='windows-1252'?><a b='&#x2013;&#8364;&#0;&#2;&#x41;'>&#x2013;</a>",
       "<?xml version='1.0' encoding='windows-1252'?>\n<a "
       "b=\"&#x2013;&#8364;&#0;&#2;&#x41;\">&#x2013;</a>\n"},
      {"<?xml version='1.0'?><a b='Gr\xFC' c='\xF0<'>\xE4&quot;</a>",
       "<?xml version='1.0'?>\n<a b=\"Gr\xFC\" c=\"\xF0<\">\xE4&quot;</a>\n"},
      {"<a b='& &amp;#x41; &uuml; &#x; &#x41' c='\"' d=\"'&apos;>\">&&#60;</a>",
       "<a b=\"& &amp;#x41; &uuml; &#x; &#x41\" c='\"' d=\"'&apos;>\">&&#60;</a>\n"},
      {"<a b='&#'><!-- &#65; <c> --><d e='&#x'/></a>",
       "<a b=\"&#\">\n    <!-- &#65; <c> -->\n    <d e=\"&#x\" />\n</a>\n"},
      {"<a> two  blanks\n\tand a line </a>", "<a> two  blanks\n\tand a line </a>\n"},
      {"<a><b>  </b><c> \n </c>\n</a>", "<a>\n    <b>  </b>\n    <c />\n</a>\n"},
      {"<a>mixed <b>\n<c/></b> \n<d/>\t<![CDATA[ <e>&#]]> </a>",
       "<a>mixed <b>\n        <c />\n    </b> \n<d />\t<![CDATA[ <e>&#]]> </a>\n"},
      {"<!DOCTYPE a SYSTEM \"a[1].dtd\"><!-- <b> ' &# --><?go <x?><a d = '>'/><b/>",
       "<!DOCTYPE a SYSTEM \"a[1].dtd\">\n<!-- <b> ' &# -->\n<?go <x?>\n<a d=\">\" />\n<b />\n"},
      {repeated(256, "<a>") + "x" + repeated(256, "</a>"), ""},
      {"<a" + attributes(1000) + "/>", ""}};
  for (const auto& [bytes, expected] : cases) {
    XmlDocument document;
    ASSERT_TRUE(parseXml(bytes, document)) << bytes;
    const auto printed = printXml(document);
    ASSERT_TRUE(printed) << bytes << ": " << printed.failure().text;
    EXPECT_TRUE(expected.empty() || *printed == expected) << *printed;
    ASSERT_TRUE(parseXml(*printed, document)) << *printed;
    EXPECT_EQ(printXml(document), *printed);
  }
}

TEST_F(XmlFileTest, WhatPrintingWouldChangeIsReadButNotPrinted) {
  for (const char* bytes :
       {"<a/>text<b/>", "text<a/>", "<a/>\xC2\xA0", "<a b=c/>", "<a b= c d='e'/>", "<a b='c'd='e'/>",
        "<a b='\x01'/>", "<a>\x0E</a>", "<a>\v</a>", "<a xml:space='preserve'> <b/> </a>"}) {
    put("c/x.mac", bytes);
    XmlDocument document;
    const bool read = loadXml(root_, "c:\\x.mac", document).done();
    EXPECT_EQ(read, bytes != std::string("text<a/>")) << bytes;
    const auto printed = printXml(document);
    ASSERT_FALSE(printed) << bytes;
    EXPECT_EQ(printed.failure().kind, Failure::Kind::kNotKept) << bytes;
  }
}

// In a file of each encoding: how the bytes are read, and what becomes of a text that is stored.
TEST_F(XmlFileTest, TextsAreReadAndStoredInTheEncodingOfTheFile) {
  const std::string mark = "\xEF\xBB\xBF", utf8 = "<?xml version='1.0'?>",
                    western = "<?xml version=\"1.0\" encoding='ISO-8859-1' ?>",
                    cyrillic = "<?xml version='1.0' encoding='windows-1251'?>";
  const struct {
    std::string start, spelled, text, stored, storedAs;  // nothing stored: refused
  } cases[] = {{utf8, "\xC3\xBC&#252;&amp;&#x1F600;", "üü&😀", "Новости <1>", "Новости &lt;1&gt;"},
               {utf8, "Gr\xFC", "Grü", "ü", "ü"},
               {mark, "ü", "ü", "Ω\n", "Ω&#x0A;"},
               {mark + western, "ü", "ü", "Ω", "Ω"},
               {western, "\xC3\xBC \x80", "Ã¼ €", "Ü€", "\xDC\x80"},
               {western, "&#x2013;", "–", "Новости", ""},
               {"", "\xFC", "ü", "üß", "\xFC\xDF"},
               {"", "\x80", "€", "aÜ€b", "a&#xDC;&#x20AC;b"},  // the bytes are UTF-8 for another letter
               {utf8, "&#32;&#xDFFF;&#xFFFE;&#xFFFF;&#65x", " &#xDFFF;&#xFFFE;&#xFFFF;&#65x", "\r", "&#x0D;"},
               {"", "ü &#x; &", "ü &#x; &", "Ω", ""},
               {"", "&#0;&#xD800;&#x110000;&#2;", "&#0;&#xD800;&#x110000;&#2;", "\t", "&#x09;"},
               {cyrillic, "a", "a", "ü", ""},
               {cyrillic, "a", "a", "'\"", "&apos;&quot;"},
               {utf8, "a", "a", "\x02", ""},
               {utf8, "a", "a", "\xFC", "ü"},
               {utf8, "a", "a", std::string("a\0b", 3), "a"}};
  for (const auto& c : cases) {
    XmlDocument document;
    ASSERT_TRUE(parseXml(c.start + "<a b='" + c.spelled + "'/>", document));
    EXPECT_EQ(document.text(*document.RootElement()->Attribute(std::string("b"))), c.text) << c.start;
    const auto spelling = document.spelling(c.stored);
    EXPECT_EQ(spelling.has_value(), !c.storedAs.empty()) << c.stored;
    if (!spelling) {
      EXPECT_EQ(spelling.failure().kind, Failure::Kind::kTextNotHeld);
      EXPECT_NE(spelling.failure().text.find('"' + c.stored + '"'), std::string::npos);
      continue;
    }
    document.RootElement()->SetAttribute("b", spelling->c_str());
    const auto printed = printXml(document);
    ASSERT_TRUE(printed);
    EXPECT_NE(printed->find("b=\"" + c.storedAs + "\""), std::string::npos) << *printed;
  }
}

TEST_F(XmlFileTest, NothingOfAnEarlierDocumentStays) {
  put("c/marked", "\xEF\xBB\xBF<a b=c/>");
  put("c/plain", "<b/>");
  XmlDocument document;
  EXPECT_TRUE(loadXml(root_, "c:\\marked", document));
  EXPECT_TRUE(loadXml(root_, "c:\\plain", document));
  EXPECT_EQ(printXml(document), std::string("<b />\n"));
  EXPECT_FALSE(loadXml(root_, "c:\\none", document) || printXml(document));
  for (const auto& [encoding, name] : {std::pair("", "none"),
                                       {" encoding=ISO-8859-1", "windows-1252"},
                                       {" encoding = 'utf8'", "UTF-8"},
                                       {" encoding='Koi8-r'", "KOI8-R"}}) {
    const std::string start = *encoding ? std::string("<?xml version='1.0'") + encoding + "?>" : "";
    EXPECT_TRUE(parseXml(start + "<a/>", document));
    EXPECT_EQ(document.encodingName(), name);
  }
}

}  // namespace
}  // namespace tessaly
