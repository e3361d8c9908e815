#include "app/Checking.h"

#include <algorithm>

#include "app/Browser.h"
#include "app/FailureText.h"
#include "app/MessageBoxes.h"
#include "app/PlaceText.h"
#include "app/ReviewPlaces.h"
#include "app/StatusStrip.h"
#include "widgets/DialogText.h"
#include "windows/CheckWindow.h"
#include "windows/FindingText.h"
#include "windows/WorkplacesWindow.h"

namespace tessaly {

namespace {

constexpr int kErrorsTold = 5, kMacrosTold = 10;  // in the questions before a send

}  // namespace

Checking::Checking(const PaneAccesses& panes, SiteAccess site, const LineContext& knowledge,
                   const int& frameRate, ReviewPlaces& places, QWidget* window)
    : panes_(panes),
      site_(site),
      knowledge_(knowledge),
      frameRate_(frameRate),
      markedRate_(frameRate),
      places_(places),
      window_(window),
      marks_(panes) {
  connect(&marks_, &CheckMarks::found, this, &Checking::follow);
  for (const PaneAccess& pane : panes)
    connect(&marks_, &CheckMarks::listsWritten, pane.browser, &Browser::showLinesAgain);
}

Checking::~Checking() { delete list_; }

CheckContext Checking::knowledge() const {
  std::vector<std::string> problems;  // told by the list
  return {knowledge_.dictionary, knowledge_.decodingLists, frameRate_, RulesOff::load(site_.root, problems)};
}

void Checking::begin() {
  markedRate_ = frameRate_;
  marks_.begin(knowledge());
}

void Checking::look() {
  if (markedRate_ != frameRate_) begin();
  marks_.lookAtLists();
}

void Checking::open() {
  if (list_)
    list_->present();
  else
    list(ReviewScope::Kind::kPane);
}

void Checking::list(ReviewScope::Kind kind) {
  if (!list_) {
    list_ = new CheckWindow({site_.root, knowledge_.dictionary, knowledge_.decodingLists, frameRate_,
                             [this] { return places_.scopes(); }, &failureText},
                            window_);
    connect(list_, &CheckWindow::openWanted, this,
            [this](const ReviewedPlace& place, int command) { places_.show(place, command); });
    connect(list_, &CheckWindow::fixWanted, this, &Checking::fix);
    connect(list_, &CheckWindow::rulesChanged, this, &Checking::begin);
    connect(&places_, &ReviewPlaces::said, list_,
            [list = list_](const Message& message) { list->tell(message.text); });
  }
  list_->check(kind);
  list_->present();
}

void Checking::follow(Pane pane) {
  const Findings* findings = marks_.findings(pane);
  const auto open = places_.shownIn(pane);
  if (list_ && findings != nullptr && open) {
    const auto* macro = std::get_if<Macro>(&open->content);
    list_->follow(open->place, macro != nullptr ? macro->check() : ContentCheck(), *findings);
  }
  emit findingsChanged();
}

QString Checking::selectedText() const {
  const Pane pane = places_.active();
  const Findings* findings = marks_.findings(pane);
  if (findings == nullptr || findings->empty()) return {};
  const int selected = state(pane).view.commands().selectedRow();
  QStringList told;
  for (const Finding& finding : *findings)
    if (selected >= 0 && finding.command == selected) told << findingText(finding);
  if (!told.isEmpty()) return told.join(QStringLiteral(" / "));
  return tr("%1 in this macro; F7 lists them").arg(countText(*findings));
}

void Checking::tell(const Message& message) {
  if (list_) list_->tell(message.text);
  emit said(message);
}

void Checking::fix(const FindingRow& row) {
  places_.show(*row.place, row.finding.command, [this, row](Pane pane) { applyFix(pane, row); });
}

void Checking::applyFix(Pane pane, const FindingRow& row) {
  WorkingCopy& copy = state(pane).copy;
  const QString what = findingText(row.finding);
  if (!state(pane).editable() || copy.macro()->check() != row.content) {
    tell({Grade::kFailure,
          tr("NOT fixed: %1 has changed since it was checked").arg(nameInStrip(row.place->title())),
          placeInWindow(state(pane))});
    return;
  }
  const int number = row.finding.command;
  const Outcome done = copy.apply(
      *row.finding.fix, {tr("fix command %1").arg(number + 1).toStdString(), std::vector<int>{number}});
  tell({done ? Grade::kDone : Grade::kFailure,
        done ? tr("fixed: command %1 (%2)").arg(QString::number(number + 1), what)
             : tr("NOT fixed: %1").arg(failureText(done.failure())),
        placeInWindow(state(pane))});
}

bool Checking::maySend(const Macro& macro, const QString& name, std::optional<Pane> shownIn) {
  const Findings findings = MacroCheck(knowledge()).errors(macro);
  if (findings.empty()) return true;
  QStringList lines{tr("%1 has %2.").arg(name, countText(findings)), QString()};
  for (const Finding& finding : findings) {
    if (lines.size() == kErrorsTold + 2) {
      lines << tr("...");
      break;
    }
    lines << (finding.command < 0
                  ? wrongInWindow(finding)
                  : tr("command %1: %2").arg(QString::number(finding.command + 1), wrongInWindow(finding)));
  }
  lines << QString() << tr("Send it all the same?");
  const std::string question = lines.join(QLatin1Char('\n')).toStdString();
  if (!shownIn) return site_.messages.ask(question, MessageIcon::kQuestion);
  const MessageChoice choice = site_.messages.choose(question, tr("Show").toStdString());
  if (choice == MessageChoice::kOther) {
    places_.setActive(*shownIn);
    list(ReviewScope::Kind::kPane);
  }
  return choice == MessageChoice::kOk;
}

bool Checking::maySend(const std::vector<FaultyMacro>& faulty, std::size_t of) const {
  QStringList lines{tr("%1 of %n macros have errors:", nullptr, static_cast<int>(of)).arg(faulty.size()),
                    QString()};
  for (const FaultyMacro& macro : faulty) {
    if (lines.size() == kMacrosTold + 2) {
      lines << tr("...");
      break;
    }
    lines << tr("%1: %2").arg(shown(macro.title), countText(macro.errors));
  }
  lines << QString() << tr("Send all of them all the same?");
  return site_.messages.ask(lines.join(QLatin1Char('\n')).toStdString(), MessageIcon::kQuestion);
}

}  // namespace tessaly
