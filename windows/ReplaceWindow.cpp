#include "windows/ReplaceWindow.h"

#include <chrono>

#include <QHeaderView>
#include <QPointer>
#include <QShortcut>

#include "platform/SystemFailure.h"
#include "platform/Text.h"
#include "ui_ReplaceWindow.h"
#include "widgets/DialogText.h"
#include "widgets/EditedText.h"
#include "widgets/ListFinder.h"
#include "windows/FindingText.h"
#include "windows/ReplaceDelegate.h"
#include "windows/ReviewWalk.h"

namespace tessaly {

namespace {

constexpr int kCommandWidth = 170, kLineWidth = 310;  // pixels, to start with
constexpr std::chrono::milliseconds kJudgeSoon{150};  // once nobody ticks any more
constexpr std::string_view kKeyEnd = ".upk";

using Kind = RetargetRule::Kind;

// On the worker's thread.
class PreviewJob {
 public:
  PreviewJob(const ReplaceSurroundings& surroundings, ReviewScope scope, MacroRetarget retarget)
      : root_(surroundings.root),
        words_(surroundings.failureText),
        scope_(std::move(scope)),
        retarget_(std::move(retarget)) {}

  Outcome run(ReviewWork<FoundReplacement>::Report& report) {
    return walkScope(root_, scope_,
                     {.open =
                          [&](const OpenContent& open) {
                            if (const auto* macro = std::get_if<Macro>(&open.content))
                              add(report, open.place, *macro);
                          },
                      .folder = [] {},
                      .stored =
                          [&](ReviewedPlace place, const std::string& file, Expected<std::string> bytes) {
                            if (!endsWithNoCase(file, kKeyEnd))
                              look(report, std::move(place), std::move(bytes));
                          },
                      .progress = [&](std::size_t done, std::size_t of) { report.progress(done, of); }},
                     report.stop());
  }

 private:
  using Report = ReviewWork<FoundReplacement>::Report;

  void look(Report& report, ReviewedPlace place, Expected<std::string> bytes) {
    const auto macro = bytes ? Macro::read(*std::move(bytes)) : Expected<Macro>(bytes.failure());
    if (!macro) {
      const QString why = ReplaceWindow::tr("cannot be read: %1").arg(words_(macro.failure()));
      report.add({std::move(place), std::nullopt, why});
      return;
    }
    if (place.name.empty()) place.name = macro->name().value_or("");
    add(report, std::move(place), *macro);
  }

  void add(Report& report, ReviewedPlace place, const Macro& macro) {
    RetargetProposals proposals = retarget_.propose(macro);
    if (proposals.empty()) return;
    RetargetedMacro changed(place.place, macro, std::move(proposals));
    report.add({std::move(place), std::move(changed), {}});
  }

  const SiteRoot& root_;
  const std::function<QString(const Failure&)> words_;
  const ReviewScope scope_;
  MacroRetarget retarget_;
};

}  // namespace

ReplaceWindow::ReplaceWindow(ReplaceSurroundings surroundings, QWidget* owner)
    : ReviewWindow(tr("Replace in macros"), owner, Stands::kBeside),
      surroundings_(std::move(surroundings)),
      ui_(std::make_unique<Ui::ReplaceWindow>()),
      reading_([this](std::vector<FoundReplacement> found,
                      Reading::Progress progress) { take(std::move(found), progress); },
               [this](const Outcome& outcome) { endReading(outcome); }),
      making_(
          [this](std::vector<Made> made, Making::Progress) {
            if (!made.empty()) made_ = std::move(made.back());
          },
          [this](const Outcome& outcome) { endMaking(outcome); }),
      writing_(
          [this](std::vector<ReplacedBatch> done, Writing::Progress) {
            if (!done.empty()) written_ = std::move(done.back());
          },
          [this](const Outcome& outcome) { endWriting(outcome); }),
      judging_(
          [this](std::vector<Judged> judged, Judging::Progress) {
            if (judged_ != previews_) return;
            for (Judged& one : judged) model_.judge(one.macro, one.ticked, std::move(one.proposals));
          },
          [](const Outcome&) {}) {
  ui_->setupUi(this);
  setUpFields();
  setUpTable();
  ui_->scope->setSource(surroundings_.scopes);
  ui_->scope->choose(ReviewScope::Kind::kApplication);
  keepSpaceWhenHidden({ui_->progress, ui_->cancel});
  connect(ui_->preview, &QPushButton::clicked, this, &ReplaceWindow::preview);
  connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this,
          &ReplaceWindow::preview);
  connect(ui_->cancel, &QPushButton::clicked, this, &ReplaceWindow::cancel);
  connect(ui_->replace, &QPushButton::clicked, this, &ReplaceWindow::replace);
  connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
  connect(&model_, &ReplaceModel::tickedChanged, this, &ReplaceWindow::showControls);
  connect(&model_, &ReplaceModel::tickedChanged, &judgeDue_, qOverload<>(&QTimer::start));
  judgeDue_.setSingleShot(true);
  judgeDue_.setInterval(kJudgeSoon);
  connect(&judgeDue_, &QTimer::timeout, this, &ReplaceWindow::judge);
  showControls();
  ui_->from->setFocus();
}

