#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "controller/model/change_log.h"
#include "controller/model/controller.h"
#include "controller/storage/state_storage.h"

namespace lamp::controller {

/// Keeps the controller's state on the disk: every change in a journal before it takes effect, and
/// now and then the state as a whole. Safe to use from several threads; changes that come while
/// others are being written share the next writing.
class StateKeeper final : public ChangeLog {
 public:
  /// An empty path keeps nothing. The controller and the disk must outlive the keeper.
  StateKeeper(Controller& controller, std::filesystem::path file, Disk& disk = machineDisk());
  ~StateKeeper() override;
  StateKeeper(const StateKeeper&) = delete;
  StateKeeper& operator=(const StateKeeper&) = delete;

  /// Claims the file, so that no other program works with it, and brings the controller to the
  /// state that is kept. `found` tells whether there was one. Answers what is wrong with it, or an
  /// empty text; what has a fault is left as it is.
  std::string restore(bool& found);
  /// What the operator should know of the state that was found; empty mostly.
  const std::string& notice() const { return kept_.notice; }
  /// Begins to keep every change, after `restore`. A state that is new, or was written without a
  /// journal, is written as a whole first. Answers what went wrong, or an empty text.
  std::string begin();

  std::string commit(std::string record, const std::function<void()>& apply) override;

  /// Writes the state as a whole where the journal has grown longer than it. Commits go on
  /// meanwhile, but for the moment in which the state is printed. Answers what went wrong, or an
  /// empty text; everything confirmed is kept then all the same.
  std::string compactWhenDue();
  /// Writes the state as a whole, with what only time has changed.
  std::string compact();

 private:
  struct Waiting {
    std::string record;
    const std::function<void()>* apply = nullptr;
    bool done = false;
    std::string fault;
  };
  std::string append(const std::vector<Waiting*>& batch);
  void carryOut(const std::vector<Waiting*>& batch) noexcept;

  Controller& controller_;
  Disk& disk_;
  const std::filesystem::path file_;
  std::unique_ptr<DiskClaim> claim_;
  StateStorage storage_;
  KeptState kept_;
  bool begun_ = false;

  std::mutex queueMutex_;
  std::vector<Waiting*> queue_;
  std::mutex appending_;   // held by the one that appends and applies
  std::mutex compacting_;  // taken before `appending_`
  std::uint64_t nextCompaction_ = 0;
};

/// Where the state of "--state" lies: the file itself, or "lamp-controller.xml" in a folder (one
/// that exists, or a name that ends with a separator).
std::filesystem::path stateFileOf(const std::string& option);

/// The folder for firmware and reports that belongs to a state file: its own folder for a state in
/// a folder, else the file's name with ".d" behind.
std::filesystem::path dataFolderOf(const std::string& option);

}  // namespace lamp::controller
