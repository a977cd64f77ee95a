#include "pages/scheduled_tasks_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/character_choice.h"
#include "pages/scheduled_task.h"
#include "pages/task_list.h"

using host::TextId;
using Node = XmlDocument::XmlNode;
using Page = CDlgE02CfgZelLampManager;
namespace layout = host::layout;
namespace task_name = lamp::task_name;

namespace {

enum Id {
  TasksGroup = host::privateId(0),
  Tasks,
  NewTask,
  DeleteTask,
  ParametersGroup,
  NumberLabel,
  Number,
  StartLabel,
  Start,
  PriorityLabel,
  Priority,
  FillHolesLabel,
  FillHoles,
  PeriodGroup,
  MonthsLabel,
  DaysLabel,
  HoursLabel,
  MinutesLabel,
  Months,
  Days,
  Hours,
  Minutes,
  ActionsGroup,
  Actions,
  NewAction,
  DeleteAction,
  RequestLabel,
  Request,
  SendLabel,
  Send,
  StoreLabel,
  Store,
};

constexpr int ListWidth = 480;
constexpr int LowestPriority = 3;
constexpr int LargestPeriod[] = {12, 31, 23, 59};  // of the period's lists, from the months on
constexpr int TaskChoices[] = {Priority, FillHoles, Months, Days, Hours, Minutes};
constexpr int TaskControls[] = {DeleteTask, Start,     Priority,     FillHoles, Months, Days, Hours,
                                Minutes,    NewAction, DeleteAction, Request,   Send,   Store};

struct Report {
  int section;
  TextId name;
};
constexpr Report Reports[] = {
    {3, TextId::ReportNodeList}, {9, TextId::ReportAlarms}, {15, TextId::ReportUsage}};

XCBasicString requestOf(int section) {
  return XCBasicString::Format(u"L%02d", section);
}

lamp::PeriodPart partOf(int comboId) {
  return static_cast<lamp::PeriodPart>(comboId - Id::Months);
}

}  // namespace

CDlgE02CfgZelLampManager::CDlgE02CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : SettingsPage(lamp::template_number::ScheduledTasks, lamp::section::TasksRead, driver, parent),
      copy_(lamp::section::TasksRead),
      rows_(*this, Id::Tasks,
            {{Id::Number, task_name::Number},
             {Id::Start, std::nullopt, lamp::taskStart, lamp::setTaskStart}}) {}

host::DialogTemplate CDlgE02CfgZelLampManager::Template() {
  constexpr const char* NewImage = "NEW-16.png";
  constexpr const char* DeleteImage = "REMOVE-16.png";
  return {
      lamp::template_number::ScheduledTasks,
      "CDlgE02CfgZelLampManager",
      "E02",
      {host::group(Id::TasksGroup, "tasksGroup", TextId::ScheduledTasks),
       host::singleSelectList(Id::Tasks, "tasks"),
       host::button(Id::NewTask, "newTask", TextId::New, NewImage),
       host::disabled(host::button(Id::DeleteTask, "deleteTask", TextId::Delete, DeleteImage)),
       host::group(Id::ParametersGroup, "parametersGroup", TextId::Parameters),
       host::label(Id::NumberLabel, "numberLabel", TextId::Identifier),
       host::readOnlyEdit(Id::Number, "number"),
       host::label(Id::StartLabel, "startLabel", TextId::Start), host::edit(Id::Start, "start"),
       host::label(Id::PriorityLabel, "priorityLabel", TextId::Priority),
       host::combo(Id::Priority, "priority"),
       // Kept up to date but never shown.
       host::hidden(host::label(Id::FillHolesLabel, "fillHolesLabel", TextId::FillHoles)),
       host::hidden(host::combo(Id::FillHoles, "fillHoles")),
       host::group(Id::PeriodGroup, "periodGroup", TextId::Period),
       host::label(Id::MonthsLabel, "monthsLabel", TextId::Months),
       host::combo(Id::Months, "months"), host::label(Id::DaysLabel, "daysLabel", TextId::Days),
       host::combo(Id::Days, "days"), host::label(Id::HoursLabel, "hoursLabel", TextId::Hours),
       host::combo(Id::Hours, "hours"),
       host::label(Id::MinutesLabel, "minutesLabel", TextId::Minutes),
       host::combo(Id::Minutes, "minutes"),
       host::group(Id::ActionsGroup, "actionsGroup", TextId::Actions),
       host::singleSelectList(Id::Actions, "actions"),
       host::disabled(host::button(Id::NewAction, "newAction", TextId::New, NewImage)),
       host::disabled(host::button(Id::DeleteAction, "deleteAction", TextId::Delete, DeleteImage)),
       host::label(Id::RequestLabel, "requestLabel", TextId::Request),
       host::combo(Id::Request, "request"), host::label(Id::SendLabel, "sendLabel", TextId::Send),
       host::combo(Id::Send, "send"), host::label(Id::StoreLabel, "storeLabel", TextId::Store),
       host::combo(Id::Store, "store"), host::okButton(), host::cancelButton()}};
}

