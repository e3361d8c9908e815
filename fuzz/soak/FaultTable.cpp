#include "fuzz/soak/FaultTable.h"

#include <algorithm>
#include <cstdio>

#include <QElapsedTimer>

#include "app/PaneDescriptor.h"
#include "fuzz/soak/ControlRules.h"
#include "fuzz/soak/FaultCells.h"
#include "fuzz/soak/SoakCheck.h"
#include "platform/Text.h"
#include "review/Snapshot.h"

namespace tessaly {
namespace {

constexpr const char* kQuiet = "quiet";
constexpr const char* kFailed = "Connection failed.....";

using FileBytes = std::map<std::string, std::string>;

FileBytes filesOf(const TestSite& site, const std::string& folder, const std::string& prefix) {
  FileBytes files;
  for (const auto& [number, bytes] : readMacroFiles(site, folder))
    files[prefix + std::to_string(number)] = bytes;
  return files;
}

FileBytes allFiles(const Desk& desk) {
  FileBytes files = filesOf(desk.first.tree, "flash/data/PANEL/macro/workplace1/", "panel:");
  files.merge(filesOf(desk.site, kDiskFolder, "disk:"));
  return files;
}

bool startsWith(const std::string& text, const char* beginning) { return text.rfind(beginning, 0) == 0; }

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

// One cell of the table.
class Cell {
 public:
  Cell(Desk& desk, const Fault& fault, const Operation& operation)
      : desk_(desk), fault_(fault), operation_(operation) {}

  // What went wrong; empty when nothing did.
  std::string run(std::size_t threads) {
    try {
      layOutMacros(desk_);
      bringTo(desk_, operation_.stage);
      before_ = allFiles(desk_);
      static_cast<void>(desk_.dialogs.takeTexts());
      desk_.window->say({Grade::kNote, QLatin1String(kQuiet)});
      desk_.dialogs.cancelProgress = fault_.stands;
      fault_.begin(desk_, operation_);
      operation_.act(desk_, fault_);
      desk_.settle({});
      checkAfter();
    } catch (const std::exception& error) {
      problems_ += std::string(" ") + error.what() + ";";
    }
    heal(threads);
    return problems_;
  }

 private:
  void expect(bool holds, const std::string& what) {
    if (!holds) problems_ += " " + what + ";";
  }

  void checkAfter() {
    if (desk_.window->isVisible()) problems_ += controlProblems(desk_);
    checkBoxes();
    checkStripAndFiles();
    checkWorkingCopies();
    checkUpdate();
    checkSnapshot();
    const bool silent = desk_.strip() == kQuiet;
    const bool connected =
        desk_.visible(a().connectButton) && desk_.caption(a().connectButton) == "disconnect";
    if (!Desk::lineUp() && silent && connected)
      WindowDriver::waitFor([this] { return contains(desk_.strip(), "was lost"); }, "word of the loss");
  }

  void checkBoxes() {
    const std::vector<std::string> texts = desk_.dialogs.takeTexts();
    const bool connects = operation_.stage == Stage::kNotConnected;
    const bool reached = desk_.caption(a().connectButton) == "disconnect";
    const auto failures = std::count(texts.begin(), texts.end(), kFailed);
    // Pane B, beside a pane on a lost line, connects as well.
    const bool anew = fault_.losesLine && operation_.name == std::string_view("join");
    const bool failed = (connects && !reached) || (anew && desk_.caption(b().connectButton) != "disconnect");
    expect(failures == (failed ? 1 : 0), std::to_string(failures) + " boxes of a failed connection");
    if (connects)
      expect(reached == (fault_.valuesCome || fault_.breaksOff || startsWith(fault_.name, "line") ||
                         startsWith(fault_.name, "gone-")),
             "connected");
    const bool unread = fault_.ofFiles || startsWith(fault_.name, "gone");
    for (const std::string& text : texts)
      expect(text == kFailed || startsWith(text, "Delete macro: 007") || startsWith(text, "Update ALL") ||
                 (fault_.losesLine && startsWith(text, "The line to the panel is lost")) ||
                 contains(text, "unsaved changes") || contains(text, "Send it all the same?") ||
                 (startsWith(fault_.name, "gone") && startsWith(text, "The history could not keep 007")) ||
                 (unread && (startsWith(text, "It cannot be seen whether 007") ||
                             startsWith(text, "007 - Four cannot be opened again"))) ||
                 (fault_.ofFiles && startsWith(text, "The history could not keep what stands at 033")),
             "a box says: " + text);
  }

