#include "app/Searching.h"

#include "app/EditMenu.h"
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

SearchWindow& Searching::window() {
  if (!window_) {
    window_ =
        new SearchWindow({site_.root, knowledge_, [this] { return places_.scopes(); }, &failureText}, owner_);
    connect(window_, &SearchWindow::openWanted, this,
            [this](const ReviewedPlace& place, int command) { places_.show(place, command); });
    connect(&places_, &ReviewPlaces::said, window_, &SearchWindow::tell);
  }
  return *window_;
}

void Searching::open() { window().present(); }

void Searching::addWhereUsed(QMenu& menu, const MacroCommand& command) {
  for (const UsedThing& thing : usedBy(command, knowledge_))
    menu.addAction(textOf(thing), this, [this, query = QString::fromStdString(thing.query)] {
      window().present();
      window().search(query, ReviewScope::Kind::kSite);
    });
}

}  // namespace tessaly
