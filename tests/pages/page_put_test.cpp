#include "workbench/pages/page_put.h"

#include "pages/general_settings_page.h"
#include "pages/node_table_page.h"
#include "tests/pages/section_page_test.h"
#include "workbench/pages/page_changes.h"

namespace {

using namespace pages_test;
using workbench::PutReport;

template <class Page>
class PutIntoPage : public SectionPage<Page> {
 protected:
  using SectionPage<Page>::SectionPage;

  PutReport putSection(const std::string& xml) {
    XmlDocument section;
    EXPECT_TRUE(section.Parse(xml));
    return perform([&](XCBaseDlg& dialog) {
      return workbench::putSection(dialog, *dialog.Edits(), *section.Root());
    });
  }
  PutReport put(const std::vector<workbench::ValueChange>& changes) {
    return perform(
        [&](XCBaseDlg& dialog) { return workbench::putChanges(dialog, *dialog.Edits(), changes); });
  }

 private:
  PutReport perform(const std::function<PutReport(XCBaseDlg&)>& act) {
    PutReport report;
    this->driver.perform([&](host::UserInput&, XCBaseDlg& dialog) {
      report = act(dialog);
      return host::Outcome();
    });
    return report;
  }
};

class PutIntoTheNodeTable : public PutIntoPage<CDlgE04CfgZelLampManager> {
 protected:
  PutIntoTheNodeTable() : PutIntoPage("L04", "E04") {
    open(R"(<Node nodeId="1" Reference="A" latitude="1" longitude="2"/>
            <Node nodeId="2" latitude="1" longitude="2"/>
            <Node nodeId="3" Reference="C" latitude="1" longitude="2"/>)");
  }
};

TEST_F(PutIntoTheNodeTable, GivesEveryRowTheValueOfItsIdentity) {
  driver.select("nodes", {1});
  const PutReport report =
      putSection(R"(<L04><Node nodeId="3" Reference="X" latitude="7" longitude="2"/>
    <Node nodeId="1" Reference="X" latitude="1" longitude="2"/>
    <Node nodeId="2" Reference="Y" latitude="1" longitude="2"/></L04>)");
  EXPECT_EQ(report.put, 4U);
  EXPECT_EQ(report.refused, Texts{});
  EXPECT_EQ(driver.column("nodes", 1), (Texts{"X", "Y", "X"})) << "a value that a row lacked too";
  EXPECT_EQ(driver.column("nodes", 2), (Texts{"1", "1", "7"}));
  EXPECT_EQ(driver.selection("nodes"), Rows{1});
  driver.click("ok");
  expectSent(R"(<Node nodeId="1" Reference="X" latitude="1" longitude="2"/>
                <Node nodeId="2" latitude="1" longitude="2" Reference="Y"/>
                <Node nodeId="3" Reference="X" latitude="7" longitude="2"/>)",
             "");
}

TEST_F(PutIntoTheNodeTable, TellsValuesThatTheEditDoesNotTakeAndRowsThatAreNotThere) {
  const PutReport report =
      put({{u"1", "Reference", u"", u"A", XCBasicString(std::u16string(60, u'x'))},
           {u"9", "Reference", u"", u"A", u"B"},
           {u"2", "colour", u"", u"A", u"B"}});
  EXPECT_EQ(report.put, 0U);
  EXPECT_EQ(report.refused,
            (Texts{"9: Reference: the page has no such row", "2: colour: the page has no such row",
                   "1: Reference: the page does not take the value"}));
}

class PutIntoGeneralSettings : public PutIntoPage<CDlgE01CfgZelLampManager> {
 protected:
  PutIntoGeneralSettings() : PutIntoPage("L01", "E01") {}
};

TEST_F(PutIntoGeneralSettings, TypesAndChoosesFieldsAndLeavesWriteOnlyOnesAlone) {
  open("", R"(IPNTP="a" TimeZone="0" name="N")");
  const PutReport report =
      putSection(R"(<L01 IPNTP="b" TimeZone="9" FtpServer="Y" name="N" mailUser="x"/>)");
  EXPECT_EQ(driver.text("IPNTP"), "b");
  EXPECT_EQ(driver.selectedItem("FtpServer"), "[35472]");
  EXPECT_EQ(report.put, 2U);
  EXPECT_EQ(driver.text("mailUser"), "");
  EXPECT_EQ(report.refused, Texts{"TimeZone: there is no such choice"});
}

}  // namespace
