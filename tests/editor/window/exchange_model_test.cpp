#include "editor/window/exchange_model.h"

#include <gtest/gtest.h>

#include <new>

#include "host/services/services.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/texts.h"

namespace {

using editor::ExchangeModel;

TEST(ExchangeModel, DocumentsAreShownWithAnElementALineAndTheErrorInFront) {
  support::texts();
  workbench::ExchangeEntry entry;
  XmlDocument request("deviceCfg");
  request.Root()->NewChild("L01");
  entry.request = {std::move(request), entry.secrets, 0};
  entry.error = "refused";
  const QString text = ExchangeModel::documentsOf(entry);
  EXPECT_TRUE(text.startsWith("refused\n"));
  EXPECT_TRUE(text.contains("\n  <L01"));
  EXPECT_FALSE(text.contains("[60252]")) << "nothing was received";
}

TEST(ExchangeModel, OfALongDocumentThePersonSeesTheBeginning) {
  support::texts();
  workbench::ExchangeEntry entry;
  XmlDocument request("deviceCfg");
  for (int i = 0; i < 100'000; ++i)
    request.Root()->NewChild("Node").setAttribute("a", u"0123456789");
  entry.request = {std::move(request), entry.secrets, 0};
  const QString text = ExchangeModel::documentsOf(entry);
  EXPECT_LT(text.size(), 410'000);
  EXPECT_GT(text.size(), 200'000);
  EXPECT_TRUE(text.contains(QStringLiteral("\n…")));
}

TEST(ExchangeModel, ADocumentThatIsNoLongerKeptSaysSo) {
  support::texts();
  workbench::ExchangeEntry entry;
  entry.request = workbench::KeptDocument::tooLarge();
  EXPECT_TRUE(ExchangeModel::documentsOf(entry).contains("(too large to be kept)"));
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
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("L04");
  host::ExchangeRequest request;
  request.document = &document;
  for (request.command = 1; request.command <= 2; ++request.command) record.exchange(request);
  ASSERT_EQ(model.rowCount(), 2);
  EXPECT_EQ(model.entryAt(0).command, 2);
  EXPECT_EQ(model.index(0, 0).data().toString(), "10:00:00");
  EXPECT_EQ(model.index(0, 1).data().toString(), "L04");
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
