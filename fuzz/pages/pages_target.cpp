// Every dialog of the plug-in on arbitrary replies, with a user who does anything.

#include "device/communication_settings_dialog.h"
#include "device/device_definition_dialog.h"
#include "device/node_update_dialog.h"
#include "driver/configuration_menu.h"
#include "driver/options_dialog.h"
#include "fuzz/dialogs/made_up_host.h"
#include "fuzz/fault.h"
#include "host/services/drivers.h"
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

namespace {

using fuzz::MadeUpHost;

XCDriverDeviceZelLampManager& driver() {
  static XCDriverDeviceZelLampManager made{XCBasicString(u"ZELLAMPMANAGER"), XCBasicString(u"{D1}"),
                                           XCBasicString(u"Main street"),
                                           XCBasicString(u"From the bridge to the park")};
  return made;
}

template <class Page>
void showPage(MadeUpHost& host) {
  Page page(&driver(), nullptr);
  host.show(page);
}

template <lamp::ProgramKind Kind>
void showGroupSchedules(MadeUpHost& host) {
  CDlgE06CfgZelLampManager page(&driver(), nullptr, Kind);
  host.show(page);
}

template <lamp::ProgramKind Kind>
void showCalendar(MadeUpHost& host) {
  XCDeviceCalendarZelLAMPManager editor(nullptr, &driver(), host.device(), Kind);
  host.show(editor);
}

void showMenu(MadeUpHost& host) {
  XCDeviceCfgZelLampManager menu(nullptr, &driver(), host.device());
  host.show(menu);
}

void showOptions(MadeUpHost& host) {
  CDlgOptionsZelLampManager panel(nullptr, &driver());
  host.show(panel);
}

void showNodeUpdate(MadeUpHost& host) {
  XCUpdateNodesZelLampManager update(nullptr, &driver(), host.device());
  host.show(update);
}

void showDeviceDefinition(MadeUpHost& host) {
  XCDlgNewModifyZelLampManager dialog(nullptr, host.device(), XCMainCfg::Get().Root());
  host.show(dialog);
}

void showNewDevice(MadeUpHost& host) {
  XmlDocument made("device");
  XCDlgNewModifyZelLampManager dialog(nullptr, made.Root(), XCMainCfg::Get().Root());
  host.show(dialog);
}

void showCommunicationSettings(MadeUpHost& host) {
  XmlDocument reply = host.controller().reply(0);
  XCDlgAdvancedCfgZelLampManager dialog(nullptr, &reply, XCBasicString(u"address=a"));
  host.show(dialog);
}

// By the letter with which an input begins.
constexpr struct {
  char letter;
  void (*show)(MadeUpHost&);
} Dialogs[] = {
    {'a', showPage<CDlgE01CfgZelLampManager>},
    {'b', showPage<CDlgE02CfgZelLampManager>},
    {'c', showPage<CDlgE03CfgZelLampManager>},
    {'d', showPage<CDlgE04CfgZelLampManager>},
    {'e', showPage<CDlgE05CfgZelLampManager>},
    {'f', showPage<CDlgE07CfgZelLampManager>},
    {'g', showPage<CDlgE08CfgZelLampManager>},
    {'h', showPage<CDlgE09CfgZelLampManager>},
    {'i', showPage<CDlgE11CfgZelLampManager>},
    {'j', showPage<CDlgE13CfgZelLampManager>},
    {'k', showGroupSchedules<lamp::ProgramKind::clock>},
    {'l', showGroupSchedules<lamp::ProgramKind::interval>},
    {'m', showCalendar<lamp::ProgramKind::clock>},
    {'n', showCalendar<lamp::ProgramKind::interval>},
    {'o', showMenu},
    {'p', showOptions},
    {'q', showNodeUpdate},
    {'r', showDeviceDefinition},
    {'s', showNewDevice},
    {'t', showCommunicationSettings},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const auto letter = static_cast<char>(input.byte());
  for (const auto& dialog : Dialogs) {
    if (dialog.letter != letter) continue;
    MadeUpHost host(input);
    dialog.show(host);
    return 0;
  }
  return -1;  // no seed for others
}
