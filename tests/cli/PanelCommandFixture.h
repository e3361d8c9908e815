#pragma once

#include <atomic>

#include "panelsim/PanelSimulator.h"
#include "tests/cli/Ran.h"

namespace tessaly {

inline constexpr const char* kLocal = "c:\\macros\\macro001.mac";
inline std::string macro(const std::string& name, const std::string& commands = {}) {
  return "<macro name=\"" + name + "\"><data>" + commands + "</data></macro>";
}
inline const std::string kOpener = macro("Opener");

// The program against a panel of this process, with both of its services.
class PanelCommands : public testing::Test {
 protected:
  PanelCommands()
      : panel(options(tree.root.path().string()), [this](const std::string& line) {
          if (line.find(" calls ") != std::string::npos) ++calls;
        }) {
    site.write(kLocal, kOpener);
    tree.write(remote(2, "007"), macro("Seven"));
    tree.write(remote(2, "999"), macro("Last &amp; least"));
    std::string reason;
    EXPECT_TRUE(panel.start(reason)) << reason;
  }

  static PanelOptions options(const std::string& root) {
    PanelOptions options;
    options.controlPort = 0;
    options.ftpPort = 0;
    options.root = root;
    return options;
  }
  static std::string remote(int workplace, const std::string& number) {
    return "flash/data/PANEL/macro/workplace" + std::to_string(workplace) + "/macro" + number + ".mac";
  }

  Ran run(std::vector<std::string> words, const std::string& input = {}) {
    words.insert(words.begin(), {"panel", "127.0.0.1"});
    words.insert(words.end(), {"--control-port", std::to_string(panel.controlPort()), "--ftp-port",
                               std::to_string(panel.ftpPort())});
    return ranOver(site, std::move(words), input);
  }

  std::atomic<int> calls{0};
  TestSite tree;
  TestSite site;
  PanelSimulator panel;
};

}  // namespace tessaly
