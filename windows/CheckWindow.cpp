#include "windows/CheckWindow.h"

#include <algorithm>

#include <QHeaderView>
#include <QMenu>
#include <QShortcut>

#include "review/FolderCheck.h"
#include "ui_CheckWindow.h"
#include "widgets/DialogText.h"
#include "widgets/ListFinder.h"
#include "windows/CheckRulesDialog.h"
#include "windows/FindingText.h"
#include "windows/ReviewWalk.h"

namespace tessaly {

namespace {

constexpr int kMacroWidth = 190, kRuleWidth = 130, kWrongWidth = 330;  // pixels, to start with

// The judgement of a folder hangs on the other files there, and not on what a pane makes of a macro.
bool ofFile(CheckRule rule) { return rule == CheckRule::kNameTwice || rule == CheckRule::kFileName; }

bool samePlace(const SiteRoot& root, const ReviewedPlace& a, const ReviewedPlace& b) {
  if (a.pane && b.pane) return a.pane == b.pane && a.opening == b.opening;
  const bool known = !a.place.file.empty() || !a.place.address.empty();
  return known && tessaly::samePlace(root, a.place, b.place);
}

std::vector<FindingRow> rowsOf(const ReviewedPlace& place, ContentCheck content, const Findings& findings) {
  const auto shared = std::make_shared<const ReviewedPlace>(place);
  std::vector<FindingRow> rows;
  for (const Finding& finding : findings) rows.push_back({shared, content, finding});
  return rows;
}

// On the worker's thread.
class CheckJob {
 public:
  CheckJob(const CheckSurroundings& surroundings, ReviewScope scope, const CheckContext& context)
      : root_(surroundings.root),
        words_(surroundings.failureText),
        scope_(std::move(scope)),
        check_(context) {}

  Outcome run(ReviewWork<FindingRow>::Report& report) {
    const auto tell = [&](const ReviewedPlace& place, ContentCheck content, const Findings& findings) {
      for (FindingRow& row : rowsOf(place, content, findings)) report.add(std::move(row));
    };
    return walkScope(root_, scope_,
                     {.open =
                          [&](const OpenContent& open) {
                            if (const auto* macro = std::get_if<Macro>(&open.content))
                              tell(open.place, macro->check(), check_.check(*macro));
                            else
                              tell(open.place, {}, check_.check(std::get<KeyFile>(open.content)));
                          },
                      .folder = [this] { folder_.emplace(check_); },
                      .stored =
                          [&](ReviewedPlace place, const std::string& file, Expected<std::string> bytes) {
                            CheckedFile checked = folder_->next(file, std::move(bytes));
                            if (!checked.name.empty()) place.name = checked.name;
                            if (checked.unread) translate(checked);
                            tell(place, checked.content, checked.findings);
                          },
                      .progress = [&](std::size_t done, std::size_t of) { report.progress(done, of); }},
                     report.stop());
  }

 private:
  void translate(CheckedFile& checked) const {
    for (Finding& finding : checked.findings)
      if (finding.rule == CheckRule::kUnreadable)
        finding.wrong.values = {words_(*checked.unread).toStdString()};
  }

