#include "cli/PanelShelves.h"

#include <utility>

#include "model/MacroFile.h"
#include "review/PanelShelf.h"

namespace tessaly {

PanelShelves::PanelShelves(const SiteRoot& root, MacroHistory& history, PanelPlace place)
    : place_(std::move(place)),
      history_(history),
      macros_(client_, root, ftpTransfers(place_.ftpPort, FtpClient::Connections::kKept), &readsAsMacro) {
  macros_.keepIn(history);
  macros_.stayConnected();
  xctlInit();
}

PanelShelves::~PanelShelves() {
  shelves_.clear();
  client_.disconnect();
}

bool PanelShelves::open() { return client_.state() == kPanelConnected || client_.connect(place_.control()); }

std::unique_ptr<MacroShelf> PanelShelves::make(int workplace) {
  if (!open()) return nullptr;
  return std::make_unique<PanelShelf>(macros_, client_, history_, place_.address, workplace);
}

MacroShelf* PanelShelves::shelf(int workplace) {
  if (!open()) return nullptr;
  auto& shelf = shelves_[workplace];
  if (!shelf) shelf = make(workplace);
  return shelf.get();
}

}  // namespace tessaly
