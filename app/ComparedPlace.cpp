#include "app/ComparedPlace.h"

#include <cstdint>

#include <QTimer>

#include "app/OpenMacros.h"
#include "model/MacroFile.h"
#include "platform/Files.h"
#include "widgets/DialogText.h"

namespace tessaly {

ComparedPlace::ComparedPlace(const WorkingCopy& copy, std::optional<MacroTarget> place, SiteAccess site,
                             MacroTransfers& transfers, EventGate& gate)
    : copy_(copy),
      fixed_(std::move(place)),
      site_(site),
      transfers_(transfers),
      gate_(gate),
      edited_(copy.edited()) {
  connect(&copy, &WorkingCopy::changed, this, &ComparedPlace::followCopy);
}

void ComparedPlace::look() {
  const std::optional<MacroTarget> here = place();
  seen_ = here;
  present_ = {.trouble = tr("the panel is being asked")};
  // The transfer lets events through: the window may be closed, or the pane show another macro, meanwhile.
  const QPointer<ComparedPlace> self(this);
  if (here && here->source == PaneSource::kPanel) {
    MacroTransfers::Present found = transfers_.look(placeOf(*here));
    if (self.isNull() || seen_ != here) return;
    present_ = std::move(found);
  }
  emit changed();
}

void ComparedPlace::take(MacroTransfers::Present present) {
  seen_ = place();
  present_ = std::move(present);
}

// Inside the handler that has changed the working copy nothing is looked at.
void ComparedPlace::followCopy() {
  const bool ended = std::exchange(edited_, copy_.edited()) && !copy_.edited();
  if (!ended && place() == seen_) return;
  QTimer::singleShot(0, this, [this] {
    const std::string name = "compared " + std::to_string(reinterpret_cast<std::uintptr_t>(this));
    gate_.whenFree(name, [self = QPointer<ComparedPlace>(this)] {
      if (self) self->look();
    });
  });
}

CompareSide ComparedPlace::side() const {
  CompareSide side{tr("the target"), {}, tr("only what a pane holds can be changed here"), {}, {}};
  const std::optional<MacroTarget> here = place();
  if (!here) {
    side.heading = tr("There is no place that the pane's macro belongs to.");
    side.trouble = tr("the pane's macro has come from no place");
    return side;
  }
  const bool panel = here->source == PaneSource::kPanel;
  side.heading =
      panel ? tr("Now on the panel: %1\n%2, workplace %3")
                  .arg(macroInStrip(*here), shown(here->address.text()), QString::number(here->workplace))
            : tr("Now on the disk: %1\n%2").arg(macroInStrip(*here), shown(here->file()));
  if (!panel) {
    side.content = [&root = site_.root, file = here->file()] { return readMacro(root, file); };
  } else if (seen_ != here) {
    side.trouble = tr("the panel is about to be asked");
  } else if (present_.bytes) {
    side.content = [bytes = *present_.bytes] { return Macro::read(bytes); };
  } else {
    side.trouble = present_.missing ? tr("there is no macro any more") : present_.trouble;
  }
  return side;
}

}  // namespace tessaly
