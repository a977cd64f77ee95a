#include "workbench/configuration_store.h"

#include <utility>

#include "host/services/files.h"
#include "host/services/setup.h"

namespace workbench {
namespace {

const host::XmlName Root("configuration");
constexpr const char* Parts[] = {"commSystem", "deviceGroups", "viewSetups"};

}  // namespace

bool ConfigurationStore::open(std::string& cause) {
  if (!host::fileSystem().exists(folder_)) {
    std::string why;
    if (!host::fileSystem().makeFolder(folder_, why)) {
      cause = "can't make the folder \"" + folder_.string() + "\": " + why;
      return false;
    }
  }
  XmlDocument content;
  if (host::fileSystem().exists(file())) {
    host::XmlError error;
    if (!content.Load(file(), &error)) {
      cause = "the configuration \"" + file().string() + "\" can't be read: " + error.text() +
              ". Correct the file or put \"" + host::keptCopy(file()).filename().string() +
              "\" in its place";
      return false;
    }
    if (content.Root()->Tag() != Root.text()) {
      cause = "\"" + file().string() + "\" is no configuration: its root element is \"" +
              std::string(content.Root()->Tag()) + "\", not \"configuration\"";
      return false;
    }
  } else {
    content.Create(Root);
  }
  for (const char* part : Parts)
    if (content.Root()->Node(part) == nullptr) content.Root()->NewChild(part);
  XCMainCfg::Get().Document() = std::move(content);
  onDisk_ = text();
  loaded_ = true;
  lock_.take(folder_ / "configuration.lock", patience_);
  return true;
}

std::string ConfigurationStore::text() const {
  return XCMainCfg::Get().Document().ToString(XmlDocument::Layout::indented);
}

std::string ConfigurationStore::readOnlyReason() const {
  if (!isReadOnly()) return {};
  return "the configuration in \"" + folder_.string() + "\" can only be read: " + lock_.problem();
}

bool ConfigurationStore::saveIfDifferent(std::string& cause) {
  if (!loaded_) {
    cause = "no configuration is open";
    return false;
  }
  std::string now = text();
  if (now == onDisk_) return true;
  if (isReadOnly()) {
    cause = readOnlyReason();
    return false;
  }
  if (!host::saveWhole(file(), now, cause)) return false;
  onDisk_ = std::move(now);
  return true;
}

}  // namespace workbench
