#include "workbench/page_values.h"

#include <gtest/gtest.h>

#include "pages/general_settings_page.h"
#include "pages/node_power_page.h"
#include "pages/node_table_page.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

using workbench::PageValues;
using workbench::PutReport;

/// The values that the editor's history puts back into open pages.
class PageValuesTest : public testing::Test {
 protected:
  template <class Page>
  void open(const std::string& section) {
    driver.channel().replyWith("<main><ZelLamp Id='LM'>" + section + "</ZelLamp></main>");
    driver.show<Page>(&manager.driver, nullptr);
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
      report = workbench::putValues(page, values(section));
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
