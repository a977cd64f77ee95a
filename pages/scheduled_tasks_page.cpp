#include "pages/scheduled_tasks_page.h"

#include "exchange/template_numbers.h"
#include "pages/binding/choice_list.h"
#include "pages/binding/row_page.h"
#include "pages/scheduled_task.h"
#include "pages/task_list.h"
#include "pages/task_table.h"

using host::TextId;
using Node = XmlDocument::XmlNode;
using Page = CDlgE02CfgZelLampManager;
namespace Id = lamp::task_control;
namespace layout = host::layout;
namespace task_name = lamp::task_name;

namespace {

constexpr int ListWidth = 480;

const host::RowSet& tasks() {
  return CDlgE02CfgZelLampManager::PageTable().rows.front();
}
const host::RowSet& actions() {
  return tasks().within.front();
}

const host::Binding& bindingOf(const host::RowSet& rows, int control) {
  for (const host::Binding& binding : rows.bindings)
    if (binding.control == control) return binding;
  return rows.bindings.front();
}

// The labels and the entries of some of a task's values, in tab order.
std::vector<host::ControlSpec> taskControls(std::initializer_list<int> controls) {
  std::vector<host::Binding> bindings;
  for (const int control : controls) bindings.push_back(bindingOf(tasks(), control));
  return lamp::controlsOf(bindings);
}

}  // namespace

const host::PageDescription& CDlgE02CfgZelLampManager::PageTable() {
  return lamp::taskTable();
}

CDlgE02CfgZelLampManager::CDlgE02CfgZelLampManager(XCDriver* driver, CWnd* parent)
    : DocumentPage(lamp::template_number::ScheduledTasks, PageTable(), driver, parent),
      rows_(*this, Id::Tasks, {bindingOf(tasks(), Id::Number), bindingOf(tasks(), Id::Start)}) {}

