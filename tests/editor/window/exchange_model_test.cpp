#include "editor/window/exchange_model.h"

#include <gtest/gtest.h>

#include <new>

#include "host/services/services.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/texts.h"

namespace {

using editor::ExchangeModel;

struct SectionRow {
  const char* request;
  const char* section;
};

TEST(ExchangeModel, TheSectionIsTheFirstElementInTheRoot) {
  for (const SectionRow& row :
       {SectionRow{"<?xml version=\"1.0\"?>\n<deviceCfg><L04/></deviceCfg>", "L04"},
        {"<deviceCfg><E01 TimeZone=\"4\"/></deviceCfg>", "E01"},
        {"<deviceCfg></deviceCfg>", ""},
        {"<deviceCfg/>", ""},
        {"", ""}}) {
    workbench::ExchangeEntry entry;
    entry.request = row.request;
    EXPECT_EQ(ExchangeModel::sectionOf(entry).toStdString(), row.section) << row.request;
  }
}

TEST(ExchangeModel, DocumentsAreShownWithAnElementALineAndTheErrorInFront) {
  support::texts();
  workbench::ExchangeEntry entry;
  entry.request = "<deviceCfg><L01/></deviceCfg>";
  entry.error = "refused";
  const QString text = ExchangeModel::documentsOf(entry);
  EXPECT_TRUE(text.startsWith("refused\n"));
  EXPECT_TRUE(text.contains("\n  <L01"));
  EXPECT_FALSE(text.contains("[60252]")) << "nothing was received";
}

/// Answers every exchange with a refusal.
struct Refusing : host::CommandChannel {
  host::ExchangeReply exchange(const host::ExchangeRequest&) override {
    host::ExchangeReply reply;
    reply.error = u"no";
    return reply;
  }
};

TEST(ExchangeModel, TheLatestExchangeStandsFirst) {
  Refusing channel;
  support::texts();
  support::FixedClock clock;
  host::installServices({.clockService = &clock});
  workbench::ExchangeRecord record(channel);
  ExchangeModel model(record);
  record.setListener([&](const workbench::ExchangeEntry&) { model.catchUp(); });
  host::ExchangeRequest request;
  for (request.command = 1; request.command <= 2; ++request.command) record.exchange(request);
  ASSERT_EQ(model.rowCount(), 2);
  EXPECT_EQ(model.entryAt(0).command, 2);
  EXPECT_EQ(model.index(0, 0).data().toString(), "10:00:00");
  EXPECT_EQ(model.index(1, 3).data().toString(), "no");
}

// Whoever hears of an exchange before the panel may run out of memory.
TEST(ExchangeModel, AnExchangeThatItWasNotToldOfComesWithTheNext) {
  Refusing channel;
  support::texts();
  support::FixedClock clock;
  host::installServices({.clockService = &clock});
  workbench::ExchangeRecord record(channel);
  ExchangeModel model(record);
  record.setListener([&](const workbench::ExchangeEntry& entry) {
    if (entry.command == 2) throw std::bad_alloc();
    model.catchUp();
  });
  host::ExchangeRequest request;
  for (request.command = 1; request.command <= 3; ++request.command) record.exchange(request);
  ASSERT_EQ(model.rowCount(), 3);
  for (int row = 0; row < 3; ++row) EXPECT_EQ(model.entryAt(row).command, 3 - row);
}

}  // namespace
