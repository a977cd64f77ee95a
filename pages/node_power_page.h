#pragma once

#include "pages/binding/date_field.h"
#include "pages/binding/row_editor.h"
#include "pages/binding/settings_page.h"
#include "pages/binding/working_copy.h"

/// The power of single nodes and how long each holds it, for one node or for many at once, with one
/// activation date for all of them.
class CDlgE05CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE05CfgZelLampManager(XCDriver* driver, CWnd* parent);

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
  bool refuse(std::size_t row, int editId, std::u16string_view message);

  lamp::WorkingCopy copy_;
  lamp::RowEditor rows_;
  lamp::DateField activation_;
};
