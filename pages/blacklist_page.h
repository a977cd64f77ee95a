#pragma once

#include "pages/binding/date_field.h"
#include "pages/binding/settings_page.h"

/// The nodes that the controller is to ignore: the node table and the blacklist side by side, and
/// moves between them. Only the blacklist is sent, when its nodes are others than before.
class CDlgE09CfgZelLampManager : public lamp::SettingsPage {
 public:
  CDlgE09CfgZelLampManager(XCDriver* driver, CWnd* parent);

  static host::DialogTemplate Template();

  bool OnInitDialog() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 protected:
  bool Write() override;

 private:
  void OnMoveRight();
  void OnMoveLeft();
  void OnKey(host::Key key);
  void OnSelectionChanged();
  void takeReply();
  void fill(std::size_t selectedRow);
  bool changed() const;

  XmlDocument nodes_;      // the reply, of which the node list shows the table
  XmlDocument blacklist_;  // a copy of the reply's blacklist, which is edited and sent
  XmlDocument untouched_;  // the blacklist as it was read
  lamp::DateField activation_;
};
