#include "workbench/task_put.h"

#include <algorithm>
#include <functional>
#include <optional>

#include "host/ui/user_input.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;
using host::ComboControl;
using host::ListControl;
using host::Outcome;

const host::XmlName Task("TP");
const host::XmlName Number("TpTar");
const host::XmlName Start("TpHi");
const host::XmlName Period("TpPer");
const host::XmlName Priority("TpPrio");
const host::XmlName Action("TpPro");
const host::XmlName Request("TpReq");
const host::XmlName Send("TpSend");
const host::XmlName Store("TpStore");

struct PeriodPart {
  const char* control;
  std::size_t place;  // of its two digits in the period
};
constexpr PeriodPart PeriodParts[] = {{"months", 4}, {"days", 6}, {"hours", 8}, {"minutes", 10}};
constexpr std::size_t PeriodLength = 14;
constexpr std::size_t StartLength = 15;

/// An attribute of a task or of its actions, by the name under which a person is told of it.
using Attributes = std::vector<std::pair<std::string, XCBasicString>>;

void addAttributes(const Node& element, const std::string& prefix, Attributes& attributes) {
  for (std::size_t i = 0; i < element.attributeCount(); ++i) {
    const host::XmlName name = element.attributeName(i);
    if (name != Number)
      attributes.emplace_back(prefix + std::string(host::xmlNameText(name.id())),
                              element.getAttribute(name));
  }
}

std::vector<const Node*> actionsOf(const Node& task) {
  std::vector<const Node*> actions;
  for (const Node& child : task.Children())
    if (child.TagName() == Action) actions.push_back(&child);
  return actions;
}

Attributes attributesOf(const Node& task) {
  Attributes attributes;
  addAttributes(task, {}, attributes);
  std::size_t place = 0;
  for (const Node* action : actionsOf(task))
    addAttributes(*action, "TpPro[" + std::to_string(++place) + "] ", attributes);
  return attributes;
}

// The stamp "20240605100000S" as the page's field takes it; empty for another text.
std::u16string typedStart(const XCBasicString& stamp) {
  if (stamp.Length() != StartLength) return {};
  const auto piece = [&](std::size_t from, std::size_t count) {
    return stamp.Mid(from, count).str();
  };
  return piece(6, 2) + u"/" + piece(4, 2) + u"/" + piece(0, 4) + u" " + piece(8, 2) + u":" +
         piece(10, 2) + u":" + piece(12, 2);
}

int numberIn(const XCBasicString& text) {
  return static_cast<int>(text.ToInt());
}

class TaskEntry {
 public:
  explicit TaskEntry(XCBaseDlg& page) : page_(page), user_(page) {}

  bool hasTasks() const { return find<ListControl>("tasks") && find<ListControl>("actions"); }

  PutReport put(const Node& section) {
    for (const Node& task : section.Children())
      // One with an empty period is an order to delete it.
      if (task.TagName() == Task && !task.attribute(Period).empty()) wanted_.push_back(&task);
    const Node* first = selected();
    const XCBasicString kept = first ? first->getAttribute(Number) : XCBasicString();
    deleteOthers();
    for (const Node* task : wanted_) putTask(*task);
    if (const auto row = rowOf(kept)) user_.select(tasks(), {*row});
    return report_;
  }

 private:
  template <class Kind>
  Kind* find(const char* name) const {
    return dynamic_cast<Kind*>(page_.FindControl(std::string_view(name)));
  }
  ListControl& tasks() const { return *find<ListControl>("tasks"); }
  ListControl& actions() const { return *find<ListControl>("actions"); }

  const Node* selected() const {
    const auto& rows = tasks().selection();
    return rows.empty() ? nullptr : tasks().element(rows.front());
  }
  std::optional<std::size_t> rowOf(const XCBasicString& number) const {
    for (std::size_t row = 0; row < tasks().rowCount(); ++row)
      if (tasks().element(row)->attribute(Number) == number) return row;
    return std::nullopt;
  }

  bool press(const char* button) {
    host::Control* control = page_.FindControl(std::string_view(button));
    return control != nullptr && user_.click(*control).done;
  }
  void choose(const char* name, int data) {
    auto* combo = find<ComboControl>(name);
    if (combo == nullptr || combo->selectedData() == data) return;
    for (std::size_t item = 0; item < combo->items().size(); ++item)
      if (combo->items()[item].data == data) return void(user_.choose(*combo, item));
  }
  void chooseCharacter(const char* name, const XCBasicString& text) {
    if (text.Length() == 1) choose(name, text[0]);
  }

