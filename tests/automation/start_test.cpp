#include <gmock/gmock.h>

#include <unistd.h>

#include "host/services/files.h"
#include "tests/automation/script_test.h"
#include "tests/support/odd_file.h"
#include "tests/support/temp_folder.h"

namespace {

using nlohmann::json;
using test::ScriptProcess;
using testing::HasSubstr;

struct Failed {
  int status;
  std::string errors;
};

Failed startWith(const std::vector<std::string>& arguments) {
  ScriptProcess script(arguments);
  const int status = script.end();
  EXPECT_EQ(script.rest(), "");
  return {status, script.errors()};
}

TEST(Start, WrongArgumentsAreToldAndEndWithStatusTwo) {
  const std::vector<std::pair<std::vector<std::string>, const char*>> wrong = {
      {{}, "--config is missing"},
      {{"--config"}, "--config needs a folder"},
      {{"--config", ""}, "--config needs a folder"},
      {{"--config", "/tmp/x", "--config", "/tmp/y"}, "--config is given twice"},
      {{"--config", "/tmp/x", "--now", "today"}, "--now needs a date"},
      {{"--config", "/tmp/x", "--now", "2025-02-30T00:00:00"}, "--now needs a date"},
      {{"--config", "/tmp/x", "--verify-connection", "all"}, "--verify-connection needs new"},
      {{"--config", "/tmp/x", "--answer-within", "0"}, "--answer-within needs a number"},
      {{"--config", "/tmp/x", "--answer-within", "2s"}, "--answer-within needs a number"},
      {{"--config", "/tmp/x", "--window"}, "\"--window\" is no option"},
      {{"stray"}, "\"stray\" is no option"}};
  for (const auto& [arguments, text] : wrong) {
    const Failed failed = startWith(arguments);
    EXPECT_EQ(failed.status, 2) << text;
    EXPECT_THAT(failed.errors, HasSubstr(text));
  }
}

TEST(Start, WhatCantBeLoadedIsToldAndEndsWithStatusTwo) {
  const support::TempFolder folder;
  const auto started = [&](const std::vector<std::string>& more) {
    std::vector<std::string> arguments = {"--config", folder.path().string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return startWith(arguments);
  };
  const std::vector<std::pair<std::vector<std::string>, const char*>> wrong = {
      {{"--plugin", "/nowhere/plugin.so"}, "\"/nowhere/plugin.so\" is missing"},
      {{"--plugin", folder.write("text.so", "no library").string()}, "can't be loaded"},
      {{"--plugin", LAMP_NO_PLUGIN}, "has no InitializeUsrDriver_ZelLampManager"},
      {{"--plugin", LAMP_REFUSING_PLUGIN}, "refused to start"},
      {{"--plugin", LAMP_OTHER_HOST_PLUGIN}, "was built for another version of this program"},
      {{"--plugin", LAMP_TEST_PLUGIN, "--language", "xx"}, "\"xx\""},
      {{"--plugin", LAMP_TEST_PLUGIN, "--language", "../en"}, "is not a language"}};
  for (const auto& [arguments, text] : wrong) {
    const Failed failed = started(arguments);
    EXPECT_EQ(failed.status, 2) << text;
    EXPECT_THAT(failed.errors, HasSubstr(text));
  }
}

TEST(Start, WhateverStandsInPlaceOfThePlugInIsToldWithNameAndCause) {
  using support::Odd;
  std::string plugin;
  std::string cause;
  ASSERT_TRUE(host::readFile(LAMP_NO_PLUGIN, std::size_t(1) << 30, plugin, cause)) << cause;
  for (const Odd odd : support::AllOdd) {
    if (odd == Odd::unreadable && ::geteuid() == 0) continue;  // nothing is to the program
    SCOPED_TRACE(nameOf(odd));
    const support::TempFolder folder;
    const support::TempFolder place;
    const support::OddFile thing(place / "plugin.so", odd, plugin);
    const Failed failed =
        startWith({"--config", folder.path().string(), "--plugin", (place / "plugin.so").string()});
    EXPECT_EQ(failed.status, 2);
    EXPECT_THAT(failed.errors, HasSubstr("\"" + (place / "plugin.so").string() + "\""));
    const bool isLibrary = odd == Odd::secondName || odd == Odd::linkToStranger;
    const std::string refusal = odd == Odd::huge        ? "can't be loaded"
                                : odd == Odd::truncated ? "it was cut off"
                                : isLibrary             ? "is no plug-in of this program"
                                                        : thing.refusal(host::NamedBy::person);
    EXPECT_THAT(failed.errors, HasSubstr(refusal));
    EXPECT_TRUE(thing.isUntouched());
  }
}

TEST(Start, WhatTheFirstSaveWillLoseIsToldBeforeIt) {
  const support::TempFolder folder;
  folder.write("configuration.xml",
               "<configuration>\n<!-- the north comes first --></configuration>");
  const std::vector<std::string> arguments = {"--config", folder.path().string(), "--plugin",
                                              LAMP_TEST_PLUGIN};
  ScriptProcess first(arguments);
  first.ok({{"do", "editor.posted"}});
  ScriptProcess second(arguments);
  second.ok({{"do", "editor.posted"}});
  EXPECT_EQ(first.end(), 0);
  EXPECT_EQ(second.end(), 0);
  EXPECT_THAT(first.errors(), HasSubstr("comments (the first in line 2)"));
  EXPECT_THAT(first.errors(), HasSubstr("configuration.xml.previous"));
  EXPECT_THAT(second.errors(), testing::Not(HasSubstr("comments"))) << "it can only read";
}

TEST(Start, ABrokenConfigurationIsToldAndStays) {
  const support::TempFolder folder;
  folder.write("configuration.xml", "<configuration>\n<");
  const Failed failed =
      startWith({"--config", folder.path().string(), "--plugin", LAMP_TEST_PLUGIN});
  EXPECT_EQ(failed.status, 2);
  EXPECT_THAT(failed.errors, HasSubstr("line 2"));
  EXPECT_EQ(folder.read("configuration.xml"), "<configuration>\n<");
}

TEST(Start, OfABrokenConfigurationTheVersionBeforeIsNamedWhereItIsWhole) {
  const support::TempFolder folder;
  folder.write("configuration.xml", "<configuration>\n<");
  const std::vector<std::string> arguments = {"--config", folder.path().string(), "--plugin",
                                              LAMP_TEST_PLUGIN};
  EXPECT_THAT(startWith(arguments).errors, testing::Not(HasSubstr(".previous")));
  folder.write("configuration.xml.previous", "<configuration/>");
  EXPECT_THAT(startWith(arguments).errors,
              HasSubstr((folder / "configuration.xml.previous").string()));
  EXPECT_EQ(folder.read("configuration.xml"), "<configuration>\n<");
  EXPECT_EQ(folder.read("configuration.xml.previous"), "<configuration/>");
}

TEST(Start, HelpIsPrinted) {
  ScriptProcess script({"--help"});
  EXPECT_EQ(script.end(), 0);
  for (const char* option :
       {"--config", "--plugin", "--now", "--language", "--verify-connection", "--answer-within"})
    EXPECT_THAT(script.rest(), HasSubstr(option));
}

TEST(Start, OptionsTakeTheirValueBehindAnEqualsSignToo) {
  const support::TempFolder folder;
  ScriptProcess script(
      {"--config=" + folder.path().string(), std::string("--plugin=") + LAMP_TEST_PLUGIN});
  script.ok({{"do", "editor.posted"}});
}

TEST(Start, AProgramThatWasKilledLocksNobodyOut) {
  const support::TempFolder folder;
  const std::vector<std::string> arguments = {"--config", folder.path().string(), "--plugin",
                                              LAMP_TEST_PLUGIN};
  ScriptProcess first(arguments);
  first.ok({{"do", "editor.posted"}});
  first.kill();
  ScriptProcess second(arguments);
  second.ok({{"do", "editor.newDevice"}});
  EXPECT_EQ(second.end(), 0);
  EXPECT_EQ(second.errors(), "");
}

TEST(Start, ASecondProgramOnTheConfigurationCanOnlyRead) {
  const support::TempFolder folder;
  const std::vector<std::string> arguments = {"--config", folder.path().string(), "--plugin",
                                              LAMP_TEST_PLUGIN};
  ScriptProcess first(arguments);
  first.ok({{"do", "editor.posted"}});
  ScriptProcess second(arguments);
  EXPECT_THAT(second.refused({{"do", "editor.newDevice"}}), HasSubstr("can only be read"));
  EXPECT_EQ(second.end(), 0);
  EXPECT_THAT(second.errors(), HasSubstr("another program (process "));
}

TEST(Start, SharedIdsAreToldAndTheConfigurationCanOnlyBeRead) {
  const support::TempFolder folder;
  const std::string shared =
      "<configuration><commSystem><device><id>{1}</id><driver>ZELLAMPMANAGER</driver>"
      "<name>North</name></device><device><id>{1}</id><name>South</name></device></commSystem>"
      "</configuration>";
  folder.write("configuration.xml", shared);
  ScriptProcess script({"--config", folder.path().string(), "--plugin", LAMP_TEST_PLUGIN});
  EXPECT_THAT(script.refused({{"do", "editor.newDevice"}}), HasSubstr("North and South"));
  script.ok({{"do", "editor.configure"}, {"device", "North"}});
  EXPECT_EQ(script.end(), 0);
  EXPECT_THAT(script.errors(), HasSubstr("North and South have the id {1}"));
  EXPECT_EQ(folder.read("configuration.xml"), shared);
}

}  // namespace
