// The window on a panel: names until they are listed, values until the macro is in edit state.
#include <filesystem>
#include <fstream>
#include <set>
#include <tinyxml.h>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>

#include "bench/BareLine.h"
#include "bench/InterfaceSample.h"
#include "bench/Table.h"
#include "bench/window/Desk.h"
#include "bench/window/WindowSite.h"
#include "dictionary/InterfaceFile.h"
#include "panelsim/PanelSimulator.h"
#include "platform/Files.h"
#include "windows/CaptureWindow.h"

namespace tessaly::bench::panel_window_rows {
namespace {

constexpr int kValues = 1000;
constexpr QSize kPlainSize{1000, 600};  // pixels, as that of a capture
constexpr double kQuiet = 0.5;          // seconds without a value that end an update

// A panel with 1,000 macros in workplace 1 and one macro of 1,000 commands in workplace 2.
struct Panel {
  std::unique_ptr<PanelSimulator> simulator;
  std::unique_ptr<Desk> desk;
  std::vector<std::string> macroNames, values;

  Panel() {
    PanelOptions options;
    options.controlPort = options.ftpPort = 0;
    options.root = (scratchFolder() / "window-panel").string();
    options.site = windowSite().path().string();
    toolkit();
    FunctionDictionary dictionary;
    loadFunctionDictionary(windowSite(), dictionary, [](const std::string&) {});
    writeMacros(options.root, dictionary);
    simulator = std::make_unique<PanelSimulator>(options, [](const std::string&) {});
    std::string reason;
    if (!simulator->start(reason)) std::abort();
    desk = std::make_unique<Desk>(windowSite(), simulator->ftpPort());
    connect();
  }

  void writeMacros(const std::filesystem::path& root, const FunctionDictionary& dictionary) {
    const auto folder = root / "flash/data/PANEL/macro";
    std::filesystem::create_directories(folder / "workplace1");
    std::filesystem::create_directories(folder / "workplace2");
    for (int number = 0; number < kMacros; ++number) {
      const std::string text = std::to_string(number);
      std::ofstream(folder / "workplace1" / ("macro" + std::string(3 - text.size(), '0') + text + ".mac"))
          << "<macro name=\"Macro number " << number << "\"><data></data></macro>";
      macroNames.push_back("PANEL.MACRO1.REG" + text + ".NAME");
    }
    std::ofstream macro(folder / "workplace2" / "macro000.mac");
    macro << "<macro name=\"Values\"><data>\n";
    std::set<std::string> sids;
    for (std::size_t i = 0; i < dictionary.functionCount() && sids.size() < kValues; i += 3) {
      const FunctionRecord function = dictionary.function(i);
      if (function.incremental() || !sids.insert(function.sid()).second) continue;
      macro << "<cmd fid=\"QMF1." << function.name()
            << "\" workplace=\"1\"><param name=\"VALUE\" value=\"0\"/></cmd>\n";
      values.push_back("QMF1." + function.sid());
    }
    macro << "</data></macro>\n";
  }

  void choose(const PaneDescriptor::ControlIds& ids) const {
    desk->user().press(ids.panel);
    auto& edit = desk->user().control<QLineEdit>(ids.address);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClicks(&edit, QStringLiteral("127.0.0.1:%1").arg(simulator->controlPort()));
  }

