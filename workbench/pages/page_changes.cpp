#include "workbench/pages/page_changes.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using host::Binding;
using host::RowSet;

constexpr const char* ActivationDate = "ActDate";

class FaultSearch {
 public:
  explicit FaultSearch(const XCBaseDlg& dialog) : dialog_(dialog) {}

  void look(const host::PageDescription& page, const Node& section) {
    for (const Binding& field : page.fields) {
      std::size_t place = 0;
      check(field, section, place, [] { return std::nullopt; });
    }
    for (const RowSet& set : page.rows) lookAtRows(set, section);
  }
  std::vector<ValueFault> take() { return std::move(faults_); }

 private:
  template <class Row>
  void check(const Binding& binding, const Node& element, std::size_t& place, const Row& row) {
    if (binding.rule && !binding.rule.accepts(element, place))
      faults_.push_back({row(), binding.name, binding.rule.message(element)});
  }

  // In the order of the list that shows the rows.
  void lookAtRows(const RowSet& set, const Node&) {
    std::vector<std::size_t> places(set.bindings.size());
    const auto* list =
        dynamic_cast<const host::ListControl*>(dialog_.FindControl(set.places.front().list));
    if (list == nullptr) return;
    for (std::size_t row = 0; row < list->rowCount(); ++row) {
      const Node& element = *list->element(row);
      for (std::size_t i = 0; i < set.bindings.size(); ++i)
        check(set.bindings[i], element, places[i],
              [&]() -> std::optional<XCBasicString> { return set.identity(element); });
    }
  }

  const XCBaseDlg& dialog_;
  std::vector<ValueFault> faults_;
};

}  // namespace

std::vector<ValueChange> changesOf(host::EditedPage& page) {
  std::vector<ValueChange> changes =
      compareSections(page.Description(), page.Untouched(), page.Edited(), {.asSent = true});
  for (const host::OrderedValue& ordered : page.Ordered())
    changes.push_back(
        {ordered.row, ordered.name, ordered.caption.toString(), std::nullopt, ordered.value});
  return changes;
}

std::vector<ValueFault> faultsOf(const XCBaseDlg& dialog, host::EditedPage& page) {
  FaultSearch search(dialog);
  if (const Node* section = page.Edited()) search.look(page.Description(), *section);
  std::vector<ValueFault> faults = search.take();
  const XCBasicString date = page.DateFault();
  if (!date.IsEmpty() && !changesOf(page).empty())
    faults.push_back({std::nullopt, ActivationDate, date});
  return faults;
}

}  // namespace workbench
