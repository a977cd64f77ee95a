#include "workbench/page_values.h"

#include <gtest/gtest.h>

#include "pages/alarm_thresholds_page.h"
#include "pages/general_settings_page.h"
#include "pages/inputs_outputs_page.h"
#include "pages/node_power_page.h"
#include "pages/node_table_page.h"
#include "pages/scheduled_tasks_page.h"
#include "programs/group_schedules_page.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"
#include "workbench/page_snapshot.h"
#include "workbench/section_put.h"

namespace {

using workbench::PageValues;
using workbench::PutReport;

/// The values that the editor's history puts back into open pages.
class PageValuesTest : public testing::Test {
 protected:
  template <class Page, class... Arguments>
  void open(const std::string& section, Arguments... arguments) {
    driver.channel().replyWith("<main><ZelLamp Id='LM'>" + section + "</ZelLamp></main>");
    driver.show<Page>(&manager.driver, nullptr, arguments...);
    ASSERT_EQ(driver.top(), support::TopKind::dialog);
    driver.channel().forget();
  }
  static PageValues values(const std::string& section) {
    XmlDocument document;
    EXPECT_TRUE(document.Parse(section));
    return workbench::valuesOf(*document.Root());
  }
  PutReport put(const std::string& section) {
    PutReport report;
    driver.perform([&](host::UserInput&, XCBaseDlg& page) {
      XmlDocument document;
      EXPECT_TRUE(document.Parse(section));
      report = workbench::putSection(page, *document.Root());
      return host::Outcome{};
    });
    return report;
  }

