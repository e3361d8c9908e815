#include "windows/RehearseWindow.h"

#include <algorithm>

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>

#include "ui_RehearseWindow.h"
#include "widgets/DialogText.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr int kPatienceMilliseconds = 100;           // until a replay is said to be under way
constexpr int kTellMilliseconds = 40;                // values of a panel come in bursts
constexpr int kPage = 10;                            // steps of Page Up and Page Down
constexpr int kRowGap = 6;                           // pixels between the text lines of two rows
constexpr int kMargins = 16;                         // pixels beside the text of a column
constexpr int kWideValue = 2;                        // such cells
constexpr int kValuesWidth = 560, kGridWidth = 540;  // pixels, at first
const QString kWidestCell = QStringLiteral("\u25CF 100.0%");
const QString kWidestSigns = QStringLiteral("\u25CF \u00B1 \u2260");

}  // namespace

RehearseWindow::RehearseWindow(RehearseWays ways, PanelClient& client, const LineContext& lines,
                               const LineOptions& options, QWidget* owner)
    : ReviewWindow({}, owner),
      ways_(std::move(ways)),
      ui_(std::make_unique<Ui::RehearseWindow>()),
      lines_(lines),
      options_(options),
      now_(client, ways_.panel, ways_.patience),
      values_(RehearseModel::Shows::kStep, lines, options, now_, this),
      after_(RehearseModel::Shows::kAfter, lines, options, now_, this),
      grid_(values_, lines, options, this),
      work_(
          [this](const std::vector<Result>& found, const ReviewWork<Result>::Progress&) {
            if (!found.empty()) take(found.back());
          },
          [this](const Outcome& outcome) {
            long_.stop();
            if (!outcome) tellTrouble(ways_.failureText(outcome.failure()));
            if (again_) replay();
          }) {
  ui_->setupUi(this);
  setUpTables();
  setUpGrid();
  setUpKeys();
  for (QTimer* timer : {&due_, &told_, &long_}) timer->setSingleShot(true);
  told_.setInterval(kTellMilliseconds);
  long_.setInterval(kPatienceMilliseconds);
  connect(&due_, &QTimer::timeout, this, &RehearseWindow::replay);
  connect(&told_, &QTimer::timeout, this, [this] {
    showNow();
    if (ui_->startFromNow->isChecked() && now_.values() != start_) replay();
  });
  connect(&long_, &QTimer::timeout, this, [this] { ui_->done->setText(tr("Replaying...")); });
  connect(&now_, &RehearseNow::changed, this, [this] {
    if (!told_.isActive()) told_.start();
  });
  connect(ui_->startFromNow, &QCheckBox::toggled, this, &RehearseWindow::follow);
  connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
  tellTrouble(tr("Replaying..."));
  now_.look();
  showNow();
  replay();
  ui_->values->setFocus();
}

RehearseWindow::~RehearseWindow() = default;

void RehearseWindow::setUpTable(QTableView& table, QAbstractItemModel& model) {
  table.setModel(&model);
  table.installEventFilter(this);
  table.setSelectionBehavior(QAbstractItemView::SelectRows);
  table.setSelectionMode(QAbstractItemView::SingleSelection);
  table.setEditTriggers(QAbstractItemView::NoEditTriggers);
  table.setTabKeyNavigation(false);
  table.setWordWrap(false);
  table.setShowGrid(false);
  table.setCornerButtonEnabled(false);
  table.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  table.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  table.verticalHeader()->hide();
  table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table.verticalHeader()->setMinimumSectionSize(0);
  table.verticalHeader()->setDefaultSectionSize(table.fontMetrics().height() + kRowGap);
  table.horizontalHeader()->setHighlightSections(false);
}

void RehearseWindow::setUpTables() {
  for (const auto& [table, model] : {std::pair(ui_->values, &values_), std::pair(ui_->after, &after_)}) {
    setUpTable(*table, *model);
    new ListFinder(*table);
    QHeaderView& header = *table->horizontalHeader();
    header.setMinimumSectionSize(0);
    header.setSectionResizeMode(RehearseModel::kName, QHeaderView::Stretch);
    header.setSectionResizeMode(RehearseModel::kSigns, QHeaderView::Fixed);
    for (const int column : {RehearseModel::kNow, RehearseModel::kState})
      table->setColumnWidth(column, table->fontMetrics().horizontalAdvance(kWidestCell) * kWideValue);
    table->setColumnWidth(RehearseModel::kSigns,
                          table->fontMetrics().horizontalAdvance(kWidestSigns) + kMargins);
  }
  connect(ui_->after, &QTableView::activated, this, [this](const QModelIndex& index) {
    const RehearsalRow* row = after_.row(index.row());
    if (row == nullptr || row->kind == RehearsalRow::Kind::kHeading) return;
    ui_->tabs->setCurrentWidget(ui_->stepsTab);
    if (row->kind == RehearsalRow::Kind::kCommand)
      goTo(row->index + 1);
    else
      restoreRow(*after_.nameOf(index.row()), 0);
    ui_->values->setFocus();
  });
}

