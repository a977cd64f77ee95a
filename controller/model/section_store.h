#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "controller/model/section_view.h"

namespace lamp::controller {

/// Every section of the controller as it is kept, one XML element each, with the rows of the nodes
/// found by identity. Attributes and children that nobody knows stay where they are.
/// The set of nodes is fixed once the store is indexed.
class SectionStore final : public SectionView {
 public:
  SectionStore();
  SectionStore(const SectionStore&) = delete;
  SectionStore& operator=(const SectionStore&) = delete;

  /// The element "sections" that holds them all; for building and saving.
  pugi::xml_node root() const { return root_; }
  /// Takes the children of `sections` in place of the present ones and indexes them. Returns what
  /// is wrong with them, or an empty text; the store is of no use after a fault.
  std::string load(pugi::xml_node sections);
  /// Finds the rows of every node again. Returns what is wrong, or an empty text.
  std::string index();

  pugi::xml_node section(const char* code) const override;
  /// Made when it is missing.
  pugi::xml_node sectionToChange(const char* code) override;

  /// In the order in which they were first listed.
  const std::vector<NodeRows>& nodes() const { return nodes_; }
  std::size_t nodeCount() const override { return nodes_.size(); }
  const NodeRows* find(std::string_view nodeId) const override;
  pugi::xml_node row(const NodeRows& node, Family family) const override;
  pugi::xml_node rowToChange(const NodeRows& node, Family family) override;
  void eachRow(Family family, const TakeRow& take) const override;
  bool isBlacklisted(const NodeRows& node) const override;
  pugi::xml_node blackList(pugi::xml_document& room) const override;
  void setBlackList(pugi::xml_node element) override;
  void setPowerSince(const NodeRows& node, long long seconds) override;
  /// 0 when the row never was sent.
  static long long powerSince(const NodeRows& rows);

 private:
  std::string indexTable();
  std::string indexRows(Family family);

  pugi::xml_document document_;
  pugi::xml_node root_;
  std::vector<NodeRows> nodes_;
  std::unordered_map<std::string_view, std::size_t> positions_;
};

}  // namespace lamp::controller
