#include "controller/delivery/outbox.h"

#include <algorithm>

namespace lamp::controller {
namespace fs = std::filesystem;

namespace {

constexpr const char* kFailed = "failed";

// Oldest first: names begin with the moment. Files that are still being written end with six
// characters behind a dot and are passed over.
std::vector<fs::path> filesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    const std::string ending = entry.path().extension();
    if (entry.is_regular_file(error) && (ending == ".xml" || ending == ".csv")) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

}  // namespace

std::string Outbox::tryOnce(const DeliverySettings& settings, const fs::path& file,
                            Progress& progress) {
  std::string fault;
  if (settings.byFtp && !progress.uploaded) {
    fault = courier_.upload(settings, file);
    progress.uploaded = fault.empty();
  }
  if (settings.byMail && !progress.mailed) {
    const std::string mailFault = courier_.mail(settings, file);
    progress.mailed = mailFault.empty();
    if (!mailFault.empty()) fault += (fault.empty() ? "" : "; ") + mailFault;
  }
  return fault;
}

void Outbox::giveUp(const fs::path& file) {
  std::error_code error;
  fs::create_directories(folder_ / kFailed, error);
  fs::rename(file, folder_ / kFailed / file.filename(), error);
}

void Outbox::workOn(const DeliverySettings& settings, const fs::path& file, Moment now,
                    std::vector<std::string>& faults) {
  if (!settings.byFtp && !settings.byMail) return;
  Progress& progress = progress_[file.filename()];
  // A clock that was set back since must not make the pause any longer.
  const bool pausing = now < progress.next && progress.next - now <= settings.pause;
  if (progress.tries > 0 && pausing) return;
  const std::string fault = tryOnce(settings, file, progress);
  ++progress.tries;
  progress.next = now + settings.pause;
  if (!fault.empty()) faults.push_back(file.filename().string() + ": " + fault);
  const bool usedUp = progress.tries > settings.retries;
  if (!fault.empty() && !usedUp) return;
  std::error_code error;
  if (fault.empty()) fs::remove(file, error);
  if (!fault.empty()) giveUp(file);
  progress_.erase(file.filename());
}

std::vector<std::string> Outbox::work(const SettingsSource& settings, Moment now) {
  std::vector<std::string> faults;
  for (const fs::path& file : filesOf(folder_)) workOn(settings(), file, now, faults);
  return faults;
}

}  // namespace lamp::controller
