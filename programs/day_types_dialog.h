#pragma once

#include "host/dialogs/base_dlg.h"
#include "host/xml/xml_document.h"
#include "programs/program_fields.h"

/// The dimming programs of a calendar's ten day types.
class XCDeviceCalendarDayTypesZelLAMPManager : public XCBaseDlg, public host::EditedPage {
 public:
  using Node = XmlDocument::XmlNode;

  /// @p days is the calendar's element with the day types; it is replaced on OK when a program was
  /// changed, or completed. It must outlive the dialog.
  XCDeviceCalendarDayTypesZelLAMPManager(CWnd* parent, Node* days, lamp::ProgramKind kind);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable(lamp::ProgramKind kind);

  bool OnInitDialog() override;
  void OnOK() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;
  host::EditedPage* Edits() override { return this; }

  const host::PageDescription& Description() const override { return PageTable(kind_); }
  const Node* Untouched() const override { return programsBefore_.Root(); }
  const Node* Edited() override;
  void Refresh() override;

 private:
  void OnSelectionChanged();
  void OnFieldChanged(int editId);
  void OnWriteBack(int editId) { fields_.writeBack(editId); }
  void fillList();

  Node* days_;
  lamp::ProgramKind kind_;
  XmlDocument working_;
  XmlDocument untouched_;
  XmlDocument programsBefore_;  // of both, the programs alone
  XmlDocument programsNow_;
  lamp::ProgramFields fields_;
  /// Clear only while the fields are filled from the selection.
  bool guard_ = true;
};
