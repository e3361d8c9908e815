#include "app/Searching.h"

#include <utility>

#include "app/Act.h"
#include "app/FailureText.h"
#include "app/ReviewPlaces.h"
#include "app/StatusStrip.h"
#include "review/WhereUsed.h"
#include "windows/SearchWindow.h"

namespace tessaly {

namespace {

QString textOf(const UsedThing& thing) {
  const QString name = textInMenu(nameInStrip(thing.name));
  switch (thing.kind) {
    case UsedThing::Kind::kFunction:
      return Searching::tr("&Function %1").arg(name);
    case UsedThing::Kind::kDestination:
      return Searching::tr("&Destination %1").arg(name);
    case UsedThing::Kind::kSource:
      return Searching::tr("&Source %1").arg(name);
    case UsedThing::Kind::kGroup:
      return Searching::tr("Classic &Group %1").arg(name);
  }
  return {};
}

}  // namespace

Searching::Searching(SiteAccess site, const LineContext& knowledge, ReviewPlaces& places, QWidget* window)
    : site_(site), knowledge_(knowledge), places_(places), owner_(window) {}

Searching::~Searching() { delete window_; }

SearchWindow* Searching::make(QWidget* owner) {
  auto* const window =
      new SearchWindow({site_.root, knowledge_, [this] { return places_.scopes(); }, &failureText}, owner);
  connect(&places_, &ReviewPlaces::said, window,
          [window](const Message& message) { window->tell(message.text); });
  return window;
}

SearchWindow& Searching::window() {
  if (!window_) {
    window_ = make(owner_);
    connect(window_, &SearchWindow::openWanted, this,
            [this](const ReviewedPlace& place, int command) { places_.show(place, command); });
  }
  return *window_;
}

// Another macro in the pane would take away the one that the dialog builds its command for.
SearchWindow& Searching::windowOver(QDialog& dialog) {
  if (auto* const open = dialog.findChild<SearchWindow*>()) return *open;
  SearchWindow* const window = make(&dialog);
  connect(window, &SearchWindow::openWanted, this, [this, window](const ReviewedPlace& place, int command) {
    later_ = Wanted{place, command};
    window->tell(tr("It is opened once the dialog is closed."));
  });
  connect(&dialog, &QObject::destroyed, this, [this] {
    if (const auto wanted = std::exchange(later_, std::nullopt)) places_.show(wanted->place, wanted->command);
  });
  return *window;
}

void Searching::open() { window().present(); }

void Searching::addWhereUsed(QMenu& menu, const MacroCommand& command, QDialog* dialog) {
  for (const UsedThing& thing : usedBy(command, knowledge_))
    menu.addAction(textOf(thing), this, [this, dialog, query = QString::fromStdString(thing.query)] {
      SearchWindow& used = dialog != nullptr ? windowOver(*dialog) : window();
      used.present();
      used.search(query, ReviewScope::Kind::kSite);
    });
}

}  // namespace tessaly
