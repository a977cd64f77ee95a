#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "tests/main/run_tests.h"

int main(int argc, char** argv) {
  // Listing the tests needs no platform, and running them no screen.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // What the programs under test put on record is none of the person's.
  const QTemporaryDir state;
  qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
  const QApplication application(argc, argv);
  return support::runTests(argc, argv);
}
