#include "workbench/send_log.h"

#include <gtest/gtest.h>

#include "host/services/identity.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/scripted_channel.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"
#include "workbench/sha256.h"

namespace {

using host::CommandKind;
using workbench::ExchangeRecord;
using workbench::JournalEntry;
using workbench::SendJournal;
using workbench::SendLog;

constexpr const char16_t* Street =
    u"identifier=LM-0001&address=192.168.1.20&socket=8080&ftpPassword=secret";

// 2025-03-15T10:00:00.250Z.
std::chrono::system_clock::time_point testMoment() {
  return std::chrono::system_clock::time_point(std::chrono::milliseconds(1'742'032'800'250));
}

class SendLogTest : public testing::Test {
 protected:
  void SetUp() override { support::texts(); }

  void exchange(int command, CommandKind kind, const char* xml,
                const char16_t* parameters = Street) {
    XmlDocument document;
    document.Parse(xml);
    record.exchange({command, kind, parameters, &document});
  }
  std::vector<JournalEntry> entries() const {
    return log.journal().entries([](const auto&) { return true; }, 100);
  }

  support::TempFolder folder;
  support::LampManager manager;
  support::ScriptedChannel channel;
  ExchangeRecord record{channel};
  SendLog log{SendJournal(folder / "journal"), record, "tests", &testMoment};
};

TEST_F(SendLogTest, AWriteIsOnRecordWithItsDeviceAndWithoutPasswords) {
  exchange(2, CommandKind::put,
           R"(<deviceCfg><E01 TimeZone="4" FTPPwd="hunter2" mailPassword="hunter3"/></deviceCfg>)");
  ASSERT_EQ(entries().size(), 1U);
  const JournalEntry entry = entries()[0];
  EXPECT_EQ(entry.when.substr(0, 20), "2025-03-15T10:00:00.");
  EXPECT_FALSE(entry.who.empty());
  EXPECT_EQ(entry.program, "tests");
  EXPECT_EQ(entry.deviceId, "{D1}");
  EXPECT_EQ(entry.deviceName, "Main street");
  EXPECT_EQ(entry.address, "192.168.1.20:8080");
  EXPECT_EQ(entry.command, 2);
  EXPECT_EQ(entry.section, "E01");
  EXPECT_TRUE(entry.ok);
  EXPECT_NE(entry.document.find("TimeZone=\"4\""), std::string::npos);
  EXPECT_EQ(folder.read("journal/sends.jsonl").find("hunter"), std::string::npos);
  EXPECT_EQ(folder.read("journal/sends.jsonl").find("secret"), std::string::npos);
}

// Controllers refuse with texts that repeat what they were sent.
TEST_F(SendLogTest, PasswordsAreInNothingThatIsKeptOfARefusedWriteEither) {
  channel.replyWith("<main><ZelLamp><L01 FTPPwd=\"hunter4\"/></ZelLamp></main>");
  exchange(1, CommandKind::get, "<deviceCfg><L01/></deviceCfg>");
  channel.failWith("not for hunter2, hunter3 or secret, mailUser='me', says LM-0001");
  exchange(
      2, CommandKind::put,
      R"(<deviceCfg><E01 FTPPwd="hunter2"><mailPassword>hunter3</mailPassword></E01></deviceCfg>)");
  ASSERT_EQ(entries().size(), 1U);
  EXPECT_EQ(entries()[0].error, "not for ***, *** or ***, mailUser='***', says LM-0001");
  EXPECT_NE(entries()[0].before.find("FTPPwd=\"***\""), std::string::npos);
  EXPECT_EQ(folder.read("journal/sends.jsonl").find("'me'"), std::string::npos);
  for (const char* password : {"hunter", "secret"})
    EXPECT_EQ(folder.read("journal/sends.jsonl").find(password), std::string::npos) << password;
}

// A controller repeats a password escaped: in an error, and in a value of another name.
TEST_F(SendLogTest, PasswordsInAnotherSpellingAreNotKeptEither) {
  const auto put = [&] {
    exchange(2, CommandKind::put, "<deviceCfg><E01 FTPPwd='p&lt;w>&amp;\"1'/></deviceCfg>");
  };
  put();
  for (const char* spelling : {"p&lt;w&gt;&amp;&quot;1", "p%3Cw%3E%26%221", "p%3cw%3e%26%221",
                               "p&lt;w>&amp;&#34;1", "p\\u003cw>&\\\"1"}) {
    XmlDocument echo("main");
    echo.Root()->NewChild("ZelLamp").NewChild("L01").setAttribute(
        "Note", XCBasicString::FromUtf8(std::string("was ") + spelling));
    channel.replyWith(echo.ToString());
    exchange(1, CommandKind::get, "<deviceCfg><L01/></deviceCfg>");
    channel.failWith(std::string("bad: ") + spelling);
    put();
    EXPECT_EQ(entries()[0].error, "bad: ***") << spelling;
    EXPECT_NE(entries()[0].before.find("Note=\"***\""), std::string::npos) << spelling;
    EXPECT_NE(entries()[0].document.find("FTPPwd=\"***\""), std::string::npos);
  }
}

TEST_F(SendLogTest, ReadsAreNotOnRecord) {
  channel.replyWith("<main/>");
  exchange(1, CommandKind::get, "<deviceCfg><L01/></deviceCfg>");
  EXPECT_TRUE(entries().empty());
}

TEST_F(SendLogTest, AFailureIsOnRecordWithItsText) {
  channel.failWith("the controller is busy");
  exchange(2, CommandKind::put, "<deviceCfg><E01 TimeZone=\"4\"/></deviceCfg>");
  ASSERT_EQ(entries().size(), 1U);
  EXPECT_FALSE(entries()[0].ok);
  EXPECT_EQ(entries()[0].error, "the controller is busy");
}

TEST_F(SendLogTest, WhatTheSameControllerWasReadToHoldStandsBesideIt) {
  channel.replyWith(
      "<main><ZelLamp><L04><Node nodeId=\"1\" FTPPwd=\"hunter2\"/></L04></ZelLamp></main>");
  exchange(1, CommandKind::get, "<deviceCfg><L04/></deviceCfg>");
  channel.replyWith("<main><ZelLamp><L05/></ZelLamp></main>");
  exchange(1, CommandKind::get, "<deviceCfg><L05/></deviceCfg>");
  channel.replyWith("<main><other/></main>");
  exchange(1, CommandKind::get, "<deviceCfg><L04/></deviceCfg>",
           u"address=192.168.1.21&socket=8080");
  exchange(2, CommandKind::put, "<deviceCfg><E04/></deviceCfg>");
  exchange(2, CommandKind::put, "<deviceCfg><E08/></deviceCfg>");
  ASSERT_EQ(entries().size(), 2U);
  EXPECT_NE(entries()[1].before.find("<Node nodeId=\"1\" FTPPwd=\"***\"/>"), std::string::npos);
  EXPECT_EQ(entries()[0].before, "") << "an order has no former state";
}

TEST_F(SendLogTest, OfAFirmwareNameSizeAndDigestAreKept) {
  const std::string bytes(100'000, '\x01');
  const std::string xml =
      "<deviceCfg><firmwareFile>" + EncodeBase64(bytes) +
      "</firmwareFile><E03 Firmware=\"/home/x/new.tar\" ActDate=\"2025S\"/></deviceCfg>";
  exchange(52, CommandKind::put, xml.c_str());
  ASSERT_EQ(entries().size(), 1U);
  const JournalEntry entry = entries()[0];
  ASSERT_TRUE(entry.upload.has_value());
  EXPECT_EQ(entry.upload->name, "new.tar");
  EXPECT_EQ(entry.upload->bytes, bytes.size());
  EXPECT_EQ(entry.upload->sha256, workbench::sha256Text(bytes));
  EXPECT_EQ(entry.section, "E03");
  EXPECT_NE(entry.document.find("ActDate=\"2025S\""), std::string::npos);
  EXPECT_LT(entry.line().size(), 1'000U);
}

TEST_F(SendLogTest, AVeryLongDocumentIsKeptAsItsDigest) {
  const std::string xml =
      "<deviceCfg><E04 a=\"" + std::string(SendLog::LongestDocument, 'x') + "\"/></deviceCfg>";
  exchange(2, CommandKind::put, xml.c_str());
  ASSERT_EQ(entries().size(), 1U);
  EXPECT_TRUE(entries()[0].document.starts_with("(not kept: "))
      << entries()[0].document.substr(0, 80);
}

TEST_F(SendLogTest, AJournalThatCantBeWrittenIsToldOnceAndStopsNothing) {
  folder.write("file", "");
  SendLog blocked(SendJournal(folder / "file/journal"), record, "tests", &testMoment);
  int told = 0;
  blocked.onProblem = [&](const std::string&) { ++told; };
  exchange(2, CommandKind::put, "<deviceCfg><E01/></deviceCfg>");
  exchange(2, CommandKind::put, "<deviceCfg><E01/></deviceCfg>");
  EXPECT_EQ(told, 1);
  EXPECT_TRUE(record.entries()[1].ok);
}

TEST_F(SendLogTest, ADeviceThatIsInNoConfigurationIsKnownByItsAddress) {
  exchange(2, CommandKind::put, "<deviceCfg><E01/></deviceCfg>", u"address=10.0.0.1&socket=80");
  EXPECT_EQ(entries()[0].deviceId, "");
  EXPECT_EQ(entries()[0].address, "10.0.0.1:80");
}

}  // namespace