const host::MessageMap* CDlgE02CfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onSelection<&Page::OnTaskSelected>(Id::Tasks),
      host::onKey<&Page::OnTaskKey>(Id::Tasks),
      host::onClick<&Page::OnNewTask>(Id::NewTask),
      host::onClick<&Page::OnDeleteTask>(Id::DeleteTask),
      host::onChange<&Page::OnStartChanged>(Id::Start),
      host::onChoose<&Page::OnTaskChoice>(Id::Priority),
      host::onChoose<&Page::OnTaskChoice>(Id::FillHoles),
      host::onChoose<&Page::OnTaskChoice>(Id::Months, Id::Minutes),
      host::onSelection<&Page::OnActionSelected>(Id::Actions),
      host::onKey<&Page::OnActionKey>(Id::Actions),
      host::onClick<&Page::OnNewAction>(Id::NewAction),
      host::onClick<&Page::OnDeleteAction>(Id::DeleteAction),
      host::onChoose<&Page::OnActionChoice>(Id::Request),
      host::onChoose<&Page::OnActionChoice>(Id::Send),
      host::onChoose<&Page::OnActionChoice>(Id::Store)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool CDlgE02CfgZelLampManager::OnInitDialog() {
  SetWindowText(XCLoadString(TextId::ScheduledTasks));
  List(Id::Tasks).setColumns(lamp::taskColumns());
  List(Id::Actions).setColumns(lamp::actionColumns());
  copy_.take(Document());
  fillChoices();
  showNoTask();
  fillTasks(0);
  return SettingsPage::OnInitDialog();
}

void CDlgE02CfgZelLampManager::Layout() {
  using layout::control;
  using layout::labelled;
  host::LayoutItem tasks = layout::box(
      Id::TasksGroup,
      {control(Id::Tasks, 1, ListWidth),
       XCHoritzontalLayout({control(Id::NewTask), control(Id::DeleteTask), layout::stretch()})},
      1);
  host::LayoutItem parameters = layout::box(
      Id::ParametersGroup,
      {XCHoritzontalLayout({labelled(Id::NumberLabel, Id::Number),
                            labelled(Id::StartLabel, Id::Start, 1),
                            labelled(Id::PriorityLabel, Id::Priority),
                            labelled(Id::FillHolesLabel, Id::FillHoles)}),
       layout::box(Id::PeriodGroup,
                   {XCHoritzontalLayout({labelled(Id::MonthsLabel, Id::Months, 1),
                                         labelled(Id::DaysLabel, Id::Days, 1),
                                         labelled(Id::HoursLabel, Id::Hours, 1),
                                         labelled(Id::MinutesLabel, Id::Minutes, 1)})})});
  host::LayoutItem actions = layout::box(
      Id::ActionsGroup,
      {control(Id::Actions, 1),
       XCHoritzontalLayout({control(Id::NewAction), control(Id::DeleteAction), layout::stretch()}),
       XCHoritzontalLayout({labelled(Id::RequestLabel, Id::Request, 2),
                            labelled(Id::SendLabel, Id::Send, 1),
                            labelled(Id::StoreLabel, Id::Store, 1)})},
      1);
  SetLayout(XCVerticalLayout(
      {XCHoritzontalLayout(
           {std::move(tasks), XCVerticalLayout({std::move(parameters), std::move(actions)}, 1)}, 1),
       layout::okCancelRow()}));
}

