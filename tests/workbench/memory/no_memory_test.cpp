#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

#include "host/services/setup.h"
#include "programs/calendar_document.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"
#include "tests/workbench/memory/failing_allocations.h"
#include "tests/workbench/tiny_server.h"
#include "workbench/configuration_store.h"
#include "workbench/http_command_channel.h"
#include "workbench/wire/exchange_record.h"

namespace {

namespace fs = std::filesystem;
using host::CommandKind;
using host::ExchangeReply;
using test::FailingAllocations;
using Status = ExchangeReply::Status;

constexpr long Enough = 100'000;

// Does the same again and again, the allocation with the number given failing, until none fails any
// more. @p work answers whether one failed. Answers how often one did.
long forEveryAllocation(const std::function<bool(long)>& work) {
  for (long number = 1; number < Enough; ++number)
    if (!work(number)) return number - 1;
  ADD_FAILURE() << "there is no end of allocations";
  return Enough;
}

class Exchanges : public testing::Test {
 protected:
  Exchanges() { support::texts(); }

  // Every failure is told, and none hides that the answer came.
  void exchangeWithout(CommandKind kind, host::CommandChannel& channel) {
    XmlDocument document("deviceCfg");
    document.Root()->NewChild("L04").setAttribute("a", u"1");
    const XCBasicString uri = XCBasicString::FromUtf8(
        "address=127.0.0.1&ftpPassword=hunter2&socket=" + std::to_string(server.port()));
    const host::ExchangeRequest request{kind == CommandKind::get ? 1 : 2, kind, uri, &document};
    const long made = forEveryAllocation([&](long number) {
      FailingAllocations memory(number);
      const ExchangeReply reply = channel.exchange(request);
      const bool failed = memory.disarm();
      if (reply.status == Status::succeeded) {
        EXPECT_TRUE(kind == CommandKind::put || reply.document.Root() != nullptr);
      } else {
        EXPECT_TRUE(failed);
        EXPECT_EQ(reply.status, Status::failed);
        EXPECT_FALSE(reply.error.IsEmpty());
      }
      return failed;
    });
    EXPECT_GT(made, 10);
  }

  std::string big = "<deviceCfg>" + std::string(100'000, ' ') + "<ZelLamp Id='X'/></deviceCfg>";
  test::TinyServer server{[this](const test::TinyRequest&, const test::TinyServer::Connection& to) {
    to.send(test::TinyServer::reply(big));
  }};
  workbench::HttpCommandChannel http;
};

TEST_F(Exchanges, AReadWithoutMemoryIsAFailureThatIsTold) {
  exchangeWithout(CommandKind::get, http);
}

TEST_F(Exchanges, AWriteWithoutMemoryIsAFailureThatIsTold) {
  exchangeWithout(CommandKind::put, http);
}

TEST_F(Exchanges, WhatIsNotOnRecordForWantOfMemoryCountsAllTheSame) {
  workbench::ExchangeRecord record(http);
  exchangeWithout(CommandKind::get, record);
  for (std::size_t at = 0; at < record.entries().size(); ++at)
    EXPECT_EQ(record.entries()[at].number, at + 1);
}

class Saves : public testing::Test {
 protected:
  Saves() { support::texts(); }
  void TearDown() override { XCMainCfg::Get().Document().Clear(); }

  std::string contentOf(const char* name) {
    return fs::exists(folder / name) ? folder.read(name) : std::string();
  }

  support::TempFolder folder;
  std::string cause;
};

TEST_F(Saves, AConfigurationIsTheOldOneOrTheNewOne) {
  workbench::ConfigurationStore store(folder.path());
  ASSERT_TRUE(store.open(cause)) << cause;
  const long made = forEveryAllocation([&](long number) {
    const std::string old = contentOf("configuration.xml");
    XCMainCfg::Get().Root()->SetValue("version", XCBasicString::Format(u"%u", number));
    FailingAllocations memory(number);
    const bool saved = store.saveIfDifferent(cause);
    const bool failed = memory.disarm();
    EXPECT_TRUE(saved || (failed && !cause.empty()));
    EXPECT_EQ(contentOf("configuration.xml"), saved ? store.text() : old);
    for (const auto& entry : fs::directory_iterator(folder.path()))
      EXPECT_EQ(entry.path().string().find(".new"), std::string::npos) << entry.path();
    return failed;
  });
  EXPECT_GT(made, 10);
  EXPECT_TRUE(store.saveIfDifferent(cause)) << cause;
}

// Has its services, which give ids.
class CalendarSaves : public Saves {
  support::DialogDriver user_;
};

TEST_F(CalendarSaves, ACalendarIsTheOldOneOrTheNewOne) {
  lamp::CalendarDocument calendar(lamp::ProgramKind::interval);
  const fs::path file = folder / "calendars" / "lamps.xclmc";
  const long made = forEveryAllocation([&](long number) {
    const std::string old = contentOf("calendars/lamps.xclmc");
    calendar.setYear(XCBasicString::Format(u"%u", number));
    FailingAllocations memory(number);
    const bool saved = calendar.save(file, u"lamps");
    const bool failed = memory.disarm();
    EXPECT_TRUE(saved || failed);
    EXPECT_EQ(calendar.changed(), !saved);
    EXPECT_EQ(contentOf("calendars/lamps.xclmc") == old, !saved);
    return failed;
  });
  EXPECT_GT(made, 10);
}

TEST(Release, WithoutMemoryLeavesTheDocumentAsItIsForTheNextTime) {
  XmlDocument document("root");
  XmlDocument brings;
  ASSERT_TRUE(brings.Parse("<brought name='x'/>"));
  for (int i = 0; i < 3000; ++i) {
    XmlDocument::XmlNode& row = document.Root()->NewChild(i % 2 == 0 ? "stays" : "goes");
    row.NewChild("id", XCBasicString::Format(u"{%d}", i));
    row.setAttribute(brings.Root()->attributeName(0), u"é");
  }
  for (XmlDocument::XmlNode* child = document.Root()->FirstChild(); child != nullptr;) {
    XmlDocument::XmlNode* const next = child->NextSibling();
    if (child->Tag() == "goes") document.Root()->RemoveChild(child);
    child = next;
  }
  const std::string before = document.ToString();
  // Many allocations are alike: the texts'.
  long failures = 0;
  for (long number = 1; number < Enough; number += 1 + number / 10) {
    FailingAllocations memory(number);
    document.ReleaseRemoved();
    const bool failed = memory.disarm();
    ASSERT_EQ(document.ToString(), before) << number;
    if (!failed) break;
    ++failures;
  }
  EXPECT_GT(failures, 10);
}

}  // namespace
