#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "workbench/lamp_groups.h"

namespace workbench {

/// The changes to groups of lamps that can be undone and done again, the latest first. A change is
/// known by how the groups of its controller stood before and after; where they stand otherwise by
/// now, it can't be undone.
class GroupHistory {
 public:
  /// How the groups of a controller stand at a moment; shared by the changes before and after.
  using State = std::shared_ptr<const XmlDocument>;

  /// To be taken before a change.
  State stateOf(const LampGroups& groups) const;
  /// Notes a change that was made since @p before: a text that takes the group's name, and that
  /// name. What was undone can't be done again any more.
  void note(const LampGroups& groups, State before, host::TextId what, XCBasicString group);

  /// What the next undo() and redo() are about, in the language in force; none when there is
  /// nothing.
  std::optional<XCBasicString> undoable() const { return textOf(done_); }
  std::optional<XCBasicString> redoable() const { return textOf(undone_); }
  /// False when the groups were changed otherwise since, or are no longer there. The change is
  /// forgotten then.
  bool undo() { return move(done_, undone_, &Change::after, &Change::before); }
  bool redo() { return move(undone_, done_, &Change::before, &Change::after); }

  static constexpr std::size_t MostChanges = 20;

 private:
  struct Change {
    XCBasicString deviceId;
    host::TextId what;
    XCBasicString group;
    State before;
    State after;
  };
  using Changes = std::vector<Change>;

  static bool stands(const LampGroups& groups, const XmlDocument& state);
  static std::optional<XCBasicString> textOf(const Changes& changes);
  static bool move(Changes& from, Changes& to, State Change::*now, State Change::*wanted);

  Changes done_;
  Changes undone_;
};

}  // namespace workbench
