#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "controller/storage/disk.h"

namespace lamp::controller::test {

/// A disk in memory that counts its operations and lets one of them fail, or be the last before the
/// machine goes dark. It knows what is on the disk and what only the machine remembers.
class MemoryDisk final : public Disk {
 public:
  /// What is left of what was not flushed.
  enum class Survivor {
    Everything,  ///< the program was killed, the machine goes on
    Half,        ///< the machine went dark while it was writing
    Flushed      ///< the machine went dark before it wrote
  };

  MemoryDisk() = default;
  /// The disk that is found after `before` went dark.
  MemoryDisk(const MemoryDisk& before, Survivor survivor);
  MemoryDisk& operator=(const MemoryDisk&) = delete;

  /// How many operations there were so far.
  int operations() const { return operations_; }
  /// Operation number `operation` (from 1) and `count - 1` more fail; half of a write is done.
  void failAt(int operation, int count = 1);
  /// The machine goes dark at operation `operation`, of which half is done; everything fails then.
  void goDarkAt(int operation);
  bool isDark() const { return dark_ > 0 && operations_ >= dark_; }

  /// The files, "folder/name" and content, as the program sees them.
  std::map<std::string, std::string> files() const;
  /// The content of a file, to be damaged.
  std::string& content(const std::string& path) { return live_.at(path)->live; }
  bool has(const std::string& path) const { return live_.contains(path); }
  void erase(const std::string& path) { live_.erase(path); }

  std::unique_ptr<DiskFile> create(const std::filesystem::path& path, std::string& fault) override;
  std::unique_ptr<DiskFile> open(const std::filesystem::path& path, std::string& fault) override;
  std::string read(const std::filesystem::path& path, std::string& bytes) override;
  std::string rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
  std::string remove(const std::filesystem::path& path) override;
  std::string makeFolder(const std::filesystem::path& folder) override;
  std::string flushFolder(const std::filesystem::path& folder) override;
  std::string list(const std::filesystem::path& folder, std::vector<std::string>& names) override;
  std::unique_ptr<DiskClaim> claim(const std::filesystem::path& path, std::string& fault) override;

 private:
  friend class MemoryFile;
  struct Node {
    std::string live;
    std::string flushed;
  };
  using Names = std::map<std::string, std::shared_ptr<Node>>;

  // Counts an operation; true when it is to fail.
  bool fails();
  bool wasLast() const { return operations_ == dark_; }

  Names live_;
  Names flushed_;
  int operations_ = 0;
  int failFirst_ = 0;
  int failLast_ = -1;
  int dark_ = 0;
};

}  // namespace lamp::controller::test
