#include "app/Replacements.h"

#include <algorithm>

#include "app/Checking.h"
#include "app/FailureText.h"
#include "app/MacroUndo.h"
#include "app/OpenMacros.h"
#include "app/ReviewPlaces.h"

namespace tessaly {

Replacements::Replacements(const Surroundings& surroundings, Shelves shelves, QWidget* window)
    : around_(surroundings), shelves_(std::move(shelves)), owner_(window) {}

Replacements::~Replacements() { delete window_; }

QString Replacements::leftOut(const MacroPlace& place) const {
  return around_.open.unsavedAt(place).isEmpty() ? QString()
                                                 : tr("left out: a pane shows it with unsaved changes");
}

// What is on a panel cannot be written all or none.
ReplaceJob Replacements::job(const std::string& title) const {
  return [shelves = shelves_, connected = around_.connection.wholePanels(), title](
             std::vector<BatchItem> items, const std::stop_token& stop) -> Expected<ReplacedBatch> {
    const bool panel =
        std::ranges::any_of(items, [](const BatchItem& item) { return BatchPlaces::onPanel(item.place); });
    const auto mode = panel ? MacroBatch::Mode::kAsManyAsGo : MacroBatch::Mode::kAllOrNone;
    BatchRoom room(shelves, connected);
    MacroBatch batch(room.places(), title, MacroChange::kEdit, mode, std::move(items));
    const std::stop_callback cancel(stop, [&batch] { batch.cancel(); });
    return replacedBy(batch);
  };
}

void Replacements::open() {
  if (!window_) {
    window_ = new ReplaceWindow(
        {.root = around_.root,
         .knowledge = [this] { return around_.checking.knowledge(); },
         .scopes = [this] { return around_.places.scopes(); },
         .leftOut = [this](const MacroPlace& place) { return leftOut(place); },
         .job = [this](const std::string& title) { return job(title); },
         .maySend = [this](const std::vector<FaultyMacro>& faulty,
                           std::size_t of) { return around_.checking.maySend(faulty, of); },
         .whenFree =
             [this](std::function<void()> act) { around_.gate.whenFree("replace window", std::move(act)); },
         .failureText = &failureText},
        owner_);
    connect(window_, &ReplaceWindow::openWanted, this,
            [this](const ReviewedPlace& place, int command) { around_.places.show(place, command); });
    connect(&around_.places, &ReviewPlaces::said, window_,
            [window = window_](const Message& message) { window->tell(message.text); });
    connect(window_, &ReplaceWindow::replaced, this,
            [this](const QString& name, const std::vector<BatchTrace>& traces) {
              done_.emplace_back(name, traces);
              for (const BatchTrace& trace : traces) written_.push_back(trace.place);
              follow();
            });
    connect(window_, &ReplaceWindow::leftUnknown, this, [this](const MacroPlace& place) {
      written_.push_back(place);
      follow();
    });
  }
  window_->present();
}

bool Replacements::end() {
  if (window_) window_->cancel();
  return !(window_ && window_->writing());
}

// From the event loop: a pane that reads a macro of a panel runs one of its own, in which more may be
// written.
void Replacements::follow() {
  QMetaObject::invokeMethod(
      this,
      [this] {
        around_.gate.whenFree("replacements", [this] {
          for (auto& [title, traces] : std::exchange(done_, {}))
            around_.undo.noteBatch(title, std::move(traces));
          for (const MacroPlace& place : std::exchange(written_, {})) around_.open.follow(place);
        });
      },
      Qt::QueuedConnection);
}

}  // namespace tessaly
