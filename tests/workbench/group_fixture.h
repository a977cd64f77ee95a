#pragma once

#include <gtest/gtest.h>

#include "host/services/setup.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/temp_folder.h"
#include "workbench/configuration_store.h"
#include "workbench/device_catalogue.h"
#include "workbench/group_actions.h"

namespace test {

/// A configuration with a controller of four lamps, one group of lamps that holds two of them and a
/// lamp that is no longer there, and a controller whose lamps were never read.
class GroupTest : public testing::Test {
 protected:
  using Node = XmlDocument::XmlNode;

  static constexpr const char* Start =
      "<configuration><commSystem>"
      "<device><id>{1}</id><driver>ZELLAMPMANAGER</driver><name>North</name><childDevices>"
      "<childDevice><id>{a}</id><driver>ZELLAMP</driver><name>1</name>"
      "<description>Calle Mayor 1</description></childDevice>"
      "<childDevice><id>{b}</id><driver>ZELLAMP</driver><name>2</name>"
      "<description>CALLE MAYOR 2</description></childDevice>"
      "<childDevice><id>{c}</id><driver>ZELLAMP</driver><name>3</name>"
      "<description>Plaza</description></childDevice>"
      "<childDevice><id>{d}</id><driver>ZELLAMP</driver><name>4</name></childDevice>"
      "</childDevices></device>"
      "<device><id>{2}</id><driver>ZELLAMPMANAGER</driver><name>West</name></device>"
      "<device><id>{3}</id><driver>TCP</driver><name>Meter</name></device>"
      "</commSystem><deviceGroups><groups><group><id>North</id><devices>"
      "<device><id>{a}</id></device><device><id>{b}</id></device><device><id>{c}</id></device>"
      "<device><id>{d}</id></device></devices><groups>"
      "<group><id>Square</id><note>by hand</note><devices><device><id>{c}</id><since>2024</since>"
      "</device><device><id>{gone}</id></device><device><id>{a}</id></device></devices></group>"
      "</groups></group></groups></deviceGroups><viewSetups/></configuration>";

  void SetUp() override {
    folder.write("configuration.xml", Start);
    std::string cause;
    ASSERT_TRUE(store.open(cause)) << cause;
    host::setDriverRegistry(&catalogue);
  }
  void TearDown() override {
    driver.closeAll();
    host::setDriverRegistry(nullptr);
    XCMainCfg::Get().Document().Clear();
  }

  Node& device(const char16_t* name) { return *workbench::DeviceCatalogue::deviceNamed(name); }
  Node& north() { return device(u"North"); }
  workbench::LampGroups groups() { return workbench::LampGroups(north()); }
  Node& square() { return *groups().named(u"Square"); }
  /// The names of the groups of lamps of North.
  std::vector<std::string> names() {
    std::vector<std::string> found;
    for (const Node* group : groups().all()) found.push_back(group->Value("id").ToUtf8());
    return found;
  }
  /// The ids of the lamps of a group of North.
  std::vector<std::string> lampsOf(const char16_t* group) {
    std::vector<std::string> found;
    for (const XCBasicString& id : workbench::LampGroups::contentOf(*groups().named(group)).lamps)
      found.push_back(id.ToUtf8());
    return found;
  }
  std::string onDisk() { return folder.read("configuration.xml"); }

  support::TempFolder folder;
  workbench::ConfigurationStore store{folder.path()};
  workbench::DeviceCatalogue catalogue;
  workbench::GroupActions actions{store};
  workbench::ActionResult result;
  support::DialogDriver driver;
};

}  // namespace test
