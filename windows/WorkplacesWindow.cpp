#include "windows/WorkplacesWindow.h"

#include <algorithm>
#include <iterator>
#include <stop_token>
#include <utility>

#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>

#include "platform/SystemFailure.h"
#include "ui_WorkplacesWindow.h"
#include "widgets/AtEach.h"
#include "widgets/ButtonIcon.h"
#include "widgets/DialogText.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr int kNumberWidth = 90, kStateWidth = 130, kNameWidth = 190, kHeadingMargin = 12;  // pixels
constexpr std::array kSides{0, 1};

using State = WorkplaceRow::State;

}  // namespace

WorkplacesWindow::WorkplacesWindow(Ways ways, QWidget* owner)
    : ReviewWindow(tr("Workplaces"), owner),
      ways_(std::move(ways)),
      ui_(std::make_unique<Ui::WorkplacesWindow>()),
      reading_(
          [this](std::vector<WorkplaceRow> rows, auto progress) {
            model_.add(std::move(rows));
            ui_->progress->setRange(0, static_cast<int>(progress.of));
            ui_->progress->setValue(static_cast<int>(progress.done));
          },
          [this](const Outcome& outcome) { endReading(outcome); }),
      looking_([this](std::vector<FaultyMacro> faulty,
                      auto) { std::ranges::move(faulty, std::back_inserter(faulty_)); },
               [this](const Outcome& outcome) { endLook(outcome); }),
      copying_(
          [this](const std::vector<Copied>& copied, auto progress) {
            takeCopied(copied);
            ui_->progress->setRange(0, static_cast<int>(copied_.size()));
            ui_->progress->setValue(static_cast<int>(progress.done));
          },
          [this](const Outcome& outcome) { endCopy(outcome); }) {
  const QString title = windowTitle();
  ui_->setupUi(this);
  setWindowTitle(title);
  setUpTable();
  fillChoices();
  setIcons({{ui_->again, ButtonIcon::kReadAgain},
            {ui_->toLeft, ButtonIcon::kLeft},
            {ui_->toRight, ButtonIcon::kRight}});
  connect(ui_->left, &QComboBox::activated, this, [this](int index) { choose(0, index); });
  connect(ui_->right, &QComboBox::activated, this, [this](int index) { choose(1, index); });
  connect(ui_->again, &QPushButton::clicked, this, &WorkplacesWindow::readAgain);
  connect(ui_->onlyDifferences, &QCheckBox::toggled, &model_, &WorkplacesModel::showOnlyDifferences);
  connect(ui_->tickDifferent, &QPushButton::clicked, &model_, &WorkplacesModel::tickDifferent);
  connect(ui_->compare, &QPushButton::clicked, this, &WorkplacesWindow::compareCurrent);
  connect(ui_->toLeft, &QPushButton::clicked, this, [this] { copy(Way::kToLeft); });
  connect(ui_->toRight, &QPushButton::clicked, this, [this] { copy(Way::kToRight); });
  connect(ui_->retry, &QPushButton::clicked, this, &WorkplacesWindow::copyAgain);
  connect(ui_->cancel, &QPushButton::clicked, this, &WorkplacesWindow::cancel);
  connect(&model_, &WorkplacesModel::ticked, this, &WorkplacesWindow::showControls);
  ui_->table->setFocus();
  readAgain();
}

WorkplacesWindow::~WorkplacesWindow() { cancel(); }

void WorkplacesWindow::setUpTable() {
  ui_->table->setModel(&model_);
  new ListFinder(*ui_->table);
  ui_->table->installEventFilter(this);
  QHeaderView& header = *ui_->table->horizontalHeader();
  header.setHighlightSections(false);  // bold titles would be cut off
  header.resizeSection(WorkplacesModel::kNumber, kNumberWidth);
  header.resizeSection(WorkplacesModel::kState, kStateWidth);
  header.resizeSection(WorkplacesModel::kLeft, kNameWidth);
  header.resizeSection(WorkplacesModel::kRight, kNameWidth);
  keepRowHeight(*ui_->table);
  connect(&header, &QHeaderView::sectionResized, this, &WorkplacesWindow::showTitles);
  nowAndAtEach(QEvent::FontChange, header, [this] { showTitles(); });
  connect(ui_->table, &QTableView::doubleClicked, this, &WorkplacesWindow::compareCurrent);
  connect(ui_->table->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &WorkplacesWindow::showControls);
}

// Space and Enter act on rows, whatever column is current.
bool WorkplacesWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched != ui_->table || event->type() != QEvent::KeyPress)
    return ReviewWindow::eventFilter(watched, event);
  switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Space:
      tickSelected();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      compareCurrent();
      return true;
    default:
      return false;
  }
}

