#include "host/dialogs/extension_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/dialogs/base_dlg.h"
#include "host/dialogs/host_templates.h"
#include "tests/host/support/sample_dialog.h"

using testing::Contains;
using testing::Not;

namespace {

host::DialogTemplate made() {
  return {9100, "Made", "made", {host::okButton()}};
}

TEST(ExtensionModule, ItsTemplatesAreFoundWhileItIsRegistered) {
  EXPECT_EQ(host::findTemplate(sample::Template), nullptr);
  {
    const sample::Module module;
    ASSERT_NE(host::findTemplate(sample::Template), nullptr);
    EXPECT_EQ(host::findTemplate(sample::Template)->className, "SampleDialog");
    EXPECT_THAT(host::registeredModules(), Contains("sample"));
  }
  EXPECT_EQ(host::findTemplate(sample::Template), nullptr);
  EXPECT_THAT(host::registeredModules(), Not(Contains("sample")));
}

TEST(ExtensionModule, ATemplateMayBeMadeWhenItIsFirstAskedFor) {
  host::ExtensionModule module;
  module.name = "late";
  module.templates = {{9100, &made}};
  host::registerModule(module);
  const host::DialogTemplate* found = host::findTemplate(9100);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->className, "Made");
  EXPECT_EQ(host::findTemplate(9100), found) << "and stays where it is";
  host::unregisterModule(module);
}

TEST(ExtensionModule, TheHostsOwnTemplatesAreAlwaysThere) {
  EXPECT_NE(host::findTemplate(host::OptionsTemplate), nullptr);
  EXPECT_NE(host::findTemplate(host::DriverDeviceTemplate), nullptr);
  EXPECT_EQ(host::findTemplate(-1), nullptr);
}

TEST(ExtensionModule, DeviceDialogsAreMadeByName) {
  const sample::Module templates;
  host::ExtensionModule module;
  module.name = "devices";
  module.deviceDialogs = {
      {"SampleDevice", [](CWnd* parent, XmlDocument::XmlNode*, XmlDocument::XmlNode*) {
         return std::make_unique<sample::Dialog>(parent);
       }}};
  host::registerModule(module);
  const host::DeviceDialogClass* found = host::findDeviceDialog("SampleDevice");
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->create(nullptr, nullptr, nullptr)->ClassName(), "SampleDialog");
  EXPECT_EQ(host::findDeviceDialog("Nothing"), nullptr);
  host::unregisterModule(module);
  EXPECT_EQ(host::findDeviceDialog("SampleDevice"), nullptr);
}

TEST(ExtensionModule, ControlsOfTheHostsTemplatesHaveDifferentIdsAndNames) {
  for (const int number : {host::OptionsTemplate, host::DriverDeviceTemplate}) {
    std::set<int> ids;
    std::set<std::string> names;
    for (const host::ControlSpec& control : host::findTemplate(number)->controls) {
      EXPECT_TRUE(ids.insert(control.id).second) << control.name;
      EXPECT_TRUE(names.insert(control.name).second) << control.name;
    }
  }
}

}  // namespace
