#include "driver/configuration_menu.h"

#include "exchange/exchange_frame.h"
#include "exchange/template_numbers.h"
#include "host/services/setup.h"
#include "pages/alarm_thresholds_page.h"
#include "pages/blacklist_page.h"
#include "pages/firmware_page.h"
#include "pages/general_settings_page.h"
#include "pages/inputs_outputs_page.h"
#include "pages/node_command_page.h"
#include "pages/node_power_page.h"
#include "pages/node_removal_page.h"
#include "pages/node_table_page.h"
#include "pages/scheduled_tasks_page.h"
#include "programs/calendar_editor.h"
#include "programs/group_schedules_page.h"

using host::TextId;
using Menu = XCDeviceCfgZelLampManager;
namespace layout = host::layout;

namespace {

enum Id {
  ControllerGroup = 5000,
  IdentifierLabel = 5001,
  Identifier = 5002,
  NameLabel = 5003,
  DescriptionLabel = 5004,
  Description = 5005,
  ModelLabel = 5006,
  Model = 5007,
  FirmwareLabel = 5008,
  Firmware = 5009,
  Name = 5010,
  ManufacturedLabel = 6360,
  Manufactured = 6361,
  ProgramsGroup = 6527,
  InputsButton = 6630,
};

const host::XmlName ModelAttribute("Mod");
const host::XmlName FirmwareVersion("Vf");
const host::XmlName CommunicationFirmwareVersion("VfComm");
const host::XmlName YearOfManufacture("Af");

// Where a page's button stands in the menu.
enum class Place { main, programs };

struct MenuEntry {
  int button;
  const char* name;
  TextId text;
  Place place;
  void (*open)(Menu& menu);
};

template <class Page>
void openPage(Menu& menu) {
  Page(menu.PageDriver(), &menu).DoModal();
}

// A controller that reports its inputs has clock programs, any other one interval programs.
lamp::ProgramKind programKind(const Menu& menu) {
  return menu.InputsDetected() ? lamp::ProgramKind::clock : lamp::ProgramKind::interval;
}

void openGroupSchedules(Menu& menu) {
  CDlgE06CfgZelLampManager(menu.PageDriver(), &menu, programKind(menu)).DoModal();
}

void openCalendar(Menu& menu) {
  XCDeviceCalendarZelLAMPManager editor(&menu, menu.PageDriver(), menu.PageDevice(),
                                        programKind(menu));
  if (editor.DoModal() == IDOK) menu.SetCalendarChanged();
}

// One line a page, in the order of the buttons.
constexpr MenuEntry Entries[] = {
    {6358, "general", TextId::Parameters, Place::main, openPage<CDlgE01CfgZelLampManager>},
    {6461, "tasks", TextId::ScheduledTasks, Place::main, openPage<CDlgE02CfgZelLampManager>},
    {6510, "firmware", TextId::Update, Place::main, openPage<CDlgE03CfgZelLampManager>},
    {6512, "nodeTable", TextId::NodeReference, Place::main, openPage<CDlgE04CfgZelLampManager>},
    {6528, "nodePower", TextId::NodePower, Place::programs, openPage<CDlgE05CfgZelLampManager>},
    {6552, "groupSchedules", TextId::GroupSchedules, Place::programs, openGroupSchedules},
    {6581, "alarmThresholds", TextId::AlarmThresholds, Place::main,
     openPage<CDlgE07CfgZelLampManager>},
    {6587, "nodeRemoval", TextId::NodeRemoval, Place::main, openPage<CDlgE08CfgZelLampManager>},
    {6616, "blacklist", TextId::NodeBlacklist, Place::main, openPage<CDlgE09CfgZelLampManager>},
    {6623, "nodeCommand", TextId::NodeCommand, Place::main, openPage<CDlgE11CfgZelLampManager>},
    {Id::InputsButton, "inputs", TextId::InputsAndOutputs, Place::main,
     openPage<CDlgE13CfgZelLampManager>},
    {6792, "calendar", TextId::Calendars, Place::main, openCalendar},
};

constexpr int FirstPageButton = 6358;
constexpr int LastPageButton = 6792;

}  // namespace

XCDeviceCfgZelLampManager::XCDeviceCfgZelLampManager(CWnd* parent, XCDriver* driver,
                                                     XmlDocument::XmlNode* device)
    : XCBaseDeviceCfg(lamp::template_number::ConfigurationMenu, driver, parent, device) {}

