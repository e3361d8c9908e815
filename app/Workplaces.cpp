#include "app/Workplaces.h"

#include <algorithm>

#include <QFileDialog>
#include <QInputDialog>

#include "app/Browser.h"
#include "app/Checking.h"
#include "app/FailureText.h"
#include "app/MacroUndo.h"
#include "app/MessageBoxes.h"
#include "app/OpenMacros.h"
#include "model/SiteBrowser.h"
#include "platform/ChosenPath.h"
#include "platform/Workplace.h"
#include "widgets/DialogText.h"
#include "windows/CompareWindow.h"

namespace tessaly {

namespace {

// One of a snapshot's workplaces, chosen by the user where there are several.
std::optional<WorkplaceChoice> choiceOf(QWidget* owner, const std::shared_ptr<const Snapshot>& snapshot,
                                        const std::string& path) {
  QStringList names;
  for (const int workplace : snapshot->workplaces)
    names << (workplace == Snapshot::kFolder ? Workplaces::tr("the folder")
                                             : Workplaces::tr("workplace %1").arg(workplace));
  if (names.isEmpty()) return std::nullopt;
  bool chosen = names.size() == 1;
  const QString name =
      chosen ? names.first()
             : QInputDialog::getItem(owner, Workplaces::tr("A snapshot"),
                                     Workplaces::tr("Workplace of the snapshot:"), names, 0, false, &chosen);
  if (!chosen) return std::nullopt;
  const int workplace = snapshot->workplaces[static_cast<std::size_t>(names.indexOf(name))];
  return WorkplaceChoice{Workplaces::tr("Snapshot %1: %2").arg(shown(path), name),
                         Shelves::snapshot(snapshot, workplace, path)};
}

}  // namespace

Workplaces::Workplaces(const Surroundings& surroundings, Shelves shelves, QWidget* window)
    : around_(surroundings),
      shelves_(std::move(shelves)),
      owner_(window),
      recoveries_(shelves_, [this] { return around_.connection.wholePanels(); }),
      batchUndo_(
          shelves_, [this] { return around_.connection.wholePanels(); }, around_.transfer,
          around_.site.messages, around_.open) {
  around_.undo.undoBatchesBy(batchUndo_);
  connect(&recoveries_, &BatchRecoveries::said, this, &Workplaces::said);
  connect(&recoveries_, &BatchRecoveries::written, this, [this](const MacroPlace& place) {
    written_.push_back(place);
    settle();
  });
  pool_.setMaxThreadCount(1);
}

Workplaces::~Workplaces() {
  delete window_;
  for (const QPointer<CompareWindow>& comparison : comparisons_) delete comparison;
}

void Workplaces::openWindow() {
  if (!window_) {
    window_ = new WorkplacesWindow(
        {.root = shelves_.root(),
         .choices = [this] { return choices(); },
         .mayWrite = [this](const std::vector<MacroPlace>& places) { return mayWrite(places); },
         .knowledge = [this] { return around_.checking.knowledge(); },
         .maySend = [this](const std::vector<FaultyMacro>& faulty,
                           std::size_t of) { return around_.checking.maySend(faulty, of); },
         .whenFree =
             [this](std::function<void()> act) {
               around_.gate.whenFree("workplaces window", std::move(act));
             },
         .failureText = &failureText},
        owner_);
    connect(window_, &WorkplacesWindow::compareWanted, this, &Workplaces::compare);
    connect(window_, &WorkplacesWindow::written, this, [this](const MacroPlace& place) {
      written_.push_back(place);
      settle();
    });
    connect(window_, &WorkplacesWindow::copied, this,
            [this](const QString& name, const std::vector<BatchTrace>& traces) {
              copied_.push_back({name, traces});
              settle();
            });
  }
  window_->present();
}

// From the event loop: a pane that reads a macro of a panel runs one of its own, in which more may be copied.
void Workplaces::settle() {
  QMetaObject::invokeMethod(
      this,
      [this] {
        around_.gate.whenFree("batches", [this] {
          for (Copied& copied : std::exchange(copied_, {}))
            around_.undo.noteBatch(copied.name, std::move(copied.traces));
          for (const MacroPlace& place : std::exchange(written_, {})) around_.open.follow(place);
        });
      },
      Qt::QueuedConnection);
}

bool Workplaces::end() {
  if (window_) window_->cancel();
  return !(window_ && window_->busy()) && !recoveries_.busy();
}

std::vector<WorkplaceChoice> Workplaces::choices() const {
  Choices choices;
  // What the panes show stands beside each other to begin with.
  for (const Pane pane : kPanes) addShown(pane, choices);
  for (const Pane pane : kPanes) addPanel(pane, choices);
  choices.all.push_back({tr("Folder..."), {}, [this](QWidget* owner) { return askForFolder(owner); }});
  choices.all.push_back({tr("Snapshot..."), {}, [this](QWidget* owner) { return askForSnapshot(owner); }});
  return std::move(choices.all);
}

void Workplaces::addShown(Pane pane, Choices& choices) const {
  const Browser& browser = *around_.panes[index(pane)].browser;
  if (around_.connection.source(pane) == PaneSource::kPanel)
    return addWorkplace(pane, browser.workplace(), choices);
  const std::string folder = browser.macroFolder();
  if (folder.empty()) return;
  const QString title = QLatin1String(around_.panes[index(pane)].state->descriptor.title);
  choices.all.push_back({tr("%1: %2").arg(title, shown(folder)), shelves_.folder(folder)});
}

void Workplaces::addPanel(Pane pane, Choices& choices) const {
  if (around_.connection.source(pane) != PaneSource::kPanel) return;
  for (int workplace = 1; workplace <= Workplace::kCount; ++workplace) addWorkplace(pane, workplace, choices);
}

void Workplaces::addWorkplace(Pane pane, int number, Choices& choices) const {
  const auto workplace = Workplace::of(number);
  if (!workplace || !around_.connection.workplaces(pane)[workplace->index()]) return;
  const HostAddress& address = around_.connection.address(pane);
  if (!around_.connection.wholePanels().contains(address)) return;
  if (!choices.workplaces.insert({address, number}).second) return;
  choices.all.push_back({tr("Panel %1, workplace %2").arg(shown(address.text()), QString::number(number)),
                         shelves_.panel(address, number)});
}

std::optional<WorkplaceChoice> Workplaces::askForFolder(QWidget* owner) const {
  const QString start = QString::fromStdString(shelves_.root().path().string());
  const QString folder = QFileDialog::getExistingDirectory(owner, tr("A folder with macros"), start);
  if (folder.isEmpty()) return std::nullopt;
  const std::string path = chosenPath(shelves_.root(), hostPath(folder.toStdString()));
  return WorkplaceChoice{shown(path), shelves_.folder(path)};
}

std::optional<WorkplaceChoice> Workplaces::askForSnapshot(QWidget* owner) const {
  const QString file = QFileDialog::getOpenFileName(owner, tr("A snapshot"),
                                                    QString::fromStdString(shelves_.root().path().string()),
                                                    tr("Snapshots (*.zip);;All files (*)"));
  if (file.isEmpty()) return std::nullopt;
  const std::string path = chosenPath(shelves_.root(), hostPath(file.toStdString()));
  auto snapshot = std::make_shared<const Snapshot>();
  Outcome read;
  const bool begun = around_.transfer.runLong(tr("Reading %1").arg(shown(path)),
                                              [&](const PanelTransfer::Tell&) {
                                                auto opened = openSnapshot(shelves_.root(), path);
                                                if (opened)
                                                  snapshot =
                                                      std::make_shared<const Snapshot>(*std::move(opened));
                                                else
                                                  read = opened.failure();
                                              },
                                              {});
  if (!begun || !read) {
    const QString why = read ? tr("there is not enough memory") : failureText(read.failure());
    around_.site.messages.show(tr("%1 cannot be read: %2").arg(shown(path), why).toStdString());
    return std::nullopt;
  }
  return choiceOf(owner, snapshot, path);
}

bool Workplaces::mayWrite(const std::vector<MacroPlace>& places) const {
  QStringList open;
  for (const MacroPlace& place : places)
    if (!around_.open.unsavedAt(place).isEmpty()) open << shown(placeInWords(place));
  if (open.isEmpty()) return true;
  const QString question =
      tr("A pane shows what would be written over here with unsaved changes:\n%1\n\nThe changes stay there, "
         "and saving them writes over what is copied now. Copy all the same?")
          .arg(open.join(QLatin1Char('\n')));
  return around_.site.messages.ask(question.toStdString(), MessageIcon::kQuestion);
}

void Workplaces::compare(const WorkplaceChoice& left, const WorkplaceChoice& right, MacroNumber number) {
  const auto side = [number](const WorkplaceChoice& choice, const QString& name) {
    CompareSide made;
    made.name = name;
    made.heading = tr("%1, macro %2").arg(choice.text, QString::fromStdString(number.text()));
    made.refusal = tr("workplaces are only compared here");
    made.content = [make = choice.make, number]() -> Expected<Macro> {
      auto bytes = make()->read(number);
      if (!bytes) return bytes.failure();
      return Macro::read(*std::move(bytes));
    };
    return made;
  };
  const CompareSide leftSide = side(left, tr("the left one")), rightSide = side(right, tr("the right one"));
  CompareWays ways;
  ways.side = [leftSide, rightSide](Side which) { return which == Side::kA ? leftSide : rightSide; };
  ways.take = [leftSide](const CompareTake&) { return leftSide.refusal; };
  ways.failureText = &failureText;
  auto* const window =
      new CompareWindow(std::move(ways), around_.lines, {.showDestination = true}, pool_, owner_);
  comparisons_.removeIf([](const QPointer<CompareWindow>& comparison) { return comparison.isNull(); });
  comparisons_ << window;
  window->present();
}

}  // namespace tessaly
