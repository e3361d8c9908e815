#include "app/FirstStart.h"

#include <cstdlib>
#include <system_error>

#include <QCoreApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QStandardPaths>

#include "app/FirstStartDialog.h"
#include "app/MessageBoxes.h"
#include "dictionary/InterfaceFile.h"
#include "model/Settings.h"
#include "model/SiteBrowser.h"
#include "platform/Files.h"

namespace tessaly {

namespace {

namespace fs = std::filesystem;

constexpr const char* kRootVariable = "TESSALY_ROOT";
constexpr const char* kSampleFolder = "/tessaly-sample";
constexpr const char* kHalfCopied = ".tessaly-sample";  // beside the drives until all is copied

bool rootIsNamed(const std::string& option) {
  const char* variable = std::getenv(kRootVariable);
  return !option.empty() || (variable != nullptr && *variable != '\0');
}

void copyDrives(const fs::path& from, const fs::path& to) {
  for (const fs::directory_entry& drive : fs::directory_iterator(from))
    if (drive.is_directory())
      fs::copy(drive.path(), to / drive.path().filename(),
               fs::copy_options::recursive | fs::copy_options::skip_existing);
}

void moveDrives(const fs::path& from, const fs::path& to) {
  for (const fs::directory_entry& drive : fs::directory_iterator(from)) {
    const fs::path target = to / drive.path().filename();
    if (!fs::exists(target)) fs::rename(drive.path(), target);
  }
}

std::optional<SiteRoot> ask(FirstStartDialog& dialog, const SiteRoot& root, Preferences& preferences) {
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  if (dialog.folder() != root.path() || root.option().empty())
    preferences.setSiteFolder(QString::fromStdString(dialog.folder().string()));
  return SiteRoot(dialog.folder());
}

}  // namespace

bool describesFunctions(const SiteRoot& root) {
  return isRegularFile(root, kOlderFamilyInterface) || isRegularFile(root, kPanelInterface);
}

bool holdsSite(const SiteRoot& root) {
  return describesFunctions(root) || isRegularFile(root, kSettingsFile) ||
         !applications(root, kDefaultPath).value_or({}).empty();
}

fs::path siteAround(const fs::path& folder) {
  std::error_code failed;
  const fs::path start = fs::absolute(folder, failed).lexically_normal();
  if (folder.empty() || failed) return {};
  for (fs::path here = start;; here = here.parent_path()) {
    if (holdsSite(SiteRoot(here))) return here;
    if (here == here.parent_path()) return {};
  }
}

bool copySampleSite(const fs::path& sample, const fs::path& root) {
  const fs::path half = root / kHalfCopied;
  std::error_code ignored;
  try {
    fs::create_directories(half);
    copyDrives(sample, half);
    moveDrives(half, root);
    copyDrives(half, root);  // what a drive that was there already lacks
    fs::remove_all(half, ignored);
    return true;
  } catch (const fs::filesystem_error&) {
    fs::remove_all(half, ignored);
    return false;
  }
}

std::optional<SiteRoot> chooseRoot(const std::string& option, const fs::path& sample,
                                   Preferences& preferences) {
  const std::string remembered = preferences.siteFolder().toStdString();
  const SiteRoot root = rootIsNamed(option) || remembered.empty() ? SiteRoot::fromEnvironment(option)
                                                                  : SiteRoot(hostPath(remembered));
  if (holdsSite(root)) return root;
  FirstStartDialog dialog(root.path(), sample);
  return ask(dialog, root, preferences);
}

std::optional<SiteRoot> chooseOtherRoot(const SiteRoot& current, const fs::path& sample,
                                        Preferences& preferences, QWidget& window) {
  FirstStartDialog dialog(current.path(), sample, &window);
  dialog.askAgain(describesFunctions(current));
  return ask(dialog, current, preferences);
}

std::optional<SiteRoot> openSite(Preferences& preferences, QWidget& window) {
  const QString named = QFileDialog::getExistingDirectory(
      &window, QCoreApplication::translate("FirstStart", "Open a Site"), preferences.siteFolder());
  if (named.isEmpty()) return std::nullopt;
  const fs::path folder = siteAround(hostPath(named.toStdString()));
  if (folder.empty()) {
    QMessageBox::information(&window, QLatin1String(kProgramName),
                             QCoreApplication::translate("FirstStart", "There is no site in this folder."));
    return std::nullopt;
  }
  preferences.setSiteFolder(QString::fromStdString(folder.string()));
  return SiteRoot(folder);
}

std::optional<SiteRoot> sampleToWorkOn(const fs::path& sample) {
  const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
  const fs::path folder = hostPath((data + QLatin1String(kSampleFolder)).toStdString());
  if (sample.empty() || !copySampleSite(sample, folder)) return std::nullopt;
  return SiteRoot(folder);
}

}  // namespace tessaly
