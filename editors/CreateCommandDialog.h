#pragma once

#include <array>
#include <memory>
#include <optional>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "editors/CommandChooser.h"
#include "editors/EditorContext.h"
#include "editors/FoundFunctions.h"
#include "editors/ParameterPanel.h"
#include "link/PanelQuestions.h"
#include "model/MacroFile.h"
#include "widgets/ListBox.h"

namespace Ui {
class CreateCommandDialog;
}

namespace tessaly {

// Builds a panel-style command: destination, function, parameters, and where it is to be inserted. The
// command stands in draft(), mode() and workplace() when it is to be taken.
class CreateCommandDialog : public QDialog {
  Q_OBJECT

 public:
  // `workplace` is written unless another one is chosen. `commandSelected` allows insertion at that command;
  // once one was inserted and the dialog has stayed, there is one.
  CreateCommandDialog(const EditorContext& context, int workplace, bool commandSelected,
                      QWidget* parent = nullptr, Beep beep = systemBeep());
  ~CreateCommandDialog() override;

  [[nodiscard]] const CommandDraft& draft() const { return draft_; }
  [[nodiscard]] InsertMode mode() const { return mode_; }
  [[nodiscard]] int workplace() const;
  // The dialog stays for the next command: with "keep open", and on Enter's way.
  [[nodiscard]] bool stays() const { return stays_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct SearchColumn {
    QLineEdit* text;
    QPushButton* clear;
    ListBox* list;
  };

  void layOut();
  void connectChoice();
  void connectSearch(std::size_t search);
  void connectCommand();
  void addShortcuts();

  void chooseDestination(int destination);
  void showChoice();
  void showList(ListBox& box, const CommandChooser::List& list);
  void showFound();
  [[nodiscard]] QString emptyListText(std::size_t level) const;
  void followSelection();
  void chooseFunction();
  void checkReady();
  void updateData();
  void takeValue(const std::string& value);
  void watchLine();
  void insert(InsertMode mode, bool stays);
  void goOn();
  void focusFound();
  void takeBest();
  void goOnFromFound();
  // What the chosen function, with the values that it has so far, can be looked for by.
  void openWhereUsed(const QPoint& at);

  EditorContext context_;
  int workplace_;
  bool commandSelected_;
  std::unique_ptr<Ui::CreateCommandDialog> ui_;
  CommandChooser chooser_;
  FoundFunctions found_;
  PanelQuestions question_;
  ParameterPanel* parameters_;
  std::array<ListBox*, CommandChooser::kSubgroups> subgroups_;
  std::array<SearchColumn, CommandChooser::kSearches> searches_;

  // The chosen one. A name that both files have is listed twice, and the first of them is what is written.
  std::optional<FunctionRecord> function_;
  std::size_t listed_ = 0;           // its row's own, by its index
  QLineEdit* lastSearch_ = nullptr;  // that was typed into
  bool chosenSinceTyped_ = true;     // a function, after the words
  bool showing_ = false;             // the list of functions is being filled by program
  int askedParameter_ = -1;          // which one the panel was asked for
  QTimer lineWatch_;                 // runs while the panel's answer is waited for
  CommandDraft draft_;
  InsertMode mode_ = InsertMode::kAppend;
  bool stays_ = false;
  int inserted_ = 0;  // with the dialog kept open
};

}  // namespace tessaly
