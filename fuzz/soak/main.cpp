// The window against misbehaving panels; see docs/development/reliability.md.
#include <clocale>
#include <cstdio>

#include <QApplication>
#include <QCommandLineParser>

#include "fuzz/soak/FaultTable.h"
#include "fuzz/soak/Flood.h"
#include "fuzz/soak/Soak.h"
#include "widgets/QuietToolkit.h"

static void initResources() { Q_INIT_RESOURCE(tessaly); }

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  initResources();
  QCommandLineParser options;
  options.addHelpOption();
  options.addOption({"faults", "Faults at operations: \"some\", \"met\" or \"all\".", "WHICH"});
  options.addOption({"only", "Only faults at operations with this in their name.", "TEXT"});
  options.addOption({"flood", "10,000 values a second for so long.", "SECONDS"});
  options.addOption({"patient", "Any time of answer will do in the flood, as on a busy machine."});
  options.addOption({"actions", "Random actions of a user against flaky panels.", "COUNT", "1000"});
  options.addOption({"seed", "First seed of the actions.", "NUMBER", "1"});
  options.addOption({"seeds", "How many seeds, one after the other.", "COUNT", "1"});
  options.addOption({"told", "A line for every fault at an operation."});
  options.process(toolkit);
  try {
    if (options.isSet("flood"))
      return tessaly::runFlood(options.value("flood").toInt(), options.isSet("patient")) ? 0 : 1;
    if (options.isSet("faults")) {
      const QString which = options.value("faults");
      const auto cells = which == "all"   ? tessaly::FaultCells::kAll
                         : which == "met" ? tessaly::FaultCells::kMet
                                          : tessaly::FaultCells::kSome;
      return tessaly::runFaultTable(cells, options.value("only").toStdString(), options.isSet("told")) ? 0
                                                                                                       : 1;
    }
    const unsigned first = options.value("seed").toUInt();
    for (unsigned seed = first; seed < first + options.value("seeds").toUInt(); ++seed)
      if (!tessaly::runSoak(options.value("actions").toInt(), seed)) return 1;
    return 0;
  } catch (const std::exception& error) {
    std::printf("ended by: %s\n", error.what());
    return 1;
  }
}
