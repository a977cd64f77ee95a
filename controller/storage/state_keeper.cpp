#include "controller/storage/state_keeper.h"

#include <algorithm>
#include <new>

namespace lamp::controller {
namespace fs = std::filesystem;

namespace {

constexpr const char* kFileInFolder = "lamp-controller.xml";
// A journal that is shorter than this is never worth a writing of the state.
constexpr std::uint64_t kShortJournal = 1024UL * 1024UL;

bool namesFolder(const std::string& option) {
  std::error_code ignored;
  return option.ends_with('/') || fs::is_directory(option, ignored);
}

}  // namespace

StateKeeper::StateKeeper(Controller& controller, fs::path file, Disk& disk)
    : controller_(controller), disk_(disk), file_(std::move(file)), storage_(disk_, file_) {}

StateKeeper::~StateKeeper() {
  if (begun_) controller_.setChangeLog(nullptr);
}

std::string StateKeeper::restore(bool& found) {
  found = false;
  if (file_.empty()) return "";
  std::string fault;
  claim_ = disk_.claim(file_.string() + ".lock", fault);
  if (!claim_) return fault;
  fault = storage_.load(kept_);
  if (!fault.empty()) return fault;
  found = kept_.found;
  if (!found) return "";
  fault = controller_.loadState(kept_.state);
  if (!fault.empty()) return file_.string() + ": " + fault;
  std::size_t number = 0;
  for (const std::string_view change : kept_.journal.changes) {
    ++number;
    fault = controller_.replay(change);
    if (!fault.empty()) {
      return "the change " + std::to_string(number) + " after " + file_.string() +
             " does not fit: " + fault;
    }
  }
  return "";
}

std::string StateKeeper::begin() {
  if (file_.empty()) return "";
  std::string fault = storage_.resume(kept_);
  kept_.state = std::string();
  kept_.journal.changes = {};
  kept_.journal.contents.clear();
  if (fault.empty() && !storage_.hasJournal()) fault = compact();
  begun_ = fault.empty();
  if (begun_) controller_.setChangeLog(this);
  return fault;
}

std::string StateKeeper::commit(std::string record, const std::function<void()>& apply) {
  Waiting own{std::move(record), &apply, false, ""};
  {
    const std::lock_guard lock(queueMutex_);
    queue_.push_back(&own);
  }
  // Whoever comes first works for all that wait; the others find their work done.
  const std::lock_guard working(appending_);
  if (!own.done) {
    std::vector<Waiting*> batch;
    {
      const std::lock_guard lock(queueMutex_);
      batch.swap(queue_);
    }
    carryOut(batch);
  }
  return own.fault;
}

std::string StateKeeper::append(const std::vector<Waiting*>& batch) {
  if (batch.size() == 1) return storage_.append(batch[0]->record);
  std::string records;
  for (const Waiting* waiting : batch) records += waiting->record;
  return storage_.append(records);
}

// A change that is on the disk and can't take effect would leave memory and disk in two states, of
// which the one on the disk is right: the program ends then.
void StateKeeper::carryOut(const std::vector<Waiting*>& batch) noexcept {
  std::string fault;
  try {
    fault = append(batch);
  } catch (const std::bad_alloc&) {
    fault = "there is not enough memory";
  }
  for (Waiting* waiting : batch) {
    if (fault.empty()) (*waiting->apply)();
    waiting->fault = fault;
    waiting->done = true;
  }
}

std::string StateKeeper::compactWhenDue() {
  if (!begun_ || storage_.journalBytes() < nextCompaction_ ||
      storage_.journalBytes() < std::max(storage_.stateBytes(), kShortJournal)) {
    return "";
  }
  std::string fault = compact();
  // A disk that is full is not asked again at once.
  nextCompaction_ =
      fault.empty() ? 0 : storage_.journalBytes() + std::max(storage_.stateBytes(), kShortJournal);
  return fault;
}

std::string StateKeeper::compact() {
  if (file_.empty()) return "";
  const std::lock_guard compacting(compacting_);
  std::string state;
  JournalName journal;
  {
    const std::lock_guard still(appending_);
    // The whole state no longer tells of commands that have something left to do.
    if (std::string fault = controller_.finishFiles(); !fault.empty()) return fault;
    if (std::string fault = storage_.beginJournal(); !fault.empty()) return fault;
    journal = storage_.journal();
    controller_.printState(state);
  }
  return storage_.writeState(state, journal);
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
