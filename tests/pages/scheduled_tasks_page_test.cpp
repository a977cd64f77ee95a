#include "pages/scheduled_tasks_page.h"

#include "tests/pages/section_page_test.h"

namespace {

using pages_test::Rows;
using pages_test::Texts;
using support::TopKind;
using Row = std::vector<std::string>;

constexpr const char* Morning =
    R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="00000001000000" TpCompl="Y" TpNode="7"
         TpPrio="2"><TpPro TpReq="L03" TpSend="Y" TpStore="N"/>
       <TpPro TpReq="L09" TpSend="N" TpStore="Y"/></TP>)";
constexpr const char* Monthly =
    R"(<TP TpTar="5" TpHi="20241201000000W" TpPer="00000100063000" TpCompl="N" TpNode=""
         TpPrio="3"><TpPro TpReq="L15" TpSend="Y" TpStore="Y"/></TP>)";
const std::string TwoTasks = std::string(Morning) + Monthly;

// What the page adds at the tests' clock.
std::string added(int number, const std::string& start = "20250315000000W") {
  return "<TP TpTar=\"" + std::to_string(number) + "\" TpHi=\"" + start +
         R"(" TpPer="00000001000000" TpCompl="Y" TpNode="" TpPrio="2">)"
         R"(<TpPro TpReq="L03" TpSend="Y" TpStore="Y"/></TP>)";
}

// A task of which one attribute matters.
std::string taskWith(const std::string& attribute, const std::string& value) {
  std::string text = "<TP";
  for (const auto& [name, usual] : {std::pair<const char*, const char*>{"TpTar", "1"},
                                    {"TpHi", "20240605100000S"},
                                    {"TpPer", "00000001000000"},
                                    {"TpCompl", "Y"},
                                    {"TpNode", ""},
                                    {"TpPrio", "2"}})
    text += std::string(" ") + name + "=\"" + (attribute == name ? value : usual) + "\"";
  return text + R"(><TpPro TpReq="L03" TpSend="Y" TpStore="Y"/></TP>)";
}

class ScheduledTasksPage : public pages_test::SectionPage<CDlgE02CfgZelLampManager> {
 protected:
  ScheduledTasksPage() : SectionPage("L02", "E02") {}

  void expectTasks(const std::string& tasks, const std::string& attributes = "") {
    expectSent(tasks, attributes);
  }
  std::string numbers() const {
    std::string text;
    for (const std::string& number : driver.column("tasks", 0)) text += number + " ";
    return text;
  }
  void expectNothingToEdit() {
    for (const char* edit : {"number", "start"}) EXPECT_EQ(driver.text(edit), "") << edit;
    for (const char* list : {"priority", "fillHoles", "months", "days", "hours", "minutes",
                             "request", "send", "store"}) {
      EXPECT_EQ(driver.selectedIndex(list), std::nullopt) << list;
      EXPECT_FALSE(driver.enabled(list)) << list;
      EXPECT_EQ(disabledReason(list), "[60085]") << list;
    }
    EXPECT_FALSE(driver.tryType("start", "05/06/2024 10:00:00").done);
  }
};

// --- opening and showing

TEST_F(ScheduledTasksPage, OpensWithTheFirstTaskSelectedAndShown) {
  open(TwoTasks);
  EXPECT_EQ(driver.title(), "[38362]");
  EXPECT_EQ(driver.columns("tasks"), (Texts{"#", "[38363]", "[232]", "[38364]", "[34232]"}));
  EXPECT_EQ(driver.rows("tasks"),
            (std::vector<Row>{{"1", "05/06/2024 10:00:00", "00000001000000", "2", "L03,L09"},
                              {"5", "01/12/2024 00:00:00", "00000100063000", "3", "L15"}}));
  EXPECT_EQ(driver.selection("tasks"), Rows{0});
  EXPECT_EQ(driver.text("number"), "1");
  EXPECT_EQ(driver.text("start"), "05/06/2024 10:00:00");
  EXPECT_EQ(driver.selectedItem("priority"), "2");
  EXPECT_EQ(driver.selectedItem("fillHoles"), "[711]");
  EXPECT_EQ(driver.selectedItem("months"), "0");
  EXPECT_EQ(driver.selectedItem("days"), "1");
  EXPECT_EQ(driver.selectedItem("hours"), "0");
  EXPECT_EQ(driver.selectedItem("minutes"), "0");
  EXPECT_EQ(driver.columns("actions"), (Texts{"[34232]", "[36777]", "[38386]"}));
  EXPECT_EQ(driver.rows("actions"),
            (std::vector<Row>{{"L03", "[711]", "[712]"}, {"L09", "[712]", "[711]"}}));
  for (const char* button : {"newTask", "deleteTask", "newAction", "deleteAction", "ok", "cancel"})
    EXPECT_TRUE(driver.enabled(button)) << button;
}

