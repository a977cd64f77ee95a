#pragma once

#include "pages/binding/date_field.h"
#include "pages/binding/settings_page.h"
#include "pages/binding/working_copy.h"

/// Removes nodes from the controller's table: it lists those that carry a reference, takes
/// reference and position away from the chosen ones, and sends the nodes that are left without a
/// reference.
class CDlgE08CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE08CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 protected:
  bool Write() override;

 private:
  void OnRemove();
  void OnKey(host::Key key);
  void fill(std::size_t selectedRow);

  lamp::WorkingCopy copy_;
  lamp::DateField activation_;
};
