#include "bench/window/Children.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <tinyxml.h>

#include <QTimer>

#include "app/Application.h"
#include "app/MainWindow.h"
#include "bench/window/Desk.h"
#include "bench/window/Ready.h"
#include "dictionary/InterfaceFile.h"

namespace tessaly::bench {

namespace {

constexpr int kRestMilliseconds = 500;

int startWindow(const char* root, bool rest) {
  toolkit();
  Application application({root, false, false, kFtpPort});
  if (application.claimRoot() != RootClaim::kOurs) return 1;
  application.start();
  const WindowDriver driver(*application.window());
  RowsView& list = driver.list(Desk::ids(Pane::kA).applications);
  while (!application.window()->loaded())
    QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
  list.repaint();
  if (rest) QTest::qWait(kRestMilliseconds);
  const QWidgetList all = QApplication::allWidgets();
  const auto shown =
      std::count_if(all.begin(), all.end(), [](const QWidget* each) { return each->isVisible(); });
  tellReady(static_cast<int>(shown), static_cast<int>(all.size() - shown));
  return 0;
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

bool runAsChild(int argc, char** argv, int& result) {
  if (argc != 3) return false;
  const std::string_view mode = argv[1];
  if (mode == kStartWindow)
    result = startWindow(argv[2], false);
  else if (mode == kIdleWindow)
    result = startWindow(argv[2], true);
  else if (mode == kLoadFiles)
    result = loadFiles(argv[2]);
  else
    return false;
  return true;
}

std::string programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path().string(); }

}  // namespace tessaly::bench
