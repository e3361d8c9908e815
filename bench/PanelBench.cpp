// The panel's names and files beside what the wire alone costs.
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "bench/BareLine.h"
#include "bench/Table.h"
#include "link/MacroNames.h"
#include "link/PanelMacros.h"
#include "model/MacroFile.h"
#include "panelsim/PanelSimulator.h"

namespace tessaly::bench::panel_rows {
namespace {

constexpr int kNames = 1000;
constexpr const char* kFile = "sent.mac";  // under the site root

struct Counter : MacroNamesView {
  [[nodiscard]] bool showsPanel(Pane pane) const override { return pane == Pane::kA; }
  void rebuildMacros(Pane) override {}
};

// A panel with 1,000 macros, and a client that is connected to it.
struct Line {
  Line() {
    PanelOptions options;
    options.controlPort = options.ftpPort = 0;
    options.root = (scratchFolder() / "panel").string();
    const auto folder = scratchFolder() / "panel/flash/data/PANEL/macro/workplace1";
    std::filesystem::create_directories(folder);
    for (int number = 0; number < kNames; ++number) {
      char name[16];
      std::snprintf(name, sizeof name, "macro%03d.mac", number);
      std::ofstream(folder / name) << "<macro name=\"Macro number " << number << "\"><data></data></macro>";
    }
    panel = std::make_unique<PanelSimulator>(options, [](const std::string&) {});
    std::string reason;
    if (!panel->start(reason) || !client.connect("127.0.0.1:" + std::to_string(panel->controlPort())))
      std::abort();
  }
  ~Line() { client.disconnect(); }

  std::unique_ptr<PanelSimulator> panel;
  PanelClient client;
};

std::unique_ptr<Line> line;

void prepare() {
  if (!line) line = std::make_unique<Line>();
}

// From the subscription to the last of the names in the table.
void receiveNames() {
  line->client.disconnect();
  while (!line->client.connect("127.0.0.1:" + std::to_string(line->panel->controlPort()))) {
  }
  Counter view;
  PanelSubscriptions subscriptions(line->client);
  MacroNames names(line->client, subscriptions, view);
  names.subscribe(1);
  while (names.name(Pane::kA, kNames - 1).empty()) std::this_thread::yield();
}

void countLines() {
  std::vector<std::string> names;
  for (int number = 0; number < kNames; ++number)
    names.push_back("PANEL.MACRO1.REG" + std::to_string(number) + ".NAME");
  subscribeAndCount(line->panel->controlPort(), names);
}

// One macro sent, and the panel told to read its macros again.
void upload() {
  const SiteRoot root(scratchFolder());
  PanelMacros macros(line->client, root, ftpTransfers(line->panel->ftpPort()), &readsAsMacro);
  if (macros.upload("127.0.0.1", 2, "007", kFile).transfer != FtpClient::Result::kDone) std::abort();
}

void uploadByCurl() {
  const std::string command = "curl --silent --fail --disable-epsv -u target:vintrosa -T " +
                              (scratchFolder() / "sent.mac").string() +
                              " 'ftp://127.0.0.1:" + std::to_string(line->panel->ftpPort()) +
                              "/%2Fflash/data/PANEL/macro/workplace2/macro008.mac'";
  if (std::system(command.c_str()) != 0) std::abort();
}

void prepareUpload() {
  prepare();
  std::ofstream(scratchFolder() / "sent.mac")
      << "<macro name=\"m\"><data>" << std::string(200000, ' ') << "</data></macro>";
  if (line->client.state() != kPanelConnected &&
      !line->client.connect("127.0.0.1:" + std::to_string(line->panel->controlPort())))
    std::abort();
}

const bool kRegistered = addPair({.name = "1,000 names from the panel to the table",
                                  .measured = receiveNames,
                                  .limit = countLines,
                                  .goal = 5,
                                  .prepare = prepare}) &&
                         addPair({.name = "upload and reload call, beside the curl program",
                                  .measured = upload,
                                  .limit = uploadByCurl,
                                  .goal = 1.2,
                                  .prepare = prepareUpload});

}  // namespace
}  // namespace tessaly::bench::panel_rows
