#pragma once

#include "pages/binding/row_page.h"

/// The thresholds at which nodes raise alarms about their lamps. Nodes come in two generations,
/// told apart by their firmware, with a list and edits each; both go back in one section with one
/// activation date. The values are the controller's to judge.
class CDlgE07CfgZelLampManager : public lamp::RowPage {
 public:
  CDlgE07CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  void Layout() override;

 private:
  bool hasOldNodes() { return Rows(0).list().rowCount() > 0; }
};
