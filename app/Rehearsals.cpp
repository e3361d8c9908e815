#include "app/Rehearsals.h"

#include "app/FailureText.h"
#include "app/OpenMacros.h"
#include "app/StatusStrip.h"
#include "model/MacroFile.h"
#include "widgets/DialogText.h"

namespace tessaly {

Rehearsals::Rehearsals(const PaneAccesses& panes, const WindowContext& context,
                       const PanelConnection& connection, const LineContext& lines, QWidget* window)
    : panes_(panes), context_(context), connection_(connection), lines_(lines), owner_(window) {}

Rehearsals::~Rehearsals() {
  for (const auto& window : windows_) delete window;
}

void Rehearsals::open(Pane pane) {
  QPointer<RehearseWindow>& window = windows_[index(pane)];
  if (window.isNull()) {
    LineOptions options = state(pane).view.lineOptions();
    options.tabs = false;  // one line has no columns
    window = new RehearseWindow(
        {[this, pane] { return sourceOf(pane); }, [this, pane] { return panelFor(pane); }, failureText},
        context_.client, lines_, options, owner_);
    connect(&state(pane).copy, &WorkingCopy::changed, window, &RehearseWindow::follow);
  }
  window->present();
}

void Rehearsals::look() {
  for (const auto& window : windows_)
    if (window) window->look();
}

// The pane's own, or the one that the other pane is connected to.
QString Rehearsals::panelFor(Pane pane) const {
  for (const Pane one : {pane, other(pane)})
    if (connection_.line(one) == PaneLine::kStands) return shown(connection_.askedAddress(one).text());
  return {};
}

RehearseSource Rehearsals::sourceOf(Pane pane) const {
  const PaneState& here = state(pane);
  const WorkingCopy& copy = here.copy;
  RehearseSource source{QLatin1String(here.descriptor.title), {}, copy.opening()};
  switch (copy.content()) {
    case WorkingCopy::Content::kNothing:
      source.trouble = tr("The pane shows no macro.");
      break;
    case WorkingCopy::Content::kKeyFile:
      source.name = nameInStrip(copy.keyFile().name());
      source.content = [key = copy.keyFile()] { return keyFileMacro(key); };
      break;
    case WorkingCopy::Content::kMacro:
      source.name =
          copy.target() ? macroInStrip(*copy.target()) : nameInStrip(copy.macro()->name().value_or(""));
      source.content = [held = *copy.macro()] { return Expected<Macro>(held); };
      break;
  }
  return source;
}

}  // namespace tessaly