ReplaceWindow::~ReplaceWindow() = default;

void ReplaceWindow::setUpFields() {
  ui_->kind->addItem(tr("Destination"), static_cast<int>(Kind::kDestination));
  ui_->kind->addItem(tr("Segment"), static_cast<int>(Kind::kSegment));
  ui_->kind->addItem(tr("Source"), static_cast<int>(Kind::kSource));
  ui_->kind->addItem(tr("Value"), static_cast<int>(Kind::kValue));
  connect(ui_->kind, &QComboBox::currentIndexChanged, this, [this] { compose(); });
  for (QLineEdit* field : {ui_->parameter, ui_->from, ui_->to, ui_->where}) {
    whenEdited(*field, this, [this](const QString&) { compose(); });
    connect(field, &QLineEdit::returnPressed, this, &ReplaceWindow::preview);
  }
  // What is typed there is no longer what the fields put together.
  whenEdited(*ui_->rule, this, [this](const QString&) {
    for (QLineEdit* field : {ui_->parameter, ui_->from, ui_->to, ui_->where}) putText(*field, {});
    ui_->problem->clear();
  });
  connect(ui_->rule, &QLineEdit::returnPressed, this, &ReplaceWindow::preview);
  for (QLineEdit* field : {ui_->parameter, ui_->from, ui_->to, ui_->where, ui_->rule})
    leadDown(*field, *ui_->changes);
  compose();
}