TEST_F(ScheduledTasksPage, TheListsOfferTheirEntries) {
  open(TwoTasks);
  EXPECT_EQ(driver.items("priority"), (Texts{"1", "2", "3"}));
  EXPECT_EQ(driver.items("fillHoles"), (Texts{"[712]", "[711]"}));
  EXPECT_EQ(driver.items("request"), (Texts{"L03: [38548]", "L09: [38549]", "L15: [38550]"}));
  EXPECT_EQ(driver.items("send"), (Texts{"[712]", "[711]"}));
  EXPECT_EQ(driver.items("store"), (Texts{"[712]", "[711]"}));
  const std::pair<const char*, int> periods[] = {
      {"months", 12}, {"days", 31}, {"hours", 23}, {"minutes", 59}};
  for (const auto& [name, largest] : periods) {
    const Texts items = driver.items(name);
    ASSERT_EQ(items.size(), static_cast<std::size_t>(largest) + 1) << name;
    for (int i = 0; i <= largest; ++i)
      EXPECT_EQ(items[static_cast<std::size_t>(i)], std::to_string(i)) << name;
  }
}

TEST_F(ScheduledTasksPage, TheNumberIsReadOnlyAndFillingHolesStaysHidden) {
  open(TwoTasks);
  EXPECT_FALSE(driver.tryType("number", "9").done);
  EXPECT_FALSE(driver.visible("fillHoles"));
  EXPECT_FALSE(driver.visible("fillHolesLabel"));
  EXPECT_FALSE(driver.tryChoose("fillHoles", 0).done);
}

TEST_F(ScheduledTasksPage, ShowsTheTaskThatIsSelected) {
  open(TwoTasks);
  driver.select("tasks", {1});
  EXPECT_EQ(driver.text("number"), "5");
  EXPECT_EQ(driver.text("start"), "01/12/2024 00:00:00");
  EXPECT_EQ(driver.selectedItem("priority"), "3");
  EXPECT_EQ(driver.selectedItem("fillHoles"), "[712]");
  EXPECT_EQ(driver.selectedItem("months"), "1");
  EXPECT_EQ(driver.selectedItem("days"), "0");
  EXPECT_EQ(driver.selectedItem("hours"), "6");
  EXPECT_EQ(driver.selectedItem("minutes"), "30");
  EXPECT_EQ(driver.rows("actions"), (std::vector<Row>{{"L15", "[711]", "[711]"}}));
}

TEST_F(ScheduledTasksPage, ShowingTasksAndActionsWritesNothingBack) {
  open(TwoTasks + taskWith("TpHi", "abcdefghijklmno") + taskWith("TpPer", "1") +
       taskWith("TpPrio", "high"));
  for (const std::size_t row : {1U, 2U, 3U, 4U, 0U}) {
    driver.select("tasks", {row});
    driver.select("actions", {0});
  }
  driver.select("tasks", {});
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, AStartOf15CharactersIsShownInPiecesAndAnyOtherIsEmpty) {
  const std::pair<const char*, const char*> starts[] = {{"20240605100000S", "05/06/2024 10:00:00"},
                                                        {"20240605100000W", "05/06/2024 10:00:00"},
                                                        {"abcdefghijklmno", "gh/ef/abcd ij:kl:mn"},
                                                        {"20240605100000", ""},
                                                        {"20240605100000SS", ""},
                                                        {"", ""}};
  for (const auto& [stamp, shown] : starts) {
    open(taskWith("TpHi", stamp));
    EXPECT_EQ(driver.column("tasks", 1), Texts{shown}) << stamp;
    EXPECT_EQ(driver.text("start"), shown) << stamp;
    driver.closeAll();
  }
}

TEST_F(ScheduledTasksPage, APriorityFrom1To3SelectsItsEntryAndNothingElseDoes) {
  const std::pair<const char*, const char*> priorities[] = {
      {"1", "1"}, {"2", "2"}, {"3", "3"}, {"0", ""}, {"4", ""}, {"-1", ""}, {"", ""}, {"high", ""}};
  for (const auto& [value, shown] : priorities) {
    open(taskWith("TpPrio", value));
    EXPECT_EQ(driver.selectedItem("priority"), shown) << value;
    driver.closeAll();
  }
}

TEST_F(ScheduledTasksPage, FillingHolesSelectsByExactYesOrNo) {
  const std::pair<const char*, const char*> values[] = {
      {"N", "[712]"}, {"Y", "[711]"}, {"y", ""}, {"", ""}, {"YY", ""}};
  for (const auto& [value, shown] : values) {
    open(taskWith("TpCompl", value));
    EXPECT_EQ(driver.selectedItem("fillHoles"), shown) << value;
    driver.closeAll();
  }
}

