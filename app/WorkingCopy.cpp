#include "app/WorkingCopy.h"

#include <utility>

#include "platform/Files.h"

namespace tessaly {

void WorkingCopy::reset() {
  ++revision_;
  content_ = Content::kNothing;
  commands_ = std::make_shared<MacroCommands>();
  keyFile_ = {};
  leaveEditState();
  target_.reset();
}

void WorkingCopy::leaveEditState() {
  edited_ = false;
  // A record that an earlier run left is not this one's to remove.
  if (record_) recovery_.remove();
  record_.reset();
}

void WorkingCopy::noteEdit() {
  edited_ = true;
  if (!target_) return;
  const std::int64_t now = millisecondsNow();
  record_ = RecoveryRecord{*target_, record_ ? record_->since : now, now, loaded_, false};
  // Nothing is lost without a record, so a folder that cannot be written stops no edit.
  static_cast<void>(recovery_.write(*record_));
}

bool WorkingCopy::takeUp(const RecoveryRecord& record) {
  target_ = record.target;
  fetched_.reset();
  if (!load()) return false;
  edited_ = true;
  record_ = record;
  record_->setAside = false;
  record_->check = loaded_;
  static_cast<void>(recovery_.write(*record_));
  return true;
}

bool WorkingCopy::load() {
  ++revision_;
  keyFile_ = {};
  auto commands = std::make_shared<MacroCommands>();
  const bool loaded = loadCommands(site_, path_, true, *commands, &loaded_);
  if (!loaded) commands->clear();
  commands_ = std::move(commands);
  content_ = loaded ? Content::kMacro : Content::kNothing;
  return loaded;
}

bool WorkingCopy::open(const MacroTarget& target, bool filled) {
  leaveEditState();
  target_ = filled ? std::optional(target) : std::nullopt;
  const bool loaded = load();
  fetched_ = filled && loaded ? std::optional(loaded_) : std::nullopt;
  return loaded;
}

void WorkingCopy::showKeyFile(KeyFile keyFile) {
  reset();
  keyFile_ = std::move(keyFile);
  content_ = Content::kKeyFile;
}

bool WorkingCopy::reload(bool changed, SavedMacro saved) {
  const bool known = changed && saved.commands;
  if (known) {
    ++revision_;
    keyFile_ = {};
    commands_ = std::make_shared<MacroCommands>(std::move(*saved.commands));
    content_ = Content::kMacro;
    loaded_ = saved.check;
  }
  const bool shown = known || load();
  if (changed) noteEdit();
  return changed && shown;
}

bool WorkingCopy::insert(const CommandDraft& draft, int position, int workplace, InsertMode mode) {
  SavedMacro saved;
  const bool inserted = insertCommand(site_, path_, position, draft, workplace, mode, &saved);
  return reload(inserted, std::move(saved));
}

bool WorkingCopy::insertClassic(const ClassicCommand& command, int position, InsertMode mode, int mainframe) {
  SavedMacro saved;
  const bool inserted = appendClassicCommand(site_, path_, position, command, mode, mainframe, &saved);
  return reload(inserted, std::move(saved));
}

bool WorkingCopy::replace(int position, const CommandDraft& draft, int workplace) {
  SavedMacro saved;
  const bool replaced = replaceCommand(site_, path_, position, draft, workplace, &saved);
  return reload(replaced, std::move(saved));
}

bool WorkingCopy::replaceClassic(int position, const ClassicCommand& command, int mainframe) {
  SavedMacro saved;
  const bool replaced = replaceClassicCommand(site_, path_, position, command, mainframe, &saved);
  return reload(replaced, std::move(saved));
}

bool WorkingCopy::remove(int position) {
  SavedMacro saved;
  const bool removed = removeCommand(site_, path_, position, &saved);
  return reload(removed, std::move(saved));
}

bool WorkingCopy::setFileValue(int number, const std::string& value) {
  // The file now runs ahead of its record until the update ends: once, the record says so.
  if (record_ && record_->check) {
    record_->check.reset();
    static_cast<void>(recovery_.write(*record_));
  }
  return setCommandValue(site_, path_, number, value);
}

bool WorkingCopy::saveHeld() {
  SavedMacro saved;
  const bool written = held_.save(site_, path_, &saved);
  return reload(written, std::move(saved));
}

bool WorkingCopy::saveToDisk() {
  if (!target_ || !copyFile(site_.root, path_, target_->file())) return false;
  fetched_ = loaded_;
  return true;
}

bool WorkingCopy::targetChanged() const {
  if (!target_ || target_->source != PaneSource::kHarddisk || !fetched_) return false;
  const auto bytes = readFile(site_.root, target_->file());
  return bytes && contentCheck(*bytes) != *fetched_;
}

int WorkingCopy::commandCount() const {
  switch (content_) {
    case Content::kNothing:
      return 0;
    case Content::kMacro:
      return static_cast<int>(commands_->size());
    case Content::kKeyFile:
      return keyFile_.lastIndex() + 1;
  }
  return 0;
}

}  // namespace tessaly
