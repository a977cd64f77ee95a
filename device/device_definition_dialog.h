#pragma once

#include "device/device_fields.h"
#include "device/group_configuration.h"
#include "exchange/export.h"
#include "host/dialogs/base_dlg.h"
#include "host/xml/xml_holder.h"

/// The definition of a lamp manager in the host's configuration: how it is called and how its
/// controller is reached. On OK it checks the values, verifies the controller when communication
/// changed, turns the controller's nodes into child devices when there are none yet, and writes the
/// device's element.
class ZEL_EXPORT XCDlgNewModifyZelLampManager : public XCBaseDlg {
 public:
  /// @p device is the device's element, not null; a device without a name is a new one.
  /// @p configuration is the root of the configuration, whose child `commSystem` holds the
  /// devices. Neither is owned, and both must outlive the dialog.
  XCDlgNewModifyZelLampManager(CWnd* parent, XmlDocument::XmlNode* device,
                               XmlDocument::XmlNode* configuration);
  ~XCDlgNewModifyZelLampManager() override;

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  void OnOK() override;
  /// Counts as OK when the controller's communication settings were changed meanwhile: the element
  /// of an existing device may hold a new address.
  void OnCancel() override;
  /// Opens the controller's communication settings and takes a new address and port over.
  void OnComAdvancedCfg();
  const host::MessageMap* GetMessageMap() const override;
  void DoDataExchange(CDataExchange* exchange) override;
  void Layout() override;

  /// Checks the values; shows what is wrong with the first bad one and puts the focus there.
  /// @p ftpPort is 0 for an empty one.
  bool IsValid(const XCBasicString& name, const XCBasicString& address, const XCBasicString& socket,
               const XCBasicString& ftpAddress, int ftpPort);
  /// Whether a value differs from the device's element; notes whether one of the seven values of
  /// the communication does.
  bool HasChanged(const XCBasicString& name, const XCBasicString& description,
                  const XCBasicString& identifier, const XCBasicString& address,
                  const XCBasicString& socket, const XCBasicString& ftpAddress,
                  const XCBasicString& ftpPort, const XCBasicString& ftpUser,
                  const XCBasicString& ftpPassword);
  /// Whether the host wants the connection verified.
  bool NeedCheckComm() const;

  /// Reads a section of the configuration; false after a failure, which is shown.
  bool ReadCfg(XmlDocument& document);
  /// Reads the controller's node list; false after a failure, which is shown unless the user
  /// cancelled.
  bool ReadNodesFile(XmlDocument& document);

  /// Verifies that the controller answers. The changed address or port of an existing device is
  /// sent to it; otherwise an empty @p identifier is filled with the controller's own. Command
  /// failures are left to the caller to show.
  bool SearchDevice(const XCBasicString& address, const XCBasicString& port,
                    XCBasicString& identifier);
  /// Fills an empty identifier edit with the controller's own; false after a failure.
  bool SearchIdDevice();

  /// driver and type of the device, and the seven values of the communication as they are typed.
  bool addUriParams(XCBasicString& uri, bool first) override;

  /// Rebuilds the child devices of @p device and the group that lists them from the node list in
  /// @p nodes; see lamp::rebuildChildDevices. A list that is none is refused with a message. With
  /// @p notify the success is shown and told to the configuration and to the main window.
  static bool UpdateChildDevices(XmlDocument* nodes, XmlDocument::XmlNode* device, bool notify,
                                 XCBasicString groupName, XmlDocument::XmlNode* configuration);

 private:
  bool NeedsChildDevices() const;
  bool FetchChildDevices();
  bool AskWithoutNodes();
  bool VerifyConnection(bool& reached);
  void CloseUnchanged();
  void TakeOver(const XmlDocument::XmlNode& written, host::XmlName attribute, int editId,
                host::XmlName child);
  bool ShowIdentifier(const XmlDocument& reply);

  host::XmlAnchor device_;
  host::XmlAnchor configuration_;
  lamp::GroupConfiguration groups_;
  lamp::DeviceValues values_;
  bool isExisting_ = true;
  bool commChanged_ = false;
  bool advancedApplied_ = false;
};
