#include "app/Shelves.h"

#include "review/DiskShelf.h"
#include "review/PanelShelf.h"
#include "review/SnapshotShelf.h"

namespace tessaly {
namespace {

struct FolderShelf {
  FolderShelf(const SiteRoot& site, const std::string& path)
      : root(site), history(root), shelf(root, history, path) {}
  SiteRoot root;
  MacroHistory history;
  DiskShelf shelf;
};

struct OwnPanelShelf {
  OwnPanelShelf(const SiteRoot& site, PanelClient& client, const PanelMacros& panel,
                const HostAddress& address, int workplace)
      : root(site),
        history(root),
        macros(panel.forMany()),
        shelf(*macros, client, history, address, workplace) {
    macros->keepIn(history);
  }
  SiteRoot root;
  MacroHistory history;
  std::unique_ptr<PanelMacros> macros;
  PanelShelf shelf;
};

}  // namespace

WorkplaceCopy::MakeShelf Shelves::folder(const std::string& path) const {
  return [root = root_, path]() -> std::shared_ptr<MacroShelf> {
    const auto made = std::make_shared<FolderShelf>(root, path);
    return {made, &made->shelf};
  };
}

WorkplaceCopy::MakeShelf Shelves::panel(const HostAddress& address, int workplace) const {
  return [*this, address, workplace]() -> std::shared_ptr<MacroShelf> {
    const auto made = std::make_shared<OwnPanelShelf>(root_, *client_, *macros_, address, workplace);
    return {made, &made->shelf};
  };
}

WorkplaceCopy::MakeShelf Shelves::snapshot(std::shared_ptr<const Snapshot> snapshot, int workplace,
                                           const std::string& path) {
  return [snapshot = std::move(snapshot), workplace, path] {
    return std::make_shared<SnapshotShelf>(snapshot, workplace, path);
  };
}

BatchRoom::BatchRoom(const Shelves& shelves, std::set<HostAddress> connected)
    : shelves_(shelves),
      connected_(std::move(connected)),
      history_(shelves_.root()),
      places_(shelves_.root(), history_, [this](const MacroPlace& place) { return shelfOf(place); }) {}

MacroShelf* BatchRoom::shelfOf(const MacroPlace& place) {
  if (!connected_.contains(place.address)) return nullptr;
  auto& shelf = open_[{place.address, place.workplace}];
  if (!shelf) shelf = shelves_.panel(place.address, place.workplace)();
  return shelf.get();
}

}  // namespace tessaly
