#pragma once

#include <filesystem>
#include <functional>
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

  /// The settings in force at the moment of asking.
  using SettingsSource = std::function<DeliverySettings()>;

  /// Tries every file whose time has come, each by the settings that are in force then: a server
  /// that does not answer may take its time. Answers one line of text for each try that failed.
  std::vector<std::string> work(const SettingsSource& settings, Moment now);

 private:
  struct Progress {
    int tries = 0;
    bool uploaded = false;
    bool mailed = false;
    Moment next;
  };
  void workOn(const DeliverySettings& settings, const std::filesystem::path& file, Moment now,
              std::vector<std::string>& faults);
  std::string tryOnce(const DeliverySettings& settings, const std::filesystem::path& file,
                      Progress& progress);
  void giveUp(const std::filesystem::path& file);

  const std::filesystem::path folder_;
  Courier& courier_;
  std::map<std::string, Progress> progress_;
};

}  // namespace lamp::controller
