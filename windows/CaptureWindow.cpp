#include "windows/CaptureWindow.h"

#include <chrono>

#include <QHeaderView>
#include <QScrollBar>
#include <QShortcut>

#include "ui_CaptureWindow.h"
#include "widgets/ButtonIcon.h"
#include "widgets/DialogText.h"
#include "widgets/ListFinder.h"

namespace tessaly {

namespace {

constexpr std::chrono::milliseconds kGlimpse{50};
constexpr int kStepWidth = 80, kValueWidth = 100, kStateWidth = 250;  // pixels, to start with

}  // namespace

CaptureWindow::CaptureWindow(CaptureWays ways, const LineContext& lines, const LineOptions& options,
                             QWidget* owner)
    : ReviewWindow(tr("Capture"), owner),
      ways_(std::move(ways)),
      ui_(std::make_unique<Ui::CaptureWindow>()),
      model_(lines, options),
      questions_(ways_.questions([this](const std::vector<PanelAnswer>& answers) { take(answers); })),
      taking_(
          [this](std::vector<CaptureTake> taken, Taking::Progress) {
            if (!taken.empty()) taken_ = std::move(taken.back());
          },
          [this](const Outcome& outcome) { handOver(outcome); }) {
  ui_->setupUi(this);
  setUpTable();
  setUpButtons();
  patience_.setSingleShot(true);
  patience_.setInterval(ways_.patience);
  connect(&patience_, &QTimer::timeout, this, &CaptureWindow::giveUp);
  glimpse_.setSingleShot(true);
  glimpse_.setInterval(kGlimpse);
  connect(&glimpse_, &QTimer::timeout, this, [this] { ui_->values->setUpdatesEnabled(true); });
  beginWith(ways_.selected());
  ui_->values->setFocus();
}

CaptureWindow::~CaptureWindow() = default;

void CaptureWindow::setUpTable() {
  new ListFinder(*ui_->values);
  ui_->values->setModel(&model_);
  QHeaderView& header = *ui_->values->header();
  header.setStretchLastSection(false);
  header.resizeSection(CaptureModel::kStep, kStepWidth);
  header.setSectionResizeMode(CaptureModel::kCommand, QHeaderView::Stretch);
  header.resizeSection(CaptureModel::kOld, kValueWidth);
  header.resizeSection(CaptureModel::kNew, kValueWidth);
  header.resizeSection(CaptureModel::kState, kStateWidth);
  connect(&model_, &CaptureModel::rowsAboutToChange, this, &CaptureWindow::keepPlace);
  connect(&model_, &QAbstractItemModel::modelReset, this, &CaptureWindow::returnToPlace);
  connect(&model_, &CaptureModel::changed, this, &CaptureWindow::showControls);
  // Whatever column was clicked last.
  connect(new QShortcut(Qt::Key_Space, ui_->values, nullptr, nullptr, Qt::WidgetShortcut),
          &QShortcut::activated, this, &CaptureWindow::toggleCurrent);
}

void CaptureWindow::setUpButtons() {
  setIcons({{ui_->askAgain, ButtonIcon::kReadAgain}, {ui_->anew, ButtonIcon::kReadAgain}});
  connect(ui_->scope, &QComboBox::activated, this, &CaptureWindow::begin);
  connect(ui_->onlyDifferences, &QCheckBox::toggled, &model_, &CaptureModel::setOnlyDifferences);
  const auto tickAll = [this](bool on) { model_.change([on](Capture& capture) { capture.tickAll(on); }); };
  connect(ui_->selectAll, &QPushButton::clicked, this, [tickAll] { tickAll(true); });
  connect(ui_->selectNone, &QPushButton::clicked, this, [tickAll] { tickAll(false); });
  connect(ui_->askAgain, &QPushButton::clicked, this, &CaptureWindow::ask);
  connect(ui_->anew, &QPushButton::clicked, this, &CaptureWindow::begin);
  connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, &CaptureWindow::begin);
  connect(ui_->takeOver, &QPushButton::clicked, this, &CaptureWindow::takeOver);
  connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
}

