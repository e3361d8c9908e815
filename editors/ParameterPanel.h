#pragma once

#include <memory>

#include <QWidget>

#include "editors/DraftParameters.h"
#include "widgets/Beep.h"

namespace Ui {
class ParameterPanel;
}

namespace tessaly {

// The parameters of a command with the value of the selected one, its choices and its range, and the video
// standard. Every key in the value field passes the entry filter; what it stands for is stored at once.
class ParameterPanel : public QWidget {
  Q_OBJECT

 public:
  // "50Hz" and "60Hz" set `frameRate` at once. Both references outlive the widget.
  ParameterPanel(const std::vector<PanelSource>& sources, int& frameRate, Beep beep,
                 QWidget* parent = nullptr);
  ~ParameterPanel() override;

  // Takes up a command, whose parameters are those of `function`, and selects its first one.
  void begin(const FunctionRecord& function, CommandDraft draft);
  // Nothing is shown but the video standard.
  void clear();
  void setRaw(bool raw);

  // With the entry that is under way finished.
  [[nodiscard]] CommandDraft draft() const;
  [[nodiscard]] bool complete() const { return parameters_.complete(); }

  [[nodiscard]] int selectedParameter() const;  // -1 when none
  void selectParameter(int row);
  // A value from elsewhere than the keyboard, as it is stored.
  void setValue(int row, std::string value);

  // Its controls follow `before` on the way of the Tab key.
  void tabAfter(QWidget* before);
  void focusList();
  void focusEntry();

 signals:
  void changed();
  void finished();  // Enter was pressed and no parameter is left that lacks its value

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void connectControls();
  void addKeys();
  void setVisibleControls(bool visible);
  void showParameters();
  void showSelected();
  void showOptional();
  void showTimecodeHelp();
  void choose(int row);
  void fill(const QString& text);
  void edit(const QString& text);
  void correct(const QString& text);
  void finishEntry();
  void goOn();
  void step(int rows);

  std::unique_ptr<Ui::ParameterPanel> ui_;
  DraftParameters parameters_;
  std::vector<DraftParameters::Choice> choices_;  // of the selected parameter
  QString standing_;                              // in the field, before what the user does now
  QString openedText_;  // as the field was filled by program, and what is stored for it
  std::string openedValue_;
  bool undoing_ = false;  // by the key that is being handled
  int& frameRate_;
  Beep beep_;
};

}  // namespace tessaly
