#include "fuzz/crash/StepsUser.h"

#include "platform/Files.h"
#include "platform/Text.h"

namespace tessaly {
namespace {

MacroTarget target() {
  return {PaneSource::kHarddisk,
          std::string(kCrashStepsTarget.substr(0, kCrashStepsTarget.rfind('\\') + 1)),
          {},
          0,
          "001",
          "Steps"};
}

// All values of a content are alike.
int generationOf(const std::string& bytes) {
  constexpr std::string_view kBefore = " value=\"";
  const std::size_t at = bytes.find(kBefore);
  return at == std::string::npos ? -1 : parseInt(std::string_view(bytes).substr(at + kBefore.size()));
}

// The record may be one change behind the working file, as the steps may be one ahead.
bool agree(const WorkingCopy& copy, const Expected<RecoveryRecord>& record) {
  const EditHistory& row = copy.steps();
  if (row.check() != copy.macro()->check()) return false;
  bool known = !record;
  for (std::size_t position = 0; position <= row.size(); ++position)
    known = known || record->check == row.checkAt(position);
  for (const std::size_t position : {std::size_t{0}, row.size()}) {
    const auto bytes = row.bytesAt(position, copy.bytes());
    if (!bytes || contentCheck(*bytes) != row.checkAt(position)) return false;
  }
  return known;
}

}  // namespace

int CrashStepsUser::decide(int fresh) {
  const std::string working = CrashSite::path(CrashStep::kSteps);
  if (!copy_) {
    next_ = Act::kStart;
    const bool unsaved = RecoveryFile(site_.root, 'B').read().has_value();
    return generationOf(readFile(site_.root, unsaved ? working : target().file()).value_or(""));
  }
  const EditHistory& row = copy_->steps();
  const auto at = [&](std::size_t position) {
    return generationOf(row.bytesAt(position, copy_->bytes()).value_or(""));
  };
  switch (random_() % 6) {
    case 0:
    case 1:
      if (!row.canUndo()) break;
      next_ = Act::kUndo;
      return at(row.position() - 1);
    case 2:
      if (!row.canRedo()) break;
      next_ = Act::kRedo;
      return at(row.position() + 1);
    case 3:
      next_ = Act::kSave;
      return at(row.position());
    default:
      break;
  }
  next_ = Act::kEdit;
  return generation_ = fresh;
}

bool CrashStepsUser::start() {
  copy_ =
      std::make_unique<WorkingCopy>(site_, CrashSite::path(CrashStep::kSteps), RecoveryFile(site_.root, 'B'));
  const auto record = copy_->recovery().read();
  if (record) {
    if (!copy_->takeUp(*record, readFile(site_.root, copy_->path()).value_or(""))) return false;
  } else {
    auto loan = copy_->lend();
    if (!loan || !copyFile(site_.root, target().file(), loan->path()) || !loan->show(target(), true))
      return false;
  }
  return !copy_->takeStepsTrouble() && agree(*copy_, record);
}

bool CrashStepsUser::act() {
  switch (next_) {
    case Act::kStart:
      return start();
    case Act::kUndo:
      return copy_->undo().done();
    case Act::kRedo:
      return copy_->redo().done();
    case Act::kSave:
      if (const auto loan = copy_->lendToSave();
          !loan || !writeFile(site_.root, target().file(), copy_->bytes()))
        return false;
      copy_->noteSaved();
      return true;
    case Act::kEdit:
      break;
  }
  SetValues values;
  for (int command = 0; command < kCrashCommands; ++command)
    values.values.emplace_back(command, crashValue(generation_));
  return copy_->apply(values).done() && !copy_->takeStepsTrouble();
}

}  // namespace tessaly
