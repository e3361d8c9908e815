#include "fuzz/soak/FaultCells.h"

#include <filesystem>

#include <QAbstractButton>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTableView>

#include "app/PaneDescriptor.h"
#include "model/MacroCommand.h"
#include "platform/Text.h"
#include "review/Snapshot.h"
#include "windows/WorkplacesWindow.h"

namespace tessaly {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSlow{100}, kTooLate{60000};
constexpr int kCounts = Workplace::kCount;   // values that a new connection brings
constexpr int kNames = MacroNumber::kCount;  // and those of a workplace
constexpr milliseconds kNoAnswer{150};       // in which an answer would have come
constexpr int kConnectAttempts = 10;
constexpr const char* kOther = "c:\\saved\\other.zip";  // that is restored

const PaneDescriptor::ControlIds& a() { return Desk::ids(Pane::kA); }
const PaneDescriptor::ControlIds& b() { return Desk::ids(Pane::kB); }

struct Sample {
  std::string bytes;
  std::vector<std::string> names;
};

const Sample& sample() {
  static const Sample built = [] {
    Sample sample{"<macro name=\"Four\">\n    <data>\n", {}};
    const FunctionDictionary& dictionary = deskDictionary();
    for (std::size_t i = 0; sample.names.size() < kUpdatable && i < dictionary.functionCount(); ++i) {
      const FunctionRecord function = dictionary.function(i);
      if (function.sid().empty() || draftFor("", function).parameters.size() != 1) continue;
      const std::string name = "QMF1." + function.sid();
      if (std::find(sample.names.begin(), sample.names.end(), name) != sample.names.end()) continue;
      sample.names.push_back(name);
      sample.bytes +=
          "        <cmd fid=\"QMF1." + std::string(function.name()) +
          "\" workplace=\"1\" group=\"0\" module=\"0\" widget=\"0\">\n            <param name=\"" +
          draftFor("", function).parameters.front().name + "\" value=\"old\" />\n        </cmd>\n";
    }
    sample.bytes += "    </data>\n</macro>\n";
    return sample;
  }();
  return built;
}

void number(QDialog& dialog, int number) { WindowDriver::type(dialog, "position", QString::number(number)); }

void accept(QDialog& dialog) { WindowDriver::click(dialog, QStringLiteral("OK")); }

void copyToNew(Desk& desk, int button) {
  desk.press(button, [](QDialog& dialog) {
    number(dialog, kNewNumber);
    accept(dialog);
  });
}

void waitConnected(Desk& desk) {
  WindowDriver::waitFor([&] { return desk.caption(a().connectButton) != "connecting"; },
                        "the end of the attempt");
}

void actConnect(Desk& desk, const Fault&) {
  desk.press(a().connectButton);
  waitConnected(desk);
}
void actJoin(Desk& desk, const Fault&) {
  desk.press(b().panel);
  // Where the line is lost it connects anew.
  WindowDriver::waitFor([&] { return desk.caption(b().connectButton) != "connecting"; },
                        "the end of B's attempt");
}
void actWorkplace(Desk& desk, const Fault&) { desk.driver->choose(a().workplaces, "Workplace 1"); }
void actOpen(Desk& desk, const Fault&) { desk.driver->choose(a().macros, "007"); }
void actCreate(Desk& desk, const Fault&) {
  desk.press(a().createMacro, [](QDialog& dialog) {
    number(dialog, kNewNumber);
    WindowDriver::type(dialog, "name", QStringLiteral("Fresh"));
    accept(dialog);
  });
}
void actCopyToDisk(Desk& desk, const Fault&) { copyToNew(desk, b().copyMacro); }
void actCopyToPanel(Desk& desk, const Fault&) { copyToNew(desk, a().copyMacro); }
void actCopyKey(Desk& desk, const Fault&) {
  desk.driver->choose(b().controlPanels, "CP7");
  desk.driver->clickRow(b().macros, 1);
  copyToNew(desk, a().copyMacro);
}
void actRename(Desk& desk, const Fault&) {
  desk.press(a().renameMacro, [](QDialog& dialog) {
    WindowDriver::type(dialog, "newName", QStringLiteral("Other"));
    accept(dialog);
  });
}
void actDelete(Desk& desk, const Fault&) { desk.press(a().deleteMacro); }
void actSave(Desk& desk, const Fault&) { desk.press(a().saveChanges); }
void actDiscard(Desk& desk, const Fault&) { desk.press(a().discardChanges); }
void update(Desk& desk, const Fault& fault) {
  desk.press(a().updateData);
  // Some values come even when the line breaks in the middle, and the update then ends by itself.
  if (fault.valuesCome || fault.breaksOff)
    WindowDriver::waitFor([&] { return desk.edited(Pane::kA); }, "the end of the update");
  else
    desk.settle(kNoAnswer);
}
void actUpdateAll(Desk& desk, const Fault& fault) { update(desk, fault); }
void actUpdateOne(Desk& desk, const Fault& fault) {
  desk.driver->clickRow(a().commands, 1);
  update(desk, fault);
}
void actMultiple(Desk& desk, const Fault& fault) {
  desk.press(a().newMultiple, [&](QDialog& dialog) {
    const auto button = [&dialog](const char* name) {
      return dialog.findChild<QAbstractButton*>(QLatin1String(name));
    };
    QTest::mouseClick(button("PGM.ME1"), Qt::LeftButton);
    QTest::mouseClick(button("updateParameters"), Qt::LeftButton);
    if (fault.valuesCome)
      WindowDriver::waitFor([&] { return button("insertEnd")->isEnabled(); }, "the values of the commands");
    else
      desk.settle(kNoAnswer);
    WindowDriver::click(dialog, QStringLiteral("Cancel"));
  });
}
void actDisconnect(Desk& desk, const Fault&) { desk.press(a().connectButton); }
void actHarddisk(Desk& desk, const Fault&) { desk.press(a().harddisk); }
void actClose(Desk& desk, const Fault&) {
  desk.dialogs.boxButtons = {QStringLiteral("Save"), QStringLiteral("OK")};
  const bool closed = desk.window->close();
  desk.dialogs.boxButtons = {QStringLiteral("OK")};
  // Unsaved work that could not be saved keeps the window; that is for the person to settle.
  if (closed || !desk.edited(Pane::kA)) return;
  const std::string told = desk.strip();
  desk.press(a().discardChanges);
  desk.window->say({Grade::kNote, QString::fromStdString(told)});  // of the closing, which is judged
}

// The file whose name is typed.
bool named(const Desk& desk, const char* file, QDialog& dialog) {
  if (qobject_cast<QFileDialog*>(&dialog) == nullptr) return false;
  auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  edit->setText(QString::fromStdString(desk.site.root.resolve(file).string()));
  QTest::keyClick(edit, Qt::Key_Return);
  return true;
}
void actSavePanel(Desk& desk, const Fault&) {
  desk.choose(Pane::kA, "Save &Panel As...", [&](QDialog& dialog) { named(desk, kSnapshot, dialog); });
}
void actRestore(Desk& desk, const Fault&) {
  const Snapshot snapshot{
      {"10.0.0.5", {}}, {}, {1}, {{1, *MacroNumber::of(kOpenNumber), "Restored", kRestored}}};
  if (!saveSnapshot(desk.site.root, kOther, snapshot)) throw std::runtime_error("no snapshot");
  desk.choose(Pane::kB, "&Open Snapshot...", [&](QDialog& dialog) { named(desk, kOther, dialog); });
  desk.choose(Pane::kB, "&Restore Snapshot...", [](QDialog& dialog) {
    WindowDriver::click(dialog, QStringLiteral("Restore"));
    WindowDriver::click(dialog, QStringLiteral("Close"));
  });
  const std::string told = desk.strip();
  desk.choose(Pane::kB, "&Close Snapshot");
  desk.window->say({Grade::kNote, QString::fromStdString(told[0] == '0' ? "NOT restored: " + told : told)});
}
// The disk's macro 001 to the panel. What the window tells is put into the strip, to be judged there.
void actCopyWorkplace(Desk& desk, const Fault& fault) {
  desk.choose(Pane::kA, "Work&places...");
  QPointer<WorkplacesWindow> window = desk.window->findChild<WorkplacesWindow*>();
  const auto settled = [&](bool stands) {
    if (stands) desk.settle(kNoAnswer);
    if (stands) window->cancel();
    WindowDriver::waitFor([&] { return !window->busy(); }, "the workplaces");
  };
  settled(fault.stands);
  auto& table = *window->findChild<QTableView*>(QStringLiteral("table"));
  const QModelIndexList found =
      table.model()->match(table.model()->index(0, 0), Qt::DisplayRole, QStringLiteral("001"));
  if (!found.isEmpty()) {
    table.selectRow(found.front().row());
    QTest::keyClick(&table, Qt::Key_Space);
    QTest::mouseClick(window->findChild<QAbstractButton*>(QStringLiteral("toLeft")), Qt::LeftButton);
    settled(fault.stands);
  }
  const QString told = window->findChild<QLabel*>(QStringLiteral("told"))->text();
  window->close();
  WindowDriver::waitFor([&] { return window.isNull(); }, "the end of the window");
  const bool copied = !found.isEmpty() && told.front().isDigit();
  desk.window->say({Grade::kNote, copied ? told : QStringLiteral("0 macros copied: ") + told});
}

void setFaults(Desk& desk, void (*change)(PanelFaults& faults)) {
  PanelFaults faults;
  change(faults);
  desk.first.setFaults(faults);
}

}  // namespace

