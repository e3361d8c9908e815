#include <cstdio>

#include <QApplication>
#include <QCommandLineParser>

#include "app/Application.h"

int main(int argc, char** argv) {
  QApplication toolkit(argc, argv);
  QApplication::setApplicationName(QStringLiteral("tessaly"));
  QApplication::setApplicationVersion(QStringLiteral("1.0.0"));

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Edits the macros of a Corvane XL Control Panel."));
  parser.addHelpOption();
  parser.addVersionOption();
  const QCommandLineOption root(
      QStringLiteral("root"), QStringLiteral("Folder that holds the site's drives."), QStringLiteral("DIR"));
  const QCommandLineOption demo(QStringLiteral("demo"),
                                QStringLiteral("Show a demonstration instead of connecting."));
  const QCommandLineOption verbose(QStringLiteral("verbose"),
                                   QStringLiteral("Print the panel's values and calls."));
  const QCommandLineOption ftpPort(QStringLiteral("ftp-port"),
                                   QStringLiteral("FTP port of a simulated panel."), QStringLiteral("PORT"),
                                   QString::number(tessaly::kFtpPort));
  parser.addOptions({root, demo, verbose, ftpPort});
  parser.process(toolkit);

  bool portRead = false;
  const ushort port = parser.value(ftpPort).toUShort(&portRead);
  if (!portRead || port == 0 || !parser.positionalArguments().isEmpty()) parser.showHelp(2);

  tessaly::Application application(
      {parser.value(root).toStdString(), parser.isSet(demo), parser.isSet(verbose), port});
  if (!application.claimRoot()) {
    std::fputs("tessaly: already running on this root; its window comes to the front\n", stderr);
    return 0;
  }
  application.start();
  return QApplication::exec();
}
