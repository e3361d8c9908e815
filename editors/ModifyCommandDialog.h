#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>

#include <QDialog>

#include "editors/EditorContext.h"
#include "editors/FunctionSegments.h"
#include "editors/ParameterPanel.h"
#include "model/MacroCommand.h"
#include "widgets/ListBox.h"

namespace Ui {
class ModifyCommandDialog;
}

namespace tessaly {

// Changes a panel-style command: its function segment by segment, its mainframe or workplace, its values. The
// changed command stands in draft() and workplace() when it is to be taken, and once the dialog was accepted.
class ModifyCommandDialog : public QDialog {
  Q_OBJECT

 public:
  ModifyCommandDialog(const EditorContext& context, const MacroCommand& command, QWidget* parent = nullptr,
                      Beep beep = systemBeep());
  ~ModifyCommandDialog() override;

  [[nodiscard]] const CommandDraft& draft() const { return draft_; }
  // As the command has it until another one is chosen; any number then.
  [[nodiscard]] int workplace() const;
  void accept() override;

 private:
  void layOut();
  void connectControls();
  void startOver();
  void showLevels();
  void lookUp();
  void rememberValues();
  [[nodiscard]] std::string destinationPrefix() const;
  void changed();
  void checkReady();

  EditorContext context_;
  MacroCommand command_;  // as it was given
  bool onPanel_;
  std::unique_ptr<Ui::ModifyCommandDialog> ui_;
  ParameterPanel* parameters_;
  std::array<ListBox*, FunctionSegments::kLevels> lists_;

  FunctionSegments segments_;
  std::optional<FunctionRecord> function_;  // the last one that was found
  bool found_ = false;                      // the segments name a function
  bool destinationChosen_ = false;          // by the user
  // By parameter name, of all functions so far that hold their values in the same form, and in the other one:
  // incremental functions are in fixed point.
  std::map<std::string, std::string> values_, otherForm_;
  CommandDraft draft_;
};

}  // namespace tessaly
