// A panel's macros in one file, beside what fetching them costs by itself.
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

#include "bench/BareTransfers.h"
#include "bench/Table.h"
#include "model/MacroFile.h"
#include "model/MacroHistory.h"
#include "panelsim/PanelSimulator.h"
#include "review/PanelShelf.h"
#include "review/SnapshotTaking.h"

namespace tessaly::bench::snapshot_rows {
namespace {

constexpr int kMacros = 1000;
constexpr const char* kAddress = "127.0.0.1";
constexpr const char* kCommands =
    R"(<cmd fid="QMF1.ME1.KEY1.CLIP.SET" workplace="1"><param name="VALUE" value="0.500000"/></cmd>)";

// A panel with 1,000 macros of 4 kB in workplace 1.
struct FullPanel {
  FullPanel() {
    PanelOptions options;
    options.controlPort = options.ftpPort = 0;
    options.root = (scratchFolder() / "full").string();
    const auto folder = scratchFolder() / "full/flash/data/PANEL/macro/workplace1";
    std::filesystem::create_directories(folder);
    std::filesystem::create_directories(scratchFolder() / "fetched");
    for (int number = 0; number < kMacros; ++number) {
      std::ofstream file(folder / macroFileName(MacroNumber::textOf(number)));
      file << "<macro name=\"Macro number " << number << "\"><data>";
      for (int command = 0; command < 40; ++command) file << kCommands;
      file << "</data></macro>";
    }
    panel = std::make_unique<PanelSimulator>(options, [](const std::string&) {});
    std::string reason;
    if (!panel->start(reason) ||
        !client.connect(std::string(kAddress) + ':' + std::to_string(panel->controlPort())))
      std::abort();
  }
  ~FullPanel() { client.disconnect(); }

  std::unique_ptr<PanelSimulator> panel;
  PanelClient client;
};

std::unique_ptr<FullPanel> full;

void prepare() {
  if (!full) full = std::make_unique<FullPanel>();
}

void snapshot() {
  const SiteRoot root(scratchFolder());
  MacroHistory history(root);
  PanelMacros macros(full->client, root, ftpTransfers(full->panel->ftpPort(), FtpClient::Connections::kKept),
                     &readsAsMacro);
  macros.stayConnected();
  SnapshotTaking taking({kAddress, {}}, {1},
                        [&](int workplace) {
                          return std::make_unique<PanelShelf>(macros, full->client, history, kAddress,
                                                              workplace);
                        },
                        {.onlyMacros = true});
  const auto taken = taking.take(std::chrono::sys_seconds{}, [](const SnapshotTaking::Progress&) {});
  if (!taken || taken->macros.size() != kMacros || !saveSnapshot(root, "panel.zip", *taken).written())
    std::abort();
}

void fetchBare() {
  const BareTransfers wire(full->panel->ftpPort());
  for (int number = 0; number < kMacros; ++number) {
    const std::string file = macroFileName(MacroNumber::textOf(number));
    std::ofstream(scratchFolder() / "fetched" / file, std::ios::binary)
        << wire.get("/flash/data/PANEL/macro/workplace1/" + file);
  }
}

const bool kRegistered = addPair({.name = "snapshot of 1,000 macros, beside their bare transfers",
                                  .measured = snapshot,
                                  .limit = fetchBare,
                                  .goal = 1.2,
                                  .prepare = prepare});

}  // namespace
}  // namespace tessaly::bench::snapshot_rows
