#include "app/OpenMacros.h"

#include <algorithm>
#include <memory>

#include "app/Browser.h"
#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/PlaceText.h"
#include "app/StatusStrip.h"
#include "app/StepNames.h"
#include "model/MacroHistory.h"
#include "platform/Files.h"
#include "platform/HostAddress.h"
#include "platform/Text.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

// Bytes, of some 12,000 commands. A macro up to there is read where it is changed, and as fast: its first
// change takes twice as long where the memory of its reading was another thread's. Under a second for the
// oddest file.
constexpr std::size_t kReadAtOnce = 2 * 1024 * 1024;

std::string compareButton() { return QCoreApplication::translate("OpenMacros", "Co&mpare").toStdString(); }

}  // namespace

QString macroInStrip(const MacroTarget& target) {
  return nameInStrip(target.numberText.empty() ? target.name : target.numberText + " - " + target.name);
}

OpenMacros::OpenMacros(const PaneAccesses& panes, SiteAccess site, MacroHistory& history,
                       const PanelConnection& connection, MacroTransfers& transfers, bool demo)
    : panes_(panes),
      site_(site),
      history_(history),
      connection_(connection),
      transfers_(transfers),
      demo_(demo) {}

MacroTarget OpenMacros::selectedTarget(Pane pane) const {
  const MacroRow* row = state(pane).selectedMacro();
  if (row == nullptr) return {};
  return {connection_.source(pane),  browser(pane).sourceFolder(),
          connection_.address(pane), browser(pane).workplace(),
          row->numberText,           row->name};
}

void OpenMacros::open(Pane pane) {
  PaneState& here = state(pane);
  emit macroChosen();
  const MacroRow* row = here.selectedMacro();
  if (row == nullptr) {
    static_cast<void>(here.copy.clear());
  } else if (here.olderFamily && connection_.source(pane) == PaneSource::kHarddisk) {
    showKeyFile(pane, *row);
  } else {
    browser(pane).keepWorkplace();
    openTarget(pane, selectedTarget(pane));
  }
}

void OpenMacros::showKeyFile(Pane pane, const MacroRow& row) {
  const std::string folder = browser(pane).keyFolder();
  if (folder.empty()) return;
  const std::string path = keyFile(folder, row.numberText);
  const auto load = [root = site_.root, path] {
    KeyFile file;
    file.load(root, path, keyFileIndex(path));
    return file;
  };
  auto file = transfers_.beside().block<KeyFile>(tr("Opening %1").arg(nameInStrip(row.text())), load);
  if (!file) {
    const Failure cancelled{Failure::Kind::kCancelled, {}};
    emit said({Grade::kFailure, tr("NOT opened: %1%2").arg(nameInStrip(row.text()), inBrackets(cancelled)),
               placeInWindow(MacroPlace{path, {}, 0, {}})});
    return;
  }
  if (state(pane).copy.showKeyFile(*std::move(file)))
    emit said({Grade::kDone, tr("opened: %1").arg(nameInStrip(row.text())),
               placeInWindow(MacroPlace{path, {}, 0, {}})});
}

void OpenMacros::openTarget(Pane pane, const MacroTarget& target) {
  if (const auto told = bring(pane, target, Opens::kAnother)) emit said(*told);
}

std::optional<Message> OpenMacros::bring(Pane pane, const MacroTarget& target, Opens how) {
  PaneState& here = state(pane);
  const bool panel = target.source == PaneSource::kPanel;
  if (panel ? target.workplace <= 0 : target.folder.empty()) return std::nullopt;
  const bool discards = how == Opens::kToDiscard;
  auto loan = discards ? here.copy.lendToDiscard() : here.copy.lend();
  if (!loan) return std::nullopt;
  QString reason;
  bool filled = false, cancelled = false;
  std::optional<Macro> read;
  if (panel) {
    filled = transfers_.download(target.address, target.workplace, target.numberText, loan->path());
    cancelled = transfers_.cancelled();
    reason = transfers_.reason();
  } else {
    auto fetched = fetch(pane, target, loan->path(), how);
    filled = fetched.has_value();
    cancelled = !filled && fetched.failure().kind == Failure::Kind::kCancelled;
    if (!filled)
      reason = inBrackets(fetched.failure());
    else if (read = *std::move(fetched); !read)
      reason = inBrackets(Failure{Failure::Kind::kNoMacro, {}});
    if (discards && !read) filled = false;
  }
  if (discards) {
    if (!filled && !mayGiveUp(pane, macroInStrip(target), reason, cancelled)) return std::nullopt;
    here.copy.leaveEditState();
  }
  // What is shown then is of no macro in the list.
  if (!filled) here.view.macros().selectRow(-1);
  const Outcome loaded =
      loan->show(target, filled, discards ? discardStepName() : std::string(), std::move(read));
  const QString macro = macroInStrip(target);
  const QString text =
      !filled   ? tr("NOT opened: %1%2; the working copy still holds what was open before").arg(macro, reason)
      : !loaded ? tr("NOT opened: %1%2").arg(macro, inBrackets(loaded.failure()))
                : tr("opened: %1").arg(macro);
  return Message{filled && loaded ? Grade::kDone : Grade::kFailure, text, placeInWindow(target)};
}

