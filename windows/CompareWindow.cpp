#include "windows/CompareWindow.h"

#include <algorithm>
#include <set>

#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>

#include "ui_CompareWindow.h"
#include "widgets/AtEach.h"
#include "widgets/ButtonIcon.h"
#include "widgets/ListFinder.h"
#include "windows/CompareDelegate.h"

namespace tessaly {

namespace {

constexpr int kPatienceMilliseconds =
    100;                         // until a comparison that is shown already is said to be under way
constexpr int kMostChanges = 4;  // told of a row below the table

// The commands of a side in front of a row.
std::size_t commandsBefore(const MacroDiff& diff, std::size_t row, Side side) {
  const auto begin = diff.rows().begin();
  return static_cast<std::size_t>(std::count_if(begin, begin + static_cast<std::ptrdiff_t>(row),
                                                [side](const DiffRow& here) { return here.shows(side); }));
}

// The row with the command of that number, or the end.
std::size_t rowOfCommand(const MacroDiff& diff, std::size_t number, Side side) {
  const auto& rows = diff.rows();
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const DiffRow& row) {
    return row.shows(side) && static_cast<std::size_t>(side == Side::kA ? row.a : row.b) == number;
  });
  return static_cast<std::size_t>(found - rows.begin());
}

}  // namespace

CompareWindow::CompareWindow(CompareWays ways, const LineContext& lines, const LineOptions& options,
                             QThreadPool& pool, QWidget* owner)
    : ReviewWindow({}, owner),
      ways_(std::move(ways)),
      ui_(std::make_unique<Ui::CompareWindow>()),
      model_(lines, options, this),
      options_(options),
      work_(pool, lines.dictionary),
      taking_(
          [this](std::vector<CompareTake> taken, Taking::Progress) {
            if (!taken.empty()) taken_ = std::move(taken.back());
          },
          [this](const Outcome& outcome) { handOver(outcome); }) {
  ui_->setupUi(this);
  setUpTable();
  setUpKeys();
  setUpTakes();
  nowAndAtEach(QEvent::FontChange, *this, [this] { setWidths(); });
  ui_->showDestination->setChecked(options.showDestination);
  ui_->showRaw->setChecked(options.raw);
  const auto showLines = [this] {
    options_.showDestination = ui_->showDestination->isChecked();
    options_.raw = ui_->showRaw->isChecked();
    model_.setOptions(options_);
  };
  // Rather than `clicked`: a screen reader's hands toggle.
  connect(ui_->showDestination, &QCheckBox::toggled, this, showLines);
  connect(ui_->showRaw, &QCheckBox::toggled, this, showLines);
  connect(ui_->onlyDifferences, &QCheckBox::toggled, this, &CompareWindow::setOnlyDifferences);
  connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
  connect(&work_, &CompareWork::ready, this, &CompareWindow::showResult);
  due_.setSingleShot(true);
  connect(&due_, &QTimer::timeout, this, &CompareWindow::compare);
  long_.setSingleShot(true);
  long_.setInterval(kPatienceMilliseconds);
  connect(&long_, &QTimer::timeout, this, [this] { ui_->counts->setText(tr("Comparing...")); });
  ui_->counts->setText(tr("Comparing..."));
  compare();
}

CompareWindow::~CompareWindow() = default;

void CompareWindow::setUpTable() {
  QTableView& table = *ui_->table;
  new ListFinder(table);
  table.setModel(&model_);
  table.setItemDelegate(new CompareDelegate(model_, &table));
  table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table.verticalHeader()->setMinimumSectionSize(0);
  keepRowHeight(table);
  table.horizontalHeader()->setMinimumSectionSize(0);
  table.horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  for (const int column : {CompareModel::kLineA, CompareModel::kLineB})
    table.horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
  connect(&table, &QTableView::clicked, this, &CompareWindow::takeAt);
  table.setFocus();
  connect(table.selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    showCounts();
    showTakes();
  });
  connect(table.selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
    showCounts();
    showDetails();
  });
  connect(&model_, &QAbstractItemModel::modelReset, this, [this] {
    showCounts();
    showDetails();
    showTakes();
  });
}

