#pragma once

#include <string>

#include "host/dialogs/base_dlg.h"
#include "workbench/lamp_groups.h"

namespace workbench {

/// Names a group of lamps and fills it: the lamps of the controller that are not in the group on
/// the left, those in it on the right, and moves between them. A filter on the reference narrows
/// the left side, tells how many lamps match, and can add all of them at once.
class LampGroupDialog : public XCBaseDlg, private host::XmlHolder {
 public:
  static constexpr int TemplateNumber = 200;

  /// @p group is the group to change, null for a new one; @p content is what is shown first.
  /// Nothing is written: content() is what the person made of it.
  LampGroupDialog(CWnd* parent, const LampGroups& groups, const XmlDocument::XmlNode* group,
                  GroupContent content);

  static host::DialogTemplate Template();

  const GroupContent& content() const { return content_; }

  bool OnInitDialog() override;
  void OnOK() override;
  const host::MessageMap* GetMessageMap() const override;
  void Layout() override;

 private:
  using Node = XmlDocument::XmlNode;
  struct Lamp {
    Node* element;
    std::u32string reference;  // without case
    bool inGroup = false;
  };

  // Lists show a part of them only.
  void tellHeld(const Note& note) const override;
  void takeContent();
  void OnFilter();
  void OnAddMatching();
  void OnMoveRight();
  void OnMoveLeft();
  void OnMembersKey(host::Key key);
  void OnSelection();
  void take(const std::vector<std::size_t>& rows);
  void showOthers();
  void showMembers();

  LampGroups groups_;
  host::ConstXmlAnchor group_;
  GroupContent content_;
  XmlDocument unknown_;  // what is in the group and no lamp of the controller
  std::vector<Lamp> lamps_;
  std::vector<Node*> members_;
};

}  // namespace workbench
