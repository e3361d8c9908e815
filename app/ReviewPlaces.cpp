#include "app/ReviewPlaces.h"

#include <utility>

#include "app/Browser.h"
#include "app/PlaceText.h"
#include "app/StatusStrip.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "review/PanelShelf.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr int kNamesMilliseconds = 5000;  // for a panel to tell the names of a workplace
constexpr std::string_view kKeyEnd = ".upk";

// With what it works with.
struct ReadingShelf {
  std::unique_ptr<PanelMacros> macros;
  PanelShelf shelf;
};

QString paneLetter(const PaneState& state) { return QString(QLatin1Char(state.descriptor.letter)); }

std::string folderOf(const std::string& file) {
  return file.substr(0, file.size() - fileNameOf(file).size());
}

}  // namespace

ShelfContent readingShelf(const PanelMacros& macros, PanelClient& client, MacroHistory& history,
                          const HostAddress& address, int workplace) {
  return {[&macros, &client, &history, address, workplace] {
    auto many = macros.forMany();
    PanelMacros& used = *many;
    const std::shared_ptr<ReadingShelf> whole(
        new ReadingShelf{std::move(many), PanelShelf(used, client, history, address, workplace)});
    return std::shared_ptr<MacroShelf>(whole, &whole->shelf);
  }};
}

ReviewPlaces::ReviewPlaces(const PaneAccesses& panes, SiteAccess site, const PanelConnection& connection,
                           OpenMacros& open, LooseMacros& loose, EventGate& gate, QWidget* window)
    : panes_(panes),
      site_(site),
      connection_(connection),
      open_(open),
      loose_(loose),
      gate_(gate),
      window_(window) {
  patience_.setSingleShot(true);
  for (const Pane pane : kPanes)
    connect(&browser(pane), &Browser::changed, this, &ReviewPlaces::openFromPanel, Qt::QueuedConnection);
  connect(&patience_, &QTimer::timeout, this, [this] {
    if (const auto wanted = std::exchange(awaited_, std::nullopt))
      refuse(wanted->place, tr("the panel does not list it"));
  });
}

bool ReviewPlaces::onPanel(Pane pane) const { return connection_.source(pane) == PaneSource::kPanel; }

std::optional<OpenContent> ReviewPlaces::shownIn(Pane pane) const {
  const PaneState& here = state(pane);
  const WorkingCopy& copy = here.copy;
  if (copy.content() == WorkingCopy::Content::kNothing) return std::nullopt;
  ReviewedPlace place{.place = {}, .shown = {}, .number = {}, .name = {}, .pane = pane, .opening = 0};
  place.opening = copy.opening();
  if (const auto& target = copy.target()) {
    place.place = placeOf(*target);
    place.number = target->numberText;
    place.name = target->name;
  }
  if (copy.content() == WorkingCopy::Content::kKeyFile) {
    if (const MacroRow* row = here.selectedMacro()) {
      place.place.file = keyFile(browser(pane).keyFolder(), row->numberText);
      place.number = row->numberText;
    }
    place.name = copy.keyFile().name();
    return OpenContent{place, copy.keyFile()};
  }
  if (place.name.empty()) place.name = copy.macro()->name().value_or("");
  return OpenContent{place, *copy.macro(), copy.unsaved()};
}

std::vector<ReviewScope> ReviewPlaces::scopes() const {
  using Kind = ReviewScope::Kind;
  std::vector<ReviewScope> scopes;
  if (auto open = shownIn(active_)) {
    const QString title = shown(open->place.title());
    scopes.push_back({Kind::kPane, tr("%1, as pane %2 shows it").arg(title, paneLetter(state(active_))),
                      *std::move(open)});
  }
  const Pane panel = onPanel(active_) ? active_ : other(active_);
  if (panelReader_ && onPanel(panel) && connection_.connected(panel) && browser(panel).workplace() > 0) {
    const HostAddress& address = connection_.address(panel);
    const int workplace = browser(panel).workplace();
    scopes.push_back(
        {Kind::kPanel,
         tr("workplace %1 on the panel %2").arg(QString::number(workplace), shown(address.text())),
         panelReader_(address, workplace)});
  }
  addDiskScopes(onPanel(active_) && !onPanel(other(active_)) ? other(active_) : active_, scopes);
  return scopes;
}

void ReviewPlaces::addDiskScopes(Pane pane, std::vector<ReviewScope>& scopes) const {
  using Kind = ReviewScope::Kind;
  const bool keys = state(pane).olderFamily && !onPanel(pane);
  const auto add = [&](Kind kind, const QString& title, const std::string& folder) {
    if (!folder.empty()) scopes.push_back({kind, title.arg(shown(folder)), FolderContent{folder}});
  };
  add(Kind::kFolder, keys ? tr("key files: %1") : tr("workplace: %1"),
      keys ? browser(pane).keyFolder() : browser(pane).macroFolder());
  add(Kind::kApplication, tr("application: %1"), browser(pane).applicationFolder());
  add(Kind::kSite, tr("all applications: %1"), connection_.path(pane));
}