  void connect() const {
    const auto& ids = Desk::ids(Pane::kA);
    desk->act(
        [this, &ids] {
          choose(Desk::ids(Pane::kB));
          choose(ids);
          desk->user().press(ids.connectButton);
        },
        ids.workplaces, [this, &ids] { return desk->user().list(ids.workplaces).rows().rowCount() > 1; });
  }
};

Panel& panel() {
  static auto* made = new Panel;
  return *made;
}

const PaneDescriptor::ControlIds& ids() { return Desk::ids(Pane::kA); }

void chooseWorkplace(int row, int macros) {
  panel().desk->act([row] { panel().desk->user().clickRow(ids().workplaces, row); }, ids().macros,
                    [macros] {
                      RowsView& list = panel().desk->user().list(ids().macros);
                      // One row alone may be the one that says that no names have come.
                      return list.isEnabled() && list.rows().rowCount() == macros;
                    });
}

int commandsShown() { return panel().desk->user().list(ids().commands).rows().rowCount(); }

bool edited() { return panel().desk->user().control<QAbstractButton>(ids().saveChanges).isVisible(); }

void updateAll() {
  panel().desk->act([] { panel().desk->user().press(ids().updateData); }, ids().commands, edited);
}

// What an update ends with, of the same macro.
void loadAndSaveSynced() {
  TiXmlDocument document;
  const auto file = scratchFolder() / "window-panel/flash/data/PANEL/macro/workplace2/macro000.mac";
  require(document.LoadFile(file.c_str()));
  TiXmlPrinter printer;
  document.Accept(&printer);
  require(writeFile(windowSite(), "c:\\saved.mac", printer.Str()));
}

// Starts it in the window of the capture, until that shows every value.
void capture(const std::function<void(MainWindow&)>& start) {
  MainWindow& window = panel().desk->window();
  const auto opened = [&window] { return window.findChild<CaptureWindow*>(); };
  panel().desk->act([&] { start(window); },
                    [&opened]() -> QAbstractItemView* {
                      return opened() ? opened()->findChild<QTreeView*>("values") : nullptr;
                    },
                    [&opened] {
                      const QStringList told = opened()->findChild<QLabel*>("counts")->text().split(' ');
                      return told.size() > 2 && told[0] == told[2] && told[0] != "0";  // "1000 of 1000"
                    });
}

void openCapture() {
  capture([](MainWindow& window) { window.findChild<QAction*>("capture")->trigger(); });
}

void captureAnew() {
  capture([](MainWindow& window) {
    window.findChild<CaptureWindow*>()->findChild<QAbstractButton*>("anew")->click();
  });
}

// What any window with such a list costs until it is painted.
void showPlainList() {
  std::unique_ptr<QDialog> window;
  QTreeView* list = nullptr;
  panel().desk->act(
      [&] {
        window = std::make_unique<QDialog>(&panel().desk->window());
        list = new QTreeView(window.get());
        list->setUniformRowHeights(true);
        auto* rows = new QStandardItemModel(kValues, CaptureModel::kColumns, list);
        for (int row = 0; row < rows->rowCount(); ++row)
          for (int column = 0; column < rows->columnCount(); ++column)
            rows->setData(rows->index(row, column), QStringLiteral("a text of row %1").arg(row));
        list->setModel(rows);
        (new QVBoxLayout(window.get()))->addWidget(list);
        window->resize(kPlainSize);
        window->show();
      },
      [&list]() -> QAbstractItemView* { return list; }, [] { return true; });
}

void openValues() {
  if (edited())
    panel().desk->act([] { panel().desk->user().press(ids().discardChanges); }, ids().commands,
                      [] { return !edited() && commandsShown() == kValues; });
  else if (commandsShown() != kValues) {
    chooseWorkplace(1, 1);
    panel().desk->act([] { panel().desk->user().clickRow(ids().macros, 0); }, ids().commands,
                      [] { return commandsShown() == kValues; });
  }
  QCoreApplication::processEvents();  // what is left to do of this is not the update's
}

// What the panel has told on one line is known on it, so each question needs a new one.
void openValuesOnNewLine() {
  if (edited())
    panel().desk->act([] { panel().desk->user().press(ids().discardChanges); }, ids().commands,
                      [] { return !edited(); });
  panel().desk->user().press(ids().connectButton);
  panel().connect();
  openValues();
}

void closeCapture() {
  delete panel().desk->window().findChild<CaptureWindow*>();
  openValuesOnNewLine();
}

void joinPaneB() {
  const WindowDriver& user = panel().desk->user();
  const auto& b = Desk::ids(Pane::kB);
  panel().desk->act([&] { user.press(b.connectButton); }, b.workplaces,
                    [&] { return user.list(b.workplaces).rows().rowCount() > 1; });
  panel().desk->act([&] { user.clickRow(b.workplaces, 1); }, b.macros,
                    [&] { return user.texts(b.macros) == std::vector<std::string>{"000 - Values"}; });
}

// Pane B's values are written into its file while they come.
double stretchOfPaneB() {
  const Desk& desk = *panel().desk;
  const auto& b = Desk::ids(Pane::kB);
  const auto isEdited = [&] { return desk.user().control<QAbstractButton>(b.saveChanges).isVisible(); };
  if (desk.user().list(b.workplaces).rows().rowCount() == 0) joinPaneB();
  panel().desk->act([&] { desk.user().clickRow(b.macros, 0); }, b.commands,
                    [&] { return desk.user().list(b.commands).rows().rowCount() == kValues; });
  panel().desk->takeLongestStretch();
  panel().desk->act([&] { desk.user().press(b.updateData); }, b.commands, isEdited);
  const double longest = panel().desk->takeLongestStretch();
  panel().desk->act([&] { desk.user().press(b.discardChanges); }, b.commands, [&] { return !isEdited(); });
  return longest;
}

const bool kRegistered[] = {
    addPair({.name = "1,000 names from the panel until listed, beside counting the lines",
             .measured = [] { chooseWorkplace(0, kMacros); },
             .limit = [] { subscribeAndCount(panel().simulator->controlPort(), panel().macroNames); },
             .goal = 5,
             .prepare = [] { panel(); },
             .reset = [] { chooseWorkplace(1, 1); }}),
    addPair({.name = "update of 1,000 commands until edit state, less the quiet time",
             .measured = updateAll,
             .limit = [] { subscribeAndCount(panel().simulator->controlPort(), panel().values); },
             .goal = 2,
             .prepare = [] { panel(); },
             .reset = openValues,
             .measuredWait = kQuiet}),
    addPair({.name = "the same, beside the wire, LoadFile and a synced save",
             .measured = updateAll,
             .limit =
                 [] {
                   subscribeAndCount(panel().simulator->controlPort(), panel().values);
                   loadAndSaveSynced();
                 },
             .goal = 1.5,
             .prepare = [] { panel(); },
             .reset = openValues,
             .measuredWait = kQuiet}),
    addPair({.name = "capture of 1,000 commands until shown, beside the bare wire",
             .measured = captureAnew,
             .limit = [] { subscribeAndCount(panel().simulator->controlPort(), panel().values); },
             .goal = 2,
             .prepare =
                 [] {
                   closeCapture();
                   openCapture();
                   openValuesOnNewLine();
                 },
             .reset = openValuesOnNewLine}),
    addPair({.name = "the same in a new window, beside the wire and a plain list",
             .measured = openCapture,
             .limit =
                 [] {
                   showPlainList();
                   subscribeAndCount(panel().simulator->controlPort(), panel().values);
                 },
             .goal = 2,
             .prepare = closeCapture,
             .reset = closeCapture}),
    addFigure({.name = "longest stretch of the GUI thread: 1,000 names, an update",
               .unit = kSeconds,
               .take =
                   [] {
                     Desk& desk = *panel().desk;
                     openValues();
                     desk.takeLongestStretch();
                     updateAll();
                     openValues();
                     chooseWorkplace(0, kMacros);
                     return Figures{desk.takeLongestStretch(), 0.05};
                   }}),
    addFigure({.name = "the same: an update of 1,000 commands in pane B",
               .unit = kSeconds,
               .take =
                   [] {
                     return Figures{stretchOfPaneB(), 0.05};
                   }}),
};

}  // namespace
}  // namespace tessaly::bench::panel_window_rows
