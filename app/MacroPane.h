#pragma once

#include <memory>

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>

#include "app/CommandActions.h"
#include "app/CommandList.h"
#include "app/PaneControls.h"
#include "app/PaneDescriptor.h"
#include "app/PaneHeading.h"
#include "app/Preferences.h"
#include "link/PanelConnection.h"
#include "model/CommandLine.h"
#include "widgets/ListBox.h"
#include "widgets/WideGroup.h"

namespace Ui {
class MacroPane;
}

namespace tessaly {

// The controls of one macro overview pane, laid out and numbered by a descriptor. Shows what it is told and
// says what the user did; it knows no rule.
class MacroPane : public WideGroup {
  Q_OBJECT

 public:
  explicit MacroPane(const PaneDescriptor& descriptor, QWidget* parent = nullptr);
  ~MacroPane() override;

  [[nodiscard]] const PaneDescriptor& descriptor() const { return descriptor_; }

  [[nodiscard]] ListBox& applications();
  [[nodiscard]] ListBox& controlPanels();
  [[nodiscard]] ListBox& workplaces();
  [[nodiscard]] ListBox& macros();
  [[nodiscard]] CommandList& commands();
  [[nodiscard]] PaneHeading& heading();

  [[nodiscard]] const QList<QAction*>& commandActions() const { return actions_->all(); }

  [[nodiscard]] LineOptions lineOptions() const;
  [[nodiscard]] QLineEdit& address();

  void showSource(PaneSource source);
  void showConnection(const PaneConnectionDisplay& display);
  // Whether anything is behind a connected pane; `elsewhere` is the address of a joined line that is not the
  // pane's own.
  void showLine(PaneLine line, const QString& elsewhere);
  void showControls(const PaneControls& controls);
  void showProgress(const QString& text);
  void applyTabStops();
  void revealHarddiskButton();
  // Gives the keyboard to the control of this pane that had it last.
  void takeFocus();
  // Below the row of the first command that is selected; global.
  [[nodiscard]] QPoint placeOfSelected();
  // Where the borders between the lists stand, and whether commands have stripes.
  void restorePlaces(const Preferences& preferences);
  void keepPlaces(Preferences& preferences) const;

 signals:
  void sourceChosen(tessaly::PaneSource source);
  void addressEdited(const QString& text);
  void addressFinished(bool confirmed);  // by Enter, or by going elsewhere
  void connectPressed();
  void connectAgainPressed();
  void lineChanged();  // as showLine tells
  void optionsChanged();
  void createPressed();
  void copyPressed();
  void renamePressed();
  void deletePressed();
  void newClassicPressed();
  void newCorvanePressed();
  void newMultiplePressed();
  void modifyPressed();
  void deleteCommandPressed();
  void commandActChosen(tessaly::CommandAct act);
  void fileDropped(const QString& file);
  void commandMenuOpens(QMenu* menu);  // for others to add to it
  void updatePressed();
  void savePressed();
  void discardPressed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void numberControls();
  void connectControls();
  void addShortcuts();
  void addDeleteKey(QWidget* list, QPushButton* button);
  void leaveAddress();
  [[nodiscard]] bool takesIntoEmptyList(const QMimeData& carried) const;
  void openCommandMenu(const QPoint& at);
  void placeNotice();
  void layNotice();
  [[nodiscard]] QString placeName(const char* splitter) const;

  const PaneDescriptor& descriptor_;
  std::unique_ptr<Ui::MacroPane> ui_;
  CommandActions* actions_;
  QLabel* notice_;
  void showSourceLabel();

  PaneSource source_ = PaneSource::kHarddisk;  // as shown
  QString sourceText_;                         // over the applications, without what the line adds
  QString lineNotice_;
  int roomForIcons_ = 0;       // pixels that the buttons of commands need with them
  bool connectShown_ = false;  // by the connection; editing may hide the button all the same
  bool connectAllowed_ = true;
  QPointer<QWidget> focusAfterConnect_;  // where the keyboard went when the connect button was taken away
};

}  // namespace tessaly