Expected<std::optional<Macro>> OpenMacros::fetch(Pane pane, const MacroTarget& target,
                                                 const std::string& file, Opens how) const {
  const bool inSnapshot = state(pane).snapshot && target.folder == browser(pane).sourceFolder();
  Expected<std::string> bytes = Failure{Failure::Kind::kMissing, "is not in the snapshot"};
  if (!inSnapshot)
    bytes = transfers_.read(target.file());
  else if (auto held = browser(pane).snapshotBytes(target.numberText))
    bytes = *std::move(held);
  if (!bytes) return bytes.failure();
  const auto held = std::make_shared<const std::string>(*std::move(bytes));
  const QString label = tr("Opening %1").arg(macroInStrip(target));
  const auto read = [held] { return Macro::read(held); };
  std::optional<Expected<Macro>> macro;
  if (held->size() <= kReadAtOnce)
    macro = read();
  else
    macro = transfers_.beside().block<Expected<Macro>>(label, read);
  if (!macro) return Failure{Failure::Kind::kCancelled, {}};
  // Whether the changes are given up for that is asked, and until then their file stays what it is.
  if (!*macro && how == Opens::kToDiscard) return std::optional<Macro>();
  Outcome written;
  static_cast<void>(transfers_.beside().finish(label, [&] { written = writeFile(site_.root, file, *held); }));
  if (!written) return written.failure();
  return *macro ? std::optional<Macro>(**std::move(macro)) : std::nullopt;
}

void OpenMacros::follow(const MacroPlace& written, std::optional<Pane> except) {
  const std::string folder = written.file.substr(0, written.file.size() - fileNameOf(written.file).size());
  for (const Pane pane : kPanes) {
    if (!folder.empty() && pane != except) browser(pane).refreshFolder(folder);
    const WorkingCopy& copy = state(pane).copy;
    if (pane == except || copy.unsaved() || !shows(pane, written)) continue;
    const MacroTarget chosen = selectedTarget(pane);
    if (samePlace(site_.root, placeOf(chosen), written)) {
      openTarget(pane, chosen);
    } else {
      state(pane).view.macros().selectRow(-1);
      static_cast<void>(state(pane).copy.clear());
    }
  }
}

bool OpenMacros::shows(Pane pane, const MacroPlace& place) const {
  const std::optional<MacroTarget>& target = state(pane).copy.target();
  return target && samePlace(site_.root, placeOf(*target), place);
}

QStringList OpenMacros::unsavedAt(const MacroPlace& place, std::optional<Pane> except) const {
  QStringList told;
  for (const Pane pane : kPanes) {
    if (pane == except || !shows(pane, place) || !state(pane).copy.unsaved()) continue;
    told
        << tr("%1 shows this macro with unsaved changes. They stay there, and saving them overwrites what is "
              "written there now.")
               .arg(QLatin1String(state(pane).descriptor.title));
  }
  return told;
}

bool OpenMacros::reaches(const HostAddress& address) const {
  return std::any_of(kPanes.begin(), kPanes.end(), [&](Pane pane) {
    return connection_.connected(pane) && connection_.askedAddress(pane) == address;
  });
}

void OpenMacros::forget(const MacroPlace& changed) {
  for (const Pane pane : kPanes) {
    WorkingCopy& copy = state(pane).copy;
    if (copy.unsaved() || !shows(pane, changed)) continue;
    state(pane).view.macros().selectRow(-1);
    static_cast<void>(copy.clear());
  }
}

// A loose macro under the file that it was read from.
Outcome OpenMacros::keepUnsaved(const WorkingCopy& copy) {
  const std::string& file = copy.looseFile().empty() ? copy.path() : copy.looseFile();
  const MacroPlace place = copy.target() ? placeOf(*copy.target()) : MacroPlace{file, {}, 0, {}};
  return transfers_.beside().write(tr("Keeping the changes of %1 in the history").arg(openMacro(copy)),
                                   [&history = history_, macro = *copy.macro(), place] {
                                     return history.keep(macro.bytes(), place, MacroChange::kUnsaved);
                                   });
}

