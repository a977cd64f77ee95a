#pragma once

#include "device/group_configuration.h"
#include "host/dialogs/device_cfg.h"

/// Updates the child devices of a lamp manager from the controller's present node list, each time
/// one of its two buttons is pressed. It reads nothing before it is shown.
class XCUpdateNodesZelLampManager : public XCBaseDeviceCfg {
 public:
  /// The buttons. The controller is told which one asked; what it answers is treated alike.
  static constexpr int SyncButton = 6593;
  static constexpr int AsyncButton = 6594;

  /// @p driver and @p device, the element in the main configuration, are not null and not owned.
  XCUpdateNodesZelLampManager(CWnd* parent, XCDriver* driver, XmlDocument::XmlNode* device);

  static host::DialogTemplate Template();

  int DoModal() override;
  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

  /// Reads the node list as the button asks for it and rebuilds the child devices from it. A
  /// failure is shown and leaves them as they were. Works without the dialog being shown.
  void updateNodes(int buttonId);

 private:
  lamp::GroupConfiguration groups_;
};