void CompareWindow::setUpKeys() {
  const auto key = [this](const QKeySequence& keys, const std::function<void()>& action) {
    auto* shortcut = new QShortcut(keys, this);
    connect(shortcut, &QShortcut::activated, this, action);
    return shortcut;
  };
  const auto button = [this, &key](QPushButton* pressed, const QKeySequence& keys,
                                   const std::function<void()>& action) {
    connect(pressed, &QPushButton::clicked, this, action);
    key(keys, action);
  };
  button(ui_->previous, Qt::Key_F7, [this] { goBy(-1); });
  button(ui_->next, Qt::Key_F8, [this] { goBy(1); });
  key(Qt::ALT | Qt::Key_Left, [this] { takeSelected(Side::kA); })->setAutoRepeat(false);
  key(Qt::ALT | Qt::Key_Right, [this] { takeSelected(Side::kB); })->setAutoRepeat(false);
  ui_->readAgain->setVisible(ways_.readAgain != nullptr);
  if (ways_.readAgain) button(ui_->readAgain, Qt::Key_F5, ways_.readAgain);
}

void CompareWindow::setUpTakes() {
  take_ = {ui_->takeA, ui_->takeB};
  takeAll_ = {ui_->takeAllA, ui_->takeAllB};
  setIcons({{ui_->previous, ButtonIcon::kUp},
            {ui_->next, ButtonIcon::kDown},
            {ui_->readAgain, ButtonIcon::kReadAgain},
            {ui_->takeA, ButtonIcon::kLeft},
            {ui_->takeAllA, ButtonIcon::kLeft},
            {ui_->takeB, ButtonIcon::kRight},
            {ui_->takeAllB, ButtonIcon::kRight}});
  for (const Side side : kSides) {
    connect(take_[sideIndex(side)], &QPushButton::clicked, this, [this, side] { takeSelected(side); });
    connect(takeAll_[sideIndex(side)], &QPushButton::clicked, this, [this, side] {
      if (model_.diff() == nullptr) return;
      std::vector<std::size_t> all(model_.diff()->rows().size());
      for (std::size_t row = 0; row < all.size(); ++row) all[row] = row;
      take(side, all);
    });
  }
}

void CompareWindow::follow() {
  if (!due_.isActive()) due_.start(0);
}

void CompareWindow::compare() {
  for (const Side side : kSides) sides_[sideIndex(side)] = ways_.side(side);
  showSides();
  long_.start();
  work_.begin(sides_);
}

void CompareWindow::showResult(const CompareWork::Result& result) {
  long_.stop();
  for (const Side side : kSides)
    if (const auto& failure = result.failures[sideIndex(side)])
      sides_[sideIndex(side)].trouble = ways_.failureText(*failure);
  const std::optional<Place> before = place();
  const auto same = [&](Side side) {
    return before && result.diff && model_.diff()->of(side).check() == result.diff->of(side).check();
  };
  const bool keptA = same(Side::kA), keptB = same(Side::kB);
  model_.show(result.diff, {sides_[0].name, sides_[1].name});
  showSides();
  if (keptA || keptB)
    restore(*before, keptB ? Side::kB : Side::kA);
  else if (result.diff && !result.diff->differences().empty())
    goTo(result.diff->differences().front());
}

void CompareWindow::showSides() {
  setWindowTitle(tr("Compare %1 with %2").arg(sides_[0].name, sides_[1].name));
  ui_->headingA->setText(sides_[0].heading);
  ui_->headingB->setText(sides_[1].heading);
  model_.setRefusals({refusal(Side::kA), refusal(Side::kB)});
  setWidths();
  showTakes();
}

void CompareWindow::setWidths() {
  QTableView& table = *ui_->table;
  const MacroDiff* diff = model_.diff();
  QFontMetrics metrics(table.font());
  int sign = 0;
  if (diff != nullptr)
    for (const QString& text : model_.texts().longestSigns(*diff))
      sign = std::max(sign, metrics.horizontalAdvance(text));
  const auto most = diff != nullptr ? std::max(diff->a().commands().size(), diff->b().commands().size()) : 0;
  const int number = metrics.horizontalAdvance(QString::number(most)) + 4 * CompareDelegate::kMargin;
  const int arrow = table.verticalHeader()->defaultSectionSize() + 2 * CompareDelegate::kMargin;
  const std::pair<int, int> widths[] = {{CompareModel::kNumberA, number},
                                        {CompareModel::kNumberB, number},
                                        {CompareModel::kTakeA, arrow},
                                        {CompareModel::kTakeB, arrow},
                                        {CompareModel::kSign, sign + 4 * CompareDelegate::kMargin}};
  for (const auto& [column, width] : widths) table.setColumnWidth(column, width);
  // Each heading stands over its column.
  ui_->headingGap->changeSize(2 * arrow + table.columnWidth(CompareModel::kSign), 0, QSizePolicy::Fixed);
  ui_->headingLayout->invalidate();
}

// For tool tips; empty where something can be taken.
QString CompareWindow::refusal(Side side) const {
  const CompareSide& here = sides_[sideIndex(side)];
  return here.refusal.isEmpty() ? QString()
                                : tr("Nothing can be taken into %1: %2.").arg(here.name, here.refusal);
}