  const SiteRoot& root_;
  const std::function<QString(const Failure&)> words_;
  const ReviewScope scope_;
  MacroCheck check_;
  std::optional<FolderCheck> folder_;
};

}  // namespace

CheckWindow::CheckWindow(CheckSurroundings surroundings, QWidget* owner)
    : ReviewWindow(tr("Check"), owner, Stands::kBeside),
      surroundings_(std::move(surroundings)),
      ui_(std::make_unique<Ui::CheckWindow>()),
      work_([this](std::vector<FindingRow> found,
                   Work::Progress progress) { take(std::move(found), progress); },
            [this](const Outcome& outcome) { end(outcome); }) {
  ui_->setupUi(this);
  ui_->scope->setSource(surroundings_.scopes);
  new ListFinder(*ui_->findings);
  ui_->findings->setModel(&model_);
  QHeaderView& header = *ui_->findings->header();
  header.resizeSection(CheckModel::kMacro, kMacroWidth);
  header.resizeSection(CheckModel::kRule, kRuleWidth);
  header.resizeSection(CheckModel::kWrong, kWrongWidth);
  keepSpaceWhenHidden({ui_->progress, ui_->cancel});
  connect(ui_->start, &QPushButton::clicked, this, &CheckWindow::start);
  connect(ui_->scope, &QComboBox::activated, this, &CheckWindow::start);
  connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this, &CheckWindow::start);
  connect(ui_->cancel, &QPushButton::clicked, this, [this] { work_.cancel(); });
  connect(ui_->findings, &QAbstractItemView::activated, this, &CheckWindow::openCurrent);
  connect(ui_->findings, &QWidget::customContextMenuRequested, this, &CheckWindow::openMenu);
  connect(ui_->findings->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &CheckWindow::showCurrent);
  connect(ui_->rules, &QPushButton::clicked, this, &CheckWindow::changeRules);
  connect(ui_->fix, &QPushButton::clicked, this, &CheckWindow::fixCurrent);
  connect(ui_->open, &QPushButton::clicked, this, &CheckWindow::openCurrent);
  connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
  showWorking(false);
  showCurrent();
  ui_->findings->setFocus();
}

CheckWindow::~CheckWindow() = default;

void CheckWindow::check(ReviewScope::Kind kind) {
  ui_->scope->choose(kind);
  start();
}

void CheckWindow::start() {
  std::vector<std::string> problems;
  off_ = RulesOff::load(surroundings_.root, problems);
  showOff(problems.empty() ? QString() : shown(std::string(kCheckFile) + ": " + problems.front()));
  model_.clear();
  showCurrent();  // there is none, which a list that is emptied does not tell
  seen_ = 0;
  const auto scope = ui_->scope->current();
  if (!scope) {
    tell(tr("There is nothing to be checked: choose a macro or a folder in a pane first."));
    return;
  }
  what_ = scope->title;
  tell({});
  showWorking(true);
  const auto job = std::make_shared<CheckJob>(
      surroundings_, *scope,
      CheckContext{surroundings_.dictionary, surroundings_.decodingLists, surroundings_.frameRate, off_});
  work_.start([job](Work::Report& report) { return job->run(report); });
}

void CheckWindow::take(std::vector<FindingRow> found, Work::Progress progress) {
  const bool first = model_.rowCount() == 0;
  model_.add(std::move(found));
  if (first && model_.rowCount() > 0) {
    ui_->findings->setCurrentIndex(model_.index(0, 0));
    fitColumns();
  }
  seen_ = progress.done;
  ui_->progress->setMaximum(static_cast<int>(progress.of));
  ui_->progress->setValue(static_cast<int>(progress.done));
  if (model_.rowCount() > 0) told_ = tellSummary();
}

void CheckWindow::fitColumns() {
  for (const int column : {CheckModel::kSeverity, CheckModel::kCommand})
    ui_->findings->resizeColumnToContents(column);
}

void CheckWindow::end(const Outcome& outcome) {
  showWorking(false);
  fitColumns();
  if (outcome && seen_ > 0)
    told_ = tellSummary();
  else if (outcome)
    tell(tr("There are no macros in %1.").arg(what_));
  else if (outcome.failure().kind == Failure::Kind::kCancelled)
    tell(tr("Cancelled. %1").arg(summary()));
  else
    tell(tr("NOT checked: %1 (%2)").arg(what_, surroundings_.failureText(outcome.failure())));
}

QString CheckWindow::summary() const {
  const QString macros = tr("%n macros looked at", nullptr, static_cast<int>(seen_));
  if (model_.rowCount() == 0) return tr("Nothing found: %1 in %2.").arg(macros, what_);
  return tr("%1 in %2: %3, %4, %5.")
      .arg(macros, what_, tr("%n errors", nullptr, model_.count(Severity::kError)),
           tr("%n warnings", nullptr, model_.count(Severity::kWarning)),
           tr("%n notes", nullptr, model_.count(Severity::kNote)));
}

