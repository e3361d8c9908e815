// Opens the program and does one full edit through its window, as a person would; leaves a screenshot.
#include <cstdio>
#include <exception>

#include <QCommandLineParser>
#include <QPixmap>

#include "app/Appearance.h"
#include "app/Application.h"
#include "app/Language.h"
#include "app/MainWindow.h"
#include "tests/support/WindowDriver.h"
#include "widgets/QuietToolkit.h"

namespace {

using tessaly::kPaneDescriptors;

void edit(tessaly::Application& application, const QString& screenshot) {
  const tessaly::WindowDriver driver(*application.window());
  driver.waitUntilLoaded();
  for (const tessaly::PaneDescriptor& pane : kPaneDescriptors) {
    driver.clickRow(pane.ids.applications, 0);
    driver.clickRow(pane.ids.macros, pane.pane == tessaly::Pane::kA ? 0 : 1);
  }
  const auto& ids = kPaneDescriptors[0].ids;
  const std::size_t before = driver.texts(ids.commands).size();
  driver.clickRow(ids.commands, 1);
  driver.press(ids.deleteCommand);
  if (driver.texts(ids.commands).size() + 1 != before) throw std::runtime_error("the command is still there");
  driver.press(ids.saveChanges);
  application.window()->resize(1180, 820);
  QTest::qWait(100);
  if (!application.window()->grab().save(screenshot)) throw std::runtime_error("no screenshot");
  std::puts("one command deleted and the macro saved");
}

}  // namespace

int main(int argc, char** argv) {
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  tessaly::applyPalette(tessaly::PaletteChoice::kLight);
  QCommandLineParser parser;
  parser.addOptions({{QStringLiteral("root"), QString(), QStringLiteral("DIR")},
                     {QStringLiteral("ftp-port"), QString(), QStringLiteral("PORT"), QStringLiteral("21")},
                     {QStringLiteral("screenshot"), QString(), QStringLiteral("FILE")}});
  parser.process(toolkit);
  tessaly::speak(QStringLiteral("en"));  // which has its numbers of one
  const QString root = parser.value(QStringLiteral("root")), port = parser.value(QStringLiteral("ftp-port"));
  tessaly::Application application({root.toStdString(), false, false, port.toUShort(), {}});
  if (application.claimRoot() != tessaly::RootClaim::kOurs) {
    std::fputs("another program runs on this root\n", stderr);
    return 1;
  }
  application.start();
  try {
    edit(application, parser.value(QStringLiteral("screenshot")));
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "the walk ended: %s\n", problem.what());
    return 1;
  }
  return 0;
}
