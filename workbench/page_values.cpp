#include "workbench/page_values.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "host/ui/user_input.h"
#include "workbench/control_value.h"
#include "workbench/row_value.h"
#include "workbench/task_put.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using host::Control;
using host::ListControl;
using host::UserInput;

constexpr std::u16string_view Masked = u"***";

// Who a row is and when it was written is nothing that is typed.
bool isValue(std::string_view name, const XCBasicString& text) {
  return name != "Id" && name != "nodeId" && !(text == Masked);
}

void addAttributes(const Node& element, PageValues::Row& row) {
  for (std::size_t i = 0; i < element.attributeCount(); ++i) {
    const std::string name(host::xmlNameText(element.attributeName(i).id()));
    const XCBasicString text = element.attributeText(i).toString();
    if (isValue(name, text)) row.try_emplace(name, text.str());
  }
}

// The hour and the minute of a step are typed into one edit.
void joinTimes(PageValues::Row& row) {
  std::vector<std::string> hours;
  for (const auto& [name, value] : row)
    if (name.starts_with("hour") && RowValue::nameFor(name) != name) hours.push_back(name);
  for (const std::string& hour : hours) {
    const std::string minute = "min" + hour.substr(hour.size() - 1);
    row.try_emplace(RowValue::nameFor(hour), clockTime(row[hour], row[minute]));
    row.erase(hour);
    row.erase(minute);
  }
}

host::Outcome enter(UserInput& user, Control& control, const std::u16string& value) {
  if (auto* combo = dynamic_cast<host::ComboControl*>(&control)) {
    for (std::size_t item = 0; item < combo->items().size(); ++item)
      if (value.size() == 1 && combo->items()[item].data == value[0])
        return user.choose(*combo, item);
    return host::Outcome::refused("there is no such choice");
  }
  if (auto* check = dynamic_cast<host::CheckControl*>(&control))
    return user.check(*check, value == u"Y");
  return user.type(control, value);
}

class Entry {
 public:
  explicit Entry(XCBaseDlg& page) : page_(page), user_(page) {}

  PutReport put(const PageValues& values) {
    putFields(values.fields);
    if (values.rows.empty()) return report_;
    for (const auto& control : page_.Controls())
      if (auto* list = dynamic_cast<ListControl*>(control.get())) putRows(*list, values);
    return report_;
  }

 private:
  void refuse(const std::string& what, const host::Outcome& outcome) {
    report_.refused.push_back(what + ": " +
                              (outcome ? "the page does not take the value" : outcome.reason));
  }

  void putFields(const PageValues::Row& fields) {
    std::vector<std::pair<const std::string*, host::Outcome>> entered;
    for (const auto& [name, value] : fields) {
      Control* control = page_.FindControl(name);
      if (control == nullptr || !takesValues(*control)) continue;
      if (valueIn(*control) == value) {
        ++report_.same;
        continue;
      }
      entered.emplace_back(&name, enter(user_, *control, value));
    }
    // Looked at in the end: fields that exclude one another change each other.
    for (const auto& [name, outcome] : entered) {
      if (outcome && valueIn(*page_.FindControl(*name)) == fields.at(*name))
        ++report_.put;
      else
        refuse(*name, outcome);
    }
  }

  // Rows that get one value of one attribute are typed into together.
  void putRows(ListControl& list, const PageValues& values) {
    std::map<std::pair<std::string, std::u16string>, std::vector<std::size_t>> gestures;
    for (std::size_t row = 0; row < list.rowCount(); ++row) {
      const Node* element = list.element(row);
      if (element == nullptr) continue;
      const auto wanted = values.rows.find(rowKey(*element));
      if (wanted == values.rows.end()) continue;
      for (const auto& [name, value] : wanted->second) {
        const RowValue attribute(name);
        if (!attribute.isIn(*element) || editOf(list, name) == nullptr) continue;
        if (attribute.of(*element) == value)
          ++report_.same;
        else
          gestures[{name, value}].push_back(row);
      }
    }
    if (gestures.empty()) return;
    const std::vector<std::size_t> selection = list.selection();
    for (const auto& [what, rows] : gestures) typeInto(list, what.first, what.second, rows);
    user_.select(list, selection);
  }

  void typeInto(ListControl& list, const std::string& name, const std::u16string& value,
                const std::vector<std::size_t>& rows) {
    // A list of one row at a time is gone through row by row.
    const std::size_t together = list.isMultiSelect() ? rows.size() : 1;
    for (std::size_t at = 0; at < rows.size(); at += together) {
      const auto first = rows.begin() + static_cast<std::ptrdiff_t>(at);
      host::Outcome outcome =
          user_.select(list, {first, first + static_cast<std::ptrdiff_t>(together)});
      if (outcome) outcome = enter(user_, *editOf(list, name), value);
      for (std::size_t i = at; i < at + together; ++i) {
        const Node& element = *list.element(rows[i]);
        if (RowValue(name).of(element) == value)
          ++report_.put;
        else
          refuse(XCBasicString(rowKey(element)).ToUtf8() + ": " + name, outcome);
      }
    }
  }

  Control* editOf(const ListControl& list, const std::string& name) {
    const auto [place, isNew] = edits_.try_emplace({&list, name}, nullptr);
    if (isNew) place->second = editOfRows(page_, list, name);
    return place->second;
  }

  XCBaseDlg& page_;
  UserInput user_;
  PutReport report_;
  std::map<std::pair<const ListControl*, std::string>, Control*> edits_;
};

}  // namespace

const Node* sectionElement(const XmlDocument& document, const std::string& section) {
  if (document.Root() == nullptr || section.empty()) return nullptr;
  if (const Node* sent = document.Root()->Node(section)) return sent;
  return document.Root()->Node("ZelLamp/" + section);
}

std::u16string rowKey(const Node& row) {
  static const host::XmlName names[] = {"nodeId", "Id"};
  for (const host::XmlName name : names)
    if (row.hasAttribute(name)) return row.getAttribute(name).str();
  return {};
}

PageValues valuesOf(const Node& section) {
  PageValues values;
  addAttributes(section, values.fields);
  for (const Node& child : section.Children()) {
    const std::u16string key = rowKey(child);
    if (key.empty()) continue;
    PageValues::Row& row = values.rows[key];
    addAttributes(child, row);
    // With several of them it would not be told which one is meant.
    if (child.ChildCount() == 1) addAttributes(*child.FirstChild(), row);
    joinTimes(row);
  }
  return values;
}

PutReport putValues(XCBaseDlg& page, const PageValues& values) {
  PutReport report = Entry(page).put(values);
  XmlDocument tasks;
  if (values.tasks.empty() || !tasks.Parse(values.tasks)) return report;
  PutReport more = putTasks(page, *tasks.Root());
  report.put += more.put;
  report.same += more.same;
  std::move(more.refused.begin(), more.refused.end(), std::back_inserter(report.refused));
  return report;
}

}  // namespace workbench
