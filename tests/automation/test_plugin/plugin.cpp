#include "host/dialogs/extension_module.h"
#include "host/services/drivers.h"
#include "tests/automation/test_plugin/kinds_dialog.h"
#include "tests/automation/test_plugin/small_dialogs.h"

namespace {

using namespace test_plugin;

class Registration {
 public:
  Registration() {
    module_.name = "test plug-in";
    module_.templates = {{KindsDialog::Number, &KindsDialog::Template},
                         {InnerDialog::Number, &InnerDialog::Template},
                         {StubbornDialog::Number, &StubbornDialog::Template},
                         {DefinitionDialog::Number, &DefinitionDialog::Template}};
    // It has no dialog for the node update.
    module_.deviceDialogs = {
        {"XCDlgNewModifyZelLampManager",
         [](CWnd* parent, XmlDocument::XmlNode* device, XmlDocument::XmlNode* configuration) {
           return std::make_unique<DefinitionDialog>(parent, device, configuration);
         }}};
    host::registerModule(module_);
  }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() { host::unregisterModule(module_); }

 private:
  host::ExtensionModule module_;
};

const Registration registration;

bool configure(CWnd* parent, XCDriver* driver) {
  OptionsDialog dialog(parent, dynamic_cast<XCDriverDevice*>(driver));
  return dialog.DoModal() == IDOK;
}

bool listA(CWnd*, XCDriver* driver, XCNameList& names, const XCListFlags& flags, int,
           XCBasicString) {
  names.push_back(driver->Name());
  return flags.test(33);
}

bool listB(CWnd* parent, XCDriver*, XCNameList& names, const XCListFlags&, int, XCBasicString) {
  host::services().frontEnd().ask({parent, u"Not here"});
  names.push_back(u"after");
  return false;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) bool InitializeUsrDriver_ZelLampManager() {
  return XCDriverServices::Add(XCDriverDeviceZelLampManager::GetThisClass(), configure, listA,
                               listB);
}
