#include "app/PaneSubject.h"

#include <QStringList>

#include "app/Browser.h"
#include "app/PaneState.h"
#include "app/PlaceText.h"
#include "model/MacroHistory.h"
#include "platform/Text.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

using Where = PaneSubject::Where;

Where whereOnPanel(const PanelConnection& connection, Pane pane) {
  switch (connection.line(pane)) {
    case PaneLine::kNone:
      return Where::kNotConnected;
    case PaneLine::kStands:
      return Where::kPanel;
    case PaneLine::kLost:
      return Where::kLost;
  }
  return Where::kNotConnected;
}

void placeInSnapshot(const ShownSnapshot& snapshot, std::optional<int> workplace, PaneSubject& subject) {
  subject.where = Where::kSnapshot;
  const QString file = shown(std::string(fileNameOf(snapshot.file)));
  subject.place = workplace && *workplace != Snapshot::kFolder
                      ? PaneSubject::tr("%1, workplace %2").arg(file, QString::number(*workplace))
                      : file;
  const Snapshot::Origin& origin = snapshot.snapshot->origin;
  subject.path =
      PaneSubject::tr("%1, of %2").arg(shown(snapshot.file), shown(origin.address + origin.folder));
}

// Where a list stands in which nothing is open.
void placeOfList(const PaneState& pane, const Browser& browser, const PanelConnection& connection,
                 PaneSubject& subject) {
  const Pane which = pane.descriptor.pane;
  if (connection.source(which) == PaneSource::kPanel) {
    subject.where = whereOnPanel(connection, which);
    const HostAddress& address = connection.address(which);
    subject.place = browser.workplace() > 0 ? placeInWindow(MacroPlace{{}, address, browser.workplace(), {}})
                                            : shown(address.text());
  } else if (pane.snapshot) {
    placeInSnapshot(*pane.snapshot, browser.snapshotWorkplace(), subject);
  } else {
    subject.path = shown(pane.olderFamily ? browser.keyFolder() : browser.macroFolder());
    if (!subject.path.isEmpty())
      subject.place = placeInWindow(
          MacroPlace{pane.olderFamily ? browser.keyFolder() : browser.macroFolder(), {}, 0, {}});
  }
}

void placeOfMacro(const PaneState& pane, const Browser& browser, const PanelConnection& connection,
                  const MacroHistory& history, PaneSubject& subject) {
  const WorkingCopy& copy = pane.copy;
  if (!copy.target()) {
    const std::string file = copy.loose() ? copy.looseFile() : std::string();
    subject.where = history.holds(file) ? Where::kHistory : Where::kNoPlace;
    subject.place = shown(file);
    return;
  }
  const MacroTarget& target = *copy.target();
  if (pane.snapshot && target.folder == browser.sourceFolder()) {
    placeInSnapshot(*pane.snapshot, browser.snapshotWorkplace(), subject);
    return;
  }
  if (target.source == PaneSource::kPanel)
    subject.where = whereOnPanel(connection, pane.descriptor.pane);
  else
    subject.path = shown(target.file());
  subject.place = placeInWindow(target);
}

QString titleOf(const PaneState& pane) {
  const WorkingCopy& copy = pane.copy;
  switch (copy.content()) {
    case WorkingCopy::Content::kNothing:
      return PaneSubject::tr("No macro is open");
    case WorkingCopy::Content::kKeyFile:
      return shown(pane.selectedMacro() != nullptr ? pane.selectedMacro()->text() : copy.keyFile().name());
    case WorkingCopy::Content::kMacro:
      break;
  }
  if (copy.target()) return shown(copy.target()->numberText + " - " + copy.target()->name);
  return shown(copy.macro()->name().value_or(""));
}

}  // namespace

PaneSubject subjectOf(const PaneState& pane, const Browser& browser, const PanelConnection& connection,
                      const MacroHistory& history) {
  const WorkingCopy& copy = pane.copy;
  PaneSubject subject;
  subject.title = titleOf(pane);
  if (copy.content() == WorkingCopy::Content::kMacro)
    placeOfMacro(pane, browser, connection, history, subject);
  else
    placeOfList(pane, browser, connection, subject);
  if (copy.content() == WorkingCopy::Content::kKeyFile) subject.where = Where::kKeyFile;
  subject.unsaved = copy.edited()     ? PaneSubject::tr("unsaved changes")
                    : copy.saveOwed() ? PaneSubject::tr("NOT saved")
                                      : QString();
  if (copy.steps().canUndo())
    subject.lastStep =
        PaneSubject::tr("last change: %1").arg(shown(copy.steps().step(copy.steps().position() - 1).name));
  return subject;
}

QString PaneSubject::word() const {
  switch (where) {
    case Where::kDisk:
      return tr("On the disk");
    case Where::kPanel:
      return tr("On the panel");
    case Where::kLost:
      return tr("Line lost");
    case Where::kNotConnected:
      return tr("Panel, not connected");
    case Where::kSnapshot:
      return tr("In a snapshot");
    case Where::kKeyFile:
      return tr("Key file");
    case Where::kHistory:
      return tr("Out of the history");
    case Where::kNoPlace:
      return tr("Without a place");
  }
  return {};
}

QStringList PaneSubject::parts() const {
  QStringList parts{title, word(), place, path == place ? QString() : path, unsaved, lastStep};
  parts.removeAll(QString());
  return parts;
}

}  // namespace tessaly
