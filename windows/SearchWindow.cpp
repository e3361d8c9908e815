#include "windows/SearchWindow.h"

#include <QShortcut>
#include <QToolButton>

#include "platform/Text.h"
#include "review/WhereUsed.h"
#include "ui_SearchWindow.h"
#include "widgets/DialogText.h"
#include "widgets/EditedText.h"
#include "windows/ReviewWalk.h"

namespace tessaly {

namespace {

constexpr std::string_view kKeyEnd = ".upk";

// On the worker's thread.
class SearchJob {
 public:
  SearchJob(const SearchSurroundings& surroundings, ReviewScope scope, MacroQuery query)
      : root_(surroundings.root),
        words_(surroundings.failureText),
        scope_(std::move(scope)),
        search_(std::move(query), surroundings.knowledge) {}

  Outcome run(ReviewWork<FoundHits>::Report& report) {
    return walkScope(
        root_, scope_,
        {.open =
             [&](const OpenContent& open) {
               add(report, open.place,
                   std::visit([this](const auto& content) { return search_.find(content); }, open.content));
             },
         .folder = [] {},
         .stored =
             [&](ReviewedPlace place, const std::string& file, Expected<std::string> bytes) {
               look(report, std::move(place), file, std::move(bytes));
             },
         .progress = [&](std::size_t done, std::size_t of) { report.progress(done, of); }},
        report.stop());
  }

 private:
  using Report = ReviewWork<FoundHits>::Report;

  static void add(Report& report, const ReviewedPlace& place, std::vector<SearchHit> hits) {
    if (!hits.empty()) report.add({place, std::move(hits), {}});
  }

  void look(Report& report, ReviewedPlace place, const std::string& file, Expected<std::string> bytes) {
    if (!bytes) {
      report.add({std::move(place), {}, words_(bytes.failure())});
    } else if (endsWithNoCase(file, kKeyEnd)) {
      KeyFile keys;
      keys.parse(*bytes);
      place.name = keys.name();
      add(report, place, search_.find(keys));
    } else if (const auto macro = Macro::read(*std::move(bytes))) {
      place.name = macro->name().value_or(place.name);
      add(report, place, search_.find(*macro));
    } else {
      report.add({std::move(place), {}, words_(macro.failure())});
    }
  }

  const SiteRoot& root_;
  const std::function<QString(const Failure&)> words_;
  const ReviewScope scope_;
  MacroSearch search_;
};

}  // namespace

SearchWindow::SearchWindow(SearchSurroundings surroundings, QWidget* owner)
    : ReviewWindow(tr("Search"), owner, Stands::kBeside),
      surroundings_(std::move(surroundings)),
      ui_(std::make_unique<Ui::SearchWindow>()),
      work_(
          [this](std::vector<FoundHits> found, Work::Progress progress) { take(std::move(found), progress); },
          [this](const Outcome& outcome) { end(outcome); }) {
  ui_->setupUi(this);
  fields_ = {{ui_->function, "function"}, {ui_->destination, "destination"},
             {ui_->source, "source"},     {ui_->value, "value"},
             {ui_->group, "group"},       {ui_->text, ""}};
  ui_->scope->setSource(surroundings_.scopes);
  ui_->scope->choose(ReviewScope::Kind::kSite);
  ui_->query->findChild<QToolButton*>()->setAccessibleName(tr("Clear the query"));
  keepSpaceWhenHidden({ui_->progress, ui_->cancel});
  for (const auto& [field, word] : fields_) {
    whenEdited(*field, this, [this](const QString&) { compose(); });
    connect(field, &QLineEdit::returnPressed, this, &SearchWindow::start);
    leadDown(*field, *ui_->hits);
  }
  leadDown(*ui_->query, *ui_->hits);
  // What is typed there is no longer what the fields put together.
  whenEdited(*ui_->query, this, [this](const QString&) {
    for (const auto& [field, word] : fields_) putText(*field, {});
    ui_->problem->clear();
  });
  connect(ui_->query, &QLineEdit::returnPressed, this, &SearchWindow::start);
  connect(ui_->start, &QPushButton::clicked, this, &SearchWindow::start);
  connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this, &SearchWindow::start);
  connect(ui_->cancel, &QPushButton::clicked, this, [this] { work_.cancel(); });
  ui_->hits->setPlaceholder(tr("say above what is to be found, and in which macros"));
  connect(ui_->hits, &HitList::opened, this, &SearchWindow::openCurrent);
  connect(ui_->open, &QPushButton::clicked, this, &SearchWindow::openCurrent);
  connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
  showWorking(false);
  ui_->query->setFocus();
}

