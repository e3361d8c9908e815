#include "windows/SnapshotRestoreDialog.h"

#include <algorithm>

#include <QHeaderView>

#include "ui_SnapshotRestoreDialog.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr int kThousandths = 1000;
constexpr int kMacroWidth = 260;  // pixels, to start with

}  // namespace

SnapshotRestoreDialog::SnapshotRestoreDialog(const QString& title, SnapshotRestore& restore, Run run,
                                             MayWrite mayWrite, SnapshotRows::Words words, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::SnapshotRestoreDialog>()),
      restore_(restore),
      run_(std::move(run)),
      mayWrite_(std::move(mayWrite)),
      words_(words),
      rows_(std::move(words)) {
  ui_->setupUi(this);
  ui_->from->setText(title);
  ui_->macros->setModel(&rows_);
  new ListFinder(*ui_->macros);
  ui_->macros->header()->resizeSection(SnapshotRows::kMacro, kMacroWidth);
  connect(&rows_, &SnapshotRows::tickChanged, this, &SnapshotRestoreDialog::showCount);
  connect(ui_->tickAll, &QPushButton::clicked, this, [this] { rows_.tickAll(true); });
  connect(ui_->tickNone, &QPushButton::clicked, this, [this] { rows_.tickAll(false); });
  connect(ui_->restore, &QPushButton::clicked, this, &SnapshotRestoreDialog::restoreTicked);
  connect(ui_->close, &QPushButton::clicked, this, &QDialog::accept);
  rows_.setRows(restore_.rows());
  ui_->macros->setCurrentIndex(rows_.index(0, 0));
  ui_->macros->setFocus();
}

SnapshotRestoreDialog::~SnapshotRestoreDialog() = default;

void SnapshotRestoreDialog::showCount() {
  const auto count = static_cast<int>(rows_.ticked().size());
  ui_->outcome->setText(tr("%1 of %n macros are ticked", nullptr, rows_.rowCount()).arg(count));
  ui_->restore->setEnabled(count > 0 && !cancelled_);
}

void SnapshotRestoreDialog::restoreTicked() {
  const std::vector<std::size_t> ticked = rows_.ticked();
  if (!mayWrite_(ticked)) {
    ui_->outcome->setText(tr("Nothing was restored."));
    return;
  }
  Outcome outcome;
  run_(tr("Restoring macros"), [&](const std::function<void(int)>& tell) {
    std::size_t done = 0;
    outcome = restore_.write(
        ticked, [&](std::size_t) { tell(static_cast<int>(++done * kThousandths / ticked.size())); });
  });
  cancelled_ = !outcome && outcome.failure().kind == Failure::Kind::kCancelled;
  rows_.setRows(restore_.rows());
  std::vector<MacroPlace> places;
  for (const std::size_t row : ticked) places.push_back(restore_.rows()[row].place);
  emit written(places);
  showOutcome(ticked, outcome);  // the last word: who follows what was written tells of it, too
}

void SnapshotRestoreDialog::showOutcome(const std::vector<std::size_t>& tried, const Outcome& outcome) {
  using State = RestoreRow::State;
  const auto restored = std::ranges::count_if(tried, [this](std::size_t row) {
    const State state = restore_.rows()[row].state;
    return state == State::kRestored || state == State::kUnverified;
  });
  const auto missing = static_cast<int>(tried.size()) - static_cast<int>(restored);
  QString text = tr("%n macros are restored", nullptr, static_cast<int>(restored));
  if (missing > 0) text = tr("%1; %n macros are NOT", nullptr, missing).arg(text);
  const auto unknown = std::ranges::count_if(
      tried, [this](std::size_t row) { return restore_.rows()[row].state == State::kUnknown; });
  if (unknown > 0)
    text = tr("%1; of %n of them what the panel holds now is unknown", nullptr, static_cast<int>(unknown))
               .arg(text);
  if (!outcome) text = QStringLiteral("%1 (%2)").arg(text, words_(outcome.failure()));
  ui_->outcome->setText(text);
  const Grade grade = missing > 0 ? Grade::kFailure : outcome ? Grade::kDone : Grade::kWarning;
  emit said({grade, text, ui_->from->text()});
}

}  // namespace tessaly
