#include "device/communication_settings_dialog.h"
#include "device/device_definition_dialog.h"
#include "device/device_element.h"
#include "device/node_update_dialog.h"
#include "driver/configuration_menu.h"
#include "driver/entry.h"
#include "exchange/template_numbers.h"
#include "host/dialogs/extension_module.h"
#include "host/dialogs/guard.h"
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
#include "programs/calendar_selection.h"
#include "programs/day_types_dialog.h"
#include "programs/group_schedules_page.h"

namespace {

using XmlNode = XmlDocument::XmlNode;

std::unique_ptr<XCBaseDlg> makeDeviceDefinition(CWnd* parent, XmlNode* device,
                                                XmlNode* configuration) {
  return host::guarded(parent, std::unique_ptr<XCBaseDlg>(), [&]() -> std::unique_ptr<XCBaseDlg> {
    return std::make_unique<XCDlgNewModifyZelLampManager>(parent, device, configuration);
  });
}

// None for a device that the host has no driver for.
std::unique_ptr<XCBaseDlg> makeNodeUpdate(CWnd* parent, XmlNode* device, XmlNode*) {
  return host::guarded(parent, std::unique_ptr<XCBaseDlg>(), [&]() -> std::unique_ptr<XCBaseDlg> {
    XCDriver* driver = XCDriver::LockDriver(device->Value(lamp::config::Id));
    if (driver == nullptr) return nullptr;
    return std::make_unique<XCUpdateNodesZelLampManager>(parent, driver, device);
  });
}

template <lamp::ProgramKind Kind>
const host::PageDescription& groupSchedules() {
  return CDlgE06CfgZelLampManager::PageTable(Kind);
}

// Registered while the plug-in is loaded: the host finds its templates and classes through it.
class Registration {
 public:
  // What is thrown while a library is loaded ends the program.
  Registration() noexcept {
    try {
      describe();
      host::registerModule(module_);
      done_ = true;
    } catch (...) {
    }
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() {
    lamp::withdrawEntry();
    host::unregisterModule(module_);
  }

  bool done() const { return done_; }

 private:
  void describe() {
    module_.name = "zellampmanager";
    namespace number = lamp::template_number;
    module_.templates = {
        {number::ConfigurationMenu, XCDeviceCfgZelLampManager::Template},
        {number::GeneralSettings, CDlgE01CfgZelLampManager::Template},
        {number::ScheduledTasks, CDlgE02CfgZelLampManager::Template},
        {number::Firmware, CDlgE03CfgZelLampManager::Template},
        {number::InputsOutputs, CDlgE13CfgZelLampManager::Template},
        {number::DeviceDefinition, XCDlgNewModifyZelLampManager::Template},
        {number::CommunicationSettings, XCDlgAdvancedCfgZelLampManager::Template},
        {number::NodeUpdate, XCUpdateNodesZelLampManager::Template},
        {number::NodeTable, CDlgE04CfgZelLampManager::Template},
        {number::NodePower, CDlgE05CfgZelLampManager::Template},
        {number::AlarmThresholds, CDlgE07CfgZelLampManager::Template},
        {number::NodeRemoval, CDlgE08CfgZelLampManager::Template},
        {number::Blacklist, CDlgE09CfgZelLampManager::Template},
        {number::NodeCommand, CDlgE11CfgZelLampManager::Template},
        {number::GroupSchedules, CDlgE06CfgZelLampManager::Template},
        {number::CalendarEditor, XCDeviceCalendarZelLAMPManager::Template},
        {number::DayTypeEditor, XCDeviceCalendarDayTypesZelLAMPManager::Template},
        {number::CalendarSelection, XCDeviceCalendarSelectionZelLAMPManager::Template}};
    module_.deviceDialogs = {{"XCDlgNewModifyZelLampManager", makeDeviceDefinition},
                             {"XCUpdateNodesZelLampManager", makeNodeUpdate}};
    module_.pages = {
        CDlgE01CfgZelLampManager::PageTable,      CDlgE02CfgZelLampManager::PageTable,
        CDlgE03CfgZelLampManager::PageTable,      CDlgE04CfgZelLampManager::PageTable,
        CDlgE05CfgZelLampManager::PageTable,      groupSchedules<lamp::ProgramKind::interval>,
        groupSchedules<lamp::ProgramKind::clock>, CDlgE07CfgZelLampManager::PageTable,
        CDlgE08CfgZelLampManager::PageTable,      CDlgE09CfgZelLampManager::PageTable,
        CDlgE11CfgZelLampManager::PageTable,      CDlgE13CfgZelLampManager::PageTable};
  }

  host::ExtensionModule module_;
  bool done_ = false;
};

const Registration registration;

}  // namespace

bool lamp::moduleIsRegistered() {
  return registration.done();
}
