#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lamp::controller {

/// What the sections say about one node. The handles stay good as long as the store lives, also
/// when a node moves between the table and the blacklist.
struct NodeRows {
  std::string id;
  pugi::xml_node table;     ///< in L04, or in its blacklist
  pugi::xml_node power;     ///< in L05
  pugi::xml_node interval;  ///< in L06
  pugi::xml_node alarm;     ///< in L07
  pugi::xml_node clock;     ///< in L17
  pugi::xml_node override;  ///< since when the L05 row holds; absent when it never was sent
};

/// Every section of the controller as it is kept, one XML element each, with the rows of the nodes
/// found by identity. Attributes and children that nobody knows stay where they are.
/// The set of nodes is fixed once the store is indexed.
class SectionStore {
 public:
  SectionStore();
  SectionStore(const SectionStore& other);
  SectionStore& operator=(const SectionStore&) = delete;

  /// The element "sections" that holds them all; for building and saving.
  pugi::xml_node root() const { return root_; }
  /// Takes the children of `sections` in place of the present ones and indexes them. Returns what
  /// is wrong with them, or an empty text; the store is of no use after a fault.
  std::string load(pugi::xml_node sections);
  /// Finds the rows of every node again. Returns what is wrong, or an empty text.
  std::string index();

  /// The section, made when it is missing.
  pugi::xml_node section(const char* code);
  /// The section, or an empty handle.
  pugi::xml_node section(const char* code) const;

  /// The blacklist inside the node table, made when it is missing.
  pugi::xml_node blackList();

  const std::vector<NodeRows>& nodes() const { return nodes_; }
  /// The node's rows, or null when the controller has no such node.
  const NodeRows* find(std::string_view nodeId) const;
  static bool isBlacklisted(const NodeRows& rows);

  /// Remembers since when (seconds of UTC) the node's L05 row holds.
  void setPowerSince(std::string_view nodeId, long long seconds);
  /// 0 when the row never was sent.
  static long long powerSince(const NodeRows& rows);

 private:
  std::string indexTable();
  std::string indexRows(const char* code, pugi::xml_node NodeRows::*row);

  pugi::xml_document document_;
  pugi::xml_node root_;
  std::vector<NodeRows> nodes_;
  std::unordered_map<std::string_view, std::size_t> positions_;
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
