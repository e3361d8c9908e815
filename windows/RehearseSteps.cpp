#include "windows/RehearseSteps.h"

#include <algorithm>

#include <QHeaderView>
#include <QScrollBar>

#include "widgets/AtEach.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr int kMargins = 16;                         // pixels beside the text of a column
constexpr int kValuesWidth = 580, kGridWidth = 500;  // pixels, at first
const QString kWidestCell = QStringLiteral("\u25CF \u00B1 +100.0%");
const QString kWidestNow = QStringLiteral("Input 100%");
const QString kWidestSigns = QStringLiteral("\u25CF \u00B1 \u2260");

}  // namespace

void setUpRehearseTable(QTableView& table, QAbstractItemModel& model) {
  table.setModel(&model);
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
  keepRowHeight(table);
  table.horizontalHeader()->setHighlightSections(false);
}

void setUpRehearseColumns(QTableView& table) {
  new ListFinder(table);
  QHeaderView& header = *table.horizontalHeader();
  header.setMinimumSectionSize(0);
  header.setSectionResizeMode(RehearseModel::kName, QHeaderView::Stretch);
  header.setSectionResizeMode(RehearseModel::kSigns, QHeaderView::Fixed);
  const std::pair<int, QString> widest[] = {{RehearseModel::kNow, kWidestNow},
                                            {RehearseModel::kSigns, kWidestSigns},
                                            {RehearseModel::kState, RehearseTexts::widestState()}};
  for (const auto& [column, text] : widest)
    nowAndAtEach(QEvent::FontChange, table, [&table, column = column, text = text] {
      table.setColumnWidth(column, table.fontMetrics().horizontalAdvance(text) + kMargins);
    });
}

RehearseSteps::RehearseSteps(const LineContext& lines, const LineOptions& options, const RehearseNow& now,
                             QWidget* parent)
    : QSplitter(Qt::Horizontal, parent),
      now_(now),
      valueModel_(RehearseModel::Shows::kStep, lines, options, now, this),
      gridModel_(valueModel_, lines, options, this),
      values_(*new QTableView(this)),
      grid_(*new QTableView(this)) {
  setChildrenCollapsible(false);
  setUpRehearseTable(values_, valueModel_);
  setUpRehearseColumns(values_);
  values_.setObjectName(QStringLiteral("values"));
  values_.setAccessibleName(tr("Values at this step"));
  setUpGrid();
  // They are one table: both have a bar below, so that their rows end at the same height.
  values_.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  for (QTableView* half : {&values_, &grid_}) half->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  connect(values_.verticalScrollBar(), &QScrollBar::valueChanged, grid_.verticalScrollBar(),
          &QScrollBar::setValue);
  connect(grid_.verticalScrollBar(), &QScrollBar::valueChanged, values_.verticalScrollBar(),
          &QScrollBar::setValue);
  connect(values_.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) {
            gridModel_.setRow(current.row());
            grid_.viewport()->update();
          });
  setSizes({kValuesWidth, kGridWidth});
  setStretchFactor(1, 1);
}

void RehearseSteps::setUpGrid() {
  setUpRehearseTable(grid_, gridModel_);
  grid_.setObjectName(QStringLiteral("grid"));
  grid_.setAccessibleName(tr("What each command does"));
  grid_.setItemDelegate(new RehearseGridDelegate(gridModel_, &grid_));
  grid_.setFocusPolicy(Qt::NoFocus);
  grid_.setSelectionMode(QAbstractItemView::NoSelection);
  QHeaderView& header = *grid_.horizontalHeader();
  header.setSectionResizeMode(QHeaderView::Fixed);
  nowAndAtEach(QEvent::FontChange, grid_, [this, &header] {
    header.setDefaultSectionSize(grid_.fontMetrics().horizontalAdvance(kWidestCell) + kMargins);
  });
  header.setSectionsClickable(true);
  connect(&header, &QHeaderView::sectionClicked, this, [this](int command) { emit stepWanted(command + 1); });
  connect(&grid_, &QTableView::clicked, this, [this](const QModelIndex& index) {
    values_.setCurrentIndex(valueModel_.index(index.row(), RehearseModel::kName));
    emit stepWanted(index.column() + 1);
  });
}

void RehearseSteps::show(const std::shared_ptr<const Rehearsal>& rehearsal) {
  const QModelIndex current = values_.currentIndex();
  const std::string* const name = valueModel_.nameOf(current.row());
  const auto value = name != nullptr ? std::optional(*name) : std::nullopt;
  const int y = values_.visualRect(current).top();
  rehearsal_ = rehearsal;
  valueModel_.show(rehearsal);
  gridModel_.show(rehearsal);
  if (value && !values_.currentIndex().isValid()) goToRow(valueModel_.rowOf(*value), y);
  gridModel_.setRow(values_.currentIndex().row());
}

void RehearseSteps::setStep(int step) {
  valueModel_.setStep(step);
  gridModel_.setStep(step);
  scrollTo(step);
}

void RehearseSteps::seekChange() {
  const int step = gridModel_.step();
  if (!rehearsal_ || step == 0 || rehearsal_->effect().changes(step - 1).empty()) return;
  const int value = rehearsal_->effect().changes(step - 1).front().value;
  values_.scrollTo(valueModel_.index(valueModel_.rowOf(value), RehearseModel::kName));
}

void RehearseSteps::tellNow() {
  values_.setColumnHidden(RehearseModel::kNow, !now_.connected());
  valueModel_.tellNow();
}

void RehearseSteps::goToValue(const std::string& name) { goToRow(valueModel_.rowOf(name), 0); }

// So high above the first row that is seen.
void RehearseSteps::goToRow(int row, int y) {
  if (row < 0) return;
  const QModelIndex index = valueModel_.index(row, RehearseModel::kName);
  values_.setCurrentIndex(index);
  values_.scrollTo(index, QAbstractItemView::PositionAtTop);
  QScrollBar& bar = *values_.verticalScrollBar();
  bar.setValue(bar.value() - y);
}

void RehearseSteps::scrollTo(int step) {
  QScrollBar& bar = *grid_.horizontalScrollBar();
  const int width = grid_.horizontalHeader()->defaultSectionSize();
  const int left = std::max(0, step - 1) * width, room = grid_.viewport()->width();
  if (left < bar.value())
    bar.setValue(left);
  else if (left + width > bar.value() + room)
    bar.setValue(left + width - room);
}

}  // namespace tessaly
