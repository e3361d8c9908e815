#pragma once

#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QObject>

#include "app/RecoveryFile.h"
#include "model/KeyFile.h"
#include "model/MacroFile.h"
#include "model/StepsFile.h"

namespace tessaly {

// What people are told of a change, which is one step of the working copy.
struct StepNote {
  std::string name = {};           // UTF-8: "delete 3 commands"; without one the edit is named by what it is
  std::vector<int> selected = {};  // the commands to be selected afterwards; numbers from 0
};

// The working copy of one pane: the macro that is shown, the file that mirrors it, where it belongs, and
// whether it has unsaved changes. The macro in memory is what counts; nobody else writes the file, and what
// another program does to it is put right before it is used. While there are unsaved changes nothing foreign
// gets in, and a record beside the site lets the next start of a program that has died take them up.
//
// Whoever shows something connects to `changed`. GUI thread.
class WorkingCopy : public QObject {
  Q_OBJECT

 public:
  enum class Content { kNothing, kMacro, kKeyFile };
  using Marks = std::vector<bool>;

  WorkingCopy(SiteAccess site, std::string path, RecoveryFile recovery);
  ~WorkingCopy() override;

  // The file in the hands of a transfer: until the loan ends nothing else touches it, and every change of the
  // working copy is refused. A loan that ends without `show` leaves nothing shown, unless it was for reading
  // only, or there are unsaved changes, whose file is put right then.
  class Loan {
   public:
    Loan(Loan&& other) noexcept
        : copy_(std::exchange(other.copy_, nullptr)), keeps_(other.keeps_), putRight_(other.putRight_) {}
    Loan& operator=(Loan&&) = delete;
    ~Loan();

    [[nodiscard]] const std::string& path() const { return copy_->path_; }
    // Something else had changed the file, which was put right for this.
    [[nodiscard]] bool putRight() const { return putRight_; }
    // Ends the loan: shows what the file holds now as the macro of `target`, or, when it was not filled, as
    // that of none. With the name of a step it is one more step of the macro that was shown, if that is of
    // the same place. The failure is that of reading it, which `read` spares: what the file holds, as a
    // macro.
    Outcome show(const MacroTarget& target, bool filled, const std::string& step = {},
                 std::optional<Macro> read = {});

   private:
    friend class WorkingCopy;
    Loan(WorkingCopy& copy, bool keeps) : copy_(&copy), keeps_(keeps) { copy_->lent_ = true; }

    WorkingCopy* copy_;
    bool keeps_;  // for reading only: what is shown stays
    bool putRight_ = false;
  };

  // To be filled; none while there are unsaved changes or another loan.
  [[nodiscard]] std::optional<Loan> lend();
  // To be filled with what the target holds, over unsaved changes: they are there until edit state is left.
  [[nodiscard]] std::optional<Loan> lendToDiscard();
  // To be saved to the target. The file is put right for it, as far as it can be: it is a mirror, and the
  // save does not hang on it.
  [[nodiscard]] Expected<Loan> lendToSave();

  // Each is refused (kChanged) while the file is lent, and the first two while there are unsaved changes.
  Outcome clear();
  Outcome showKeyFile(KeyFile keyFile);
  // A macro that has no place of its own yet, of the bytes of a file anywhere; also refused when they are no
  // macro.
  Outcome showLoose(std::string bytes, std::string file);
  // Changes the macro and its file, as one step, and enters edit state. `marks` are shown until the next
  // change. Nothing has changed when it fails.
  Outcome apply(const MacroEdit& edit, StepNote note = {}, Marks marks = {});
  // The same of an edit that was applied to the macro elsewhere; refused (kChanged) when that is no longer
  // the one that is shown.
  Outcome apply(const Macro& shown, Expected<Macro> changed, StepNote note, Marks marks = {});
  // They are shown until the list is drawn anew.
  void dropMarks() { marks_.clear(); }
  // Writes the macro as after an edit, and enters edit state.
  Outcome rewrite(StepNote note = {});

  // The steps of the macro that is shown. Another macro begins with none, and so does the next start, unless
  // it shows the same macro with the bytes that they have led to.
  [[nodiscard]] const EditHistory& steps() const { return steps_.row(); }
  // Why they do not survive, or have not survived, the end of the program; since it was last asked.
  [[nodiscard]] std::optional<StepsTrouble> takeStepsTrouble() { return steps_.takeTrouble(); }
  // Each goes to another position of the steps (kNoCommand when there is none), selects what was selected
  // there, and enters edit state, or leaves it where the macro is what its target holds. Refused (kChanged)
  // while the file is lent. Nothing has changed when it fails.
  Outcome undo() { return jumpTo(steps().position() - 1); }
  Outcome redo() { return jumpTo(steps().position() + 1); }
  Outcome jumpTo(std::size_t position);
  // Why an end of the program now would lose the unsaved changes; once, until they are on the disk again.
  [[nodiscard]] std::optional<Failure> takeRecordTrouble() { return std::exchange(recordTrouble_, {}); }
  // Runs what is written for a save, and when edit state ends, to its end while the window stays alive. False
  // when the user has cancelled meanwhile. Without one it is run at once.
  using Beside = std::function<bool(const std::function<void()>& work)>;
  void setBeside(Beside beside) { beside_ = std::move(beside); }
  // Asked what is selected when a change begins.
  void setSelection(std::function<std::vector<int>()> selection) { selection_ = std::move(selection); }

