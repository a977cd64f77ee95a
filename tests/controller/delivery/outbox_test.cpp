#include "controller/delivery/outbox.h"

#include <gtest/gtest.h>

#include <fstream>

#include "controller/delivery/postman.h"
#include "tests/controller/support/scratch_folder.h"

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;

// Fails as often as it is told to and counts what it was asked for.
class ScriptedCourier final : public Courier {
 public:
  std::string upload(const DeliverySettings&, const std::filesystem::path& file) override {
    uploaded.push_back(file.filename());
    return uploadFailures-- > 0 ? "line is down" : "";
  }
  std::string mail(const DeliverySettings&, const std::filesystem::path& file) override {
    mailed.push_back(file.filename());
    return mailFailures-- > 0 ? "no post today" : "";
  }

  int uploadFailures = 0;
  int mailFailures = 0;
  std::vector<std::string> uploaded;
  std::vector<std::string> mailed;
};

class OutboxTest : public testing::Test {
 protected:
  void put(const std::string& name) { std::ofstream(folder.path() / name) << "report"; }
  bool has(const std::string& name) { return std::filesystem::exists(folder.path() / name); }

  std::vector<std::string> work(Moment at) {
    return outbox.work([this] { return settings; }, at);
  }

  ScratchFolder folder;
  ScriptedCourier courier;
  Outbox outbox{folder.path(), courier};
  DeliverySettings settings;
  Moment now{1000000s};

  void SetUp() override {
    settings.byFtp = true;
    settings.retries = 2;
    settings.pause = 60s;
  }
};

TEST_F(OutboxTest, RemovesWhatArrivedTheOldestFirst) {
  put("20250102-b.xml");
  put("20250101-a.csv");
  put("20250101-a.xml.AbC123");
  EXPECT_TRUE(work(now).empty());
  EXPECT_EQ(courier.uploaded, (std::vector<std::string>{"20250101-a.csv", "20250102-b.xml"}));
  EXPECT_FALSE(has("20250101-a.csv"));
  EXPECT_TRUE(has("20250101-a.xml.AbC123"));
}

TEST_F(OutboxTest, TriesAgainAfterThePauseAndThenGivesUp) {
  put("a.xml");
  courier.uploadFailures = 100;
  EXPECT_EQ(work(now).size(), 1U);
  EXPECT_TRUE(work(now + 59s).empty());
  EXPECT_EQ(work(now + 60s), std::vector<std::string>{"a.xml: line is down"});
  EXPECT_EQ(work(now + 120s).size(), 1U);
  EXPECT_FALSE(has("a.xml"));
  EXPECT_TRUE(has("failed/a.xml"));
  EXPECT_EQ(courier.uploaded.size(), 3U) << "the first try and two retries";
  EXPECT_TRUE(work(now + 180s).empty());
}

TEST_F(OutboxTest, DoesNotRepeatTheWayThatWorked) {
  settings.byMail = true;
  put("a.xml");
  courier.mailFailures = 1;
  EXPECT_EQ(work(now).size(), 1U);
  EXPECT_TRUE(work(now + 60s).empty());
  EXPECT_EQ(courier.uploaded.size(), 1U);
  EXPECT_EQ(courier.mailed.size(), 2U);
  EXPECT_FALSE(has("a.xml"));
}

TEST_F(OutboxTest, KeepsEverythingWhileNoWayIsSet) {
  settings.byFtp = false;
  put("a.xml");
  EXPECT_TRUE(work(now).empty());
  EXPECT_TRUE(has("a.xml"));
}

TEST_F(OutboxTest, SendsEachFileByTheSettingsThatAreInForceThen) {
  put("a.xml");
  put("b.xml");
  int asked = 0;
  const auto switchedOff = [&] {
    settings.byFtp = ++asked == 1;
    return settings;
  };
  EXPECT_TRUE(outbox.work(switchedOff, now).empty());
  EXPECT_EQ(courier.uploaded, std::vector<std::string>{"a.xml"});
  EXPECT_TRUE(has("b.xml"));
}

TEST_F(OutboxTest, AClockThatGoesBackDoesNotLengthenThePause) {
  put("a.xml");
  courier.uploadFailures = 1;
  EXPECT_EQ(work(now).size(), 1U);
  EXPECT_TRUE(work(now - 1h).empty());
  EXPECT_FALSE(has("a.xml")) << "tried at once";
}

DeliverySettings settingsOf(const char* attributes) {
  pugi::xml_document document;
  document.load_string((std::string("<L01 ") + attributes + "/>").c_str());
  return DeliverySettings::read(document.first_child());
}

TEST(DeliverySettings, AreReadFromTheGeneralSection) {
  const DeliverySettings settings = settingsOf(
      "IPftp='10.0.0.1' FtpServer='Y' FtpsServer='Y' FTPUser='u' FTPPwd='p' PathReports='/a' "
      "RetryFtp='4' TimeBetwFtp='90' mailHost='m' mainMail='a@b' destinationMail='c@d; e@f' "
      "NTPMaxDeviation='30' IPNTP='t'");
  EXPECT_TRUE(settings.byFtp);
  EXPECT_TRUE(settings.encrypted);
  EXPECT_EQ(settings.retries, 4);
  EXPECT_EQ(settings.pause, 90s);
  EXPECT_EQ(settings.recipients, (std::vector<std::string>{"c@d", "e@f"}));
  EXPECT_EQ(settings.deviation, 30s);
  EXPECT_FALSE(settingsOf("IPftp='10.0.0.1' FtpServer='N'").byFtp);
  EXPECT_FALSE(settingsOf("IPftp='' FtpServer='Y'").byFtp);
  EXPECT_FALSE(settingsOf("mailHost='m'").byMail);
  EXPECT_EQ(settingsOf("mainMail='a@b&#13;&#10;DATA'").sender, "a@bDATA");
}

TEST(TimeServer, TheOffsetIsTheMeanOfBothWays) {
  EXPECT_EQ(offsetOf(1000ms, 6010ms, 6020ms, 1050ms), 4990ms);
  EXPECT_EQ(offsetOf(1000ms, 1010ms, 1020ms, 1030ms), 0ms);
}

TEST(TimeServer, TheClockIsCorrectedOnlyBeyondTheToleratedDeviation) {
  EXPECT_EQ(correctionFor(29999ms, 30s), 0ms);
  EXPECT_EQ(correctionFor(30000ms, 30s), 0ms);
  EXPECT_EQ(correctionFor(30001ms, 30s), 30001ms);
  EXPECT_EQ(correctionFor(-30001ms, 30s), -30001ms);
}

}  // namespace
}  // namespace lamp::controller::test
