#include "fuzz/dialogs/memory_files.h"

#include <algorithm>

#include "fuzz/fault.h"

namespace fuzz {

namespace fs = std::filesystem;

MemoryFiles::MemoryFiles(fs::path folder) : folder_(std::move(folder)) {
  host::setFileSystem(this);
}

MemoryFiles::~MemoryFiles() {
  host::setFileSystem(nullptr);
}

void MemoryFiles::put(const fs::path& file, std::string content) {
  files_[file] = std::move(content);
}

const std::string* MemoryFiles::content(const fs::path& file) const {
  const auto found = files_.find(file);
  return found == files_.end() ? nullptr : &found->second;
}

bool MemoryFiles::has(const fs::path& file, std::string& cause) const {
  if (files_.contains(file)) return true;
  cause = "there is no such file";
  return false;
}

void MemoryFiles::expectInside(const fs::path& path) const {
  const fs::path plain = path.lexically_normal();
  const auto [end, rest] =
      std::mismatch(folder_.begin(), folder_.end(), plain.begin(), plain.end());
  if (end != folder_.end()) fault("reaches out of its folder: " + path.string());
}

bool MemoryFiles::read(const fs::path& file, host::NamedBy, std::size_t limit, std::string& content,
                       std::string& cause) {
  if (!readsAnywhere_) expectInside(file);
  if (!has(file, cause)) return false;
  const std::string& held = files_.at(file);
  if (held.size() > limit) {
    cause = "the file is too large";
    return false;
  }
  content = held;
  return true;
}

bool MemoryFiles::writeNew(const fs::path& file, std::string_view content, std::string& cause) {
  expectInside(file);
  if (!files_.try_emplace(file, content).second) {
    cause = "the file exists";
    return false;
  }
  return true;
}

bool MemoryFiles::keep(const fs::path& file, const fs::path& copy, std::string& cause) {
  expectInside(copy);
  if (!has(file, cause)) return false;
  files_[copy] = files_.at(file);
  return true;
}

bool MemoryFiles::replace(const fs::path& from, const fs::path& to, std::string& cause) {
  expectInside(to);
  if (!has(from, cause)) return false;
  std::string moved = std::move(files_.at(from));
  files_.erase(from);
  files_[to] = std::move(moved);
  return true;
}

bool MemoryFiles::remove(const fs::path& file, std::string& cause) {
  expectInside(file);
  return has(file, cause) && files_.erase(file) == 1;
}

bool MemoryFiles::makeFolder(const fs::path& folder, std::string&) {
  expectInside(folder);
  return true;
}

bool MemoryFiles::exists(const fs::path& file) {
  return files_.contains(file);
}

bool MemoryFiles::followLinks(const fs::path& name, fs::path& target, std::string&) {
  target = name;
  return true;
}

std::vector<fs::path> MemoryFiles::list(const fs::path& folder, std::string_view ending) {
  std::vector<fs::path> found;
  for (const auto& [file, content] : files_)
    if (file.parent_path() == folder && file.string().ends_with(ending)) found.push_back(file);
  return found;
}

}  // namespace fuzz
