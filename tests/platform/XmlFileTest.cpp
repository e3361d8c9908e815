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
  const struct {
    const char* what;
    std::string bytes;
  } cases[] = {{"empty", ""},
               {"binary", std::string("\x7F"
                                      "ELF\x02\x01")},
               {"truncated", "<a><b"},
               {"wrong end", "<a><b></a></b>"},
               {"NUL in an element", std::string("<a>x\0</a>", 9)},
               {"NUL behind the root", std::string("<a/>\0<b/>", 9)},
               {"UTF-16", std::string("\xFF\xFE<\0a\0/\0>\0", 10)},
               {"internal subset", "<!DocType a [<!ENTITY x 'y'>]><a/>"},
               {"cut identifier", "<!DOCTYPE a SYSTEM 'x>y'><a/>"},
               {"too deep", deep},
               {"endless start", repeated(100'000, "<a>")},
               {"too many attributes", "<a" + attributes(1001) + "/>"},
               {"depth behind a quoted end of the declaration", "<?xml version='><!--'?>" + deep},
               {"depth behind a comment that only looks closed", "<!--><!-- -->" + deep},
               {"depth behind an entity that runs over a comment", "<a>&#<!--&#65;" + deep + "-->"},
               {"byte before the end", "\xEF\xBB\xBF<a>\xC3"},
               {"reference in a declaration", "<?xml encoding='&#85;TF-8'?><a/>"},
               {"quote in a declaration", "<?xml version='1\"0'?><a/>"}};
  for (const auto& c : cases) {
    put("c/x.mac", c.bytes);
    TiXmlDocument document;
    document.Parse("<old/>");
    EXPECT_FALSE(loadXml(root_, "c:\\x.mac", document)) << c.what;
    EXPECT_TRUE(document.NoChildren()) << c.what;
  }
  TiXmlDocument document;
  for (const char* path : {"c:", "c:\\none.mac", ""}) EXPECT_FALSE(loadXml(root_, path, document)) << path;
  std::filesystem::resize_file(host("c/x.mac"), 256ull * 1024 * 1024 + 1);
  EXPECT_FALSE(loadXml(root_, "c:\\x.mac", document));
}

TEST_F(XmlFileTest, TreesAndSavedBytesAreTheParsersOwn) {
  const std::string bytes[] = {
      "<a/>",
      "<?xml version='1.0'?>\r\n<a>\r<b c=\"x\r\ny\">t</b>\r\r\n</a>\r",
      "\xEF\xBB\xBF<?xml version='1.0' encoding=\"UTF-8\" ?><a b='\xC3\xBC&#xFC;'/>",
      "<?xml version=1.0 encoding=\"ISO-8859-1\"?><a b='\xE4'>\xFC&#xFC;</a>",
      "<a b='\xE4'>\xE4</a>",
      "<?xml version='1.0'?><a>\xFC &amp; &lt;<![CDATA[<b>&#]]>mixed<c/></a>",
      "<!DOCTYPE a SYSTEM \"a[1].dtd\"><!-- <b> ' &# --><?go <x?><a b=c d = '>'/><b/>junk",
      repeated(256, "<a>") + repeated(256, "</a>"),
      "<a" + attributes(1000) + "/>"};
  for (const std::string& text : bytes) {
    put("c/x.mac", text);
    TiXmlDocument document;
    TiXmlDocument reference;
    EXPECT_TRUE(loadXml(root_, "c:\\x.mac", document)) << text;
    EXPECT_TRUE(reference.LoadFile(host("c/x.mac").c_str()) && reference.SaveFile(host("reference").c_str()));
    EXPECT_TRUE(saveXml(root_, "c:\\X.mac", document)) << text;
    EXPECT_EQ(this->bytes("c/x.mac"), this->bytes("reference")) << text;
  }
}

// Each would make the parser run over a quote, a tag or a reference if it believed the declaration.
TEST_F(XmlFileTest, WhatOnlyClaimsToBeUtf8KeepsItsBytes) {
  const struct {
    std::string bytes, value;
  } cases[] = {{"<?xml version='1.0' encoding='UTF-8'?><a b='Gr\xFC' />", "Gr\xFC"},
               {"<?xml version='1.0'?><a b='Caf\xE9&amp;Bar' />", "Caf\xE9&Bar"},
               {"<?xml version='1.0'?><a c='\xF0<' b='\xC3\xBC\xE4&quot;' />", "\xC3\xBC\xE4\""},
               {"\xEF\xBB\xBF<a b='\xC3&lt;' />", "\xC3<"}};
  for (const auto& c : cases) {
    put("c/x.mac", c.bytes);
    for (int round = 0; round < 3; ++round) {
      TiXmlDocument document;
      ASSERT_TRUE(loadXml(root_, "c:\\x.mac", document)) << c.bytes;
      ASSERT_TRUE(document.RootElement()) << c.bytes;
      EXPECT_EQ(*document.RootElement()->Attribute(std::string("b")), c.value);
      EXPECT_TRUE(saveXml(root_, "c:\\x.mac", document));
    }
  }
}

TEST_F(XmlFileTest, NothingOfAnEarlierDocumentStays) {
  put("c/marked", "\xEF\xBB\xBF<a/>");
  put("c/plain", "<b/>");
  TiXmlDocument document;
  EXPECT_TRUE(loadXml(root_, "c:\\marked", document));
  EXPECT_TRUE(loadXml(root_, "c:\\plain", document));
  EXPECT_TRUE(saveXml(root_, "c:\\plain", document));
  EXPECT_EQ(bytes("c/plain"), "<b />\n");
}

TEST_F(XmlFileTest, AFailedSaveLeavesTheOldFile) {
  put("c/x.mac", "<a/>");
  TiXmlDocument document;
  EXPECT_FALSE(saveXml(root_, "c:\\x.mac", document));
  document.Parse("<b/>");
  EXPECT_FALSE(saveXml(root_, "c:", document));
  EXPECT_FALSE(saveXml(root_, "d:\\x.mac", document));
  EXPECT_EQ(bytes("c/x.mac"), "<a/>");
}

}  // namespace
}  // namespace tessaly
