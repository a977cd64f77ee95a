#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"
#include "tests/workbench/tiny_server.h"
#include "tests/workbench/tls_server.h"
#include "workbench/http_command_channel.h"

namespace {

using host::ExchangeReply;
using test::TlsServer;
using workbench::HttpCommandChannel;
using Status = ExchangeReply::Status;

class HttpsTest : public testing::Test {
 protected:
  void SetUp() override { support::texts(); }

  ExchangeReply get(const TlsServer& server, bool trusted) {
    HttpCommandChannel channel;
    if (trusted) {
      server.writeCertificate(folder / "authority.pem");
      channel.setAuthorities((folder / "authority.pem").string());
    }
    const auto uri = XCBasicString::FromUtf8("address=https%3A%2F%2F127.0.0.1&socket=" +
                                             std::to_string(server.port()));
    return channel.exchange({1, host::CommandKind::get, uri, nullptr});
  }

  support::TempFolder folder;
};

TEST_F(HttpsTest, ACertificateOfAKnownAuthorityIsAccepted) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  const ExchangeReply reply = get(server, true);
  ASSERT_EQ(reply.status, Status::succeeded) << reply.error.ToUtf8();
  EXPECT_EQ(reply.document.Root()->Tag(), "main");
}

TEST_F(HttpsTest, ACertificateOfNobodyIsRefused) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  const ExchangeReply reply = get(server, false);
  EXPECT_EQ(reply.status, Status::failed);
  EXPECT_TRUE(reply.error.ToUtf8().starts_with("[60067](127.0.0.1:")) << reply.error.ToUtf8();
}

TEST_F(HttpsTest, ACertificateForAnotherAddressIsRefused) {
  const TlsServer server("127.0.0.2", test::TinyServer::reply("<main/>"));
  const ExchangeReply reply = get(server, true);
  EXPECT_EQ(reply.status, Status::failed);
  EXPECT_TRUE(reply.error.ToUtf8().starts_with("[60067](127.0.0.1:")) << reply.error.ToUtf8();
}

class TrustTest : public HttpsTest {
 protected:
  void SetUp() override {
    HttpsTest::SetUp();
    channel.setTrust(&trust);
  }
  ExchangeReply ask(int port) {
    const auto uri =
        XCBasicString::FromUtf8("address=https%3A%2F%2F127.0.0.1&socket=" + std::to_string(port));
    return channel.exchange({1, host::CommandKind::get, uri, nullptr});
  }
  void judge(bool answer) {
    channel.setJudge([this, answer](const workbench::CertificateQuestion& question) {
      asked.push_back(question);
      return answer;
    });
  }
  static std::string addressOf(int port) { return "127.0.0.1:" + std::to_string(port); }

  workbench::TrustedCertificates trust{folder / "trust/certificates.json"};
  HttpCommandChannel channel;
  std::vector<workbench::CertificateQuestion> asked;
};

TEST_F(TrustTest, WithoutAnybodyToAskAnUnknownCertificateIsRefusedUnsent) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  EXPECT_TRUE(ask(server.port()).error.ToUtf8().starts_with("[60067]("));
  EXPECT_EQ(server.requests(), 0);
  EXPECT_EQ(trust.find(addressOf(server.port())), std::nullopt);
}

TEST_F(TrustTest, ACertificateThatThePersonTrustsIsAskedForOnceAndKept) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  judge(true);
  EXPECT_EQ(ask(server.port()).status, Status::succeeded);
  ASSERT_EQ(asked.size(), 1U);
  EXPECT_EQ(asked[0].fingerprint, server.fingerprint());
  EXPECT_EQ(ask(server.port()).status, Status::succeeded);
  EXPECT_EQ(asked.size(), 1U);
  EXPECT_EQ(server.requests(), 2);
  // Another program, with nobody to ask, relies on the same file.
  channel.setJudge({});
  EXPECT_EQ(ask(server.port()).status, Status::succeeded);
}

TEST_F(TrustTest, NoSendsNothingAndKeepsNothing) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  judge(false);
  EXPECT_TRUE(ask(server.port()).error.ToUtf8().starts_with("[60067]("));
  EXPECT_EQ(asked.size(), 1U);
  EXPECT_EQ(server.requests(), 0);
  EXPECT_EQ(trust.find(addressOf(server.port())), std::nullopt);
}

TEST_F(TrustTest, AnotherCertificateThanTheTrustedOneIsRefusedUnsentAndUnasked) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  std::string cause;
  ASSERT_TRUE(trust.trust(addressOf(server.port()), std::string(64, 'a'), cause)) << cause;
  judge(true);
  const ExchangeReply reply = ask(server.port());
  EXPECT_EQ(reply.error.ToUtf8(),
            "[60441](" + addressOf(server.port()) + "," + server.fingerprint() + ")");
  EXPECT_TRUE(asked.empty());
  EXPECT_EQ(server.requests(), 0);
  ASSERT_TRUE(trust.forget(addressOf(server.port()), cause));
  EXPECT_EQ(ask(server.port()).status, Status::succeeded);
}

TEST_F(TrustTest, ACertificateForAnotherNameCanBeTrustedToo) {
  const TlsServer server("127.0.0.2", test::TinyServer::reply("<main/>"));
  judge(true);
  EXPECT_EQ(ask(server.port()).status, Status::succeeded);
}

TEST_F(TrustTest, ATrustThatCantBeStoredIsToldAndNothingIsSent) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  folder.write("trust", "");
  judge(true);
  EXPECT_TRUE(ask(server.port()).error.ToUtf8().starts_with("[60444]("));
  EXPECT_EQ(server.requests(), 0);
}

TEST_F(TrustTest, WhileTheListCantBeReadNothingIsSentHoweverGoodTheCertificate) {
  const TlsServer server("127.0.0.1", test::TinyServer::reply("<main/>"));
  server.writeCertificate(folder / "authority.pem");
  channel.setAuthorities((folder / "authority.pem").string());
  EXPECT_EQ(ask(server.port()).status, Status::succeeded);
  judge(true);
  std::filesystem::create_directories(folder / "trust");
  const std::string list = (folder / "trust/certificates.json").string();
  ASSERT_EQ(::mkfifo(list.c_str(), 0600), 0);
  EXPECT_EQ(ask(server.port()).error.ToUtf8(), "[60446](" + list + ": It is a pipe, not a file)");
  std::filesystem::remove(list);
  folder.write("trust/certificates.json", "no JSON");
  EXPECT_EQ(ask(server.port()).error.ToUtf8(), "[60446](" + list + ": It is damaged)");
  EXPECT_EQ(folder.read("trust/certificates.json"), "no JSON");
  EXPECT_EQ(server.requests(), 1);
  EXPECT_TRUE(asked.empty());
}

TEST_F(TrustTest, ADamagedFileHoldsNoTrust) {
  std::string cause;
  ASSERT_TRUE(trust.trust("a:1", std::string(64, 'a'), cause));
  EXPECT_EQ(trust.find("a:1"), std::string(64, 'a'));
  folder.write("trust/certificates.json", "{\"a:1\":\"aaaa\",\"b:1\":7}");
  EXPECT_EQ(trust.find("a:1"), std::nullopt);
  folder.write("trust/certificates.json", "no JSON");
  EXPECT_EQ(trust.find("a:1"), std::nullopt);
}

}  // namespace
