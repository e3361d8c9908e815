#include "app/FirstStartDialog.h"

#include <QApplication>
#include <QFileDialog>
#include <QLayout>

#include "app/FirstStart.h"
#include "ui_FirstStartDialog.h"
#include "widgets/DialogText.h"

namespace tessaly {

namespace {

QString shownPath(const std::filesystem::path& path) { return shown(path.string()); }

}  // namespace

FirstStartDialog::FirstStartDialog(std::filesystem::path root, std::filesystem::path sample, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::FirstStartDialog>()),
      root_(std::move(root)),
      sample_(std::move(sample)),
      folder_(root_) {
  ui_->setupUi(this);
  ui_->root->setText(shownPath(root_));
  ui_->sample->setEnabled(!sample_.empty());
  if (sample_.empty()) {
    ui_->sampleHint->setText(tr("The sample site did not come with this program."));
    ui_->existing->setChecked(true);
  }
  setMinimumHeight(layout()->totalHeightForWidth(minimumWidth()));  // the layout alone counts one line a text
  connect(ui_->existingFolder, &QLineEdit::textChanged, ui_->existing, [this] { ui_->existing->click(); });
  connect(ui_->browse, &QPushButton::clicked, this, &FirstStartDialog::browse);
  connect(ui_->goOn, &QPushButton::clicked, this, &FirstStartDialog::accept);
  connect(ui_->quit, &QPushButton::clicked, this, &FirstStartDialog::reject);
  (sample_.empty() ? ui_->existing : ui_->sample)->setFocus();
}

FirstStartDialog::~FirstStartDialog() = default;

void FirstStartDialog::askAgain(bool describesFunctions) {
  setWindowTitle(tr("Tessaly: Site"));
  ui_->heading->setText(tr("The window works with the site here"));
  ui_->explanation->setText(
      tr("To work with another one, the window closes and opens again. It asks first what becomes of unsaved "
         "changes."));
  if (describesFunctions) {
    ui_->sample->setEnabled(false);
    ui_->sampleHint->setText(tr("There is a site here already, which is left as it is."));
    ui_->existing->setChecked(true);
    ui_->existing->setFocus();
  }
  ui_->empty->hide();
  ui_->emptyHint->hide();
  ui_->quit->setText(tr("Cancel"));
}

void FirstStartDialog::browse() {
  const QString named = QFileDialog::getExistingDirectory(this, tr("Folder of an Existing Installation"),
                                                          ui_->existingFolder->text());
  if (named.isEmpty()) return;
  ui_->existingFolder->setText(named);
  ui_->existing->setChecked(true);
}

bool FirstStartDialog::setUpSample() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  const bool copied = copySampleSite(sample_, root_);
  QApplication::restoreOverrideCursor();
  if (!copied) ui_->problem->setText(tr("The sample site could not be copied to %1.").arg(shownPath(root_)));
  return copied;
}

bool FirstStartDialog::takeExisting() {
  const std::filesystem::path named = hostPath(ui_->existingFolder->text().trimmed().toStdString());
  const std::filesystem::path site = siteAround(named);
  if (site.empty()) {
    ui_->problem->setText(named.empty() ? tr("Name the folder of the installation, please.")
                                        : tr("No site is found in %1.").arg(shownPath(named)));
    ui_->existingFolder->setFocus();
    ui_->existingFolder->selectAll();
    return false;
  }
  folder_ = site;
  return true;
}

void FirstStartDialog::accept() {
  ui_->problem->clear();
  if (ui_->sample->isChecked() && !setUpSample()) return;
  if (ui_->existing->isChecked() && !takeExisting()) return;
  QDialog::accept();
}

}  // namespace tessaly