host::DialogTemplate XCDeviceCfgZelLampManager::Template() {
  host::DialogTemplate dialog{
      lamp::template_number::ConfigurationMenu,
      "XCDeviceCfgZelLampManager",
      "",
      {host::group(Id::ControllerGroup, "controllerGroup", TextId::Device),
       host::label(Id::IdentifierLabel, "identifierLabel", TextId::ControllerIdentifier),
       host::label(Id::Identifier, "identifier"),
       host::label(Id::NameLabel, "nameLabel", TextId::Name), host::label(Id::Name, "name"),
       host::label(Id::DescriptionLabel, "descriptionLabel", TextId::Description),
       host::label(Id::Description, "description"),
       host::label(Id::ModelLabel, "modelLabel", TextId::Model), host::label(Id::Model, "model"),
       host::label(Id::FirmwareLabel, "firmwareVersionLabel", TextId::FirmwareVersion),
       host::label(Id::Firmware, "firmwareVersion"),
       host::label(Id::ManufacturedLabel, "manufacturedLabel", TextId::YearOfManufacture),
       host::label(Id::Manufactured, "manufactured"),
       host::group(Id::ProgramsGroup, "programsGroup", TextId::DimmingPrograms)}};
  bool programs = false;
  for (const MenuEntry& entry : Entries) {
    dialog.controls.push_back(host::button(entry.button, entry.name, entry.text));
    programs = programs || entry.place == Place::programs;
  }
  dialog.controls.push_back(host::okButton(TextId::Exit, "EXIT-16.png"));
  for (host::ControlSpec& control : dialog.controls)
    if (control.id == Id::ProgramsGroup) control.visible = programs;
  return dialog;
}

int XCDeviceCfgZelLampManager::DoModal() {
  lamp::prepareRead(Document(), lamp::section::GeneralRead);
  return XCBaseDeviceCfg::DoModal();
}

const host::MessageMap* XCDeviceCfgZelLampManager::GetMessageMap() const {
  static constexpr host::MessageEntry entries[] = {
      host::onClick<&Menu::OnPage>(FirstPageButton, LastPageButton)};
  static constexpr host::MessageMap map{nullptr, entries};
  return &map;
}

bool XCDeviceCfgZelLampManager::OnInitDialog() {
  SetWindowText(XCBasicString::Format(XCLoadString(TextId::ConfigurationTitle),
                                      XCVarnisSetup::Get().DriverName(Driver().Type())));
  ShowIdentity();
  ApplyInputsRule();
  return XCBaseDeviceCfg::OnInitDialog();
}

void XCDeviceCfgZelLampManager::ShowIdentity() {
  const XmlDocument::XmlNode* root = Document().Root();
  if (root == nullptr) return;
  if (const auto* controller = root->Node(lamp::element::ZelLamp.text()))
    SetDlgItemText(Id::Identifier, controller->getAttribute(lamp::attribute::Id));
  SetDlgItemText(Id::Name, Driver().Name());
  SetDlgItemText(Id::Description, Driver().Description());
  const auto* general = lamp::sectionOf(Document(), lamp::section::GeneralRead);
  if (general == nullptr) return;
  SetDlgItemText(Id::Model, general->getAttribute(ModelAttribute));
  SetDlgItemText(Id::Firmware, general->getAttribute(FirmwareVersion) + u" / " +
                                   general->getAttribute(CommunicationFirmwareVersion));
  SetDlgItemText(Id::Manufactured, general->getAttribute(YearOfManufacture));
}

void XCDeviceCfgZelLampManager::ApplyInputsRule() {
  const auto* general = lamp::sectionOf(Document(), lamp::section::GeneralRead);
  if (general == nullptr) return;
  inputsDetected_ = general->attribute(lamp::attribute::InputsDetected) == u"Y";
  host::Control* inputs = FindControl(Id::InputsButton);
  if (inputs != nullptr && !inputsDetected_)
    inputs->setEnabled(false, XCLoadString(TextId::InputsNotReported));
}

void XCDeviceCfgZelLampManager::OnPage(int buttonId) {
  for (const MenuEntry& entry : Entries)
    if (entry.button == buttonId) return entry.open(*this);
}

void XCDeviceCfgZelLampManager::Layout() {
  host::LayoutItem main = XCVerticalLayout({});
  host::LayoutItem programs = layout::box(Id::ProgramsGroup, {});
  for (const MenuEntry& entry : Entries)
    (entry.place == Place::main ? main : programs).items.push_back(layout::control(entry.button));
  if (!programs.items.empty()) main.items.push_back(std::move(programs));
  SetLayout(XCVerticalLayout(
      {layout::box(
           Id::ControllerGroup,
           {layout::grid(
               2, {layout::control(Id::IdentifierLabel), layout::control(Id::Identifier, 1),
                   layout::control(Id::NameLabel), layout::control(Id::Name, 1),
                   layout::control(Id::DescriptionLabel), layout::control(Id::Description, 1),
                   layout::control(Id::ModelLabel), layout::control(Id::Model, 1),
                   layout::control(Id::FirmwareLabel), layout::control(Id::Firmware, 1),
                   layout::control(Id::ManufacturedLabel), layout::control(Id::Manufactured, 1)})}),
       std::move(main), layout::stretch(),
       XCHoritzontalLayout({layout::stretch(), layout::control(IDOK)})}));
}
