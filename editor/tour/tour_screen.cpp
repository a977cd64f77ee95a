#include "editor/tour/tour_screen.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryFile>

namespace editor {

void provideTourScreen() {
  if (qgetenv("QT_QPA_PLATFORM") != "offscreen") return;
  // It is read while the application object is made and goes at the end of the program.
  static QTemporaryFile file(QDir::tempPath() + "/lamp-editor-screen-XXXXXX.json");
  if (!file.open()) return;
  file.write(R"({"screens":[{"name":"tour","x":0,"y":0,"width":1600,"height":1200,)"
             R"("logicalDpi":96,"logicalBaseDpi":96,"dpr":1}]})");
  file.close();
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + file.fileName().toLocal8Bit());
}

}  // namespace editor