void RehearseWindow::setUpGrid() {
  QTableView& grid = *ui_->grid;
  QTableView& values = *ui_->values;
  setUpTable(grid, grid_);
  grid.setItemDelegate(new RehearseGridDelegate(grid_, &grid));
  grid.setFocusPolicy(Qt::NoFocus);
  grid.setSelectionMode(QAbstractItemView::NoSelection);
  grid.horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  grid.horizontalHeader()->setDefaultSectionSize(grid.fontMetrics().horizontalAdvance(kWidestCell) +
                                                 kMargins);
  grid.horizontalHeader()->setSectionsClickable(true);
  connect(grid.horizontalHeader(), &QHeaderView::sectionClicked, this,
          [this](int command) { goTo(command + 1); });
  connect(&grid, &QTableView::clicked, this, [this](const QModelIndex& index) {
    ui_->values->setCurrentIndex(values_.index(index.row(), RehearseModel::kName));
    goTo(index.column() + 1);
  });
  // They are one table: both have a bar below, so that their rows end at the same height.
  values.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  for (QTableView* half : {&values, &grid}) half->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  connect(values.verticalScrollBar(), &QScrollBar::valueChanged, grid.verticalScrollBar(),
          &QScrollBar::setValue);
  connect(grid.verticalScrollBar(), &QScrollBar::valueChanged, values.verticalScrollBar(),
          &QScrollBar::setValue);
  ui_->splitter->setSizes({kValuesWidth, kGridWidth});
  ui_->splitter->setStretchFactor(1, 1);
}

void RehearseWindow::setUpKeys() {
  ui_->slider->installEventFilter(this);
  ui_->slider->setPageStep(kPage);
  connect(ui_->slider, &QSlider::valueChanged, this, &RehearseWindow::goTo);
  const auto button = [this](QPushButton* pressed, const QKeySequence& keys,
                             const std::function<void()>& action) {
    connect(pressed, &QPushButton::clicked, this, action);
    connect(new QShortcut(keys, this), &QShortcut::activated, pressed, &QPushButton::click);
  };
  button(ui_->previous, Qt::Key_F7, [this] { goBy(-1); });
  button(ui_->next, Qt::Key_F8, [this] { goBy(1); });
  button(ui_->askAgain, Qt::Key_F5, [this] { now_.askAgain(); });
}

// The keys of the step, wherever the keyboard is: Up and Down are those of the rows.
bool RehearseWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool plain = (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (const auto step = plain ? stepFor(key->key()) : std::nullopt) {
      goTo(*step);
      return true;
    }
  }
  return ReviewWindow::eventFilter(watched, event);
}

std::optional<int> RehearseWindow::stepFor(int key) const {
  switch (key) {
    case Qt::Key_Left:
      return step_ - 1;
    case Qt::Key_Right:
      return step_ + 1;
    case Qt::Key_PageUp:
      return step_ - kPage;
    case Qt::Key_PageDown:
      return step_ + kPage;
    case Qt::Key_Home:
      return 0;
    case Qt::Key_End:
      return lastStep();
    default:
      return std::nullopt;
  }
}

int RehearseWindow::lastStep() const { return shown_ ? shown_->effect().commandCount() : 0; }

void RehearseWindow::follow() {
  if (!due_.isActive()) due_.start(0);
}

void RehearseWindow::replay() {
  again_ = work_.running();
  if (again_) return;
  const RehearseSource source = ways_.source();
  setWindowTitle(tr("Rehearse %1").arg(source.name));
  if (!source.trouble.isEmpty()) {
    take({});
    tellTrouble(source.trouble);
    return;
  }
  start_ = ui_->startFromNow->isChecked() ? now_.values() : Rehearsal::Start();
  long_.start();
  work_.start([content = source.content, opening = source.opening, lines = lines_,
               start = start_](ReviewWork<Result>::Report& report) -> Outcome {
    const auto macro = content();
    if (!macro)
      report.add({nullptr, macro.failure(), opening});
    else
      report.add({std::make_shared<const Rehearsal>(macro->sharedCommands(), lines, start), {}, opening});
    return {};
  });
}

void RehearseWindow::take(const Result& result) {
  const bool same = shown_ && result.rehearsal && shown_->commands() == result.rehearsal->commands();
  if (same) {
    shown_ = result.rehearsal;
    values_.show(shown_);
    after_.show(shown_);
    grid_.show(shown_);
    showStep();
    showNow();
  } else {
    showMacro(result);
  }
  opening_ = result.opening;
  if (result.failure) tellTrouble(ways_.failureText(*result.failure));
}

