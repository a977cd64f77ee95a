#pragma once

#include <array>
#include <functional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>

namespace lamp::controller {

/// The sections that have a row for every node.
enum class Family { Table, Power, Interval, Alarm, Clock };
inline constexpr std::size_t Families = 5;

/// The section of a family: "L04" for the table.
const char* sectionOf(Family family);
/// The attribute by which the rows of a family tell their node.
const char* keyOf(Family family);

/// What the sections say about one node. The handles stay good as long as the store lives, also
/// when a node moves between the table and the blacklist.
struct NodeRows {
  std::string id;
  std::array<pugi::xml_node, Families> rows;
  pugi::xml_node override;  ///< since when the L05 row holds; absent when it never was sent
  std::size_t index = 0;    ///< its position in the store's nodes

  pugi::xml_node row(Family family) const { return rows[static_cast<std::size_t>(family)]; }
};

/// The sections as they can be read and changed: those in force, or those that are shown.
class SectionView {
 public:
  using TakeRow = std::function<void(pugi::xml_node row)>;

  virtual ~SectionView() = default;

  /// The section, or an empty handle. Of one with a row for every node only the attributes count.
  virtual pugi::xml_node section(const char* code) const = 0;
  /// The section to be changed; an empty handle where there is nothing to change.
  virtual pugi::xml_node sectionToChange(const char* code) = 0;

  virtual std::size_t nodeCount() const = 0;
  /// The node, or null when the controller has no such node.
  virtual const NodeRows* find(std::string_view nodeId) const = 0;
  virtual pugi::xml_node row(const NodeRows& node, Family family) const = 0;
  /// The row to be changed; an empty handle where there is nothing to change.
  virtual pugi::xml_node rowToChange(const NodeRows& node, Family family) = 0;
  /// The rows of a family, without those of blacklisted nodes. The table's come in its own order.
  virtual void eachRow(Family family, const TakeRow& take) const = 0;

  virtual bool isBlacklisted(const NodeRows& node) const = 0;
  /// The blacklist with its rows, or an empty handle; made in `room` where it has to be made.
  virtual pugi::xml_node blackList(pugi::xml_document& room) const = 0;
  /// The children of `element` are the whole blacklist from now on, by "nodeId", and its attributes
  /// are taken over. Who is not on it comes back to the end of the table.
  virtual void setBlackList(pugi::xml_node element) = 0;
  /// Remembers since when (seconds of UTC) the node's L05 row holds.
  virtual void setPowerSince(const NodeRows& node, long long seconds) = 0;
};

/// The children of a section by the text of their attribute `key`, the first of each.
class ChildIndex {
 public:
  ChildIndex(pugi::xml_node section, const char* tag, const char* key);
  /// Empty where no child has that text.
  pugi::xml_node find(std::string_view text) const;
  void add(pugi::xml_node child) { children_.emplace(child.attribute(key_).value(), child); }
  void remove(std::string_view text) { children_.erase(text); }

 private:
  const char* key_;
  std::unordered_map<std::string_view, pugi::xml_node> children_;
};

}  // namespace lamp::controller