void WorkplacesWindow::fillChoices() {
  const std::vector<WorkplaceChoice> all = ways_.choices();
  for (const int side : kSides) {
    QComboBox& box = side == 0 ? *ui_->left : *ui_->right;
    choices_[static_cast<std::size_t>(side)] = all;
    for (const WorkplaceChoice& choice : all) box.addItem(choice.text);
    // Not the other side's once more: all of it would be the same.
    const bool ready = side < box.count() && !all[static_cast<std::size_t>(side)].ask;
    const int index = ready ? side : -1;
    box.setCurrentIndex(index);
    chosen_[static_cast<std::size_t>(side)] = index;
  }
}

const WorkplaceChoice* WorkplacesWindow::choice(int side) const {
  const int index = chosen_[static_cast<std::size_t>(side)];
  return index < 0 ? nullptr : &choices_[static_cast<std::size_t>(side)][static_cast<std::size_t>(index)];
}

void WorkplacesWindow::choose(int side, int index) {
  auto& choices = choices_[static_cast<std::size_t>(side)];
  int& chosen = chosen_[static_cast<std::size_t>(side)];
  QComboBox& box = side == 0 ? *ui_->left : *ui_->right;
  if (const auto& ask = choices[static_cast<std::size_t>(index)].ask) {
    auto asked = ask(this);
    if (!asked) {
      box.setCurrentIndex(chosen);
      return;
    }
    box.insertItem(index, asked->text);
    choices.insert(choices.begin() + index, *std::move(asked));
    box.setCurrentIndex(index);
  }
  chosen = index;
  readAgain();
}

void WorkplacesWindow::readAgain() {
  if (busy()) {
    againWanted_ = true;
    cancel();
    return;
  }
  model_.clear();
  copy_.reset();
  const WorkplaceChoice *left = choice(0), *right = choice(1);
  if (left == nullptr || right == nullptr) {
    say(tr("Choose what is to stand on the left and on the right."));
    showControls();
    return;
  }
  showTitles();
  say(tr("Reading..."));
  ui_->progress->setRange(0, 0);
  reading_.start([makeLeft = left->make, makeRight = right->make](auto& report) -> Outcome {
    const auto leftShelf = makeLeft(), rightShelf = makeRight();
    WorkplaceComparison comparison(*leftShelf, *rightShelf);
    const std::stop_callback cancelled(report.stop(), [&comparison] { comparison.cancel(); });
    std::size_t done = 0;
    return comparison.run([&](const WorkplaceRow& row, std::size_t all) {
      report.add(row);
      report.progress(++done, all);
    });
  });
  showControls();
}

// A place is long, and told apart by its end; the header would cut off both ends.
void WorkplacesWindow::showTitles() {
  const QHeaderView& header = *ui_->table->horizontalHeader();
  const auto title = [&](int side, int column) -> WorkplacesModel::Title {
    const QString whole = choice(side) != nullptr ? choice(side)->text : QString();
    const int room = header.sectionSize(column) - kHeadingMargin;
    return {whole, header.fontMetrics().elidedText(whole, Qt::ElideMiddle, room)};
  };
  model_.setTitles(title(0, WorkplacesModel::kLeft), title(1, WorkplacesModel::kRight));
}

void WorkplacesWindow::endReading(const Outcome& outcome) {
  if (!ui_->table->currentIndex().isValid()) ui_->table->setCurrentIndex(model_.index(0, 0));
  say(outcome ? counts() : tr("NOT read to the end: %1").arg(ways_.failureText(outcome.failure())));
  showControls();
  if (closeWanted_) return reject();
  if (std::exchange(againWanted_, false)) readAgain();
}

QString WorkplacesWindow::counts() const {
  const auto& rows = model_.rows();
  const auto same =
      std::ranges::count_if(rows, [](const auto& row) { return row.compared.state == State::kSame; });
  return tr("%1 macros: %2 the same, %3 not the same")
      .arg(QString::number(rows.size()), QString::number(same),
           QString::number(static_cast<qsizetype>(rows.size()) - same));
}

void WorkplacesWindow::tickSelected() {
  const QModelIndexList selected = ui_->table->selectionModel()->selectedRows();
  if (selected.isEmpty()) return;
  const bool on = !model_.rows()[model_.rowAt(selected.first())].ticked;
  for (const QModelIndex& index : selected) model_.tick(model_.rowAt(index), on);
}