void RehearseWindow::showMacro(const Result& result) {
  const bool follows = shown_ && result.rehearsal && opening_ == result.opening;
  const int step = follows ? keptStep(*shown_->commands(), *result.rehearsal->commands(), step_) : 0;
  const QModelIndex current = ui_->values->currentIndex();
  const std::string* const name = values_.nameOf(current.row());
  const auto row = name != nullptr ? std::optional(*name) : std::nullopt;
  const int y = ui_->values->visualRect(current).top();
  shown_ = result.rehearsal;
  values_.show(shown_);
  after_.show(shown_);
  grid_.show(shown_);
  {
    const QSignalBlocker quiet(ui_->slider);
    ui_->slider->setRange(0, lastStep());
  }
  tellTrouble(!shown_ || !shown_->commands()->empty() ? QString() : tr("The macro has no command."));
  restoreRow(row, y);
  goTo(step);
  now_.want(shown_ ? shown_->publishedNames() : std::vector<std::string>());
  showNow();
}

// To the row of that value, that high above the first row that is seen.
void RehearseWindow::restoreRow(const std::optional<std::string>& name, int y) {
  const int row = name ? values_.rowOf(*name) : -1;
  if (row < 0) return;
  const QModelIndex index = values_.index(row, RehearseModel::kName);
  ui_->values->setCurrentIndex(index);
  ui_->values->scrollTo(index, QAbstractItemView::PositionAtTop);
  QScrollBar& bar = *ui_->values->verticalScrollBar();
  bar.setValue(bar.value() - y);
}

// In place of the values, where there are none.
void RehearseWindow::tellTrouble(const QString& trouble) {
  const bool values = shown_ && !shown_->rows().empty();
  const bool commands = trouble.isEmpty() && shown_ && !shown_->commands()->empty();
  ui_->notice->setText(
      commands && !values
          ? tr("No command changes a value that could be told: \"After This Macro\" lists what they do.")
          : trouble);
  ui_->notice->setVisible(!ui_->notice->text().isEmpty());
  ui_->tabs->setVisible(commands);
  ui_->legend->setVisible(commands);
  for (QWidget* steps : {static_cast<QWidget*>(ui_->slider), static_cast<QWidget*>(ui_->previous),
                         static_cast<QWidget*>(ui_->next)})
    steps->setEnabled(commands);
}

void RehearseWindow::showNow() {
  told_.stop();
  values_.tellNow();
  after_.tellNow();
  const QString comparison = shown_ ? RehearseTexts::comparison(*shown_, now_) : QString();
  ui_->now->setText(RehearseTexts::now(now_) + (comparison.isEmpty() ? comparison : ' ' + comparison));
  ui_->askAgain->setEnabled(now_.state() == RehearseNow::State::kMissing);
  ui_->startFromNow->setEnabled(now_.connected());
  showColumns();
}

void RehearseWindow::goTo(int step) {
  step_ = std::clamp(step, 0, lastStep());
  values_.setStep(step_);
  grid_.setStep(step_);
  showStep();
  scrollToStep();
}

void RehearseWindow::goBy(int direction) {
  const int step = shown_ ? shown_->changingStep(step_, direction) : -1;
  if (step >= 0) goTo(step);
}

void RehearseWindow::showStep() {
  {
    const QSignalBlocker quiet(ui_->slider);
    ui_->slider->setValue(step_);
  }
  ui_->place->setText(tr("step %1 of %2").arg(QString::number(step_), QString::number(lastStep())));
  if (!shown_) {
    ui_->line->clear();
    ui_->done->clear();
    return;
  }
  ui_->line->setText(
      step_ == 0
          ? QString()
          : tr("%1: %2").arg(QString::number(step_),
                             shown(commandLine((*shown_->commands())[static_cast<std::size_t>(step_ - 1)],
                                               options_, lines_))));
  ui_->done->setText(RehearseTexts::done(*shown_, step_));
}

void RehearseWindow::showColumns() {
  for (QTableView* table : {ui_->values, ui_->after})
    table->setColumnHidden(RehearseModel::kNow, !now_.connected());
}

void RehearseWindow::scrollToStep() {
  QScrollBar& bar = *ui_->grid->horizontalScrollBar();
  const int width = ui_->grid->horizontalHeader()->defaultSectionSize();
  const int left = std::max(0, step_ - 1) * width, room = ui_->grid->viewport()->width();
  if (left < bar.value())
    bar.setValue(left);
  else if (left + width > bar.value() + room)
    bar.setValue(left + width - room);
}

}  // namespace tessaly
