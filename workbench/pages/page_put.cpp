#include "workbench/pages/page_put.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "host/ui/user_input.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using host::Binding;
using host::ListControl;
using host::Outcome;
using host::RowSet;

using Kind = ValueChange::Kind;

std::string labelOf(const ValueChange& change) {
  return change.row ? change.row->ToUtf8() + ": " + change.name : change.name;
}

// "5" of "5/2", the row in which an inner row lies; nothing for an outer one.
std::optional<std::pair<XCBasicString, std::size_t>> innerRow(const XCBasicString& identity) {
  const std::size_t slash = identity.str().rfind(u'/');
  if (slash == std::u16string::npos) return std::nullopt;
  const int place = identity.Mid(slash + 1).ToInt();
  if (place < 1) return std::nullopt;
  return std::pair(identity.Left(slash), static_cast<std::size_t>(place - 1));
}

class Entry {
 public:
  Entry(XCBaseDlg& dialog, host::EditedPage& page)
      : dialog_(dialog), user_(dialog), page_(page.Description()) {}

  PutReport run(const std::vector<ValueChange>& changes) {
    const auto selections = selectionsOfLists();
    // Rows come and go first: the others are found by their place afterwards.
    for (std::size_t i = 0; i < changes.size();)
      i = changes[i].kind == Kind::value ? i + 1 : takeWholeRow(changes, i);
    indices_.clear();
    for (const ValueChange& change : changes)
      if (change.kind == Kind::value) take(change);
    enterFields();
    enterRows();
    for (const auto& [list, rows] : selections) user_.select(*list, rows);
    return std::move(report_);
  }

 private:
  struct Value {
    const Binding* binding;
    XCBasicString text;
  };

  // --- sorting the changes

  void take(const ValueChange& change) {
    if (change.row)
      takeValue(change);
    else
      takeField(change);
  }

  void takeField(const ValueChange& change) {
    const auto found =
        std::find_if(page_.fields.begin(), page_.fields.end(),
                     [&](const Binding& field) { return field.name == change.name; });
    if (found == page_.fields.end() || found->control == 0) return refuse(change, NoControl);
    fields_.push_back({change, &*found});
  }

  void takeValue(const ValueChange& change) {
    for (const RowSet& set : page_.rows) {
      if (set.membership && set.membership->name == change.name) return move(set, change);
      if (takeRowValue(set, change)) return;
      for (const RowSet& inner : set.within)
        if (takeInnerValue(set, inner, change)) return;
    }
    refuse(change, NoRow);
  }

  bool takeRowValue(const RowSet& set, const ValueChange& change) {
    const Binding* binding = bindingOf(set, change.name);
    if (binding == nullptr) return false;
    if (set.controlOf) return takeLineValue(set, *binding, change);
    ListControl* list = listOf(set);
    const auto row = list ? rowOf(*list, set, *change.row) : std::nullopt;
    if (!row) return false;
    if (!change.after && set.removeControl != 0) {
      removals_[&set].push_back(*row);
      return true;
    }
    values_[{&set, binding, change.after.value_or(XCBasicString()).str()}].push_back(*row);
    return true;
  }

  bool takeInnerValue(const RowSet& set, const RowSet& inner, const ValueChange& change) {
    const auto place = innerRow(*change.row);
    const Binding* binding = bindingOf(inner, change.name);
    if (!place || binding == nullptr) return false;
    if (!openInner(set, inner, *place)) return false;
    tell(change,
         enter(*dialog_.FindControl(binding->control), *binding,
               change.after.value_or(XCBasicString())),
         listOf(inner)->element(place->second), *binding);
    return true;
  }

  bool takeLineValue(const RowSet& set, const Binding& binding, const ValueChange& change) {
    const Node* element = lineOf(set, *change.row);
    if (element == nullptr) return false;
    host::Control* control = dialog_.FindControl(set.controlOf(*element, binding));
    if (control == nullptr) return false;
    lines_.push_back({change, &binding, control});
    return true;
  }

