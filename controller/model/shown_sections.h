#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "controller/model/section_store.h"

namespace lamp::controller {

/// The sections as clients see them: those in force, and in their place whatever is written and
/// waits for its date. It costs what waits, not what there is.
class ShownSections final : public SectionView {
 public:
  /// The sections in force must outlive these.
  explicit ShownSections(const SectionStore& inForce);
  ShownSections(const ShownSections&) = delete;
  ShownSections& operator=(const ShownSections&) = delete;

  /// While this holds, only what already stands here is changed: what is not here is shown as it is
  /// in force, where it has been changed too.
  void changeOnlyWhatWaits(bool only) { onlyWhatWaits_ = only; }

  /// The element that holds what waits, for saving.
  pugi::xml_node root() const { return root_; }
  /// Takes what `root` held. Returns what is wrong with it, or an empty text.
  std::string load(pugi::xml_node shown);

  pugi::xml_node section(const char* code) const override;
  pugi::xml_node sectionToChange(const char* code) override;
  std::size_t nodeCount() const override { return inForce_.nodeCount(); }
  const NodeRows* find(std::string_view nodeId) const override { return inForce_.find(nodeId); }
  pugi::xml_node row(const NodeRows& node, Family family) const override;
  pugi::xml_node rowToChange(const NodeRows& node, Family family) override;
  void eachRow(Family family, const TakeRow& take) const override;
  bool isBlacklisted(const NodeRows& node) const override;
  pugi::xml_node blackList(pugi::xml_document& room) const override;
  void setBlackList(pugi::xml_node element) override;
  /// Nobody is shown since when a row holds.
  void setPowerSince(const NodeRows&, long long) override {}

 private:
  void indexList();
  pugi::xml_node listInForce() const;
  pugi::xml_node group(const char* name);

  const SectionStore& inForce_;
  pugi::xml_document document_;
  pugi::xml_node root_;
  bool onlyWhatWaits_ = false;
  std::array<std::unordered_map<std::size_t, pugi::xml_node>, Families> rows_;
  pugi::xml_node list_;                  // of the blacklist that waits; empty where none does
  std::vector<const NodeRows*> listed_;  // in its order
  std::unordered_set<const NodeRows*> isListed_;
};

}  // namespace lamp::controller