  void deleteOthers() {
    for (std::size_t row = tasks().rowCount(); row-- > 0;) {
      const XCBasicString number = tasks().element(row)->getAttribute(Number);
      const bool stays = std::any_of(wanted_.begin(), wanted_.end(), [&](const Node* task) {
        return task->attribute(Number) == number;
      });
      if (stays) continue;
      const std::size_t before = tasks().rowCount();
      user_.select(tasks(), {row});
      press("deleteTask");
      if (tasks().rowCount() < before)
        ++report_.put;
      else
        refuse(number.ToUtf8(), "the page does not delete the task");
    }
  }

  void putTask(const Node& wanted) {
    const std::string number = wanted.getAttribute(Number).ToUtf8();
    std::optional<std::size_t> row = rowOf(wanted.getAttribute(Number));
    const Attributes before = row ? attributesOf(*tasks().element(*row)) : Attributes();
    if (!row) {
      const std::size_t count = tasks().rowCount();
      press("newTask");
      if (tasks().rowCount() == count) return refuse(number, "the page does not add the task");
      row = count;
    }
    if (before != attributesOf(wanted)) enter(wanted, *row);
    const Node& now = *tasks().element(*row);
    if (const std::string given = now.getAttribute(Number).ToUtf8(); given != number)
      refuse(number, "the page gives the task the number " + given);
    compare(number, wanted, before, now);
  }

  void enter(const Node& wanted, std::size_t row) {
    user_.select(tasks(), {row});
    if (host::Control* start = page_.FindControl(std::string_view("start")))
      user_.type(*start, typedStart(wanted.getAttribute(Start)));
    choose("priority", numberIn(wanted.getAttribute(Priority)));
    if (const XCBasicString period = wanted.getAttribute(Period); period.Length() == PeriodLength)
      for (const PeriodPart& part : PeriodParts)
        choose(part.control, numberIn(period.Mid(part.place, 2)));
    enterActions(actionsOf(wanted));
  }

  void enterActions(const std::vector<const Node*>& wanted) {
    while (actions().rowCount() < wanted.size())
      if (!press("newAction")) return;
    while (actions().rowCount() > std::max<std::size_t>(wanted.size(), 1)) {
      user_.select(actions(), {actions().rowCount() - 1});
      if (!press("deleteAction")) return;
    }
    for (std::size_t row = 0; row < wanted.size(); ++row) {
      user_.select(actions(), {row});
      // "L15" is the report of the section 15.
      choose("request", numberIn(wanted[row]->getAttribute(Request).Mid(1)));
      chooseCharacter("send", wanted[row]->getAttribute(Send));
      chooseCharacter("store", wanted[row]->getAttribute(Store));
    }
  }

  // What became of it is seen in the task alone: the page has its own ways to take an entry.
  void compare(const std::string& number, const Node& wanted, const Attributes& before,
               const Node& now) {
    const Attributes after = attributesOf(now);
    const auto has = [](const Attributes& attributes, const auto& one) {
      return std::find(attributes.begin(), attributes.end(), one) != attributes.end();
    };
    for (const auto& one : attributesOf(wanted)) {
      if (!has(after, one))
        refuse(number + ": " + one.first, "the page does not take the value");
      else
        ++(has(before, one) ? report_.same : report_.put);
    }
    if (actionsOf(now).size() != actionsOf(wanted).size())
      refuse(number, "the page does not take the number of its actions");
  }

  void refuse(const std::string& what, const std::string& reason) {
    report_.refused.push_back(what + ": " + reason);
  }

  XCBaseDlg& page_;
  host::UserInput user_;
  std::vector<const Node*> wanted_;
  PutReport report_;
};

// A section of the tasks that @p listed holds.
std::string sectionText(const std::vector<const Node*>& listed) {
  XmlDocument document;
  Node& section = document.Create("L02");
  for (const Node* task : listed) section.NewChild(Task) = *task;
  return document.ToString();
}

}  // namespace

std::string tasksIn(const Node& section) {
  if (section.Tag() != "L02" && section.Tag() != "E02") return {};
  std::vector<const Node*> listed;
  for (const Node& child : section.Children())
    if (child.TagName() == Task) listed.push_back(&child);
  return sectionText(listed);
}

std::string tasksOn(const XCBaseDlg& page) {
  const auto* tasks = dynamic_cast<const ListControl*>(page.FindControl(std::string_view("tasks")));
  if (tasks == nullptr || page.FindControl(std::string_view("actions")) == nullptr) return {};
  std::vector<const Node*> listed;
  for (std::size_t row = 0; row < tasks->rowCount(); ++row)
    if (const Node* task = tasks->element(row)) listed.push_back(task);
  return sectionText(listed);
}

PutReport putTasks(XCBaseDlg& page, const Node& section) {
  TaskEntry entry(page);
  return entry.hasTasks() ? entry.put(section) : PutReport();
}

}  // namespace workbench