  std::size_t takeWholeRow(const std::vector<ValueChange>& changes, std::size_t i) {
    const XCBasicString identity = *changes[i].row;
    const auto belongs = [&](const ValueChange& change) {
      return change.kind == changes[i].kind && change.row &&
             (*change.row == identity ||
              std::u16string_view(*change.row).starts_with(identity.str() + u"/"));
    };
    std::size_t end = i;
    while (end < changes.size() && belongs(changes[end])) ++end;
    const std::vector<ValueChange> row(changes.begin() + static_cast<std::ptrdiff_t>(i),
                                       changes.begin() + static_cast<std::ptrdiff_t>(end));
    indices_.clear();
    const bool done = changes[i].kind == Kind::gone ? remove(row) : add(row);
    if (!done) refuse(changes[i], NoRow);
    return end;
  }

  // --- whole rows

  bool remove(const std::vector<ValueChange>& row) {
    for (const RowSet& set : page_.rows) {
      if (const auto place = innerRow(*row.front().row); place && !set.within.empty())
        return removeInner(set, set.within.front(), *place);
      ListControl* list = listOf(set);
      const auto found = list ? rowOf(*list, set, *row.front().row) : std::nullopt;
      if (!found || set.removeControl == 0) continue;
      const std::size_t before = list->rowCount();
      user_.select(*list, {*found});
      if (!press(set.removeControl) || list->rowCount() >= before) return false;
      ++report_.put;
      return true;
    }
    return false;
  }

  bool removeInner(const RowSet& set, const RowSet& inner,
                   const std::pair<XCBasicString, std::size_t>& place) {
    if (!openInner(set, inner, place) || inner.removeControl == 0) return false;
    if (!press(inner.removeControl)) return false;
    ++report_.put;
    return true;
  }

  // A new row gets its identity from the page.
  bool add(const std::vector<ValueChange>& row) {
    for (const RowSet& set : page_.rows) {
      if (const auto place = innerRow(*row.front().row); place && !set.within.empty())
        return addInner(set, set.within.front(), *place, row);
      ListControl* list = listOf(set);
      if (list == nullptr || set.addControl == 0) continue;
      const std::size_t count = list->rowCount();
      if (!press(set.addControl) || list->rowCount() != count + 1) return false;
      const std::size_t made = list->selection().empty() ? count : list->selection().front();
      const XCBasicString given = set.identity(*list->element(made));
      if (!(given == *row.front().row))
        report_.refused.push_back(row.front().row->ToUtf8() + ": the page gives it the number " +
                                  given.ToUtf8());
      fill(set, *list, made, row);
      return true;
    }
    return false;
  }

  bool addInner(const RowSet& set, const RowSet& inner,
                const std::pair<XCBasicString, std::size_t>& place,
                const std::vector<ValueChange>& row) {
    ListControl* outer = listOf(set);
    ListControl* list = listOf(inner);
    const auto found = outer && list ? rowOf(*outer, set, place.first) : std::nullopt;
    if (!found || inner.addControl == 0) return false;
    user_.select(*outer, {*found});
    while (list->rowCount() <= place.second)
      if (!press(inner.addControl)) return false;
    fillInner(inner, place.second, attributesOf(row, *row.front().row));
    return true;
  }

  using Attributes = std::map<std::string, XCBasicString>;

  static Attributes attributesOf(const std::vector<ValueChange>& row,
                                 const XCBasicString& identity) {
    Attributes attributes;
    for (const ValueChange& change : row)
      if (*change.row == identity && change.after) attributes[change.name] = *change.after;
    return attributes;
  }