void WorkplacesWindow::compareCurrent() {
  const QModelIndex current = ui_->table->currentIndex();
  if (!current.isValid() || choice(0) == nullptr || choice(1) == nullptr) return;
  emit compareWanted(*choice(0), *choice(1), model_.rows()[model_.rowAt(current)].compared.number);
}

void WorkplacesWindow::copy(Way way) {
  if (busy()) return;
  const bool toRight = way == Way::kToRight;
  const WorkplaceChoice *from = choice(toRight ? 0 : 1), *to = choice(toRight ? 1 : 0);
  if (from == nullptr || to == nullptr) return;
  model_.clearResults();
  const std::shared_ptr<MacroShelf> target = to->make();
  std::vector<WorkplaceCopy::Wanted> wanted;
  copied_.clear();
  targets_.clear();
  for (std::size_t i = 0; i < model_.rows().size(); ++i) {
    const auto& [compared, ticked, failed, result] = model_.rows()[i];
    const HeldContent& source = toRight ? compared.leftHeld : compared.rightHeld;
    const HeldContent& held = toRight ? compared.rightHeld : compared.leftHeld;
    if (!ticked || compared.state == State::kSame) continue;
    if (source.kind != HeldContent::Kind::kBytes) {
      model_.setResult(i, tr("not copied: there is nothing to be copied"), false);
      continue;
    }
    // Whatever it is, nobody has seen it.
    if (held.kind == HeldContent::Kind::kUnknown) {
      model_.setResult(i, tr("not copied: what stands there could not be read; read again"), false);
      continue;
    }
    copied_.push_back(i);
    targets_.push_back(target->place(compared.number));
    wanted.push_back({compared.number, source, held});
  }
  if (wanted.empty()) {
    say(tr("Nothing is ticked that differs and can be copied this way."));
    return;
  }
  if (!ways_.mayWrite(targets_)) return;
  copyName_ = tr("copy of %1 macros to %2").arg(QString::number(wanted.size()), to->text);
  toRight_ = toRight;
  copy_ = std::make_unique<WorkplaceCopy>(ways_.root, from->make, to->make, copyName_.toStdString(),
                                          std::move(wanted));
  startCopy();
}

// The panes may show more with unsaved changes than they did the first time.
void WorkplacesWindow::copyAgain() {
  if (busy() || !copy_) return;
  std::vector<MacroPlace> failed;
  for (std::size_t i = 0; i < copied_.size(); ++i)
    if (model_.rows()[copied_[i]].failed) failed.push_back(targets_[i]);
  if (ways_.mayWrite(failed)) startCopy();
}

void WorkplacesWindow::startCopy() {
  for (const std::size_t row : copied_)
    if (model_.rows()[row].failed || model_.rows()[row].result.isEmpty())
      model_.setResult(row, tr("waits"), true);
  look();
  showControls();
}

// Reads what is to be copied, and looks at what goes to a panel.
void WorkplacesWindow::look() {
  say(tr("Reading what is to be copied..."));
  ui_->progress->setRange(0, 0);
  cancelled_ = false;
  faulty_.clear();
  const auto context =
      BatchPlaces::onPanel(targets_.front()) ? std::optional(ways_.knowledge()) : std::nullopt;
  looking_.start([copy = copy_.get(), context](auto& report) -> Outcome {
    const std::stop_callback cancelled(report.stop(), [copy] { copy->cancel(); });
    if (Outcome read = copy->read(); !read || !context) return read;
    MacroCheck check(*context);
    for (const BatchItem& item : copy->fresh()) {
      if (report.stop().stop_requested()) return cancelledFailure();
      if (auto faulty = check.faults(item.place.number, *item.bytes)) report.add(*std::move(faulty));
    }
    return {};
  });
}

void WorkplacesWindow::endLook(const Outcome& outcome) {
  if (!outcome) return endCopy(outcome);
  if (cancelled_) return endCopy(cancelledFailure());
  if (faulty_.empty()) return write();
  // A transfer that is waited for just now keeps the keys and clicks from any other box.
  waits_ = true;
  ways_.whenFree([here = QPointer<WorkplacesWindow>(this)] {
    if (here) here->askToSend();
  });
}

void WorkplacesWindow::askToSend() {
  waits_ = false;
  if (cancelled_) return endCopy(cancelledFailure());
  const QPointer<WorkplacesWindow> here(this);
  const bool may = ways_.maySend(faulty_, copy_->fresh().size());
  if (here.isNull()) return;
  if (may) return cancelled_ ? endCopy(cancelledFailure()) : write();
  copy_.reset();
  for (const std::size_t row : copied_)
    if (model_.rows()[row].failed) model_.setResult(row, tr("not copied"), false);
  say(tr("Nothing was copied: %n macros have errors.", nullptr, static_cast<int>(faulty_.size())));
  showControls();
  if (closeWanted_) reject();
}

