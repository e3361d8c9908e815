#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/SiteBrowser.h"
#include "tests/support/TestSite.h"

namespace tessaly {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kBrowsed = "c:\\appli\\";

std::string macro(const std::string& name) { return "<macro name=\"" + name + "\"><data/></macro>"; }

class SiteBrowser : public ::testing::Test {
 protected:
  std::vector<std::string> panelTexts(const std::string& devices) {
    site.write("c:\\appli\\News\\devices.ini", devices);
    std::vector<std::string> texts;
    for (const PanelEntry& panel : controlPanels(site.root, kBrowsed, "News").value_or({}))
      texts.push_back(panel.text);
    return texts;
  }

  TestSite site;
};

TEST_F(SiteBrowser, ApplicationsAreTheEntriesWithADevicesFile) {
  EXPECT_THAT(*applications(site.root, kBrowsed), IsEmpty());
  site.write("c:\\appli\\Sports\\devices.ini", "");
  site.write("c:\\appli\\news\\DEVICES.INI", "");
  site.write("c:\\appli\\empty\\other.ini", "");
  site.write("c:\\appli\\file", "");
  EXPECT_THAT(*applications(site.root, kBrowsed), ElementsAre("news", "Sports"));
}

TEST_F(SiteBrowser, ScansTheDevicesFile) {
  site.write("c:\\appli\\News\\CP1\\assign\\contents.cnt", "");
  site.write("c:\\appli\\News\\CP2\\appli_cp.ini", "");
  site.write("c:\\appli\\News\\CP2\\assign\\contents.cnt", "");
  site.write("c:\\appli\\News\\CP\\appli_cp.ini", "");
  site.write("c:\\appli\\News\\CP-1\\assign\\contents.cnt", "");
  site.write("c:\\appli\\CPX\\appli_cp.ini", "");
  const struct {
    const char* what;
    std::string devices;
    std::vector<std::string> texts;
  } cases[] = {
      {"both", "CP1 = \"Main\"\r\nCP2 \"Old\" x", {"CP1-Corvane XL -Main", "CP2-TarrowCP -     Old"}},
      {"panel without files is skipped", "CP3 \"Gone\" CP1 \"Main\"", {"CP1-Corvane XL -Main"}},
      {"mark inside a skipped label", "CP3 \"CP1 desk\" \"Main\"", {"CP1-Corvane XL - "}},
      {"mark in a label", "CP1 \"CP2 x\" CP2 \"Old\"", {"CP1-Corvane XL -CP2 x", "CP2-TarrowCP -     Old"}},
      {"mark inside a word", "xCP1 \"Main\"", {"CP1-Corvane XL -Main"}},
      {"no blank ends the scan", "CP1\t\"Main\"", {}},
      {"no closing quote ends the scan", "CP1 \"Main\" CP2 \"Old", {"CP1-Corvane XL -Main"}},
      {"hyphen stays in the text", "CP-1 \"Side\"", {"CP-1-Corvane XL -Side"}},
      {"name that leads out of the folder", "CP1\\..\\..\\CPX \"Out\" CP1/../CP2 \"Up\"", {}},
      {"name and label without end", "CP" + std::string(10000, 'x') + " \"" + std::string(10000, 'y'), {}},
      {"nothing", "", {}},
      {"nothing between", "CP1 \"\"CP2 \"Old\"", {"CP1-Corvane XL -", "CP2-TarrowCP -     Old"}},
  };
  for (const auto& c : cases) EXPECT_EQ(panelTexts(c.devices), c.texts) << c.what;
}

TEST_F(SiteBrowser, FirstHyphenDecidesWhichPanelIsMeant) {
  site.write("c:\\appli\\News\\CP\\appli_cp.ini", "");
  site.write("c:\\appli\\News\\CP-1\\assign\\contents.cnt", "");
  panelTexts("CP-1 \"Side\"");
  const std::vector<PanelEntry> panels = *controlPanels(site.root, kBrowsed, "News");
  ASSERT_EQ(panels.size(), 1U);
  EXPECT_EQ(panels[0].name, "CP");
  EXPECT_EQ(panels[0].label, "Side");
  EXPECT_TRUE(panels[0].olderFamily);
  EXPECT_TRUE(hasWorkplaces(panels[0].text));
  EXPECT_TRUE(isOlderFamily(site.root, kBrowsed, "News", "CP"));
  EXPECT_FALSE(isOlderFamily(site.root, kBrowsed, "News", "CP-1"));
  EXPECT_EQ(beforeHyphen("C-1"), "");
  EXPECT_EQ(beforeHyphen("none"), "");
}

TEST_F(SiteBrowser, ManyInventedPanelsAreScannedQuickly) {
  site.write("c:\\appli\\News\\CP1\\assign\\contents.cnt", "");
  std::string devices;
  for (int i = 0; i < 150000; ++i) devices += "CP" + std::to_string(i) + " ";
  EXPECT_THAT(panelTexts("CP1 \"Main\" " + devices), ElementsAre("CP1-Corvane XL -Main"));
}

TEST(SiteBrowserPaths, AreBuiltFromPlainNamesOnly) {
  EXPECT_EQ(macroFolder("c:\\a\\", "News", "CP1", 2), "c:\\a\\News\\CP1\\macroWP2\\");
  EXPECT_EQ(keyFolder("c:\\a\\", "News", "CP1"), "c:\\a\\News\\CP1\\upk\\");
  EXPECT_EQ(macroFile("f\\", 7), "f\\macro007.mac");
  EXPECT_EQ(macroFile("f\\", ".ma"), "f\\macro.ma.mac");
  EXPECT_EQ(keyFile("f\\", "03"), "f\\key03.upk");
  for (const char* name : {"", "..", "a\\b", "a/b", "c:"}) {
    EXPECT_EQ(macroFolder("c:\\a\\", name, "CP1", 1), "") << name;
    EXPECT_EQ(keyFolder("c:\\a\\", "News", name), "") << name;
  }
}

TEST_F(SiteBrowser, ListsMacrosAndReportsBrokenOnesAfterwards) {
  site.write("c:\\wp\\macro007.mac", macro("Opener"));
  site.write("c:\\wp\\Macro008.MAC", "<macro name=");
  site.write("c:\\wp\\macro009.mac", macro(""));
  site.write("c:\\wp\\macro-12.mac", macro("Odd"));
  site.write("c:\\wp\\macro12.mac", macro("Short"));
  site.write("c:\\wp\\macro.mac", "<macro><data/></macro>");
  site.write("c:\\wp\\x.mac", macro("Tiny"));
  site.write("c:\\wp\\macro010.bak", macro("No"));
  const MacroListing listing = *listMacros(site.root, "c:\\wp\\");
  std::vector<std::pair<std::string, int>> rows;
  for (const MacroRow& row : listing.rows) rows.emplace_back(row.text(), row.number);
  EXPECT_THAT(rows, ::testing::UnorderedElementsAre(std::pair("-12 - Odd", -1), std::pair(".ma - ???", 0),
                                                    std::pair("007 - Opener", 7), std::pair("008 - ???", 8),
                                                    std::pair("009 - ", 9), std::pair("12. - Short", 12),
                                                    std::pair(" - Tiny", 0)));
  EXPECT_THAT(listing.reports, ElementsAre("Cannot parse Macro: c:\\wp\\Macro008.MAC"));

  const std::vector<std::string> names = macroNames(listing.rows);
  ASSERT_EQ(names.size(), 1000U);
  EXPECT_EQ(names[7], "Opener");
  EXPECT_EQ(names[8], "???");
  EXPECT_EQ(names[9], "");
  EXPECT_EQ(names[0], "Tiny");  // the later of two rows with one number
}

TEST_F(SiteBrowser, ListsKeyFilesWithAName) {
  site.write("c:\\k\\key03.upk", "#UPK\nBeginHeader\nFile=key03.upk\nName=MK04\r\nVersion=1.0\n");
  site.write("c:\\k\\key96.upk", "Name=Beyond");
  site.write("c:\\k\\key1.upk", "Name=\n");
  site.write("c:\\k\\KEY05.upk", "Name=Upper\n");
  site.write("c:\\k\\key06.upk", std::string(250, ' ') + "Name=Far\n");
  site.write("c:\\k\\key07.upk", std::string(247, ' ') + "Name=Near\n");
  site.write("c:\\k\\key08.upk", "");
  site.write("c:\\k\\key09.upk\\folder", "");
  std::vector<std::pair<std::string, int>> rows;
  for (const MacroRow& row : listKeyFiles(site.root, "c:\\k\\").value_or({}))
    rows.emplace_back(row.text(), row.number);
  EXPECT_THAT(rows, ElementsAre(std::pair("03 - MK04", 3), std::pair("07 - Ne", 7), std::pair("1. - ", 1),
                                std::pair("96 - Beyond", -1)));
}

}  // namespace
}  // namespace tessaly