  void fill(const RowSet& set, ListControl& list, std::size_t row,
            const std::vector<ValueChange>& values) {
    const XCBasicString identity = *values.front().row;
    user_.select(list, {row});
    fillRow(set, attributesOf(values, identity), *list.element(row));
    if (set.within.empty()) return;
    const RowSet& inner = set.within.front();
    for (std::size_t place = 0;; ++place) {
      const Attributes attributes = attributesOf(
          values, identity + u"/" + host::decimal(static_cast<std::int64_t>(place) + 1));
      if (attributes.empty()) break;
      while (listOf(inner)->rowCount() <= place)
        if (!press(inner.addControl)) return;
      fillInner(inner, place, attributes);
    }
  }

  void fillInner(const RowSet& inner, std::size_t row, const Attributes& attributes) {
    user_.select(*listOf(inner), {row});
    fillRow(inner, attributes, *listOf(inner)->element(row));
  }

  // The names come from a file: only those that the page knows are made use of.
  static bool isEdited(const RowSet& set, host::XmlName attribute) {
    return std::any_of(set.bindings.begin(), set.bindings.end(), [&](const Binding& binding) {
      return std::find(binding.attributes.begin(), binding.attributes.end(), attribute) !=
             binding.attributes.end();
    });
  }

  // Values that show a part of an attribute are taken from the attribute as a whole.
  void fillRow(const RowSet& set, const Attributes& attributes, const Node& element) {
    XmlDocument whole;
    Node& wanted = whole.Create("row");
    for (const auto& [name, text] : attributes) {
      const Binding* binding = bindingOf(set, name);
      const host::XmlName attribute = host::XmlName::find(name);
      if (binding != nullptr && binding->write)
        binding->put(wanted, text);
      else if (isEdited(set, attribute))
        wanted.setAttribute(attribute, text);
    }
    for (const Binding& binding : set.bindings) {
      host::Control* control = dialog_.FindControl(binding.control);
      if (control == nullptr || !binding.isIn(wanted) || !isEntry(*control)) continue;
      const XCBasicString text = binding.valueIn(wanted);
      const Outcome outcome = enter(*control, binding, text);
      count(binding.valueIn(element) == text, binding.name, outcome);
    }
  }

  void move(const RowSet& set, const ValueChange& change) {
    for (const host::RowPlace& place : set.places) {
      auto* list = find<ListControl>(place.list);
      const auto row = list ? rowOf(*list, set, *change.row) : std::nullopt;
      if (!row) continue;
      if (change.after && *change.after == place.mark) return void(++report_.same);
      moves_[{list, place.moveControl}].push_back(*row);
      return;
    }
    refuse(change, NoRow);
  }

  // --- entering

  struct FieldValue {
    ValueChange change;
    const Binding* binding;
  };
  struct LineValue {
    ValueChange change;
    const Binding* binding;
    host::Control* control;
  };

  void enterFields() {
    std::vector<std::pair<std::size_t, Outcome>> entered;
    for (const FieldValue& field : fields_) {
      host::Control& control = *dialog_.FindControl(field.binding->control);
      tellValue(field.change, control, *field.binding);
    }
    for (const LineValue& line : lines_) tellValue(line.change, *line.control, *line.binding);
    // Looked at in the end: fields that exclude one another change each other.
    for (const auto& check : checks_) check();
  }

  void tellValue(const ValueChange& change, host::Control& control, const Binding& binding) {
    const XCBasicString wanted = change.after.value_or(XCBasicString());
    if (valueOn(control, binding) == wanted) return void(++report_.same);
    const Outcome outcome = enter(control, binding, wanted);
    checks_.push_back([this, &control, &binding, wanted, outcome, what = labelOf(change)] {
      count(valueOn(control, binding) == wanted, what, outcome);
    });
  }

