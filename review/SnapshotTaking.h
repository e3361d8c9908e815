#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "review/MacroShelf.h"
#include "review/Snapshot.h"
#include "review/Tries.h"

namespace tessaly {

// Reads all macros of a panel or a folder into a snapshot: whole, or not at all. What is listed but gone when
// it is to be read is absent; whatever else cannot be read ends it, with a reason that says which macro. What
// a panel does not give, as when its line is lost, is tried again on another shelf. Blocking, once; any
// thread.
class SnapshotTaking {
 public:
  // Null where there is none now, as while a panel cannot be reached.
  using ShelfOf = std::function<std::unique_ptr<MacroShelf>(int workplace)>;

  struct Progress {
    int workplace;          // as in a snapshot
    std::size_t place;      // of the workplace among those that are read, from 0
    std::size_t done, all;  // macros of it
  };
  using Tell = std::function<void(const Progress&)>;

  struct Rules {
    // What cannot be read as a macro is nonsense on the line, and tried again as what does not come.
    bool onlyMacros = false;
    Tries::Rules tries = {};  // of a macro that a panel does not give
  };

  // Shelves are made and used on the thread of `take`, one at a time.
  SnapshotTaking(Snapshot::Origin origin, std::vector<int> workplaces, ShelfOf shelfOf, Rules rules);

  // `tell` is called on this thread, before the first macro of a workplace and after each.
  [[nodiscard]] Expected<Snapshot> take(std::chrono::sys_seconds time, const Tell& tell);

  [[nodiscard]] std::size_t workplaces() const { return workplaces_.size(); }

  // From another thread; what is taken then, or later, fails with kCancelled.
  void cancel();

 private:
  [[nodiscard]] Outcome takeWorkplace(std::size_t place, Snapshot& snapshot, const Tell& tell);
  [[nodiscard]] Outcome takeMacro(int workplace, const MacroShelf::Held& held, Snapshot& snapshot);
  template <class T>
  [[nodiscard]] Expected<T> tried(int workplace, const std::function<Expected<T>(MacroShelf&)>& read);
  void setShelf(std::unique_ptr<MacroShelf> shelf);

  Snapshot::Origin origin_;
  std::vector<int> workplaces_;
  ShelfOf shelfOf_;
  bool onlyMacros_;
  Tries tries_;
  std::size_t bytes_ = 0;
  std::mutex mutex_;
  std::unique_ptr<MacroShelf> shelf_;  // of the workplace that is read; changed under the mutex
};

}  // namespace tessaly
