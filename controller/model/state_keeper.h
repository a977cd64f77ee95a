#pragma once

#include <filesystem>
#include <mutex>
#include <string>

#include "controller/model/controller.h"

namespace lamp::controller {

/// Keeps the controller's state in a file. Safe to use from several threads: those that ask while
/// a file is being written share the next one.
class StateKeeper {
 public:
  /// An empty path keeps nothing. The controller must outlive the keeper.
  StateKeeper(Controller& controller, std::filesystem::path path);

  /// Reads the file. `found` tells whether there was one. Returns what is wrong with it, or an
  /// empty text; a file with a fault is left as it is, and so it must be: do not call `keep` then.
  std::string restore(bool& found);

  /// Returns when every change made before the call is in the file; the answer is empty then,
  /// otherwise what went wrong.
  std::string keep();
  /// Keeps the state even where nothing but time has passed, for the end of the program.
  std::string keepAtEnd();

 private:
  Controller& controller_;
  const std::filesystem::path path_;
  std::mutex mutex_;
  std::uint64_t kept_ = 0;
};

/// Where the state of "--state" lies: the file itself, or "lamp-controller.xml" in a folder (one
/// that exists, or a name that ends with a separator).
std::filesystem::path stateFileOf(const std::string& option);

/// The folder for firmware and reports that belongs to a state file: its own folder for a state in
/// a folder, else the file's name with ".d" behind.
std::filesystem::path dataFolderOf(const std::string& option);

}  // namespace lamp::controller
