#include <gmock/gmock.h>

#include <QApplication>

#include "widgets/KeyboardWay.h"
#include "widgets/QuietToolkit.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  tessaly::quietToolkit();
  QApplication toolkit(argc, argv);
  tessaly::KeyboardWay::open();
  return RUN_ALL_TESTS();
}
