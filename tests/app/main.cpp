#include <clocale>
#include <gtest/gtest.h>

#include <QApplication>

#include "widgets/KeyboardWay.h"
#include "widgets/QuietToolkit.h"

static void initResources() { Q_INIT_RESOURCE(tessaly); }

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  initResources();
  tessaly::KeyboardWay::open();
  return RUN_ALL_TESTS();
}
