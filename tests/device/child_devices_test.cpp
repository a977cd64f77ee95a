#include "device/child_devices.h"

#include <iomanip>
#include <sstream>

#include "tests/device/device_definition_fixture.h"

namespace device_test {
namespace {

std::string newId(int number) {
  std::ostringstream text;
  text << "{00000000-0000-4000-8000-" << std::hex << std::uppercase << std::setw(12)
       << std::setfill('0') << number << "}";
  return text.str();
}

std::string child(const std::string& id, const std::string& name, const std::string& text = "") {
  return "<childDevice><id>" + id + "</id><revision>" + id +
         "</revision><driver>ZELLAMP</driver><name>" + name + "</name>" +
         (text.empty() ? "<description/>" : "<description>" + text + "</description>") +
         "</childDevice>";
}

std::string list(const std::string& nodes) {
  return "<reply><ZelLamp Id='LM-5'><L03 type='Sync'>" + nodes + "</L03></ZelLamp></reply>";
}

class ChildDevices : public testing::Test {
 protected:
  /// Rebuilds and returns the result; a message is answered with OK and kept.
  bool update(const std::string& nodes, bool notify = false) {
    const XmlDocument parsed = support::parsedXml(nodes);
    return update(parsed, notify);
  }
  bool update(const XmlDocument& nodes, bool notify = false) {
    bool result = false;
    driver.run([&] {
      result = XCDlgNewModifyZelLampManager::UpdateChildDevices(
          &const_cast<XmlDocument&>(nodes), device.Root(), notify, u"Street", configuration.Root());
    });
    messages.clear();
    while (driver.top() == TopKind::message) {
      EXPECT_EQ(driver.message().buttons, MessageButtons::ok);
      messages.push_back(driver.message().text);
      driver.answer(MessageAnswer::ok);
    }
    return result;
  }
  XmlDocument::XmlNode* children() { return device.Root()->Node("childDevices"); }
  XmlDocument::XmlNode* group() {
    return configuration.Root()->Node("deviceGroups/groups/group?id=%s?", u"Street");
  }