void WorkplacesWindow::write() {
  say(tr("Copying..."));
  copying_.start([copy = copy_.get()](auto& report) {
    const std::stop_callback cancelled(report.stop(), [copy] { copy->cancel(); });
    std::size_t done = 0;
    return copy->run([&](std::size_t index, const MacroBatch::Row& row) {
      report.add({index, row});
      report.progress(++done, 0);
    });
  });
  showControls();
}

QString WorkplacesWindow::resultText(const MacroBatch::Row& row, const MacroPlace& place) const {
  // Of a panel its own words tell more than what they come to.
  const auto reason = [&] {
    using Kind = Failure::Kind;
    const Kind kind = row.why.kind;
    const bool own = BatchPlaces::onPanel(place) && kind != Kind::kChanged && kind != Kind::kCancelled;
    return ways_.failureText(own ? Failure{Kind::kPanel, row.why.text} : row.why);
  };
  const QString note = row.note.empty() ? QString() : QStringLiteral(" (%1)").arg(shown(row.note));
  switch (row.state) {
    case MacroBatch::Row::State::kWaiting:
      return tr("waits");
    case MacroBatch::Row::State::kDone:
      return tr("copied, verified") + note;
    case MacroBatch::Row::State::kUnverified:
      return tr("copied, NOT verified") + note;
    case MacroBatch::Row::State::kAsBefore:
      return tr("NOT copied: %1").arg(reason());
    case MacroBatch::Row::State::kUnknown:
      return tr("UNKNOWN what stands there: %1").arg(reason());
  }
  return {};
}

void WorkplacesWindow::takeCopied(const std::vector<Copied>& copied) {
  for (const auto& [index, row] : copied) {
    model_.setResult(copied_[index], resultText(row, targets_[index]), !row.done());
    if (row.state == MacroBatch::Row::State::kDone) model_.noteCopied(copied_[index], toRight_);
    // What a panel holds is not known then, so nobody is to go on showing what it held.
    if (row.state != MacroBatch::Row::State::kAsBefore) emit written(targets_[index]);
  }
}

void WorkplacesWindow::endCopy(const Outcome& outcome) {
  const auto& rows = model_.rows();
  const auto failed = std::ranges::count_if(copied_, [&rows](std::size_t row) { return rows[row].failed; });
  if (!outcome)
    for (const std::size_t row : copied_)
      if (rows[row].failed)
        model_.setResult(row, tr("NOT copied: %1").arg(ways_.failureText(outcome.failure())), true);
  const QString done = QString::number(static_cast<qsizetype>(copied_.size()) - failed);
  say(failed == 0 ? tr("%1 macros copied").arg(done)
                  : tr("%1 macros copied, %2 NOT copied").arg(done, QString::number(failed)));
  if (!copy_->traces().empty()) emit copied(copyName_, copy_->traces());
  showControls();
  if (closeWanted_) return reject();
  if (std::exchange(againWanted_, false)) readAgain();
}

void WorkplacesWindow::cancel() {
  cancelled_ = true;
  reading_.cancel();
  looking_.cancel();
  copying_.cancel();
}

// What is being written is ended, or put back, before the window goes.
void WorkplacesWindow::reject() {
  if (busy()) {
    closeWanted_ = true;
    cancel();
    say(tr("Ending what is being read or copied..."));
    return;
  }
  ReviewWindow::reject();
}

void WorkplacesWindow::say(const QString& text) { ui_->told->setText(text); }

void WorkplacesWindow::showControls() {
  const bool idle = !busy();
  const auto& rows = model_.rows();
  const bool ticked = std::ranges::any_of(rows, [](const auto& row) { return row.ticked; });
  const bool failed = copy_ && std::ranges::any_of(rows, [](const auto& row) { return row.failed; });
  ui_->toLeft->setEnabled(idle && ticked);
  ui_->toRight->setEnabled(idle && ticked);
  ui_->retry->setEnabled(idle && failed);
  ui_->tickDifferent->setEnabled(!rows.empty());
  ui_->compare->setEnabled(ui_->table->currentIndex().isValid());
  const bool copying = looking_.running() || copying_.running();
  ui_->again->setEnabled(!copying);
  ui_->left->setEnabled(!copying);
  ui_->right->setEnabled(!copying);
  ui_->cancel->setEnabled(!idle);
  ui_->progress->setVisible(!idle);
}

}  // namespace tessaly
