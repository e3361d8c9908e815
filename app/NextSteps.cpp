#include "app/NextSteps.h"

#include <QCoreApplication>

namespace tessaly {

namespace {

class NextSteps {
  Q_DECLARE_TR_FUNCTIONS(NextSteps)

 public:
  NextSteps(PaneState& pane, const PanelConnection& connection)
      : pane_(pane),
        onPanel_(connection.source(pane.descriptor.pane) == PaneSource::kPanel),
        connected_(onPanel_ && connection.connected(pane.descriptor.pane)) {}

  [[nodiscard]] QString ofApplications() const {
    if (onPanel_) return connected_ ? QString() : tr("enter the address of the panel above, and connect");
    return pane_.snapshot ? QString() : tr("enter the folder of the applications above");
  }

  [[nodiscard]] QString ofControlPanels() const {
    if (onPanel_ || pane_.snapshot) return {};
    return chosen(pane_.view.applications()) ? tr("choose another application") : tr("choose an application");
  }

  [[nodiscard]] QString ofWorkplaces() const {
    if (onPanel_)
      return connected_ ? tr("wait until the panel tells its workplaces") : tr("connect to the panel");
    if (pane_.olderFamily) return tr("choose a macro");
    return chosen(pane_.view.controlPanels()) ? tr("choose another control panel")
                                              : tr("choose a control panel");
  }

  [[nodiscard]] QString ofMacros() const {
    if (pane_.olderFamily) return tr("choose another control panel");
    if (!chosen(pane_.view.workplaces())) return tr("choose a workplace");
    return pane_.snapshot ? tr("choose another workplace")
                          : tr("create a macro, or copy one from the other pane");
  }

  [[nodiscard]] QString ofCommands() const {
    if (pane_.copy.content() == WorkingCopy::Content::kNothing) return tr("choose a macro");
    return pane_.editable() ? tr("build a command with the buttons below, or paste or drop commands here")
                            : tr("choose another macro");
  }

 private:
  static bool chosen(const ListBox& list) { return list.selected() != nullptr; }

  PaneState& pane_;
  bool onPanel_;
  bool connected_;
};

}  // namespace

void showNextSteps(PaneState& pane, const PanelConnection& connection) {
  const NextSteps steps(pane, connection);
  pane.view.applications().setPlaceholder(steps.ofApplications());
  pane.view.controlPanels().setPlaceholder(steps.ofControlPanels());
  pane.view.workplaces().setPlaceholder(steps.ofWorkplaces());
  pane.view.macros().setPlaceholder(steps.ofMacros());
  pane.view.commands().setPlaceholder(steps.ofCommands());
}

}  // namespace tessaly
