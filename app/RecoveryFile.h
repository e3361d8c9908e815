#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "app/MacroTarget.h"
#include "platform/ContentCheck.h"
#include "platform/Outcome.h"
#include "platform/SiteRoot.h"

namespace tessaly {

// What has to be known about a pane's unsaved changes to take them up again after the program has died.
struct RecoveryRecord {
  MacroTarget target;
  std::int64_t since = 0;   // of the first change; milliseconds since 1970, UTC
  std::int64_t edited = 0;  // of the last one
  // Of the working file after the last change; none while values are being written straight into it.
  std::optional<ContentCheck> check;
  bool setAside = false;  // the bytes lie beside the record, and the working file may be used again
  // The file that a macro without a place of its own was opened from; the target has no more than a name
  // then.
  std::string loose = {};
  // Of what the target held when the macro was opened or last saved there; none when that is unknown.
  std::optional<ContentCheck> held = {};
};

// Whose the changes are, as the history knows it.
[[nodiscard]] MacroPlace placeOf(const RecoveryRecord& record);

// The record of one pane, under the root beside the drives (docs/history-format.md). Written whole.
class RecoveryFile {
 public:
  // Observes the root. `letter` is the pane's.
  RecoveryFile(const SiteRoot& root, char letter);

  // What was set aside before goes, unless the record tells of it.
  Outcome write(const RecoveryRecord& record) const;
  void remove() const;

  // A damaged one is a failure of the kind `kChanged`.
  [[nodiscard]] Expected<RecoveryRecord> read() const;
  // There is surely no record.
  [[nodiscard]] bool isMissing() const;

  // Where bytes are set aside; site path.
  [[nodiscard]] const std::string& besidePath() const { return beside_; }

  // Where the steps of the working copy lie; site path. They are set aside with the bytes, and go with them.
  [[nodiscard]] const std::string& stepsPath() const { return steps_; }
  void setStepsAside() const;
  void bringStepsBack() const;

 private:
  void removeBeside() const;

  const SiteRoot& root_;
  std::string folder_, record_, beside_, steps_, besideSteps_;  // site paths
};

[[nodiscard]] std::int64_t millisecondsNow();

}  // namespace tessaly
