#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/services/services.h"
#include "workbench/configuration_store.h"
#include "workbench/device_actions.h"
#include "workbench/device_catalogue.h"
#include "workbench/group_actions.h"
#include "workbench/http_command_channel.h"
#include "workbench/plugin_loader.h"
#include "workbench/program_paths.h"
#include "workbench/send_log.h"
#include "workbench/system_services.h"
#include "workbench/wire/exchange_record.h"

namespace workbench {

/// How a program is started.
struct WorkspaceOptions {
  std::filesystem::path configuration;   ///< the folder of the configuration
  std::filesystem::path plugin;          ///< empty for the one that belongs to the program
  std::filesystem::path state;           ///< folder of the person's own records, empty for none
  std::string program = "lamp-manager";  ///< how the records name the program
  std::string language = "en";
  std::optional<XCDateTime> now;                     ///< stops the clock at a moment
  std::optional<std::chrono::seconds> answerWithin;  ///< how long an exchange may take
  bool verifyNew = true;
  bool verifyExisting = true;
};

/// Everything that a program needs to work on one configuration: texts, services, configuration,
/// plug-in. One exists in a process; it outlives every dialog.
class Workspace {
 public:
  Workspace(const ProgramPaths& paths, WorkspaceOptions options);
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  ~Workspace();

  /// Loads the texts, installs the services with @p frontEnd, which must outlive this object,
  /// opens the configuration and loads the plug-in. False with a cause when one of them fails.
  bool open(host::FrontEnd& frontEnd, std::string& cause);
  /// Whether open() failed because of the configuration. With the version before, where
  /// store().keptCopyOpens(), openKeptCopy() goes on from there.
  bool isConfigurationRefused() const { return configurationRefused_; }
  bool openKeptCopy(std::string& cause);

  ConfigurationStore& store() { return store_; }
  const ConfigurationStore& store() const { return store_; }
  DeviceCatalogue& catalogue() { return catalogue_; }
  DeviceActions& actions() { return actions_; }
  GroupActions& groups() { return groups_; }
  HttpCommandChannel& channel() { return channel_; }
  ExchangeRecord& record() { return record_; }
  /// What puts sends on record; null without a state folder.
  SendLog* log() { return log_.get(); }
  /// The certificates that the person trusts; null without a state folder.
  const TrustedCertificates* trust() const { return trust_.get(); }
  VerificationSettings& settings() { return settings_; }

 private:
  ProgramPaths paths_;
  WorkspaceOptions options_;
  SystemClock clock_;
  RandomIds ids_;
  VerificationSettings settings_;
  HttpCommandChannel channel_;
  ExchangeRecord record_{channel_};
  std::unique_ptr<SendLog> log_;
  std::unique_ptr<TrustedCertificates> trust_;
  ConfigurationStore store_;
  DeviceCatalogue catalogue_;
  DeviceActions actions_{store_, catalogue_};
  GroupActions groups_{store_};
  Plugin plugin_;
  bool configurationRefused_ = false;
};

}  // namespace workbench
