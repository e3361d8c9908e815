#include <gmock/gmock.h>

#include <QApplication>

#include "widgets/QuietToolkit.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  return RUN_ALL_TESTS();
}
