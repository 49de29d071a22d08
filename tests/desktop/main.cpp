// Runs the desktop's tests on Qt's offscreen platform.
#include <gtest/gtest.h>

#include <QApplication>

/// What the font library keeps for the life of the process.
extern "C" const char* __lsan_default_suppressions() {  // NOLINT: the sanitizer gives the name
  return "leak:libfontconfig\n";
}

int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_NO_GLIB", "1");
  testing::InitGoogleTest(&argumentCount, arguments);
  QApplication application(argumentCount, arguments);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
