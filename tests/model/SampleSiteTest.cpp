#include <cstdio>
#include <gtest/gtest.h>
#include <set>
#include <sstream>

#include "dictionary/InterfaceFile.h"
#include "model/CommandLine.h"
#include "model/KeyFile.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "tests/support/BuildPaths.h"
#include "tests/support/LoadCommands.h"
#include "tests/support/TestSite.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

constexpr const char* kApplications = R"(c:\programme\rv48\appli\)";

// The site that is shipped with the program, read as the program reads it.
struct SampleSiteTest : testing::Test {
  // Calls back with the folder of every workplace, or the key folder of every older-family panel.
  template <typename Use>
  void forEachFolder(bool keys, Use use) {
    for (const std::string& application : applications(root, kApplications).value_or({}))
      for (const PanelEntry& panel : controlPanels(root, kApplications, application).value_or({})) {
        if (keys && panel.olderFamily) use(keyFolder(kApplications, application, panel.name));
        for (int workplace = 1; !keys && !panel.olderFamily && workplace <= 2; ++workplace)
          use(macroFolder(kApplications, application, panel.name, workplace));
      }
  }

  SiteRoot root{sourcePath("site")};
  RecordingMessages messages;
  SiteAccess access{root, messages};
  DecodingLists lists{root};
};

TEST_F(SampleSiteTest, DictionaryServesTheEditors) {
  FunctionDictionary dictionary;
  loadFunctionDictionary(root, dictionary, [](const std::string& text) { ADD_FAILURE() << text; });
  EXPECT_GE(dictionary.functionCount(), 40'000U);
  const std::vector<PanelSource> inputs = inputSources(dictionary), &expected = panelSources(1);
  ASSERT_EQ(inputs.size(), expected.size());
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    EXPECT_EQ(inputs[i].panelName, expected[i].panelName);
    EXPECT_EQ(inputs[i].displayName, expected[i].displayName);
  }
  std::set<std::string> groups, segments;
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i) {
    const FunctionRecord function = dictionary.function(i);
    groups.insert(function.group());
    std::string_view rest = function.name();
    for (std::size_t dot; (dot = rest.find('.')) != rest.npos; rest.remove_prefix(dot + 1))
      segments.emplace(rest.substr(0, dot));
    EXPECT_EQ(function.description().find('$'), std::string::npos) << function.name();
  }
  for (int category = 0; category <= 6; ++category)
    for (const PanelSource& source : panelSources(category))
      EXPECT_TRUE(segments.contains(source.panelName)) << source.panelName;
  std::istringstream destinations(
      "PST.ME4 ME4.KEY4.KEY ME3.KEY6.KEY ME3.KEY4.WIPE ME4.TRANSI ME3.UTIL2 ME3.WIPE2 "
      "ME3.IDPM.CHANNEL4 ME3.KEY4.IDPM DpmEffect.ME3 YUV_CORR.ME4 RGB_CORR.ME3 BACKGROUND3 "
      "TEST_PATTERN AUX48 MACHINE36 RAMCHAN6 RAM6 CHANNEL4.EDPM EDPM_MASTER RGB_INP_CORR.INPUT96 "
      "YUV_INP_CORR.INPUT239");
  for (std::string destination; destinations >> destination;)
    EXPECT_TRUE(groups.contains(destination)) << destination;
}

TEST_F(SampleSiteTest, MacrosLoadAndReadWell) {
  FunctionDictionary dictionary;
  loadFunctionDictionary(root, dictionary, {});
  std::size_t macros = 0, commands = 0, unknown = 0;
  forEachFolder(false, [&](const std::string& folder) {
    const MacroListing listing = *listMacros(root, folder);
    EXPECT_FALSE(listing.rows.empty()) << folder;
    EXPECT_TRUE(listing.reports.empty()) << folder;
    for (const MacroRow& row : listing.rows) {
      MacroCommands loaded;
      EXPECT_TRUE(loadCommands(access, macroFile(folder, row.numberText), loaded)) << folder << row.text();
      ++macros;
      commands += loaded.size();
      for (const MacroCommand& command : loaded)
        unknown += commandLine(command, {}, {dictionary, lists}).starts_with("???");
    }
  });
  EXPECT_TRUE(messages.take().empty());
  EXPECT_GE(macros, 120U);
  EXPECT_GE(commands, 9'000U);
  EXPECT_EQ(unknown, 0U);
}

TEST_F(SampleSiteTest, DecodingListsLoad) {
  std::size_t loaded = 0;
  std::set<ParameterType> types;
  for (const auto& file : std::filesystem::recursive_directory_iterator(
           root.resolve(R"(c:\Programme\RV48\bin\MacroCdCo_Tarrow)"))) {
    unsigned cd = 0, co = 0;
    if (std::sscanf(file.path().filename().string().c_str(), "Cd-0x%2x-Co-0x%2x.ini", &cd, &co) != 2)
      continue;
    const auto list = lists.list(static_cast<std::uint8_t>(cd), static_cast<std::uint8_t>(co));
    ASSERT_NE(list, nullptr) << file.path();
    ++loaded;
    for (const KeywordEntry& entry : list->entries())
      for (const ParameterDescriptor& parameter : entry.parameters) types.insert(parameter.type);
  }
  EXPECT_GE(loaded, 40U);
  EXPECT_EQ(types.size(), 12U);
  EXPECT_FALSE(types.contains(ParameterType::kUnknown));
}

TEST_F(SampleSiteTest, KeyFilesReadInWords) {
  std::size_t described = 0, empty = 0;
  forEachFolder(true, [&](const std::string& folder) {
    for (const MacroRow& row : listKeyFiles(root, folder).value_or({})) {
      KeyFile key;
      key.load(root, keyFile(folder, row.numberText), row.number);
      for (const ClassicCommand& command : key.commands()) {
        if (!command.valid()) {
          ++empty;
          continue;
        }
        ++described;
        const std::string line = keyCommandLine(command, {}, {FunctionDictionary(), lists});
        for (const char* raw : {"kw: ", "ac: ", "cd: ", "not enough"})
          EXPECT_EQ(line.find(raw), std::string::npos) << folder << row.text() << ": " << line;
      }
    }
  });
  EXPECT_GE(described, 300U);
  EXPECT_EQ(empty, 1U);  // the key without commands
}

}  // namespace
}  // namespace tessaly
