#include "app/Overwriting.h"

#include <memory>
#include <mutex>
#include <optional>
#include <utility>
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

// What a writing has told by the end, if it has come to that while somebody waited.
class Told {
 public:
  void put(std::vector<std::string> texts, std::optional<Failure> lost) {
    const std::scoped_lock guard(mutex_);
    texts_ = std::move(texts);
    lost_ = std::move(lost);
  }
  std::optional<Failure> takeLost() {
    const std::scoped_lock guard(mutex_);
    return std::exchange(lost_, std::nullopt);
  }
  std::vector<std::string> takeTexts() {
    const std::scoped_lock guard(mutex_);
    return std::exchange(texts_, {});
  }

 private:
  std::mutex mutex_;
  std::vector<std::string> texts_;
  std::optional<Failure> lost_;
};

}  // namespace

QString Overwriting::about(const PaneState& pane, const MacroTarget& macro) const {
  const QString number = QString::fromStdString(macro.numberText);
  if (macro.source == PaneSource::kPanel) {
    const WorkingCopy& open = pane.copy;
    if (open.target() && open.macro() && !open.unsaved() && placeOf(*open.target()) == placeOf(macro))
      return tr("%1 in %2: %n commands", nullptr, static_cast<int>(open.macro()->commands().size()))
          .arg(number, placeInWindow(macro));
    return tr("%1 of workplace %2 on the panel %3")
        .arg(number, QString::number(macro.workplace), shown(macro.address.text()));
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
  const auto told = std::make_shared<Told>();
  const auto attempt = [&](bool mayLose) {
    return transfers_.beside().write(tr("Writing %1").arg(what), [told, mayLose, writing, site = site_] {
      std::vector<std::string> texts;
      CollectedMessages messages(texts);
      std::optional<Failure> lost;
      const auto ask = [&lost](const Failure& why) {
        lost = why;
        return false;
      };
      Outcome done = writing({site.root, messages, site.beforeChange},
                             mayLose ? MacroHistory::MayLose() : MacroHistory::MayLose(ask));
      told->put(std::move(texts), std::move(lost));
      return done;
    });
  };
  Outcome done = attempt(false);
  if (const auto lost = told->takeLost(); lost && asking(what)(*lost)) done = attempt(true);
  for (const std::string& text : told->takeTexts()) site_.messages.show(text);
  return done;
}

}  // namespace tessaly
