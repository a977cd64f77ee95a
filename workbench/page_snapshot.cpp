#include "workbench/page_snapshot.h"

#include <algorithm>

#include "workbench/control_value.h"
#include "workbench/task_put.h"
#include "workbench/wire/secret_names.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;

bool isSecret(const host::Control& control) {
  const auto* edit = dynamic_cast<const host::EditControl*>(&control);
  return (edit != nullptr && edit->isPassword()) || isSecretName(control.name());
}

// Edits beside a list show the row that is selected: what they hold belongs to no field of the
// page.
bool hasRows(const XCBaseDlg& page) {
  return std::any_of(page.Controls().begin(), page.Controls().end(), [](const auto& control) {
    const auto* list = dynamic_cast<const host::ListControl*>(control.get());
    return list != nullptr && list->rowCount() > 0;
  });
}

constexpr std::string_view ActivationField = "activation";

}  // namespace

std::vector<PageSnapshot::Bound> PageSnapshot::boundLists(const XCBaseDlg& page) {
  std::vector<Bound> bound;
  for (const auto& control : page.Controls()) {
    const auto* list = dynamic_cast<const host::ListControl*>(control.get());
    const Node* first = list != nullptr && list->rowCount() > 0 ? list->element(0) : nullptr;
    if (first == nullptr || rowKey(*first).empty()) continue;
    Bound entry{.list = list, .values = {}};
    for (RowValue& value : RowValue::allOf(*first)) {
      const host::Control* edit = editOfRows(page, *list, value.name());
      if (edit != nullptr && !isSecret(*edit)) entry.values.push_back(std::move(value));
    }
    bound.push_back(std::move(entry));
  }
  return bound;
}

PageSnapshot::PageSnapshot(const XCBaseDlg& page) : tasks_(tasksOn(page)) {
  for (const Bound& bound : boundLists(page))
    for (std::size_t row = 0; row < bound.list->rowCount(); ++row)
      if (const Node* element = bound.list->element(row))
        for (const RowValue& value : bound.values) rows_[element].push_back(value.of(*element));
  const bool rows = hasRows(page) || !tasks_.empty();
  for (const auto& control : page.Controls())
    if (takesValues(*control) && !isSecret(*control) &&
        (!rows || control->name() == ActivationField))
      fields_[control->name()] = valueIn(*control);
}

PageValues PageSnapshot::changed(const XCBaseDlg& page) const {
  PageValues values;
  for (const Bound& list : boundLists(page)) {
    for (std::size_t row = 0; row < list.list->rowCount(); ++row) {
      const Node* element = list.list->element(row);
      const auto before = rows_.find(element);
      if (element == nullptr || before == rows_.end()) continue;
      for (std::size_t i = 0; i < list.values.size() && i < before->second.size(); ++i) {
        std::u16string now = list.values[i].of(*element);
        if (now == before->second[i]) continue;
        values.rows[rowKey(*element)][list.values[i].name()] = std::move(now);
      }
    }
  }
  for (const auto& [name, before] : fields_) {
    const host::Control* control = page.FindControl(name);
    if (control == nullptr) continue;
    if (std::u16string now = valueIn(*control); now != before) values.fields[name] = std::move(now);
  }
  if (std::string now = tasksOn(page); now != tasks_) values.tasks = std::move(now);
  return values;
}

}  // namespace workbench