SearchWindow::~SearchWindow() = default;

void SearchWindow::search(const QString& query, ReviewScope::Kind kind) {
  for (const auto& [field, word] : fields_) putText(*field, {});
  putText(*ui_->query, query);
  ui_->scope->choose(kind);
  start();
  ui_->hits->setFocus();
}

// The query as the fields tell it.
void SearchWindow::compose() {
  std::string query;
  for (const auto& [field, word] : fields_) {
    const std::string one = queryWord(word, field->text().toStdString());
    if (!one.empty() && !query.empty()) query += ' ';
    query += one;
  }
  putText(*ui_->query, QString::fromStdString(query));
  ui_->problem->clear();
}

void SearchWindow::start() {
  auto query = MacroQuery::parse(ui_->query->text().toStdString());
  ui_->problem->setText(query ? QString() : shown(query.failure().text));
  if (!query) return;
  ui_->hits->rows().clear();
  seen_ = 0;
  const auto scope = ui_->scope->current();
  if (!scope) {
    tell(tr("There is nothing to be searched: choose a macro or a folder in a pane first."));
    return;
  }
  what_ = scope->title;
  tell({});
  ui_->hits->setPlaceholder({});
  showWorking(true);
  const auto job = std::make_shared<SearchJob>(surroundings_, *scope, *std::move(query));
  work_.start([job](Work::Report& report) { return job->run(report); });
}

void SearchWindow::take(std::vector<FoundHits> found, Work::Progress progress) {
  HitRows& rows = ui_->hits->rows();
  const bool first = rows.hits() == 0;
  rows.add(std::move(found));
  if (first) ui_->hits->selectRow(rows.firstHit());
  seen_ = progress.done;
  ui_->progress->setMaximum(static_cast<int>(progress.of));
  ui_->progress->setValue(static_cast<int>(progress.done));
  if (rows.hits() > 0) tell(summary());
}

void SearchWindow::end(const Outcome& outcome) {
  showWorking(false);
  ui_->hits->setPlaceholder(tr("take a part of the query away, or choose other macros to search in"));
  if (outcome)
    tell(seen_ == 0 ? tr("There are no macros in %1.").arg(what_) : summary());
  else if (outcome.failure().kind == Failure::Kind::kCancelled)
    tell(tr("Cancelled. %1").arg(summary()));
  else
    tell(tr("NOT searched: %1 (%2)").arg(what_, surroundings_.failureText(outcome.failure())));
}

QString SearchWindow::summary() const {
  const HitRows& rows = ui_->hits->rows();
  const QString seen = tr("%n macros looked at", nullptr, static_cast<int>(seen_));
  QString text = rows.hits() == 0 ? tr("Nothing found: %1 in %2.").arg(seen, what_)
                                  : tr("%1 in %2; %3 in %4.")
                                        .arg(tr("%n commands", nullptr, rows.hits()),
                                             tr("%n macros", nullptr, rows.macros()), seen, what_);
  if (rows.unread() > 0)
    text = tr("%1 %2").arg(text, tr("%n files could not be read.", nullptr, rows.unread()));
  return text;
}

void SearchWindow::tell(const QString& text) { ui_->outcome->setText(text); }

void SearchWindow::openCurrent() {
  const HitRows::Place* place = ui_->hits->rows().place(ui_->hits->selectedRow());
  if (place != nullptr) emit openWanted(ReviewedPlace(*place->place), place->command);
}

void SearchWindow::showWorking(bool working) {
  if (working) ui_->progress->setRange(0, 0);
  ui_->progress->setVisible(working);
  ui_->cancel->setVisible(working);
}

}  // namespace tessaly
