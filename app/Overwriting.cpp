#include "app/Overwriting.h"

#include <optional>
#include <vector>

#include "app/FailureText.h"
#include "app/MacroTransfers.h"
#include "app/PaneState.h"
#include "app/PlaceText.h"
#include "model/MacroFile.h"
#include "platform/CollectedMessages.h"
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
  if (macro.source == PaneSource::kPanel) {
    const WorkingCopy& open = pane.copy;
    if (open.target() && open.macro() && !open.edited() && placeOf(*open.target()) == placeOf(macro))
      return tr("%1 in %2: %n commands", nullptr, static_cast<int>(open.macro()->commands().size()))
          .arg(number, placeInWindow(macro));
    return tr("%1 of workplace %2 on the panel %3")
        .arg(number, QString::number(macro.workplace), shown(macro.address));
  }
  const QStringList lists{selectedText(pane.view.applications()), selectedText(pane.view.controlPanels()),
                          selectedText(pane.view.workplaces())};
  const QString place = lists.join(QStringLiteral(", "));
  const MacroTransfers::Present present = transfers_.look(placeOf(macro));
  const auto read = Macro::read(present.bytes.value_or(std::string()));
  return read ? tr("%1 in %2: %n commands", nullptr, static_cast<int>(read->commands().size()))
                    .arg(number, place)
              : tr("%1 in %2: it cannot be read").arg(number, place);
}

MacroHistory::MayLose Overwriting::asking(const QString& what) const {
  return [this, what](const Failure& why) {
    const QString question =
        tr("The history could not keep what stands at %1, so that it cannot be put back:\n%2.\n\n"
           "Overwrite it all the same?")
            .arg(what, failureText(why));
    return site_.messages.ask(question.toStdString(), MessageIcon::kQuestion);
  };
}

// The user is asked between two tries: a box cannot be answered while the window waits.
Outcome Overwriting::write(const QString& what, const Writing& writing) const {
  std::vector<std::string> told;
  CollectedMessages messages(told);
  const SiteAccess beside{site_.root, messages, site_.beforeChange};
  std::optional<Failure> lost;
  const auto attempt = [&](const MacroHistory::MayLose& mayLose) {
    return *transfers_.beside().block<Outcome>(PanelTransfer::Kind::kWrites, tr("Writing %1").arg(what),
                                               [&] { return writing(beside, mayLose); });
  };
  Outcome done = attempt([&lost](const Failure& why) {
    lost = why;
    return false;
  });
  if (lost && asking(what)(*lost)) done = attempt({});
  for (const std::string& text : told) site_.messages.show(text);
  return done;
}

}  // namespace tessaly
