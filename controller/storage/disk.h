#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lamp::controller {

/// A file that is open for writing at its end. Every function answers what went wrong, or an empty
/// text; after a failed `append` any part of the bytes may stand in the file.
class DiskFile {
 public:
  virtual ~DiskFile() = default;

  virtual std::string append(std::string_view bytes) = 0;
  /// Returns when everything appended is on the disk.
  virtual std::string flush() = 0;
  /// Cuts the file to its first `size` bytes.
  virtual std::string cut(std::uint64_t size) = 0;
};

/// Holds a claim on a name until it goes away.
class DiskClaim {
 public:
  virtual ~DiskClaim() = default;
};

/// What the controller needs of a disk, one file operation each, so that tests can let any of them
/// fail or be the last. Every `fault` and answered text says what went wrong and with which file,
/// and is empty otherwise.
class Disk {
 public:
  virtual ~Disk() = default;

  /// Makes a new file that only its owner can read and write; it must not exist. Null on a fault.
  virtual std::unique_ptr<DiskFile> create(const std::filesystem::path& path,
                                           std::string& fault) = 0;
  /// Opens a file that exists, to go on at its end. Null on a fault.
  virtual std::unique_ptr<DiskFile> open(const std::filesystem::path& path, std::string& fault) = 0;
  /// Reads a whole file.
  virtual std::string read(const std::filesystem::path& path, std::string& bytes) = 0;
  /// Puts a file in the place of another, or under a new name.
  virtual std::string rename(const std::filesystem::path& from,
                             const std::filesystem::path& to) = 0;
  /// Removes a file; one that is not there is no fault.
  virtual std::string remove(const std::filesystem::path& path) = 0;
  /// Makes a folder and those above it; one that is there is no fault.
  virtual std::string makeFolder(const std::filesystem::path& folder) = 0;
  /// Returns when the names in the folder (new, other and removed ones) are on the disk.
  virtual std::string flushFolder(const std::filesystem::path& folder) = 0;
  /// The names of the files in a folder, sorted; none where the folder is missing.
  virtual std::string list(const std::filesystem::path& folder,
                           std::vector<std::string>& names) = 0;
  /// Claims a name, for which a file is made. Null when another program holds it, or on a fault.
  virtual std::unique_ptr<DiskClaim> claim(const std::filesystem::path& path,
                                           std::string& fault) = 0;
};

/// The disk of this machine.
Disk& machineDisk();

/// The folder in which a file stands; "." for a bare name.
std::filesystem::path folderOf(const std::filesystem::path& file);

/// Writes `bytes` to the new file `beside`, flushes it to the disk and renames it to `path`, so
/// that whoever reads finds the old or the new content, whole. A file `beside` that a killed
/// program left is replaced. Answers what went wrong, or an empty text; the old file is untouched
/// then.
std::string writeFileSafely(Disk& disk, const std::filesystem::path& path,
                            const std::filesystem::path& beside, std::string_view bytes);

}  // namespace lamp::controller