  // Rows that get one value are typed into together.
  void enterRows() {
    for (const auto& [what, rows] : values_) {
      const auto& [set, binding, text] = what;
      ListControl& list = *listOf(*set);
      const std::size_t together = list.isMultiSelect() ? rows.size() : 1;
      for (std::size_t at = 0; at < rows.size(); at += together)
        typeInto(list, *set, *binding, text,
                 {rows.begin() + static_cast<std::ptrdiff_t>(at),
                  rows.begin() + static_cast<std::ptrdiff_t>(at + together)});
    }
    for (const auto& [set, rows] : removals_) {
      user_.select(*listOf(*set), unique(rows));
      if (press(set->removeControl)) report_.put += unique(rows).size();
    }
    for (const auto& [from, rows] : moves_) {
      user_.select(*from.first, rows);
      if (press(from.second)) report_.put += rows.size();
    }
  }

  void typeInto(ListControl& list, const RowSet& set, const Binding& binding,
                const std::u16string& text, const std::vector<std::size_t>& rows) {
    std::vector<const Node*> elements;
    for (const std::size_t row : rows) elements.push_back(list.element(row));
    host::Control* control = dialog_.FindControl(binding.control);
    Outcome outcome = user_.select(list, rows);
    if (outcome && control != nullptr) outcome = enter(*control, binding, text);
    for (const Node* element : elements)
      count(binding.valueIn(*element) == text,
            set.identity(*element).ToUtf8() + ": " + binding.name, outcome);
  }

  Outcome enter(host::Control& control, const Binding& binding, const XCBasicString& value) {
    if (auto* combo = dynamic_cast<host::ComboControl*>(&control)) {
      for (std::size_t item = 0; item < combo->items().size(); ++item)
        if (binding.entryValue(combo->items()[item].data) == value)
          return user_.choose(*combo, item);
      return Outcome::refused("there is no such choice");
    }
    if (auto* check = dynamic_cast<host::CheckControl*>(&control))
      return user_.check(*check, value == u"Y");
    return user_.type(control, value);
  }

  static XCBasicString valueOn(const host::Control& control, const Binding& binding) {
    if (const auto* combo = dynamic_cast<const host::ComboControl*>(&control)) {
      const auto data = combo->selectedData();
      return data ? binding.entryValue(*data) : XCBasicString();
    }
    if (const auto* check = dynamic_cast<const host::CheckControl*>(&control))
      return check->isOn() ? u"Y" : u"N";
    return control.text();
  }

  static bool isEntry(const host::Control& control) {
    const auto* edit = dynamic_cast<const host::EditControl*>(&control);
    return control.isVisible() && (edit == nullptr || !edit->isReadOnly());
  }

  // --- finding

  template <class ControlType>
  ControlType* find(int id) const {
    return dynamic_cast<ControlType*>(dialog_.FindControl(id));
  }
  ListControl* listOf(const RowSet& set) const {
    return find<ListControl>(set.places.front().list);
  }

  static const Binding* bindingOf(const RowSet& set, const std::string& name) {
    const auto found = std::find_if(set.bindings.begin(), set.bindings.end(),
                                    [&](const Binding& binding) { return binding.name == name; });
    return found == set.bindings.end() ? nullptr : &*found;
  }

  // The first row with an identity. The index is made anew where rows came or went.
  std::optional<std::size_t> rowOf(const ListControl& list, const RowSet& set,
                                   const XCBasicString& identity) {
    Index& index = indices_[&list];
    const auto search = [&]() -> std::optional<std::size_t> {
      const auto found = index.rows.find(identity.str());
      if (found == index.rows.end() || found->second >= list.rowCount()) return std::nullopt;
      if (!(set.identity(*list.element(found->second)) == identity)) return std::nullopt;
      return found->second;
    };
    if (index.size == list.rowCount())
      if (const auto row = search()) return row;
    if (index.size == list.rowCount() && !index.rows.contains(identity.str())) return std::nullopt;
    index.rows.clear();
    index.size = list.rowCount();
    for (std::size_t row = 0; row < list.rowCount(); ++row)
      index.rows.try_emplace(set.identity(*list.element(row)).str(), row);
    return search();
  }

