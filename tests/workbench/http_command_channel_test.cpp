#include "workbench/http_command_channel.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/texts.h"
#include "tests/workbench/tiny_server.h"

namespace {

using host::CommandKind;
using host::ExchangeReply;
using test::TinyRequest;
using test::TinyServer;
using workbench::HttpCommandChannel;
using workbench::HttpLimits;
using Status = ExchangeReply::Status;
using namespace std::chrono_literals;

XCBasicString uriFor(const std::string& address, int port) {
  return XCBasicString::FromUtf8("driver=ZELLAMPMANAGER&address=" + address +
                                 "&socket=" + std::to_string(port) + "&ftpPassword=a%20b%2Bc");
}

XmlDocument request() {
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("L04").setAttribute("a", u"1");
  return document;
}

ExchangeReply get(HttpCommandChannel& channel, int port, const std::string& address = "127.0.0.1") {
  const XmlDocument document = request();
  return channel.exchange({4, CommandKind::get, uriFor(address, port), &document});
}

ExchangeReply put(HttpCommandChannel& channel, int port) {
  const XmlDocument document = request();
  return channel.exchange({2, CommandKind::put, uriFor("127.0.0.1", port), &document});
}

// One exchange with a server that answers as given.
ExchangeReply getFrom(const TinyServer::Answer& answer, HttpLimits limits = {}) {
  TinyServer server(answer);
  HttpCommandChannel channel(limits);
  return get(channel, server.port());
}

TinyServer::Answer sending(const std::string& bytes) {
  return [bytes](const TinyRequest&, const TinyServer::Connection& connection) {
    connection.send(bytes);
  };
}

class HttpCommandChannelTest : public testing::Test {
 protected:
  void SetUp() override { support::texts(); }
};

// --- what is sent

TEST_F(HttpCommandChannelTest, PostsTheDocumentToTheCommandsNumberWithTheParametersAsTheyStand) {
  TinyServer server(sending(TinyServer::reply("<main/>")));
  HttpCommandChannel channel;
  ASSERT_EQ(get(channel, server.port()).status, Status::succeeded);
  ASSERT_EQ(server.requests().size(), 1U);
  const TinyRequest sent = server.requests()[0];
  EXPECT_EQ(sent.line,
            "POST /lampmanager/command/4?driver=ZELLAMPMANAGER&address=127.0.0.1&socket=" +
                std::to_string(server.port()) + "&ftpPassword=a%20b%2Bc HTTP/1.1");
  EXPECT_EQ(sent.header("Content-Type"), "application/xml");
  EXPECT_EQ(sent.header("Expect"), "");
  EXPECT_EQ(sent.body, request().ToString());
}

TEST_F(HttpCommandChannelTest, ADocumentWithoutRootIsAnEmptyBody) {
  TinyServer server(sending(TinyServer::reply("<main/>")));
  HttpCommandChannel channel;
  const XmlDocument empty;
  EXPECT_EQ(
      channel.exchange({29, CommandKind::get, uriFor("127.0.0.1", server.port()), &empty}).status,
      Status::succeeded);
  EXPECT_EQ(server.requests().at(0).body, "");
  EXPECT_EQ(server.requests().at(0).header("Content-Length"), "0");
}

TEST_F(HttpCommandChannelTest, ABodyOfManyMegabytesIsSentWithoutWaitingForLeave) {
  TinyServer server(sending(TinyServer::reply("")));
  HttpCommandChannel channel;
  XmlDocument document("deviceCfg");
  document.Root()->SetNarrowValue("firmwareFile", std::string(8U << 20, 'A'));
  EXPECT_EQ(channel.exchange({52, CommandKind::put, uriFor("127.0.0.1", server.port()), &document})
                .status,
            Status::succeeded);
  EXPECT_EQ(server.requests().at(0).body, document.ToString());
  EXPECT_EQ(server.requests().at(0).header("Expect"), "");
}

TEST_F(HttpCommandChannelTest, TheEnvironmentsProxyIsPassedOver) {
  for (const char* name : {"http_proxy", "HTTP_PROXY", "ALL_PROXY"})
    ::setenv(name, "http://127.0.0.1:1", 1);
  EXPECT_EQ(getFrom(sending(TinyServer::reply("<main/>"))).status, Status::succeeded);
  for (const char* name : {"http_proxy", "HTTP_PROXY", "ALL_PROXY"}) ::unsetenv(name);
}

TEST_F(HttpCommandChannelTest, ASchemeInFrontOfTheAddressIsHonoured) {
  TinyServer server(sending(TinyServer::reply("<main/>")));
  HttpCommandChannel channel;
  EXPECT_EQ(get(channel, server.port(), "http%3A%2F%2F127.0.0.1").status, Status::succeeded);
}

// --- what succeeds

TEST_F(HttpCommandChannelTest, AReadAnswersTheDocumentThatCame) {
  const ExchangeReply reply =
      getFrom(sending(TinyServer::reply("<main><ZelLamp Id=\"7\"/></main>")));
  ASSERT_EQ(reply.status, Status::succeeded);
  EXPECT_EQ(reply.document.Root()->Node("ZelLamp")->getAttribute("Id"), u"7");
  EXPECT_EQ(reply.error, u"");
}

TEST_F(HttpCommandChannelTest, AnEmptyBodyToAReadIsADocumentWithoutRoot) {
  const ExchangeReply reply = getFrom(sending(TinyServer::reply("")));
  EXPECT_EQ(reply.status, Status::succeeded);
  EXPECT_EQ(reply.document.Root(), nullptr);
}

TEST_F(HttpCommandChannelTest, TheBodyOfAnAnswerToAWriteDoesNotMatter) {
  for (const char* body : {"", "<main/>", "no XML at all"}) {
    TinyServer server(sending(TinyServer::reply(body)));
    HttpCommandChannel channel;
    const ExchangeReply reply = put(channel, server.port());
    EXPECT_EQ(reply.status, Status::succeeded) << body;
    EXPECT_EQ(reply.document.Root(), nullptr);
  }
}

TEST_F(HttpCommandChannelTest, ChunksTrailersAndInterimAnswersAreUnderstood) {
  const ExchangeReply reply = getFrom(sending(
      "HTTP/1.1 103 Early Hints\r\nLink: x\r\n\r\nHTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n"
      "\r\n3\r\n<a>\r\n4\r\n</a>\r\n0\r\nX-Checksum: 1\r\n\r\n"));
  EXPECT_EQ(reply.status, Status::succeeded) << reply.error.ToUtf8();
}

TEST_F(HttpCommandChannelTest, ASecondExchangeAfterAFailedOneWorks) {
  int count = 0;
  TinyServer server([&count](const TinyRequest&, const TinyServer::Connection& connection) {
    if (++count > 1) connection.send(TinyServer::reply("<main/>"));
  });
  HttpCommandChannel channel;
  EXPECT_EQ(get(channel, server.port()).status, Status::failed);
  EXPECT_EQ(get(channel, server.port()).status, Status::succeeded);
}

// --- what fails. In the pseudo language a text reads as its number and its arguments.

struct BadAnswer {
  const char* what;
  std::string bytes;
  std::string error;  // "@" stands for the address and port
};

class BadAnswers : public testing::TestWithParam<BadAnswer> {};

TEST_P(BadAnswers, FailWithATextThatNamesTheAddressAndTheCause) {
  support::texts();
  TinyServer server(sending(GetParam().bytes));
  HttpCommandChannel channel;
  const ExchangeReply reply = get(channel, server.port());
  EXPECT_EQ(reply.status, Status::failed);
  std::string expected = GetParam().error;
  if (const std::size_t at = expected.find('@'); at != std::string::npos)
    expected.replace(at, 1, "127.0.0.1:" + std::to_string(server.port()));
  EXPECT_EQ(reply.error.ToUtf8(), expected);
  EXPECT_EQ(server.requests().size(), 1U) << "a command is never sent twice";
}

std::string nested(int depth) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += "<a>";
  for (int i = 0; i < depth; ++i) text += "</a>";
  return text;
}