TEST_F(ScheduledTasksPage, ThePeriodShowsInItsFourLists) {
  struct Case {
    const char* period;
    Texts shown;
  };
  const Case cases[] = {{"00001231235900", {"12", "31", "23", "59"}},
                        {"99990000000099", {"0", "0", "0", "0"}},
                        {"00001332246000", {"", "", "", ""}},  // beyond the lists
                        {"000001", {"1", "", "", ""}},
                        {"0000xx1 0-05", {"", "", "", "5"}},
                        {"x", {"", "", "", ""}}};
  for (const auto& [period, shown] : cases) {
    open(taskWith("TpPer", period));
    EXPECT_EQ((Texts{driver.selectedItem("months"), driver.selectedItem("days"),
                     driver.selectedItem("hours"), driver.selectedItem("minutes")}),
              shown)
        << period;
    EXPECT_EQ(driver.column("tasks", 2), Texts{period});
    driver.closeAll();
  }
}

TEST_F(ScheduledTasksPage, ATaskWithoutAPeriodIsNotListed) {
  open(taskWith("TpPer", "") + R"(<TP TpTar="2" TpHi="20240605100000S"/>)" + Monthly);
  EXPECT_EQ(numbers(), "5 ");
  EXPECT_EQ(driver.text("number"), "5");
}

TEST_F(ScheduledTasksPage, EveryChildWithAPeriodIsListedAndEveryChildOfItCounts) {
  open(R"(<Job TpTar="x" TpPer="9"><TpPro TpReq="L03"/><Other TpReq="L99"/><TpPro/></Job>)");
  EXPECT_EQ(driver.rows("tasks"), (std::vector<Row>{{"x", "", "9", "", "L03,L99,"}}));
  EXPECT_EQ(driver.rows("actions"), (std::vector<Row>{{"L03", "", ""}, {"", "", ""}}))
      << "only the actions are listed as such";
}

TEST_F(ScheduledTasksPage, AnActionIsShownWhenItIsSelected) {
  open(TwoTasks);
  EXPECT_EQ(driver.selectedItem("request"), "") << "no action is selected at first";
  driver.select("actions", {1});
  EXPECT_EQ(driver.selectedItem("request"), "L09: [38549]");
  EXPECT_EQ(driver.selectedItem("send"), "[712]");
  EXPECT_EQ(driver.selectedItem("store"), "[711]");
  driver.select("actions", {0});
  EXPECT_EQ(driver.selectedItem("request"), "L03: [38548]");
  EXPECT_EQ(driver.selectedItem("send"), "[711]");
  EXPECT_EQ(driver.selectedItem("store"), "[712]");
  driver.select("tasks", {1});
  EXPECT_EQ(driver.selectedItem("request"), "") << "the other task's action is not selected";
}

TEST_F(ScheduledTasksPage, AnActionWithOtherValuesSelectsNothing) {
  open(R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="1">
            <TpPro TpReq="L3" TpSend="y" TpStore=""/></TP>)");
  driver.select("actions", {0});
  EXPECT_EQ(driver.rows("actions"), (std::vector<Row>{{"L3", "", ""}}));
  for (const char* list : {"request", "send", "store"})
    EXPECT_EQ(driver.selectedIndex(list), std::nullopt) << list;
}

// --- without tasks, without the section

TEST_F(ScheduledTasksPage, WithoutTasksTheirButtonsTellWhyTheyAreDisabled) {
  open("");
  for (const char* button : {"deleteTask", "newAction", "deleteAction"}) {
    EXPECT_FALSE(driver.enabled(button)) << button;
    EXPECT_EQ(disabledReason(button), "[60085]") << button;
  }
  EXPECT_TRUE(driver.enabled("newTask"));
  for (const char* list : {"tasks", "actions"}) {
    driver.press(list, host::Key::deleteKey);
    EXPECT_TRUE(driver.rows(list).empty());
  }
  driver.press("actions", host::Key::insert);
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, WithoutTheSectionNothingIsAddedAndOkSendsNothing) {
  openReply("<deviceCfg><ZelLamp Id='LM'/></deviceCfg>");
  driver.click("newTask");
  driver.press("tasks", host::Key::insert);
  driver.press("tasks", host::Key::deleteKey);
  EXPECT_TRUE(driver.rows("tasks").empty());
  EXPECT_TRUE(driver.rows("actions").empty());
  expectNothingToEdit();
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, AReplyWithoutRootOpensEmpty) {
  driver.channel().replyEmpty();
  driver.show<CDlgE02CfgZelLampManager>(&manager.driver, nullptr);
  driver.channel().forget();
  driver.click("newTask");
  EXPECT_TRUE(driver.rows("tasks").empty());
  driver.click("ok");
  expectClosedWithoutSending();
}

// --- new tasks

