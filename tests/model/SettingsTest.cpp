#include <gtest/gtest.h>

#include "model/Settings.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using namespace std::string_literals;

const std::string kWhole =
    "\x78\x56\x34\x12\x1E\0\0\0"s
    "\x04\0\0\0c:\\x\0\0"s
    "\0\0\0\0\0\0"s
    "\x08\0\0\0"s
    "10.0.0.7\0\0"s
    "\x02\0\0\0\xFC!\0\0"s;

class SettingsFile : public ::testing::Test {
 protected:
  Settings read(const std::string& bytes) {
    site.write(kSettingsFile, bytes);
    Settings settings;
    EXPECT_TRUE(readSettings(site.root, settings));
    return settings;
  }

  TestSite site;
};

TEST_F(SettingsFile, MissingGivesTheDefaults) {
  Settings settings{9, 9, "a", "b", "c", "d"};
  EXPECT_FALSE(readSettings(site.root, settings));
  EXPECT_EQ(settings, defaultSettings());
  EXPECT_FALSE(writeSettings(site.root, settings));  // nowhere to put it
}

TEST_F(SettingsFile, ReadsEveryFieldAndWritesTheSameBytes) {
  const Settings settings = read(kWhole);
  EXPECT_EQ(settings, (Settings{0x12345678, 30, "c:\\x", "", "10.0.0.7", "\xFC!"}));
  ASSERT_TRUE(writeSettings(site.root, settings));
  EXPECT_EQ(site.read(kSettingsFile), kWhole);
}

TEST_F(SettingsFile, DamageKeepsDefaultsForWhatIsNotReached) {
  const std::string start = "\x02\0\0\0\xFF\xFF\xFF\xFF"s;
  const Settings defaults = defaultSettings();
  Settings onlyFormat = defaults, noTexts = defaults;
  noTexts.format = 0x12345678;
  noTexts.frameRate = 30;
  onlyFormat.format = 2;
  Settings cut = onlyFormat;
  cut.pathA = "c:\\lo";
  Settings early = cut;
  early.pathA = "c:";
  const struct {
    const char* what;
    std::string bytes;
    Settings settings;
  } cases[] = {
      {"empty", "", defaults},
      {"half an integer", "\x02\0\0"s, defaults},
      {"no frame rate", start.substr(0, 7), onlyFormat},
      {"no texts", kWhole.substr(0, 8), noTexts},
      {"a frame rate that there is not, and half a length", start + "\x01\0\0"s, onlyFormat},
      {"text runs over the end", start + "\x09\0\0\0c:\\lo"s, cut},
      {"huge length", start + "\xFF\xFF\xFF\xFF"s + "c:\\lo\0more"s, cut},
      {"a byte of no meaning", kWhole.substr(0, kWhole.size() - 1) + '\x55', read(kWhole)},
      {"zero inside the text", start + "\x04\0\0\0c:\0x\0\0"s, early},
  };
  for (const auto& c : cases) EXPECT_EQ(read(c.bytes), c.settings) << c.what;
}

// Else a path would be kept with "?" in it and be another one at the next start.
TEST(Settings, HoldsWhatItsCodePageHolds) {
  for (const char* text : {"", "c:\\appli", "/srv/K\u00fcche \u20ac"})
    EXPECT_TRUE(settingsHold(text)) << text;
  for (const std::string& text : {"/srv/\u0416"s, "\xff"s, "a\0b"s}) EXPECT_FALSE(settingsHold(text)) << text;
}

TEST(Settings, DerivedPathEndsInABackslash) {
  EXPECT_EQ(derivedPath("c:\\appli"), "c:\\appli\\");
  EXPECT_EQ(derivedPath("c:\\appli\\"), "c:\\appli\\");
  EXPECT_EQ(derivedPath(""), "");
}

}  // namespace
}  // namespace tessaly
