#pragma once

#include <array>
#include <memory>

#include <QLabel>
#include <QMainWindow>

#include "app/Acts.h"
#include "app/Browser.h"
#include "app/CommandEditing.h"
#include "app/CommandRuns.h"
#include "app/EventGate.h"
#include "app/HistoryOperations.h"
#include "app/LooseMacros.h"
#include "app/MacroOperations.h"
#include "app/MacroPane.h"
#include "app/MacroTransfers.h"
#include "app/MacroUndo.h"
#include "app/OpenMacros.h"
#include "app/PaneState.h"
#include "app/PanelBridge.h"
#include "app/PanelTransfer.h"
#include "app/Recovery.h"
#include "app/ReviewDesk.h"
#include "app/StepOperations.h"
#include "app/ValueUpdate.h"
#include "app/WindowContext.h"
#include "model/MacroHistory.h"
#include "model/Settings.h"
#include "values/SourceNames.h"

namespace Ui {
class MainWindow;
}

namespace tessaly {

// How another site is found.
enum class SiteWish { kOpen, kChoose, kSample };

// The main window: two macro overview panes, a small menu and a status strip. Lays out and hands on; the
// rules are those of Browser, MacroOperations and the connection.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  explicit MainWindow(const WindowContext& context, QWidget* parent = nullptr);
  ~MainWindow() override;

  [[nodiscard]] const Settings& settings() const { return settings_; }
  [[nodiscard]] bool loaded() const { return loaded_; }
  // For those who open boxes over this window.
  [[nodiscard]] EventGate& gate() { return gate_; }

  // Writes the settings and how the window stands, without a question; the window goes on.
  void keepState();
  // What closing does, without a question: unsaved changes stay for the next start. False while a transfer is
  // being given up; to be asked again soon then.
  [[nodiscard]] bool end();

  // Leads the keyboard to the pane that does not have it.
  void switchPane();
  // Opens the guide at a page and, behind "#", a place of it; without them at what the keyboard is in.
  void showGuide(const QString& place = {});

 public slots:
  void say(const tessaly::Message& message);

 signals:
  void siteWanted(tessaly::SiteWish wish);  // the user wants to work on another site

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct PaneRoom {
    MacroPane* view;
    std::unique_ptr<PaneState> state;
    std::unique_ptr<Browser> browser;
  };

  void layOut();
  void addActs(const PaneAccesses& rooms);
  void restorePlaces();
  void keepPlaces();
  void followKeyboard(const QWidget* to);
  void showActs();
  void showFinding();
  void connectPane(Pane pane);
  void connectOperations(Pane pane);
  void save(Pane pane);
  [[nodiscard]] bool holdsLists(Pane pane) const;
  void connectPanel();
  void connectStrip();
  void readSettingsFile();
  [[nodiscard]] const Settings& settingsNow();
  void dictionaryLoaded();
  void updateControls();
  void showDemo();
  void whenFree(const char* what, Pane pane, const std::function<void()>& action);
  void watchConnection();
  [[nodiscard]] PaneSituation situation(Pane pane) const;
  // Asks what becomes of unsaved changes; false to stay.
  [[nodiscard]] bool mayClose();

  [[nodiscard]] PaneRoom& room(Pane pane) { return rooms_[index(pane)]; }
  [[nodiscard]] const PaneRoom& room(Pane pane) const { return rooms_[index(pane)]; }

  WindowContext context_;
  LineContext lines_;
  QTimer connectionWatch_;
  std::optional<unsigned> toldLoss_;  // the last one
  Settings settings_;
  std::optional<Failure> settingsUnread_;  // what the file holds is not ours to overwrite then
  bool loaded_ = false;
  std::unique_ptr<Ui::MainWindow> ui_;
  QLabel* loadingNotice_ = nullptr;
  Pane keyboardPane_ = Pane::kA;  // that has the keyboard, or had it last

  EventGate gate_;
  PanelBridge bridge_;
  PanelSubscriptions subscriptions_;
  PanelConnection connection_;
  MacroNames panelNames_;
  PanelTransfer transfer_;
  MacroTransfers transfers_;
  std::array<PaneRoom, kPanes.size()> rooms_;
  std::unique_ptr<OpenMacros> open_;
  std::unique_ptr<MacroUndo> macroUndo_;
  std::unique_ptr<MacroOperations> operations_;
  std::unique_ptr<ValueUpdate> update_;
  std::unique_ptr<StepOperations> steps_;
  std::unique_ptr<CommandEditing> editing_;
  std::unique_ptr<CommandRuns> runs_;
  std::unique_ptr<LooseMacros> loose_;
  std::unique_ptr<Recovery> recovery_;
  std::unique_ptr<HistoryOperations> historyOperations_;
  std::unique_ptr<ReviewDesk> desk_;
  std::unique_ptr<Acts> acts_;
  std::vector<PanelSource> inputSources_;  // for "Select Input"
};

}  // namespace tessaly