void CaptureWindow::beginAgain() {
  std::vector<int> selected = ways_.selected();
  if (selected.size() < 2) selected.clear();
  const CaptureSubject now = ways_.subject();
  const CaptureLine nowLine = ways_.line();
  if (selected != selected_ || now.place != subject_.place || model_.capture().counts().changed > 0 ||
      nowLine.address != address_ || nowLine.connection != connection_)
    return beginWith(std::move(selected));
  const Capture before = model_.capture();
  begin();
  model_.change([&before](Capture& capture) { capture.tickAs(before); });
}

void CaptureWindow::beginWith(std::vector<int> selected) {
  selected_ = selected.size() > 1 ? std::move(selected) : std::vector<int>();
  ui_->scope->clear();
  if (!selected_.empty())
    ui_->scope->addItem(tr("the %n selected commands", nullptr, static_cast<int>(selected_.size())), true);
  ui_->scope->addItem(tr("all commands"), false);
  ui_->scope->setEnabled(!selected_.empty());
  begin();
}

void CaptureWindow::begin() {
  questions_->cancel();
  subject_ = ways_.subject();
  ui_->heading->setText(subject_.heading);
  const std::vector<int> commands = ui_->scope->currentData().toBool() ? selected_ : std::vector<int>();
  address_ = ways_.line().address;
  model_.begin(subject_.macro ? Capture(*subject_.macro, commands, model_.lines().dictionary) : Capture());
  current_ = top_ = std::nullopt;
  if (model_.rowCount() > 0) ui_->values->setCurrentIndex(model_.index(0, 0));
  ask();
  // A panel that answers at once is shown with its answers, without a glimpse of rows that wait.
  if (!isVisible() || !patience_.isActive()) return;
  ui_->values->setUpdatesEnabled(false);
  glimpse_.start();
}

CaptureLine CaptureWindow::line() const {
  CaptureLine line = ways_.line();
  if (line.trouble.isEmpty() && line.address != address_) line.trouble = tr("the pane is on another panel");
  return line;
}

// For what has no value yet; what has come stays.
void CaptureWindow::ask() {
  tell({});
  questions_->cancel();
  const CaptureLine now = line();
  connection_ = now.connection;
  std::vector<std::string> names;
  model_.change([&names](Capture& capture) { names = capture.ask(); });
  if (!now.trouble.isEmpty()) {
    giveUp();
  } else if (!names.empty()) {
    patience_.start();
    questions_->ask(names);
  }
}

void CaptureWindow::take(const std::vector<PanelAnswer>& answers) {
  const bool any = model_.take(answers);
  if (any && patience_.isActive()) patience_.start();  // it is for a panel that says nothing new
  if (!model_.capture().complete()) return;
  patience_.stop();
  questions_->cancel();
  ui_->values->setUpdatesEnabled(true);
}

// Late answers are taken all the same.
void CaptureWindow::giveUp() {
  patience_.stop();
  model_.change([](Capture& capture) { capture.giveUp(); });
}

void CaptureWindow::follow() {
  const CaptureSubject now = ways_.subject();
  const bool other = now.place != subject_.place;
  subject_.refusal = other && now.macro ? tr("another macro was opened in the pane") : now.refusal;
  if (!other) {
    ui_->heading->setText(now.heading);
    subject_.macro = now.macro;
  }
  model_.change([&](Capture& capture) { capture.follow(other ? std::nullopt : now.macro); });
}

void CaptureWindow::look() {
  const CaptureLine now = line();
  if (patience_.isActive() && (!now.trouble.isEmpty() || now.connection != connection_)) {
    questions_->cancel();
    giveUp();
  }
  showControls();
}

void CaptureWindow::takeOver() {
  if (taking_.running()) return;
  follow();
  SetValues edit = model_.capture().edit();
  if (edit.values.empty()) return;
  if (!subject_.refusal.isEmpty()) return tellNothing(subject_.refusal);
  taken_.reset();
  tell({});
  CaptureTake wanted{*subject_.macro, std::move(edit), *subject_.macro};
  taking_.start([wanted = std::move(wanted)](Taking::Report& report) mutable -> Outcome {
    wanted.taken = apply(wanted.shown, wanted.edit);
    report.add(std::move(wanted));
    return {};
  });
  showControls();
}