void CompareWindow::showCounts() {
  const MacroDiff* diff = model_.diff();
  ui_->notes->setVisible(diff != nullptr && !CompareTexts::notes(*diff).isEmpty());
  if (diff == nullptr) {
    QStringList troubles;
    for (const CompareSide& side : sides_)
      if (!side.trouble.isEmpty())
        troubles << tr("There is nothing to compare in %1: %2.").arg(side.name, side.trouble);
    if (!troubles.isEmpty()) ui_->counts->setText(troubles.join(QLatin1Char('\n')));
    return;
  }
  QString counts = model_.texts().counts(*diff);
  const QModelIndex current = ui_->table->currentIndex();
  const DiffRange* here = current.isValid() ? model_.differenceOf(model_.diffRow(current.row())) : nullptr;
  const auto& all = diff->differences();
  if (here != nullptr)
    counts = tr("%1 \u2013 difference %2 of %3")
                 .arg(counts, QString::number(here - all.data() + 1), QString::number(all.size()));
  ui_->counts->setText(counts);
  ui_->notes->setText(CompareTexts::notes(*diff).join(QLatin1Char('\n')));
  ui_->previous->setEnabled(!all.empty());
  ui_->next->setEnabled(!all.empty());
}

void CompareWindow::showDetails() {
  const QModelIndex current = ui_->table->currentIndex();
  if (model_.diff() == nullptr || !current.isValid()) {
    ui_->details->clear();
    return;
  }
  QStringList changes = CompareTexts::changes(*model_.diff(), model_.at(current.row()));
  if (const auto more = static_cast<int>(changes.size()) - kMostChanges; more > 0) {
    changes = changes.mid(0, kMostChanges);
    changes << tr("and %n more", nullptr, more);
  }
  ui_->details->setText(changes.join(QStringLiteral("; ")));
}

void CompareWindow::showTakes() {
  const bool differs = model_.diff() != nullptr && !model_.diff()->differences().empty();
  for (const Side side : kSides) {
    const CompareSide& here = sides_[sideIndex(side)];
    const QString keys = side == Side::kA ? tr("Alt+Left") : tr("Alt+Right");
    const bool allowed = here.refusal.isEmpty();
    QPushButton& take = *take_[sideIndex(side)];
    QPushButton& all = *takeAll_[sideIndex(side)];
    take.setText(tr("Take into %1").arg(here.name));
    all.setText(tr("Take All into %1").arg(here.name));
    take.setToolTip((allowed ? tr("Take what is selected into %1 (%2)").arg(here.name, keys) : refusal(side))
                        .toHtmlEscaped());
    all.setToolTip(
        (allowed ? tr("Take all commands into %1").arg(here.name) : refusal(side)).toHtmlEscaped());
    take.setEnabled(allowed && differs && ui_->table->selectionModel()->hasSelection());
    all.setEnabled(allowed && differs);
  }
}

std::optional<CompareWindow::Place> CompareWindow::place() const {
  const QModelIndex current = ui_->table->currentIndex();
  if (model_.diff() == nullptr || !current.isValid()) return std::nullopt;
  Place place{{}, ui_->table->visualRect(current).top(), current.column()};
  for (const Side side : kSides)
    place.commands[sideIndex(side)] = commandsBefore(*model_.diff(), model_.diffRow(current.row()), side);
  return place;
}

void CompareWindow::restore(const Place& place, Side kept) {
  const std::size_t row = rowOfCommand(*model_.diff(), place.commands[sideIndex(kept)], kept);
  const QModelIndex index = model_.index(model_.rowAt(row), place.column);
  if (!index.isValid()) return;
  QTableView& table = *ui_->table;
  table.selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  table.scrollTo(index, QAbstractItemView::PositionAtTop);
  QScrollBar& bar = *table.verticalScrollBar();
  const int height = std::max(1, table.verticalHeader()->defaultSectionSize());
  bar.setValue(bar.value() - (table.verticalScrollMode() == QAbstractItemView::ScrollPerPixel
                                  ? place.y
                                  : place.y / height));
}

void CompareWindow::setOnlyDifferences(bool only) {
  const QModelIndex current = ui_->table->currentIndex();
  const std::size_t row = current.isValid() ? model_.diffRow(current.row()) : 0;
  model_.setOnlyDifferences(only);
  if (const DiffRange* here = model_.differenceOf(row))
    goTo(*here);
  else
    ui_->table->setCurrentIndex(model_.index(model_.rowAt(row), CompareModel::kLineA));
}

