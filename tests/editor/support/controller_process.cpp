#include "tests/editor/support/controller_process.h"

#include <QtCore/QRegularExpression>

namespace support {
namespace {

constexpr int LongestWait = 30'000;

}  // namespace

ControllerProcess::ControllerProcess(const std::filesystem::path& folder,
                                     const QStringList& options) {
  std::filesystem::create_directories(folder);
  const QStringList needed = {"--port", "0", "--state", QString::fromStdString(folder.string())};
  process_.start(LAMP_CONTROLLER, needed + options);
  static const QRegularExpression listening("listening on http://127\\.0\\.0\\.1:(\\d+)");
  QByteArray told;
  while (port_ == 0 && process_.waitForReadyRead(LongestWait)) {
    told += process_.readAllStandardOutput();
    port_ = listening.match(QString::fromUtf8(told)).captured(1).toInt();
  }
}

ControllerProcess::~ControllerProcess() {
  process_.terminate();
  process_.waitForFinished(LongestWait);
}

}  // namespace support
