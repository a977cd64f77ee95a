#include <gtest/gtest.h>
#include <sys/socket.h>

#include <fstream>

#include "controller/delivery/courier.h"
#include "controller/delivery/time_server.h"
#include "tests/controller/support/loopback_servers.h"
#include "tests/controller/support/scratch_folder.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;

class CourierTest : public testing::Test {
 protected:
  CourierTest() { std::ofstream(file) << "the report\n"; }

  ScratchFolder folder;
  std::filesystem::path file = folder.path() / "20250101-task1-L15.xml";
  NetworkCourier courier;
  DeliverySettings settings;
};

TEST_F(CourierTest, UploadsIntoTheFolderOfTheReports) {
  FtpServer server;
  settings.ftpHost = server.host();
  settings.ftpUser = "lamps";
  settings.ftpPassword = "p w@d/";
  settings.ftpPath = "/reports/../old town";
  EXPECT_EQ(courier.upload(settings, file), "");
  const auto files = server.files();
  ASSERT_EQ(files.size(), 1U);
  EXPECT_EQ(files.begin()->first, "/reports/old town/20250101-task1-L15.xml");
  EXPECT_EQ(files.begin()->second, "the report\n");
  EXPECT_EQ(server.logins().at(0), "lamps:p w@d/");
}

TEST_F(CourierTest, SaysWhyAnUploadFailed) {
  const LoopbackSocket silent(SOCK_DGRAM);
  settings.ftpHost = "127.0.0.1:" + std::to_string(silent.port());
  EXPECT_NE(courier.upload(settings, file), "");
  settings.encrypted = true;
  FtpServer server;
  settings.ftpHost = server.host();
  EXPECT_NE(courier.upload(settings, file), "") << "a server without encryption is refused";
  EXPECT_TRUE(server.files().empty());
}

TEST_F(CourierTest, MailsTheReportToEveryRecipient) {
  SmtpServer server;
  settings.mailHost = server.host();
  settings.sender = "lamps@town.example";
  settings.recipients = {"one@town.example", "two@town.example"};
  EXPECT_EQ(courier.mail(settings, file), "");
  std::string said;
  for (const std::string& each : server.conversations()) said += each;
  EXPECT_NE(said.find("MAIL FROM:<lamps@town.example>"), std::string::npos) << said;
  EXPECT_NE(said.find("RCPT TO:<one@town.example>"), std::string::npos);
  EXPECT_NE(said.find("RCPT TO:<two@town.example>"), std::string::npos);
  EXPECT_NE(said.find("Subject: Lamp report 20250101-task1-L15.xml"), std::string::npos);
  EXPECT_NE(said.find("dGhlIHJlcG9ydAo="), std::string::npos) << "the file, in base64";
}

TEST(TimeServerOnTheNetwork, TellsHowFarTheClockIsOff) {
  const std::chrono::milliseconds own{1700000000123};
  NtpServer server([&](std::string& packet) { NtpServer::answerWith(packet, own + 90500ms); });
  const TimeAnswer answer = askTimeServer(server.host(), 2000ms, [&] { return own; });
  EXPECT_EQ(answer.fault, "");
  EXPECT_NEAR(static_cast<double>(answer.offset.count()), 90500, 1);
}

TEST(TimeServerOnTheNetwork, DistrustsBadAnswers) {
  const std::chrono::milliseconds own{1700000000000};
  const std::pair<NtpServer::Answer, const char*> bad[] = {
      {[](std::string& p) { p[40] = static_cast<char>(p[40] ^ 1); }, "not that of a time server"},
      {[&](std::string& p) {
         NtpServer::answerWith(p, own);
         p[24] = static_cast<char>(p[24] ^ 1);
       },
       "another question"},
      {[&](std::string& p) {
         NtpServer::answerWith(p, own);
         p[1] = 0;
       },
       "refuses"},
      {[&](std::string& p) {
         NtpServer::answerWith(p, own);
         p[0] = static_cast<char>(0xE4);
       },
       "no time itself"},
      {[](std::string& p) { p.resize(20); }, "no answer"},
  };
  for (const auto& [make, said] : bad) {
    NtpServer server(make);
    const TimeAnswer answer = askTimeServer(server.host(), 2000ms, [&] { return own; });
    EXPECT_NE(answer.fault.find(said), std::string::npos) << answer.fault;
  }
}

}  // namespace
}  // namespace lamp::controller::test
