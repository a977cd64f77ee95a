#pragma once

#include "pages/binding/row_editor.h"
#include "pages/binding/settings_page.h"
#include "pages/binding/working_copy.h"

/// The controller's node table: reference and position of one lamp node or of many at once. The
/// whole section goes back, with what the page does not know.
class CDlgE04CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE04CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 protected:
  bool Validate() override;
  bool Write() override;

 private:
  void OnSelectionChanged() { rows_.selectionChanged(); }
  void OnEditChanged(int editId) { rows_.editChanged(editId); }
  bool refuse(std::size_t row, host::TextId message, int editId);

  lamp::WorkingCopy copy_;
  lamp::RowEditor rows_;
};
