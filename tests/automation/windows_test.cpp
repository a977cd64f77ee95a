#include "tests/automation/script_test.h"

namespace {

using nlohmann::json;

class WindowTest : public test::ScriptTest {
 protected:
  json click(const char* id) { return ok({{"do", "click"}, {"id", id}}); }
  json answer(const char* button) { return ok({{"do", "answer"}, {"button", button}}); }
};

TEST_F(WindowTest, EveryAnswerTellsWhatIsInFront) {
  const json none = {{"kind", "none"}, {"class", ""}, {"template", 0}, {"title", ""}};
  EXPECT_EQ((*script)({{"do", "look"}}).at("top"), none);
  EXPECT_EQ(script->line("{").at("top"), none);
  const json opened = ok({{"do", "editor.configure"}, {"device", "North"}});
  EXPECT_EQ(
      opened.at("top"),
      json({{"kind", "dialog"}, {"class", "XCDlgOptions"}, {"template", 100}, {"title", "North"}}));
  EXPECT_FALSE(opened.contains("closed"));
  EXPECT_EQ(click("driver").at("top").at("template"), 9001);
}

TEST_F(WindowTest, AMessageIsAnsweredByOneOfItsButtons) {
  openKinds();
  const json opened = click("message");
  EXPECT_EQ(opened.at("top"), json({{"kind", "message"},
                                    {"class", ""},
                                    {"template", 0},
                                    {"title", "All kinds"},
                                    {"text", "A \"message\""},
                                    {"buttons", {"ok"}},
                                    {"icon", "information"}}));
  EXPECT_EQ(refused({{"do", "look"}}), "a message is in front: answer it first");
  refused({{"do", "click"}, {"id", "ok"}});
  refused({{"do", "pick"}, {"path", ""}});
  refused({{"do", "answer"}, {"button", "yes"}});
  const json closed = answer("ok");
  EXPECT_EQ(closed.at("top").at("class"), "KindsDialog");
  EXPECT_FALSE(closed.contains("closed"));
  refused({{"do", "answer"}, {"button", "ok"}});
  EXPECT_EQ(log(), "read;");
}

TEST_F(WindowTest, QuestionsAndRetriesTakeTheirAnswers) {
  openKinds();
  EXPECT_EQ(click("question").at("top").at("buttons"), json({"yes", "no"}));
  refused({{"do", "close"}});
  answer("yes");
  click("question");
  answer("no");
  EXPECT_EQ(click("retry").at("top").at("buttons"), json({"retry", "cancel"}));
  EXPECT_EQ(answer("retry").at("top").at("icon"), "error");
  ok({{"do", "close"}});
  EXPECT_EQ(log(), "yes;no;retry;cancel;");
}

TEST_F(WindowTest, AFileIsPickedOrNot) {
  openKinds();
  const json opened = click("file");
  EXPECT_EQ(opened.at("top").at("kind"), "file");
  EXPECT_EQ(opened.at("top").at("filters"),
            json::parse(R"([{"description":"Images","pattern":"*.img"}])"));
  EXPECT_EQ(refused({{"do", "look"}}), "a file choice is in front: pick a file first");
  refused({{"do", "pick"}});
  ok({{"do", "pick"}, {"path", "/tmp/l\u00E1mpara.img"}});
  click("file");
  ok({{"do", "pick"}, {"path", ""}});
  click("file");
  ok({{"do", "close"}});
  EXPECT_EQ(log(), "file /tmp/l\u00E1mpara.img;file ;file ;");
}

TEST_F(WindowTest, DialogsStackAndTellHowTheyClosed) {
  openKinds();
  EXPECT_EQ(click("nested").at("top").at("class"), "InnerDialog");
  EXPECT_EQ(click("deeper").at("top").at("class"), "InnerDialog");
  EXPECT_EQ(click("ok").at("closed"), json({{"class", "InnerDialog"}, {"result", "ok"}}));
  const json closed = ok({{"do", "close"}});
  EXPECT_EQ(closed.at("closed"), json({{"class", "InnerDialog"}, {"result", "cancel"}}));
  EXPECT_EQ(closed.at("top").at("class"), "KindsDialog");
  EXPECT_EQ(log(), "cancel;");
  EXPECT_FALSE(ok({{"do", "look"}}).contains("closed"));
}

TEST_F(WindowTest, TheLastOfSeveralClosedWindowsIsNamed) {
  openKinds();
  click("twoNested");
  const json closed = click("ok");
  EXPECT_EQ(closed.at("closed"), json({{"class", "KindsDialog"}, {"result", "ok"}}));
  EXPECT_EQ(closed.at("top").at("class"), "XCDlgOptions");
}

TEST_F(WindowTest, ThePanelsCloseCountsAsOk) {
  ok({{"do", "editor.configure"}, {"device", "North"}});
  EXPECT_EQ(click("ok").at("closed"), json({{"class", "XCDlgOptions"}, {"result", "ok"}}));
  ok({{"do", "editor.configure"}, {"device", "North"}});
  EXPECT_EQ(ok({{"do", "close"}}).at("closed").at("result"), "ok");
}

TEST_F(WindowTest, ADialogMayRefuseToClose) {
  ok({{"do", "editor.configure"}, {"device", "North"}});
  click("device");
  EXPECT_EQ(click("cancel").at("top").at("kind"), "message");
  const json stayed = answer("no");
  EXPECT_EQ(stayed.at("top").at("class"), "StubbornDialog");
  EXPECT_FALSE(stayed.contains("closed"));
  ok({{"do", "close"}});
  EXPECT_EQ(answer("yes").at("closed").at("class"), "StubbornDialog");
}

TEST_F(WindowTest, NothingOpenMeansThatWordsForWindowsAreRefused) {
  for (const char* word : {"look", "close", "answer", "pick", "click", "type", "choose", "check",
                           "select", "press", "doubleClick", "sort", "paint"})
    EXPECT_NE(refused({{"do", word}, {"id", "ok"}, {"button", "ok"}, {"path", ""}}), "") << word;
}

TEST_F(WindowTest, WindowsCantBeStackedWithoutEnd) {
  for (int i = 0; i < 100; ++i) ok({{"do", "editor.configure"}, {"device", "North"}});
  EXPECT_EQ(refused({{"do", "editor.configure"}, {"device", "North"}}),
            "too many windows are open");
  EXPECT_EQ(script->end(), 0);
}

// --- the end

TEST_F(WindowTest, EndOfInputClosesDialogsAsCancelInEveryState) {
  const std::vector<std::vector<const char*>> states = {
      {},       {"message"}, {"question"},         {"retry"},
      {"file"}, {"nested"},  {"nested", "deeper"}, {"twoNested"}};
  for (const auto& clicks : states) {
    start();
    openKinds();
    for (const char* id : clicks) click(id);
    EXPECT_EQ(script->end(), 0) << (clicks.empty() ? "" : clicks.back());
    EXPECT_EQ(script->rest(), "");
    EXPECT_EQ(script->errors(), "");
  }
}

TEST_F(WindowTest, EndOfInputClosesWhatRefusesToClose) {
  ok({{"do", "editor.configure"}, {"device", "North"}});
  click("device");
  EXPECT_EQ(script->end(), 0);
  start();
  ok({{"do", "editor.configure"}, {"device", "North"}});
  click("device");
  click("cancel");
  EXPECT_EQ(script->end(), 0);
}

TEST_F(WindowTest, QuitEndsAsTheEndOfInputDoesAndIsAnswered) {
  openKinds();
  const json answered = ok({{"do", "quit"}});
  EXPECT_EQ(answered.at("top").at("kind"), "none");
  EXPECT_EQ(answered.at("closed"), json({{"class", "XCDlgOptions"}, {"result", "ok"}}));
  EXPECT_EQ(script->end(), 0);
}

// --- what is no command

TEST_F(WindowTest, WhatIsNoCommandIsAnsweredAndTheProgramGoesOn) {
  for (const char* line :
       {"", "hello", "{", "[]", "1", "null", "\"look\"", "{}", "{\"do\":1}", "{\"do\":null}",
        "{\"do\":\"dance\"}", "{\"do\":\"editor.\"}", "{\"do\":\"Look\"}", "{\"do\":\"\xFF\"}",
        "{\"do\":\"look\"} {}", "{\"do\":\"\\ud800\"}", "{\"do\":\"look\""}) {
    const json answered = script->line(line);
    EXPECT_EQ(answered.at("ok"), false) << line;
    EXPECT_NE(answered.at("error"), "") << line;
  }
  openKinds();
}

TEST_F(WindowTest, FieldsOfTheWrongTypeAreRefusedByName) {
  openKinds();
  const json wrong = json::parse(R"([
    {"do":"click"}, {"do":"click","id":null}, {"do":"click","id":1.5}, {"do":"click","id":-1},
    {"do":"click","id":[1]}, {"do":"click","id":99999999999}, {"do":"type","id":1001},
    {"do":"type","id":1001,"text":5}, {"do":"check","id":"check"},
    {"do":"check","id":"check","on":1}, {"do":"select","id":"list"},
    {"do":"select","id":"list","rows":1}, {"do":"select","id":"list","rows":["0"]},
    {"do":"select","id":"list","rows":[-1]}, {"do":"choose","id":"combo","item":"1"},
    {"do":"choose","id":"combo","text":1}, {"do":"press","id":"list"},
    {"do":"sort","id":"list","column":true}, {"do":"doubleClick","id":"list"},
    {"do":"paint","id":"year","date":20251230}, {"do":"editor.exchanges","since":"0"},
    {"do":"editor.cancelNextExchange","after":-1}, {"do":"editor.configure"},
    {"do":"editor.configure","device":1}, {"do":"editor.list","device":"North"},
    {"do":"editor.list","device":"North","callback":"C"},
    {"do":"editor.list","device":"North","callback":"A","flags":[34]},
    {"do":"editor.list","device":"North","callback":"A","flags":"2"},
    {"do":"editor.list","device":"North","callback":"A","names":[1]}])");
  for (const json& command : wrong) EXPECT_NE(refused(command), "") << command;
  EXPECT_EQ(log(), "");
}

}  // namespace
