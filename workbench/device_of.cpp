#include "workbench/device_of.h"

#include "host/dialogs/base_dlg.h"
#include "workbench/command_address.h"
#include "workbench/device_catalogue.h"
#include "workbench/wire/uri_parameters.h"

namespace workbench {
namespace {

constexpr std::string_view DefaultPort = "8080";

}  // namespace

DeviceName deviceOf(std::string_view parameters) {
  const std::string address = parameterValue(parameters, "address");
  const std::string socket = parameterValue(parameters, "socket");
  const std::string identifier = parameterValue(parameters, "identifier");
  const XmlDocument::XmlNode* found = nullptr;
  for (const XmlDocument::XmlNode* device : DeviceCatalogue::devices()) {
    const std::string port = device->Value("socket").ToUtf8();
    if (device->Value("address").ToUtf8() != address ||
        (port.empty() ? DefaultPort : port) != socket)
      continue;
    const bool exact = device->Value("identifier").ToUtf8() == identifier;
    if (found == nullptr || exact) found = device;
    if (exact) break;
  }
  DeviceName name{.id = {}, .name = {}, .address = commandAddress(parameters).shown.ToUtf8()};
  if (found != nullptr) {
    name.id = found->Value("id").ToUtf8();
    name.name = found->Value("name").ToUtf8();
  }
  return name;
}

std::string addressOf(const XmlDocument::XmlNode& device) {
  XCBasicString parameters;
  const XCBasicString port = device.Value("socket");
  XCBaseDlg::addUriParam(parameters, u"address", device.Value("address"), true);
  XCBaseDlg::addUriParam(parameters, u"socket", port.IsEmpty() ? XCBasicString(u"8080") : port,
                         false);
  return commandAddress(parameters.ToUtf8()).shown.ToUtf8();
}

}  // namespace workbench