  const Node* lineOf(const RowSet& set, const XCBasicString& identity) const {
    const host::EditedPage* page = dialog_.Edits();
    if (page == nullptr || page->Untouched() == nullptr) return nullptr;
    for (const RowInSection& row : rowsOf(page_, *page->Untouched()))
      if (row.set == &set && set.identity(*row.element) == identity) return row.element;
    return nullptr;
  }

  bool openInner(const RowSet& set, const RowSet& inner,
                 const std::pair<XCBasicString, std::size_t>& place) {
    ListControl* outer = listOf(set);
    ListControl* list = listOf(inner);
    const auto row = outer && list ? rowOf(*outer, set, place.first) : std::nullopt;
    if (!row) return false;
    user_.select(*outer, {*row});
    if (list->rowCount() <= place.second) return false;
    return static_cast<bool>(user_.select(*list, {place.second}));
  }

  std::vector<std::pair<ListControl*, std::vector<std::size_t>>> selectionsOfLists() const {
    std::vector<std::pair<ListControl*, std::vector<std::size_t>>> selections;
    for (const auto& control : dialog_.Controls())
      if (auto* list = dynamic_cast<ListControl*>(control.get()))
        selections.emplace_back(list, list->selection());
    return selections;
  }

  static std::vector<std::size_t> unique(std::vector<std::size_t> rows) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
  }

  bool press(int id) {
    host::Control* control = dialog_.FindControl(id);
    return control != nullptr && user_.click(*control).done;
  }

  // --- telling

  static constexpr const char* NoControl = "the page has no field for it";
  static constexpr const char* NoRow = "the page has no such row";

  void refuse(const ValueChange& change, const char* reason) {
    report_.refused.push_back(labelOf(change) + ": " + reason);
  }
  void count(bool taken, const std::string& what, const Outcome& outcome) {
    if (taken)
      ++report_.put;
    else
      report_.refused.push_back(what + ": " +
                                (outcome ? "the page does not take the value" : outcome.reason));
  }
  void tell(const ValueChange& change, const Outcome& outcome, const Node* element,
            const Binding& binding) {
    count(element != nullptr && binding.valueIn(*element) == change.after.value_or(XCBasicString()),
          labelOf(change), outcome);
  }

  struct Index {
    std::size_t size = static_cast<std::size_t>(-1);
    std::unordered_map<std::u16string, std::size_t> rows;
  };

  XCBaseDlg& dialog_;
  host::UserInput user_;
  const host::PageDescription& page_;
  PutReport report_;
  std::vector<FieldValue> fields_;
  std::vector<LineValue> lines_;
  std::vector<std::function<void()>> checks_;
  std::map<std::tuple<const RowSet*, const Binding*, std::u16string>, std::vector<std::size_t>>
      values_;
  std::map<const RowSet*, std::vector<std::size_t>> removals_;
  std::map<std::pair<ListControl*, int>, std::vector<std::size_t>> moves_;
  std::map<const ListControl*, Index> indices_;
};

}  // namespace

PutReport putChanges(XCBaseDlg& dialog, host::EditedPage& page,
                     const std::vector<ValueChange>& changes) {
  return Entry(dialog, page).run(changes);
}

PutReport putSection(XCBaseDlg& dialog, host::EditedPage& page, const Node& section) {
  std::vector<ValueChange> changes =
      compareSections(page.Description(), page.Edited(), &section, {.secretsToo = true});
  // What is on record of a secret is no value, and what is never read is not put back.
  const auto& fields = page.Description().fields;
  std::erase_if(changes, [&](const ValueChange& change) {
    return change.after == MaskedSecret ||
           std::any_of(fields.begin(), fields.end(), [&](const Binding& field) {
             return field.writeOnly && field.name == change.name;
           });
  });
  return putChanges(dialog, page, changes);
}

}  // namespace workbench
