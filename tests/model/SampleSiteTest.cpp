#include <gtest/gtest.h>

#include "dictionary/InterfaceFile.h"
#include "model/CommandLine.h"
#include "model/KeyFile.h"
#include "model/SiteBrowser.h"
#include "tests/support/BuildPaths.h"
#include "values/SourceNames.h"

namespace tessaly {
namespace {

constexpr const char* kApplications = R"(c:\programme\rv48\appli\)";

// The site that is shipped with the program, read as the program reads it.
struct SampleSiteTest : testing::Test {
  SiteRoot root{sourcePath("site")};
  DecodingLists lists{root};
};

TEST_F(SampleSiteTest, DictionaryServesTheEditors) {
  FunctionDictionary dictionary;
  loadFunctionDictionary(root, dictionary, [](const std::string& text) { ADD_FAILURE() << text; });
  EXPECT_GE(dictionary.functionCount(), 40'000U);
  const auto names = [](const std::vector<PanelSource>& sources) {
    std::string all;
    for (const PanelSource& source : sources) all += source.panelName + '=' + source.displayName + '\n';
    return all;
  };
  EXPECT_EQ(names(inputSources(dictionary)), names(panelSources(1)));
  for (std::size_t i = 0; i < dictionary.functionCount(); ++i)
    EXPECT_EQ(dictionary.function(i).description().find('$'), std::string::npos) << dictionary.name(i);
}

TEST_F(SampleSiteTest, KeyFilesReadInWords) {
  std::size_t described = 0, empty = 0;
  for (const std::string& application : applications(root, kApplications).value_or({}))
    for (const PanelEntry& panel : controlPanels(root, kApplications, application).value_or({})) {
      if (!panel.olderFamily) continue;
      const std::string folder = keyFolder(kApplications, application, panel.name);
      for (const MacroRow& row : listKeyFiles(root, folder).value_or({})) {
        KeyFile key;
        key.load(root, keyFile(folder, row.numberText), row.number);
        for (const ClassicCommand& command : key.commands()) {
          ++(command.valid() ? described : empty);
          if (!command.valid()) continue;
          const std::string line = keyCommandLine(command, {}, {FunctionDictionary(), lists});
          for (const char* raw : {"kw: ", "ac: ", "cd: ", "not enough"})
            EXPECT_EQ(line.find(raw), std::string::npos) << folder << row.text() << ": " << line;
        }
      }
    }
  EXPECT_GE(described, 300U);
  EXPECT_EQ(empty, 1U);  // the key without commands
}

}  // namespace
}  // namespace tessaly
