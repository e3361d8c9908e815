#pragma once

#include <memory>
#include <vector>

#include <QDialog>

#include "editors/EditorContext.h"
#include "editors/MultipleCommands.h"
#include "model/MacroEdit.h"

namespace Ui {
class MultipleCommandsDialog;
}

namespace tessaly {

class MultipleCommandsModel;
class ParameterUpdate;

// Builds many commands at once, which are taken all together.
class MultipleCommandsDialog : public QDialog {
  Q_OBJECT

 public:
  // `position` is that of the macro's selected command, -1 without one.
  MultipleCommandsDialog(const EditorContext& context, int workplace, int position,
                         QWidget* parent = nullptr);
  ~MultipleCommandsDialog() override;

  // What is to be inserted when it is taken: one block in the order of the list, those of one workplace at a
  // time. Each place is that in the macro with the ones before it.
  [[nodiscard]] const std::vector<InsertCommands>& runs() const { return runs_; }

 private:
  void connectList();
  void connectButtons();
  void add(const DestinationNames& destination);
  void addCorrection(const InputCorrection& correction);
  void removeSelected();
  void chooseDestination(int index);
  void updateParameters();
  void showUpdate();
  void complete(const QModelIndex& index);
  void insert(InsertMode mode);
  void showOptions();
  void refresh();

  [[nodiscard]] std::vector<int> selectedRows() const;
  [[nodiscard]] std::vector<int> chosenRows() const;  // all without a selection

  std::unique_ptr<Ui::MultipleCommandsDialog> ui_;
  EditorContext context_;
  int position_;
  std::unique_ptr<MultipleCommandsModel> model_;
  std::unique_ptr<ParameterUpdate> update_;
  std::vector<InsertCommands> runs_;
  bool updating_ = false;  // as it was shown last
};

}  // namespace tessaly