INSTANTIATE_TEST_SUITE_P(
    HttpCommandChannel, BadAnswers,
    testing::Values(
        BadAnswer{"closed", "", "[60063](@)"},
        BadAnswer{"closedInTheHeaders", "HTTP/1.1 200 OK\r\nContent-Le", "[60063](@)"},
        BadAnswer{"closedBehindTheStatus", "HTTP/1.1 200 OK\r\n", "[60063](@)"},
        BadAnswer{"closedInTheBody", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n<main>",
                  "[60063](@)"},
        BadAnswer{"text", TinyServer::reply("no section", "500 Error", "text/plain"), "no section"},
        BadAnswer{"textWithCharset",
                  TinyServer::reply("s\xC3\xB3lo", "404 None", "Text/Plain; charset=utf-8"),
                  "s\xC3\xB3lo"},
        BadAnswer{"plainerText", TinyServer::reply("no section", "500 Error", "text/plainer"),
                  "[60066](@,500)"},
        BadAnswer{"emptyText", TinyServer::reply("", "500 Error", "text/plain"), "[60066](@,500)"},
        BadAnswer{"page", TinyServer::reply("<html/>", "404 None", "text/html"), "[60066](@,404)"},
        BadAnswer{"created", TinyServer::reply("<main/>", "201 Created"), "[60066](@,201)"},
        BadAnswer{"noContent", "HTTP/1.1 204 No Content\r\n\r\n", "[60066](@,204)"},
        BadAnswer{"redirect",
                  "HTTP/1.1 302 Found\r\nLocation: /elsewhere\r\nContent-Length: 0\r\n\r\n",
                  "[60066](@,302)"}),
    [](const auto& test) { return std::string(test.param.what); });

