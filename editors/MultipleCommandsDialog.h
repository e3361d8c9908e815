#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QDialog>
#include <QTimer>

#include "editors/EditorContext.h"
#include "editors/MultipleCommands.h"
#include "model/MacroFile.h"

namespace Ui {
class MultipleCommandsDialog;
}

namespace tessaly {

class MultipleCommandsModel;
class ParameterUpdate;

// Builds many commands at once and inserts them through the caller. Closes after the last one, accepted. A
// command that cannot be inserted ends the insertion; the dialog stays with what is left.
class MultipleCommandsDialog : public QDialog {
  Q_OBJECT

 public:
  // Puts the drafts into the macro, in their order and as one block, `row` counted as at the time of the call
  // (behind the last command when there is none). How many are in: the first ones. A run is handed over whole
  // or, when it is long, in a few pieces, between which its progress is seen and "Cancel" works; each piece
  // has one workplace.
  using Inserter =
      std::function<int(const std::vector<CommandDraft>& drafts, int workplace, int row, InsertMode mode)>;

  // `position` is that of the macro's selected command, -1 without one.
  MultipleCommandsDialog(const EditorContext& context, int workplace, int position, Inserter inserter,
                         QWidget* parent = nullptr);
  ~MultipleCommandsDialog() override;

  // Commands that are in the macro now, also after "Cancel".
  [[nodiscard]] int insertedCount() const { return insertedCount_; }

  void done(int result) override;

 private:
  struct Insertion {
    std::vector<int> rows;
    std::size_t next = 0;
    InsertMode mode = InsertMode::kAppend;
  };

  void connectList();
  void connectButtons();
  void add(const DestinationNames& destination);
  void addCorrection(const InputCorrection& correction);
  void removeSelected();
  void chooseDestination(int index);
  void updateParameters();
  void showUpdate();
  void complete(const QModelIndex& index);
  void startInsertion(InsertMode mode);
  void insertNext();
  void endInsertion();
  void showOptions();
  void refresh();

  [[nodiscard]] std::vector<int> nextPiece() const;
  [[nodiscard]] std::vector<int> selectedRows() const;
  [[nodiscard]] std::vector<int> chosenRows() const;  // all without a selection

  std::unique_ptr<Ui::MultipleCommandsDialog> ui_;
  EditorContext context_;
  int position_;
  int start_ = 0;  // where "at start" goes on after a failure
  Inserter inserter_;
  std::unique_ptr<MultipleCommandsModel> model_;
  std::unique_ptr<ParameterUpdate> update_;
  QTimer inserting_;
  Insertion insertion_;
  int insertedCount_ = 0;
  bool updating_ = false;  // as it was shown last
};

}  // namespace tessaly
