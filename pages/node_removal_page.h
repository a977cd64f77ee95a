#pragma once

#include "pages/binding/document_page.h"

/// Removes nodes from the controller's table: it lists those that carry a reference, takes
/// reference and position away from the chosen ones, and sends the nodes that are left without a
/// reference.
class CDlgE08CfgZelLampManager : public lamp::DocumentPage {
 public:
  CDlgE08CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 private:
  void OnRemove();
  void OnKey(host::Key key);
  void fill();
};
