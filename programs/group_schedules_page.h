#pragma once

#include <cstddef>
#include <vector>

#include "pages/binding/document_page.h"
#include "programs/program_fields.h"

/// The dimming programs of the controller's lamp nodes, edited for one node, for several, or for
/// all lamps of a group of the configuration.
class CDlgE06CfgZelLampManager : public lamp::DocumentPage {
 public:
  /// @p kind decides which section is read and written: L06 and E06 hold interval programs, L17 and
  /// E17 clock programs.
  CDlgE06CfgZelLampManager(XCDriver* driver, CWnd* parent, lamp::ProgramKind kind);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable(lamp::ProgramKind kind);

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;
  void Refresh() override;

 private:
  void OnGroupSelectionChanged();
  void OnNodeSelectionChanged();
  void OnFieldChanged(int editId);
  void OnWriteBack(int editId);
  void fillGroups();
  void selectLamps(std::vector<std::size_t> nodes);

  lamp::ProgramKind kind_;
  lamp::ProgramFields fields_;
  /// Clear only while a handler of a selection runs: what it selects and fills starts neither the
  /// other handler nor a write-back.
  bool guard_ = true;
  /// Set while groups select nodes.
  bool selectingByGroups_ = false;
};
