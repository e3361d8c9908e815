#include "app/Overwriting.h"

#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/PaneState.h"
#include "model/MacroFile.h"
#include "model/MacroHistory.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

QString selectedText(const ListBox& list) {
  const ListRow* row = list.selected();
  return row != nullptr ? shown(row->text) : QString();
}

}  // namespace

QString Overwriting::about(const PaneState& pane, const MacroTarget& macro) const {
  const QString number = QString::fromStdString(macro.numberText);
  if (macro.source == PaneSource::kPanel)
    return tr("%1 of workplace %2 on the panel %3")
        .arg(number, QString::number(macro.workplace), shown(macro.address));
  const QStringList lists{selectedText(pane.view.applications()), selectedText(pane.view.controlPanels()),
                          selectedText(pane.view.workplaces())};
  const QString place = lists.join(QStringLiteral(", "));
  const auto read = readMacro(site_.root, macro.file());
  return read ? tr("%1 in %2: %n commands", nullptr, static_cast<int>(read->commands().size()))
                    .arg(number, place)
              : tr("%1 in %2: it cannot be read").arg(number, place);
}

bool Overwriting::mayLose(const MacroTarget& macro, MacroChange change, MacroTransfers& transfers) const {
  Outcome kept;
  if (macro.source == PaneSource::kHarddisk) {
    kept = history_.keepFile(macro.file(), change);
  } else if (const auto present = transfers.look(placeOf(macro)); present.bytes) {
    kept = history_.keep(*present.bytes, placeOf(macro), change);
  }
  if (kept) return true;
  const QString question =
      tr("The history could not keep what stands at %1, so that it cannot be put back:\n%2.\n\n"
         "Overwrite it all the same?")
          .arg(QString::fromStdString(macro.numberText), failureText(kept.failure()));
  if (site_.messages.ask(question.toStdString(), MessageIcon::kQuestion)) return true;
  static_cast<void>(history_.takeFailure());  // nothing was lost
  return false;
}

}  // namespace tessaly
