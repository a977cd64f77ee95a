#pragma once

#include "pages/binding/date_field.h"
#include "pages/binding/field_page.h"

/// The controller's general settings: accesses, time source, report delivery, node polling, time
/// zone; and its clock, which a button sets at once. Only what changed is sent.
class CDlgE01CfgZelLampManager : public lamp::FieldPage {
 public:
  CDlgE01CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 private:
  void OnSetClock();

  lamp::DateField clock_;
};
