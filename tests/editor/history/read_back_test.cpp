#include "editor/history/read_back.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include "tests/support/scripted_channel.h"
#include "tests/support/texts.h"

namespace {

using editor::ReadBack;
using host::CommandKind;
using workbench::ExchangeRecord;

constexpr const char16_t* Street = u"address=h&socket=1";

struct Report {
  std::size_t exchange = 0;
  QString line;
};

class ReadBackOrder : public testing::Test {
 protected:
  ReadBackOrder() {
    support::texts();
    readBack.onReport = [this](std::size_t exchange, const QString& line, const QString&) {
      reports.push_back({exchange, line});
    };
  }
  void put(const XmlDocument& document) {
    record.exchange({2, CommandKind::put, Street, &document});
  }
  void order(std::size_t exchange) {
    readBack.order({.device = {}, .written = "E01", .read = "L01"}, Street, exchange);
  }
  // A write whose text takes so many bytes.
  static XmlDocument written(std::size_t bytes) {
    XmlDocument document("deviceCfg");
    document.Root()->NewChild("E01").SetNarrowText(std::string(bytes, 'x'));
    document.Root()->Node("E01")->setAttribute("name", u"new");
    return document;
  }

  support::ScriptedChannel channel;
  ExchangeRecord record{channel, {.bytes = 100'000}};
  ReadBack readBack{record, [] { return false; }};
  std::vector<Report> reports;
};

TEST_F(ReadBackOrder, WhatWasSentIsComparedAlsoWhenTheRecordHasDroppedIt) {
  put(written(40'000));
  order(1);
  put(written(60'000));
  put(written(60'000));
  ASSERT_FALSE(record.entries()[0].request.isKept());
  channel.replyWith("<main><ZelLamp><L01 name='old'/></ZelLamp></main>");
  QCoreApplication::processEvents();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].exchange, 4U);
  EXPECT_EQ(reports[0].line, "[60422](1,1)");
}

TEST_F(ReadBackOrder, WhatTheRecordHadNoRoomForIsToldInPlaceOfAComparison) {
  put(written(100'001));
  order(1);
  QCoreApplication::processEvents();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].exchange, 1U);
  EXPECT_EQ(reports[0].line, "[60425]");
  EXPECT_EQ(channel.count(), 1U) << "nothing is read for nothing";
}

TEST_F(ReadBackOrder, SecretsAreNotCompared) {
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("E01").setAttribute("name", u"new");
  document.Root()->Node("E01")->setAttribute("mailUser", u"m");
  document.Root()->Node("E01")->setAttribute("mailPassword", u"p");
  put(document);
  order(1);
  channel.replyWith("<main><ZelLamp><L01 name='new'/></ZelLamp></main>");
  QCoreApplication::processEvents();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].line, "[60421](1)");
}

}  // namespace