QString OpenMacros::openMacro(const WorkingCopy& copy) {
  return copy.target() ? macroInStrip(*copy.target()) : tr("the open macro");
}

// What a discard gives up. False when that was cancelled, and with it the discard.
bool OpenMacros::keepsFirst(Pane pane, std::optional<Outcome>& keeping) {
  keeping = keepUnsaved(state(pane).copy);
  static_cast<void>(history_.takeFailure());  // told with the discard, and not by the next save
  if (*keeping || keeping->failure().kind != Failure::Kind::kCancelled) return true;
  emit said({Grade::kFailure, tr("NOT discarded%1").arg(inBrackets(*keeping)), placeInWindow(state(pane))});
  return false;
}

// Once what `keeping` tells of, if anything, was to go to the history.
Message OpenMacros::discarded(const QString& macro, const std::optional<Outcome>& keeping) {
  if (keeping && keeping->done())
    return {Grade::kDone, tr("changes discarded: %1; the history keeps them").arg(macro)};
  if (keeping)
    return {Grade::kWarning, tr("changes discarded: %1; the history could not keep them").arg(macro)};
  return {Grade::kDone, tr("changes discarded: %1").arg(macro)};
}

// Nobody's work is overwritten unseen. Who compares has not decided: the save ends as by a cancel, so that
// differences can be taken over, and is begun anew then.
bool OpenMacros::mayOverwrite(Pane pane, QString& refusal) {
  const WorkingCopy& copy = state(pane).copy;
  const MacroTarget target = *copy.target();
  const QString macro = macroInStrip(target);
  const MacroTransfers::Present present = transfers_.look(placeOf(target));
  if (present.cancelled) {
    refusal = tr("NOT saved: %1%2").arg(macro, transfers_.reason());
    return false;
  }
  if (!present.trouble.isEmpty()) {
    refusal = tr("NOT saved: %1 (%2)").arg(macro, present.trouble);
    return site_.messages.ask(
        tr("It cannot be seen whether %1 has been changed by somebody else since it was "
           "opened here: %2.\n\nSave over it all the same?")
            .arg(macro, present.trouble)
            .toStdString(),
        MessageIcon::kQuestion);
  }
  if (!present.missing && !copy.targetDiffers(*present.bytes)) return true;
  refusal = copy.knowsTarget() ? tr("NOT saved: %1 is as somebody else has left it").arg(macro)
            : present.missing  ? tr("NOT saved: %1 is not there").arg(macro)
                               : tr("NOT saved: %1 is as it was").arg(macro);
  if (present.missing) {
    const QString question =
        copy.knowsTarget()
            ? tr("%1 has been deleted by somebody else since it was opened here.\n\nSave it anew?")
            : tr("There is no %1 any more.\n\nSave it anew?");
    return site_.messages.ask(question.arg(macro).toStdString(), MessageIcon::kQuestion);
  }
  const QString question =
      copy.knowsTarget()
          ? tr("%1 has been changed by somebody else since it was opened here.\n\nSave over it?")
          : tr("It is not known whether %1 has been changed by somebody else since it was opened here.\n\n"
               "Save over it?");
  const MessageChoice choice = site_.messages.choose(question.arg(macro).toStdString(), compareButton());
  if (choice == MessageChoice::kOther) emit compareWanted(pane, target, present);
  return choice == MessageChoice::kOk;
}

bool OpenMacros::unseen(Pane list, const MacroTarget& target, const std::string& bytes) const {
  bool known = false;
  for (const Pane pane : kPanes) {
    const WorkingCopy& copy = state(pane).copy;
    if (!shows(pane, placeOf(target)) || !copy.knowsTarget()) continue;
    if (copy.targetDiffers(bytes)) return true;
    known = true;
  }
  if (known) return false;
  const std::vector<MacroRow>& rows = state(list).macroRows;
  const auto isThere = [&](const MacroRow& each) { return each.numberText == target.numberText; };
  if (target.source == PaneSource::kHarddisk)
    return std::ranges::none_of(rows, [&, check = contentCheck(bytes)](const MacroRow& each) {
      return isThere(each) && each.check == check;
    });
  // A panel's list tells names only: what was never read is at least known to be there.
  // That of a pane whose line leads to another panel is not of this one.
  const auto seen = transfers_.seen(placeOf(target));
  if (!seen && connection_.otherAddress(list)) return true;
  return seen ? *seen != contentCheck(bytes) : std::ranges::none_of(rows, isThere);
}

