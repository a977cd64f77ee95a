#pragma once

#include <optional>
#include <vector>

#include "host/dialogs/extension_module.h"
#include "workbench/action_result.h"
#include "workbench/group_history.h"

namespace workbench {

/// What an engineer does with the groups of lamps of a controller. After each action the
/// configuration is saved when it differs from what is on disk, a failure to save is shown in a
/// message, and the action can be undone.
class GroupActions {
 public:
  using Node = XmlDocument::XmlNode;

  explicit GroupActions(ConfigurationStore& store);
  GroupActions(const GroupActions&) = delete;
  GroupActions& operator=(const GroupActions&) = delete;
  ~GroupActions();

  /// Opens the dialog of a new group, with these lamps (ids of child devices) in it to begin with.
  ActionResult newGroup(CWnd* parent, const Node& device, std::vector<XCBasicString> lamps = {});
  /// Opens the dialog of a group.
  ActionResult modifyGroup(CWnd* parent, const Node& device, Node& group);
  ActionResult removeGroup(CWnd* parent, const Node& device, Node& group);
  /// Puts lamps into a group, behind those in it, or takes them out; those that are in it already,
  /// or are not in it, don't matter.
  ActionResult addLamps(CWnd* parent, const Node& device, Node& group,
                        const std::vector<XCBasicString>& lamps);
  ActionResult takeOutLamps(CWnd* parent, const Node& device, Node& group,
                            const std::vector<XCBasicString>& lamps);

  const GroupHistory& history() const { return history_; }
  ActionResult undo(CWnd* parent);
  ActionResult redo(CWnd* parent);
  /// What stands against them.
  ActionResult canUndo() const;
  ActionResult canRedo() const;

  /// What stands against changing the groups of a device: a device of another driver or without a
  /// name, or a configuration that can't be written.
  ActionResult canChange(const Node& device) const;

 private:
  ActionResult canChange(const Node& device, const Node& group) const;
  ActionResult apply(CWnd* parent, const Node& device, Node& group, const GroupContent& content);
  ActionResult moved(CWnd* parent, bool done);

  ConfigurationStore& store_;
  GroupHistory history_;
  host::ExtensionModule dialogs_;
};

}  // namespace workbench
