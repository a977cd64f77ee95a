#pragma once

#include <filesystem>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "programs/dimming_program.h"

/// Lists the stored calendars and lets one be chosen that fits the controller.
class XCDeviceCalendarSelectionZelLAMPManager : public XCBaseDlg {
 public:
  /// @p kind is that of the controller's calendars.
  XCDeviceCalendarSelectionZelLAMPManager(CWnd* parent, lamp::ProgramKind kind);

  static host::DialogTemplate Template();

  /// The chosen calendar's name and file, after IDOK.
  const XCBasicString& CalendarName() const { return name_; }
  const std::filesystem::path& CalendarFile() const { return file_; }

  bool OnInitDialog() override;
  void OnOK() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 private:
  void OnSelectionChanged();
  void OnDoubleClick();
  void fillList();

  lamp::ProgramKind kind_;
  XmlDocument rows_{"files"};  // an element for each row, which knows the number of its file
  std::vector<std::filesystem::path> files_;
  XCBasicString name_;
  std::filesystem::path file_;
};
