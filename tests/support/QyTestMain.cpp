// One main for every test program: headless Qt, a fixed font, and GoogleTest.
#include <QApplication>
#include <QFont>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QApplication::setFont(QFont("DejaVu Sans", 9));
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
