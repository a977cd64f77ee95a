#pragma once

#include "pages/binding/described_page.h"

/// Sends a command that names the selected nodes of the controller's table. The selection is all
/// that the page takes.
class CDlgE11CfgZelLampManager : public lamp::DescribedPage {
 public:
  CDlgE11CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

  const Node* Untouched() const override;
  const Node* Edited() override { return Untouched(); }
  std::vector<host::OrderedValue> Ordered() const override;

 protected:
  bool Changed() override;
  bool Send(const XCBasicString& stamp) override;

 private:
  void OnSelectionChanged();

  XmlDocument nodes_;  // the reply, which the list shows
};