  support::LampManager manager;
  support::DialogDriver driver;
};

TEST_F(PageValuesTest, RowsAreKnownByTheirIdentityWhetherReadOrWritten) {
  EXPECT_EQ(values("<L05><Node Id='1' time='5' power='50'/></L05>"),
            values("<E05><Node nodeId='1'><Interval time='5' power='50'/></Node></E05>"));
  EXPECT_EQ(values("<E01 FTPPwd='***' TimeZone='4'/>").fields,
            (PageValues::Row{{"TimeZone", u"4"}}));
}

TEST_F(PageValuesTest, FormerSettingsAreTypedIntoThePageAndSentOnlyByItsOk) {
  open<CDlgE01CfgZelLampManager>("<L01 TimeZone='4' name='new' hourIni='10' FTPUser='u'/>");
  const PutReport report = put("<L01 TimeZone='1' name='old' hourIni='10' FTPPwd='***' Mod='X'/>");
  EXPECT_EQ(report.put, 2U);
  EXPECT_EQ(report.same, 1U);
  EXPECT_TRUE(report.refused.empty());
  EXPECT_EQ(driver.channel().count(), 0U) << "nothing is sent by itself";
  driver.click("ok");
  ASSERT_EQ(driver.channel().count(), 1U);
  EXPECT_XML_EQ("<deviceCfg><E01 name='old' TimeZone='1'/></deviceCfg>",
                driver.channel().last().request);
}

TEST_F(PageValuesTest, WhatTheFieldDoesNotTakeIsToldWithItsName) {
  open<CDlgE01CfgZelLampManager>("<L01 TimeZone='4' hourIni='10'/>");
  const PutReport report = put("<L01 TimeZone='9' hourIni='1x'/>");
  EXPECT_EQ(report.put, 0U);
  ASSERT_EQ(report.refused.size(), 2U);
  EXPECT_EQ(report.refused[0].substr(0, 9), "TimeZone:");
  EXPECT_EQ(report.refused[1].substr(0, 8), "hourIni:");
}

TEST_F(PageValuesTest, FormerRowsGoToTheRowsOfTheSameNodesAndTheSelectionStays) {
  open<CDlgE04CfgZelLampManager>(
      "<L04><Node nodeId='1' Reference='x' latitude='1' longitude='2'/>"
      "<Node nodeId='2' Reference='x' latitude='1' longitude='2'/>"
      "<Node nodeId='3' Reference='x' latitude='1' longitude='2'/></L04>");
  driver.select("nodes", {1});
  const PutReport report =
      put("<L04><Node nodeId='3' Reference='c' latitude='1' longitude='2'/>"
          "<Node nodeId='1' Reference='a' latitude='9' longitude='2'/>"
          "<Node nodeId='7' Reference='gone' latitude='1' longitude='2'/></L04>");
  EXPECT_EQ(report.put, 3U);
  EXPECT_EQ(report.same, 3U);
  EXPECT_EQ(driver.selection("nodes"), std::vector<std::size_t>{1});
  driver.click("ok");
  EXPECT_XML_EQ(
      "<deviceCfg><E04><Node nodeId='1' Reference='a' latitude='9' longitude='2'/>"
      "<Node nodeId='2' Reference='x' latitude='1' longitude='2'/>"
      "<Node nodeId='3' Reference='c' latitude='1' longitude='2'/></E04></deviceCfg>",
      driver.channel().last().request);
}

TEST_F(PageValuesTest, ASentPowerTableGoesIntoThePage) {
  open<CDlgE05CfgZelLampManager>(
      "<L05><Node Id='1' time='5' power='50'/>"
      "<Node Id='2' time='5' power='50'/></L05>");
  const PutReport report =
      put("<E05 ActDate='x'><Node nodeId='1'><Interval time='7' power='50'/></Node>"
          "<Node nodeId='2'><Interval time='7' power='500'/></Node></E05>");
  EXPECT_EQ(report.put, 3U);
  EXPECT_EQ(report.same, 1U);
}

TEST_F(PageValuesTest, FormerLinesGoIntoTheSwitchesAndModesOfInputsAndOutputs) {
  open<CDlgE13CfgZelLampManager>(
      "<L13 offsetSunRise='1' offsetSunSet='2'><Input Dir='1' Value='0' SponEnable='N'/>"
      "<Output Dir='1' Value='0' Ocaso='N' Orto='Y' In1='N' On='N' Off='N'/>"
      "<Output Dir='2' Value='0' Ocaso='N' Orto='N' In1='N' On='N' Off='Y'/></L13>");
  const PutReport report =
      put("<L13 offsetSunRise='10' offsetSunSet='2'><Input Dir='1' Value='1' SponEnable='Y'/>"
          "<Output Dir='1' Value='1' Ocaso='Y' Orto='N' In1='N' On='Y' Off='N'/>"
          "<Output Dir='2' Value='0' Ocaso='N' Orto='N' In1='N' On='N' Off='N'/></L13>");
  EXPECT_TRUE(report.refused.empty()) << report.refused[0];
  // The sunset's box unchecks the sunrise's.
  EXPECT_EQ(report.put, 5U);
  EXPECT_EQ(driver.channel().count(), 0U);
  driver.click("ok");
  ASSERT_EQ(driver.channel().count(), 1U);
  const std::string sent = driver.channel().last().request;
  for (const char* piece : {"offsetSunRise=\"10\"", "SponEnable=\"Y\"", "Ocaso=\"Y\" Orto=\"N\"",
                            "On=\"Y\" Off=\"N\"", "On=\"N\" Off=\"N\""})
    EXPECT_NE(sent.find(piece), std::string::npos) << piece << " in " << sent;
}

TEST_F(PageValuesTest, SwitchesThatExcludeEachOtherAreNotBothPut) {
  open<CDlgE13CfgZelLampManager>(
      "<L13><Output Dir='1' Value='0' Ocaso='N' Orto='N' On='N' Off='N'/></L13>");
  const PutReport report =
      put("<L13><Output Dir='1' Value='0' Ocaso='Y' Orto='Y' On='N' Off='N'/></L13>");
  EXPECT_EQ(report.put, 1U);
  ASSERT_EQ(report.refused.size(), 1U);
  EXPECT_EQ(report.refused[0].substr(0, 14), "output1.Ocaso:");
}

constexpr const char* TaskOne =
    "<TP TpTar='1' TpHi='20240605100000S' TpPer='00000001000000' TpCompl='Y' TpNode='' TpPrio='2'>"
    "<TpPro TpReq='L03' TpSend='Y' TpStore='N'/><TpPro TpReq='L09' TpSend='N' TpStore='Y'/></TP>";
constexpr const char* OtherTaskOne =
    "<TP TpTar='1' TpHi='20241201083000W' TpPer='00000200063000' TpCompl='Y' TpNode='' TpPrio='3'>"
    "<TpPro TpReq='L15' TpSend='Y' TpStore='Y'/></TP>";
constexpr const char* TaskTwo =
    "<TP TpTar='2' TpHi='20240101000000W' TpPer='00000000060000' TpCompl='Y' TpNode='' TpPrio='1'>"
    "<TpPro TpReq='L09' TpSend='Y' TpStore='Y'/></TP>";

class TasksPutTest : public PageValuesTest {
 protected:
  void openTasks(const std::string& tasks) {
    open<CDlgE02CfgZelLampManager>("<L02>" + tasks + "</L02>");
  }
  std::string sent() {
    driver.click("ok");
    return driver.channel().count() == 1U ? driver.channel().last().request : "nothing";
  }
};

TEST_F(TasksPutTest, AFormerTaskIsChangedWithItsActionsBothWays) {
  for (const auto& [now, former] : {std::pair{OtherTaskOne, TaskOne}, {TaskOne, OtherTaskOne}}) {
    openTasks(now + std::string(TaskTwo));
    driver.select("tasks", {1});
    const PutReport report = put("<L02>" + std::string(former) + TaskTwo + "</L02>");
    EXPECT_TRUE(report.refused.empty()) << report.refused[0];
    EXPECT_GE(report.put, 5U);
    EXPECT_EQ(driver.selection("tasks"), std::vector<std::size_t>{1});
    EXPECT_XML_EQ("<deviceCfg><E02>" + std::string(former) + TaskTwo + "</E02></deviceCfg>",
                  sent());
  }
}

TEST_F(TasksPutTest, ATaskThatIsThereAsItWasIsLeftAlone) {
  openTasks(TaskOne);
  const PutReport report = put(std::string("<E02>") + TaskOne + "</E02>");
  EXPECT_EQ(report.put, 0U);
  EXPECT_EQ(report.same, 11U);
  EXPECT_EQ(sent(), "nothing");
}

TEST_F(TasksPutTest, AnAddedTaskGoesAndADeletedOneComesBack) {
  openTasks(TaskOne + std::string(TaskTwo));
  EXPECT_EQ(put(std::string("<L02>") + TaskOne + "</L02>").put, 1U);
  EXPECT_EQ(driver.column("tasks", 0), std::vector<std::string>{"1"});
  driver.click("cancel");
  openTasks(TaskOne);
  const PutReport report = put(std::string("<L02>") + TaskOne + TaskTwo + "</L02>");
  EXPECT_TRUE(report.refused.empty()) << report.refused[0];
  EXPECT_XML_EQ("<deviceCfg><E02>" + std::string(TaskOne) + TaskTwo + "</E02></deviceCfg>", sent());
}

TEST_F(TasksPutTest, WhatWasSentToDeleteATaskDeletesItAgain) {
  openTasks(TaskOne + std::string(TaskTwo));
  put("<E02><TP TpTar='1' TpHi='20240605100000S' TpPer=''/>" + std::string(TaskTwo) + "</E02>");
  EXPECT_EQ(driver.column("tasks", 0), std::vector<std::string>{"2"});
}

TEST_F(TasksPutTest, ATaskThatGetsAnotherNumberIsTold) {
  openTasks(TaskTwo);
  const PutReport report = put(std::string("<L02>") + TaskOne + TaskTwo + "</L02>");
  ASSERT_EQ(report.refused.size(), 1U);
  EXPECT_EQ(report.refused[0], "1: the page gives the task the number 3");
}

TEST_F(TasksPutTest, WhatThePageHasNoFieldForIsTold) {
  openTasks(TaskTwo);
  const PutReport report =
      put("<L02><TP TpTar='2' TpHi='x' TpPer='00000000060000' TpCompl='Y' TpNode='' TpPrio='7'>"
          "<TpPro TpReq='L44' TpSend='Y' TpStore='Y'/></TP></L02>");
  ASSERT_EQ(report.refused.size(), 3U);
  EXPECT_EQ(report.refused[0].substr(0, 8), "2: TpHi:");
  EXPECT_EQ(report.refused[1].substr(0, 10), "2: TpPrio:");
  EXPECT_EQ(report.refused[2].substr(0, 18), "2: TpPro[1] TpReq:");
}

constexpr const char* ClockNodes =
    "<L17><Node Id='1' hour1='18' min1='5' power1='100' hour2='22' min2='15' power2='80' hour3='1' "
    "min3='0' power3='60' hour4='5' min4='45' power4='40'/>"
    "<Node Id='2' power1='100' hour2='22' min2='15' power2='80' hour3='01' min3='0' power3='60' "
    "hour4='6' min4='0' power4='40'/></L17>";

TEST_F(PageValuesTest, TimesByTheClockAreTypedIntoOneField) {
  open<CDlgE06CfgZelLampManager>(ClockNodes, lamp::ProgramKind::clock);
  const PutReport report =
      put("<E17 ActDate='x'><Node nodeId='1'><Interval power1='100' hour2='23' min2='05' "
          "power2='80' hour3='01' min3='00' power3='50' hour4='05' min4='45' power4='40'/></Node>"
          "</E17>");
  EXPECT_TRUE(report.refused.empty()) << report.refused[0];
  EXPECT_EQ(report.put, 2U);
  EXPECT_EQ(report.same, 5U);
  driver.click("ok");
  ASSERT_EQ(driver.channel().count(), 1U);
  const std::string sent = driver.channel().last().request;
  EXPECT_NE(sent.find("hour2=\"23\" min2=\"05\" power2=\"80\""), std::string::npos) << sent;
  EXPECT_NE(sent.find("power3=\"50\""), std::string::npos) << sent;
}

TEST_F(PageValuesTest, ATimeByTheClockThatWasTypedIsAmongWhatChanged) {
  open<CDlgE06CfgZelLampManager>(ClockNodes, lamp::ProgramKind::clock);
  const workbench::PageSnapshot opened(driver.dialog());
  driver.select("nodes", {1});
  driver.type("time2", "2345");
  const PageValues changed = opened.changed(driver.dialog());
  EXPECT_TRUE(changed.fields.empty());
  ASSERT_EQ(changed.rows.size(), 1U);
  EXPECT_EQ(changed.rows.at(u"2"), (PageValues::Row{{"time2", u"23:45"}}));
}

// The lists of old and new nodes have thresholds of the same name, each with an edit of its own.
TEST_F(PageValuesTest, ThresholdsOfNewNodesLeaveTheOldOnesAlone) {
  open<CDlgE07CfgZelLampManager>(
      "<L07><Node Id='1' vf='0.2.9' blinkActive='35' blinkTime='30' blinkTimes='5'/>"
      "<Node Id='2' vf='0.3.2' powerLamp='70' blinkTime='30' blinkTimes='5'/></L07>");
  const PutReport report =
      put("<L07><Node Id='1' vf='0.2.9' blinkActive='36' blinkTime='30' blinkTimes='5'/>"
          "<Node Id='2' vf='0.3.2' powerLamp='70' blinkTime='40' blinkTimes='6'/></L07>");
  EXPECT_TRUE(report.refused.empty()) << report.refused[0];
  EXPECT_EQ(report.put, 3U);
  EXPECT_EQ(report.same, 3U);
  driver.click("ok");
  const std::string sent = driver.channel().last().request;
  EXPECT_NE(sent.find("blinkActive=\"36\" blinkTime=\"30\""), std::string::npos) << sent;
  EXPECT_NE(sent.find("blinkTime=\"40\" blinkTimes=\"6\""), std::string::npos) << sent;
}

TEST_F(PageValuesTest, SectionsAreFoundInRequestsAndReplies) {
  XmlDocument request;
  ASSERT_TRUE(request.Parse("<deviceCfg><E04/></deviceCfg>"));
  EXPECT_NE(workbench::sectionElement(request, "E04"), nullptr);
  EXPECT_EQ(workbench::sectionElement(request, "L04"), nullptr);
  XmlDocument reply;
  ASSERT_TRUE(reply.Parse("<main><ZelLamp><L04/></ZelLamp></main>"));
  EXPECT_NE(workbench::sectionElement(reply, "L04"), nullptr);
  EXPECT_EQ(workbench::sectionElement({}, "L04"), nullptr);
}

}  // namespace