  // Brings back what an earlier run left unsaved.
  Outcome takeUp(const RecoveryRecord& record, std::string bytes);

  // Writes the macro with these values into the file, in the background and ahead of what is shown, which
  // stays as it is. False, nothing begun, while the one before is still being written.
  [[nodiscard]] bool writeAhead(const SetValues& values);

  // Puts right what else has become of the file. The failure is that of writing it.
  Outcome restoreFile();

  // The target holds the macro now.
  void noteSaved();
  // The macro has been saved to a place, which is its own from now on; without one it was saved to a file
  // that can be none.
  void noteSavedAs(std::optional<MacroTarget> target);
  // Back to what was shown of a loose macro, as one step, out of edit state. Refused when its file could not
  // be read after a crash.
  Outcome showLooseAgain(const std::string& step);
  // As the user has decided, or as a save that failed leaves it. With `kKeep` the record of the changes stays
  // for the next start.
  enum class Record { kRemove, kKeep };
  void leaveEditState(Record record = Record::kRemove);
  // The program ends in order: what is neither saved nor kept for the next start is discarded.
  void close();

  // Whether something else has replaced or removed the file since it was written here.
  [[nodiscard]] bool fileChanged() const;
  // Whether bytes are not those that the target held when it was opened or last saved here or, where that is
  // unknown, those of the macro.
  [[nodiscard]] bool targetDiffers(const std::string& bytes) const;
  [[nodiscard]] bool knowsTarget() const { return fetched_.has_value(); }

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] Content content() const { return content_; }
  [[nodiscard]] const MacroCommands& commands() const;
  // The commands as they are now, also after the next change.
  [[nodiscard]] std::shared_ptr<const MacroCommands> sharedCommands() const;
  [[nodiscard]] const std::string& bytes() const { return macro_->bytes(); }  // of a macro
  [[nodiscard]] const std::optional<Macro>& macro() const { return macro_; }
  [[nodiscard]] const KeyFile& keyFile() const { return keyFile_; }
  [[nodiscard]] int commandCount() const;
  [[nodiscard]] const std::optional<MacroTarget>& target() const { return target_; }
  [[nodiscard]] bool loose() const { return loose_.has_value(); }
  [[nodiscard]] const std::string& looseFile() const { return looseFile_; }  // of a loose macro
  [[nodiscard]] const Marks& updatedMarks() const { return marks_; }
  // Commands that there are.
  [[nodiscard]] const std::vector<int>& selectedAfterChange() const { return selected_; }
  [[nodiscard]] int selectAfterChange() const { return selected_.empty() ? -1 : selected_.front(); }

  [[nodiscard]] bool lent() const { return lent_; }

  // Edit state, as told by the pane's controls.
  [[nodiscard]] bool edited() const { return edited_; }
  // The macro is not what its target held when it was opened or last saved here.
  [[nodiscard]] bool differs() const;
  // A save has failed, and nothing has been saved, discarded or opened since.
  [[nodiscard]] bool saveOwed() const {
    return !edited_ && target_ && content_ == Content::kMacro && differs();
  }
  // Nothing but the user's own leaving takes it away.
  [[nodiscard]] bool unsaved() const { return edited_ || saveOwed(); }

  // Rises whenever another macro, or the same one anew, is shown, and with every change of what is shown.
  [[nodiscard]] int opening() const { return opening_; }
  [[nodiscard]] int revision() const { return revision_; }
  [[nodiscard]] const RecoveryFile& recovery() const { return recovery_; }

 signals:
  void changed();

 private:
  Outcome free(bool evenEdited) const;
  Outcome changeable() const;
  void empty();
  Outcome take(Expected<Macro> changed, StepNote note, Marks marks);
  [[nodiscard]] std::optional<EditStep> stepTo(const Macro& before, const Macro& after, StepNote note) const;
  [[nodiscard]] std::optional<MacroPlace> place() const;
  Outcome install(Macro macro, std::vector<int> selected);
  bool runBeside(const std::function<void()>& work);
  void goOn(const std::optional<Macro>& before, const std::string& step);
  [[nodiscard]] std::optional<ContentCheck> fileCheck() const;  // nothing where it cannot be read
  void settleAhead();
  void noteEdit();
  void writeRecord();
  Outcome load(std::optional<Macro> read);
  Outcome fill(std::string bytes);

  SiteAccess site_;
  std::string path_;
  RecoveryFile recovery_;

  Content content_ = Content::kNothing;
  std::optional<Macro> macro_;  // while the content is one
  KeyFile keyFile_;
  Marks marks_;
  std::vector<int> selected_;
  std::function<std::vector<int>()> selection_;
  Beside beside_;
  StepsFile steps_;
  std::optional<MacroTarget> target_;
  std::optional<Macro> loose_;           // what its file held, of a macro that has no place of its own
  std::string looseFile_;                // of such a macro
  std::optional<ContentCheck> fetched_;  // of the target, when it was opened or last saved
  bool edited_ = false;
  bool lent_ = false;
  int opening_ = 0;
  int revision_ = 0;
  std::optional<RecoveryRecord> record_;    // as written; none without unsaved changes
  bool recorded_ = true;                    // the last one was written
  std::optional<Failure> recordTrouble_;    // to be told
  std::optional<ContentCheck> wroteAhead_;  // what it has left in the file; read once it has ended
  std::future<void> ahead_;
};

}  // namespace tessaly
