#include "pages/task_table.h"

#include "exchange/sections.h"
#include "host/dialogs/base_dlg.h"
#include "pages/binding/section_write.h"
#include "pages/scheduled_task.h"

namespace lamp {
namespace {

using host::Binding;
using host::TextId;
using host::ValueKind;
using Node = XmlDocument::XmlNode;
using namespace task_control;

constexpr int LowestPriority = 3;
constexpr int LargestPeriod[] = {12, 31, 23, 59};  // of the period's lists, from the months on

struct Report {
  int section;
  TextId name;
};
constexpr Report Reports[] = {
    {3, TextId::ReportNodeList}, {9, TextId::ReportAlarms}, {15, TextId::ReportUsage}};

constexpr host::Caption Parameters{TextId::Parameters};

XCBasicString requestOf(int section) {
  return XCBasicString::Format(u"L%02d", section);
}

Binding choice(host::XmlName attribute, const char* controlName, TextId caption, TextId frame,
               int label, int control) {
  return {.name = std::string(attribute.text()),
          .attributes = {attribute},
          .caption = {caption},
          .frame = {frame},
          .kind = ValueKind::choice,
          .control = control,
          .label = label,
          .controlName = controlName};
}

Binding numberChoice(Binding made) {
  made.valueOfEntry = [](int data) { return host::decimal(data); };
  return made;
}

// Two digits of the period, which one drop-down list shows as a number.
Binding periodPart(const char* name, PeriodPart part, TextId caption, int label, int control) {
  Binding made =
      numberChoice(choice(task_name::Period, name, caption, TextId::Period, label, control));
  made.name = name;
  made.part = true;
  made.read = [part](const Node& task) {
    const std::optional<std::size_t> number = taskPeriod(task, part);
    return number ? host::decimal(static_cast<std::int64_t>(*number)) : XCBasicString();
  };
  made.write = [part](Node& task, const XCBasicString& number) {
    setTaskPeriod(task, part, number.ToInt());
  };
  return made;
}

// A start that is no date shows as an empty one.
host::ValueRule dated() {
  return {[](const Node& task, std::size_t&) { return !taskStart(task).IsEmpty(); },
          [](const Node&) { return XCLoadString(TextId::FieldInvalid); }};
}

// A priority is read as a number: "02" is the second entry.
XCBasicString taskPriority(const Node& task) {
  const XCBasicString text = task.getAttribute(task_name::Priority);
  const int number = text.ToInt();
  return number >= 1 && number <= LowestPriority ? host::decimal(number) : text;
}

Binding priority() {
  Binding made = numberChoice(choice(task_name::Priority, "priority", TextId::Priority,
                                     TextId::Parameters, PriorityLabel, Priority));
  made.read = taskPriority;
  made.write = [](Node& task, const XCBasicString& number) {
    task.setAttribute(task_name::Priority, number);
  };
  return made;
}

std::vector<Binding> taskValues() {
  return {{.name = "TpTar",
           .attributes = {task_name::Number},
           .caption = {TextId::Identifier},
           .frame = Parameters,
           .control = Number,
           .label = NumberLabel,
           .controlName = "number"},
          {.name = "TpHi",
           .attributes = {task_name::Start},
           .caption = {TextId::Start},
           .frame = Parameters,
           .kind = ValueKind::time,
           .control = Start,
           .label = StartLabel,
           .controlName = "start",
           .rule = dated(),
           .read = taskStart,
           .write = setTaskStart},
          periodPart("months", PeriodPart::months, TextId::Months, MonthsLabel, Months),
          periodPart("days", PeriodPart::days, TextId::Days, DaysLabel, Days),
          periodPart("hours", PeriodPart::hours, TextId::Hours, HoursLabel, Hours),
          periodPart("minutes", PeriodPart::minutes, TextId::Minutes, MinutesLabel, Minutes),
          choice(task_name::FillHoles, "fillHoles", TextId::FillHoles, TextId::Parameters,
                 FillHolesLabel, FillHoles),
          priority()};
}

std::vector<Binding> actionValues() {
  Binding request = choice(task_name::Request, "request", TextId::Request, TextId::Actions,
                           RequestLabel, Request);
  request.valueOfEntry = requestOf;
  return {std::move(request),
          choice(task_name::Send, "send", TextId::Send, TextId::Actions, SendLabel, Send),
          choice(task_name::Store, "store", TextId::Store, TextId::Actions, StoreLabel, Store)};
}

bool isAction(const Node& child) {
  return child.TagName() == task_name::Action;
}

XCBasicString taskNumber(const Node& task) {
  return task.getAttribute(task_name::Number);
}

host::PageDescription makeTable() {
  host::PageDescription page = wholeSection(
      {.read = section::TasksRead, .write = section::TasksWrite, .deletedBy = task_name::Period});
  Binding deleted{.name = "TpPer", .attributes = {task_name::Period}, .caption = {TextId::Period}};
  page.rows = {{.places = {{.list = Tasks}},
                .identity = taskNumber,
                .bindings = taskValues(),
                .identityName = "TpTar",
                .within = {{.places = {{.list = Actions}},
                            .isRow = isAction,
                            .bindings = actionValues(),
                            .addControl = NewAction,
                            .removeControl = DeleteAction}},
                .deletedBy = std::move(deleted),
                .addControl = NewTask,
                .removeControl = DeleteTask,
                .visit = host::CheckVisit::nothing}};
  return page;
}

}  // namespace

const host::PageDescription& taskTable() {
  static const host::PageDescription page = makeTable();
  return page;
}

void fillTaskChoices(const XCBaseDlg& page) {
  for (int priority = 1; priority <= LowestPriority; ++priority)
    page.Combo(Priority).addItem(host::decimal(priority), priority);
  for (int combo = Months; combo <= Minutes; ++combo)
    for (int number = 0; number <= LargestPeriod[combo - Months]; ++number)
      page.Combo(combo).addItem(host::decimal(number), number);
  for (const Report& report : Reports)
    page.Combo(Request).addItem(requestOf(report.section) + u": " + XCLoadString(report.name),
                                report.section);
  for (const int combo : {int(FillHoles), int(Send), int(Store)}) {
    page.Combo(combo).addItem(XCLoadString(TextId::TaskNo), u'N');
    page.Combo(combo).addItem(XCLoadString(TextId::TaskYes), u'Y');
  }
}

}  // namespace lamp
