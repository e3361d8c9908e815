#include "app/WorkingCopy.h"

#include <chrono>
#include <utility>

#include "app/StepNames.h"
#include "platform/Files.h"
#include "platform/SystemFailure.h"
#include "platform/Text.h"

namespace tessaly {

WorkingCopy::WorkingCopy(SiteAccess site, std::string path, RecoveryFile recovery)
    : site_(site),
      path_(std::move(path)),
      recovery_(std::move(recovery)),
      steps_(site.root, recovery_.stepsPath()) {}

WorkingCopy::~WorkingCopy() { settleAhead(); }

WorkingCopy::Loan::~Loan() {
  if (copy_ == nullptr) return;
  copy_->lent_ = false;
  if (keeps_) return;
  if (copy_->unsaved())
    static_cast<void>(copy_->restoreFile());
  else
    static_cast<void>(copy_->clear());
}

Outcome WorkingCopy::Loan::show(const MacroTarget& target, bool filled, const std::string& step,
                                std::optional<Macro> read) {
  WorkingCopy& copy = *std::exchange(copy_, nullptr);
  copy.lent_ = false;
  const bool again = filled && copy.target_ && samePlace(copy.site_.root, *copy.target_, target);
  const std::optional<Macro> before = again ? copy.macro_ : std::nullopt;
  copy.empty();
  if (filled) copy.target_ = target;
  Outcome loaded = copy.load(std::move(read));
  if (filled && loaded) copy.fetched_ = copy.macro_->check();
  copy.goOn(before, step);
  emit copy.changed();
  return loaded;
}

Outcome WorkingCopy::free(bool evenEdited) const {
  if (lent_) return Failure{Failure::Kind::kChanged, "a transfer is using the working copy"};
  if (edited_ && !evenEdited) return Failure{Failure::Kind::kChanged, "the working copy has unsaved changes"};
  return {};
}

// There is a macro, and nobody else is at it.
Outcome WorkingCopy::changeable() const {
  if (Outcome allowed = free(true); !allowed) return allowed;
  if (!macro_) return Failure{Failure::Kind::kNoMacro, "there is no macro"};
  return {};
}

std::optional<WorkingCopy::Loan> WorkingCopy::lend() {
  if (!free(false)) return std::nullopt;
  settleAhead();
  return Loan(*this, false);
}

std::optional<WorkingCopy::Loan> WorkingCopy::lendToDiscard() {
  if (!free(true)) return std::nullopt;
  settleAhead();
  return Loan(*this, false);
}

// Nothing else changes meanwhile, whatever asks for it.
bool WorkingCopy::runBeside(const std::function<void()>& work) {
  if (!beside_) return work(), true;
  const bool before = std::exchange(lent_, true);
  const bool wanted = beside_(work);
  lent_ = before;
  return wanted;
}

Expected<WorkingCopy::Loan> WorkingCopy::lendToSave() {
  if (Outcome allowed = changeable(); !allowed) return allowed.failure();
  if (!target_) return Failure{Failure::Kind::kNoMacro, "there is no macro"};
  Loan loan(*this, true);
  const bool wanted = runBeside([&] {
    settleAhead();
    const auto check = fileCheck();
    const bool foreign = !check || check != wroteAhead_;
    if (check != macro_->check())
      loan.putRight_ = writeFile(site_.root, path_, macro_->bytes()).written() && foreign;
    steps_.noteSaving();
  });
  if (!wanted) return cancelledFailure();
  return Expected<Loan>(std::move(loan));
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
  selected_.clear();
  target_.reset();
  loose_.reset();
  fetched_.reset();
  record_.reset();
}

Outcome WorkingCopy::clear() {
  if (Outcome allowed = free(false); !allowed) return allowed;
  empty();
  steps_.end();
  emit changed();
  return {};
}

Outcome WorkingCopy::showKeyFile(KeyFile keyFile) {
  if (Outcome allowed = free(false); !allowed) return allowed;
  empty();
  keyFile_ = std::move(keyFile);
  content_ = Content::kKeyFile;
  steps_.end();
  emit changed();
  return {};
}

Outcome WorkingCopy::showLoose(std::string bytes, std::string file) {
  if (Outcome allowed = free(false); !allowed) return allowed;
  if (Outcome filled = fill(std::move(bytes)); !filled.written()) return filled;
  loose_ = macro_;
  looseFile_ = std::move(file);
  fetched_ = macro_->check();
  goOn(std::nullopt, {});
  emit changed();
  return {};
}

Outcome WorkingCopy::showLooseAgain(const std::string& step) {
  if (Outcome allowed = free(true); !allowed) return allowed;
  if (!loose_ || !fetched_) return Failure{Failure::Kind::kNoMacro, "there is no macro"};
  const Macro before = *macro_;
  if (Outcome written = install(*loose_, {}); !written.written()) return written;
  leaveEditState();
  goOn(before, step);
  emit changed();
  return {};
}

// The file and what is shown, by bytes from elsewhere, of no place yet. Nothing has changed when it fails.
Outcome WorkingCopy::fill(std::string bytes) {
  auto macro = takingCommands(Macro::read(std::move(bytes)));
  if (!macro) return macro.failure();
  Outcome written = writeFile(site_.root, path_, macro->bytes());
  if (!written.written()) return written;
  empty();
  macro_ = *std::move(macro);
  content_ = Content::kMacro;
  return written;
}

Outcome WorkingCopy::load(std::optional<Macro> read) {
  auto macro = takingCommands(read ? Expected<Macro>(*std::move(read)) : loadMacro(site_, path_));
  if (!macro) return macro.failure();
  macro_ = *std::move(macro);
  content_ = Content::kMacro;
  return {};
}

// Whose the steps are.
std::optional<MacroPlace> WorkingCopy::place() const {
  if (target_) return placeOf(*target_);
  return loose_ ? std::optional(MacroPlace{looseFile_, {}, 0, {}}) : std::nullopt;
}

// From the macro that was shown before, if it was of the same place.
void WorkingCopy::goOn(const std::optional<Macro>& before, const std::string& step) {
  if (!macro_) {
    steps_.end();
    return;
  }
  std::optional<EditStep> made;
  if (before && !step.empty() && steps().check() == before->check())
    made = stepTo(*before, *macro_, {step, {}});
  if (made) {
    steps_.announce(*std::move(made));
    steps_.settle(true);
  } else {
    steps_.begin(place(), macro_->check());
  }
  if (steps().saved() != fetched_) steps_.noteSaved(fetched_);
}

// None when not a byte differs.
std::optional<EditStep> WorkingCopy::stepTo(const Macro& before, const Macro& after, StepNote note) const {
  if (before.bytes() == after.bytes()) return std::nullopt;
  return EditStep{std::move(note.name), selection_ ? selection_() : std::vector<int>(),
                  std::move(note.selected), byteChange(before.bytes(), after.bytes()), after.check()};
}

// Every change of the macro comes through here, and is a step.
Outcome WorkingCopy::take(Expected<Macro> changed, StepNote note, Marks marks) {
  if (!changed) return changed.failure();
  std::vector<int> selected = note.selected;
  auto step = stepTo(*macro_, *changed, std::move(note));
  if (step) steps_.announce(*std::move(step));
  Outcome written = install(*std::move(changed), std::move(selected));
  steps_.settle(written.written());
  if (!written.written()) return written;
  marks_ = std::move(marks);
  noteEdit();
  emit this->changed();
  return {};
}

Outcome WorkingCopy::install(Macro macro, std::vector<int> selected) {
  settleAhead();
  Outcome written = writeFile(site_.root, path_, macro.bytes());
  if (!written.written()) return written;
  ++revision_;
  macro_ = std::move(macro);
  marks_.clear();
  selected_ = std::move(selected);
  std::erase_if(selected_, [this](int number) { return number < 0 || number >= commandCount(); });
  return written;
}

Outcome WorkingCopy::apply(const MacroEdit& edit, StepNote note, Marks marks) {
  if (Outcome allowed = changeable(); !allowed) return allowed;
  if (note.name.empty()) note.name = stepName(edit);
  return take(tessaly::apply(*macro_, edit), std::move(note), std::move(marks));
}

Outcome WorkingCopy::apply(const Macro& shown, Expected<Macro> changed, StepNote note, Marks marks) {
  if (Outcome allowed = changeable(); !allowed) return allowed;
  if (macro_->check() != shown.check())
    return Failure{Failure::Kind::kChanged, "the macro was changed meanwhile"};
  return take(std::move(changed), std::move(note), std::move(marks));
}

Outcome WorkingCopy::rewrite(StepNote note) {
  if (Outcome allowed = changeable(); !allowed) return allowed;
  if (note.name.empty()) note.name = rewriteStepName();
  return take(reprint(*macro_), std::move(note), {});
}

Outcome WorkingCopy::jumpTo(std::size_t position) {
  if (Outcome allowed = changeable(); !allowed) return allowed;
  const EditHistory& row = steps();
  if (position > row.size()) return Failure{Failure::Kind::kNoCommand, "there is no such step"};
  if (position == row.position()) return {};
  auto bytes = row.bytesAt(position, macro_->bytes());
  if (!bytes) return Failure{Failure::Kind::kChanged, "the steps belong to other bytes"};
  auto macro = Macro::read(*std::move(bytes));
  if (!macro) return macro.failure();
  if (macro->check() != row.checkAt(position))
    return Failure{Failure::Kind::kChanged, "the steps belong to other bytes"};
  const auto by = static_cast<std::ptrdiff_t>(position) - static_cast<std::ptrdiff_t>(row.position());
  steps_.announce(StepsMove{static_cast<int>(by)});
  Outcome written = install(*std::move(macro), row.selectedAt(position));
  steps_.settle(written.written());
  if (!written.written()) return written;
  if (differs()) {
    noteEdit();
    emit changed();
  } else {
    leaveEditState();
  }
  return {};
}

Outcome WorkingCopy::takeUp(const RecoveryRecord& record, std::string bytes) {
  if (Outcome allowed = free(false); !allowed) return allowed;
  if (Outcome filled = fill(std::move(bytes)); !filled.written()) return filled;
  if (record.loose.empty()) {
    target_ = record.target;
  } else {
    looseFile_ = record.loose;
    auto file = loadMacro(site_, looseFile_);
    if (file) fetched_ = file->check();
    loose_ = file ? *std::move(file) : *macro_;
  }
  edited_ = true;
  record_ = record;
  record_->setAside = false;
  record_->check = macro_->check();
  if (record.setAside) recovery_.bringStepsBack();
  writeRecord();
  steps_.begin(place(), macro_->check());
  // A save that the end of the program has cut told the steps what it wrote, or that nobody knows; the record
  // is older than that.
  if (target_) fetched_ = steps().size() > 0 ? steps().saved() : record.held;
  if (steps().saved() != fetched_) steps_.noteSaved(fetched_);
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
    writeRecord();
  }
  // Where no thread is to be had, at the end of the update.
  ahead_ = std::async(std::launch::async | std::launch::deferred,
                      [this, site = site_, path = path_, macro = *macro_, values] {
                        const auto ahead = tessaly::apply(macro, values);
                        if (ahead && writeFile(site.root, path, ahead->bytes()).written())
                          wroteAhead_ = ahead->check();
                      });
  return true;
}

