#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "host/resources/text_id.h"
#include "host/xml/xml_holder.h"

namespace workbench {

/// What a group of lamps is called, and the ids of the child devices in it, in their order.
struct GroupContent {
  XCBasicString name;
  std::vector<XCBasicString> lamps;

  friend bool operator==(const GroupContent&, const GroupContent&) = default;
};

/// The groups of lamps of one controller: those inside of the group of the main configuration that
/// carries the controller's name, which is where the group schedules page looks for them. They
/// survive a node update, which makes only the list of all lamps anew.
class LampGroups {
 public:
  using Node = XmlDocument::XmlNode;

  /// A device without a name has no groups, and none can be added. One that was removed stays
  /// readable as long as this.
  explicit LampGroups(const Node& device) : device_(&device) {}

  const Node& device() const { return *device_; }
  /// The groups in their order.
  std::vector<Node*> all() const;
  /// The first group with this name; null when there is none.
  Node* named(std::u16string_view name) const;
  /// Whether @p group is one of them.
  bool has(const Node& group) const;
  /// The element that holds the groups; null before the first one was made.
  Node* container() const;

  /// What stands against a name, for @p group or, when it is null, for a new one: nothing, or the
  /// text that says it. No two groups of a controller have one name, whatever its case.
  std::optional<host::TextId> nameFault(std::u16string_view name, const Node* group) const;

  Node& add(const GroupContent& content);
  /// Elements of the group that it does not know stay, and so do those of the lamps that stay.
  static void change(Node& group, const GroupContent& content);
  /// False when it is none of them.
  bool remove(Node& group);
  /// Makes the groups those of @p container, in which null stands for none at all.
  void replaceAll(const Node* container);

  static GroupContent contentOf(const Node& group);
  /// The child devices that can be in a group: those that have an id.
  std::vector<Node*> lamps() const;

  /// Gives the group of a controller that was renamed from @p before its name, so that the groups
  /// in it stay the controller's.
  void followRename(std::u16string_view before) const;

 private:
  Node* ownGroup(std::u16string_view name) const;
  Node& containerMade() const;

  host::ConstXmlAnchor device_;
};

}  // namespace workbench
