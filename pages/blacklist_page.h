#pragma once

#include "pages/binding/document_page.h"

/// The nodes that the controller is to ignore: the node table and the blacklist side by side, and
/// moves between them. Only the blacklist is sent, when its nodes are others than before.
class CDlgE09CfgZelLampManager : public lamp::DocumentPage {
 public:
  CDlgE09CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

  /// As it was read where moves have come to nothing.
  const Node* Edited() override { return Changed() ? DocumentPage::Edited() : Untouched(); }

 protected:
  bool Changed() override;

 private:
  void OnMove(int controlId);
  void OnKey(host::Key key);
  void OnSelectionChanged();
  void fill();
};