host::DialogTemplate CDlgE02CfgZelLampManager::Template() {
  constexpr const char* NewImage = "NEW-16.png";
  constexpr const char* DeleteImage = "REMOVE-16.png";
  host::DialogTemplate dialog{
      lamp::template_number::ScheduledTasks, "CDlgE02CfgZelLampManager", "E02",
      lamp::joined(
          {{host::group(Id::TasksGroup, "tasksGroup", TextId::ScheduledTasks),
            host::singleSelectList(Id::Tasks, "tasks"),
            host::button(Id::NewTask, "newTask", TextId::New, NewImage),
            host::disabled(host::button(Id::DeleteTask, "deleteTask", TextId::Delete, DeleteImage)),
            host::group(Id::ParametersGroup, "parametersGroup", TextId::Parameters)},
           taskControls({Id::Number, Id::Start, Id::Priority, Id::FillHoles}),
           {host::group(Id::PeriodGroup, "periodGroup", TextId::Period)},
           taskControls({Id::Months, Id::Days, Id::Hours, Id::Minutes}),
           {host::group(Id::ActionsGroup, "actionsGroup", TextId::Actions),
            host::singleSelectList(Id::Actions, "actions"),
            host::disabled(host::button(Id::NewAction, "newAction", TextId::New, NewImage)),
            host::disabled(
                host::button(Id::DeleteAction, "deleteAction", TextId::Delete, DeleteImage))},
           lamp::controlsOf(actions().bindings),
           {host::okButton(), host::cancelButton()}})};
  for (host::ControlSpec& control : dialog.controls) {
    if (control.id == Id::Number) control.readOnly = true;
    // Kept up to date but never shown.
    if (control.id == Id::FillHoles || control.id == Id::FillHolesLabel) control.visible = false;
  }
  return dialog;
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
  lamp::showCaptions(*this, tasks().bindings);
  lamp::showCaptions(*this, actions().bindings);
  List(Id::Tasks).setColumns(lamp::taskColumns());
  List(Id::Actions).setColumns(lamp::actionColumns());
  lamp::fillTaskChoices(*this);
  const bool chooseFocus = DocumentPage::OnInitDialog();
  showNoTask();
  fillTasks(0);
  return chooseFocus;
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

// --- what is selected

Node* CDlgE02CfgZelLampManager::selectedElement(int listId) const {
  const host::ListControl& list = List(listId);
  return list.selection().empty() ? nullptr : list.element(list.selection().front());
}

// What belongs to a task is only of use while there is one.
void CDlgE02CfgZelLampManager::enableTaskControls() {
  const bool any = List(Id::Tasks).rowCount() > 0;
  const XCBasicString reason = any ? XCBasicString() : XCLoadString(TextId::NoTask);
  for (const int button : {Id::DeleteTask, Id::NewAction, Id::DeleteAction})
    GetDlgItem(button).setEnabled(any, reason);
  for (const host::RowSet* rows : {&tasks(), &actions()})
    for (const host::Binding& binding : rows->bindings)
      if (binding.control != Id::Number) GetDlgItem(binding.control).setEnabled(any, reason);
}

void CDlgE02CfgZelLampManager::showNoTask() {
  enableTaskControls();
  for (const int edit : {Id::Number, Id::Start}) SetDlgItemText(edit, u"");
  showChoices(tasks(), nullptr);
  List(Id::Actions).clearRows();
  showChoices(actions(), nullptr);
}

void CDlgE02CfgZelLampManager::fillTasks(std::size_t selectedRow) {
  if (Copy().section() == nullptr) return;
  rows_.fill(Copy().section(), lamp::isListedTask, selectedRow);
  // Of a task that is there the selection's notice has shown the values.
  if (List(Id::Tasks).rowCount() == 0) showNoTask();
}

void CDlgE02CfgZelLampManager::refillKeeping(const Node& task) {
  std::size_t row = 0;
  for (const Node& other : Copy().section()->Children()) {
    if (&other == &task) break;
    if (lamp::isListedTask(other)) ++row;
  }
  fillTasks(row);
}

void CDlgE02CfgZelLampManager::showChoices(const host::RowSet& rows, const Node* element) {
  for (const host::Binding& binding : rows.bindings)
    if (binding.kind == host::ValueKind::choice)
      lamp::showChoice(Combo(binding.control), binding, element);
}

void CDlgE02CfgZelLampManager::OnTaskSelected() {
  const Node* task = selectedElement(Id::Tasks);
  if (task == nullptr) return;
  enableTaskControls();
  rows_.selectionChanged();
  showChoices(tasks(), task);
  showActions(*task);
}

void CDlgE02CfgZelLampManager::Refresh() {
  List(Id::Tasks).cellsChanged();
  OnTaskSelected();
}

void CDlgE02CfgZelLampManager::showActions(const Node& task) {
  host::ListControl& list = List(Id::Actions);
  list.clearRows();
  for (Node* child = task.FirstChild(); child != nullptr; child = child->NextSibling())
    if (actions().isRow(*child)) list.addRow({child});
  if (list.rowCount() < 2)
    GetDlgItem(Id::DeleteAction).setEnabled(false, XCLoadString(TextId::LastActionStays));
  OnActionSelected();
}

void CDlgE02CfgZelLampManager::OnActionSelected() {
  showChoices(actions(), selectedElement(Id::Actions));
}

// --- edits

void CDlgE02CfgZelLampManager::OnTaskChoice(int comboId) {
  choose(tasks(), comboId, selectedElement(Id::Tasks));
}

void CDlgE02CfgZelLampManager::OnActionChoice(int comboId) {
  Node* action = selectedElement(Id::Actions);
  // Without an action there is nothing to edit: the lists go back to showing nothing.
  if (action == nullptr) return OnActionSelected();
  choose(actions(), comboId, action);
  List(Id::Actions).cellsChanged();
}

void CDlgE02CfgZelLampManager::choose(const host::RowSet& rows, int comboId, Node* element) {
  const host::Binding& binding = bindingOf(rows, comboId);
  const auto value = lamp::chosenValue(Combo(comboId), binding);
  if (element == nullptr || !value) return;
  binding.put(*element, *value);
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
  Node* section = Copy().section();
  if (section == nullptr) return;
  lamp::appendTask(*section, XCDateTime::LTC());
  fillTasks(List(Id::Tasks).rowCount());
}

void CDlgE02CfgZelLampManager::OnDeleteTask() {
  Node* task = selectedElement(Id::Tasks);
  if (task == nullptr) return;
  // The controller deletes a task of its own when the period comes back empty.
  if (lamp::holdsTask(Untouched(), task->getAttribute(task_name::Number)))
    task->setAttribute(task_name::Period, u"");
  else
    Copy().section()->RemoveChild(task);
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
