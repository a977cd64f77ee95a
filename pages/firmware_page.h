#pragma once

#include <filesystem>

#include "pages/binding/date_field.h"
#include "pages/binding/settings_page.h"

/// Sends a firmware file to the controller, with the moment at which it is to be activated. Nothing
/// is read from the controller.
class CDlgE03CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE03CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 protected:
  bool Write() override;

 private:
  void OnLoad() { chooseFile(); }
  void chooseFile();
  std::optional<std::string> encodedFile() const;

  lamp::DateField activation_;
  // The file is read by its path as the system knows it, and named by its path as text.
  std::filesystem::path file_;
  XCBasicString shownPath_;
};