void CDlgE02CfgZelLampManager::fillChoices() {
  for (int priority = 1; priority <= LowestPriority; ++priority)
    Combo(Id::Priority).addItem(host::decimal(priority), priority);
  for (int combo = Id::Months; combo <= Id::Minutes; ++combo)
    for (int number = 0; number <= LargestPeriod[combo - Id::Months]; ++number)
      Combo(combo).addItem(host::decimal(number), number);
  for (const Report& report : Reports)
    Combo(Id::Request)
        .addItem(requestOf(report.section) + u": " + XCLoadString(report.name), report.section);
  for (const int combo : {int(Id::FillHoles), int(Id::Send), int(Id::Store)}) {
    Combo(combo).addItem(XCLoadString(TextId::TaskNo), u'N');
    Combo(combo).addItem(XCLoadString(TextId::TaskYes), u'Y');
  }
}

// --- what is selected

Node* CDlgE02CfgZelLampManager::selectedElement(int listId) const {
  const host::ListControl& list = List(listId);
  return list.selection().empty() ? nullptr : list.element(list.selection().front());
}

// What belongs to a task is only of use while there is one.
void CDlgE02CfgZelLampManager::enableTaskControls() {
  const bool any = List(Id::Tasks).rowCount() > 0;
  const XCBasicString reason = any ? XCBasicString() : XCLoadString(TextId::NoTask);
  for (const int control : TaskControls) GetDlgItem(control).setEnabled(any, reason);
}

void CDlgE02CfgZelLampManager::showNoTask() {
  enableTaskControls();
  for (const int edit : {int(Id::Number), int(Id::Start)}) SetDlgItemText(edit, u"");
  for (const int combo : TaskChoices) Combo(combo).select(std::nullopt);
  List(Id::Actions).clearRows();
  OnActionSelected();
}

void CDlgE02CfgZelLampManager::fillTasks(std::size_t selectedRow) {
  if (copy_.section() == nullptr) return;
  rows_.fill(copy_.section(), lamp::isListedTask, selectedRow);
  // Of a task that is there the selection's notice has shown the values.
  if (List(Id::Tasks).rowCount() == 0) showNoTask();
}

void CDlgE02CfgZelLampManager::refillKeeping(const Node& task) {
  std::size_t row = 0;
  for (const Node& other : copy_.section()->Children()) {
    if (&other == &task) break;
    if (lamp::isListedTask(other)) ++row;
  }
  fillTasks(row);
}

void CDlgE02CfgZelLampManager::OnTaskSelected() {
  const Node* task = selectedElement(Id::Tasks);
  if (task == nullptr) return;
  enableTaskControls();
  rows_.selectionChanged();
  Combo(Id::Priority).selectData(task->attribute(task_name::Priority).toInt());
  lamp::selectCharacter(Combo(Id::FillHoles), task->getAttribute(task_name::FillHoles));
  for (int combo = Id::Months; combo <= Id::Minutes; ++combo)
    Combo(combo).select(lamp::taskPeriod(*task, partOf(combo)));
  showActions(*task);
}

void CDlgE02CfgZelLampManager::showActions(const Node& task) {
  host::ListControl& actions = List(Id::Actions);
  actions.clearRows();
  for (Node* child = task.FirstChild(); child != nullptr; child = child->NextSibling())
    if (child->TagName() == task_name::Action) actions.addRow({child});
  if (actions.rowCount() < 2)
    GetDlgItem(Id::DeleteAction).setEnabled(false, XCLoadString(TextId::LastActionStays));
  OnActionSelected();
}

void CDlgE02CfgZelLampManager::OnActionSelected() {
  const Node* action = selectedElement(Id::Actions);
  const auto value = [action](host::XmlName attribute) {
    return action == nullptr ? XCBasicString() : action->getAttribute(attribute);
  };
  Combo(Id::Request).select(std::nullopt);
  for (const Report& report : Reports)
    if (value(task_name::Request) == requestOf(report.section))
      Combo(Id::Request).selectData(report.section);
  lamp::selectCharacter(Combo(Id::Send), value(task_name::Send));
  lamp::selectCharacter(Combo(Id::Store), value(task_name::Store));
}

