#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "controller/delivery/courier.h"
#include "controller/model/civil_time.h"

namespace lamp::controller {

/// Sends the files of a folder: by FTP, by mail, or both, as the settings say. A file that arrived
/// everywhere is removed; one whose tries are used up goes to the folder "failed" inside. The first
/// try comes at once, the others with the pause between them.
class Outbox {
 public:
  /// The courier must outlive the outbox.
  Outbox(std::filesystem::path folder, Courier& courier)
      : folder_(std::move(folder)), courier_(courier) {}

  /// Tries every file whose time has come. Answers one line of text for each try that failed.
  std::vector<std::string> work(const DeliverySettings& settings, Moment now);

 private:
  struct Progress {
    int tries = 0;
    bool uploaded = false;
    bool mailed = false;
    Moment next;
  };
  std::string tryOnce(const DeliverySettings& settings, const std::filesystem::path& file,
                      Progress& progress);
  void giveUp(const std::filesystem::path& file);

  const std::filesystem::path folder_;
  Courier& courier_;
  std::map<std::string, Progress> progress_;
};

}  // namespace lamp::controller
