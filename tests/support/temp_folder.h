#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace support {

/// A new, empty folder that goes with its content.
class TempFolder {
 public:
  TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;
  ~TempFolder();

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }
  /// Writes a file with this content and returns its path.
  std::filesystem::path write(std::string_view name, std::string_view content) const;
  /// The content of a file; throws when it can't be read.
  std::string read(std::string_view name) const;
  /// The names of what lies in the folder, sorted.
  std::string listing() const;

 private:
  std::filesystem::path path_;
};

}  // namespace support