TEST_F(ScheduledTasksPage, ANewTaskStartsTodayRepeatsDailyAndIsSelected) {
  open(TwoTasks);
  driver.click("newTask");
  EXPECT_EQ(driver.rows("tasks").back(),
            (Row{"6", "15/03/2025 00:00:00", "00000001000000", "2", "L03"}));
  EXPECT_EQ(driver.selection("tasks"), Rows{2});
  EXPECT_EQ(driver.text("number"), "6");
  EXPECT_EQ(driver.rows("actions"), (std::vector<Row>{{"L03", "[711]", "[711]"}}));
  driver.click("ok");
  expectTasks(TwoTasks + added(6));
}

TEST_F(ScheduledTasksPage, InsertInTheListAddsATaskToo) {
  open("");
  driver.press("tasks", host::Key::insert);
  EXPECT_TRUE(driver.enabled("deleteTask"));
  EXPECT_TRUE(driver.enabled("newAction"));
  EXPECT_FALSE(driver.enabled("deleteAction"));
  driver.click("ok");
  expectTasks(added(1));
}

TEST_F(ScheduledTasksPage, ANewTasksNumberFollowsTheHighestEvenOfOnesToBeDeleted) {
  struct Case {
    std::vector<const char*> numbers;
    const char* next;
  };
  const Case cases[] = {{{}, "1"},
                        {{"1", "5", "3"}, "6"},
                        {{"-4"}, "1"},
                        {{"", "x", "0"}, "1"},
                        {{"2x"}, "3"},
                        {{"2147483647"}, "2147483648"},
                        {{"2147483648", "5"}, "2147483649"},
                        {{"-99999999999", " +0099"}, "100"},
                        {{"9223372036854775807"}, "9223372036854775808"},
                        {{"99999999999999999999", "7"}, "100000000000000000000"}};
  for (const auto& [present, next] : cases) {
    std::string tasks;
    for (const char* number : present) tasks += taskWith("TpTar", number);
    open(tasks);
    driver.click("newTask");
    EXPECT_EQ(driver.text("number"), next);
    driver.closeAll();
  }
  open(taskWith("TpTar", "1") + taskWith("TpTar", "5") +
       R"(<TP TpTar="7" TpPer=""/><Other TpTar="6"/>)");
  driver.click("newTask");
  EXPECT_EQ(driver.text("number"), "8");
}

TEST_F(ScheduledTasksPage, NewTasksCountOnBeyond32Bits) {
  open(taskWith("TpTar", "2147483647"));
  driver.click("newTask");
  driver.click("newTask");
  EXPECT_EQ(numbers(), "2147483647 2147483648 2147483649 ");
  driver.sort("tasks", 0);
  driver.sort("tasks", 0);
  EXPECT_EQ(numbers(), "2147483649 2147483648 2147483647 ");
}

TEST_F(ScheduledTasksPage, ANewTasksSeasonIsThatOfTheDaysMidnight) {
  const std::pair<XCDateTime, const char*> days[] = {
      {{2024, 3, 30, 23, 59, 59}, "20240330000000W"},
      {{2024, 3, 31, 12, 0, 0}, "20240331000000W"},  // summer begins this day, after its midnight
      {{2024, 4, 1, 0, 0, 0}, "20240401000000S"},
      {{2024, 10, 26, 1, 2, 3}, "20241026000000S"},
      {{2024, 10, 27, 12, 0, 0}, "20241027000000S"},  // it ends this day, after its midnight
      {{2024, 10, 28, 12, 0, 0}, "20241028000000W"}};
  for (const auto& [now, start] : days) {
    driver.clock().set(now);
    open("");
    driver.click("newTask");
    driver.click("ok");
    expectTasks(added(1, start));
  }
}

TEST_F(ScheduledTasksPage, ATaskAddedAndDeletedAgainIsNotSent) {
  open(TwoTasks);
  driver.click("newTask");
  driver.click("deleteTask");
  EXPECT_EQ(numbers(), "1 5 ");
  EXPECT_EQ(driver.selection("tasks"), Rows{0});
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, SeveralNewTasksCountOn) {
  open("");
  driver.click("newTask");
  driver.click("newTask");
  driver.select("tasks", {0});
  driver.press("tasks", host::Key::deleteKey);
  driver.click("newTask");
  driver.click("ok");
  expectTasks(added(2) + added(3));
}

// --- start

TEST_F(ScheduledTasksPage, ATypedStartBecomesAStampWithItsSeason) {
  const std::pair<const char*, const char*> starts[] = {
      {"06/06/2024 10:00:00", "20240606100000S"},
      {"01/12/2024 00:00:00", "20241201000000W"},
      {"31/03/2024 02:59:59", "20240331025959W"},
      {"31/03/2024 03:00:00", "20240331030000S"},
      {"27/10/2024 01:59:59", "20241027015959S"},
      {"27/10/2024 02:00:00", "20241027020000W"},
      // Whether the date exists is the controller's to judge.
      {"31/02/2024 10:00:00", "20240231100000W"},
      {"99/99/9999 99:99:99", "99999999999999W"},
      {"00/00/0000 00:00:00", "00000000000000W"}};
  for (const auto& [typed, stamp] : starts) {
    open(taskWith("TpHi", "20240605100000S"));
    driver.type("start", typed);
    EXPECT_EQ(driver.column("tasks", 1), Texts{typed});
    driver.click("ok");
    expectTasks(taskWith("TpHi", stamp));
  }
}