void CompareWindow::goTo(const DiffRange& difference) {
  QTableView& table = *ui_->table;
  const int column = std::max(static_cast<int>(CompareModel::kLineA), table.currentIndex().column());
  const QModelIndex first = model_.index(model_.rowAt(difference.begin), column);
  const QModelIndex last = model_.index(model_.rowAt(difference.end - 1), column);
  const bool inSight = table.viewport()->rect().contains(table.visualRect(first)) &&
                       table.viewport()->rect().contains(table.visualRect(last));
  table.selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
  table.selectionModel()->select(QItemSelection(first, last),
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  if (!inSight) table.scrollTo(first, QAbstractItemView::PositionAtCenter);
}

// From a row that is only stood in, as after a take, the difference that it is in is the next one.
const DiffRange* CompareWindow::differenceBy(int step) const {
  const std::vector<DiffRange>& all = model_.diff()->differences();
  const QModelIndex current = ui_->table->currentIndex();
  if (!current.isValid()) return all.empty() ? nullptr : &all.front();
  const std::size_t row = model_.diffRow(current.row());
  const bool selected = ui_->table->selectionModel()->isSelected(current);
  if (step > 0) {
    const auto next = std::find_if(all.begin(), all.end(), [&](const DiffRange& range) {
      return selected ? range.begin > row : range.end > row;
    });
    return next != all.end() ? &*next : nullptr;
  }
  const auto before =
      std::find_if(all.rbegin(), all.rend(), [&](const DiffRange& range) { return range.begin < row; });
  return before != all.rend() ? &*before : nullptr;
}

void CompareWindow::goBy(int step) {
  if (model_.diff() == nullptr) return;
  const DiffRange* difference = differenceBy(step);
  ui_->outcome->clear();
  if (difference != nullptr)
    goTo(*difference);
  else
    ui_->outcome->setText(step > 0 ? tr("There is no further difference.")
                                   : tr("There is no difference before."));
}

void CompareWindow::takeAt(const QModelIndex& arrow) {
  const bool intoA = arrow.column() == CompareModel::kTakeA;
  if ((!intoA && arrow.column() != CompareModel::kTakeB) || !model_.begins(arrow.row())) return;
  const DiffRange difference = *model_.differenceOf(model_.diffRow(arrow.row()));
  goTo(difference);
  takeSelected(intoA ? Side::kA : Side::kB);
}

void CompareWindow::takeSelected(Side into) {
  std::vector<std::size_t> rows;
  for (const QModelIndex& index : ui_->table->selectionModel()->selectedRows())
    rows.push_back(model_.diffRow(index.row()));
  take(into, rows);
}

void CompareWindow::take(Side into, const std::vector<std::size_t>& rows) {
  const MacroDiff* diff = model_.diff();
  if (diff == nullptr) return;
  const QString& name = sides_[sideIndex(into)].name;
  std::set<const DiffRange*> differences;
  for (const std::size_t row : rows)
    if (const DiffRange* here = model_.differenceOf(row)) differences.insert(here);
  const auto count = static_cast<int>(differences.size());
  QString reason = sides_[sideIndex(into)].refusal;
  if (reason.isEmpty() && count == 0) reason = tr("no difference is selected");
  if (reason.isEmpty() && taking_.running()) reason = tr("the one before is still being taken");
  if (!reason.isEmpty()) {
    ui_->outcome->setText(tr("NOT taken into %1: %2").arg(name, reason));
    return;
  }
  const QString step =
      tr("take %n differences from %1", nullptr, count).arg(sides_[sideIndex(otherSide(into))].name);
  toldTaken_ = tr("%n differences taken into %1; nothing is saved yet", nullptr, count).arg(name);
  into_ = into;
  taken_.reset();
  CompareTake wanted{into, diff->taking(rows, into), diff->of(into), step, diff->of(into)};
  taking_.start([wanted = std::move(wanted)](Taking::Report& report) mutable -> Outcome {
    wanted.taken = apply(wanted.shown, wanted.edit);
    report.add(std::move(wanted));
    return {};
  });
}

void CompareWindow::handOver(const Outcome& outcome) {
  const QString reason = taken_ ? ways_.take(*taken_) : ways_.failureText(outcome.failure());
  ui_->outcome->setText(
      reason.isEmpty() ? toldTaken_ : tr("NOT taken into %1: %2").arg(sides_[sideIndex(into_)].name, reason));
  if (closing_) reject();
}

// What is being taken is not lost.
void CompareWindow::reject() {
  closing_ = taking_.running();
  if (!closing_) ReviewWindow::reject();
}

}  // namespace tessaly