struct BadXml {
  const char* what;
  std::string body;
  const char* cause;  // part of the text
};

class BadXmlAnswers : public testing::TestWithParam<BadXml> {};

TEST_P(BadXmlAnswers, AreRefusedWithTheCause) {
  support::texts();
  const ExchangeReply reply = getFrom(sending(TinyServer::reply(GetParam().body)));
  EXPECT_EQ(reply.status, Status::failed);
  EXPECT_TRUE(reply.error.ToUtf8().starts_with("[60064](127.0.0.1:")) << reply.error.ToUtf8();
  EXPECT_NE(reply.error.ToUtf8().find(GetParam().cause), std::string::npos) << reply.error.ToUtf8();
}

INSTANTIATE_TEST_SUITE_P(
    HttpCommandChannel, BadXmlAnswers,
    testing::Values(BadXml{"truncated", "<main><ZelLamp>", "line 1"},
                    BadXml{"noXml", "hello", "line 1"}, BadXml{"blanks", "  \n", "empty"},
                    BadXml{"secondRoot", "<a/><b/>", "second root"},
                    BadXml{"documentType", "<!DOCTYPE a [<!ENTITY x \"y\">]><a>&x;</a>", "DTD"},
                    BadXml{"tooDeep", nested(65), "more than 64 deep"}),
    [](const auto& test) { return std::string(test.param.what); });

TEST_F(HttpCommandChannelTest, SixtyFourLevelsAreAccepted) {
  EXPECT_EQ(getFrom(sending(TinyServer::reply(nested(64)))).status, Status::succeeded);
}

