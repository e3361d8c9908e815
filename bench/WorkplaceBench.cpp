// A workplace beside another, and many macros sent as one batch, beside what their bytes cost by themselves.
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

#include "bench/BareTransfers.h"
#include "bench/Table.h"
#include "model/MacroFile.h"
#include "model/SiteBrowser.h"
#include "panelsim/PanelSimulator.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/DiskShelf.h"
#include "review/MacroBatch.h"
#include "review/PanelShelf.h"
#include "review/WorkplaceComparison.h"

namespace tessaly::bench::workplace_rows {
namespace {

constexpr int kMacros = 1000, kSent = 100;
constexpr const char* kAddress = "127.0.0.1";
constexpr const char* kLeft = "c:\\workplaces\\left\\";
constexpr const char* kRight = "c:\\workplaces\\right\\";

std::string macro(int number, int version) {
  std::string bytes = format("<macro name=\"Macro %d\"><data>", number);
  for (int command = 0; command < 100; ++command)
    bytes += format(
        "<cmd fid=\"QMF1.ME1.KEY1.CLIP.SET\" workplace=\"1\"><param name=\"VALUE\" value=\"%d\"/></cmd>",
        version * 1000 + command);
  return bytes + "</data></macro>";
}

// Two folders of 1,000 macros of 9 kB, 1 % different, and a panel with 100 of them.
struct Workplaces {
  SiteRoot root{scratchFolder()};
  MacroHistory history{root};
  PanelClient client;
  std::unique_ptr<PanelSimulator> panel;
  int version = 1;

  Workplaces() {
    for (int number = 0; number < kMacros; ++number) {
      write(macroFile(kLeft, number), macro(number, 1));
      write(macroFile(kRight, number), macro(number, number % 100 == 0 ? 2 : 1));
      if (number < kSent) write(remote(number), macro(number, 0));
    }
    PanelOptions options;
    options.controlPort = options.ftpPort = 0;
    options.root = (scratchFolder() / "batch").string();
    panel = std::make_unique<PanelSimulator>(options, [](const std::string&) {});
    std::string reason;
    if (!panel->start(reason) ||
        !client.connect(std::string(kAddress) + ':' + std::to_string(panel->controlPort())))
      std::abort();
  }
  ~Workplaces() { client.disconnect(); }

  static std::string remote(int number) {
    return (scratchFolder() / "batch/flash/data/PANEL/macro/workplace1" /
            macroFileName(MacroNumber::textOf(number)))
        .string();
  }
  void write(const std::string& path, const std::string& bytes) const {
    std::filesystem::create_directories(root.resolve(path).parent_path());
    std::ofstream(root.resolve(path), std::ios::binary) << bytes;
  }
};

std::unique_ptr<Workplaces> workplaces;

void prepare() {
  if (!workplaces) workplaces = std::make_unique<Workplaces>();
}

void compareFolders() {
  DiskShelf left(workplaces->root, workplaces->history, kLeft);
  DiskShelf right(workplaces->root, workplaces->history, kRight);
  int different = 0;
  WorkplaceComparison comparison(left, right);
  const Outcome compared = comparison.run([&](const WorkplaceRow& row, std::size_t) {
    different += row.state == WorkplaceRow::State::kDifferent ? 1 : 0;
  });
  if (!compared || different != kMacros / 100) std::abort();
}

void readFolders() {
  for (const char* folder : {kLeft, kRight}) {
    for (int number = 0; number < kMacros; ++number) {
      const auto bytes = readFile(workplaces->root, macroFile(folder, number));
      if (!bytes) std::abort();
      keep(&bytes);
    }
  }
}

// What the panel holds is read, the new macro sent and read back, each time other bytes.
void sendBatch() {
  MacroHistory history(workplaces->root);
  PanelMacros macros(workplaces->client, workplaces->root,
                     ftpTransfers(workplaces->panel->ftpPort(), FtpClient::Connections::kKept),
                     &readsAsMacro);
  macros.keepIn(history);
  macros.stayConnected();
  PanelShelf shelf(macros, workplaces->client, history, kAddress, 1);
  BatchPlaces places(workplaces->root, history, [&](const MacroPlace&) { return &shelf; });
  std::vector<BatchItem> items;
  ++workplaces->version;
  for (int number = 0; number < kSent; ++number)
    items.push_back({{{}, kAddress, 1, MacroNumber::textOf(number)}, macro(number, workplaces->version)});
  MacroBatch batch(places, "bench", MacroChange::kCopy, MacroBatch::Mode::kAsManyAsGo, std::move(items));
  if (!batch.run() || batch.doneCount() != kSent) std::abort();
}

void sendBare() {
  ++workplaces->version;
  const std::string bytes = macro(0, workplaces->version);
  const BareTransfers wire(workplaces->panel->ftpPort());
  for (int number = 0; number < kSent; ++number) {
    const std::string path =
        "/flash/data/PANEL/macro/workplace1/" + macroFileName(MacroNumber::textOf(number));
    keep(wire.get(path).data());
    wire.put(bytes, path);
    keep(wire.get(path).data());
  }
}

const bool kCompared = addPair({.name = "1,000 macros of a folder beside 1,000 others",
                                .measured = compareFolders,
                                .limit = readFolders,
                                .goal = 1.3,
                                .prepare = prepare});
const bool kBatch = addPair({.name = "batch of 100 macros to a panel, beside their bare transfers",
                             .measured = sendBatch,
                             .limit = sendBare,
                             .goal = 1.2,
                             .prepare = prepare});

}  // namespace
}  // namespace tessaly::bench::workplace_rows
