#include <gtest/gtest.h>
#include <random>

#include "model/MacroFile.h"
#include "model/MacroNameScan.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

constexpr const char* kFile = "c:\\macro007.mac";
constexpr const char* kPlain =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\r\n<macro name=\"Kick off\">\r\n    <data>\r\n"
    "        <cmd fid=\"QMF1.ME1.KEY1.ON.SET\" workplace=\"1\" group=\"0\">\r\n"
    "            <param name=\"state\" value=\"0.5\" />\r\n        </cmd>\r\n"
    "        <cmd fid=\"QMF1.X\"/>\r\n    </data>\r\n</macro>\r\n";

TEST(MacroNameScanTest, KnowsThePlainFormAndNothingElse) {
  EXPECT_EQ(scanMacroName(kPlain), "Kick off");
  EXPECT_EQ(scanMacroName("<macro name=\"\xDC\"><data></data></macro>"), "Ü");
  for (const char* other :
       {"", "<macro name=\"a\">", "<macro name=\"a\"/>x", "<macro><data name=\"a\"/></macro>",
        "<macro name=\"a\" name=\"b\"/>", "<macro name=\"a&amp;b\"/>", "<macro name='a'/>",
        "<!-- x --><macro name=\"a\"/>", "<macro name=\"a\">text</macro>", "<other name=\"a\"/>",
        "<macro name=\"a\"><data></macro></data>", "<macro name=\"a\"/><macro name=\"b\"/>",
        "<?xml version=\"1.0\"?><macro name=\"\xC3\"/>", "<macro name=\"a\nb\"/>"})
    EXPECT_EQ(scanMacroName(other), std::nullopt) << other;
}

// What the scan says without the parser must be what the parser says, however a file is damaged.
TEST(MacroNameScanTest, NeverSaysOtherThanTheParser) {
  TestSite site;
  std::mt19937 random(7);
  const std::string alphabet = "<>/=\"' \n&?!-amcron\xC3\xFC";
  const auto any = [&random](std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
  };
  int spoke = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string bytes = kPlain;
    if (round % 2 == 0) bytes.erase(0, bytes.find("<macro"));
    for (std::size_t change = any(3) + 1; change > 0; --change) {
      const std::size_t place = any(bytes.size());
      switch (any(3)) {
        case 0:
          bytes[place] = alphabet[any(alphabet.size())];
          break;
        case 1:
          bytes.insert(place, 1, alphabet[any(alphabet.size())]);
          break;
        default:
          bytes.erase(place, any(4) + 1);
      }
    }
    const auto scanned = scanMacroName(bytes);
    if (!scanned) continue;
    ++spoke;
    site.write(kFile, bytes);
    std::string name;
    ASSERT_TRUE(readMacroName(site.access(), kFile, name)) << bytes;
    ASSERT_EQ(*scanned, name) << bytes;
  }
  EXPECT_GT(spoke, 300) << "the changes must leave files that are still plain";
}

}  // namespace
}  // namespace tessaly