void CaptureWindow::handOver(const Outcome& outcome) {
  follow();
  const QString why = !taken_                       ? ways_.failureText(outcome.failure())
                      : !subject_.refusal.isEmpty() ? subject_.refusal
                                                    : ways_.take(*taken_);
  if (why.isEmpty())
    tell(tr("%n values taken over; \"Undo\" in the pane takes them back.", nullptr,
            static_cast<int>(taken_->edit.values.size())));
  else
    tellNothing(why);
  showControls();
  if (closing_) reject();
}

// What is being taken over is not lost.
void CaptureWindow::reject() {
  closing_ = taking_.running();
  if (!closing_) ReviewWindow::reject();
}

void CaptureWindow::toggleCurrent() {
  const QModelIndex tick = ui_->values->currentIndex().siblingAtColumn(CaptureModel::kStep);
  const bool on = model_.data(tick, Qt::CheckStateRole).toInt() == Qt::Checked;
  model_.setData(tick, on ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void CaptureWindow::keepPlace() {
  const QModelIndex current = ui_->values->currentIndex(), top = ui_->values->indexAt({1, 1});
  if (current.isValid()) current_ = model_.captured(current.row());
  if (top.isValid()) top_ = model_.captured(top.row());
}

void CaptureWindow::returnToPlace() {
  if (model_.rowCount() == 0) return;
  if (top_) ui_->values->scrollTo(model_.index(model_.placeOf(*top_), 0), QAbstractItemView::PositionAtTop);
  if (!current_) return;
  const bool scrolls = ui_->values->hasAutoScroll();
  ui_->values->setAutoScroll(false);  // the place that was looked at counts
  ui_->values->setCurrentIndex(model_.index(model_.placeOf(*current_), 0));
  ui_->values->setAutoScroll(scrolls);
}

void CaptureWindow::tell(const QString& text) { ui_->outcome->setText(text); }

void CaptureWindow::tellNothing(const QString& why) { tell(tr("NOTHING was taken over: %1").arg(why)); }

QString CaptureWindow::countsText(const Capture::Counts& counts) const {
  const auto number = [](std::size_t count) { return static_cast<int>(count); };
  if (model_.capture().rows().empty()) return tr("There is no command to ask for.");
  QStringList texts{tr("%1 of %2 values have come; %3 differ, %4 are ticked.")
                        .arg(QString::number(counts.came), QString::number(counts.asked),
                             QString::number(counts.differ), QString::number(counts.ticked))};
  if (counts.waiting > 0) texts << tr("Waiting for the others.");
  if (counts.missing > 0)
    texts << tr("%n did not come; \"Ask Again\" asks for them.", nullptr, number(counts.missing));
  if (counts.changed > 0)
    texts << tr(
        "%n commands were changed meanwhile and stay as they are; \"Capture Anew\" begins with the "
        "macro as it is now.",
        nullptr, number(counts.changed));
  if (const QString trouble = line().trouble; !trouble.isEmpty())
    texts << tr("The panel cannot be asked: %1.").arg(trouble);
  if (!subject_.refusal.isEmpty()) texts << tr("Nothing can be taken over: %1.").arg(subject_.refusal);
  return texts.join(QLatin1Char(' '));
}

void CaptureWindow::showControls() {
  const Capture::Counts counts = model_.capture().counts();
  ui_->counts->setText(countsText(counts));
  ui_->askAgain->setEnabled(counts.missing > 0 && line().trouble.isEmpty());
  ui_->takeOver->setEnabled(counts.ticked > 0 && !taking_.running());
  ui_->selectAll->setEnabled(counts.ticked < counts.differ);
  ui_->selectNone->setEnabled(counts.ticked > 0);
}

}  // namespace tessaly
