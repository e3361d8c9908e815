#include "app/Captures.h"

#include "app/Comparisons.h"
#include "app/FailureText.h"
#include "app/PlaceText.h"
#include "app/StepNames.h"
#include "widgets/PostTo.h"
#include "windows/CaptureWindow.h"

namespace tessaly {

namespace {

std::string placeText(const WorkingCopy& copy) {
  return copy.target() ? keyOf(*copy.target()) : std::to_string(copy.opening());
}

}  // namespace

Captures::Captures(const PaneAccesses& panes, const PanelConnection& connection, PanelClient& client,
                   const LineContext& lines, QWidget* window)
    : panes_(panes), connection_(connection), client_(client), lines_(lines), owner_(window) {}

Captures::~Captures() {
  for (const auto& window : windows_) delete window;
}

bool Captures::possible(Pane pane) const {
  return connection_.source(pane) == PaneSource::kPanel && connection_.connected(pane) &&
         state(pane).editable();
}

void Captures::open(Pane pane) {
  if (!possible(pane)) {
    emit said({Grade::kNote, tr("\"Capture\" needs a pane that is connected to a panel, and a macro in it"),
               placeInWindow(state(pane))});
    return;
  }
  QPointer<CaptureWindow>& window = windows_[index(pane)];
  if (window)
    window->beginAgain();
  else
    window = make(pane);
  window->present();
}

CaptureWindow* Captures::make(Pane pane) {
  CaptureWays ways;
  ways.subject = [this, pane] {
    const WorkingCopy& copy = state(pane).copy;
    const CompareSide side = Comparisons::sideOf(state(pane));
    return CaptureSubject{side.heading, side.refusal, copy.macro(), placeText(copy)};
  };
  ways.selected = [this, pane] { return state(pane).view.commands().selectedRows(); };
  ways.line = [this, pane] {
    return CaptureLine{lineTrouble(pane), connection_.askedAddress(pane), client_.connectionNumber()};
  };
  ways.questions = [this](PanelQuestions::Taker taker) {
    return std::make_unique<PanelQuestions>(client_, postTo(this), std::move(taker));
  };
  ways.take = [this, pane](const CaptureTake& taken) { return take(pane, taken); };
  ways.failureText = &failureText;
  LineOptions options = state(pane).view.lineOptions();
  options.tabs = false;  // the column has no room for columns of its own
  auto* window = new CaptureWindow(std::move(ways), lines_, options, owner_);
  connect(&state(pane).copy, &WorkingCopy::changed, window, &CaptureWindow::follow);
  return window;
}

QString Captures::lineTrouble(Pane pane) const {
  if (connection_.source(pane) != PaneSource::kPanel || connection_.line(pane) == PaneLine::kNone)
    return tr("the pane is not connected to a panel");
  return connection_.line(pane) == PaneLine::kLost ? tr("the connection to the panel was lost") : QString();
}

QString Captures::take(Pane pane, const CaptureTake& take) {
  const auto& values = take.edit.values;
  StepNote note{captureStepName(static_cast<int>(values.size())), {}};
  for (const auto& [number, value] : values) note.selected.push_back(number);
  const Outcome done = state(pane).copy.apply(take.shown, take.taken, std::move(note));
  return done.written() ? QString() : failureText(done.failure());
}

void Captures::look() {
  for (const auto& window : windows_)
    if (window) window->look();
}

}  // namespace tessaly
