// The graph tests draw text, which needs a GUI application: one for the whole program, made
// before the tests and gone before the program's own exit, so that the font caches are freed in order.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <cstdlib>

int main(int argc, char* argv[]) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::testing::InitGoogleTest(&argc, argv);
  QGuiApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
