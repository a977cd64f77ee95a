#pragma once

#include <QtCore/QObject>
#include <functional>

#include "editor/window/configuration_tree.h"
#include "editor/window/window_actions.h"
#include "workbench/workspace.h"

class QMenu;

namespace editor {

/// What the window offers about groups of lamps: on the groups of the tree, and on the child
/// devices that are selected in it.
class GroupCommands : public QObject {
 public:
  /// All of them must outlive this object. @p wnd is what dialogs stand in front of.
  GroupCommands(workbench::Workspace& workspace, ConfigurationTree& tree, WindowActions& actions,
                CWnd& wnd);

  /// An action came to its end: what is shown of the configuration is to be read again, and a
  /// refusal to be told.
  std::function<void(const workbench::ActionResult&)> onDone;
  /// Something that the person should know without having to answer.
  std::function<void(const QString&)> onNotice;

  /// The actions on groups, in the order of a menu.
  std::vector<host::TextId> groupActions() const;
  /// The groups that the selected child devices can be added to; to be put into menus.
  QMenu& addToMenu() const { return *addTo_; }

  /// Allows and names the actions by what is chosen in the tree.
  void update();
  void retranslate();

 private:
  using ActionResult = workbench::ActionResult;
  using Node = XmlDocument::XmlNode;

  void makeActions();
  void newGroup();
  void modifyGroup();
  void removeGroup();
  void takeOut();
  void addTo(const XCBasicString& name);
  /// Shows what became of it; then the group with a name is chosen, the device's own where it is
  /// empty.
  void done(const ActionResult& result, const Node& device, const XCBasicString& chosen);
  void move(ActionResult (workbench::GroupActions::*step)(CWnd*));
  void fillAddTo();

  ActionResult onDevice() const;
  ActionResult onGroup() const;
  void nameStep(host::TextId action, host::TextId text, const std::optional<XCBasicString>& step);

  workbench::Workspace& workspace_;
  ConfigurationTree& tree_;
  WindowActions& actions_;
  CWnd& wnd_;
  QMenu* addTo_;
};

}  // namespace editor