std::optional<Pane> ReviewPlaces::paneShowing(const ReviewedPlace& place) const {
  if (place.pane && state(*place.pane).copy.opening() == place.opening) return place.pane;
  for (const Pane pane : {active_, other(active_)}) {
    const auto there = shownIn(pane);
    const bool known = there && (!there->place.place.file.empty() || !there->place.place.address.empty());
    if (known && samePlace(site_.root, there->place.place, place.place)) return pane;
  }
  return std::nullopt;
}

std::optional<Pane> ReviewPlaces::paneFor(const ReviewedPlace& place) const {
  const bool panel = place.place.file.empty();
  for (const Pane pane : {active_, other(active_)}) {
    if (onPanel(pane) != panel) continue;
    if (!panel || (connection_.connected(pane) && connection_.address(pane) == place.place.address))
      return pane;
  }
  return std::nullopt;
}

void ReviewPlaces::refuse(const ReviewedPlace& place, const QString& reason) {
  const bool known = !place.place.file.empty() || !place.place.address.empty();
  emit said({Grade::kFailure, tr("NOT opened: %1 (%2)").arg(nameInStrip(place.title()), reason),
             known ? placeInWindow(place.place) : QString()});
}

// Not within the event of the window that wants it: a transfer runs a loop in which that window may go.
void ReviewPlaces::show(const ReviewedPlace& place, int command, const Then& then) {
  awaited_.reset();
  QMetaObject::invokeMethod(
      this,
      [this, wanted = Wanted{place, command, then}] {
        gate_.whenFree("review", [this, wanted] { open(wanted); });
      },
      Qt::QueuedConnection);
}

void ReviewPlaces::open(const Wanted& wanted) {
  if (const auto pane = paneShowing(wanted.place)) {
    finish(*pane, wanted);
    return;
  }
  const MacroPlace& place = wanted.place.place;
  if (place.file.empty() && place.address.empty()) {
    refuse(wanted.place, tr("no pane shows it any more"));
    return;
  }
  const auto pane = paneFor(wanted.place);
  if (!pane) {
    refuse(wanted.place, place.file.empty()
                             ? tr("no pane is connected to the panel %1").arg(shown(place.address.text()))
                             : tr("no pane shows the harddisk"));
  } else if (state(*pane).copy.edited()) {
    refuse(wanted.place, tr("pane %1 has unsaved changes").arg(paneLetter(state(*pane))));
  } else if (place.file.empty()) {
    awaited_ = wanted;
    awaiting_ = *pane;
    patience_.start(kNamesMilliseconds);
    openFromPanel();
  } else {
    openFromDisk(*pane, wanted);
  }
}

void ReviewPlaces::openFromDisk(Pane pane, const Wanted& wanted) {
  const std::string& file = wanted.place.place.file;
  const bool key = endsWithNoCase(file, kKeyEnd);
  if (key)
    browser(pane).revealKey(folderOf(file), wanted.place.number);
  else
    browser(pane).reveal({PaneSource::kHarddisk, folderOf(file), {}, 0, wanted.place.number, {}});
  const MacroRow* row = state(pane).selectedMacro();
  const std::string chosen = row == nullptr ? std::string()
                             : key          ? keyFile(browser(pane).keyFolder(), row->numberText)
                                            : open_.selectedTarget(pane).file();
  if (!chosen.empty() && site_.root.same(chosen, file)) {
    open_.open(pane);
  } else if (!key) {
    // No list shows it, as one whose file has no number.
    loose_.open(pane, QString::fromStdString(file));
  } else {
    refuse(wanted.place, tr("no list shows it"));
    return;
  }
  if (state(pane).copy.content() != WorkingCopy::Content::kNothing) finish(pane, wanted);
}

void ReviewPlaces::openFromPanel() {
  if (!awaited_ || gate_.held()) return;
  const Pane pane = awaiting_;
  // Taken first: what is chosen now tells of changes again.
  const Wanted wanted = *std::exchange(awaited_, std::nullopt);
  if (state(pane).copy.edited() || !onPanel(pane)) return;
  const MacroPlace& place = wanted.place.place;
  if (!browser(pane).revealOnPanel(place.workplace, place.number)) {
    awaited_ = wanted;
    return;
  }
  patience_.stop();
  open_.open(pane);
  if (paneShowing(wanted.place) == pane) finish(pane, wanted);
}

void ReviewPlaces::finish(Pane pane, const Wanted& wanted) {
  CommandList& commands = state(pane).view.commands();
  if (wanted.command >= 0) commands.selectRow(wanted.command);
  window_->activateWindow();
  window_->raise();
  if (commands.isEnabled()) commands.setFocus();
  active_ = pane;
  emit changed();
  if (wanted.then) wanted.then(pane);
}

}  // namespace tessaly