  // Only the target may have changed, whole or not at all, unless the strip says that what a panel holds is
  // unknown. What the strip says is what happened.
  void checkStripAndFiles() {
    awaitPanel();
    FileBytes after = allFiles(desk_);
    const std::string old = before_[operation_.target], now = after[operation_.target];
    const std::string wanted = wantedBytes(old, now);
    before_.erase(operation_.target);
    after.erase(operation_.target);
    expect(before_ == after, "another file has changed");
    const bool unknown = contains(desk_.strip(), "what the panel holds now is unknown");
    expect(now == wanted || now == old || unknown, "the target is neither old nor new: " + now);
    if (!operation_.target.empty()) checkStrip(now == wanted, unknown);
  }

  // A deletion or a new name is carried out on the panel's own thread, while the window goes on. Where the
  // line stood when the panel was asked it surely is; looked at before, the files are in the middle of it, or
  // it would come upon the files of the next cell.
  void awaitPanel() {
    const bool reached = (!fault_.losesLine && !startsWith(fault_.name, "dead")) || fault_.breaksOff;
    if (operation_.usesFiles || operation_.target.empty() || !reached) return;
    const auto done = [this] {
      const std::string now = allFiles(desk_)[operation_.target];
      return now == wantedBytes(before_[operation_.target], now);
    };
    WindowDriver::waitFor(done, "what the panel was asked to do");
  }

  void checkStrip(bool done, bool unknown) {
    const std::string strip = desk_.strip();
    // Before something is put anywhere what stands there is looked at, which can be cancelled as well.
    const bool failure = startsWith(strip, operation_.failed.c_str()) ||
                         startsWith(strip, ("NOT " + operation_.verdict).c_str()) ||
                         startsWith(strip, "NOT written to ");
    const bool success = startsWith(strip, operation_.verdict.c_str());
    if (contains(strip, "was lost") && !Desk::lineUp()) return;
    if (operation_.usesFiles) {
      expect(failure || success, "the strip says: " + strip);
      expect(failure != done || (failure && unknown), "the strip is wrong: " + strip);
      return;
    }
    expect(failure || success || startsWith(strip, "gone: "), "the strip says: " + strip);
    expect(!failure || !done, "the strip is wrong: " + strip);
  }

  // What the target holds when the operation has worked.
  std::string wantedBytes(const std::string& old, const std::string& now) const {
    const std::string name = operation_.name;
    if (name == "copy to disk") return openMacroBytes();
    if (name == "copy to panel") return desk_.site.read(kDiskFolder + std::string("macro001.mac"));
    if (name == "copy key to panel") return desk_.site.read(std::string(kClassicWorkingCopy));
    if (name == "copy on panel") return desk_.first.tree.read(DeskPanel::file(1, kFirstNumber));
    if (name == "create" || name == "save" || name == "close and save")
      return desk_.site.read(workingCopyPath(Pane::kA));
    if (name == "copy workplace") return desk_.site.read(kDiskFolder + std::string("macro001.mac"));
    if (name == "restore") return kRestored;
    if (name == "delete") return "";
    if (name == "rename") {
      const auto macro = seeMacro(now);
      return macro && macro->name == "Other" && macro->commands == seeMacro(openMacroBytes())->commands
                 ? now
                 : "new";
    }
    return old;
  }

  void checkWorkingCopies() {
    for (const Pane pane : kPanes) {
      const std::string bytes = desk_.site.read(workingCopyPath(pane));
      expect(bytes == "<missing>" || seeMacro(bytes), "a working copy is broken: " + bytes);
    }
  }

  // Values that came are in the working copy, the others are as they were.
  void checkUpdate() {
    if (!startsWith(operation_.name, "update")) return;
    const auto copy = seeMacro(desk_.site.read(workingCopyPath(Pane::kA)));
    expect(copy && copy->commands.size() == kUpdatable, "the working copy is another macro");
    if (!copy || copy->commands.size() != kUpdatable) return;
    std::size_t updated = 0;
    for (std::size_t i = 0; i < kUpdatable; ++i) {
      const std::string value = *desk_.first.simulator.value(openMacroValues()[i]);
      expect(copy->commands[i].value == "old" || copy->commands[i].value == value,
             "a value of nowhere: " + copy->commands[i].value);
      if (copy->commands[i].value == value) ++updated;
    }
    const bool all = startsWith(operation_.name, "update all");
    const std::size_t asked = all ? kUpdatable : 1;
    const std::size_t expected = fault_.valuesCome  ? asked
                                 : fault_.breaksOff ? static_cast<std::size_t>(operation_.half)
                                                    : 0;
    expect(updated == expected, std::to_string(updated) + " commands updated");
    expect(desk_.edited(Pane::kA) == (expected > 0), "edit state");
    if (expected > 0)
      expect(contains(desk_.strip(), format("%d commands updated", static_cast<int>(expected)).c_str()) ||
                 (contains(desk_.strip(), "was lost") && !Desk::lineUp()),
             "the strip says: " + desk_.strip());
  }

