#include <gtest/gtest.h>

#include "tests/controller/support/controller_rig.h"

namespace lamp::controller::test {
namespace {

TEST(Reading, EverySectionIsAnswered) {
  ControllerRig rig;
  for (int number = 1; number <= 17; ++number) {
    const std::string code = (number < 10 ? "L0" : "L") + std::to_string(number);
    const pugi::xml_node section = rig.read(code);
    ASSERT_TRUE(section) << code;
    EXPECT_STREQ(section.attribute("Fh").value(), "20250315120000") << code;
    EXPECT_STREQ(section.parent().attribute("Id").value(), "LM-TEST") << code;
  }
}

TEST(Reading, TheCommunicationSettingsAreTheGeneralSection) {
  ControllerRig rig;
  const auto reply = rig.ask(1, "<advancedCfg><L01/></advancedCfg>");
  const pugi::xml_node section = reply.child("deviceCfg").child("ZelLamp").child("L01");
  for (const char* name : {"ipCom", "ipMask", "ipGtw", "ipDhcp", "PrimaryDns", "SecondaryDns",
                           "ipLoc", "ipMaskLoc", "PortWS", "Pse"}) {
    EXPECT_TRUE(section.attribute(name)) << name;
  }
}

TEST(Reading, MailUserAndPasswordAreNeverShown) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E01 mailUser=\"u\" mailPassword=\"p\" mailHost=\"h\"/>"), 200);
  const pugi::xml_node section = rig.read("L01");
  EXPECT_STREQ(section.attribute("mailHost").value(), "h");
  EXPECT_FALSE(section.attribute("mailUser"));
  EXPECT_FALSE(section.attribute("mailPassword"));
}

TEST(Reading, InputsAreReportedOnlyByAControllerThatHasThem) {
  ControllerRig with(StreetPlan{1, 7, true});
  ControllerRig without(StreetPlan{1, 7, false});
  EXPECT_STREQ(with.read("L01").attribute("InputsDetected").value(), "Y");
  EXPECT_STREQ(without.read("L01").attribute("InputsDetected").value(), "N");
}

TEST(Reading, ANodeIsCalledIdOrNodeIdByTheSection) {
  ControllerRig rig;
  for (const char* code : {"L05", "L06", "L07", "L17"}) {
    EXPECT_EQ(rig.ofFirstNode(code, "Id"), "4100007") << code;
    EXPECT_EQ(rig.ofFirstNode(code, "nodeId"), "") << code;
  }
  for (const char* code : {"L03", "L04"}) EXPECT_EQ(rig.ofFirstNode(code, "nodeId"), "4100007");
}

TEST(Reading, TheNodeListNamesReferencesWhateverItsType) {
  ControllerRig rig;
  for (const char* type : {"", " type=\"Sync\"", " type=\"Async\""}) {
    const auto reply = rig.ask(1, std::string("<deviceCfg><L03") + type + "/></deviceCfg>");
    const auto list = reply.child("deviceCfg").child("ZelLamp").child("L03");
    EXPECT_STREQ(list.first_child().attribute("Reference").value(), "Harbour Street pole 1");
  }
  EXPECT_EQ(rig.send(1, "<deviceCfg><L03 type=\"sync\"/></deviceCfg>"), 422);
  EXPECT_NE(rig.refusal.find("Sync or Async"), std::string::npos);
}

TEST(Reading, TheNodeFileIsTheNodeListAndTheIdentifier) {
  ControllerRig rig;
  const auto reply = rig.ask(58, "");
  const pugi::xml_node controller = reply.child("deviceCfg").child("ZelLamp");
  EXPECT_STREQ(controller.attribute("Id").value(), "LM-TEST");
  EXPECT_STREQ(controller.child("L03").child("Node").attribute("nodeId").value(), "4100007");
}

TEST(Reading, IdentificationNeedsNoBody) {
  ControllerRig rig;
  const auto reply = rig.ask(29, "");
  EXPECT_STREQ(reply.document_element().child("ZelLamp").attribute("Id").value(), "LM-TEST");
}

TEST(Reading, AGeneratedStreetKeepsTheRulesOfItsFields) {
  ControllerRig rig(StreetPlan{500, 11, false});
  std::size_t old = 0;
  for (const pugi::xml_node node : rig.read("L04").children("Node")) {
    const std::string reference = node.attribute("Reference").value();
    EXPECT_LE(reference.size(), 59U);
    for (const char c : reference) ASSERT_TRUE(c >= ' ' && c <= '~' && c != '<' && c != '>');
    EXPECT_LE(std::string(node.attribute("latitude").value()).size(), 10U);
    EXPECT_LE(std::string(node.attribute("longitude").value()).size(), 10U);
  }
  for (const pugi::xml_node row : rig.read("L07").children()) {
    const bool isOld = row.attribute("brokenActive");
    EXPECT_EQ(isOld, std::string(row.attribute("vf").value()).starts_with("0.2."));
    EXPECT_NE(isOld, static_cast<bool>(row.attribute("powerLamp")));
    old += isOld ? 1 : 0;
  }
  EXPECT_GT(old, 100U);
  EXPECT_LT(old, 400U);
}

TEST(Reading, TheSamePlanGivesTheSameStreet) {
  ControllerRig a(StreetPlan{50, 3, true});
  ControllerRig b(StreetPlan{50, 3, true});
  ControllerRig c(StreetPlan{50, 4, true});
  EXPECT_TRUE(a.state() == b.state());
  EXPECT_FALSE(a.state() == c.state());
}

TEST(Reading, AWriteOfWhatWasReadIsAccepted) {
  ControllerRig rig(StreetPlan{40, 5, true});
  for (const auto& [read, write] : {std::pair{"L02", "E02"}, {"L04", "E04"}, {"L13", "E13"}}) {
    pugi::xml_node section = rig.read(read);
    section.remove_attribute("Fh");
    section.set_name(write);
    std::ostringstream text;
    section.print(text);
    const std::string before = rig.state();
    EXPECT_EQ(rig.write(text.str()), 200) << write << ": " << rig.refusal;
    EXPECT_TRUE(rig.state() == before) << write;
  }
}

}  // namespace
}  // namespace lamp::controller::test