bool OpenMacros::mayPutUnder(const MacroPlace& place, std::optional<Pane> from) {
  QStringList unsaved = unsavedAt(place, from);
  if (unsaved.isEmpty()) return true;
  unsaved << tr("Write it all the same?");
  const bool may =
      site_.messages.ask(unsaved.join(QStringLiteral("\n\n")).toStdString(), MessageIcon::kQuestion);
  if (!may)
    emit said({Grade::kFailure, tr("NOT written: a pane shows that macro with unsaved changes"),
               placeInWindow(place)});
  return may;
}

bool OpenMacros::mayPutAt(Pane list, const MacroTarget& target, std::optional<Pane> from) {
  if (!mayPutUnder(placeOf(target), from)) return false;
  if (target.source == PaneSource::kPanel && demo_) return true;
  const MacroTransfers::Present present = transfers_.look(placeOf(target));
  const QString number = QString::fromStdString(target.numberText);
  if (present.cancelled) {
    emit said(
        {Grade::kFailure, tr("NOT written to %1%2").arg(number, transfers_.reason()), placeInWindow(target)});
    return false;
  }
  // What cannot be looked at cannot be kept either, which is asked about where it is written over.
  if (!present.bytes || !unseen(list, target, *present.bytes)) return true;
  const std::string question =
      tr("What stands at %1 has been changed by somebody else since it was read here.\n\nOverwrite it?")
          .arg(number)
          .toStdString();
  const MessageChoice choice = from ? site_.messages.choose(question, compareButton())
                               : site_.messages.ask(question, MessageIcon::kQuestion)
                                   ? MessageChoice::kOk
                                   : MessageChoice::kCancel;
  if (choice == MessageChoice::kOk) return true;
  emit said({Grade::kFailure, tr("NOT written to %1: it is as somebody else has left it").arg(number),
             placeInWindow(target)});
  if (choice == MessageChoice::kOther) emit compareWanted(*from, target, present);
  return false;
}

// The pane's list is not read anew by a save that it knows of.
void OpenMacros::noteListed(Pane pane, const MacroTarget& saved) {
  if (saved.source != PaneSource::kHarddisk || browser(pane).macroFolder() != saved.folder) return;
  for (MacroRow& row : state(pane).macroRows)
    if (row.numberText == saved.numberText) row.check = contentCheck(state(pane).copy.bytes());
}

Outcome OpenMacros::writeOnDisk(const WorkingCopy& copy) {
  const MacroTarget& target = *copy.target();
  return transfers_.beside().write(
      tr("Saving %1").arg(macroInStrip(target)),
      [&history = history_, &root = site_.root, file = target.file(), macro = *copy.macro()] {
        return history.change(file, MacroChange::kSave, [&] { return writeFile(root, file, macro.bytes()); });
      });
}

std::optional<Sendable> OpenMacros::sendable(const std::string& bytes, const QString& name,
                                             std::optional<Pane> shownIn) const {
  const auto macro = Macro::read(bytes);
  return !macro || maySend_(*macro, name, shownIn) ? std::optional(Sendable(bytes)) : std::nullopt;
}

OpenMacros::Written OpenMacros::write(WorkingCopy& copy, const std::optional<Sendable>& toPanel) {
  const MacroTarget target = *copy.target();
  auto loan = copy.lendToSave();
  if (!loan || !toPanel) {
    const Outcome saved = loan ? writeOnDisk(copy) : loan.failure();
    const Failure::Kind why = saved ? Failure::Kind::kUnflushed : saved.failure().kind;
    return {saved.written(), why == Failure::Kind::kCancelled, inBrackets(saved), loan && loan->putRight()};
  }
  static_cast<void>(transfers_.send(placeOf(target), *toPanel, MacroChange::kSave));
  return {transfers_.sent(), false, transfers_.reason(), loan->putRight()};
}

void OpenMacros::tellSaved(Pane pane, const Written& written, bool kept) {
  const MacroTarget target = *state(pane).copy.target();
  QString text = written.done        ? tr("saved: %1%2")
                 : written.cancelled ? tr("NOT saved: %1%2; its changes are still unsaved")
                 : kept              ? tr("NOT saved: %1%2; the history keeps the changes")
                                     : tr("NOT saved: %1%2; only this pane still holds the changes");
  text = text.arg(macroInStrip(target), written.reason);
  if (written.putRight)
    text = tr("%1; another program had changed the working copy, which was put right").arg(text);
  const bool unkept = history_.takeFailure().has_value();
  if (unkept) text = tr("%1; the history could not keep what was there before").arg(text);
  if (!written.done && !written.cancelled) emit saveFailed(pane, text);
  const Grade sent = target.source == PaneSource::kPanel ? transfers_.sentGrade() : Grade::kDone;
  const Grade grade = !written.done ? Grade::kFailure : written.putRight || unkept ? Grade::kWarning : sent;
  emit said({grade, text, placeInWindow(target)});
}