void WorkingCopy::settleAhead() {
  if (ahead_.valid()) ahead_.wait();
}

void WorkingCopy::noteSaved() {
  const auto check = macro_->check();
  static_cast<void>(runBeside([this, check] {
    steps_.writeSaved(check);
    if (record_) recovery_.remove();
  }));
  fetched_ = check;
  steps_.setSaved(fetched_);
  record_.reset();
  leaveEditState();
}

void WorkingCopy::noteSavedAs(std::optional<MacroTarget> target) {
  if (target) {
    loose_.reset();
    target_ = std::move(target);
    steps_.follow(placeOf(*target_));
  } else if (loose_) {
    loose_ = macro_;
  }
  noteSaved();
}

void WorkingCopy::leaveEditState(Record record) {
  if (record == Record::kRemove) {
    // A record that an earlier run left is not this one's to remove.
    if (record_) static_cast<void>(runBeside([this] { recovery_.remove(); }));
    record_.reset();
  }
  edited_ = false;
  emit changed();
}

void WorkingCopy::close() {
  if (edited_) leaveEditState();
  if (differs() && recovery_.isMissing()) steps_.end();
}

void WorkingCopy::noteEdit() {
  edited_ = true;
  const std::int64_t now = millisecondsNow();
  RecoveryRecord record{{}, record_ ? record_->since : now, now, macro_->check(), false};
  if (target_) {
    record.target = *target_;
  } else if (loose_) {
    record.loose = looseFile_;
    record.target.name = fileNameOf(looseFile_);
  } else {
    return;
  }
  record.held = fetched_;
  record_ = std::move(record);
  writeRecord();
}

// Nothing is lost without a record, so a folder that cannot be written stops no edit.
void WorkingCopy::writeRecord() {
  const Outcome written = recovery_.write(*record_);
  const bool before = std::exchange(recorded_, written.written());
  if (recorded_)
    recordTrouble_.reset();
  else if (before)
    recordTrouble_ = written.failure();
}

std::optional<ContentCheck> WorkingCopy::fileCheck() const {
  const auto bytes = readFile(site_.root, path_);
  return bytes ? std::optional(contentCheck(*bytes)) : std::nullopt;
}

bool WorkingCopy::fileChanged() const { return !macro_ || fileCheck() != macro_->check(); }

bool WorkingCopy::targetDiffers(const std::string& bytes) const {
  return contentCheck(bytes) != (fetched_ ? *fetched_ : macro_->check());
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
