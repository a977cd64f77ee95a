#include "tests/controller/support/memory_disk.h"

namespace lamp::controller::test {
namespace fs = std::filesystem;

namespace {

constexpr const char* kFault = "the disk does not work";

bool isIn(const std::string& path, const fs::path& folder) {
  return fs::path(path).parent_path() == folder;
}

}  // namespace

class MemoryFile final : public DiskFile {
 public:
  MemoryFile(MemoryDisk& disk, std::shared_ptr<MemoryDisk::Node> node)
      : disk_(disk), node_(std::move(node)) {}

  std::string append(std::string_view bytes) override {
    if (!disk_.fails()) {
      node_->live += bytes;
      return "";
    }
    if (!disk_.isDark() || disk_.wasLast()) node_->live += bytes.substr(0, bytes.size() / 2);
    return kFault;
  }

  std::string flush() override {
    if (disk_.fails()) return kFault;
    node_->flushed = node_->live;
    return "";
  }

  std::string cut(std::uint64_t size) override {
    if (disk_.fails()) return kFault;
    node_->live.resize(static_cast<std::size_t>(size));
    return "";
  }

 private:
  MemoryDisk& disk_;
  const std::shared_ptr<MemoryDisk::Node> node_;
};

MemoryDisk::MemoryDisk(const MemoryDisk& before, Survivor survivor) {
  const bool names = survivor != Survivor::Flushed;
  for (const auto& [path, node] : names ? before.live_ : before.flushed_) {
    std::string content = node->live;
    if (survivor == Survivor::Flushed) content = node->flushed;
    if (survivor == Survivor::Half && content.starts_with(node->flushed)) {
      content.resize((content.size() + node->flushed.size() + 1) / 2);
    }
    live_[path] = std::make_shared<Node>(Node{content, content});
  }
  flushed_ = live_;
}

void MemoryDisk::failAt(int operation, int count) {
  failFirst_ = operation;
  failLast_ = operation + count - 1;
}

void MemoryDisk::goDarkAt(int operation) {
  dark_ = operation;
}

bool MemoryDisk::fails() {
  ++operations_;
  return isDark() || (operations_ >= failFirst_ && operations_ <= failLast_);
}

std::map<std::string, std::string> MemoryDisk::files() const {
  std::map<std::string, std::string> found;
  for (const auto& [path, node] : live_) found[path] = node->live;
  return found;
}

std::unique_ptr<DiskFile> MemoryDisk::create(const fs::path& path, std::string& fault) {
  fault = fails() || live_.contains(path) ? kFault : "";
  if (!fault.empty()) return nullptr;
  const auto node = std::make_shared<Node>();
  live_[path] = node;
  return std::make_unique<MemoryFile>(*this, node);
}

std::unique_ptr<DiskFile> MemoryDisk::open(const fs::path& path, std::string& fault) {
  fault = fails() || !live_.contains(path) ? kFault : "";
  return fault.empty() ? std::make_unique<MemoryFile>(*this, live_[path]) : nullptr;
}

std::string MemoryDisk::read(const fs::path& path, std::string& bytes) {
  if (fails() || !live_.contains(path)) return kFault;
  bytes = live_[path]->live;
  return "";
}

std::string MemoryDisk::rename(const fs::path& from, const fs::path& to) {
  if (fails() || !live_.contains(from)) return kFault;
  live_[to] = live_[from];
  live_.erase(from);
  return "";
}

std::string MemoryDisk::remove(const fs::path& path) {
  if (fails()) return kFault;
  live_.erase(path);
  return "";
}

std::string MemoryDisk::makeFolder(const fs::path&) {
  return fails() ? kFault : "";
}

std::string MemoryDisk::flushFolder(const fs::path& folder) {
  if (fails()) return kFault;
  std::erase_if(flushed_, [&](const auto& entry) { return isIn(entry.first, folder); });
  for (const auto& entry : live_) {
    if (isIn(entry.first, folder)) flushed_.insert(entry);
  }
  return "";
}

std::string MemoryDisk::list(const fs::path& folder, std::vector<std::string>& names) {
  names.clear();
  if (fails()) return kFault;
  for (const auto& [path, node] : live_) {
    if (isIn(path, folder)) names.push_back(fs::path(path).filename());
  }
  return "";
}

std::unique_ptr<DiskClaim> MemoryDisk::claim(const fs::path&, std::string& fault) {
  fault = fails() ? kFault : "";
  return fault.empty() ? std::make_unique<DiskClaim>() : nullptr;
}

}  // namespace lamp::controller::test
