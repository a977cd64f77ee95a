#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/xml/xml_document.h"
#include "programs/program_fields.h"

/// The dimming programs of a calendar's ten day types.
class XCDeviceCalendarDayTypesZelLAMPManager : public XCBaseDlg {
 public:
  /// @p days is the calendar's element with the day types; it is replaced on OK when a program was
  /// changed, or completed. It must outlive the dialog.
  XCDeviceCalendarDayTypesZelLAMPManager(CWnd* parent, XmlDocument::XmlNode* days,
                                         lamp::ProgramKind kind);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  void OnOK() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 private:
  void OnSelectionChanged();
  void OnFieldChanged(int editId);
  void OnWriteBack(int editId) { fields_.writeBack(editId); }
  void fillList();

  XmlDocument::XmlNode* days_;
  lamp::ProgramKind kind_;
  XmlDocument working_;
  XmlDocument untouched_;
  lamp::ProgramFields fields_;
  /// Clear only while the fields are filled from the selection.
  bool guard_ = true;
};