TEST_F(ScheduledTasksPage, AMalformedStartEmptiesTheColumnAtOnceAndOkIsRefused) {
  for (const char* wrong :
       {"5/06/2024 10:00:00", "05/06/2024 10:00:000", "05-06-2024 10:00:00", "05/06/2024-10:00:00",
        "05/06/2024 10.00:00", "05/06/2024 10:00.00", "0x/06/2024 10:00:00", "05/06/2024 10:00:0 ",
        "٠5/06/2024 10:00:00", "x", ""}) {
    open(taskWith("TpHi", "20240605100000S"));
    driver.type("start", wrong);
    EXPECT_EQ(driver.column("tasks", 1), Texts{""}) << wrong;
    EXPECT_EQ(driver.text("start"), wrong) << "what was typed stays in the edit";
    driver.click("ok");
    expectRefused("[38408]", "start");
    driver.closeAll();
  }
}

TEST_F(ScheduledTasksPage, AStartMadeGoodAgainIsAccepted) {
  open(taskWith("TpHi", "20240605100000S"));
  driver.type("start", "x");
  driver.click("ok");
  expectRefused("[38408]", "start");
  driver.type("start", "05/06/2024 10:00:00");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, TheCheckLooksAtAllRowsAndTheEditShowsTheSelectedOne) {
  open(TwoTasks);
  driver.select("tasks", {1});
  driver.type("start", "soon");
  driver.select("tasks", {0});
  driver.click("ok");
  expectRefused("[38408]", "start");
  EXPECT_EQ(driver.selection("tasks"), Rows{0});
  EXPECT_EQ(driver.text("start"), "05/06/2024 10:00:00");
  driver.select("tasks", {1});
  EXPECT_EQ(driver.text("start"), "") << "the malformed text was not kept";
}

TEST_F(ScheduledTasksPage, AStartThatWasReadMalformedIsRefusedEvenWithoutAChange) {
  open(Morning + taskWith("TpHi", "tomorrow"));
  driver.click("ok");
  expectRefused("[38408]", "start");
}

TEST_F(ScheduledTasksPage, ADeletedTasksStartIsNotChecked) {
  open(R"(<TP TpTar="2" TpHi="" TpPer=""/>)" + taskWith("TpHi", "tomorrow") + Monthly);
  driver.click("deleteTask");
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
}

// --- the other values of a task

TEST_F(ScheduledTasksPage, APriorityIsWrittenToTheSelectedTask) {
  open(TwoTasks);
  driver.choose("priority", "3");
  EXPECT_EQ(driver.column("tasks", 3), (Texts{"3", "3"}));
  driver.choose("priority", "1");
  driver.click("ok");
  expectTasks(R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="00000001000000" TpCompl="Y" TpNode="7"
         TpPrio="1"><TpPro TpReq="L03" TpSend="Y" TpStore="N"/>
       <TpPro TpReq="L09" TpSend="N" TpStore="Y"/></TP>)" +
              std::string(Monthly));
}

TEST_F(ScheduledTasksPage, FillingHolesIsWrittenWhereItIsShownToTheUser) {
  open(taskWith("TpCompl", "Y"));
  driver.control("fillHoles").setVisible(true);
  driver.choose("fillHoles", "[712]");
  driver.click("ok");
  expectTasks(taskWith("TpCompl", "N"));
}

TEST_F(ScheduledTasksPage, EachPeriodListReplacesItsTwoDigits) {
  struct Case {
    const char* list;
    int number;
    const char* period;
  };
  const Case cases[] = {{"months", 12, "00001201000000"}, {"months", 3, "00000301000000"},
                        {"days", 31, "00000031000000"},   {"days", 0, "00000000000000"},
                        {"hours", 2, "00000001020000"},   {"hours", 23, "00000001230000"},
                        {"minutes", 9, "00000001000900"}, {"minutes", 59, "00000001005900"}};
  for (const auto& [list, number, period] : cases) {
    open(taskWith("TpPer", "00000001000000"));
    driver.choose(list, number);
    EXPECT_EQ(driver.column("tasks", 2), Texts{period});
    driver.click("ok");
    expectTasks(taskWith("TpPer", period));
  }
}

TEST_F(ScheduledTasksPage, YearsAndSecondsOfAPeriodAreKept) {
  open(taskWith("TpPer", "12340000000056"));
  driver.choose("months", 1);
  driver.choose("minutes", 2);
  driver.click("ok");
  expectTasks(taskWith("TpPer", "12340100000256"));
}

