#include "workbench/shared_ids.h"

#include <gtest/gtest.h>

#include "host/services/setup.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/temp_folder.h"
#include "tests/support/xml_compare.h"
#include "workbench/configuration_store.h"

namespace {

using workbench::ConfigurationStore;
using workbench::SharedId;
using Node = XmlDocument::XmlNode;

class SharedIds : public testing::Test {
 protected:
  void TearDown() override { XCMainCfg::Get().Document().Clear(); }

  void load(const std::string& devices, const std::string& groups = "") {
    ASSERT_TRUE(XCMainCfg::Get().Document().Parse(configuration(devices, groups)));
  }
  static std::string configuration(const std::string& devices, const std::string& groups = "") {
    return "<configuration><commSystem>" + devices + "</commSystem><deviceGroups><groups>" +
           groups + "</groups></deviceGroups><viewSetups/></configuration>";
  }
  static std::string device(const std::string& id, const std::string& name,
                            const std::string& children = "") {
    return "<device><id>" + id + "</id><name>" + name + "</name><childDevices>" + children +
           "</childDevices></device>";
  }
  static std::string child(const std::string& id, const std::string& name) {
    return "<childDevice><id>" + id + "</id><revision>" + id + "</revision><name>" + name +
           "</name></childDevice>";
  }
  std::string text() { return sharedIdsText(workbench::sharedIds()).ToUtf8(); }

  support::DialogDriver services;  // texts and ids
};

TEST_F(SharedIds, DevicesAndChildDevicesWithTheirOwnIdsShareNone) {
  load(device("{1}", "North", child("{11}", "a")) + device("{2}", "South", child("{11}", "b")) +
       device("", "No id") + device("", "Neither") + "<other><id>{1}</id></other>");
  EXPECT_TRUE(workbench::sharedIds().empty()) << "child devices have ids of their own kind";
}

TEST_F(SharedIds, ADeviceWithTheIdOfOneBeforeItIsTold) {
  load(device("{1}", "North") + device("{2}", "East") + device("{1}", "South"));
  ASSERT_EQ(workbench::sharedIds().size(), 1U);
  EXPECT_EQ(text(), "[60316](North,South,{1})");
}

TEST_F(SharedIds, AChildDeviceWithADevicesIdIsTheLaterOneWhereverItStands) {
  load(device("{1}", "North", child("{2}", "a") + child("{1}", "b")) + device("{2}", "South"));
  EXPECT_EQ(text(), "[60316](South,[60318](a,North),{2}); [60316](North,[60318](b,North),{1})");
}

TEST_F(SharedIds, OfManyTheFirstAreNamedAndTheOthersCounted) {
  std::string devices;
  for (const char* name : {"a", "b", "c", "d", "e", "f"}) devices += device("{1}", name);
  load(devices);
  EXPECT_EQ(text(), "[60316](a,b,{1}); [60316](a,c,{1}); [60316](a,d,{1}); [60317](2)");
}

TEST_F(SharedIds, TheLaterOnesGetNewIdsAndTheGroupsOfTheirControllerFollow) {
  const std::string member = "<devices><device><id>{2}</id></device></devices>";
  load(device("{1}", "North", child("{2}", "a")) + device("{2}", "South") + device("{1}", "East"),
       "<group><id>North</id>" + member + "<groups><group><id>Gate</id>" + member +
           "</group></groups></group><group><id>Other</id>" + member + "</group>");
  giveNewIds(workbench::sharedIds());
  EXPECT_TRUE(workbench::sharedIds().empty());
  const std::string forEast = "{00000000-0000-4000-8000-000000000001}";
  const std::string forChild = "{00000000-0000-4000-8000-000000000002}";
  const std::string moved = "<devices><device><id>" + forChild + "</id></device></devices>";
  EXPECT_XML_EQ(
      configuration(device("{1}", "North", child(forChild, "a")) + device("{2}", "South") +
                        device(forEast, "East"),
                    "<group><id>North</id>" + moved + "<groups><group><id>Gate</id>" + moved +
                        "</group></groups></group><group><id>Other</id>" + member + "</group>"),
      XCMainCfg::Get().Document());
}

TEST_F(SharedIds, AConfigurationWithThemOpensReadOnlyUntilTheyAreSeparated) {
  support::TempFolder folder;
  const std::string before =
      configuration(device("{1}", "North") + device("{1}", "South", child("{1}", "a")));
  folder.write("configuration.xml", before);
  ConfigurationStore store(folder.path());
  std::string cause;
  ASSERT_TRUE(store.open(cause)) << cause;
  EXPECT_TRUE(store.isReadOnly());
  EXPECT_TRUE(store.needsNewIds());
  EXPECT_EQ(store.readOnlyReason(),
            "[60315]([60316](North,South,{1}); [60316](North,[60318](a,South),{1}))");
  XCMainCfg::Get().Root()->SetValue("version", u"2");
  EXPECT_FALSE(store.saveIfDifferent(cause));
  EXPECT_EQ(cause, store.readOnlyReason());
  EXPECT_EQ(folder.read("configuration.xml"), before);

  ASSERT_TRUE(store.separateIds(cause)) << cause;
  EXPECT_FALSE(store.isReadOnly());
  EXPECT_EQ(folder.read("configuration.xml"), store.text());
  ConfigurationStore again(folder.path(), {});
  ASSERT_TRUE(again.open(cause));
  EXPECT_FALSE(again.needsNewIds());
}

TEST_F(SharedIds, ThatAnotherProgramMayWriteIsToldToo) {
  support::TempFolder folder;
  folder.write("configuration.xml", configuration(device("{1}", "a") + device("{1}", "b")));
  ConfigurationStore first(folder.path());
  ConfigurationStore second(folder.path(), {});
  std::string cause;
  ASSERT_TRUE(first.open(cause));
  ASSERT_TRUE(second.open(cause));
  EXPECT_FALSE(second.needsNewIds()) << "it could not save them";
  const std::string reason = second.readOnlyReason();
  EXPECT_LT(reason.find("[60303]"), reason.find("[60315]"));
}

}  // namespace
