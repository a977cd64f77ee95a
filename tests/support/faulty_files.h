#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/services/files.h"

namespace support {

/// The real file system, put in force as long as this lives, with operations that fail when the
/// test says so.
class FaultyFiles : public host::FileSystem {
 public:
  enum class Operation { read, writeNew, keep, replace, remove, makeFolder };

  FaultyFiles() { host::setFileSystem(this); }
  FaultyFiles(const FaultyFiles&) = delete;
  FaultyFiles& operator=(const FaultyFiles&) = delete;
  ~FaultyFiles() override { host::setFileSystem(nullptr); }

  /// Every further call of the operation fails with this reason, and does nothing, after
  /// @p spared more calls that work.
  void fail(Operation operation, std::string cause, int spared = 0);
  /// As fail, for writeNew alone: the file is there with half of its content, as when the disk
  /// filled up.
  void failHalfWritten(std::string cause);
  /// Everything works again.
  void repair() { faults_.clear(); }

  /// The operations that were called, failed ones too.
  const std::vector<Operation>& calls() const { return calls_; }

  bool read(const std::filesystem::path& file, host::NamedBy named, std::size_t limit,
            std::string& content, std::string& cause) override;
  bool writeNew(const std::filesystem::path& file, std::string_view content,
                std::string& cause) override;
  bool keep(const std::filesystem::path& file, const std::filesystem::path& copy,
            std::string& cause) override;
  bool replace(const std::filesystem::path& from, const std::filesystem::path& to,
               std::string& cause) override;
  bool remove(const std::filesystem::path& file, std::string& cause) override;
  bool makeFolder(const std::filesystem::path& folder, std::string& cause) override;

 private:
  struct Fault {
    std::string cause;
    int spared = 0;
    bool half = false;
  };
  // Notes the call; the fault that it runs into, or null.
  const Fault* enter(Operation operation);

  std::map<Operation, Fault> faults_;
  std::vector<Operation> calls_;
};

}  // namespace support