OpenMacros::Saved OpenMacros::save(Pane pane) {
  WorkingCopy& copy = state(pane).copy;
  const std::optional<MacroTarget> target = copy.target();
  if (copy.lent() || !copy.unsaved()) return Saved::kNothing;
  const bool panel = target && target->source == PaneSource::kPanel;
  if (!target || (panel && target->workplace <= 0)) {
    emit said(
        {Grade::kFailure,
         tr("NOT saved: this macro has not come from a place that it could go back to; \"Save As...\" gives "
            "it one"),
         placeInWindow(state(pane))});
    return Saved::kNothing;
  }
  if (panel && demo_) {
    // Nothing was saved: what an earlier run left is offered again.
    copy.leaveEditState(WorkingCopy::Record::kKeep);
    emit said({Grade::kNote, tr("the demonstration sends nothing"), placeInWindow(*target)});
    return Saved::kDone;
  }
  const auto toPanel =
      panel ? sendable(copy.bytes(), macroInStrip(*target), pane) : std::optional<Sendable>();
  if (panel && !toPanel) {
    emit said({Grade::kFailure, tr("NOT sent: %1; its changes are still unsaved").arg(macroInStrip(*target)),
               placeInWindow(*target)});
    return Saved::kNothing;
  }
  if (QString refusal; !mayOverwrite(pane, refusal)) {
    emit said({Grade::kFailure, refusal, placeInWindow(*target)});
    return Saved::kNothing;
  }
  const Written written = write(copy, toPanel);
  if (written.cancelled) {
    tellSaved(pane, written, false);
    return Saved::kNothing;
  }
  // Edit state ends all the same, and the next macro that is opened takes the working copy's place.
  const bool kept = !written.done && copy.macro() && keepUnsaved(copy).done();
  if (written.done)
    copy.noteSaved();
  else
    copy.leaveEditState(kept ? WorkingCopy::Record::kRemove : WorkingCopy::Record::kKeep);
  tellSaved(pane, written, kept);
  browser(pane).catchUp();
  if (!written.done) return Saved::kFailed;
  noteListed(pane, *target);
  follow(*target, pane);
  return Saved::kDone;
}

void OpenMacros::discard(Pane pane) {
  WorkingCopy& copy = state(pane).copy;
  if (copy.lent()) return;
  emit macroChosen();
  const std::optional<MacroTarget> noted = copy.target();
  const MacroTarget target = noted ? *noted : selectedTarget(pane);
  if (copy.loose() || !target.complete()) {
    discardOfNoPlace(pane);
    return;
  }
  std::optional<Outcome> keeping;
  if (noted && copy.macro() && copy.differs() && !keepsFirst(pane, keeping)) return;
  const auto told = bring(pane, target, Opens::kToDiscard);
  browser(pane).catchUp();
  if (!told) return;
  const Message done = discarded(macroInStrip(target), keeping);
  const bool opened = told->grade == Grade::kDone;
  emit said({std::max(told->grade, done.grade),
             opened ? done.text : told->text + QStringLiteral("; ") + done.text, told->where});
}

// A loose macro goes back to its file as it was read.
void OpenMacros::discardOfNoPlace(Pane pane) {
  WorkingCopy& copy = state(pane).copy;
  const QString macro = openMacro(copy);
  std::optional<Outcome> keeping;
  if (const Outcome again = copy.showLooseAgain(discardStepName()); !again) {
    const QString reason = copy.loose() ? inBrackets(again) : tr(" (it has no place of its own)");
    if (!mayGiveUp(pane, tr("The open macro"), reason, false)) return;
    if (copy.macro() && !keepsFirst(pane, keeping)) return;
    copy.leaveEditState();
    static_cast<void>(copy.clear());
  }
  browser(pane).catchUp();
  const Message done = discarded(macro, keeping);
  emit said({done.grade, done.text, placeInWindow(state(pane))});
}

bool OpenMacros::mayGiveUp(Pane pane, const QString& macro, const QString& reason, bool cancelled) {
  const std::string question =
      tr("%1 cannot be opened again as it was before the changes%2.\n\nGive them up all the same?")
          .arg(macro, reason)
          .toStdString();
  if (!cancelled && site_.messages.ask(question, MessageIcon::kQuestion)) return true;
  emit said({Grade::kFailure, tr("NOT discarded: %1%2").arg(macro, reason), placeInWindow(state(pane))});
  return false;
}

}  // namespace tessaly
