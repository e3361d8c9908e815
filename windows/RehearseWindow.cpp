#include "windows/RehearseWindow.h"

#include <algorithm>

#include <QKeyEvent>
#include <QShortcut>

#include "ui_RehearseWindow.h"
#include "widgets/ButtonIcon.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

constexpr int kPatienceMilliseconds = 100;  // until a replay is said to be under way
constexpr int kTellMilliseconds = 40;       // values of a panel come in bursts
constexpr int kPage = 10;                   // steps of Page Up and Page Down

}  // namespace

RehearseWindow::RehearseWindow(RehearseWays ways, PanelClient& client, const LineContext& lines,
                               const LineOptions& options, QWidget* owner)
    : ReviewWindow({}, owner),
      ways_(std::move(ways)),
      ui_(std::make_unique<Ui::RehearseWindow>()),
      lines_(lines),
      options_(options),
      now_(client, ways_.panel, ways_.patience),
      after_(RehearseModel::Shows::kAfter, lines, options, now_, this),
      steps_(lines, options, now_),
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
  steps_.values().setFocus();
}

RehearseWindow::~RehearseWindow() = default;

void RehearseWindow::setUpTables() {
  ui_->stepsLayout->addWidget(&steps_);
  setUpRehearseTable(*ui_->after, after_);
  setUpRehearseColumns(*ui_->after);
  for (QWidget* keyed : {static_cast<QWidget*>(&steps_.values()), static_cast<QWidget*>(ui_->after),
                         static_cast<QWidget*>(ui_->slider)})
    keyed->installEventFilter(this);
  connect(&steps_, &RehearseSteps::stepWanted, this, &RehearseWindow::goTo);
  connect(ui_->after, &QTableView::activated, this, [this](const QModelIndex& index) {
    const RehearsalRow* row = after_.row(index.row());
    if (row == nullptr || row->kind == RehearsalRow::Kind::kHeading) return;
    ui_->tabs->setCurrentWidget(ui_->stepsTab);
    if (row->kind == RehearsalRow::Kind::kCommand)
      goTo(row->index + 1);
    else
      steps_.goToValue(*after_.nameOf(index.row()));
    steps_.values().setFocus();
  });
}

void RehearseWindow::setUpKeys() {
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
  setIcons({{ui_->previous, ButtonIcon::kLeft},
            {ui_->next, ButtonIcon::kRight},
            {ui_->askAgain, ButtonIcon::kReadAgain}});
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
    steps_.show(shown_);
    after_.show(shown_);
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
  shown_ = result.rehearsal;
  steps_.show(shown_);
  after_.show(shown_);
  {
    const QSignalBlocker quiet(ui_->slider);
    ui_->slider->setRange(0, lastStep());
  }
  tellTrouble(!shown_ || !shown_->commands()->empty() ? QString() : tr("The macro has no command."));
  standAt(step);
  now_.want(shown_ ? shown_->publishedNames() : std::vector<std::string>());
  showNow();
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
  steps_.tellNow();
  after_.tellNow();
  ui_->after->setColumnHidden(RehearseModel::kNow, !now_.connected());
  const QString comparison = shown_ ? RehearseTexts::comparison(*shown_, now_) : QString();
  ui_->now->setText(RehearseTexts::now(now_) + (comparison.isEmpty() ? comparison : ' ' + comparison));
  ui_->askAgain->setEnabled(now_.state() == RehearseNow::State::kMissing);
  ui_->startFromNow->setEnabled(now_.connected());
}

void RehearseWindow::goTo(int step) {
  standAt(step);
  steps_.seekChange();
}

void RehearseWindow::standAt(int step) {
  step_ = std::clamp(step, 0, lastStep());
  steps_.setStep(step_);
  showStep();
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
  ui_->line->clear();
  ui_->done->clear();
  if (!shown_ || shown_->commands()->empty()) return;
  if (step_ == 0) {
    ui_->line->setText(tr("Before the first command"));
    ui_->done->setText(RehearseTexts::start(ui_->startFromNow->isChecked(), now_));
    return;
  }
  const MacroCommand& command = (*shown_->commands())[static_cast<std::size_t>(step_ - 1)];
  ui_->line->setText(tr("%1: %2").arg(QString::number(step_), shown(commandLine(command, options_, lines_))));
  ui_->done->setText(RehearseTexts::done(*shown_, step_));
}

}  // namespace tessaly
