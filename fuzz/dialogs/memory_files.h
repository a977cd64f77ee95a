#pragma once

#include <map>
#include <string>

#include "host/services/files.h"

namespace fuzz {

/// A disk in memory that holds one folder. Whoever reads, writes or removes anything outside of it
/// ends the program. It is the file system in force as long as it lives.
class MemoryFiles : public host::FileSystem {
 public:
  explicit MemoryFiles(std::filesystem::path folder);
  ~MemoryFiles() override;

  /// From now on files outside may be asked for; there are none.
  void letReadAnywhere() { readsAnywhere_ = true; }
  void put(const std::filesystem::path& file, std::string content);
  /// The content of a file; null when there is none.
  const std::string* content(const std::filesystem::path& file) const;
  const std::map<std::filesystem::path, std::string>& all() const { return files_; }

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
  bool exists(const std::filesystem::path& file) override;
  bool followLinks(const std::filesystem::path& name, std::filesystem::path& target,
                   std::string& cause) override;
  std::vector<std::filesystem::path> list(const std::filesystem::path& folder,
                                          std::string_view ending) override;

 private:
  bool has(const std::filesystem::path& file, std::string& cause) const;
  void expectInside(const std::filesystem::path& path) const;

  std::filesystem::path folder_;
  bool readsAnywhere_ = false;
  std::map<std::filesystem::path, std::string> files_;
};

}  // namespace fuzz
