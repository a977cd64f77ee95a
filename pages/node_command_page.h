#pragma once

#include "pages/binding/date_field.h"
#include "pages/binding/settings_page.h"

/// Sends a command that names the selected nodes of the controller's table. The selection is all
/// that the page takes.
class CDlgE11CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE11CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 protected:
  bool Write() override;

 private:
  void OnSelectionChanged();

  XmlDocument nodes_;  // the reply, which the list shows
  lamp::DateField activation_;
};
