#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/services/drivers.h"
#include "host/xml/xml_holder.h"

/// The base of pages that configure a controller: it reads the page's document before the page is
/// shown and writes it when the page asks.
class HOST_API XCBaseDeviceCfg : public XCBaseDlg {
 public:
  /// @p device is the driver's element of the configuration; when null it is the one of the page
  /// in front of which this one is shown, or the configuration's. Neither is owned.
  XCBaseDeviceCfg(int templateNumber, XCDriver* driver, CWnd* parent,
                  XmlDocument::XmlNode* device = nullptr);

  /// Reads the document that the page prepared. When that fails, shows why (nothing when the user
  /// cancelled) and answers IDCANCEL without showing the page.
  int DoModal() override;

  /// Sends the page's document. A failure is shown with Retry and Cancel; false after Cancel. A
  /// write that the user cancelled shows nothing and returns false.
  bool writeCfg(bool wait);

  /// driver, type, identifier, address, socket, ftpAddress, ftpPort, ftpUser and ftpPassword from
  /// the device's element, an empty port with its default.
  bool addUriParams(XCBasicString& uri, bool first) override;

  /// The device's element in the configuration, null where it has none. Not owned.
  XmlDocument::XmlNode* Device() const { return device_; }

 protected:
  /// Shows the page without reading anything.
  int ShowModal() { return XCBaseDlg::DoModal(); }

  XmlDocument& Document() { return document_; }
  XCDriver& Driver() const { return *driver_; }

 private:
  XmlDocument document_;
  XCDriver* driver_;
  host::XmlAnchor device_;
};
