#pragma once

#include "host/xml/xml_document.h"

namespace lamp {

/// The configuration that takes the group of a device while a dialog over the device is open. A
/// device that is removed meanwhile, under its dialog, gets no group any more: nothing would take
/// the group away again. A new device, which joins the configuration later, gets one.
class GroupConfiguration {
 public:
  /// @p device must stay in memory as long as this; @p configuration may be null.
  GroupConfiguration(const XmlDocument::XmlNode& device, XmlDocument::XmlNode* configuration)
      : device_(device), configuration_(configuration), stoodThere_(standsThere()) {}

  /// The configuration; none when there is none, or when the device was removed from it.
  XmlDocument::XmlNode* get() const {
    return stoodThere_ && !standsThere() ? nullptr : configuration_;
  }

 private:
  bool standsThere() const {
    const XmlDocument::XmlNode* at = &device_;
    while (at != nullptr && at != configuration_) at = at->Parent();
    return at != nullptr;
  }

  const XmlDocument::XmlNode& device_;
  XmlDocument::XmlNode* configuration_;
  bool stoodThere_;
};

}  // namespace lamp
