#pragma once

#include "pages/binding/row_page.h"

/// A power and how long it holds, for one lamp node or for many at once, sent with one activation
/// date.
class CDlgE05CfgZelLampManager : public lamp::RowPage {
 public:
  CDlgE05CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  void Layout() override;
};
