#pragma once

#include <QtCore/QProcess>
#include <filesystem>

namespace support {

/// A lamp-controller that answers on a free port of this computer as long as this lives.
class ControllerProcess {
 public:
  /// Starts it with these options behind those that it needs; its state lies in @p folder.
  ControllerProcess(const std::filesystem::path& folder, const QStringList& options);
  ControllerProcess(const ControllerProcess&) = delete;
  ControllerProcess& operator=(const ControllerProcess&) = delete;
  ~ControllerProcess();

  /// 0 when it did not start.
  int port() const { return port_; }

 private:
  QProcess process_;
  int port_ = 0;
};

}  // namespace support
