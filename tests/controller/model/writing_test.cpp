#include <gtest/gtest.h>

#include "tests/controller/support/controller_rig.h"

namespace lamp::controller::test {
namespace {

TEST(WritingGeneral, ChangesOnlyTheAttributesThatWereSent) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E01 TimeZone=\"4\" hourIni=\"\" PathReports=\"/a &amp; b\"/>"), 200);
  const pugi::xml_node section = rig.read("L01");
  EXPECT_STREQ(section.attribute("TimeZone").value(), "4");
  EXPECT_STREQ(section.attribute("hourIni").value(), "");
  EXPECT_STREQ(section.attribute("PathReports").value(), "/a & b");
  EXPECT_STREQ(section.attribute("AccSimulMax").value(), "4");
}

TEST(WritingGeneral, KeepsAttributesThatNobodyKnows) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E01 futureField=\"7\"/>"), 200);
  EXPECT_STREQ(rig.read("L01").attribute("futureField").value(), "7");
}

TEST(WritingGeneral, AnotherTimeZoneShowsOnTheClock) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E01 TimeZone=\"5\"/>"), 200);
  EXPECT_STREQ(rig.read("L01").attribute("Fh").value(), "20250315060000");
}

TEST(WritingAddress, ShowsTheNewAddressAndPort) {
  ControllerRig rig;
  ASSERT_EQ(rig.send(30, "<main><E01 ipCom=\"10.0.0.9\"/></main>"), 200);
  EXPECT_STREQ(rig.read("L01").attribute("ipCom").value(), "10.0.0.9");
  EXPECT_STREQ(rig.read("L01").attribute("PortWS").value(), "8080");
  ASSERT_EQ(rig.send(30, "<main><E01 PortWS=\"9090\"/></main>"), 200);
  EXPECT_STREQ(rig.read("L01").attribute("PortWS").value(), "9090");
}

TEST(WritingClock, SetsTheClockByTheWallClockOfTheZone) {
  ControllerRig rig;
  ASSERT_EQ(rig.send(9, "<deviceCfg><C06 date=\"20240715103000S\"/></deviceCfg>"), 200);
  EXPECT_STREQ(rig.read("L01").attribute("Fh").value(), "20240715103000");
  rig.time.pass(std::chrono::seconds{61});
  EXPECT_STREQ(rig.read("L01").attribute("Fh").value(), "20240715103101");
}

const char* const kTaskSix =
    "<E02><TP TpTar=\"6\" TpHi=\"20240605100000S\" TpPer=\"00000001020000\" TpCompl=\"Y\" "
    "TpNode=\"\" TpPrio=\"2\" extra=\"x\"><TpPro TpReq=\"L03\" TpSend=\"Y\" TpStore=\"Y\"/>"
    "<TpPro TpReq=\"L09\" TpSend=\"N\" TpStore=\"Y\"/></TP></E02>";

TEST(WritingTasks, AddsANewTaskWithItsActions) {
  ControllerRig rig;
  ASSERT_EQ(rig.write(kTaskSix), 200) << rig.refusal;
  const pugi::xml_node task = rig.read("L02").find_child_by_attribute("TP", "TpTar", "6");
  EXPECT_STREQ(task.attribute("TpPer").value(), "00000001020000");
  EXPECT_STREQ(task.attribute("extra").value(), "x");
  EXPECT_STREQ(task.last_child().attribute("TpReq").value(), "L09");
}

TEST(WritingTasks, AnEmptyPeriodTakesTheTaskAwayAndOthersStay) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E02><TP TpTar=\"1\" TpPer=\"\"/><TP TpTar=\"77\" TpPer=\"\"/></E02>"), 200);
  const pugi::xml_node section = rig.read("L02");
  EXPECT_FALSE(section.find_child_by_attribute("TP", "TpTar", "1"));
  EXPECT_TRUE(section.find_child_by_attribute("TP", "TpTar", "2"));
  EXPECT_FALSE(section.find_child_by_attribute("TP", "TpTar", "77"));
}

