#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <QApplication>
#include <QLocale>
#include <QProcess>

#include "app/Appearance.h"
#include "app/Application.h"
#include "app/FirstStart.h"
#include "app/Language.h"
#include "app/PanelTransfer.h"
#include "app/ScreenFit.h"
#include "app/WindowPlaces.h"
#include "platform/Installation.h"
#include "platform/Memory.h"
#include "widgets/FontsAhead.h"
#include "widgets/QuietToolkit.h"

// Asked by the leak check of a sanitizer build, which knows the function by this name. The message bus of the
// desktop keeps its connection until the process ends; what of ours lives as long is reached by name
// (`lastingDictionary`, `panelClient`).
extern "C" const char* __lsan_default_suppressions() {  // NOLINT(bugprone-reserved-identifier)
  return "leak:libdbus-1.so";
}

namespace {

constexpr int kDone = 0, kNotStarted = 1, kWrongUsage = 2;

// The texts that are asked for without a window are given without a display too.
bool printsText(const std::vector<std::string_view>& words) {
  const auto asked = [&](const char* word) { return std::ranges::find(words, word) != words.end(); };
  if (asked("--help")) {
    std::fputs(tessaly::startHelp().c_str(), stdout);
  } else if (asked("--version")) {
    std::puts(("tessaly " + std::string(tessaly::programVersion())).c_str());
  } else {
    return false;
  }
  return true;
}

// The program again, on the site that was chosen in its window.
int startAnew(const QStringList& arguments, const std::string& root) {
  const QStringList words =
      arguments.mid(1) + QStringList{QStringLiteral("--root"), QString::fromStdString(root)};
  return QProcess::startDetached(QCoreApplication::applicationFilePath(), words) ? kDone : kNotStarted;
}

int runOn(const tessaly::StartOptions& options, tessaly::Preferences& preferences,
          const QStringList& arguments, std::string& nextRoot) {
  tessaly::Application application(options, &preferences);
  switch (application.claimRoot()) {
    case tessaly::RootClaim::kOurs:
      break;
    case tessaly::RootClaim::kRaised:
      std::puts("tessaly: already running on this root; its window comes to the front");
      return kDone;
    case tessaly::RootClaim::kGivenUp:
      return kNotStarted;
  }
  application.start();
  const int result = QApplication::exec();
  nextRoot = application.nextRoot();
  if (tessaly::PanelTransfer::leftBehind()) {
    // A thread waits for a disk that does not answer, with the objects that would go now.
    preferences.write();
    std::_Exit(nextRoot.empty() ? result : startAnew(arguments, nextRoot));
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (printsText({argv, argv + argc})) return kDone;
  QStringList arguments;
  for (int at = 0; at < argc; ++at) arguments << QString::fromLocal8Bit(argv[at]);
  std::string reason;
  auto options = tessaly::readStartOptions(arguments, reason);
  if (!options) {
    std::fprintf(stderr, "tessaly: %s\n%s", reason.c_str(), tessaly::startHelp().c_str());
    return kWrongUsage;
  }
  tessaly::setUpMemory();
  tessaly::quietToolkit();
  tessaly::findFontsAhead();
  QApplication toolkit(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tessaly"));
  QApplication::setApplicationVersion(QString::fromStdString(std::string(tessaly::programVersion())));
  QApplication::setDesktopFileName(QStringLiteral("org.tessaly.Tessaly"));

  const QStringList desktop = QLocale::system().uiLanguages();
  tessaly::Preferences preferences;
  const std::string language =
      options->language.empty() ? tessaly::keptLanguage(preferences).toStdString() : options->language;
  tessaly::speak(tessaly::languageToSpeak(language, desktop), desktop);
  tessaly::dressToolkit();
  const std::string& palette = options->palette;
  tessaly::applyPalette(
      tessaly::paletteNamed(palette.empty() ? preferences.palette() : QString::fromStdString(palette)));
  tessaly::restoreTextSize(preferences);
  const tessaly::ScreenFit fit;
  const tessaly::WindowPlaces places(preferences);
  const auto site = tessaly::chooseRoot(options->root, tessaly::installedSiteFolder(), preferences);
  if (!site) return kNotStarted;
  options->root = site->option();
  std::string nextRoot;
  const int result = runOn(*options, preferences, arguments, nextRoot);
  return nextRoot.empty() ? result : startAnew(arguments, nextRoot);
}
