#include "app/SavePlaces.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QMenu>

#include "app/Browser.h"
#include "platform/ChosenPath.h"

namespace tessaly {

namespace {

constexpr const char* kSuffix = "mac";

class SavePlaces {
  Q_DECLARE_TR_FUNCTIONS(SavePlaces)
};

}  // namespace

void offerSavePlaces(QMenu& menu, const PaneAccesses& panes, bool inPanes,
                     const std::function<void(Pane)>& inPane, const std::function<void()>& inFile) {
  for (const Pane pane : kPanes) {
    const PaneState& state = *panes[index(pane)].state;
    QAction* const action =
        menu.addAction(SavePlaces::tr("In %1...").arg(QLatin1String(state.descriptor.title)));
    action->setEnabled(inPanes && !panes[index(pane)].browser->macroFolder().empty() && !state.olderFamily);
    QObject::connect(action, &QAction::triggered, &menu, [inPane, pane] { inPane(pane); });
  }
  QObject::connect(menu.addAction(SavePlaces::tr("In a File...")), &QAction::triggered, &menu, inFile);
}

std::string askForMacroFile(const SiteRoot& root, QWidget* parent) {
  QFileDialog choice(parent, SavePlaces::tr("Save As"), QString(), SavePlaces::tr("Macros (*.mac)"));
  choice.setAcceptMode(QFileDialog::AcceptSave);
  choice.setDefaultSuffix(QLatin1String(kSuffix));
  if (choice.exec() != QDialog::Accepted || choice.selectedFiles().isEmpty()) return {};
  return chosenPath(root, hostPath(choice.selectedFiles().constFirst().toStdString()));
}

}  // namespace tessaly
