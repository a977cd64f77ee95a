#include <gtest/gtest.h>

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

}  // namespace
