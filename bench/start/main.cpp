// The program from the first instruction of its process until its window can be used, linked and begun as the
// program is:
//   tessaly-bench-start ROOT             until the lists are painted
//   tessaly-bench-start --rest ROOT      and then half a second of rest
//   tessaly-bench-start --list=FILE ROOT and then lists its widgets in the file, see WidgetList.h
//   tessaly-bench-start --files ROOT     nothing but both interface files
// Prints "ready RSS-BYTES SHOWN HIDDEN", the latter of widgets.
#include <algorithm>
#include <filesystem>
#include <string_view>
#include <tinyxml.h>

#include <QApplication>
#include <QTimer>

#include "app/Appearance.h"
#include "app/Application.h"
#include "app/MacroPane.h"
#include "app/MainWindow.h"
#include "bench/start/Ready.h"
#include "bench/start/WidgetList.h"
#include "dictionary/InterfaceFile.h"
#include "platform/Memory.h"
#include "widgets/FontsAhead.h"
#include "widgets/QuietToolkit.h"

namespace tessaly::bench {
namespace {

constexpr std::string_view kList = "--list=";

int startWindow(int argc, char** argv, std::string_view mode) {
  setUpMemory();
  quietToolkit();
  findFontsAhead();
  const QApplication toolkit(argc, argv);
  dressToolkit();
  applyPalette(PaletteChoice::kDesktop);
  applyTextSize(kUsualTextSize);
  Application application({argv[argc - 1], false, false, kFtpPort});
  if (application.claimRoot() != RootClaim::kOurs) return 1;
  application.start();
  const MainWindow& window = *application.window();
  while (!window.loaded()) QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
  window.findChild<MacroPane*>()->applications().repaint();
  if (mode.starts_with(kList)) listWidgets(window, mode.substr(kList.size()).data());
  if (mode != kRest) tellWidgets();
  QTimer::singleShot(kRestMilliseconds, tellWidgets);
  return QApplication::exec();
}

int loadFiles(const char* folder) {
  const SiteRoot root{std::filesystem::path(folder)};
  TiXmlDocument olderFamily, panel;
  if (!olderFamily.LoadFile(root.resolve(kOlderFamilyInterface).c_str())) return 1;
  if (!panel.LoadFile(root.resolve(kPanelInterface).c_str())) return 1;
  tellReady();
  return 0;
}

}  // namespace
}  // namespace tessaly::bench

int main(int argc, char** argv) {
  const std::string_view mode = argc == 3 ? argv[1] : "";
  if (argc == 3 && mode == "--files") return tessaly::bench::loadFiles(argv[2]);
  const bool window = argc == 2 || mode == tessaly::bench::kRest || mode.starts_with(tessaly::bench::kList);
  return window ? tessaly::bench::startWindow(argc, argv, mode) : 2;
}
