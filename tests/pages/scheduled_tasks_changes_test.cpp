#include "pages/scheduled_tasks_page.h"
#include "tests/pages/section_page_test.h"
#include "workbench/pages/page_changes.h"
#include "workbench/pages/page_put.h"

namespace {

using namespace pages_test;
using workbench::PutReport;
using workbench::ValueChange;

std::string shown(const std::optional<XCBasicString>& text) {
  return text ? text->ToUtf8() : "null";
}

Texts linesOf(const std::vector<ValueChange>& changes) {
  Texts lines;
  for (const ValueChange& change : changes)
    lines.push_back(shown(change.row) + " " + change.name + " " + change.caption.ToUtf8() + ": " +
                    shown(change.before) + " -> " + shown(change.after));
  return lines;
}

constexpr const char* TwoTasks =
    R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="00000001000000" TpCompl="Y" TpNode="" TpPrio="2">
         <TpPro TpReq="L03" TpSend="Y" TpStore="N"/><TpPro TpReq="L09" TpSend="N" TpStore="N"/></TP>
       <TP TpTar="7" TpHi="20240101000000W" TpPer="00000100000000" TpCompl="N" TpNode="" TpPrio="1">
         <TpPro TpReq="L15" TpSend="Y" TpStore="Y"/></TP>)";

class ChangesOfTheTasks : public SectionPage<CDlgE02CfgZelLampManager> {
 protected:
  ChangesOfTheTasks() : SectionPage("L02", "E02") { open(TwoTasks); }

  Texts changes() { return linesOf(workbench::changesOf(*driver.dialog().Edits())); }
  PutReport put(const std::vector<ValueChange>& values) {
    PutReport report;
    driver.perform([&](host::UserInput&, XCBaseDlg& dialog) {
      report = workbench::putChanges(dialog, *dialog.Edits(), values);
      return host::Outcome();
    });
    return report;
  }
};

TEST_F(ChangesOfTheTasks, AreNoneAtFirst) {
  EXPECT_EQ(changes(), Texts{});
}

TEST_F(ChangesOfTheTasks, NameThePartOfThePeriodThatChanged) {
  driver.choose("hours", "2");
  driver.choose("priority", "3");
  driver.type("start", "06/06/2024 10:00:00");
  EXPECT_EQ(changes(), (Texts{"1 TpHi [38363]: 05/06/2024 10:00:00 -> 06/06/2024 10:00:00",
                              "1 hours [38626]: 0 -> 2", "1 TpPrio [38364]: 2 -> 3"}));
}

TEST_F(ChangesOfTheTasks, NameAnActionByItsTaskAndItsPlace) {
  driver.select("actions", {1});
  driver.choose("request", 2);
  EXPECT_EQ(changes(), (Texts{"1/2 TpReq [34232]: L09 -> L15"}));
}

TEST_F(ChangesOfTheTasks, TellEachAttributeOfANewTask) {
  driver.click("newTask");
  EXPECT_EQ(changes(),
            (Texts{"8 TpTar [24516]: null -> 8", "8 TpHi [38363]: null -> 15/03/2025 00:00:00",
                   "8 TpPer [232]: null -> 00000001000000", "8 TpCompl [38410]: null -> Y",
                   "8 TpNode TpNode: null -> ", "8 TpPrio [38364]: null -> 2",
                   "8/1 TpReq [34232]: null -> L03", "8/1 TpSend [36777]: null -> Y",
                   "8/1 TpStore [38386]: null -> Y"}));
}

TEST_F(ChangesOfTheTasks, TellADeletedTaskByItsPeriod) {
  driver.choose("priority", "3");
  driver.click("deleteTask");
  EXPECT_EQ(changes(), (Texts{"1 TpPer [232]: 00000001000000 -> "}));
  driver.click("newTask");
  driver.click("deleteTask");
}

TEST_F(ChangesOfTheTasks, AStartThatIsNoDateIsAFaultOfItsTask) {
  driver.select("tasks", {1});
  driver.type("start", "5/06/2024 10:00:00");
  driver.select("tasks", {0});
  const auto faults = workbench::faultsOf(driver.dialog(), *driver.dialog().Edits());
  ASSERT_EQ(faults.size(), 1U);
  EXPECT_EQ(shown(faults[0].row), "7");
  EXPECT_EQ(faults[0].name, "TpHi");
  EXPECT_EQ(faults[0].text.ToUtf8(), "[38408]");
  EXPECT_EQ(driver.selection("tasks"), Rows{0});
}

TEST_F(ChangesOfTheTasks, PutIntoAPageOfTheSameTasksGiveTheSameSection) {
  driver.choose("hours", "2");
  driver.click("newAction");
  driver.select("actions", {2});
  driver.choose("request", 1);
  driver.select("tasks", {1});
  driver.click("deleteTask");
  driver.click("newTask");
  driver.choose("months", "4");
  driver.click("newAction");
  const std::vector<ValueChange> entered = workbench::changesOf(*driver.dialog().Edits());
  const Texts lines = linesOf(entered);
  driver.closeAll();
  open(TwoTasks);
  const PutReport report = put(entered);
  EXPECT_EQ(report.refused, Texts{});
  EXPECT_EQ(changes(), lines);
}

}  // namespace
