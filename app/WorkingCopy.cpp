#include "app/WorkingCopy.h"

#include <chrono>
#include <utility>

#include "platform/Files.h"

namespace tessaly {

WorkingCopy::WorkingCopy(SiteAccess site, std::string path, RecoveryFile recovery)
    : site_(site), path_(std::move(path)), recovery_(std::move(recovery)) {}

WorkingCopy::~WorkingCopy() { settleAhead(); }

WorkingCopy::Loan::~Loan() {
  if (copy_ == nullptr) return;
  copy_->lent_ = false;
  if (!keeps_) static_cast<void>(copy_->clear());
}

Outcome WorkingCopy::Loan::show(const MacroTarget& target, bool filled) {
  WorkingCopy& copy = *std::exchange(copy_, nullptr);
  copy.lent_ = false;
  copy.empty();
  if (filled) copy.target_ = target;
  Outcome loaded = copy.load();
  if (filled && loaded) copy.fetched_ = copy.macro_->check();
  emit copy.changed();
  return loaded;
}

Outcome WorkingCopy::free(bool evenEdited) const {
  if (lent_) return Failure{Failure::Kind::kChanged, "a transfer is using the working copy"};
  if (edited_ && !evenEdited) return Failure{Failure::Kind::kChanged, "the working copy has unsaved changes"};
  return {};
}

std::optional<WorkingCopy::Loan> WorkingCopy::lend() {
  if (!free(false)) return std::nullopt;
  settleAhead();
  return Loan(*this, false);
}

Expected<WorkingCopy::Loan> WorkingCopy::lendToRead() {
  if (Outcome allowed = free(true); !allowed) return allowed.failure();
  if (!macro_) return Failure{Failure::Kind::kNoMacro, "there is no macro"};
  if (Outcome right = restoreFile(); !right.written()) return right.failure();
  return Loan(*this, true);
}

Outcome WorkingCopy::restoreFile() {
  settleAhead();
  if (lent_ || !macro_ || !fileChanged()) return {};
  return writeFile(site_.root, path_, macro_->bytes());
}

// Shows nothing, and belongs to nothing.
void WorkingCopy::empty() {
  settleAhead();
  ++opening_;
  ++revision_;
  content_ = Content::kNothing;
  macro_.reset();
  keyFile_ = {};
  marks_.clear();
  select_ = -1;
  target_.reset();
  fetched_.reset();
}

Outcome WorkingCopy::clear() {
  if (Outcome allowed = free(false); !allowed) return allowed;
  empty();
  emit changed();
  return {};
}

Outcome WorkingCopy::showKeyFile(KeyFile keyFile) {
  if (Outcome allowed = free(false); !allowed) return allowed;
  empty();
  keyFile_ = std::move(keyFile);
  content_ = Content::kKeyFile;
  emit changed();
  return {};
}

Outcome WorkingCopy::load() {
  auto macro = loadMacro(site_, path_);
  if (!macro) return macro.failure();
  if (!macro->hasData()) return Failure{Failure::Kind::kNoMacro, "it holds no macro that takes commands"};
  macro_ = *std::move(macro);
  content_ = Content::kMacro;
  return {};
}

Outcome WorkingCopy::take(Expected<Macro> changed, int select, Marks marks) {
  if (!changed) return changed.failure();
  settleAhead();
  if (Outcome written = writeFile(site_.root, path_, changed->bytes()); !written.written()) return written;
  ++revision_;
  macro_ = *std::move(changed);
  marks_ = std::move(marks);
  select_ = select;
  noteEdit();
  emit this->changed();
  return {};
}

Outcome WorkingCopy::apply(const MacroEdit& edit, int select, Marks marks) {
  if (Outcome allowed = free(true); !allowed) return allowed;
  if (!macro_) return Failure{Failure::Kind::kNoMacro, "there is no macro"};
  return take(tessaly::apply(*macro_, edit), select, std::move(marks));
}

Outcome WorkingCopy::rewrite() {
  if (Outcome allowed = free(true); !allowed) return allowed;
  if (!macro_) return Failure{Failure::Kind::kNoMacro, "there is no macro"};
  return take(reprint(*macro_), -1, {});
}

Outcome WorkingCopy::takeUp(const RecoveryRecord& record, std::string bytes) {
  if (Outcome allowed = free(false); !allowed) return allowed;
  auto macro = Macro::read(std::move(bytes));
  if (!macro) return macro.failure();
  if (!macro->hasData()) return Failure{Failure::Kind::kNoMacro, "it holds no macro that takes commands"};
  if (Outcome written = writeFile(site_.root, path_, macro->bytes()); !written.written()) return written;
  empty();
  macro_ = *std::move(macro);
  content_ = Content::kMacro;
  target_ = record.target;
  edited_ = true;
  record_ = record;
  record_->setAside = false;
  record_->check = macro_->check();
  static_cast<void>(recovery_.write(*record_));
  emit changed();
  return {};
}

bool WorkingCopy::writeAhead(const SetValues& values) {
  using namespace std::chrono_literals;
  if (!macro_ || lent_) return true;
  if (ahead_.valid() && ahead_.wait_for(0s) != std::future_status::ready) return false;
  // The file now runs ahead of its record until the update ends: once, the record says so.
  if (record_ && record_->check) {
    record_->check.reset();
    static_cast<void>(recovery_.write(*record_));
  }
  ahead_ = std::async(std::launch::async, [site = site_, path = path_, macro = *macro_, values] {
    const auto ahead = tessaly::apply(macro, values);
    if (ahead) static_cast<void>(writeFile(site.root, path, ahead->bytes()));
  });
  return true;
}

void WorkingCopy::settleAhead() {
  if (ahead_.valid()) ahead_.wait();
}

Outcome WorkingCopy::saveToDisk() {
  if (Outcome allowed = free(true); !allowed) return allowed;
  if (!target_ || !macro_) return Failure{Failure::Kind::kNoMacro, "there is no macro"};
  static_cast<void>(restoreFile());  // a mirror only: the save does not hang on it
  return writeFile(site_.root, target_->file(), macro_->bytes());
}

void WorkingCopy::noteSaved() {
  fetched_ = macro_->check();
  leaveEditState();
}

void WorkingCopy::leaveEditState(Record record) {
  edited_ = false;
  // A record that an earlier run left is not this one's to remove.
  if (record_ && record == Record::kRemove) recovery_.remove();
  record_.reset();
  emit changed();
}

void WorkingCopy::noteEdit() {
  edited_ = true;
  if (!target_) return;
  const std::int64_t now = millisecondsNow();
  record_ = RecoveryRecord{*target_, record_ ? record_->since : now, now, macro_->check(), false};
  // Nothing is lost without a record, so a folder that cannot be written stops no edit.
  static_cast<void>(recovery_.write(*record_));
}

bool WorkingCopy::fileChanged() const {
  const auto bytes = readFile(site_.root, path_);
  return !bytes || !macro_ || contentCheck(*bytes) != macro_->check();
}

bool WorkingCopy::targetDiffers(const std::string& bytes) const {
  return fetched_ && contentCheck(bytes) != *fetched_;
}

bool WorkingCopy::differs() const { return macro_ && (!fetched_ || macro_->check() != *fetched_); }

const MacroCommands& WorkingCopy::commands() const {
  static const MacroCommands none;
  return macro_ ? macro_->commands() : none;
}

std::shared_ptr<const MacroCommands> WorkingCopy::sharedCommands() const {
  return macro_ ? macro_->sharedCommands() : std::make_shared<const MacroCommands>();
}

int WorkingCopy::commandCount() const {
  switch (content_) {
    case Content::kNothing:
      return 0;
    case Content::kMacro:
      return static_cast<int>(macro_->commands().size());
    case Content::kKeyFile:
      return keyFile_.lastIndex() + 1;
  }
  return 0;
}

}  // namespace tessaly
