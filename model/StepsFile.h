#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "model/EditHistory.h"
#include "model/StepsText.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// Why steps are not, or no longer, on the disk.
struct StepsTrouble {
  // What was found and put aside; none when they could not be written.
  std::optional<StepsFault> found;
};

// The steps of a pane's working copy, in memory and in a file beside its recovery record. A change is
// announced, which brings it to the disk, then the working file is written, then the change is settled:
// whenever the program dies, the file tells of the working file's bytes, and of one more change at most. What
// cannot be written stops nothing, and is told by `takeTrouble`. One thread.
class StepsFile {
 public:
  // Observes the root. A site path.
  StepsFile(const SiteRoot& root, std::string path) : root_(root), path_(std::move(path)) {}

  [[nodiscard]] const EditHistory& row() const { return row_; }

  // The macro at `place`, nowhere without one, is shown with these bytes. Its row goes on when it was shown
  // with them before; else it is what an earlier run has left, when that led to them. Any other row ends.
  void begin(const std::optional<MacroPlace>& place, const ContentCheck& held);
  // The macro that is shown belongs to that place from now on, and its row with it.
  void follow(const MacroPlace& place);
  // Nothing is shown any more.
  void end();

  void announce(StepsChange change);
  // Whether what was announced has happened.
  void settle(bool done);
  // What the macro's place holds, if that is known. It is not while the place is being written: a start after
  // a program that died then must not take the old content for what is there.
  void noteSaved(const std::optional<ContentCheck>& saved) {
    writeSaved(saved);
    setSaved(saved);
  }
  // Its two parts: the file and the row.
  void writeSaved(const std::optional<ContentCheck>& saved);
  void setSaved(const std::optional<ContentCheck>& saved) { row_.setSaved(saved); }
  void noteSaving() { writeSaved({}); }

  // Since it was last asked.
  [[nodiscard]] std::optional<StepsTrouble> takeTrouble() { return std::exchange(trouble_, std::nullopt); }

 private:
  void takeUp(const ContentCheck& held);
  void putAside(StepsFault fault);
  void write(const StepsChange& change);

  const SiteRoot& root_;
  std::string path_;
  std::optional<MacroPlace> place_;  // of the row; none is kept without
  EditHistory row_;
  std::optional<StepsChange> announced_;
  std::size_t size_ = 0;      // of the file as far as it counts; 0 when it is to be written whole
  std::size_t lastSize_ = 0;  // of its last record
  std::optional<StepsTrouble> trouble_;
};

}  // namespace tessaly
