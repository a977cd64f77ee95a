#include "editor/window/configuration_model.h"

#include <gtest/gtest.h>

#include "host/services/setup.h"
#include "tests/support/texts.h"

namespace {

using editor::ConfigurationModel;
using Kind = ConfigurationModel::Kind;

class ConfigurationTreeModel : public testing::Test {
 protected:
  ConfigurationTreeModel() { support::texts(); }
  ~ConfigurationTreeModel() override { XCMainCfg::Get().Document().Clear(); }

  void load(const std::string& xml) { ASSERT_TRUE(XCMainCfg::Get().Document().Parse(xml)); }
  static QString text(const QModelIndex& index) { return index.data().toString(); }

  static constexpr const char* Town = R"(<configuration>
    <commSystem>
      <device><id>a</id><name>North</name><address>10.0.0.1</address>
        <childDevices><zellamp><id>n1</id><name>1</name></zellamp>
                      <zellamp><id>n2</id><name>2</name></zellamp></childDevices></device>
      <device><id>b</id><name>South</name><address>10.0.0.2</address></device>
    </commSystem>
    <deviceGroups><groups>
      <group><id>North</id><groups><group><id>Square</id></group></groups></group>
    </groups></deviceGroups></configuration>)";
};

TEST_F(ConfigurationTreeModel, AnEmptyConfigurationHasARootWithoutDevices) {
  load("<configuration/>");
  ConfigurationModel model;
  EXPECT_EQ(model.rowCount(), 1);
  EXPECT_FALSE(model.hasChildren(model.index(0, 0)));
}

TEST_F(ConfigurationTreeModel, DevicesChildDevicesAndNestedGroupsStandBelowOneAnother) {
  load(Town);
  ConfigurationModel model;
  const QModelIndex devices = model.index(0, 0);
  const QModelIndex groups = model.index(1, 0);
  ASSERT_EQ(model.rowCount(devices), 2);
  EXPECT_EQ(text(model.index(1, 0, devices)), "South");
  const QModelIndex north = model.index(0, 0, devices);
  EXPECT_EQ(model.rowCount(north), 2);
  EXPECT_EQ(model.kind(model.index(1, 0, north)), Kind::childDevice);
  EXPECT_EQ(model.parent(model.index(1, 0, north)), north);
  const QModelIndex group = model.index(0, 0, groups);
  EXPECT_EQ(text(group), "North");
  EXPECT_EQ(text(model.index(0, 0, group)), "Square");
}

TEST_F(ConfigurationTreeModel, ADeviceIsFoundByItsId) {
  load(Town);
  ConfigurationModel model;
  EXPECT_EQ(text(model.indexOfDevice(u"b")), "South");
  EXPECT_FALSE(model.indexOfDevice(u"n1").isValid()) << "a child device is no device";
}

TEST_F(ConfigurationTreeModel, ASearchShowsWhatMatchesAndTheBranchesThatLeadThere) {
  load(Town);
  ConfigurationModel model;
  model.setSearch("2");
  const QModelIndex devices = model.index(0, 0);
  ASSERT_EQ(model.rowCount(devices), 2) << "North by a child device, South by its address";
  const QModelIndex north = model.index(0, 0, devices);
  ASSERT_EQ(model.rowCount(north), 1);
  EXPECT_EQ(text(model.index(0, 0, north)), "2");
  model.setSearch("north");
  EXPECT_EQ(model.rowCount(model.index(0, 0)), 1);
  EXPECT_EQ(model.rowCount(model.index(0, 0, model.index(0, 0))), 2) << "with all below it";
  model.setSearch("square");
  EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
  EXPECT_EQ(model.rowCount(model.index(1, 0)), 1);
}

TEST_F(ConfigurationTreeModel, AHundredThousandChildDevicesAreReadWhenTheBranchIsOpened) {
  load(
      "<configuration><commSystem><device><id>a</id><childDevices/></device></commSystem>"
      "</configuration>");
  XmlDocument::XmlNode& children = *XCMainCfg::Get().Root()->Node("commSystem/device/childDevices");
  for (int i = 0; i < 100'000; ++i) children.NewChild("zellamp").SetValue("id", u"x");
  ConfigurationModel model;
  const QModelIndex device = model.indexOfDevice(u"a");
  EXPECT_TRUE(model.hasChildren(device));
  children.NewChild("zellamp");
  EXPECT_EQ(model.rowCount(device), 100'001) << "nothing was read before";
}

}  // namespace
