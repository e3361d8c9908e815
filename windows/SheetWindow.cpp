#include "windows/SheetWindow.h"

#include <algorithm>
#include <utility>

#include <QFileDialog>
#include <QFileInfo>
#include <QPageSize>
#include <QPrinter>
#include <QShortcut>

#include "platform/ChosenPath.h"
#include "platform/Files.h"
#include "ui_SheetWindow.h"
#include "widgets/DialogText.h"
#include "windows/SheetPainting.h"

namespace tessaly {

namespace {

constexpr double kZooms[] = {0.5, 0.75, 1, 1.25, 1.5, 2};
constexpr int kHundred = 100;
constexpr int kLongestName = 60;  // letters of a proposed name; folders take 255 bytes

// A name for the file that a sheet of that title goes to.
QString suggested(const Sheet& sheet) {
  QString name = shown(sheet.ofMany ? std::string(fileNameOf(sheet.title)) : sheet.title);
  for (const QChar character : QStringLiteral("/\\:*?\"<>|")) name.replace(character, QLatin1Char('-'));
  name = name.left(kLongestName).trimmed();
  return name.isEmpty() ? SheetWindow::tr("macros") : name;
}

std::unique_ptr<QPrinter> printerFor(const SheetPages& pages, const QString& title) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  printer->setDocName(title);
  printer->setFullPage(true);
  printer->setPageSize(
      QPageSize(QSizeF(pages.width, pages.height), QPageSize::Point, {}, QPageSize::FuzzyMatch));
  return printer;
}

}  // namespace

SheetWindow::SheetWindow(SheetSurroundings surroundings, QWidget* owner)
    : ReviewWindow(tr("Sheet"), owner),
      surroundings_(std::move(surroundings)),
      ui_(std::make_unique<Ui::SheetWindow>()),
      making_(
          [this](std::vector<MadeSheet> made, Making::Progress progress) { take(std::move(made), progress); },
          [this](const Outcome& outcome) { end(outcome); }),
      putting_([](const std::vector<std::monostate>&, Putting::Progress) {},
               [this](const Outcome& outcome) {
                 if (outcome.written())
                   tell(putTold_);
                 else if (outcome.failure().kind == Failure::Kind::kCancelled)
                   tell(tr("Cancelled."));
                 else
                   tell(tr("NOT done: %1").arg(surroundings_.failureText(outcome.failure())));
                 showState();
               }) {
  ui_->setupUi(this);
  fillChoices();
  ui_->scope->setSource(surroundings_.scopes);
  keepSpaceWhenHidden({ui_->progress, ui_->cancel});
  connectControls();
  showPage(-1);
  showState();
  ui_->preview->setFocus();
}

SheetWindow::~SheetWindow() = default;

void SheetWindow::fillChoices() {
  ui_->paper->addItem(tr("A4"), static_cast<int>(Paper::kA4));
  ui_->paper->addItem(tr("A5"), static_cast<int>(Paper::kA5));
  ui_->paper->addItem(tr("Letter"), static_cast<int>(Paper::kLetter));
  ui_->zoom->addItem(tr("Width of the window"));
  for (const double zoom : kZooms)
    ui_->zoom->addItem(tr("%1 %").arg(static_cast<int>(zoom * kHundred)), zoom);
}

void SheetWindow::connectControls() {
  connect(ui_->scope, &QComboBox::activated, this, &SheetWindow::start);
  connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this, &SheetWindow::start);
  connect(ui_->cancel, &QPushButton::clicked, this, [this] {
    making_.cancel();
    putting_.cancel();
  });
  connect(ui_->paper, &QComboBox::activated, this, &SheetWindow::layOutAgain);
  for (const QCheckBox* box : {ui_->after, ui_->findings, ui_->notes})
    connect(box, &QCheckBox::toggled, this, &SheetWindow::layOutAgain);
  connect(ui_->zoom, &QComboBox::activated, this, &SheetWindow::showZoom);
  connect(ui_->preview, &SheetPreview::pageChanged, this, &SheetWindow::showPage);
  connect(ui_->preview, &SheetPreview::zoomChanged, this, [this](double zoom) {
    ui_->zoom->setPlaceholderText(tr("%1 %").arg(qRound(zoom * kHundred)));
    ui_->zoom->setCurrentIndex(-1);
  });
  connect(ui_->print, &QPushButton::clicked, this, &SheetWindow::print);
  connect(ui_->write, &QPushButton::clicked, this, &SheetWindow::write);
  connect(new QShortcut(QKeySequence::Print, this), &QShortcut::activated, ui_->print, &QPushButton::click);
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_E), this), &QShortcut::activated, ui_->write,
          &QPushButton::click);
  connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
}

SheetOptions SheetWindow::options() const {
  return {.paper = static_cast<Paper>(ui_->paper->currentData().toInt()),
          .after = ui_->after->isChecked(),
          .findings = ui_->findings->isChecked(),
          .notes = ui_->notes->isChecked(),
          .date = surroundings_.today()};
}

void SheetWindow::make(ReviewScope::Kind kind) {
  ui_->scope->choose(kind);
  start();
}

void SheetWindow::start() {
  const auto scope = ui_->scope->current();
  if (!scope) {
    tell(tr("There is nothing to be put on paper: choose a macro or a folder in a pane first."));
    return;
  }
  what_ = scope->title;
  reading_ = true;
  tell({});
  const auto context = std::make_shared<const CheckContext>(surroundings_.knowledge());
  making_.start([&root = surroundings_.root, scope = *scope, context, how = options()](
                    Making::Report& report) { return readSheet(root, scope, *context, how, report); });
  showState();
}

