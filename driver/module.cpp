#include "driver/configuration_menu.h"
#include "host/dialogs/extension_module.h"
#include "pages/general_settings_page.h"
#include "pages/node_table_page.h"
#include "pages/page_templates.h"

namespace {

// Registered while the plug-in is loaded: the host finds its templates and classes through it.
class Registration {
 public:
  Registration() {
    module_.name = "zellampmanager";
    namespace number = lamp::page_template;
    module_.templates = {{number::ConfigurationMenu, XCDeviceCfgZelLampManager::Template},
                         {number::GeneralSettings, CDlgE01CfgZelLampManager::Template},
                         {number::NodeTable, CDlgE04CfgZelLampManager::Template}};
    host::registerModule(module_);
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() { host::unregisterModule(module_); }

 private:
  host::ExtensionModule module_;
};

const Registration registration;

}  // namespace
