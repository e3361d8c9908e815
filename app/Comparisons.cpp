#include "app/Comparisons.h"

#include "app/FailureText.h"
#include "app/HistoryOperations.h"
#include "app/OpenMacros.h"
#include "app/StatusStrip.h"
#include "model/MacroFile.h"
#include "platform/LocalTime.h"
#include "widgets/DialogText.h"
#include "windows/CompareWindow.h"

namespace tessaly {

namespace {

constexpr Side columnOf(Pane pane) { return pane == Pane::kA ? Side::kA : Side::kB; }
constexpr Pane paneOf(Side side) { return side == Side::kA ? Pane::kA : Pane::kB; }

QString letter(Pane pane) { return QString(QLatin1Char(kPaneDescriptors[index(pane)].letter)); }

// The commands that were taken, as the macro numbers them then; those that stand where others went.
std::vector<int> selectedAfter(const TakeCommands& edit) {
  std::vector<int> numbers;
  int shift = 0;
  for (const TakeCommands::Piece& piece : edit.pieces) {
    const auto taken = static_cast<int>(piece.taken.size());
    for (int i = 0; i < taken; ++i) numbers.push_back(piece.at + shift + i);
    if (taken == 0) numbers.push_back(piece.at + shift);
    shift += taken - piece.removed;
  }
  return numbers;
}

QString placeText(const MacroTarget& target) {
  return target.source == PaneSource::kPanel
             ? Comparisons::tr("%1, workplace %2")
                   .arg(shown(target.address.text()), QString::number(target.workplace))
             : shown(target.file());
}

}  // namespace

Comparisons::Comparisons(const PaneAccesses& panes, SiteAccess site, MacroTransfers& transfers,
                         EventGate& gate, const LineContext& lines, QWidget* window)
    : panes_(panes), site_(site), transfers_(transfers), gate_(gate), lines_(lines), window_(window) {
  pool_.setMaxThreadCount(1);  // what comes later makes what came before useless
}

Comparisons::~Comparisons() {
  for (const auto& [key, opened] : opened_) delete opened.window;
}

void Comparisons::connectTo(const OpenMacros& open, const HistoryOperations& history) {
  connect(&open, &OpenMacros::compareWanted, this,
          [this](Pane pane, const MacroTarget& place, const MacroTransfers::Present& present) {
            if (state(pane).copy.target() == place)
              compareWithTarget(pane, present);
            else
              compareWithPlace(pane, place, present);
          });
  connect(&history, &HistoryOperations::compareWanted, this, &Comparisons::compareWithVersion);
}

void Comparisons::comparePanes() {
  CompareWays ways;
  ways.side = [this](Side side) { return sideOf(state(paneOf(side))); };
  ways.take = [this](const CompareTake& taken) { return take(paneOf(taken.into), taken); };
  CompareWindow* window = open("panes", Pane::kA, std::move(ways));
  connect(&state(Pane::kB).copy, &WorkingCopy::changed, window, &CompareWindow::follow, Qt::UniqueConnection);
}

void Comparisons::compareWithTarget(Pane pane, std::optional<MacroTransfers::Present> known) {
  compareBesidePlace(pane, "target", std::nullopt, std::move(known));
}

void Comparisons::compareWithPlace(Pane pane, const MacroTarget& place,
                                   const MacroTransfers::Present& known) {
  compareBesidePlace(pane, keyOf(place), place, known);
}

void Comparisons::compareBesidePlace(Pane pane, const std::string& key, std::optional<MacroTarget> place,
                                     std::optional<MacroTransfers::Present> known) {
  const std::string whole = letter(pane).toStdString() + ' ' + key;
  QPointer<ComparedPlace> beside = opened_[whole].place;
  std::unique_ptr<ComparedPlace> made;
  if (beside.isNull()) {
    made = std::make_unique<ComparedPlace>(state(pane).copy, std::move(place), site_, transfers_, gate_);
    beside = made.get();
  }
  if (known)
    beside->take(*std::move(known));
  else
    beside->look();
  if (beside.isNull()) return;  // its window was closed under the look
  CompareWindow* window = open(
      whole, pane, [beside] { return beside->side(); }, [beside] { beside->look(); });
  if (!made) return;
  connect(beside, &ComparedPlace::changed, window, &CompareWindow::follow);
  opened_[whole].place = beside;
  made.release()->setParent(window);
}

void Comparisons::compareWithVersion(Pane pane, const KeptMacro& version) {
  CompareSide side;
  side.name = tr("the version");
  side.heading =
      tr("Version of %1: %2\n%3")
          .arg(shown(localTimeText(version.when)), shown(version.name), shown(version.placeText()));
  side.refusal = tr("only what a pane holds can be changed here");
  side.content = [&root = site_.root, file = version.file] { return readMacro(root, file); };
  open(letter(pane).toStdString() + " version " + version.id, pane, [side] { return side; });
}

CompareWindow* Comparisons::open(const std::string& key, Pane pane, std::function<CompareSide()> beside,
                                 std::function<void()> readAgain) {
  CompareWays ways;
  ways.side = [this, pane, beside = std::move(beside)](Side side) {
    return side == columnOf(pane) ? sideOf(state(pane)) : beside();
  };
  ways.take = [this, pane](const CompareTake& taken) {
    return taken.into == columnOf(pane) ? take(pane, taken) : QString();
  };
  ways.readAgain = std::move(readAgain);
  return open(key, pane, std::move(ways));
}

CompareWindow* Comparisons::open(const std::string& key, Pane pane, CompareWays ways) {
  std::erase_if(opened_, [](const auto& entry) { return entry.second.window.isNull(); });
  QPointer<CompareWindow>& window = opened_[key].window;
  if (window.isNull()) {
    ways.failureText = failureText;
    LineOptions options = state(pane).view.lineOptions();
    options.tabs = false;  // the columns have no room for columns of their own
    window = new CompareWindow(std::move(ways), lines_, options, pool_, window_);
    connect(&state(pane).copy, &WorkingCopy::changed, window, &CompareWindow::follow);
  } else {
    window->follow();
  }
  window->present();
  return window;
}

CompareSide Comparisons::sideOf(const PaneState& here) {
  const WorkingCopy& copy = here.copy;
  CompareSide side;
  side.name = letter(here.descriptor.pane);
  side.refusal = refusalOf(here);
  QString macro, place;
  switch (copy.content()) {
    case WorkingCopy::Content::kNothing:
      side.trouble = tr("the pane shows no macro");
      break;
    case WorkingCopy::Content::kKeyFile:
      macro = here.selectedMacro() != nullptr ? shown(here.selectedMacro()->text())
                                              : shown(copy.keyFile().name());
      place = tr("a key file, as a copy of it would be");
      side.content = [key = copy.keyFile()] { return keyFileMacro(key); };
      break;
    case WorkingCopy::Content::kMacro:
      macro = copy.target() ? macroInStrip(*copy.target()) : nameInStrip(copy.macro()->name().value_or(""));
      place = copy.target() ? placeText(*copy.target()) : tr("without a place of its own yet");
      side.content = [held = *copy.macro()] { return Expected<Macro>(held); };
      break;
  }
  const QString title = QLatin1String(here.descriptor.title);
  side.heading = macro.isEmpty() ? title : tr("%1: %2").arg(title, macro);
  if (copy.unsaved()) side.heading = tr("%1 (unsaved changes)").arg(side.heading);
  if (!place.isEmpty()) side.heading += QLatin1Char('\n') + place;
  return side;
}

QString Comparisons::refusalOf(const PaneState& here) {
  switch (here.copy.content()) {
    case WorkingCopy::Content::kNothing:
      return tr("the pane shows no macro");
    case WorkingCopy::Content::kKeyFile:
      return tr("a key file cannot be changed");
    case WorkingCopy::Content::kMacro:
      if (here.copy.lent()) return tr("a transfer is using the macro");
      if (!here.editable()) return tr("no macro is chosen in the pane");
      return here.copy.macro()->kept() ? QString() : failureText(here.copy.macro()->kept().failure());
  }
  return {};
}

QString Comparisons::take(Pane pane, const CompareTake& take) {
  if (QString refusal = refusalOf(state(pane)); !refusal.isEmpty()) return refusal;
  WorkingCopy& copy = state(pane).copy;
  const Outcome done =
      copy.apply(take.shown, take.taken, {take.step.toStdString(), selectedAfter(take.edit)});
  return done.written() ? QString() : failureText(done.failure());
}

}  // namespace tessaly