// What is read is not read anew, and not while it is: then the end of the reading lays it out as is wanted.
void SheetWindow::layOutAgain() {
  if (reading_ || !made_.sheet) return;
  making_.start([sheet = made_.sheet, how = options()](Making::Report& report) {
    return layOutSheet(sheet, how, report);
  });
  showState();
}

void SheetWindow::take(std::vector<MadeSheet> made, Making::Progress progress) {
  ui_->progress->setMaximum(static_cast<int>(progress.of));
  ui_->progress->setValue(static_cast<int>(progress.done));
  if (made.empty()) return;
  made_ = std::move(made.back());
  ui_->preview->setPages(made_.pages);
}

void SheetWindow::end(const Outcome& outcome) {
  const bool read = std::exchange(reading_, false);
  if (outcome && !read) {
    // What was told of the reading stays.
  } else if (outcome) {
    const auto& macros = made_.sheet->macros;
    const auto unread =
        std::ranges::count_if(macros, [](const SheetMacro& one) { return !one.unread.empty(); });
    tell(unread > 0
             ? tr("%n macros could not be read; the sheet says why.", nullptr, static_cast<int>(unread))
             : QString());
  } else if (outcome.failure().kind == Failure::Kind::kCancelled) {
    tell(tr("Cancelled: %1").arg(what_));
  } else {
    tell(tr("NOT put on paper: %1 (%2)").arg(what_, surroundings_.failureText(outcome.failure())));
  }
  if (!outcome) writeDue_ = false;  // not the sheet of before in its place
  showState();
  const SheetOptions now = options(), then = made_.options;
  const bool asWanted = now.paper == then.paper && now.after == then.after && now.findings == then.findings &&
                        now.notes == then.notes;
  if (read && made_.sheet && !asWanted)
    layOutAgain();
  else if (std::exchange(writeDue_, false))
    write();
}

void SheetWindow::writeWhenMade() {
  if (making_.running())
    writeDue_ = true;
  else if (made_.sheet)
    write();
}

void SheetWindow::print() {
  const MadeSheet made = made_;
  std::shared_ptr<QPrinter> printer = printerFor(*made.pages, shown(made.sheet->title));
  if (!surroundings_.setUp(*printer, static_cast<int>(made.pages->pages.size()), this)) return;
  put(tr("printed: %1").arg(shown(made.sheet->title)),
      [made, printer](Putting::Report& report) { return printSheet(*printer, *made.pages, report.stop()); });
}

void SheetWindow::write() {
  const MadeSheet made = made_;
  QFileDialog choice(this, tr("Export"), QString(),
                     tr("PDF (*.pdf)") + QStringLiteral(";;") + tr("HTML (*.html)") + QStringLiteral(";;") +
                         tr("CSV (*.csv)"));
  choice.setAcceptMode(QFileDialog::AcceptSave);
  const auto suffixOf = [&choice](const QString& filter) {
    const auto at = static_cast<std::size_t>(choice.nameFilters().indexOf(filter));
    return QString::fromStdString(std::string(nameOf(kSheetFormats[std::min(at, kSheetFormats.size() - 1)])));
  };
  connect(&choice, &QFileDialog::filterSelected, &choice,
          [&](const QString& filter) { choice.setDefaultSuffix(suffixOf(filter)); });
  choice.setDefaultSuffix(suffixOf(choice.selectedNameFilter()));
  choice.selectFile(suggested(*made.sheet) + QLatin1Char('.') + choice.defaultSuffix());
  if (choice.exec() != QDialog::Accepted || choice.selectedFiles().isEmpty()) return;
  const QString file = choice.selectedFiles().constFirst();
  const std::string path = chosenPath(surroundings_.root, hostPath(file.toStdString()));
  const auto format = sheetFormatNamed(QFileInfo(file).suffix().toStdString());
  if (!format) {
    tell(tr("NOT written: %1 (the name ends in .pdf, .html or .csv)").arg(shown(path)));
    return;
  }
  put(tr("written: %1").arg(shown(path)),
      [made, format = *format, root = surroundings_.root, path](Putting::Report& report) -> Outcome {
        const auto bytes = writeSheet(*made.sheet, made.options, sheetWords(), format);
        if (!bytes) return bytes.failure();
        if (report.stop().stop_requested()) return Failure{Failure::Kind::kCancelled, "cancelled"};
        return writeFile(root, path, *bytes);
      });
}

void SheetWindow::put(const QString& told, Putting::Job job) {
  putTold_ = told;
  tell({});
  putting_.start(std::move(job));
  showState();
}

void SheetWindow::showState() {
  const bool making = making_.running(), putting = putting_.running();
  if (making || putting) ui_->progress->setRange(0, 0);
  ui_->progress->setVisible(making || putting);
  ui_->cancel->setVisible(making || putting);
  ui_->print->setEnabled(made_.pages && !making && !putting);
  ui_->write->setEnabled(made_.pages && !making && !putting);
}

void SheetWindow::showZoom() {
  const QVariant zoom = ui_->zoom->currentData();
  ui_->preview->setZoom(zoom.isNull() ? std::nullopt : std::optional(zoom.toDouble()));
}

void SheetWindow::showPage(int page) {
  ui_->page->setText(
      page < 0
          ? QString()
          : tr("page %1 of %2").arg(QString::number(page + 1), QString::number(ui_->preview->pageCount())));
}

void SheetWindow::tell(const QString& text) { ui_->outcome->setText(text); }

}  // namespace tessaly
