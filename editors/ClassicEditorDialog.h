#pragma once

#include <memory>

#include <QDialog>

#include "classic/ClassicBuilder.h"
#include "editors/EditorContext.h"
#include "values/Destination.h"

namespace Ui {
class ClassicEditorDialog;
}

namespace tessaly {

class ListBox;

// Builds or changes one classic command by five lists from left to right. Shows what ClassicBuilder holds and
// hands on the choices.
class ClassicEditorDialog : public QDialog {
  Q_OBJECT

 public:
  enum class Outcome { kAtStart = 0, kAtSelected = 1, kAtEnd = 2, kCancel = 3 };

  // Create mode. `commandSelected` enables "insert at selected command". Destinations are
  // mainframes.
  ClassicEditorDialog(const EditorContext& context, bool commandSelected, Destination destination,
                      QWidget* parent = nullptr);
  // Modify mode on a copy of `command`.
  ClassicEditorDialog(const EditorContext& context, const ClassicCommand& command, Destination destination,
                      QWidget* parent = nullptr);
  ~ClassicEditorDialog() override;

  // Of the button that was pressed last.
  [[nodiscard]] Outcome outcome() const { return outcome_; }
  [[nodiscard]] const ClassicCommand& command() const { return builder_.command(); }
  [[nodiscard]] Destination destination() const;
  // Whether command or destination are others than at the opening. If not there is nothing to store: a
  // command that no text form holds would be lost by it.
  [[nodiscard]] bool changed() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void setUp(Destination destination);
  void connectLists();
  void connectButtons();
  void showRows(ListBox& list, const std::vector<ClassicBuilder::Row>& rows,
                std::optional<std::size_t> chosen, const std::string& of = {});
  void refresh(std::optional<std::size_t> parameter = std::nullopt);
  void refreshTexts();
  void tellEmptyLists();
  void enterParameter(std::size_t row);
  void enterNumber(std::size_t row, const ParameterRange& range);
  void enterTimecode(std::size_t row);
  void enterInput(std::size_t row);
  void enterClip(std::size_t row);
  void enterText(std::size_t row);
  void end(Outcome outcome);

  EditorContext context_;
  ClassicBuilder builder_;
  std::unique_ptr<Ui::ClassicEditorDialog> ui_;
  Outcome outcome_ = Outcome::kCancel;
  ClassicCommand openedCommand_;  // as the dialog was opened
  Destination openedDestination_;
};

}  // namespace tessaly
