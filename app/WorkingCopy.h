#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/RecoveryFile.h"
#include "model/KeyFile.h"
#include "model/MacroCommand.h"
#include "model/MacroFile.h"
#include "platform/SiteAccess.h"

namespace tessaly {

// The working copy of one pane: what is shown, the file behind it, where it belongs and whether it has
// unsaved changes. Every change of the file passes through here, and while there are unsaved ones a record of
// them lies beside the site, from which the next start of a program that has died takes them up. GUI thread.
class WorkingCopy {
 public:
  enum class Content { kNothing, kMacro, kKeyFile };

  WorkingCopy(SiteAccess site, std::string path, RecoveryFile recovery)
      : site_(site), path_(std::move(path)), recovery_(std::move(recovery)) {}

  // Shows nothing; the file stays. Leaves edit state.
  void reset();
  // Loads the file after the target's macro was copied or downloaded onto it, of which `filled` tells the
  // outcome. When that failed the old working copy is shown, but belongs to no macro. False when the file
  // cannot be loaded; nothing is shown then.
  bool open(const MacroTarget& target, bool filled);
  void showKeyFile(KeyFile keyFile);
  // Loads the file, which holds what an earlier run of the program left unsaved, and enters edit state as of
  // then. False when it cannot be loaded; nothing is shown then.
  bool takeUp(const RecoveryRecord& record);

  // Each changes the file, shows what it holds now and enters edit state. False when the file was not
  // changed; what is shown is then what the file holds.
  bool insert(const CommandDraft& draft, int position, int workplace, InsertMode mode);
  bool insertClassic(const ClassicCommand& command, int position, InsertMode mode, int mainframe);
  // With one save, so that no failure loses the old command.
  bool replace(int position, const CommandDraft& draft, int workplace);
  bool replaceClassic(int position, const ClassicCommand& command, int mainframe);
  bool remove(int position);

  // The value update: values go to the held document or straight into the file.
  bool hold() { return held_.open(site_, path_); }
  bool setHeldValue(int number, const std::string& value) { return held_.setCommandValue(number, value); }
  bool setFileValue(int number, const std::string& value);
  // Writes the held document over the file, loads it and enters edit state.
  bool saveHeld();

  // Copies the file over the target's, for a macro of the harddisk. Edit state is left by `leaveEditState`.
  bool saveToDisk();
  // The target's file on the harddisk no longer holds what it held when it was opened or last saved here:
  // somebody else has written it since.
  [[nodiscard]] bool targetChanged() const;
  void leaveEditState();

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] Content content() const { return content_; }
  [[nodiscard]] const MacroCommands& commands() const { return *commands_; }
  // The commands as they are now, also after the next change.
  [[nodiscard]] std::shared_ptr<const MacroCommands> sharedCommands() const { return commands_; }
  [[nodiscard]] const KeyFile& keyFile() const { return keyFile_; }
  [[nodiscard]] int commandCount() const;
  [[nodiscard]] const std::optional<MacroTarget>& target() const { return target_; }
  [[nodiscard]] bool edited() const { return edited_; }
  // Rises with every change of what is shown.
  [[nodiscard]] int revision() const { return revision_; }
  [[nodiscard]] const RecoveryFile& recovery() const { return recovery_; }

 private:
  bool load();
  // Shows what the file holds after an attempt to change it; `saved` spares the loading.
  bool reload(bool changed, SavedMacro saved);
  void noteEdit();

  SiteAccess site_;
  std::string path_;
  Content content_ = Content::kNothing;
  std::shared_ptr<const MacroCommands> commands_ = std::make_shared<MacroCommands>();
  KeyFile keyFile_;
  HeldMacro held_;
  std::optional<MacroTarget> target_;
  bool edited_ = false;
  int revision_ = 0;
  RecoveryFile recovery_;
  ContentCheck loaded_;  // of the bytes that the file had when it was loaded
  std::optional<ContentCheck>
      fetched_;  // of the target, when it was opened or last saved; unknown when taken up
  std::optional<RecoveryRecord> record_;  // as written; none without unsaved changes
};

}  // namespace tessaly