  // A snapshot is there when it is said to be, and it holds what the panel does.
  void checkSnapshot() {
    if (operation_.name != std::string_view("save panel")) return;
    const bool saved = startsWith(desk_.strip(), operation_.verdict.c_str());
    expect(saved || startsWith(desk_.strip(), operation_.failed.c_str()), "the strip says: " + desk_.strip());
    const auto snapshot = openSnapshot(desk_.site.root, kSnapshot);
    expect(snapshot.has_value() == saved, "the strip is wrong: " + desk_.strip());
    if (!snapshot) return;
    FileBytes held;
    for (const Snapshot::Macro& macro : snapshot->of(1))
      held["panel:" + std::to_string(macro.number.value())] = macro.bytes;
    expect(held == filesOf(desk_.first.tree, "flash/data/PANEL/macro/workplace1/", "panel:"),
           "the snapshot is not what the panel holds");
  }

  // The panel is well again: a new connection works and opens the macro, and nothing is left of what was.
  void heal(std::size_t threads) {
    try {
      desk_.dialogs.cancelProgress = false;
      if (std::string_view(fault_.name) == "gone") desk_.first.begin();
      desk_.first.setFaults({});
      if (!desk_.window->isVisible()) desk_.openWindow();
      layOutMacros(desk_);
      bringTo(desk_, Stage::kMacro);
      expect(seeMacro(desk_.site.read(workingCopyPath(Pane::kA))).has_value(), "no working copy");
      WindowDriver::waitFor([threads] { return Desk::threads() <= threads; }, "the end of all threads");
    } catch (const std::exception& error) {
      problems_ += std::string(" after the fault: ") + error.what() + ", " + std::to_string(Desk::threads()) +
                   " threads of " + std::to_string(threads) + ";";
      desk_.openWindow();  // so that the next cells tell their own story
    }
  }

  static const PaneDescriptor::ControlIds& a() { return Desk::ids(Pane::kA); }
  static const PaneDescriptor::ControlIds& b() { return Desk::ids(Pane::kB); }

  Desk& desk_;
  const Fault& fault_;
  const Operation& operation_;
  FileBytes before_;
  std::string problems_;
};

bool meets(const Fault& fault, const Operation& operation) {
  return (fault.ofControl && operation.usesControl) || (fault.ofFiles && operation.usesFiles);
}

bool isChosen(FaultCells which, std::size_t number, const Fault& fault, const Operation& operation) {
  switch (which) {
    case FaultCells::kSome:
      return meets(fault, operation) && !operation.ofMany &&
             (number % 6 == 0 || fault.name == std::string("drop-after"));
    case FaultCells::kMet:
      return meets(fault, operation);
    case FaultCells::kAll:
      return true;
  }
  return false;
}

}  // namespace

bool runFaultTable(FaultCells which, const std::string& only, bool told) {
  Desk desk(kCellConnectTime);
  layOutMacros(desk);
  bringTo(desk, Stage::kMacro);
  const std::size_t threads = Desk::threads();
  int cells = 0, failed = 0;
  std::size_t number = 0;
  for (const Fault& fault : panelFaults()) {
    for (const Operation& operation : windowOperations()) {
      const std::string name = std::string(fault.name) + " at " + operation.name;
      if (!isChosen(which, number++, fault, operation) || !contains(name, only.c_str())) continue;
      ++cells;
      QElapsedTimer timer;
      timer.start();
      const std::string problems = Cell(desk, fault, operation).run(threads);
      if (!problems.empty()) ++failed;
      if (!problems.empty() || told)
        std::printf("%s: %lld ms%s%s\n", name.c_str(), static_cast<long long>(timer.elapsed()),
                    problems.empty() ? "" : ", PROBLEM:", problems.c_str());
      std::fflush(stdout);
    }
  }
  std::printf("%d faults at operations, %d with problems\n", cells, failed);
  return failed == 0;
}

}  // namespace tessaly
