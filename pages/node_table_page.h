#pragma once

#include "pages/binding/row_page.h"

/// The controller's node table: reference and position of one lamp node or of many at once. The
/// whole section goes back, with what the page does not know.
class CDlgE04CfgZelLampManager : public lamp::RowPage {
 public:
  CDlgE04CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  void Layout() override;
};