const std::vector<Fault>& panelFaults() {
  using O = const Operation&;
  static const std::vector<Fault> table = {
      {"none", true, true, false, true, [](Desk&, O) {}},
      {"never-answer", true, false, false, false,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.control.neverAnswer = true; }); }},
      {"answer-after", true, false, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.control.delay = kSlow; }); }},
      {"answer-too-late", true, false, false, false,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.control.delay = kTooLate; }); }},
      {"drop-after", true, false, true, false,
       [](Desk& desk, O operation) {
         PanelFaults faults;
         faults.control.dropAfter = static_cast<std::size_t>(operation.sent + operation.half);
         desk.first.setFaults(faults);
       },
       true},
      {"garble-line", true, false, true, false,
       [](Desk& desk, O operation) {
         PanelFaults faults;
         faults.control.garbleAfter = static_cast<std::size_t>(operation.sent + operation.half);
         desk.first.setFaults(faults);
       },
       true},
      {"dead-line", true, true, false, false,
       [](Desk& desk, O) {
         setFaults(desk, [](PanelFaults& f) { f.control.deadLine = f.ftp.deadLine = true; });
       },
       false, true},
      {"lose-reload", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.loseReload = true; }); }},
      {"garble-transfer", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.garbleAfter = 40; }); }},
      {"line-lost", true, false, true, false,
       [](Desk& desk, O) {
         desk.first.simulator.dropConnections();
         WindowDriver::waitFor([&] { return desk.first.simulator.connections() == 0; },
                               "the end of the line");
       }},
      {"gone", true, true, true, false, [](Desk& desk, O) { desk.first.simulator.stop(); }},
      {"gone-and-back", true, true, true, false,
       [](Desk& desk, O) {
         desk.first.simulator.stop();
         desk.first.begin();
       }},
      {"refuse-login", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.refuseLogin = true; }); }},
      {"cut-transfer-0", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.cutAfter = 0; }); }},
      {"cut-transfer-40", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.cutAfter = 40; }); }},
      {"stall-transfer", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.stallTransfer = true; }); }, false,
       true},
      {"disk-full", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.diskFull = true; }); }},
      {"refuse-download", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.refuseDownload = true; }); }},
      {"flip-byte", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.flipByte = 20; }); }},
      {"cut-silent", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.cutSilent = 40; }); }},
      {"swap-after-upload", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.swapAfterUpload = true; }); }},
      {"slow-transfer", false, true, false, true,
       [](Desk& desk, O) { setFaults(desk, [](PanelFaults& f) { f.ftp.bytesPerSecond = 100'000; }); }},
  };
  return table;
}

const std::vector<Operation>& windowOperations() {
  constexpr int kAll = kCounts + kNames;
  static const std::vector<Operation> operations = {
      {"connect", Stage::kNotConnected, true, false, 0, kCounts / 2, "", "", actConnect},
      {"join", Stage::kWorkplace, true, false, kAll, 0, "", "", actJoin},
      {"choose workplace", Stage::kConnected, true, false, kCounts, kNames / 2, "", "", actWorkplace},
      {"open macro", Stage::kWorkplace, false, true, kAll, 0, "", "", actOpen},
      {"create", Stage::kWorkplace, true, true, kAll, 1, "panel:33", "created on the panel: ", actCreate},
      {"copy to disk", Stage::kMacro, false, true, kAll, 0, "disk:33", "copied: ", actCopyToDisk},
      {"copy to panel", Stage::kMacro, true, true, kAll, 1, "panel:33", "copied: ", actCopyToPanel},
      {"copy key to panel", Stage::kMacro, true, true, kAll, 1, "panel:33", "copied: ", actCopyKey},
      {"copy on panel", Stage::kBothOnPanel, true, true, kAll, 1, "panel:33", "copied: ", actCopyToPanel},
      {"rename", Stage::kMacro, true, false, kAll, 1, "panel:7", "asked: ", actRename},
      {"delete", Stage::kMacro, true, false, kAll, 1, "panel:7", "asked: ", actDelete},
      {"save", Stage::kEdited, true, true, kAll, 0, "panel:7", "saved: ", actSave},
      {"discard", Stage::kEdited, false, true, kAll, 0, "", "", actDiscard},
      {"update all", Stage::kMacro, true, false, kAll, kUpdatable / 2, "", "", actUpdateAll},
      {"update one", Stage::kMacro, true, false, kAll, 1, "", "", actUpdateOne},
      {"values of many", Stage::kMacro, true, false, kAll, 1, "", "", actMultiple},
      {"disconnect", Stage::kMacro, true, false, kAll, 0, "", "", actDisconnect},
      {"to the harddisk", Stage::kMacro, true, false, kAll, 0, "", "", actHarddisk},
      {"close", Stage::kMacro, true, false, kAll, 0, "", "", actClose},
      {"copy workplace", Stage::kMacro, true, true, kAll, 0, "panel:1", "1 macros copied", actCopyWorkplace,
       "0 macros copied", true},
      {"save panel", Stage::kMacro, true, true, kAll, kNames / 2, "", "saved and verified: ", actSavePanel,
       "NOT saved: ", true},
      {"restore", Stage::kMacro, true, true, kAll, 0, "panel:7", "1 macros are restored", actRestore,
       "NOT restored: ", true},
      {"close and save", Stage::kEdited, true, true, kAll, 0, "panel:7", "saved: ", actClose},
  };
  return operations;
}

void layOutMacros(Desk& desk) {
  namespace fs = std::filesystem;
  for (const auto& entry :
       fs::directory_iterator(desk.first.tree.root.resolve("flash/data/PANEL/macro/workplace1"))) {
    fs::remove(entry.path());
  }
  fs::remove(desk.site.root.resolve(kDiskFolder + std::string("macro033.mac")));
  fs::create_directories(desk.site.root.resolve("c:\\saved"));
  fs::remove(desk.site.root.resolve(kSnapshot));
  desk.first.tree.write(DeskPanel::file(1, kFirstNumber), "<macro name=\"Zero\"><data/></macro>");
  desk.first.tree.write(DeskPanel::file(1, kOpenNumber), openMacroBytes());
  // Its name is the last one to come.
  desk.first.tree.write(DeskPanel::file(1, MacroNumber::kCount - 1), "<macro name=\"Last\"><data/></macro>");
  desk.first.simulator.reload();
}

void bringTo(Desk& desk, Stage stage) {
  for (const Pane pane : kPanes)
    if (desk.edited(pane)) desk.press(Desk::ids(pane).discardChanges);
  desk.press(b().harddisk);
  desk.press(a().panel);
  waitConnected(desk);
  if (desk.caption(a().connectButton) == "disconnect") desk.press(a().connectButton);
  desk.press(b().panel);
  desk.typeAddress(Pane::kB, desk.first.addressText());
  desk.press(b().harddisk);
  desk.driver->choose(b().applications, "Evening News");
  desk.driver->choose(b().macros, "001");
  desk.typeAddress(Pane::kA, desk.first.addressText());
  if (stage == Stage::kNotConnected) return;
  for (int i = 0; i < kConnectAttempts && desk.caption(a().connectButton) != "disconnect"; ++i) {
    desk.press(a().connectButton);
    waitConnected(desk);
  }
  WindowDriver::waitFor([&] { return desk.hasRow(a().workplaces, "Workplace 4"); }, "the workplaces");
  if (stage == Stage::kConnected) return;
  desk.driver->choose(a().workplaces, "Workplace 1");
  WindowDriver::waitFor([&] { return desk.driver->texts(a().macros).size() == 3; }, "the macros");
  if (stage == Stage::kWorkplace) return;
  desk.driver->choose(a().macros, "007");
  if (desk.driver->texts(a().commands).size() != kUpdatable)
    throw std::runtime_error("the macro does not open");
  if (stage == Stage::kMacro) return;
  if (stage == Stage::kBothOnPanel) {
    desk.press(b().panel);
    WindowDriver::waitFor([&] { return desk.hasRow(b().workplaces, "Workplace 1"); }, "B's workplaces");
    desk.driver->choose(b().workplaces, "Workplace 1");
    WindowDriver::waitFor([&] { return desk.hasRow(b().macros, "000 - Zero"); }, "B's macros");
    desk.driver->choose(b().macros, "000");
    return;
  }
  desk.driver->clickRow(a().commands, 1);
  desk.press(a().deleteCommand);
}

const std::string& openMacroBytes() { return sample().bytes; }

std::vector<std::string> openMacroValues() { return sample().names; }

}  // namespace tessaly