void CheckWindow::follow(const ReviewedPlace& place, ContentCheck content, const Findings& findings) {
  const auto told = [&](const FindingRow& row) { return samePlace(surroundings_.root, *row.place, place); };
  std::shared_ptr<const ReviewedPlace> as;
  bool same = true;
  for (int i = 0; i < model_.rowCount(); ++i) {
    const FindingRow& row = *model_.row(i);
    if (!told(row)) continue;
    as = row.place;
    same = same && row.content == content;
  }
  if (!as || same) return;
  const int before = ui_->findings->currentIndex().row();
  const FindingRow chosen = before >= 0 ? *model_.row(before) : FindingRow();
  model_.replace([&](const FindingRow& row) { return told(row) && !ofFile(row.finding.rule); },
                 rowsOf(*as, content, findings));
  chooseAgain(chosen, before);
  // What somebody was just told stays.
  if (!work_.running() && ui_->outcome->text() == told_) told_ = tellSummary();
}

// The same finding, or the one that has come to stand where it stood.
void CheckWindow::chooseAgain(const FindingRow& chosen, int before) {
  int now = std::min(before, model_.rowCount() - 1);
  for (int i = 0; chosen.place && i < model_.rowCount(); ++i) {
    const FindingRow& row = *model_.row(i);
    if (row.finding.rule == chosen.finding.rule && row.finding.command == chosen.finding.command &&
        samePlace(surroundings_.root, *row.place, *chosen.place))
      now = i;
  }
  ui_->findings->setCurrentIndex(model_.index(now, 0));
  showCurrent();
}

QString CheckWindow::tellSummary() {
  tell(summary());
  return ui_->outcome->text();
}

void CheckWindow::tell(const QString& text) { ui_->outcome->setText(text); }

const FindingRow* CheckWindow::current() const { return model_.row(ui_->findings->currentIndex().row()); }

void CheckWindow::openCurrent() {
  // A copy: what comes of it may change the rows.
  if (const FindingRow* row = current()) emit openWanted(ReviewedPlace(*row->place), row->finding.command);
}

void CheckWindow::fixCurrent() {
  if (const FindingRow* row = current(); row != nullptr && row->finding.fix) emit fixWanted(FindingRow(*row));
}

void CheckWindow::showCurrent() {
  const FindingRow* row = current();
  ui_->open->setEnabled(row != nullptr);
  ui_->fix->setEnabled(row != nullptr && row->finding.fix.has_value());
}

void CheckWindow::showWorking(bool working) {
  if (working) ui_->progress->setRange(0, 0);
  ui_->progress->setVisible(working);
  ui_->cancel->setVisible(working);
}

void CheckWindow::showOff(const QString& problem) {
  const QString names = offText(off_);
  const QString off = names.isEmpty() ? tr("All rules count.") : tr("Off for this site: %1").arg(names);
  ui_->off->setText(problem.isEmpty() ? off : off + QLatin1Char('\n') + problem);
}

void CheckWindow::changeRules() {
  std::vector<std::string> ignored;
  CheckRulesDialog dialog(RulesOff::load(surroundings_.root, ignored), this);
  if (dialog.exec() == QDialog::Accepted) apply(dialog.off());
}

void CheckWindow::switchOff(CheckRule rule) {
  std::vector<std::string> ignored;
  RulesOff off = RulesOff::load(surroundings_.root, ignored);
  off.set(rule);
  apply(off);
}

void CheckWindow::apply(const RulesOff& off) {
  if (const Outcome stored = off.store(surroundings_.root); !stored.written()) {
    tell(tr("The rules could not be written: %1").arg(surroundings_.failureText(stored.failure())));
    return;
  }
  emit rulesChanged();
  start();
}

void CheckWindow::openMenu(const QPoint& at) {
  const FindingRow* row = current();
  if (row == nullptr) return;
  QMenu menu(this);
  menu.addAction(tr("&Open"), this, &CheckWindow::openCurrent);
  menu.addAction(tr("&Fix"), this, &CheckWindow::fixCurrent)->setEnabled(ui_->fix->isEnabled());
  menu.addSeparator();
  menu.addAction(
      tr("&Switch Off \"%1\"").arg(QString::fromStdString(std::string(infoOf(row->finding.rule).name))), this,
      [this, rule = row->finding.rule] { switchOff(rule); });
  menu.exec(ui_->findings->viewport()->mapToGlobal(at));
}

}  // namespace tessaly
