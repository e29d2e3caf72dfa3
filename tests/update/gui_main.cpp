// The update tests need one widget application for the whole program,
// offscreen so that they run where there is no display.

#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

int main(int argc, char* argv[]) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