// --- edits

void CDlgE02CfgZelLampManager::OnTaskChoice(int comboId) {
  Node* task = selectedElement(Id::Tasks);
  const host::ComboControl& combo = Combo(comboId);
  const std::optional<int> chosen = combo.selectedData();
  if (task == nullptr || !chosen) return;
  if (comboId == Id::Priority)
    task->setAttribute(task_name::Priority, host::decimal(*chosen));
  else if (comboId == Id::FillHoles)
    task->setAttribute(task_name::FillHoles, *lamp::selectedCharacter(combo));
  else
    lamp::setTaskPeriod(*task, partOf(comboId), *chosen);
  List(Id::Tasks).cellsChanged();
}

void CDlgE02CfgZelLampManager::OnActionChoice(int comboId) {
  Node* action = selectedElement(Id::Actions);
  // Without an action there is nothing to edit: the lists go back to showing nothing.
  if (action == nullptr) return OnActionSelected();
  const host::ComboControl& combo = Combo(comboId);
  if (!combo.selected()) return;
  if (comboId == Id::Request)
    action->setAttribute(task_name::Request, requestOf(*combo.selectedData()));
  else
    action->setAttribute(comboId == Id::Send ? task_name::Send : task_name::Store,
                         *lamp::selectedCharacter(combo));
  List(Id::Actions).cellsChanged();
  List(Id::Tasks).cellsChanged();
}

void CDlgE02CfgZelLampManager::OnTaskKey(host::Key key) {
  if (key == host::Key::insert) OnNewTask();
  if (key == host::Key::deleteKey) OnDeleteTask();
}

void CDlgE02CfgZelLampManager::OnActionKey(host::Key key) {
  if (key == host::Key::insert) OnNewAction();
  if (key == host::Key::deleteKey) OnDeleteAction();
}

void CDlgE02CfgZelLampManager::OnNewTask() {
  Node* section = copy_.section();
  if (section == nullptr) return;
  lamp::appendTask(*section, XCDateTime::LTC());
  fillTasks(List(Id::Tasks).rowCount());
}

void CDlgE02CfgZelLampManager::OnDeleteTask() {
  Node* task = selectedElement(Id::Tasks);
  if (task == nullptr) return;
  const Node* read = lamp::sectionOf(copy_.untouched(), lamp::section::TasksRead);
  // The controller deletes a task of its own when the period comes back empty.
  if (lamp::holdsTask(read, task->getAttribute(task_name::Number)))
    task->setAttribute(task_name::Period, u"");
  else
    copy_.section()->RemoveChild(task);
  fillTasks(0);
}

void CDlgE02CfgZelLampManager::OnNewAction() {
  Node* task = selectedElement(Id::Tasks);
  if (task == nullptr) return;
  lamp::appendAction(*task);
  refillKeeping(*task);
}

void CDlgE02CfgZelLampManager::OnDeleteAction() {
  Node* task = selectedElement(Id::Tasks);
  Node* action = selectedElement(Id::Actions);
  if (task == nullptr || action == nullptr || lamp::actionCount(*task) < 2) return;
  task->RemoveChild(action);
  refillKeeping(*task);
}

// --- OK

// Looks at the rows alone: the edit that gets the focus shows the selected task, whichever it is.
bool CDlgE02CfgZelLampManager::Validate() {
  const host::ListControl& tasks = List(Id::Tasks);
  for (std::size_t row = 0; row < tasks.rowCount(); ++row) {
    if (!lamp::taskStart(*tasks.element(row)).IsEmpty()) continue;
    MessageBox(TextId::FieldInvalid);
    FocusAndSelectAll(Id::Start);
    return false;
  }
  return true;
}

bool CDlgE02CfgZelLampManager::Write() {
  if (!copy_.changed()) return true;
  return copy_.prepareWrite(Document(), lamp::section::TasksWrite) != nullptr && writeCfg(false);
}
