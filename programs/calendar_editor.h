#pragma once

#include <filesystem>
#include <optional>

#include "host/dialogs/base_dlg.h"
#include "host/services/drivers.h"
#include "programs/edited_calendar.h"

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
  static const host::PageDescription& PageTable(lamp::ProgramKind kind);

  bool OnInitDialog() override;
  void OnOK() override;
  void DoDataExchange(CDataExchange* exchange) override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;
  host::EditedPage* Edits() override { return &calendar_; }

 private:
  void OnDayTypeChosen();
  void OnFastSelection();
  void OnDayTypes();
  void OnLoad();
  void OnSave() { SaveAs(); }

  void openNamedCalendar();
  bool load(const XCBasicString& name, const std::optional<std::filesystem::path>& file);
  bool SaveAs();
  bool write(const lamp::CalendarTarget& target);
  void enableLoad(bool enabled);
  void showName();

  XCDriver* driver_;
  lamp::ProgramKind kind_;
  lamp::EditedCalendar calendar_;
  /// The type that clicks paint, bound to the radio buttons.
  int selectedDayType_ = 0;
  bool savedWhileOpen_ = false;
};
