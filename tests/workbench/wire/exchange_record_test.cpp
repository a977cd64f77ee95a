#include "workbench/wire/exchange_record.h"

#include <gtest/gtest.h>

#include "tests/support/scripted_channel.h"
#include "tests/support/texts.h"
#include "workbench/http_command_channel.h"

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
  channel.replyWith("<main><L01 FTPPwd=\"secret\" FTPUser=\"u\" Note=\"for secret\"/></main>");
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
  EXPECT_EQ(entry.section, "E01");
  EXPECT_EQ(entry.request.text(),
            std::string(Declaration) + "<deviceCfg><E01 mailPassword=\"***\"/></deviceCfg>");
  EXPECT_EQ(
      entry.reply.text(),
      std::string(Declaration) + "<main><L01 FTPPwd=\"***\" FTPUser=\"u\" Note=\"***\"/></main>");
  EXPECT_TRUE(entry.ok);
  EXPECT_EQ(entry.error, "");
}

TEST_F(ExchangeRecordTest, KeepsFailuresWithTheirText) {
  channel.failWith("no such section");
  EXPECT_EQ(get().status, Status::failed);
  EXPECT_FALSE(record.entries()[0].ok);
  EXPECT_EQ(record.entries()[0].error, "no such section");
  EXPECT_EQ(record.entries()[0].request.text(), "");
  EXPECT_EQ(record.entries()[0].reply.text(), "");
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

// A page works on with what it read and sent.
TEST_F(ExchangeRecordTest, WhatIsOnRecordStaysWhenTheDocumentsAreChanged) {
  channel.replyWith("<main><L04><Node nodeId=\"1\"/></L04></main>");
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("L04");
  ExchangeReply reply = get(document);
  const std::string sent = record.entries()[0].request.text();
  const std::string read = record.entries()[0].reply.text();
  XmlDocument::XmlNode& node = *reply.document.Root()->Node("L04/Node");
  node.setAttribute("nodeId", u"2");
  node.NewChild("more", u"x");
  node.SetTag("other");
  reply.document.Root()->NewChild("L05");
  document.Root()->RemoveChildren();
  EXPECT_EQ(record.entries()[0].request.text(), sent);
  EXPECT_EQ(record.entries()[0].reply.text(), read);
  reply.document.Clear();
  document.Clear();
  EXPECT_EQ(record.entries()[0].request.text(), sent);
  EXPECT_EQ(record.entries()[0].reply.text(), read);
}

// --- secrets

TEST_F(ExchangeRecordTest, AFailureIsToldWithoutTheSecretsOfItsRequestInWhateverSpelling) {
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("E01").setAttribute("mailPassword", u"p<w>&\"1");
  for (const char* spelling :
       {"p<w>&\"1", "p&lt;w&gt;&amp;&quot;1", "p%3Cw%3E%26%221", "p%3cw%3e%26%221", "p<w>&\\\"1"}) {
    channel.failWith(std::string("wrong: ") + spelling);
    EXPECT_EQ(send(2, CommandKind::put, document).error, u"wrong: ***") << spelling;
    EXPECT_EQ(record.entries().back().error, "wrong: ***") << spelling;
  }
}

TEST_F(ExchangeRecordTest, SecretsOfAControllerAreKnownInItsLaterExchangesAndInNobodyElses) {
  channel.replyWith("<main><L01 FTPPwd=\"hunter22\"/></main>");
  get();
  channel.failWith("not hunter22");
  EXPECT_EQ(get().error, u"not ***");
  channel.failWith("not hunter22");
  EXPECT_EQ(record.exchange({1, CommandKind::get, u"address=other&socket=1", nullptr}).error,
            u"not hunter22");
}

TEST_F(ExchangeRecordTest, AControllerThatTellsManySecretsDoesNotCrowdOutTheProgramsOwn) {
  std::string many = "<main>";
  for (std::size_t i = 0; i < 2 * workbench::Secrets::MostSecrets; ++i)
    many += "<L01 FTPPwd=\"made-up-" + std::to_string(i) + "\"/>";
  channel.replyWith(many + "<L02 a=\"the-real-one\"/></main>");
  record.exchange({1, CommandKind::get, u"address=h&ftpPassword=the-real-one", nullptr});
  EXPECT_EQ(record.entries()[0].reply.text().find("the-real-one"), std::string::npos);
}

TEST_F(ExchangeRecordTest, AnErrorThatWasCutInTheMidstOfASecretShowsNoPartOfIt) {
  constexpr std::size_t Most = workbench::HttpCommandChannel::ErrorCharacters;
  channel.failWith(std::string(Most - 5, '-') + "hunte");
  const XCBasicString error =
      record.exchange({1, CommandKind::get, u"address=h&ftpPassword=hunter22", nullptr}).error;
  EXPECT_EQ(error.ToUtf8(), std::string(Most - 5, '-'));
}

TEST_F(ExchangeRecordTest, OfSoManyControllersTheOneUsedLeastRecentlyIsForgotten) {
  ExchangeRecord small(channel, {.controllers = 2});
  const auto ask = [&](const char16_t* address, const char* answer) {
    channel.failWith(answer);
    return small.exchange({1, CommandKind::get, address, nullptr}).error.ToUtf8();
  };
  ask(u"address=a&socket=1&ftpPassword=secret-a", "");
  ask(u"address=b&socket=1&ftpPassword=secret-b", "");
  ask(u"address=a&socket=1", "");
  ask(u"address=c&socket=1", "");
  EXPECT_EQ(ask(u"address=a&socket=1", "secret-a"), "***");
  EXPECT_EQ(ask(u"address=b&socket=1", "secret-b"), "secret-b");
}

// --- limits

TEST_F(ExchangeRecordTest, OnlyTheLongTextsOfFirmwareAreCut) {
  const std::size_t limit = workbench::RecordLimits().firmwareText;
  EXPECT_EQ(limit, 4U * 1024 * 1024);
  XmlDocument document("deviceCfg");
  const std::string firmware(limit + 1, 'Q');
  document.Root()->SetNarrowValue("firmwareFile", firmware);
  document.Root()->NewChild("E03").setAttribute("ActDate", u"20250101000000W");
  EXPECT_EQ(send(52, CommandKind::put, document).status, Status::succeeded);
  const std::string kept = record.entries()[0].request.text();
  EXPECT_LT(kept.size(), 2'000U);
  EXPECT_NE(kept.find("(cut: 4194305 characters in all)"), std::string::npos);
  EXPECT_NE(kept.find("<E03 ActDate=\"20250101000000W\"/>"), std::string::npos);
  EXPECT_LT(record.bytes(), 100'000U) << "the firmware is not kept by a part of it";

  send(2, CommandKind::put, document);
  EXPECT_EQ(record.entries()[1].request.text(), document.ToString());
  document.Root()->SetNarrowValue("firmwareFile", firmware.substr(1));
  send(52, CommandKind::put, document);
  EXPECT_EQ(record.entries()[2].request.text(), document.ToString());
}

// A document with a text of so many bytes.
XmlDocument documentOf(std::size_t bytes) {
  XmlDocument document("deviceCfg");
  document.Root()->SetNarrowValue("text", std::string(bytes, 'x'));
  return document;
}

TEST_F(ExchangeRecordTest, TheOldestDocumentsGoWhenAllTogetherGrowOverTheLimit) {
  EXPECT_EQ(workbench::RecordLimits().bytes, 256U * 1024 * 1024);
  ExchangeRecord small(channel, {.bytes = 100'000});
  const XmlDocument document = documentOf(60'000);
  for (int i = 0; i < 3; ++i) small.exchange({2, CommandKind::put, u"address=h", &document});
  EXPECT_EQ(small.entries().size(), 3U);
  EXPECT_EQ(small.entries()[0].request.text(), "(no longer kept)");
  EXPECT_EQ(small.entries()[1].request.text(), "(no longer kept)");
  EXPECT_EQ(small.entries()[2].request.text(), document.ToString());
  EXPECT_EQ(small.entries()[0].number, 1U);
  EXPECT_LE(small.bytes(), 100'000U);
}

TEST_F(ExchangeRecordTest, ADocumentOverTheLimitIsNotKeptAndSaysSo) {
  ExchangeRecord small(channel, {.bytes = 100'000});
  XmlDocument document = documentOf(100'001);
  document.Root()->NewChild("E04");
  small.exchange({2, CommandKind::put, u"address=h", &document});
  EXPECT_FALSE(small.entries()[0].request.isKept());
  EXPECT_EQ(small.entries()[0].request.text(), "(too large to be kept)");
  EXPECT_EQ(small.entries()[0].section, "E04");
  EXPECT_EQ(small.bytes(), 0U);
}

// What a controller pads its reply with lies in one buffer with the values.
TEST_F(ExchangeRecordTest, APaddedReplyCountsAllThatItKeeps) {
  ExchangeRecord small(channel, {.bytes = 100'000});
  channel.replyWith("<main>" + std::string(200'000, ' ') + "<L04 a=\"1\"/></main>");
  small.exchange({1, CommandKind::get, u"address=h", nullptr});
  EXPECT_EQ(small.entries()[0].reply.text(), "(too large to be kept)");
}

TEST_F(ExchangeRecordTest, ManySmallElementsCountToo) {
  ExchangeRecord small(channel, {.bytes = 100'000});
  XmlDocument document("deviceCfg");
  for (int i = 0; i < 2'000; ++i) document.Root()->NewChild("a");
  small.exchange({2, CommandKind::put, u"address=h", &document});
  EXPECT_FALSE(small.entries()[0].request.isKept());
}

// --- listeners

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