TEST_F(HttpCommandChannelTest, AnErrorTextIsCutAtTwoThousandCharacters) {
  const auto errorFor = [](const std::string& body) {
    return getFrom(sending(TinyServer::reply(body, "500 Error", "text/plain"))).error;
  };
  EXPECT_EQ(errorFor(std::string(2'000, 'x')).Length(), 2'000U);
  EXPECT_EQ(errorFor(std::string(2'001, 'x')).Length(), 2'000U);
  EXPECT_EQ(errorFor(std::string(5'000'000, 'x')).Length(), 2'000U);
  // A pair of surrogates is not cut in two.
  std::string lamps = "x";
  for (int i = 0; i < 3'000; ++i) lamps += "\xF0\x9F\x92\xA1";
  EXPECT_EQ(errorFor(lamps).Length(), 1'999U);
}

TEST_F(HttpCommandChannelTest, AnAnswerOverTheLimitIsGivenUpWhileItComes) {
  HttpLimits limits;
  limits.replyBytes = 1'000;
  const std::string fits = "<a>" + std::string(993, 'x') + "</a>";
  EXPECT_EQ(getFrom(sending(TinyServer::reply(fits)), limits).status, Status::succeeded);
  const std::string over = "<a>" + std::string(994, 'x') + "</a>";
  EXPECT_TRUE(
      getFrom(sending(TinyServer::reply(over)), limits).error.ToUtf8().starts_with("[60065](127."));
  // One that never ends: chunk after chunk until the client goes away.
  const ExchangeReply endless = getFrom(
      [](const TinyRequest&, const TinyServer::Connection& connection) {
        connection.send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
        for (int i = 0; i < 100; ++i) connection.send("400\r\n" + std::string(0x400, 'x') + "\r\n");
      },
      limits);
  EXPECT_TRUE(endless.error.ToUtf8().starts_with("[60065](127.")) << endless.error.ToUtf8();
}

TEST_F(HttpCommandChannelTest, HeadersWithoutEndAreGivenUp) {
  const ExchangeReply reply =
      getFrom([](const TinyRequest&, const TinyServer::Connection& connection) {
        connection.send("HTTP/1.1 200 OK\r\n");
        for (int i = 0; i < 1'000; ++i) connection.send("X: " + std::string(1'000, 'x') + "\r\n");
        connection.send("\r\n");
      });
  EXPECT_TRUE(reply.error.ToUtf8().starts_with("[60065](127.")) << reply.error.ToUtf8();
}

TEST_F(HttpCommandChannelTest, AServerThatDoesNotAnswerTimesOut) {
  HttpLimits limits;
  limits.whole = 50ms;
  const ExchangeReply reply = getFrom(
      [](const TinyRequest&, const TinyServer::Connection& connection) { connection.hang(); },
      limits);
  EXPECT_EQ(reply.status, Status::failed);
  EXPECT_TRUE(reply.error.ToUtf8().starts_with("[60062](127.")) << reply.error.ToUtf8();
}

TEST_F(HttpCommandChannelTest, FirmwareHasATimeOfItsOwn) {
  HttpLimits limits;
  limits.whole = 10s;
  limits.wholeFirmware = 50ms;
  TinyServer server(
      [](const TinyRequest&, const TinyServer::Connection& connection) { connection.hang(); });
  HttpCommandChannel channel(limits);
  const XmlDocument document = request();
  const ExchangeReply reply =
      channel.exchange({52, CommandKind::put, uriFor("127.0.0.1", server.port()), &document});
  EXPECT_TRUE(reply.error.ToUtf8().starts_with("[60062](127.")) << reply.error.ToUtf8();
}

TEST_F(HttpCommandChannelTest, OneTimeLimitHoldsForEveryExchangeAndNeverLengthensTheConnecting) {
  const HttpLimits brief = HttpLimits::within(2s);
  EXPECT_EQ(brief.connect, 2s);
  EXPECT_EQ(brief.whole, 2s);
  EXPECT_EQ(brief.wholeFirmware, 2s);
  EXPECT_EQ(HttpLimits::within(60s).connect, HttpLimits().connect);
}

TEST_F(HttpCommandChannelTest, ARefusedConnectionNamesTheAddress) {
  int port = 0;
  {
    const TinyServer server(sending(""));
    port = server.port();  // nobody listens there any more below
  }
  HttpCommandChannel channel;
  EXPECT_EQ(get(channel, port).error.ToUtf8(), "[60060](127.0.0.1:" + std::to_string(port) + ")");
}

TEST_F(HttpCommandChannelTest, AnAddressOrPortThatCantBeUsedIsNotTried) {
  HttpCommandChannel channel;
  const auto errorFor = [&](const char* uri) {
    const ExchangeReply reply =
        channel.exchange({1, CommandKind::get, XCBasicString::FromUtf8(uri), nullptr});
    EXPECT_EQ(reply.status, Status::failed) << uri;
    return reply.error.ToUtf8();
  };
  EXPECT_EQ(errorFor("address=&socket=80"), "[60070](\"\")");
  EXPECT_EQ(errorFor("address=a%20b&socket=80"), "[60070](\"a b\")");
  EXPECT_EQ(errorFor("address=10.0.0.1&socket=0"), "[60070](\"10.0.0.1:0\")");
  EXPECT_EQ(errorFor(""), "[60070](\"\")");
}

// --- progress

class Progress : public workbench::ExchangeProgress {
 public:
  void started(const host::ExchangeRequest&) override { log += "started "; }
  void moved(std::uint64_t sent, std::uint64_t, std::uint64_t received) override {
    lastSent = sent;
    lastReceived = received;
  }
  bool pump() override {
    ++pumps;
    return !cancelWhen || !cancelWhen();
  }
  void finished() override { log += "finished"; }

  std::string log;
  int pumps = 0;
  std::uint64_t lastSent = 0;
  std::uint64_t lastReceived = 0;
  std::function<bool()> cancelWhen;
};

TEST_F(HttpCommandChannelTest, ProgressIsToldOfWhatMoves) {
  TinyServer server(sending(TinyServer::reply("<main/>")));
  Progress progress;
  HttpCommandChannel channel;
  channel.setProgress(&progress);
  EXPECT_EQ(get(channel, server.port()).status, Status::succeeded);
  EXPECT_EQ(progress.log, "started finished");
  EXPECT_GE(progress.pumps, 1);
  EXPECT_EQ(progress.lastSent, request().ToString().size());
  EXPECT_EQ(progress.lastReceived, 7U);
}

TEST_F(HttpCommandChannelTest, AWindowThatSaysStopCancelsTheExchange) {
  TinyServer server(
      [](const TinyRequest&, const TinyServer::Connection& connection) { connection.hang(); });
  Progress progress;
  progress.cancelWhen = [&] { return !server.requests().empty(); };
  HttpCommandChannel channel;
  channel.setProgress(&progress);
  const ExchangeReply reply = get(channel, server.port());
  EXPECT_EQ(reply.status, Status::cancelled);
  EXPECT_EQ(reply.error, u"");
  EXPECT_EQ(progress.log, "started finished");
}

TEST_F(HttpCommandChannelTest, AnUploadServesItsWindowAllTheTimeAndIsCancelledMidway) {
  TinyServer server(sending(TinyServer::reply("")));
  XmlDocument upload("deviceCfg");
  upload.Root()->SetNarrowValue("firmwareFile", std::string(64U << 20, 'A'));
  Progress progress;
  int pumpsWhileSending = 0;
  progress.cancelWhen = [&] {
    if (progress.lastSent > 0) ++pumpsWhileSending;
    return progress.lastSent > (16U << 20);
  };
  HttpCommandChannel channel;
  channel.setProgress(&progress);
  const ExchangeReply reply =
      channel.exchange({52, CommandKind::put, uriFor("127.0.0.1", server.port()), &upload});
  EXPECT_EQ(reply.status, Status::cancelled);
  EXPECT_EQ(progress.log, "started finished");
  EXPECT_TRUE(server.requests().empty()) << "it never came whole";
  EXPECT_LT(progress.lastSent, 32U << 20);
  EXPECT_GE(pumpsWhileSending, 16) << "at least at every mebibyte";
}

TEST_F(HttpCommandChannelTest, AnExchangeStartedFromAWindowWhileOneRunsWorks) {
  TinyServer slow(
      [](const TinyRequest&, const TinyServer::Connection& connection) { connection.hang(); });
  TinyServer quick(sending(TinyServer::reply("<main/>")));
  Progress progress;
  HttpCommandChannel channel;
  HttpCommandChannel other;
  Status inner = Status::failed;
  progress.cancelWhen = [&] {
    inner = get(other, quick.port()).status;
    return true;
  };
  channel.setProgress(&progress);
  EXPECT_EQ(get(channel, slow.port()).status, Status::cancelled);
  EXPECT_EQ(inner, Status::succeeded);
}

}  // namespace
