// The two operations of the device definition that ask the controller who it is.

#include "device/device_definition_dialog.h"
#include "device/device_element.h"
#include "exchange/exchange_frame.h"

namespace config = lamp::config;
using lamp::device_control::Identifier;

namespace {

const host::XmlName Main("main");

int number(lamp::Command command) {
  return static_cast<int>(command);
}

// Tells a controller that moves its new address or port, whichever of them is new.
void makeAddressChange(XmlDocument& request, const XmlDocument::XmlNode& device,
                       const XCBasicString& address, const XCBasicString& port) {
  XmlDocument::XmlNode& change = request.Create(Main).NewChild(lamp::section::GeneralWrite);
  lamp::putIfChanged(change, lamp::attribute::ControllerAddress, address,
                     device.Value(config::Address));
  lamp::putIfChanged(change, lamp::attribute::WebServicePort, port, device.Value(config::Socket));
}

}  // namespace

bool XCDlgNewModifyZelLampManager::SearchDevice(const XCBasicString& address,
                                                const XCBasicString& port,
                                                XCBasicString& identifier) {
  XmlDocument reply;
  if (!getCommand(number(lamp::Command::identify), &reply, true)) return false;
  const bool moving = isExisting_ && (address != device_->Value(config::Address) ||
                                      port != device_->Value(config::Socket));
  if (moving) {
    XmlDocument request;
    makeAddressChange(request, *device_, address, port);
    return putCommand(number(lamp::Command::searchWrite), &request, false);
  }
  if (!identifier.IsEmpty()) return true;
  if (!ShowIdentifier(reply)) return false;
  identifier = GetDlgItemText(Identifier);
  return true;
}

bool XCDlgNewModifyZelLampManager::SearchIdDevice() {
  if (!GetDlgItemText(Identifier).IsEmpty()) return true;
  XmlDocument reply;
  if (getCommand(number(lamp::Command::identify), &reply, true)) return ShowIdentifier(reply);
  if (!getErrorMsg().IsEmpty()) MessageBox(getErrorMsg());
  return false;
}

// Puts the controller's identifier, as far as the edit takes it, into the edit. A reply without one
// is told to the user.
bool XCDlgNewModifyZelLampManager::ShowIdentifier(const XmlDocument& reply) {
  const XmlDocument::XmlNode* root = reply.Root();
  const auto* controller = root ? root->Node(lamp::element::ZelLamp.text()) : nullptr;
  if (controller == nullptr) {
    MessageBox(host::TextId::IdentifierNotReceived);
    return false;
  }
  SetDlgItemText(Identifier, lamp::cutAt(controller->getAttribute(lamp::attribute::Id),
                                         Edit(Identifier).limit()));
  return true;
}