  XmlDocument device = support::parsedXml(
      "<device><id>{D1}</id><name>Street</name><identifier>old</identifier></device>");
  XmlDocument configuration{"configuration"};
  std::vector<std::string> messages;
  support::DialogDriver driver;
};

TEST_F(ChildDevices, OneForEveryNodeInTheListsOrderAndAGroupOfThem) {
  EXPECT_TRUE(update(list("<Node nodeId='b' Reference='North'/><Node nodeId='a'/>")));
  EXPECT_XML_EQ(
      "<device><id>{D1}</id><name>Street</name><identifier>LM-5</identifier><childDevices>" +
          child(newId(1), "b", "North") + child(newId(2), "a") + "</childDevices></device>",
      device);
  EXPECT_XML_EQ("<configuration><deviceGroups><groups><group><id>Street</id><devices><device><id>" +
                    newId(1) + "</id></device><device><id>" + newId(2) +
                    "</id></device></devices></group></groups></deviceGroups></configuration>",
                configuration);
  EXPECT_TRUE(messages.empty());
  EXPECT_TRUE(driver.posted().empty());
}

TEST_F(ChildDevices, AKnownNodeKeepsItsIdANewOneGetsOneAndAGoneOneGoes) {
  *device.Root() = *support::parsedXml("<device><childDevices>" + child("{X}", "A", "before") +
                                       child("{Y}", "C") + "</childDevices></device>")
                        .Root();
  EXPECT_TRUE(update(list("<Node nodeId='A' Reference='after'/><Node nodeId='B'/>")));
  EXPECT_XML_EQ(
      "<childDevices>" + child("{X}", "A", "after") + child(newId(1), "B") + "</childDevices>",
      children());
  EXPECT_XML_EQ("<group><id>Street</id><devices><device><id>{X}</id></device><device><id>" +
                    newId(1) + "</id></device></devices></group>",
                group());
  EXPECT_EQ(driver.ids().given(), 1U);
}

TEST_F(ChildDevices, NamesAreComparedWithTheirCase) {
  *device.Root() = *support::parsedXml("<device><childDevices>" + child("{X}", "LAMP7") +
                                       "</childDevices></device>")
                        .Root();
  EXPECT_TRUE(update(list("<Node nodeId='lamp7'/>")));
  EXPECT_XML_EQ("<childDevices>" + child(newId(1), "lamp7") + "</childDevices>", children());
}

TEST_F(ChildDevices, OfTwoOldOnesWithANameTheFirstCounts) {
  *device.Root() = *support::parsedXml("<device><childDevices>" + child("{X}", "A") +
                                       child("{Y}", "A") + "</childDevices></device>")
                        .Root();
  EXPECT_TRUE(update(list("<Node nodeId='A'/>")));
  EXPECT_XML_EQ("<childDevices>" + child("{X}", "A") + "</childDevices>", children());
}

TEST_F(ChildDevices, AnOldOneWithoutAnIdGetsOne) {
  *device.Root() =
      *support::parsedXml(
           "<device><childDevices><childDevice><name>A</name></childDevice></childDevices>"
           "</device>")
           .Root();
  EXPECT_TRUE(update(list("<Node nodeId='A'/>")));
  EXPECT_XML_EQ("<childDevices>" + child(newId(1), "A") + "</childDevices>", children());
}

TEST_F(ChildDevices, OtherChildrenOfTheListAreNoNodes) {
  EXPECT_TRUE(update(list("<Group nodeId='g'/><Node nodeId='A'/><node nodeId='n'/><Nodes/>")));
  EXPECT_EQ(children()->ChildCount(), 1U);
  EXPECT_EQ(group()->Node("devices")->ChildCount(), 1U);
}

TEST_F(ChildDevices, AnEmptyListEmptiesChildrenAndGroup) {
  ASSERT_TRUE(update(list("<Node nodeId='A'/>")));
  EXPECT_TRUE(update(list("")));
  EXPECT_XML_EQ("<childDevices/>", children());
  EXPECT_XML_EQ("<group><id>Street</id><devices/></group>", group());
}

TEST_F(ChildDevices, NodesKeepTheirTextsWhateverTheyHold) {
  EXPECT_TRUE(
      update(list("<Node nodeId='\"q\" &lt;&amp;&gt;' Reference='ñ \U0001F6A6 '/>"
                  "<Node nodeId=' ' Reference=' '/><Node/>")));
  auto* first = children()->FirstChild();
  EXPECT_EQ(first->Value("name").ToUtf8(), "\"q\" <&>");
  EXPECT_EQ(first->Value("description").ToUtf8(), "ñ \U0001F6A6 ");
  EXPECT_TRUE(first->NextSibling()->Value("name") == u" ");
  EXPECT_TRUE(first->NextSibling()->NextSibling()->Value("name").IsEmpty());
  // And they are found again by them.
  const std::string before = support::compactXml(*children());
  EXPECT_TRUE(
      update(list("<Node nodeId='\"q\" &lt;&amp;&gt;' Reference='ñ \U0001F6A6 '/>"
                  "<Node nodeId=' ' Reference=' '/><Node/>")));
  EXPECT_EQ(support::compactXml(*children()), before);
}

TEST_F(ChildDevices, ADocumentWithoutRootChangesNothing) {
  ASSERT_TRUE(update(list("<Node nodeId='A'/>")));
  const std::string deviceBefore = support::compactXml(device);
  const std::string configurationBefore = support::compactXml(configuration);
  EXPECT_FALSE(update(XmlDocument(), true));
  EXPECT_EQ(messages, std::vector<std::string>{"[38278]"});
  EXPECT_EQ(support::compactXml(device), deviceBefore);
  EXPECT_EQ(support::compactXml(configuration), configurationBefore);
  EXPECT_TRUE(driver.posted().empty());
}

TEST_F(ChildDevices, ADocumentWithoutListLosesTheChildrenButKeepsTheGroup) {
  for (const char* nodes : {"<reply><ZelLamp Id='LM-6'/></reply>",
                            "<reply><ZelLamp Id='LM-6'><L04/></ZelLamp></reply>"}) {
    ASSERT_TRUE(update(list("<Node nodeId='A'/>")));
    const std::string configurationBefore = support::compactXml(configuration);
    EXPECT_FALSE(update(nodes, true));
    EXPECT_EQ(messages, std::vector<std::string>{"[38278]"});
    EXPECT_XML_EQ(
        "<device><id>{D1}</id><name>Street</name><identifier>LM-6</identifier><childDevices/>"
        "</device>",
        device);
    EXPECT_EQ(support::compactXml(configuration), configurationBefore);
    EXPECT_TRUE(driver.posted().empty());
  }
}

TEST_F(ChildDevices, WithoutControllerElementTheIdentifierStays) {
  EXPECT_FALSE(update("<reply/>"));
  EXPECT_TRUE(device.Root()->Value("identifier") == u"old");
  EXPECT_FALSE(update("<reply><L03/></reply>"));
  EXPECT_TRUE(device.Root()->Value("identifier") == u"old");
}

TEST_F(ChildDevices, AControllerWithoutIdEmptiesTheIdentifier) {
  EXPECT_TRUE(update("<reply><ZelLamp><L03/></ZelLamp></reply>"));
  EXPECT_TRUE(device.Root()->Value("identifier", u"absent").IsEmpty());
}

TEST_F(ChildDevices, OnlyTheDeviceListOfTheGroupIsReplaced) {
  *configuration.Root() =
      *support::parsedXml(
           "<configuration><viewSetups/><deviceGroups><groups>"
           "<group><id>Other</id><devices><device><id>{Z}</id></device></devices></group>"
           "<group note='1'><id>Street</id><devices><device><id>{Y}</id></device></devices>"
           "<groups><group><id>Inner</id><devices/></group></groups><colour>red</colour></group>"
           "</groups></deviceGroups></configuration>")
           .Root();
  EXPECT_TRUE(update(list("<Node nodeId='A'/>")));
  EXPECT_XML_EQ(
      "<configuration><viewSetups/><deviceGroups><groups>"
      "<group><id>Other</id><devices><device><id>{Z}</id></device></devices></group>"
      "<group note='1'><id>Street</id>"
      "<groups><group><id>Inner</id><devices/></group></groups><colour>red</colour>"
      "<devices><device><id>" +
          newId(1) + "</id></device></devices></group></groups></deviceGroups></configuration>",
      configuration);
}

TEST_F(ChildDevices, AGroupNameIsComparedAsTextNeverAsAPath) {
  const std::u16string name = u"a/b?id=%s?\"<";
  const XmlDocument nodes = support::parsedXml(list("<Node nodeId='A'/>"));
  for (int i = 0; i < 2; ++i)
    EXPECT_TRUE(lamp::rebuildChildDevices(nodes, *device.Root(), name, configuration.Root()));
  auto* groups = configuration.Root()->Node("deviceGroups/groups");
  ASSERT_EQ(groups->ChildCount(), 1U);
  EXPECT_TRUE(groups->FirstChild()->Value("id") == XCBasicString(name));
}

TEST_F(ChildDevices, WithoutConfigurationThereIsNoGroup) {
  const XmlDocument nodes = support::parsedXml(list("<Node nodeId='A'/>"));
  EXPECT_TRUE(lamp::rebuildChildDevices(nodes, *device.Root(), u"Street", nullptr));
  EXPECT_EQ(children()->ChildCount(), 1U);
}

TEST_F(ChildDevices, NotifiesByAMessageTheConfigurationAndTheMainWindow) {
  std::vector<std::string> order;
  XCMainCfg::Get().SetChangeListener(
      [&] { order.push_back("changed, posted " + std::to_string(driver.posted().size())); });
  EXPECT_TRUE(update(list("<Node nodeId='A'/>"), true));
  XCMainCfg::Get().SetChangeListener({});
  EXPECT_EQ(messages, std::vector<std::string>{"[38476]"});
  EXPECT_EQ(order, std::vector<std::string>{"changed, posted 0"});
  ASSERT_EQ(driver.posted().size(), 1U);
  EXPECT_EQ(driver.posted()[0].message, 1025U);
  EXPECT_EQ(driver.posted()[0].wParam, 0U);
  EXPECT_EQ(driver.posted()[0].lParam, 0);
}

TEST_F(ChildDevices, ManyNodesKeepEveryIdInReversedOrder) {
  std::string nodes;
  std::string reversed;
  for (int i = 0; i < 500; ++i) {
    const std::string node = "<Node nodeId='n" + std::to_string(i) + "'/>";
    nodes += node;
    reversed.insert(0, node);
  }
  ASSERT_TRUE(update(list(nodes)));
  ASSERT_TRUE(update(list(reversed)));
  int number = 500;
  for (const auto& one : children()->Children()) {
    EXPECT_EQ(one.Value("id").ToUtf8(), newId(number));
    EXPECT_EQ(one.Value("revision").ToUtf8(), newId(number));
    EXPECT_EQ(one.Value("name").ToUtf8(), "n" + std::to_string(--number));
  }
  EXPECT_EQ(driver.ids().given(), 500U);
}

}  // namespace
}  // namespace device_test
