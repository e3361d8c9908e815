#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

#include "app/MacroTarget.h"
#include "platform/ContentCheck.h"
#include "platform/SiteAccess.h"
#include "review/MacroBatch.h"
#include "widgets/Message.h"

namespace tessaly {

class BatchUndo;
class MacroHistory;
class MacroTransfers;
class OpenMacros;

inline constexpr std::size_t kMostUndoableOperations = 100;  // the oldest go

// The operations of this run of the program on whole macros, the last one first to be undone: what stood
// there before comes back out of the history, after what stands there now is kept. What was done, or why not,
// is told in one line by `said`. GUI thread.
class MacroUndo : public QObject {
  Q_OBJECT

 public:
  // Observes all.
  MacroUndo(SiteAccess site, MacroHistory& history, MacroTransfers& transfers, OpenMacros& open);

  // An operation on a macro begins; `name` is what people are told of it ("delete 012 - Opener"). One that is
  // not done is forgotten with the next.
  void begin(const QString& name, const MacroPlace& place);
  // It is done, and `left` are the bytes that it has left there. False, and not to be undone, when the
  // history could not keep what was there before.
  [[nodiscard]] bool finish(const std::optional<std::string>& left);
  // The same, of a file of the site.
  [[nodiscard]] bool finishOnDisk();
  // The panel has been asked to rename a macro.
  void noteRename(const QString& name, const MacroTarget& target, const std::string& newName);

  // A batch has written what it leaves traces of: one entry.
  void noteBatch(const QString& name, std::vector<BatchTrace> traces);
  // What undoes a batch. Observed; before the first one.
  void undoBatchesBy(BatchUndo& batches) { batches_ = &batches; }

  // What is undone next; empty when there is nothing.
  [[nodiscard]] QString next() const { return row_.empty() ? QString() : row_.back().name; }
  // Asks before anything is lost that the operation has not left. Stays undoable when it could not be tried.
  void undo();

 signals:
  void changed();
  void said(const tessaly::Message& message);

 private:
  struct Entry {
    QString name;
    MacroPlace place;
    std::optional<std::string> kept = {};    // id of what stood there before; without one nothing did
    std::optional<ContentCheck> left = {};   // without it the operation has left nothing
    std::string oldName = {}, newName = {};  // of a renaming on a panel, which keeps nothing
    std::vector<BatchTrace> batch = {};      // of one; then nothing of the above counts but the name
  };
  struct Result {
    Message message;
    bool over = false;  // the entry goes
  };

  void add(Entry entry);
  [[nodiscard]] Result run(const Entry& entry);
  // A file of the disk, after what it holds is kept; `work` owns what it touches.
  using Work = std::function<Outcome(const SiteRoot& root, const std::string& file)>;
  [[nodiscard]] Outcome change(const Entry& entry, MacroChange how, const Work& work);
  [[nodiscard]] Result putBack(const Entry& entry, const std::string& bytes);
  [[nodiscard]] Result remove(const Entry& entry);
  [[nodiscard]] Result renameBack(const Entry& entry, const std::string& present);
  // Asks unless nothing is lost by it.
  [[nodiscard]] bool confirmed(const Entry& entry, bool altered, bool missing);
  [[nodiscard]] static Result notDone(const Entry& entry, const QString& reason, bool over = false);
  [[nodiscard]] Result done(const QString& text, Grade grade = Grade::kDone);

  SiteAccess site_;
  MacroHistory& history_;
  MacroTransfers& transfers_;
  OpenMacros& open_;
  Entry pending_;
  BatchUndo* batches_ = nullptr;
  std::deque<Entry> row_;  // oldest first
};

}  // namespace tessaly
