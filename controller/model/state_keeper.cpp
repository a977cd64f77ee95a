#include "controller/model/state_keeper.h"

#include "controller/model/state_file.h"

namespace lamp::controller {
namespace fs = std::filesystem;

namespace {

constexpr const char* kFileInFolder = "lamp-controller.xml";

bool namesFolder(const std::string& option) {
  std::error_code ignored;
  return option.ends_with('/') || fs::is_directory(option, ignored);
}

}  // namespace

StateKeeper::StateKeeper(Controller& controller, fs::path path)
    : controller_(controller), path_(std::move(path)) {}

std::string StateKeeper::restore(bool& found) {
  std::error_code error;
  found = !path_.empty() && fs::exists(path_, error);
  if (error) return path_.string() + ": " + error.message();
  if (!found) return "";
  std::string text;
  std::string fault = readWholeFile(path_, text);
  if (fault.empty()) fault = controller_.loadState(text);
  return fault;
}

std::string StateKeeper::keep() {
  if (path_.empty()) return "";
  const std::lock_guard lock(mutex_);
  if (kept_ >= controller_.version()) return "";
  std::uint64_t version = 0;
  const std::string text = controller_.printState(version);
  std::string fault = writeFileSafely(path_, text);
  if (fault.empty()) kept_ = version;
  return fault;
}

std::string StateKeeper::keepAtEnd() {
  {
    const std::lock_guard lock(mutex_);
    kept_ = 0;
  }
  return keep();
}

fs::path stateFileOf(const std::string& option) {
  if (option.empty()) return {};
  return namesFolder(option) ? fs::path(option) / kFileInFolder : fs::path(option);
}

fs::path dataFolderOf(const std::string& option) {
  if (option.empty()) return {};
  return namesFolder(option) ? fs::path(option) : fs::path(option + ".d");
}

}  // namespace lamp::controller
