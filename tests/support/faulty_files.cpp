#include "tests/support/faulty_files.h"

#include <utility>

namespace support {

void FaultyFiles::fail(Operation operation, std::string cause, int spared) {
  faults_[operation] = {std::move(cause), spared, false};
}

void FaultyFiles::failHalfWritten(std::string cause) {
  faults_[Operation::writeNew] = {std::move(cause), 0, true};
}

const FaultyFiles::Fault* FaultyFiles::enter(Operation operation) {
  calls_.push_back(operation);
  const auto found = faults_.find(operation);
  if (found == faults_.end()) return nullptr;
  return found->second.spared-- > 0 ? nullptr : &found->second;
}

bool FaultyFiles::read(const std::filesystem::path& file, host::NamedBy named, std::size_t limit,
                       std::string& content, std::string& cause) {
  const Fault* fault = enter(Operation::read);
  if (fault == nullptr) return FileSystem::read(file, named, limit, content, cause);
  cause = fault->cause;
  return false;
}

bool FaultyFiles::writeNew(const std::filesystem::path& file, std::string_view content,
                           std::string& cause) {
  const Fault* fault = enter(Operation::writeNew);
  if (fault == nullptr) return FileSystem::writeNew(file, content, cause);
  if (fault->half) FileSystem::writeNew(file, content.substr(0, content.size() / 2), cause);
  cause = fault->cause;
  return false;
}

bool FaultyFiles::keep(const std::filesystem::path& file, const std::filesystem::path& copy,
                       std::string& cause) {
  const Fault* fault = enter(Operation::keep);
  if (fault == nullptr) return FileSystem::keep(file, copy, cause);
  cause = fault->cause;
  return false;
}

bool FaultyFiles::replace(const std::filesystem::path& from, const std::filesystem::path& to,
                          std::string& cause) {
  const Fault* fault = enter(Operation::replace);
  if (fault == nullptr) return FileSystem::replace(from, to, cause);
  cause = fault->cause;
  return false;
}

bool FaultyFiles::remove(const std::filesystem::path& file, std::string& cause) {
  const Fault* fault = enter(Operation::remove);
  if (fault == nullptr) return FileSystem::remove(file, cause);
  cause = fault->cause;
  return false;
}

bool FaultyFiles::makeFolder(const std::filesystem::path& folder, std::string& cause) {
  const Fault* fault = enter(Operation::makeFolder);
  if (fault == nullptr) return FileSystem::makeFolder(folder, cause);
  cause = fault->cause;
  return false;
}

}  // namespace support