TEST(WritingTasks, ATaskSentAgainReplacesItsActions) {
  ControllerRig rig;
  ASSERT_EQ(rig.write(kTaskSix), 200);
  ASSERT_EQ(rig.write("<E02><TP TpTar=\"6\" TpHi=\"20240605110000S\" TpPer=\"00000001020000\">"
                      "<TpPro TpReq=\"L15\"/></TP></E02>"),
            200);
  const pugi::xml_node task = rig.read("L02").find_child_by_attribute("TP", "TpTar", "6");
  EXPECT_STREQ(task.attribute("TpHi").value(), "20240605110000S");
  EXPECT_STREQ(task.first_child().attribute("TpReq").value(), "L15");
  EXPECT_FALSE(task.first_child().next_sibling());
}

TEST(WritingNodes, TakesReferenceAndPosition) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E04><Node nodeId=\"4100007\" Reference=\"A 1\" latitude=\"-33.9\" "
                      "longitude=\"18.424055\" pole=\"wood\"/><Other x=\"1\"/></E04>"),
            200)
      << rig.refusal;
  EXPECT_EQ(rig.ofFirstNode("L04", "Reference"), "A 1");
  EXPECT_EQ(rig.ofFirstNode("L04", "latitude"), "-33.9");
  EXPECT_EQ(rig.ofFirstNode("L04", "longitude"), "18.424055");
  EXPECT_EQ(rig.ofFirstNode("L04", "pole"), "wood");
  EXPECT_EQ(rig.ofFirstNode("L03", "Reference"), "A 1");
}

TEST(WritingNodes, RemovalTakesReferenceAndPositionAway) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E08><BlackList/><Node nodeId=\"4100007\"/></E08>"), 200) << rig.refusal;
  const pugi::xml_node node = rig.read("L04").first_child();
  EXPECT_STREQ(node.attribute("nodeId").value(), "4100007");
  for (const char* name : {"Reference", "latitude", "longitude"}) {
    EXPECT_FALSE(node.attribute(name)) << name;
  }
  EXPECT_EQ(rig.ofFirstNode("L08", "nodeId"), "4100007");
}

TEST(WritingNodes, TheBlacklistIsReplacedWhole) {
  ControllerRig rig;
  const std::vector<std::string> ids = rig.nodeIds();
  ASSERT_EQ(
      rig.write("<E09><Node nodeId=\"" + ids[1] + "\"/><Node nodeId=\"" + ids[0] + "\"/></E09>"),
      200);
  EXPECT_EQ(rig.nodeIds(), std::vector<std::string>{ids[2]});
  const pugi::xml_node list = rig.read("L04").child("BlackList");
  EXPECT_EQ(list.first_child().attribute("nodeId").value(), ids[1]);
  EXPECT_TRUE(list.first_child().attribute("Reference"));
  EXPECT_EQ(list.last_child().attribute("nodeId").value(), ids[0]);
  ASSERT_EQ(rig.write("<E09><Node nodeId=\"" + ids[0] + "\"/></E09>"), 200);
  EXPECT_EQ(rig.nodeIds(), (std::vector<std::string>{ids[2], ids[1]}));
  ASSERT_EQ(rig.write("<E09/>"), 200);
  EXPECT_EQ(rig.nodeIds(), (std::vector<std::string>{ids[2], ids[1], ids[0]}));
  EXPECT_FALSE(rig.read("L04").child("BlackList"));
}

TEST(WritingNodes, ABlacklistedNodeHasNoRowsAnywhereElse) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E09><Node nodeId=\"4100007\"/></E09>"), 200);
  for (const char* code : {"L03", "L05", "L06", "L07", "L17"}) {
    const pugi::xml_node section = rig.read(code);
    EXPECT_EQ(std::distance(section.children().begin(), section.children().end()), 2) << code;
  }
}

TEST(WritingNodes, TheSelectionIsKeptWhateverItsRowsAreCalled) {
  ControllerRig rig;
  const std::vector<std::string> ids = rig.nodeIds();
  ASSERT_EQ(rig.write("<E11 ActDate=\"20250101000000W\"><node nodeId=\"" + ids[0] +
                      "\"/><Node nodeId=\"" + ids[2] + "\"/></E11>"),
            200);
  const pugi::xml_node kept = rig.read("L11");
  EXPECT_STREQ(kept.attribute("ActDate").value(), "20250101000000W");
  EXPECT_EQ(kept.first_child().attribute("nodeId").value(), ids[0]);
  EXPECT_EQ(kept.last_child().attribute("nodeId").value(), ids[2]);
}