TEST_F(ScheduledTasksPage, APeriodOfAnotherLengthIsNotChanged) {
  for (const char* period : {"1", "0000000100000", "000000010000000"}) {
    open(taskWith("TpPer", period));
    driver.choose("hours", 5);
    driver.click("ok");
    expectClosedWithoutSending();
  }
}

TEST_F(ScheduledTasksPage, WithoutASelectedTaskNothingIsWritten) {
  open(TwoTasks);
  driver.select("tasks", {});
  driver.type("start", "06/06/2024 10:00:00");
  driver.choose("priority", 0);
  driver.choose("days", 7);
  driver.click("newAction");
  driver.click("deleteTask");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, AnEditUndoneSendsNothing) {
  open(TwoTasks);
  driver.type("start", "06/06/2024 10:00:00");
  driver.choose("priority", "1");
  driver.choose("days", 7);
  driver.select("actions", {0});
  driver.choose("request", 2);
  driver.choose("send", 0);
  driver.type("start", "05/06/2024 10:00:00");
  driver.choose("priority", "2");
  driver.choose("days", 1);
  driver.choose("request", 0);
  driver.choose("send", 1);
  driver.click("ok");
  expectClosedWithoutSending();
}

// --- deleting tasks

TEST_F(ScheduledTasksPage, ATaskOfTheControllerIsSentWithAnEmptyPeriod) {
  open(TwoTasks);
  driver.select("tasks", {1});
  driver.click("deleteTask");
  EXPECT_EQ(numbers(), "1 ");
  EXPECT_EQ(driver.selection("tasks"), Rows{0});
  EXPECT_EQ(driver.text("number"), "1");
  driver.click("ok");
  expectTasks(Morning + std::string(R"(<TP TpTar="5" TpHi="20241201000000W" TpPer="" TpCompl="N"
      TpNode="" TpPrio="3"><TpPro TpReq="L15" TpSend="Y" TpStore="Y"/></TP>)"));
}

TEST_F(ScheduledTasksPage, DeletingTheLastTaskEmptiesBothLists) {
  open(Morning);
  driver.select("actions", {0});
  driver.press("tasks", host::Key::deleteKey);
  EXPECT_TRUE(driver.rows("tasks").empty());
  EXPECT_TRUE(driver.rows("actions").empty());
  EXPECT_EQ(driver.selectedIndex("request"), std::nullopt);
  for (const char* button : {"deleteTask", "newAction", "deleteAction"}) {
    EXPECT_FALSE(driver.enabled(button)) << button;
    EXPECT_EQ(disabledReason(button), "[60085]") << button;
  }
  expectNothingToEdit();
  driver.press("tasks", host::Key::deleteKey);
  driver.press("actions", host::Key::deleteKey);
  driver.click("newTask");
  EXPECT_EQ(numbers(), "2 ");
  EXPECT_TRUE(driver.enabled("deleteTask"));
  EXPECT_EQ(driver.text("number"), "2");
  driver.type("start", "01/04/2025 06:00:00");
  driver.choose("priority", "3");
  driver.click("ok");
  expectTasks(std::string(R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="" TpCompl="Y" TpNode="7"
         TpPrio="2"><TpPro TpReq="L03" TpSend="Y" TpStore="N"/>
       <TpPro TpReq="L09" TpSend="N" TpStore="Y"/></TP>
       <TP TpTar="2" TpHi="20250401060000S" TpPer="00000001000000" TpCompl="Y" TpNode=""
         TpPrio="3"><TpPro TpReq="L03" TpSend="Y" TpStore="Y"/></TP>)"));
}

TEST_F(ScheduledTasksPage, AnElementThatIsNoTaskIsTakenAwayRatherThanMarked) {
  open(R"(<Job TpTar="9" TpPer="1"/>)" + std::string(Monthly));
  driver.click("deleteTask");
  driver.click("ok");
  expectTasks(Monthly);
}

// --- actions

TEST_F(ScheduledTasksPage, AnActionsValuesAreWrittenToIt) {
  open(TwoTasks);
  driver.select("actions", {1});
  driver.choose("request", "L15: [38550]");
  EXPECT_EQ(driver.column("actions", 0), (Texts{"L03", "L15"}));
  EXPECT_EQ(driver.column("tasks", 4), (Texts{"L03,L15", "L15"}));
  driver.choose("send", "[711]");
  EXPECT_EQ(driver.column("actions", 1), (Texts{"[711]", "[711]"}));
  driver.choose("store", "[712]");
  EXPECT_EQ(driver.column("actions", 2), (Texts{"[712]", "[712]"}));
  driver.click("ok");
  expectTasks(R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="00000001000000" TpCompl="Y" TpNode="7"
         TpPrio="2"><TpPro TpReq="L03" TpSend="Y" TpStore="N"/>
       <TpPro TpReq="L15" TpSend="Y" TpStore="N"/></TP>)" +
              std::string(Monthly));
}

TEST_F(ScheduledTasksPage, EveryRequestCanBeChosen) {
  const std::pair<int, const char*> requests[] = {{0, "L03"}, {1, "L09"}, {2, "L15"}};
  for (const auto& [item, request] : requests) {
    open(R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="1"><TpPro TpReq="?"/></TP>)");
    driver.select("actions", {0});
    driver.choose("request", item);
    driver.click("ok");
    expectTasks(std::string(R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="1"><TpPro TpReq=")") +
                request + R"("/></TP>)");
  }
}

TEST_F(ScheduledTasksPage, ChoosingWithoutASelectedActionChangesNothing) {
  open(TwoTasks);
  for (const char* list : {"request", "send", "store"}) {
    driver.choose(list, 1);
    EXPECT_EQ(driver.selectedIndex(list), std::nullopt) << "there is no action to show";
  }
  driver.click("deleteAction");
  EXPECT_EQ(driver.rows("actions").size(), 2U);
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, ANewActionIsAppendedAndTheTaskStaysSelected) {
  open(TwoTasks);
  driver.select("tasks", {1});
  driver.click("newAction");
  EXPECT_EQ(driver.selection("tasks"), Rows{1});
  EXPECT_EQ(driver.column("tasks", 4), (Texts{"L03,L09", "L15,L03"}));
  EXPECT_EQ(driver.rows("actions"),
            (std::vector<Row>{{"L15", "[711]", "[711]"}, {"L03", "[711]", "[711]"}}));
  EXPECT_TRUE(driver.enabled("deleteAction"));
  driver.press("actions", host::Key::insert);
  EXPECT_EQ(driver.rows("actions").size(), 3U);
  driver.click("ok");
  expectTasks(Morning + std::string(R"(<TP TpTar="5" TpHi="20241201000000W" TpPer="00000100063000"
      TpCompl="N" TpNode="" TpPrio="3"><TpPro TpReq="L15" TpSend="Y" TpStore="Y"/>
      <TpPro TpReq="L03" TpSend="Y" TpStore="Y"/><TpPro TpReq="L03" TpSend="Y" TpStore="Y"/>
      </TP>)"));
}

TEST_F(ScheduledTasksPage, AnActionIsDeletedAndTheTaskStaysSelected) {
  open(Monthly + std::string(Morning));
  driver.select("tasks", {1});
  driver.select("actions", {0});
  driver.click("deleteAction");
  EXPECT_EQ(driver.selection("tasks"), Rows{1});
  EXPECT_EQ(driver.rows("actions"), (std::vector<Row>{{"L09", "[712]", "[711]"}}));
  driver.click("ok");
  expectTasks(std::string(Monthly) +
              R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="00000001000000" TpCompl="Y" TpNode="7"
         TpPrio="2"><TpPro TpReq="L09" TpSend="N" TpStore="Y"/></TP>)");
}

TEST_F(ScheduledTasksPage, TheLastActionStaysByButtonAndByKey) {
  open(TwoTasks);
  driver.select("actions", {1});
  driver.press("actions", host::Key::deleteKey);
  EXPECT_EQ(driver.column("actions", 0), Texts{"L03"});
  EXPECT_FALSE(driver.enabled("deleteAction"));
  EXPECT_EQ(disabledReason("deleteAction"), "[60086]");
  driver.select("actions", {0});
  EXPECT_FALSE(driver.tryClick("deleteAction").done);
  driver.press("actions", host::Key::deleteKey);
  EXPECT_EQ(driver.column("actions", 0), Texts{"L03"});
  driver.select("tasks", {1});
  EXPECT_FALSE(driver.enabled("deleteAction"));
}

TEST_F(ScheduledTasksPage, OtherChildrenOfATaskAreNoActionsThatCouldStay) {
  open(R"(<TP TpTar="1" TpHi="20240605100000S" TpPer="1"><TpPro TpReq="L03"/><Note/></TP>)");
  EXPECT_FALSE(driver.enabled("deleteAction"));
  driver.select("actions", {0});
  driver.press("actions", host::Key::deleteKey);
  EXPECT_EQ(driver.rows("actions").size(), 1U);
}

TEST_F(ScheduledTasksPage, AnActionAddedAndDeletedAgainSendsNothing) {
  open(TwoTasks);
  driver.click("newAction");
  driver.select("actions", {2});
  driver.click("deleteAction");
  driver.click("ok");
  expectClosedWithoutSending();
}

// --- sorting

TEST_F(ScheduledTasksPage, SortingByNumberAndStartIsByValueAndKeepsTheDocument) {
  open(taskWith("TpTar", "10") + taskWith("TpTar", "9") + Monthly);
  driver.sort("tasks", 0);
  EXPECT_EQ(numbers(), "5 9 10 ");
  EXPECT_EQ(driver.selection("tasks"), Rows{2}) << "moves with its row";
  driver.sort("tasks", 1);
  EXPECT_EQ(driver.column("tasks", 1),
            (Texts{"05/06/2024 10:00:00", "05/06/2024 10:00:00", "01/12/2024 00:00:00"}))
      << "by the moment, not by the day's digits";
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, InASortedListTheSelectedTaskIsEditedAndStaysSelected) {
  open(TwoTasks);
  driver.sort("tasks", 0);
  driver.sort("tasks", 0);
  EXPECT_EQ(numbers(), "5 1 ");
  driver.select("tasks", {0});
  driver.choose("priority", "1");
  driver.click("newAction");
  EXPECT_EQ(driver.text("number"), "5") << "wherever its row stands after the list was refilled";
  driver.click("ok");
  expectTasks(Morning + std::string(R"(<TP TpTar="5" TpHi="20241201000000W" TpPer="00000100063000"
      TpCompl="N" TpNode="" TpPrio="1"><TpPro TpReq="L15" TpSend="Y" TpStore="Y"/>
      <TpPro TpReq="L03" TpSend="Y" TpStore="Y"/></TP>)"));
}

// --- writing

TEST_F(ScheduledTasksPage, OkWithoutChangesSendsNothing) {
  open(TwoTasks, "Fh=\"20240101000000\"");
  driver.click("ok");
  expectClosedWithoutSending();
}

TEST_F(ScheduledTasksPage, TheWholeSectionGoesBackWithItsStampAndWhatThePageDoesNotKnow) {
  const std::string unknownBefore = R"(<Note a="1">text</Note><TP TpTar="4" TpPer="" x="y"/>)";
  open(unknownBefore + taskWith("TpPrio", "2") + "<Last/>", R"(Fh="20240101000000" version="3")");
  driver.choose("priority", "3");
  driver.click("ok");
  expectTasks(unknownBefore + taskWith("TpPrio", "3") + "<Last/>",
              R"(Fh="20240101000000" version="3")");
}

TEST_F(ScheduledTasksPage, TheCursorWaitsWhileItWrites) {
  open(TwoTasks);
  driver.clearLogs();
  driver.choose("priority", "3");
  driver.click("ok");
  EXPECT_EQ(driver.cursorLog(),
            (std::vector<host::CursorShape>{host::CursorShape::wait, host::CursorShape::arrow}));
}

TEST_F(ScheduledTasksPage, ARefusedWriteKeepsThePageAndItsEdits) {
  open(TwoTasks);
  driver.click("newTask");
  driver.select("tasks", {0});
  driver.click("deleteTask");
  expectFailedWriteKeepsThePage();
}

TEST_F(ScheduledTasksPage, ARetriedWriteThatSucceedsClosesThePage) {
  open(TwoTasks);
  driver.choose("priority", "3");
  driver.channel().failWith();
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "[329]");
  driver.answer(host::MessageAnswer::retry);
  EXPECT_EQ(driver.result(), IDOK);
  EXPECT_EQ(driver.channel().count(), 2U);
}

TEST_F(ScheduledTasksPage, AReadThatFailsDoesNotOpenThePage) {
  driver.channel().failWith("No answer.");
  driver.show<CDlgE02CfgZelLampManager>(&manager.driver, nullptr);
  EXPECT_EQ(driver.message().text, "No answer.");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(ScheduledTasksPage, CancelDiscardsTheWorkingCopy) {
  open(TwoTasks);
  driver.click("newTask");
  driver.click("cancel");
  EXPECT_EQ(driver.result(), IDCANCEL);
  expectNothingSent();
}

// Sections of several sizes with what the page does not know come back with the one change.
TEST_F(ScheduledTasksPage, WhatThePageDoesNotKnowGoesThereAndBack) {
  std::mt19937 random(7);
  for (const int size : pages_test::RoundTripSizes) {
    std::string before;
    std::string after;
    for (int i = 1; i <= size; ++i) {
      const pages_test::Unknown task = pages_test::unknown(random);
      const pages_test::Unknown action = pages_test::unknown(random);
      const std::string head = "<TP" + task.before + "TpTar=\"" + std::to_string(i) +
                               R"(" TpHi="20240605100000S" TpPer="00000001000000" TpPrio=")";
      const std::string tail = "\"" + task.after + ">" + task.children + "<TpPro" + action.before +
                               "TpReq=\"L03\"" + action.after + ">" + action.children +
                               "</TpPro></TP>";
      before += head + "2" + tail;
      after += head + (i == size ? "3" : "2") + tail;
    }
    open(before, "zone=\"4\"");
    for (int i = 0; i < size; i += 50) driver.select("tasks", {static_cast<std::size_t>(i)});
    if (size == 0) {
      driver.click("newTask");
      after = added(1);
    } else {
      driver.select("tasks", {static_cast<std::size_t>(size - 1)});
      driver.choose("priority", "3");
    }
    driver.click("ok");
    expectTasks(after, "zone=\"4\"");
  }
}

}  // namespace
