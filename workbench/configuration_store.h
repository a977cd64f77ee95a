#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "host/xml/xml_document.h"
#include "workbench/file_lock.h"

namespace workbench {

/// The configuration on disk: "configuration.xml" in a folder, with the version before beside it.
/// Its content is the document of XCMainCfg. One program at a time may write.
class ConfigurationStore {
 public:
  /// @p patience is how long to wait for another program that is about to end.
  explicit ConfigurationStore(std::filesystem::path folder,
                              std::chrono::milliseconds patience = std::chrono::milliseconds(500))
      : folder_(std::move(folder)), patience_(patience) {}

  /// Loads the configuration into XCMainCfg and takes the right to write. A missing file is an
  /// empty configuration. False, with file, line and cause in @p cause, for a file that is no
  /// configuration; it is then never written.
  bool open(std::string& cause);

  /// The configuration as it would be saved.
  std::string text() const;

  /// Saves when the configuration differs from what is on disk. False with a cause when it can't.
  bool saveIfDifferent(std::string& cause);

  /// Whether saving is refused from the start, and why.
  bool isReadOnly() const { return !lock_.isHeld(); }
  std::string readOnlyReason() const;

  std::filesystem::path file() const { return folder_ / "configuration.xml"; }
  const std::filesystem::path& folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
  std::chrono::milliseconds patience_;
  FileLock lock_;
  bool loaded_ = false;
  std::string onDisk_;
};

}  // namespace workbench
