#include <gmock/gmock.h>

#include "tests/automation/script_test.h"
#include "tests/workbench/tiny_server.h"

namespace {

using nlohmann::json;
using test::TinyRequest;
using test::TinyServer;
using testing::HasSubstr;
using testing::Not;

class EditorWordTest : public test::ScriptTest {
 protected:
  json click(const char* id) { return ok({{"do", "click"}, {"id", id}}); }
  json type(const json& id, const std::string& text) {
    return ok({{"do", "type"}, {"id", id}, {"text", text}});
  }
  std::string config() { return ok({{"do", "editor.config"}}).at("xml"); }
};

TEST_F(EditorWordTest, ANewDeviceJoinsTheConfigurationWithOk) {
  EXPECT_EQ(ok({{"do", "editor.newDevice"}}).at("top").at("class"), "DefinitionDialog");
  const std::string id = script->control("identifier").at("text");
  EXPECT_EQ(id.size(), 38U);
  type("name", "West");
  EXPECT_THAT(config(), Not(HasSubstr(id)));
  EXPECT_EQ(click("ok").at("closed").at("result"), "ok");
  for (const std::string& shown : {config(), onDisk()}) {
    EXPECT_THAT(shown, HasSubstr("<id>" + id + "</id>"));
    EXPECT_THAT(shown, HasSubstr("<name>West</name>"));
  }
  EXPECT_EQ(config(), onDisk());
  ok({{"do", "editor.configure"}, {"device", "West"}});
}

TEST_F(EditorWordTest, ANewDeviceThatIsCancelledLeavesNothing) {
  ok({{"do", "editor.newDevice"}});
  type("name", "West");
  click("cancel");
  EXPECT_THAT(config(), Not(HasSubstr("West")));
  EXPECT_EQ(onDisk(), Configuration);
}

TEST_F(EditorWordTest, ADeviceIsModifiedAndMayChangeTheCaseOfItsName) {
  ok({{"do", "editor.modifyDevice"}, {"device", "North"}});
  type("name", "METER");
  EXPECT_EQ(click("ok").at("top").at("text"), "The name is taken");
  ok({{"do", "answer"}, {"button", "ok"}});
  type("name", "NORTH");
  click("ok");
  EXPECT_THAT(onDisk(), HasSubstr("<name>NORTH</name>"));
  refused({{"do", "editor.modifyDevice"}, {"device", "North"}});
  EXPECT_EQ(ok({{"do", "editor.configure"}, {"device", "NORTH"}}).at("top").at("title"), "NORTH");
}

TEST_F(EditorWordTest, AGroupOfLampsIsMadeModifiedRemovedAndBroughtBack) {
  EXPECT_EQ(ok({{"do", "editor.newGroup"}, {"device", "North"}}).at("top").at("title"),
            "[60340](North)");
  type("name", "Square");
  EXPECT_EQ(click("ok").at("closed").at("class"), "XCDlgLampGroup");
  ok({{"do", "editor.modifyGroup"}, {"device", "North"}, {"group", "Square"}});
  type("name", "Market");
  click("ok");
  EXPECT_THAT(onDisk(), HasSubstr("<id>Market</id>"));
  const std::string before = onDisk();
  ok({{"do", "editor.removeGroup"}, {"device", "North"}, {"group", "Market"}});
  EXPECT_THAT(onDisk(), Not(HasSubstr("Market")));
  ok({{"do", "editor.undo"}});
  EXPECT_EQ(onDisk(), before);
  ok({{"do", "editor.redo"}});
  EXPECT_THAT(config(), Not(HasSubstr("Market")));
}

TEST_F(EditorWordTest, AGroupThatIsNotThereIsRefused) {
  EXPECT_EQ(refused({{"do", "editor.modifyGroup"}, {"device", "North"}, {"group", "Square"}}),
            "the device \"North\" has no group \"Square\"");
  EXPECT_EQ(refused({{"do", "editor.newGroup"}, {"device", "Meter"}}), "[60320](Meter)");
  EXPECT_EQ(refused({{"do", "editor.removeGroup"}, {"device", "North"}}),
            "the field \"group\" is missing");
  EXPECT_EQ(refused({{"do", "editor.undo"}}), "[60358]");
}

TEST_F(EditorWordTest, VerificationIsWhatTheCommandLineSays) {
  for (const auto& [option, expected] :
       {std::pair{"none", ""}, {"new", "new"}, {"existing", ""}, {"new,existing", "new"}}) {
    start({"--verify-connection", option});
    ok({{"do", "editor.newDevice"}});
    type("name", std::string("D ") + option);
    click("ok");
    const std::string element =
        *expected ? "<verified>" + std::string(expected) + "</verified>" : "<verified/>";
    EXPECT_THAT(config(), HasSubstr(element)) << option;
    ok({{"do", "editor.removeDevice"}, {"device", std::string("D ") + option}});
  }
}

TEST_F(EditorWordTest, ARemovedDeviceGoesWithItsGroup) {
  ok({{"do", "editor.removeDevice"}, {"device", "North"}});
  for (const std::string& shown : {config(), onDisk()}) {
    EXPECT_THAT(shown, Not(HasSubstr("North")));
    EXPECT_THAT(shown, HasSubstr("<id>South</id>"));
  }
  EXPECT_EQ(refused({{"do", "editor.removeDevice"}, {"device", "North"}}),
            "the configuration has no device \"North\"");
}

TEST_F(EditorWordTest, ADeviceCanBeRemovedUnderItsDialogs) {
  ok({{"do", "editor.configure"}, {"device", "North"}});
  ok({{"do", "editor.modifyDevice"}, {"device", "North"}});
  EXPECT_EQ(ok({{"do", "editor.removeDevice"}, {"device", "North"}}).at("top").at("class"),
            "DefinitionDialog");
  type("name", "Ghost");
  click("ok");
  EXPECT_EQ(click("generic1").at("top").at("class"), "XCDlgOptions");
  click("driver");
  EXPECT_EQ(script->end(), 0);
  EXPECT_THAT(onDisk(), Not(HasSubstr("Ghost")));
}

TEST_F(EditorWordTest, WordsWorkWhileDialogsAndMessagesAreOpen) {
  openKinds();
  click("message");
  EXPECT_THAT(config(), HasSubstr("North"));
  EXPECT_EQ(ok({{"do", "editor.newDevice"}}).at("top").at("class"), "DefinitionDialog");
  EXPECT_EQ(click("cancel").at("top").at("kind"), "message");
  ok({{"do", "answer"}, {"button", "ok"}});
}

TEST_F(EditorWordTest, WhatThePlugInLacksIsRefused) {
  EXPECT_EQ(refused({{"do", "editor.updateNodes"}, {"device", "North"}}),
            "[60321](XCUpdateNodesZelLampManager)");
  EXPECT_EQ(refused({{"do", "editor.configure"}, {"device", "Meter"}}), "[60322](TCP,Meter)");
  EXPECT_EQ(refused({{"do", "editor.modifyDevice"}, {"device", "Meter"}}), "[60320](Meter)");
}

TEST_F(EditorWordTest, AListCallbackAnswersAtOnceOrWithTheAnswerThatClosesItsMessage) {
  json answer = ok({{"do", "editor.list"},
                    {"device", "North"},
                    {"callback", "A"},
                    {"flags", {33}},
                    {"names", {"x"}}});
  EXPECT_EQ(answer.at("result"), true);
  EXPECT_EQ(answer.at("names"), json({"x", "North"}));
  answer = ok({{"do", "editor.list"}, {"device", "North"}, {"callback", "A"}});
  EXPECT_EQ(answer.at("result"), false);
  EXPECT_EQ(answer.at("names"), json({"North"}));

  answer = ok({{"do", "editor.list"}, {"device", "North"}, {"callback", "B"}, {"names", {"x"}}});
  EXPECT_EQ(answer.at("top").at("text"), "Not here");
  EXPECT_FALSE(answer.contains("result"));
  answer = ok({{"do", "answer"}, {"button", "ok"}});
  EXPECT_EQ(answer.at("result"), false);
  EXPECT_EQ(answer.at("names"), json({"x", "after"}));
}

TEST_F(EditorWordTest, PostedNoticesAreToldOnce) {
  ok({{"do", "editor.configure"}, {"device", "North"}});
  click("generic1");
  EXPECT_EQ(ok({{"do", "editor.posted"}}).at("posted"),
            json::parse(R"([{"message":1025,"wParam":0,"lParam":0}])"));
  EXPECT_EQ(ok({{"do", "editor.posted"}}).at("posted"), json::array());
}

TEST_F(EditorWordTest, WhatThePanelChangesIsSavedWhenItCloses) {
  ok({{"do", "editor.configure"}, {"device", "North"}});
  click("generic1");
  EXPECT_THAT(config(), HasSubstr("touched"));
  EXPECT_EQ(onDisk(), Configuration);
  click("ok");
  EXPECT_THAT(onDisk(), HasSubstr("touched"));
}

TEST_F(EditorWordTest, ExchangesAreKeptWithoutPasswordsAndCanBeCancelled) {
  TinyServer server([](const TinyRequest& request, const TinyServer::Connection& connection) {
    EXPECT_THAT(request.body, HasSubstr("FTPPwd=\"secret\""));
    connection.send(TinyServer::reply("<answer/>"));
  });
  openKinds();
  type("edit", std::to_string(server.port()));
  EXPECT_EQ(ok({{"do", "editor.exchanges"}}).at("exchanges"), json::array());
  click("read");
  ok({{"do", "editor.cancelNextExchange"}, {"after", 1}});
  click("read");
  click("read");
  EXPECT_EQ(server.requests().size(), 2U);
  const json all = ok({{"do", "editor.exchanges"}}).at("exchanges");
  ASSERT_EQ(all.size(), 3U);
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  EXPECT_EQ(all[0], json({{"n", 1},
                          {"command", 1},
                          {"kind", "get"},
                          {"uri", "address=127.0.0.1&socket=" + std::to_string(server.port()) +
                                      "&ftpPassword=***"},
                          {"request", declaration + "<deviceCfg><E01 FTPPwd=\"***\"/></deviceCfg>"},
                          {"reply", declaration + "<answer/>"},
                          {"ok", true},
                          {"error", ""}}));
  EXPECT_EQ(all[2].at("ok"), false);
  EXPECT_THAT(all[2].at("error").get<std::string>(), HasSubstr("[60068]"));
  EXPECT_EQ(ok({{"do", "editor.exchanges"}, {"since", 2}}).at("exchanges"), json({all[2]}));
  EXPECT_EQ(ok({{"do", "editor.exchanges"}, {"since", 9}}).at("exchanges"), json::array());
  EXPECT_THAT(log(), HasSubstr("answer;answer;silent;"));
}

TEST_F(EditorWordTest, AFailedSaveIsShownInAMessage) {
  ok({{"do", "editor.configure"}, {"device", "North"}});
  click("generic1");
  // A folder in the place of the file can't be replaced.
  std::filesystem::remove(folder / "configuration.xml");
  std::filesystem::create_directory(folder / "configuration.xml");
  const json answer = click("ok");
  EXPECT_EQ(answer.at("top").at("kind"), "message");
  EXPECT_EQ(answer.at("top").at("icon"), "error");
  EXPECT_THAT(answer.at("top").at("text").get<std::string>(), HasSubstr("configuration.xml"));
  EXPECT_EQ(answer.at("closed").at("class"), "XCDlgOptions");
  ok({{"do", "answer"}, {"button", "ok"}});
}

}  // namespace
