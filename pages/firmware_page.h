#pragma once

#include <filesystem>

#include "pages/binding/described_page.h"

/// Sends a firmware file to the controller, with the moment at which it is to be activated. Nothing
/// is read from the controller.
class CDlgE03CfgZelLampManager : public lamp::DescribedPage {
 public:
  CDlgE03CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();
  static const host::PageDescription& PageTable();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

  const Node* Untouched() const override { return nullptr; }
  const Node* Edited() override { return nullptr; }
  std::vector<host::OrderedValue> Ordered() const override;

 protected:
  bool Write() override;

 private:
  void OnLoad() { chooseFile(); }
  void chooseFile();
  std::optional<std::string> encodedFile() const;

  // The file is read by its path as the system knows it, and named by its path as text.
  std::filesystem::path file_;
  XCBasicString shownPath_;
};
