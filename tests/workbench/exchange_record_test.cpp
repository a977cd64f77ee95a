#include "workbench/exchange_record.h"

#include <gtest/gtest.h>

#include "tests/support/scripted_channel.h"
#include "tests/support/texts.h"

namespace {

using host::CommandKind;
using host::ExchangeReply;
using workbench::ExchangeEntry;
using workbench::ExchangeRecord;
using Status = ExchangeReply::Status;

class ExchangeRecordTest : public testing::Test {
 protected:
  void SetUp() override { support::texts(); }

  ExchangeReply send(int command, CommandKind kind, const XmlDocument& document) {
    return record.exchange({command, kind, u"address=h&socket=1&ftpPassword=s", &document});
  }
  ExchangeReply get(const XmlDocument& document = {}) {
    return send(1, CommandKind::get, document);
  }

  support::ScriptedChannel channel;
  ExchangeRecord record{channel};
};

constexpr const char* Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

TEST_F(ExchangeRecordTest, KeepsWhatWasSentAndWhatCameWithoutPasswords) {
  channel.replyWith("<main><L01 FTPPwd=\"secret\" mailUser=\"u\"/></main>");
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("E01").setAttribute("mailPassword", u"secret");
  const ExchangeReply reply = get(document);
  EXPECT_EQ(reply.document.Root()->Node("L01")->getAttribute("FTPPwd"), u"secret");
  EXPECT_EQ(document.Root()->Node("E01")->getAttribute("mailPassword"), u"secret");

  ASSERT_EQ(record.entries().size(), 1U);
  const ExchangeEntry& entry = record.entries()[0];
  EXPECT_EQ(entry.number, 1U);
  EXPECT_EQ(entry.command, 1);
  EXPECT_EQ(entry.kind, CommandKind::get);
  EXPECT_EQ(entry.uri, "address=h&socket=1&ftpPassword=***");
  EXPECT_EQ(entry.request,
            std::string(Declaration) + "<deviceCfg><E01 mailPassword=\"***\"/></deviceCfg>");
  EXPECT_EQ(entry.reply,
            std::string(Declaration) + "<main><L01 FTPPwd=\"***\" mailUser=\"u\"/></main>");
  EXPECT_TRUE(entry.ok);
  EXPECT_EQ(entry.error, "");
}

TEST_F(ExchangeRecordTest, KeepsFailuresWithTheirText) {
  channel.failWith("no such section");
  EXPECT_EQ(get().status, Status::failed);
  EXPECT_FALSE(record.entries()[0].ok);
  EXPECT_EQ(record.entries()[0].error, "no such section");
  EXPECT_EQ(record.entries()[0].request, "");
  EXPECT_EQ(record.entries()[0].reply, "");
}

TEST_F(ExchangeRecordTest, TheNextExchangeIsCancelledWithoutBeingSent) {
  record.cancelNext();
  EXPECT_EQ(get().status, Status::cancelled);
  EXPECT_EQ(channel.count(), 0U);
  EXPECT_FALSE(record.entries()[0].ok);
  EXPECT_EQ(record.entries()[0].error, "[60068](h:1)");
  channel.replyEmpty();
  EXPECT_EQ(get().status, Status::succeeded);
}

TEST_F(ExchangeRecordTest, CancellingCountsTheExchangesInBetween) {
  record.cancelNext(2);
  record.cancelNext(0);
  channel.replyEmpty();
  channel.replyEmpty();
  EXPECT_EQ(get().status, Status::cancelled);
  EXPECT_EQ(get().status, Status::succeeded);
  EXPECT_EQ(get().status, Status::cancelled);
  EXPECT_EQ(get().status, Status::succeeded);
}

TEST_F(ExchangeRecordTest, OnlyTheLongTextsOfFirmwareAreCut) {
  XmlDocument document("deviceCfg");
  const std::string firmware(ExchangeRecord::FirmwareTextLimit + 1, 'Q');
  document.Root()->SetNarrowValue("firmwareFile", firmware);
  document.Root()->NewChild("E03").setAttribute("ActDate", u"20250101000000W");
  EXPECT_EQ(send(52, CommandKind::put, document).status, Status::succeeded);
  const std::string& kept = record.entries()[0].request;
  EXPECT_LT(kept.size(), 2'000U);
  EXPECT_NE(kept.find("(cut: 4194305 characters in all)"), std::string::npos);
  EXPECT_NE(kept.find("<E03 ActDate=\"20250101000000W\"/>"), std::string::npos);

  send(2, CommandKind::put, document);
  EXPECT_EQ(record.entries()[1].request, document.ToString());
  document.Root()->SetNarrowValue("firmwareFile", "QUJD");
  send(52, CommandKind::put, document);
  EXPECT_EQ(record.entries()[2].request, document.ToString());
}

TEST_F(ExchangeRecordTest, TheOldestTextsGoWhenAllTogetherGrowOverTheBound) {
  ExchangeRecord small(channel, 1'000);
  XmlDocument document("deviceCfg");
  document.Root()->SetNarrowValue("text", std::string(600, 'x'));
  for (int i = 0; i < 3; ++i) small.exchange({2, CommandKind::put, u"address=h", &document});
  EXPECT_EQ(small.entries().size(), 3U);
  EXPECT_EQ(small.entries()[0].request, "(no longer kept)");
  EXPECT_EQ(small.entries()[1].request, "(no longer kept)");
  EXPECT_EQ(small.entries()[2].request, document.ToString());
  EXPECT_EQ(small.entries()[0].number, 1U);
}

TEST_F(ExchangeRecordTest, TellsItsListenerOfEveryExchange) {
  std::string log;
  record.setListener([&](const ExchangeEntry& entry) { log += std::to_string(entry.number); });
  record.cancelNext();
  get();
  channel.replyEmpty();
  get();
  EXPECT_EQ(log, "12");
}

}  // namespace
