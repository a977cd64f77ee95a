#include <gtest/gtest.h>

#include <chrono>

#include "tests/controller/support/controller_rig.h"

namespace lamp::controller::test {
namespace {

struct BadCommand {
  int command;
  const char* body;
  int status;
  const char* said;  // part of the text
};

std::string row(const char* section, const char* values) {
  return std::string("<deviceCfg><") + section + "><Node nodeId=\"4100007\">" + values +
         "</Node></" + section + "></deviceCfg>";
}

// Every refusal leaves the state as it was and says what, where and what to do.
void expectRefused(ControllerRig& rig, int command, const std::string& body, int status,
                   const std::string& said) {
  const std::string before = rig.state();
  EXPECT_EQ(rig.send(command, body), status) << body;
  EXPECT_NE(rig.refusal.find(said), std::string::npos) << body << "\n" << rig.refusal;
  EXPECT_LT(rig.refusal.size(), 2000U);
  EXPECT_TRUE(rig.state() == before) << body;
}

TEST(Refusing, DocumentsOfTheWrongShape) {
  ControllerRig rig;
  const BadCommand bad[] = {
      {0, "", 404, "There is no command 0"},
      {3, "<deviceCfg/>", 404, "There is no command 3"},
      {1, "", 400, "no body"},
      {1, "<deviceCfg/>", 400, "must hold one section"},
      {1, "<main><L01/></main>", 400, "must be <deviceCfg> or <advancedCfg>"},
      {1, "<deviceCfg><L01/><L02/></deviceCfg>", 400, "more than one section"},
      {1, "<deviceCfg><L18/></deviceCfg>", 422, "L01 to L17"},
      {1, "<deviceCfg><L00/></deviceCfg>", 422, "L01 to L17"},
      {1, "<deviceCfg><E01/></deviceCfg>", 422, "L01 to L17"},
      {1, "<deviceCfg><L01/></deviceCfg><x/>", 400, "junk after"},
      {1, "<!DOCTYPE x><deviceCfg><L01/></deviceCfg>", 400, "document type"},
      {1, "<deviceCfg><L01></deviceCfg>", 400, "line 1, column 17"},
      {2, "<advancedCfg><E01 name=\"x\"/></advancedCfg>", 400, "must be <deviceCfg>"},
      {2, "<deviceCfg><E03/></deviceCfg>", 422, "command 52"},
      {2, "<deviceCfg><E15/></deviceCfg>", 422, "E15"},
      {2, "<deviceCfg><L01 name=\"x\"/></deviceCfg>", 422, "L01"},
      {9, "<deviceCfg><E01/></deviceCfg>", 422, "must be C06"},
      {29, "<other/>", 400, "other"},
      {58, "<other/>", 400, "other"},
      {30, "<deviceCfg><E01 PortWS=\"1\"/></deviceCfg>", 400, "must be <main>"},
      {30, "<main><E02/></main>", 422, "must be E01"},
      {30, "<main><E01/></main>", 422, "neither ipCom nor PortWS"},
      {30, "<main><E01 PortWS=\"0\"/></main>", 422, "1 to 65535"},
      {30, "<main><E01 ipCom=\"\"/></main>", 422, "must not be empty"},
  };
  for (const BadCommand& each : bad) {
    expectRefused(rig, each.command, each.body, each.status, each.said);
  }
}

struct BadWrite {
  const char* section;
  const char* said;
};

TEST(Refusing, ValuesOfTheGeneralSection) {
  ControllerRig rig;
  const BadWrite bad[] = {
      {"<E01 name=\"ok\" AccSimulMax=\"4x\"/>", "AccSimulMax is \"4x\""},
      {"<E01 AccSimulMax=\"-4\"/>", "digits"},
      {"<E01 AccSimulMax=\"1234567890\"/>", "at most 9"},
      {"<E01 hourIni=\"24\"/>", "0 to 23"},
      {"<E01 hourEnd=\"-1\"/>", "0 to 23"},
      {"<E01 FtpServer=\"y\"/>", "\"N\" or \"Y\""},
      {"<E01 FtpServer=\"\"/>", "must not be empty"},
      {"<E01 activeFilterTime=\"3\"/>", "\"0\", \"1\" or \"2\""},
      {"<E01 TimeZone=\"7\"/>", "TimeZone"},
      {"<E01 ReportFormat=\"2\"/>", "ReportFormat"},
      {"<E01 PortWS=\"65536\"/>", "1 to 65535"},
      {"<E01 Fh=\"20250101000000\"/>", "can't be written"},
      {"<E01 Mod=\"x\"/>", "can't be written"},
      {"<E01 InputsDetected=\"Y\"/>", "can't be written"},
      {"<E01 ipCom=\"\"/>", "must not be empty"},
  };
  for (const BadWrite& each : bad) {
    expectRefused(rig, 2, std::string("<deviceCfg>") + each.section + "</deviceCfg>", 422,
                  each.said);
  }
}

TEST(Refusing, TasksThatCannotRun) {
  ControllerRig rig;
  const std::string action = "<TpPro TpReq=\"L03\" TpSend=\"Y\" TpStore=\"Y\"/>";
  const std::string head = "<TP TpTar=\"9\" TpHi=\"20240605100000S\" TpPer=\"00000001000000\" ";
  const std::pair<std::string, std::string> bad[] = {
      {"<TP TpHi=\"20240605100000S\" TpPer=\"00000001000000\">" + action + "</TP>", "TpTar"},
      {"<TP TpTar=\"x\" TpPer=\"\"/>", "TpTar is \"x\""},
      {"<TP TpTar=\"9\" TpHi=\"\" TpPer=\"00000001000000\">" + action + "</TP>", "TpHi"},
      {"<TP TpTar=\"9\" TpHi=\"20240231100000W\" TpPer=\"00000001000000\">" + action + "</TP>",
       "TpHi"},
      {"<TP TpTar=\"9\" TpHi=\"20240605100000S\" TpPer=\"0001\">" + action + "</TP>", "14 digits"},
      {"<TP TpTar=\"9\" TpHi=\"20240605100000S\">" + action + "</TP>", "14 digits"},
      {head + "TpPrio=\"4\">" + action + "</TP>", "TpPrio"},
      {head + "TpCompl=\"x\">" + action + "</TP>", "TpCompl"},
      {head + "/>", "needs at least one"},
      {head + "><TpPro TpReq=\"L04\"/></TP>", "L03, L09 or L15"},
      {head + "><TpPro TpReq=\"L03\" TpSend=\"1\"/></TP>", "TpSend"},
      {head + ">" + action + "</TP>" + head + ">" + action + "</TP>", "stands twice"},
  };
  for (const auto& [tasks, said] : bad) {
    expectRefused(rig, 2, "<deviceCfg><E02>" + tasks + "</E02></deviceCfg>", 422, said);
  }
}

TEST(Refusing, NodesThatAreUnknownTwiceOrMalformed) {
  ControllerRig rig;
  const BadWrite bad[] = {
      {"<E04><Node nodeId=\"1\" Reference=\"x\"/></E04>", "no such node"},
      {"<E04><Node Reference=\"x\"/></E04>", "no nodeId"},
      {"<E04><Node nodeId=\"4100007\"/><Node nodeId=\"4100007\"/></E04>", "stands twice"},
      {"<E04><Node nodeId=\"4100007\" Reference=\"&lt;b\"/></E04>", "7-bit"},
      {"<E04><Node nodeId=\"4100007\" Reference=\"\xC3\xA9\"/></E04>", "7-bit"},
      {"<E04><Node nodeId=\"4100007\" latitude=\"\"/></E04>", "must not be empty"},
      {"<E04><Node nodeId=\"4100007\" latitude=\"91\"/></E04>", "-90 to 90"},
      {"<E04><Node nodeId=\"4100007\" latitude=\"1.2.3\"/></E04>", "decimal number"},
      {"<E04><Node nodeId=\"4100007\" longitude=\"-180.1\"/></E04>", "-180 to 180"},
      {"<E04><Node nodeId=\"4100007\" longitude=\"12.12345678\"/></E04>", "at most 10"},
      {"<E08><Node nodeId=\"1\"/></E08>", "no such node"},
      {"<E08 ActDate=\"20250101000000\"><Node nodeId=\"4100007\"/></E08>", "S or W"},
      {"<E08 ActDate=\"20250231000000W\"/>", "existing date"},
      {"<E09><Node nodeId=\"1\"/></E09>", "no such node"},
      {"<E09 ActDate=\"\"/>", "ActDate"},
      {"<E11><node nodeId=\"1\"/></E11>", "no such node"},
      {"<E11><node/></E11>", "no nodeId"},
  };
  for (const BadWrite& each : bad) {
    expectRefused(rig, 2, std::string("<deviceCfg>") + each.section + "</deviceCfg>", 422,
                  each.said);
  }
}

TEST(Refusing, AReferenceOfSixtyCharacters) {
  ControllerRig rig;
  const auto body = [](std::size_t length) {
    return "<deviceCfg><E04><Node nodeId=\"4100007\" Reference=\"" + std::string(length, 'r') +
           "\"/></E04></deviceCfg>";
  };
  expectRefused(rig, 2, body(60), 422, "at most 59");
  EXPECT_EQ(rig.send(2, body(59)), 200);
}

TEST(Refusing, ProgramsAndPowersOutOfBounds) {
  ControllerRig rig;
  const std::pair<const char*, std::pair<const char*, const char*>> bad[] = {
      {"E05", {"<Interval time=\"10\" power=\"101\"/>", "0 to 100"}},
      {"E05", {"<Interval time=\"10\" power=\"\"/>", "must not be empty"}},
      {"E05", {"<Interval time=\"1000\" power=\"1\"/>", "at most 3"}},
      {"E05", {"<Interval time=\"1.5\" power=\"1\"/>", "whole number"}},
      {"E05", {"", "it has no <Interval>"}},
      {"E05", {"<Interval time=\"1\"/><Interval time=\"2\"/>", "more than one"}},
      {"E06", {"<Interval time1=\"10\" power1=\"101\"/>", "0 to 100"}},
      {"E06", {"<Interval time4=\"\"/>", "must not be empty"}},
      {"E17", {"<Interval hour2=\"24\"/>", "0 to 23"}},
      {"E17", {"<Interval min4=\"60\"/>", "0 to 59"}},
      {"E17", {"<Interval power3=\"x\"/>", "0 to 100"}},
      {"E07", {"<Alarms blinkTime=\"1x\"/>", "digits"}},
      {"E07", {"<Alarms powerLamp=\"123456789\"/>", "at most 8"}},
      {"E07", {"<Alarms factorPower=\"1.1\"/>", "0 to 1"}},
      {"E07", {"<Alarms factorPower=\"0,9\"/>", "decimal number"}},
      {"E07", {"<Interval/>", "it has no <Alarms>"}},
  };
  for (const auto& [section, fault] : bad) {
    expectRefused(rig, 2, row(section, fault.first), 422, fault.second);
  }
}

TEST(Refusing, OutputsThatContradictThemselves) {
  ControllerRig rig;
  const BadWrite bad[] = {
      {"<E13 offsetSunSet=\"-5\"/>", "0 to 1440"},
      {"<E13 offsetSunRise=\"1441\"/>", "0 to 1440"},
      {"<E13><Input SponEnable=\"Y\"/></E13>", "no Dir"},
      {"<E13><Input Dir=\"0\"/></E13>", "1 to 8"},
      {"<E13><Output Dir=\"9\"/></E13>", "1 to 8"},
      {"<E13><Output Dir=\"1\" In8=\"T\"/></E13>", "In8"},
      {"<E13><Output Dir=\"1\" Ocaso=\"Y\" Orto=\"Y\"/></E13>", "at most one"},
      {"<E13><Output Dir=\"1\"/><Output Dir=\"1\"/></E13>", "stands twice"},
      {"<E13 ActDate=\"x\"/>", "ActDate"},
  };
  for (const BadWrite& each : bad) {
    expectRefused(rig, 2, std::string("<deviceCfg>") + each.section + "</deviceCfg>", 422,
                  each.said);
  }
}

TEST(Refusing, ClockDatesThatDoNotExist) {
  ControllerRig rig;
  for (const char* date : {"", "20250101000000", "20250231000000W", "20250101000000w"}) {
    expectRefused(rig, 9, std::string("<deviceCfg><C06 date=\"") + date + "\"/></deviceCfg>", 422,
                  "date is");
  }
}

TEST(Refusing, ADocumentIsTakenWholeOrNotAtAll) {
  ControllerRig rig;
  const std::vector<std::string> ids = rig.nodeIds();
  expectRefused(rig, 2,
                "<deviceCfg><E05><Node nodeId=\"" + ids[0] +
                    "\"><Interval time=\"1\" power=\"1\"/></Node><Node nodeId=\"" + ids[1] +
                    "\"><Interval time=\"1\" power=\"999\"/></Node></E05></deviceCfg>",
                422, ids[1]);
}

TEST(Refusing, ALongValueIsCutInTheText) {
  ControllerRig rig;
  expectRefused(rig, 2,
                "<deviceCfg><E01 TimeZone=\"" + std::string(100000, 'z') + "\"/></deviceCfg>", 422,
                "zzz...\"");
}

TEST(Refusing, WhatIsKeptNeverHasMoreThanFourThousandAndNinetySixAttributes) {
  ControllerRig rig;
  const auto many = [](char letter) {
    std::string text;
    for (int i = 0; i < 2100; ++i) text += std::string(" ") + letter + std::to_string(i) + "=''";
    return text;
  };
  const std::string node = "<Node nodeId=\"" + rig.nodeIds()[0] + "\"";
  const std::pair<std::string, std::string> elements[] = {
      {"<E01", "/>"},
      {"<E04>" + node, "/></E04>"},
      {"<E05>" + node, "><Interval/></Node></E05>"},
      {"<E05>" + node + "><Interval", "/></Node></E05>"},
      {"<E05", "/>"},
      {"<E09", "/>"},
      {"<E13><Output Dir=\"1\"", "/></E13>"},
      {"<E02><TP TpTar=\"1\" TpHi=\"20250101000000W\" TpPer=\"00000000010000\"",
       "><TpPro TpReq=\"L03\"/></TP></E02>"}};
  for (const auto& [begin, end] : elements) {
    EXPECT_EQ(rig.write(begin + many('a') + end), 200) << begin << rig.refusal;
    EXPECT_EQ(rig.write(begin + many('a') + end), 200) << "the same ones again";
    expectRefused(rig, 2, "<deviceCfg>" + begin + many('b') + end + "</deviceCfg>", 422,
                  "and may have 4096");
  }
}

TEST(Refusing, ManyTasksAndAttributesCostWhatTheyAreLong) {
  ControllerRig rig;
  const auto seconds = [&](const std::string& section) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(rig.write(section), 200) << rig.refusal;
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  };
  std::string tasks = "<E02>";
  for (int i = 0; i < 8000; ++i) {
    tasks += "<TP TpTar=\"" + std::to_string(i) +
             "\" TpHi=\"20990101000000W\" TpPer=\"00000000010000\"><TpPro TpReq=\"L03\"/></TP>";
  }
  std::string attributes = "<E01";
  for (int i = 0; i < 4000; ++i) attributes += " n" + std::to_string(i) + "=''";
  EXPECT_LT(seconds(tasks + "</E02>"), 2);
  EXPECT_LT(seconds(tasks + "</E02>"), 2);
  EXPECT_LT(seconds(attributes + "/>"), 1);
  EXPECT_LT(seconds(attributes + "/>"), 1);
}

}  // namespace
}  // namespace lamp::controller::test
