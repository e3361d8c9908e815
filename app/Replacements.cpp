#include "app/Replacements.h"

#include <utility>

#include "app/FailureText.h"
#include "app/ReviewPlaces.h"
#include "model/MacroHistory.h"

namespace tessaly {

namespace {

// On a thread of its own, with a history of its own.
Expected<ReplacedBatch> write(const SiteRoot& root, const std::string& title, std::vector<BatchItem> items,
                              const std::stop_token& stop) {
  MacroHistory history(root);
  BatchPlaces places(root, history);
  MacroBatch batch(places, title, MacroChange::kEdit, MacroBatch::Mode::kAllOrNone, std::move(items));
  const std::stop_callback cancel(stop, [&batch] { batch.cancel(); });
  if (const Outcome ran = batch.run(); !ran) return ran.failure();
  return ReplacedBatch{batch.rows(), tracesOf(batch)};
}

}  // namespace

Replacements::Replacements(SiteAccess site, const LineContext& knowledge, int frameRate, ReviewPlaces& places,
                           OpenMacros& open, EventGate& gate, QWidget* window)
    : site_(site),
      knowledge_(knowledge),
      frameRate_(frameRate),
      places_(places),
      open_(open),
      gate_(gate),
      owner_(window) {}

Replacements::~Replacements() { delete window_; }

CheckContext Replacements::context() const {
  std::vector<std::string> problems;  // told by the list of the check
  return {knowledge_.dictionary, knowledge_.decodingLists, frameRate_, RulesOff::load(site_.root, problems)};
}

// Those of the disk: what is on a panel cannot be written all or none.
std::vector<ReviewScope> Replacements::scopes() const {
  std::vector<ReviewScope> scopes = places_.scopes();
  std::erase_if(scopes, [](const ReviewScope& scope) {
    const auto* open = std::get_if<OpenContent>(&scope.what);
    return scope.kind == ReviewScope::Kind::kPanel || (open != nullptr && open->place.place.file.empty());
  });
  return scopes;
}

QString Replacements::leftOut(const MacroPlace& place) const {
  return open_.unsavedAt(place).isEmpty() ? QString() : tr("left out: a pane shows it with unsaved changes");
}

void Replacements::open() {
  if (!window_) {
    window_ = new ReplaceWindow(
        {.root = site_.root,
         .knowledge = [this] { return context(); },
         .scopes = [this] { return scopes(); },
         .leftOut = [this](const MacroPlace& place) { return leftOut(place); },
         .write = [&root = site_.root](
                      const std::string& title, std::vector<BatchItem> items,
                      const std::stop_token& stop) { return write(root, title, std::move(items), stop); },
         .failureText = &failureText},
        owner_);
    connect(window_, &ReplaceWindow::openWanted, this,
            [this](const ReviewedPlace& place, int command) { places_.show(place, command); });
    connect(&places_, &ReviewPlaces::said, window_, &ReplaceWindow::tell);
    connect(window_, &ReplaceWindow::replaced, this, &Replacements::follow);
  }
  window_->present();
}

// A handler that waits in a loop of its own still holds what the panes showed before.
void Replacements::follow(const QString& name, const std::vector<BatchTrace>& traces) {
  done_.emplace_back(name, traces);
  gate_.whenFree("replacements", [this] {
    for (const auto& [title, written] : std::exchange(done_, {})) {
      emit replaced(title, written);
      for (const BatchTrace& trace : written) open_.follow(trace.place);
    }
  });
}

}  // namespace tessaly
