#include "tests/automation/script_test.h"

namespace {

using nlohmann::json;

class GestureTest : public test::ScriptTest {
 protected:
  void SetUp() override {
    ScriptTest::SetUp();
    openKinds();
  }
  std::string text(const char* name) { return script->control(name).at("text"); }
};

TEST_F(GestureTest, TypingSelectsAllAndKeepsToTheLimit) {
  ok({{"do", "type"}, {"id", 1001}, {"text", "abcdefgh"}});
  EXPECT_EQ(text("edit"), "abcde");
  ok({{"do", "type"}, {"id", "edit"}, {"text", "x\u00E9"}});
  EXPECT_EQ(text("edit"), "x\u00E9");
  ok({{"do", "type"}, {"id", 1001}, {"text", ""}});
  EXPECT_EQ(text("edit"), "");
}

TEST_F(GestureTest, TypingWhatIsThereAlreadyTellsNobody) {
  ok({{"do", "type"}, {"id", 1001}, {"text", "a"}});
  ok({{"do", "type"}, {"id", 1001}, {"text", "a"}});
  EXPECT_EQ(log(), "edit a;");
}

TEST_F(GestureTest, DigitsMaskAndAddressTakeWhatFits) {
  ok({{"do", "type"}, {"id", "digits"}, {"text", "a1-2b3,4"}});
  EXPECT_EQ(text("digits"), "123");
  ok({{"do", "type"}, {"id", "masked"}, {"text", "22:15"}});
  EXPECT_EQ(text("masked"), "22:15");
  EXPECT_EQ(text("ip"), "");
  ok({{"do", "type"}, {"id", "ip"}, {"text", "10.0.300.7"}});
  EXPECT_EQ(text("ip"), "10.0.255.7");
}

TEST_F(GestureTest, APasswordShowsItsLength) {
  ok({{"do", "type"}, {"id", "password"}, {"text", "s\u00E9cret"}});
  EXPECT_EQ(text("password"), "******");
}

TEST_F(GestureTest, WhatAPersonCantDoIsRefused) {
  EXPECT_EQ(refused({{"do", "type"}, {"id", "disabled"}, {"text", "x"}}),
            "the control \"disabled\" is disabled: there is no reason");
  EXPECT_EQ(refused({{"do", "click"}, {"id", "hidden"}}), "the control \"hidden\" is hidden");
  EXPECT_EQ(refused({{"do", "type"}, {"id", "fixed"}, {"text", "x"}}),
            "the control \"fixed\" is read-only");
  refused({{"do", "type"}, {"id", "log"}, {"text", "x"}});
  refused({{"do", "click"}, {"id", "edit"}});
  refused({{"do", "click"}, {"id", "nobody"}});
  refused({{"do", "click"}, {"id", 4711}});
  refused({{"do", "click"}, {"id", 65536}});
  refused({{"do", "choose"}, {"id", "edit"}, {"item", 0}});
  refused({{"do", "check"}, {"id", "edit"}, {"on", true}});
  refused({{"do", "select"}, {"id", "edit"}, {"rows", json::array()}});
  refused({{"do", "sort"}, {"id", "combo"}, {"column", 0}});
  refused({{"do", "paint"}, {"id", "list"}, {"date", "2025-12-30"}});
  EXPECT_EQ(log(), "");
}

TEST_F(GestureTest, ChoosingWorksByIndexAndByText) {
  EXPECT_TRUE(script->control("combo").at("selected").is_null());
  ok({{"do", "choose"}, {"id", "combo"}, {"item", 1}});
  EXPECT_EQ(text("combo"), "two");
  ok({{"do", "choose"}, {"id", "combo"}, {"text", "three"}});
  EXPECT_EQ(script->control("combo").at("selected"), 2);
  ok({{"do", "choose"}, {"id", "combo"}, {"item", 2}});
  refused({{"do", "choose"}, {"id", "combo"}, {"item", 3}});
  refused({{"do", "choose"}, {"id", "combo"}, {"text", "Two"}});
  refused({{"do", "choose"}, {"id", "combo"}});
  EXPECT_EQ(log(), "chosen;chosen;");
}

TEST_F(GestureTest, BoxesAndRadioButtons) {
  ok({{"do", "check"}, {"id", "check"}, {"on", true}});
  ok({{"do", "check"}, {"id", "check"}, {"on", true}});
  EXPECT_EQ(script->control("check").at("on"), true);
  ok({{"do", "click"}, {"id", "radioB"}});
  EXPECT_EQ(script->control("radioA").at("on"), false);
  EXPECT_EQ(script->control("radioB").at("on"), true);
  refused({{"do", "check"}, {"id", "radioB"}, {"on", false}});
  EXPECT_EQ(log(), "on;on;");
}

TEST_F(GestureTest, RowsAreSelectedAsOneGesture) {
  ok({{"do", "select"}, {"id", 1002}, {"rows", {2, 0}}});
  ok({{"do", "select"}, {"id", 1002}, {"rows", {0, 2}}});
  const json rows = script->control("list").at("rows");
  EXPECT_EQ(rows[0].at("selected"), true);
  EXPECT_EQ(rows[1].at("selected"), false);
  EXPECT_EQ(rows[2].at("selected"), true);
  refused({{"do", "select"}, {"id", 1002}, {"rows", {3}}});
  refused({{"do", "select"}, {"id", "single"}, {"rows", {0, 1}}});
  ok({{"do", "select"}, {"id", 1002}, {"rows", json::array()}});
  EXPECT_EQ(log(), "rows 2;rows 0;");
}

TEST_F(GestureTest, DoubleClicksAndKeysGoToTheList) {
  ok({{"do", "doubleClick"}, {"id", "list"}, {"row", 1}});
  ok({{"do", "press"}, {"id", "list"}, {"key", "Delete"}});
  ok({{"do", "press"}, {"id", "list"}, {"key", "Insert"}});
  EXPECT_EQ(log(), "rows 1;row 1;key 0;key 1;");
  refused({{"do", "doubleClick"}, {"id", "list"}, {"row", 3}});
  refused({{"do", "press"}, {"id", "list"}, {"key", "F1"}});
}

TEST_F(GestureTest, HeadersSortOneWayAndTheOther) {
  EXPECT_TRUE(script->control("list").at("sorted").is_null());
  const auto names = [&] {
    std::string all;
    const json list = script->control("list");
    for (const json& row : list.at("rows")) all += row.at("cells")[0].get<std::string>();
    return all;
  };
  ok({{"do", "sort"}, {"id", "list"}, {"column", 0}});
  EXPECT_EQ(names(), "abc");
  ok({{"do", "sort"}, {"id", "list"}, {"column", 0}});
  EXPECT_EQ(names(), "cba");
  EXPECT_EQ(script->control("list").at("sorted"), json({{"column", 0}, {"descending", true}}));
  refused({{"do", "sort"}, {"id", "list"}, {"column", 2}});
}

TEST_F(GestureTest, DaysArePaintedInsideOfTheSpan) {
  ok({{"do", "paint"}, {"id", "year"}, {"date", "2026-01-01"}});
  refused({{"do", "paint"}, {"id", "year"}, {"date", "2025-12-29"}});
  refused({{"do", "paint"}, {"id", "year"}, {"date", "2026-01-02"}});
  refused({{"do", "paint"}, {"id", "year"}, {"date", "2024-01-01"}});
  refused({{"do", "paint"}, {"id", "year"}, {"date", "2025-02-30"}});
  refused({{"do", "paint"}, {"id", "year"}, {"date", "today"}});
  const json year = script->control("year");
  EXPECT_EQ(year.at("from"), "2025-12-30");
  EXPECT_EQ(year.at("to"), "2026-01-01");
  EXPECT_EQ(year.at("days"), json({{"2025-12-30", "3"}, {"2025-12-31", ""}, {"2026-01-01", "5"}}));
  EXPECT_EQ(log(), "painted;");
}

TEST_F(GestureTest, MessagesPostedByAHandlerAreHandledBeforeTheAnswer) {
  ok({{"do", "click"}, {"id", "post"}});
  EXPECT_EQ(log(), "posting;posted 42;");
}

TEST_F(GestureTest, LookShowsEveryKindWithWhatBelongsToIt) {
  const json answer = ok({{"do", "look"}});
  std::map<std::string, json> controls;
  for (const json& control : answer.at("controls")) controls[control.at("name")] = control;
  EXPECT_EQ(controls.size(), 30U);
  EXPECT_EQ(controls["edit"],
            json::parse(R"({"id":1001,"name":"edit","kind":"edit","text":"","enabled":true,
                            "visible":true,"limit":5,"digitsOnly":false,"password":false,
                            "readOnly":false,"selection":[0,0]})"));
  EXPECT_EQ(controls["disabled"].at("reason"), "there is no reason");
  EXPECT_EQ(controls["disabled"].at("id"), "disabled");
  EXPECT_EQ(controls["image"],
            json::parse(R"({"id":1003,"name":"image","kind":"button","text":"[311]","enabled":true,
                            "visible":true,"image":"LOAD-16.png"})"));
  EXPECT_EQ(controls["picture"].at("kind"), "image");
  EXPECT_EQ(controls["picture"].at("image"), "program-icon.png");
  EXPECT_EQ(controls["box"].at("kind"), "group");
  EXPECT_EQ(controls["box"].at("text"), "Box \u00E9");
  EXPECT_EQ(controls["log"].at("kind"), "label");
  EXPECT_EQ(controls["radioA"].at("kind"), "radio");
  EXPECT_EQ(controls["check"].at("on"), false);
  EXPECT_EQ(controls["digits"].at("digitsOnly"), true);
  EXPECT_EQ(controls["password"].at("password"), true);
  EXPECT_EQ(controls["fixed"].at("readOnly"), true);
  EXPECT_EQ(controls["combo"].at("items"), json({"one", "two", "three"}));
  EXPECT_EQ(controls["ip"].at("kind"), "ip");
  EXPECT_EQ(controls["year"].at("kind"), "year");
  EXPECT_EQ(controls["hidden"].at("visible"), false);
  EXPECT_EQ(controls["ok"].at("id"), 1);
  EXPECT_EQ(controls["cancel"].at("id"), 2);
  EXPECT_EQ(controls["list"].at("columns"), json({"Name", "Value"}));
  EXPECT_EQ(controls["list"].at("rows"), json::parse(R"([{"cells":["b","\"1\""],"selected":false},
                            {"cells":["a","\"1\""],"selected":false,"colour":"#A0A0A0"},
                            {"cells":["c","\"1\""],"selected":false,"swatch":"#FF0010"}])"));
  EXPECT_EQ(answer.at("focus"), 1001);
}

TEST_F(GestureTest, TheFocusIsNamedAsTheControlIs) {
  ok({{"do", "type"}, {"id", "digits"}, {"text", "1"}});
  EXPECT_EQ(ok({{"do", "look"}}).at("focus"), "digits");
}

TEST_F(GestureTest, EnterIsOkAndEscapeIsCancel) {
  json answer = ok({{"do", "press"}, {"id", 1001}, {"key", "Enter"}});
  EXPECT_EQ(answer.at("closed"), json({{"class", "KindsDialog"}, {"result", "ok"}}));
  ok({{"do", "click"}, {"id", "driver"}});
  answer = ok({{"do", "press"}, {"id", "combo"}, {"key", "Escape"}});
  EXPECT_EQ(answer.at("closed"), json({{"class", "KindsDialog"}, {"result", "cancel"}}));
}

TEST_F(GestureTest, ALookAtAHundredThousandRowsIsWhole) {
  ok({{"do", "click"}, {"id", "fill"}});
  const json rows = script->control("list").at("rows");
  ASSERT_EQ(rows.size(), 100'000U);
  EXPECT_EQ(rows.back().at("cells"), json({"99999", "100"}));
}

}  // namespace
