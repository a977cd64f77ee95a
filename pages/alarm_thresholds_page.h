#pragma once

#include "pages/binding/date_field.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/settings_page.h"
#include "pages/binding/working_copy.h"

/// The thresholds at which nodes raise alarms about their lamps. Nodes come in two generations,
/// told apart by their firmware, with a list and edits each; both go back in one section with one
/// activation date. The values are the controller's to judge.
class CDlgE07CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE07CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 protected:
  bool Write() override;

 private:
  void OnOldSelectionChanged() { oldRows_.selectionChanged(); }
  void OnNewSelectionChanged() { newRows_.selectionChanged(); }
  void OnOldEditChanged(int editId) { oldRows_.editChanged(editId); }
  void OnNewEditChanged(int editId) { newRows_.editChanged(editId); }
  bool hasOldNodes() const { return oldRows_.list().rowCount() > 0; }
  void fillLists();
  void showCaptions();
  void hideOldNodes();

  lamp::WorkingCopy copy_;
  lamp::RowEditor oldRows_;
  lamp::RowEditor newRows_;
  lamp::DateField activation_;
};
