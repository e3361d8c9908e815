#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <QApplication>
#include <QLocale>

#include "app/Appearance.h"
#include "app/Application.h"
#include "app/FirstStart.h"
#include "app/Language.h"
#include "platform/Installation.h"
#include "platform/Memory.h"

namespace {

constexpr int kDone = 0, kWrongUsage = 2;

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

}  // namespace

int main(int argc, char** argv) {
  if (printsText({argv, argv + argc})) return kDone;
  tessaly::setUpMemory();
  QApplication toolkit(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tessaly"));
  QApplication::setApplicationVersion(QString::fromStdString(std::string(tessaly::programVersion())));
  QApplication::setDesktopFileName(QStringLiteral("org.tessaly.Tessaly"));

  std::string reason;
  auto options = tessaly::readStartOptions(QApplication::arguments(), reason);
  if (!options) {
    std::fprintf(stderr, "tessaly: %s\n%s", reason.c_str(), tessaly::startHelp().c_str());
    return kWrongUsage;
  }
  tessaly::speak(tessaly::languageToSpeak(options->language, QLocale::system().uiLanguages()));
  tessaly::Preferences preferences;
  tessaly::dressToolkit();
  const std::string& palette = options->palette;
  tessaly::applyPalette(
      tessaly::paletteNamed(palette.empty() ? preferences.palette() : QString::fromStdString(palette)));
  const auto site = tessaly::chooseRoot(options->root, tessaly::installedSiteFolder(), preferences);
  if (!site) return kDone;
  options->root = site->path().string();
  tessaly::Application application(*options, &preferences);
  if (!application.claimRoot()) {
    std::fputs("tessaly: already running on this root; its window comes to the front\n", stderr);
    return kDone;
  }
  application.start();
  return QApplication::exec();
}
