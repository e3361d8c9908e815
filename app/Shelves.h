#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

#include "link/PanelMacros.h"
#include "model/MacroHistory.h"
#include "review/BatchPlaces.h"
#include "review/Snapshot.h"
#include "review/WorkplaceCopy.h"

namespace tessaly {

// Makes shelves for work on a thread of its own: each has its own way to a panel's files and its own hand in
// the history, and keeps alive what it needs but the client. A plain value; any thread.
class Shelves {
 public:
  // `transfers` keep their connections. Observes the client, which is never freed.
  Shelves(SiteRoot root, PanelClient& client, MacroTransferFactory transfers, bool demo)
      : root_(std::move(root)), client_(&client), transfers_(std::move(transfers)), demo_(demo) {}

  [[nodiscard]] const SiteRoot& root() const { return root_; }
  [[nodiscard]] WorkplaceCopy::MakeShelf folder(const std::string& path) const;
  [[nodiscard]] WorkplaceCopy::MakeShelf panel(const std::string& address, int workplace) const;
  [[nodiscard]] static WorkplaceCopy::MakeShelf snapshot(std::shared_ptr<const Snapshot> snapshot,
                                                         int workplace, const std::string& path);

 private:
  SiteRoot root_;
  PanelClient* client_;
  MacroTransferFactory transfers_;
  bool demo_;
};

// Where a batch reads and writes that is no copy between two shelves: files, and the panels at the addresses
// that panes are connected to. One thread, `cancel` aside.
class BatchRoom {
 public:
  BatchRoom(const Shelves& shelves, std::set<std::string> connected);

  [[nodiscard]] BatchPlaces& places() { return places_; }
  void cancel() { places_.cancel(); }

 private:
  [[nodiscard]] MacroShelf* shelfOf(const MacroPlace& place);

  Shelves shelves_;
  std::set<std::string> connected_;
  MacroHistory history_;
  std::map<std::pair<std::string, int>, std::shared_ptr<MacroShelf>> open_;
  BatchPlaces places_;
};

}  // namespace tessaly
