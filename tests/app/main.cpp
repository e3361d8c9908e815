#include <clocale>
#include <gtest/gtest.h>

#include <QApplication>

static void initResources() { Q_INIT_RESOURCE(tessaly); }

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication toolkit(argc, argv);
  std::setlocale(LC_NUMERIC, "C");
  initResources();
  return RUN_ALL_TESTS();
}