void ReplaceWindow::setUpTable() {
  new ListFinder(*ui_->changes);
  ui_->changes->setModel(&model_);
  ui_->changes->setItemDelegate(new ReplaceDelegate(this));
  QHeaderView& header = *ui_->changes->header();
  header.resizeSection(ReplaceModel::kCommand, kCommandWidth);
  header.resizeSection(ReplaceModel::kBefore, kLineWidth);
  header.resizeSection(ReplaceModel::kAfter, kLineWidth);
  connect(ui_->changes, &QTreeView::activated, this, &ReplaceWindow::openCurrent);
  // Whatever column was clicked last.
  connect(new QShortcut(Qt::Key_Space, ui_->changes, nullptr, nullptr, Qt::WidgetShortcut),
          &QShortcut::activated, this, [this] {
            const QModelIndex tick = ui_->changes->currentIndex().siblingAtColumn(ReplaceModel::kCommand);
            const bool on = model_.data(tick, Qt::CheckStateRole).toInt() == Qt::Checked;
            model_.setData(tick, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
          });
}

// The rule as the fields tell it.
void ReplaceWindow::compose() {
  const auto kind = static_cast<Kind>(ui_->kind->currentData().toInt());
  ui_->parameter->setEnabled(kind == Kind::kValue);
  const auto text = [](const QLineEdit* field) { return field->text().trimmed().toStdString(); };
  const RetargetRule rule{.kind = kind,
                          .parameter = kind == Kind::kValue ? text(ui_->parameter) : std::string(),
                          .from = text(ui_->from),
                          .to = text(ui_->to),
                          .where = text(ui_->where)};
  const bool empty = rule.from.empty() && rule.to.empty();
  putText(*ui_->rule, empty ? QString() : QString::fromStdString(rule.text()));
  ui_->problem->clear();
}

Expected<MacroRetarget> ReplaceWindow::retarget() {
  const auto rule = RetargetRule::parse(ui_->rule->text().toStdString());
  if (!rule) return rule.failure();
  const CheckContext knowledge = surroundings_.knowledge();
  off_ = offText(knowledge.off);
  again_ = [rule = *rule, knowledge] { return MacroRetarget::make(rule, knowledge); };
  return again_();
}

void ReplaceWindow::preview() {
  if (writing()) return;
  auto made = retarget();
  ui_->problem->setText(made ? QString() : shown(made.failure().text));
  if (!made) return;
  model_.clear();
  ++previews_;
  seen_ = 0;
  const auto scope = ui_->scope->current();
  if (!scope) {
    tell(tr("There is nothing to look at: choose a macro or a folder in a pane first."));
    return;
  }
  what_ = scope->title;
  rule_ = ui_->rule->text().toStdString();
  tell({});
  const auto job = std::make_shared<PreviewJob>(surroundings_, *scope, *std::move(made));
  ui_->progress->setRange(0, 0);
  reading_.start([job](Reading::Report& report) { return job->run(report); });
  showControls();
}

void ReplaceWindow::take(std::vector<FoundReplacement> found, Reading::Progress progress) {
  const int before = model_.rowCount();
  for (FoundReplacement& one : found) {
    if (!one.macro) continue;
    const bool somewhere = !one.place.place.file.empty() || !one.place.place.address.empty();
    one.leftOut =
        somewhere ? surroundings_.leftOut(one.place.place) : tr("left out: it has no place of its own yet");
  }
  model_.add(std::move(found));
  for (int row = before; row < model_.rowCount(); ++row) ui_->changes->expand(model_.index(row, 0));
  seen_ = progress.done;
  ui_->progress->setMaximum(static_cast<int>(progress.of));
  ui_->progress->setValue(static_cast<int>(progress.done));
}

void ReplaceWindow::endReading(const Outcome& outcome) {
  showControls();
  if (!ui_->changes->currentIndex().isValid()) ui_->changes->setCurrentIndex(model_.index(0, 0));
  if (outcome)
    tell(summary());
  else if (outcome.failure().kind == Failure::Kind::kCancelled)
    tell(tr("Cancelled. %1").arg(summary()));
  else
    tell(tr("NOT looked at: %1 (%2)").arg(what_, surroundings_.failureText(outcome.failure())));
}

QString ReplaceWindow::summary() const {
  const QString seen = tr("%n macros looked at", nullptr, static_cast<int>(seen_));
  if (model_.rowCount() == 0) return tr("Nothing found: %1 in %2.").arg(seen, what_);
  QString text =
      tr("%1 can be changed; %2 in %3.").arg(tr("%n commands", nullptr, model_.ticked()), seen, what_);
  if (const int count = model_.impossible(); count > 0)
    text = tr("%1 %2").arg(text, tr("%n commands cannot.", nullptr, count));
  if (!off_.isEmpty()) text = tr("%1 Off for this site: %2").arg(text, off_);
  return text;
}

void ReplaceWindow::replace() {
  if (reading_.running() || writing() || model_.ticked() == 0) return;
  std::vector<RetargetedMacro> wanted;
  items_.clear();
  for (std::size_t i = 0; i < model_.macros().size(); ++i) {
    if (model_.ticked(i) == 0) continue;
    const FoundReplacement& one = model_.macros()[i];
    // The panes may show more than they did for the preview.
    if (const QString leftOut = surroundings_.leftOut(one.place.place); !leftOut.isEmpty()) {
      tell(tr("NOTHING was replaced: %1 (%2)").arg(shown(one.place.title()), leftOut));
      return;
    }
    wanted.push_back(*one.macro);
    items_.push_back(i);
  }
  written_ = {};
  wanted_ = true;
  tell(tr("Writing %n macros...", nullptr, static_cast<int>(wanted.size())));
  ui_->progress->setRange(0, 0);
  making_.start(
      [wanted = std::move(wanted), knowledge = surroundings_.knowledge()](Making::Report& report) -> Outcome {
        MacroCheck check(knowledge);
        Made made;
        for (const RetargetedMacro& macro : wanted) {
          if (report.stop().stop_requested()) return cancelledFailure();
          auto item = macro.item();
          if (!item) return item.failure();
          if (BatchPlaces::onPanel(item->place)) {
            ++made.toPanels;
            if (auto faulty = check.faults(item->place.number, *item->bytes))
              made.faulty.push_back(*std::move(faulty));
          }
          made.items.push_back(*std::move(item));
        }
        report.add(std::move(made));
        return {};
      });
  showControls();
}

void ReplaceWindow::endMaking(const Outcome& outcome) {
  if (!outcome) return endWriting(outcome);
  if (made_.faulty.empty()) return write();
  // A transfer that is waited for just now keeps the keys and clicks from any other box.
  waits_ = true;
  surroundings_.whenFree([here = QPointer<ReplaceWindow>(this)] {
    if (here) here->askToSend();
  });
}

void ReplaceWindow::askToSend() {
  waits_ = false;
  const QPointer<ReplaceWindow> here(this);
  const bool may = !wanted_ || surroundings_.maySend(made_.faulty, made_.toPanels);
  if (here.isNull()) return;
  if (may) return write();
  tell(tr("NOTHING was replaced: %n macros have errors.", nullptr, static_cast<int>(made_.faulty.size())));
  showControls();
}

// What was made may have been cancelled since.
void ReplaceWindow::write() {
  if (!wanted_) return endWriting(cancelledFailure());
  writing_.start([job = surroundings_.job("replace " + rule_),
                  items = std::exchange(made_, {}).items](Writing::Report& report) mutable -> Outcome {
    auto done = job(std::move(items), report.stop());
    if (!done) return done.failure();
    report.add(*std::move(done));
    return {};
  });
  showControls();
}

void ReplaceWindow::endWriting(const Outcome& outcome) {
  const auto why = [&]() -> std::optional<Failure> {
    if (!outcome) return outcome.failure();
    return written_.failed ? std::optional(written_.rows[*written_.failed].why) : std::nullopt;
  }();
  for (std::size_t i = 0; i < written_.rows.size(); ++i) {
    model_.setOutcome(items_[i], outcomeText(i));
    if (written_.rows[i].state == MacroBatch::Row::State::kUnknown)
      emit leftUnknown(model_.macros()[items_[i]].place.place);
  }
  const int count = static_cast<int>(written_.traces.size());
  const QString done =
      tr("Replaced in %n macros; \"Undo\" in the menu \"Macro\" takes it back.", nullptr, count);
  if (!why)
    tell(done);
  else if (count > 0)
    tell(tr("%1 NOT in the others: %2").arg(done, surroundings_.failureText(*why)));
  else if (written_.failed)
    tell(tr("NOTHING was replaced: %1 (%2)")
             .arg(shown(model_.macros()[items_[*written_.failed]].place.title()),
                  surroundings_.failureText(*why)));
  else
    tell(tr("NOTHING was replaced: %1").arg(surroundings_.failureText(*why)));
  if (count > 0) emit replaced(tr("replacement in %n macros", nullptr, count), written_.traces);
  showControls();
  if (closing_) close();
}

QString ReplaceWindow::outcomeText(std::size_t item) const {
  using State = MacroBatch::Row::State;
  const MacroBatch::Row& row = written_.rows[item];
  const bool panel = BatchPlaces::onPanel(model_.macros()[items_[item]].place.place);
  const QString why = surroundings_.failureText(row.why);
  switch (row.state) {
    case State::kDone:
      return tr("replaced");
    case State::kUnverified:
      return tr("replaced, NOT verified");
    case State::kUnknown:
      return tr("UNKNOWN what stands there: %1").arg(why);
    case State::kWaiting:
    case State::kAsBefore:
      break;
  }
  // Of files the one that failed tells why; the others were put back for its sake.
  return panel || written_.failed == item ? tr("NOT replaced: %1").arg(why) : tr("as before");
}

// The findings of the macros whose ticks have changed.
void ReplaceWindow::judge() {
  if (judging_.running()) return judgeDue_.start();
  std::vector<Judged> wanted;
  for (const std::size_t i : model_.takeUnjudged())
    if (const auto& macro = model_.macros()[i].macro)
      wanted.push_back({i, macro->macro, macro->ticked, macro->proposals});
  if (wanted.empty()) return;
  judged_ = previews_;
  judging_.start([wanted = std::move(wanted), again = again_](Judging::Report& report) mutable -> Outcome {
    auto retarget = again();
    if (!retarget) return retarget.failure();
    for (Judged& one : wanted) {
      if (report.stop().stop_requested()) break;
      retarget->judge(one.content, one.proposals, one.ticked);
      report.add(std::move(one));
    }
    return {};
  });
}

void ReplaceWindow::cancel() {
  reading_.cancel();
  wanted_ = false;
  making_.cancel();
  writing_.cancel();
}

void ReplaceWindow::reject() {
  cancel();
  closing_ = writing();
  if (!closing_) ReviewWindow::reject();
}

void ReplaceWindow::openCurrent() {
  const QModelIndex index = ui_->changes->currentIndex();
  const auto macro = model_.macroOf(index);
  const RetargetProposal* proposal = model_.proposal(index);
  if (macro) emit openWanted(ReviewedPlace(model_.macros()[*macro].place), proposal ? proposal->command : -1);
}

void ReplaceWindow::tell(const QString& text) { ui_->outcome->setText(text); }

void ReplaceWindow::showControls() {
  const bool working = reading_.running() || writing();
  ui_->progress->setVisible(working);
  ui_->cancel->setVisible(working);
  ui_->changes->setEnabled(!writing());
  ui_->replace->setEnabled(!working && model_.ticked() > 0);
}

}  // namespace tessaly
