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
// the history, and keeps alive what it needs but what is observed. A plain value; any thread.
class Shelves {
 public:
  // Observes both; `macros` gives each the way that is its own.
  Shelves(SiteRoot root, PanelClient& client, const PanelMacros& macros)
      : root_(std::move(root)), client_(&client), macros_(&macros) {}

  [[nodiscard]] const SiteRoot& root() const { return root_; }
  [[nodiscard]] WorkplaceCopy::MakeShelf folder(const std::string& path) const;
  [[nodiscard]] WorkplaceCopy::MakeShelf panel(const HostAddress& address, int workplace) const;
  [[nodiscard]] static WorkplaceCopy::MakeShelf snapshot(std::shared_ptr<const Snapshot> snapshot,
                                                         int workplace, const std::string& path);

 private:
  SiteRoot root_;
  PanelClient* client_;
  const PanelMacros* macros_;
};

// Where a batch reads and writes that is no copy between two shelves: files, and the panels at the addresses
// that panes are connected to. One thread, `cancel` aside.
class BatchRoom {
 public:
  BatchRoom(const Shelves& shelves, std::set<HostAddress> connected);

  [[nodiscard]] BatchPlaces& places() { return places_; }
  void cancel() { places_.cancel(); }

 private:
  [[nodiscard]] MacroShelf* shelfOf(const MacroPlace& place);

  Shelves shelves_;
  std::set<HostAddress> connected_;
  MacroHistory history_;
  std::map<std::pair<HostAddress, int>, std::shared_ptr<MacroShelf>> open_;
  BatchPlaces places_;
};

}  // namespace tessaly