TEST(WritingPrograms, EachFamilyShowsWhatWasSent) {
  ControllerRig rig;
  const std::string node = "<Node nodeId=\"4100007\" own=\"x\">";
  ASSERT_EQ(rig.write("<E05>" + node + "<Interval time=\"999\" power=\"0\"/></Node></E05>"), 200);
  EXPECT_EQ(rig.ofFirstNode("L05", "time"), "999");
  EXPECT_EQ(rig.ofFirstNode("L05", "power"), "0");
  EXPECT_EQ(rig.ofFirstNode("L05", "own"), "x");
  EXPECT_EQ(rig.ofFirstNode("L05", "nodeId"), "");
  ASSERT_EQ(rig.write("<E06>" + node + "<Interval time1=\"10\" power4=\"55\"/></Node></E06>"), 200);
  EXPECT_EQ(rig.ofFirstNode("L06", "time1"), "10");
  EXPECT_EQ(rig.ofFirstNode("L06", "power4"), "55");
  ASSERT_EQ(
      rig.write("<E17>" + node + "<Interval power1=\"5\" hour2=\"23\" min2=\"59\"/></Node></E17>"),
      200);
  EXPECT_EQ(rig.ofFirstNode("L17", "hour2"), "23");
  EXPECT_EQ(rig.ofFirstNode("L17", "min2"), "59");
  EXPECT_EQ(rig.ofFirstNode("L17", "power1"), "5");
}

TEST(WritingPrograms, TheStartOfTheFirstStepIsTheControllersOwn) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E17><Node nodeId=\"4100007\"><Interval hour1=\"99\" min1=\"99\" "
                      "power1=\"5\"/></Node></E17>"),
            200);
  EXPECT_EQ(rig.ofFirstNode("L17", "hour1"), "00");
}

TEST(WritingAlarms, TakesThresholdsAlsoEmptyOnesAndKeepsTheNodesFirmware) {
  ControllerRig rig;
  const std::string version = rig.ofFirstNode("L07", "vf");
  ASSERT_EQ(rig.write("<E07><Node nodeId=\"4100007\" vf=\"9.9.9\"><Alarms powerLamp=\"12345678\" "
                      "factorPower=\"0.85\" timeAlarm=\"\"/></Node></E07>"),
            200)
      << rig.refusal;
  EXPECT_EQ(rig.ofFirstNode("L07", "powerLamp"), "12345678");
  EXPECT_EQ(rig.ofFirstNode("L07", "factorPower"), "0.85");
  EXPECT_EQ(rig.ofFirstNode("L07", "timeAlarm"), "");
  EXPECT_EQ(rig.ofFirstNode("L07", "vf"), version);
}

TEST(WritingOutputs, TakesSwitchesAndOffsetsAndKeepsLiveValues) {
  ControllerRig rig;
  ASSERT_EQ(
      rig.write(
          "<E13 offsetSunRise=\"\" offsetSunSet=\"25\">"
          "<Input Dir=\"1\" Value=\"1\" SponEnable=\"N\"/>"
          "<Output Dir=\"1\" Value=\"1\" Ocaso=\"N\" Orto=\"Y\" In3=\"Y\" On=\"Y\" Off=\"N\"/>"
          "</E13>"),
      200)
      << rig.refusal;
  const pugi::xml_node section = rig.read("L13");
  EXPECT_STREQ(section.attribute("offsetSunSet").value(), "25");
  EXPECT_STREQ(section.attribute("offsetSunRise").value(), "");
  const pugi::xml_node input = section.child("Input");
  EXPECT_STREQ(input.attribute("SponEnable").value(), "N");
  EXPECT_STREQ(input.attribute("Value").value(), "0");
  EXPECT_STREQ(section.child("Output").attribute("In3").value(), "Y");
}

TEST(WritingKept, SectionsThatNobodyKnowsAreKeptAsSent) {
  ControllerRig rig;
  ASSERT_EQ(rig.write("<E12 a=\"1\"><row b=\"2\"/></E12>"), 200);
  EXPECT_STREQ(rig.read("L12").attribute("a").value(), "1");
  EXPECT_STREQ(rig.read("L12").child("row").attribute("b").value(), "2");
}

}  // namespace
}  // namespace lamp::controller::test
