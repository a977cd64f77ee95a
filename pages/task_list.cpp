#include "pages/task_list.h"

#include "pages/binding/row_editor.h"
#include "pages/scheduled_task.h"

namespace lamp {

using host::TextId;
using Node = XmlDocument::XmlNode;

namespace {

host::ListColumn madeColumn(TextId caption, std::function<XCBasicString(const Node&)> cell,
                            int share) {
  host::ListColumn column;
  column.caption = XCLoadString(caption);
  column.share = share;
  column.cell = std::move(cell);
  return column;
}

XCBasicString yesNoText(host::XmlText value) {
  if (value == u"Y") return XCLoadString(TextId::TaskYes);
  return value == u"N" ? XCLoadString(TextId::TaskNo) : XCBasicString();
}

host::ListColumn yesNoColumn(TextId caption, host::XmlName attribute) {
  const auto cell = [attribute](const Node& action) {
    return yesNoText(action.attribute(attribute));
  };
  return madeColumn(caption, cell, 1);
}

int byNumber(const host::ListRow& a, const host::ListRow& b) {
  return compareTaskNumbers(*a.element, *b.element);
}

// By the stamp, which begins with the year, where the cell begins with the day.
int byStart(const host::ListRow& a, const host::ListRow& b) {
  return a.element->attribute(task_name::Start).compare(b.element->attribute(task_name::Start));
}

}  // namespace

std::vector<host::ListColumn> taskColumns() {
  host::ListColumn number = attributeColumn(u"#", task_name::Number);
  number.compare = byNumber;
  host::ListColumn start = madeColumn(TextId::Start, taskStart, 4);
  start.compare = byStart;
  start.name = task_name::Start.text();
  return {std::move(number), std::move(start),
          attributeColumn(TextId::Period, task_name::Period, 4),
          attributeColumn(TextId::Priority, task_name::Priority, 2),
          madeColumn(TextId::Request, taskRequests, 3)};
}

std::vector<host::ListColumn> actionColumns() {
  return {attributeColumn(TextId::Request, task_name::Request),
          yesNoColumn(TextId::Send, task_name::Send), yesNoColumn(TextId::Store, task_name::Store)};
}

}  // namespace lamp
