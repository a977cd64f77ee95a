#pragma once

#include <array>

#include "pages/binding/document_page.h"
#include "pages/input_output_grid.h"

/// The controller's inputs and outputs: which inputs report, what switches each output, its manual
/// mode, and the offsets of the astronomical clock. The whole section goes back with an activation
/// date.
class CDlgE13CfgZelLampManager : public lamp::DocumentPage {
 public:
  CDlgE13CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  void DoDataExchange(CDataExchange* exchange) override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

  const Node* Edited() override;

 private:
  void OnSwitch(int controlId);

  void showSection(const Node& section);
  void takeControls(Node& section) const;
  void takeLine(const lamp::io::Grid& grid, int line, Node& row) const;

  // The modes as they were shown at first, by output; none for one that was not shown.
  std::array<std::optional<XCBasicString>, lamp::io::LineCount> readModes_;
};
