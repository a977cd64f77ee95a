#pragma once

#include <bitset>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "host/export.h"
#include "host/text/basic_string.h"
#include "host/xml/xml_document.h"

/// The host's setup: where things lie and how driver types are called.
class HOST_API XCVarnisSetup {
 public:
  static XCVarnisSetup& Get();

  /// The folder of the configuration, with a separator behind it.
  XCBasicString ConfigurationPath() const;
  void SetConfigurationPath(std::filesystem::path folder) { configuration_ = std::move(folder); }
  const std::filesystem::path& ConfigurationFolder() const { return configuration_; }

  /// The path of a file in the image folder.
  XCBasicString getImageFilePath(std::u16string_view file) const;
  void SetImageFolder(std::filesystem::path folder) { images_ = std::move(folder); }
  const std::filesystem::path& ImageFolder() const { return images_; }

  /// The display name of a driver type, the type itself when it is not in the catalogue.
  XCBasicString DriverName(std::u16string_view type) const;
  /// The small image of a driver type; one that fits every device for a type without its own.
  std::string DriverImage(std::u16string_view type) const;
  /// The image that stands for the program.
  std::string ProgramIDResource() const { return "program-icon.png"; }

 private:
  std::filesystem::path configuration_;
  std::filesystem::path images_;
};

/// Marks what changed for other parts of the host.
class HOST_API XCVarnisGuids {
 public:
  /// The entry for the configuration of devices.
  static constexpr std::size_t DeviceConfiguration = 22;

  static XCVarnisGuids& Get();
  /// Marks an entry, 0 to 63, as no longer up to date.
  void Invalidate(std::size_t entry) { invalid_.set(entry); }
  bool IsInvalid(std::size_t entry) const { return invalid_.test(entry); }
  void Validate(std::size_t entry) { invalid_.reset(entry); }

 private:
  std::bitset<64> invalid_;
};

/// The host's main configuration: the communication systems with their devices, the device groups
/// and the view setups.
class HOST_API XCMainCfg {
 public:
  static XCMainCfg& Get();

  XmlDocument& Document() { return document_; }
  XmlDocument::XmlNode* Root() { return document_.Root(); }

  /// The device element with an id, none when there is none.
  XmlDocument::XmlNode* DeviceNode(std::u16string_view deviceId);
  /// The view setup of a driver, none when there is none.
  XmlDocument::XmlNode* ViewSetup(std::u16string_view driverId);

  /// Tells the program that the configuration was changed by a plug-in.
  void NotifyChanged();
  void SetChangeListener(std::function<void()> listener) { listener_ = std::move(listener); }

 private:
  XmlDocument document_;
  std::function<void()> listener_;
};

namespace host {

/// The device types that share the space of addresses and ports with the lamp manager: they reach
/// their devices over the same network.
HOST_API bool sharesAddressSpace(std::u16string_view driverType);

}  // namespace host
