#include <gtest/gtest.h>

#include "model/Macro.h"
#include "model/MacroNameScan.h"

namespace tessaly {
namespace {

constexpr const char* kPlainName =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\r\n<macro name=\"Kick off\">\r\n    <data>\r\n"
    "        <cmd fid=\"QMF1.ME1.KEY1.ON.SET\" workplace=\"1\" group=\"0\">\r\n"
    "            <param name=\"state\" value=\"0.5\" />\r\n        </cmd>\r\n"
    "        <cmd fid=\"QMF1.X\"/>\r\n    </data>\r\n</macro>\r\n";

TEST(MacroNameScanTest, KnowsThePlainFormAndNothingElse) {
  EXPECT_EQ(scanMacroName(kPlainName), "Kick off");
  EXPECT_EQ(scanMacroName("<macro name=\"\xDC\"><data></data></macro>"), "Ü");
  for (const char* other :
       {"", "<macro name=\"a\">", "<macro name=\"a\"/>x", "<macro><data name=\"a\"/></macro>",
        "<macro name=\"a\" name=\"b\"/>", "<macro name=\"a&amp;b\"/>", "<macro name='a'/>",
        "<!-- x --><macro name=\"a\"/>", "<macro name=\"a\">text</macro>", "<other name=\"a\"/>",
        "<macro name=\"a\"><data></macro></data>", "<macro name=\"a\"/><macro name=\"b\"/>",
        "<?xml version=\"1.0\"?><macro name=\"\xC3\"/>", "<macro name=\"a\nb\"/>"})
    EXPECT_EQ(scanMacroName(other), std::nullopt) << other;
}

// What the scan says without the parser must be what the parser says, wherever a file is damaged by a byte.
TEST(MacroNameScanTest, NeverSaysOtherThanTheParser) {
  int spoke = 0;
  const std::string plain = kPlainName;
  for (std::size_t place = 0; place < plain.size(); ++place)
    for (const char letter : std::string("<>/=\"' \n&?!-amcron\xC3\xFC")) {
      const std::string damages[] = {plain.substr(0, place) + letter + plain.substr(place + 1),
                                     plain.substr(0, place) + letter + plain.substr(place)};
      for (const std::string& bytes : damages) {
        const auto scanned = scanMacroName(bytes);
        if (!scanned) continue;
        ++spoke;
        const auto macro = Macro::read(bytes);
        ASSERT_TRUE(macro) << bytes;
        ASSERT_EQ(scanned, macro->name()) << bytes;
      }
    }
  EXPECT_GT(spoke, 300) << "the changes must leave files that are still plain";
}

}  // namespace
}  // namespace tessaly
