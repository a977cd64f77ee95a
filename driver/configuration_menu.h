#pragma once

#include "host/dialogs/device_cfg.h"

/// The entry screen of a controller's configuration: it reads the general section once, shows who
/// the controller is, and opens the settings pages. It sends nothing itself.
class XCDeviceCfgZelLampManager : public XCBaseDeviceCfg {
 public:
  XCDeviceCfgZelLampManager(CWnd* parent, XCDriver* driver, XmlDocument::XmlNode* device);

  static host::DialogTemplate Template();

  int DoModal() override;
  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

  XCDriver* PageDriver() const { return &Driver(); }
  XmlDocument::XmlNode* PageDevice() const { return Device(); }
  /// Whether the controller reports its inputs. It decides the kind of programs and calendars.
  bool InputsDetected() const { return inputsDetected_; }
  /// Notes that the calendar editor ended with OK.
  void SetCalendarChanged() { calendarChanged_ = 1; }
  int CalendarChanged() const { return calendarChanged_; }

 private:
  void OnPage(int buttonId);
  void ShowIdentity();
  void ApplyInputsRule();

  bool inputsDetected_ = false;
  int calendarChanged_ = 0;
};
