#include "workbench/plugin_loader.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <fstream>
#include <string>

#include "host/dialogs/extension_module.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"

namespace {

constexpr const char* ModuleName = "zellampmanager";
constexpr const char* Definition = "XCDlgNewModifyZelLampManager";
constexpr int DefinitionTemplate = 4530;

bool isMapped(const std::string& file) {
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.ends_with(file)) return true;
  return false;
}

// The process may hold the library only while the test says so.
void expectGone() {
  const auto modules = host::registeredModules();
  EXPECT_EQ(std::count(modules.begin(), modules.end(), ModuleName), 0);
  EXPECT_EQ(host::findTemplate(DefinitionTemplate), nullptr);
  EXPECT_EQ(host::findDeviceDialog(Definition), nullptr);
  EXPECT_EQ(host::findRegistration(u"ZELLAMPMANAGER"), nullptr);
  EXPECT_EQ(::dlopen(LAMP_REAL_PLUGIN, RTLD_NOW | RTLD_NOLOAD), nullptr);
  EXPECT_FALSE(isMapped(LAMP_REAL_PLUGIN));
}

class LoadedPlugin : public testing::Test {
 protected:
  // A dialog of each of its rooms opens and closes again.
  void use() {
    ASSERT_NE(host::findTemplate(DefinitionTemplate), nullptr);
    const host::DriverRegistration* entry = host::findRegistration(u"ZELLAMPMANAGER");
    ASSERT_NE(entry, nullptr);
    driver.run([&] {
      host::findDeviceDialog(Definition)
          ->create(nullptr, manager.element(), XCMainCfg::Get().Root())
          ->DoModal();
    });
    driver.click("cancel");
    driver.run([&] { entry->configure(nullptr, &manager.driver); });
    driver.channel().replyWith("<deviceCfg><ZelLamp Id='1'><L01/></ZelLamp></deviceCfg>");
    driver.click("device");
    for (const int page : {6358, 6512, 6461, 6792}) {
      driver.channel().replyWith("<deviceCfg/>");
      driver.click(page);
      driver.click("cancel");
    }
    driver.closeAll();
    EXPECT_EQ(driver.top(), support::TopKind::none);
  }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(LoadedPlugin, GoesWhollyEachTimeItIsUnloaded) {
  for (int time = 0; time < 3; ++time) {
    workbench::Plugin plugin;
    std::string cause;
    ASSERT_TRUE(plugin.load(LAMP_REAL_PLUGIN, cause)) << cause;
    EXPECT_TRUE(isMapped(LAMP_REAL_PLUGIN));
    use();
    plugin.unload();
    expectGone();
  }
}

TEST_F(LoadedPlugin, TakesBackWhatItRegisteredWhoeverUnloadsIt) {
  for (int time = 0; time < 3; ++time) {
    void* library = ::dlopen(LAMP_REAL_PLUGIN, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << ::dlerror();
    const auto entry =
        std::bit_cast<bool (*)()>(::dlsym(library, "InitializeUsrDriver_ZelLampManager"));
    ASSERT_NE(entry, nullptr);
    EXPECT_TRUE(entry());
    EXPECT_FALSE(entry()) << "the class is registered";
    use();
    EXPECT_EQ(::dlclose(library), 0);
    expectGone();
  }
}

TEST_F(LoadedPlugin, LeavesTheRegistrationOfAnotherAlone) {
  const auto configure = [](CWnd*, XCDriver*) { return true; };
  ASSERT_TRUE(XCDriverServices::Add(XCDriverDeviceZelLampManager::GetThisClass(), configure,
                                    nullptr, nullptr));
  workbench::Plugin plugin;
  std::string cause;
  EXPECT_FALSE(plugin.load(LAMP_REAL_PLUGIN, cause));
  EXPECT_NE(cause.find("refused to start"), std::string::npos) << cause;
  EXPECT_NE(host::findRegistration(u"ZELLAMPMANAGER"), nullptr);
  EXPECT_FALSE(isMapped(LAMP_REAL_PLUGIN));
  host::removeRegistration(XCDriverDeviceZelLampManager::GetThisClass());
}

}  // namespace
