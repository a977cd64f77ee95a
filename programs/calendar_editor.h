#pragma once

#include <filesystem>

#include "host/dialogs/base_dlg.h"
#include "host/services/drivers.h"
#include "programs/calendar_document.h"
#include "programs/year_view.h"

/// The calendar of a controller: paints day types onto the days of the coming twelve months, opens
/// and saves calendars of the store, and on OK names the calendar in the controller's device
/// element. It never talks to the controller.
class XCDeviceCalendarZelLAMPManager : public XCBaseDlg {
 public:
  /// @p device is the controller's element of the configuration, @p kind that of its programs:
  /// clock programs for a controller with an input/output module. Both pointers must outlive the
  /// dialog.
  XCDeviceCalendarZelLAMPManager(CWnd* parent, XCDriver* driver, XmlDocument::XmlNode* device,
                                 lamp::ProgramKind kind);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  void OnOK() override;
  void DoDataExchange(CDataExchange* exchange) override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 private:
  void OnDayTypeChosen();
  void OnFastSelection();
  void OnDayTypes();
  void OnLoad();
  void OnSave() { SaveAs(); }

  void openNamedCalendar();
  bool load(const XCBasicString& name);
  bool SaveAs();
  bool mayWrite(const std::filesystem::path& file);
  bool write(const std::filesystem::path& file, const XCBasicString& name);
  void settle();
  void enableLoad(bool enabled);
  void setCurrentName(const XCBasicString& name);

  XCDriver* driver_;
  XmlDocument::XmlNode* device_;
  lamp::ProgramKind kind_;
  lamp::CalendarDocument calendar_;
  lamp::YearView year_;
  /// The type that clicks paint, bound to the radio buttons.
  int selectedDayType_ = 0;
  XCBasicString openingName_;
  XCBasicString currentName_;
  bool savedWhileOpen_ = false;
};
