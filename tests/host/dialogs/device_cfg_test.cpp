#include "host/dialogs/device_cfg.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/services/setup.h"
#include "tests/host/support/sample_dialog.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/xml_compare.h"

using host::MessageAnswer;
using host::MessageButtons;
using support::DialogDriver;
using support::TopKind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

class Page : public XCBaseDeviceCfg {
 public:
  explicit Page(XCDriver* driver, CWnd* parent = nullptr, XmlDocument::XmlNode* device = nullptr)
      : XCBaseDeviceCfg(sample::Template, driver, parent, device) {}
  int DoModal() override {
    Document().Create("deviceCfg").NewChild("L02");
    return XCBaseDeviceCfg::DoModal();
  }
  void OnOK() override {
    Document().Create("deviceCfg").NewChild("E02").setAttribute("a", u"1");
    written = writeCfg(false);
    if (*written) EndDialog(IDOK);
  }
  using XCBaseDeviceCfg::Device;
  using XCBaseDeviceCfg::Document;
  using XCBaseDeviceCfg::Driver;
  std::optional<bool> written;
};

class DeviceCfg : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(XCMainCfg::Get().Document().Parse(
        "<configuration><commSystem><device><id>{1}</id><driver>ZELLAMPMANAGER</driver>"
        "<type>ZELLAMPMANAGER</type><identifier>ABC 1</identifier><address>10.0.0.1</address>"
        "<socket>8081</socket><ftpAddress>ftp.example</ftpAddress><ftpPort>2121</ftpPort>"
        "<ftpUser>me+you</ftpUser><ftpPassword>s&amp;cret ñ</ftpPassword></device>"
        "<device><id>{2}</id></device></commSystem></configuration>"));
  }
  void TearDown() override { XCMainCfg::Get().Document().Clear(); }

  sample::Module module;
  XCDriver lamps{u"ZELLAMPMANAGER", u"{1}", u"North", u""};
  XCDriver bare{u"ZELLAMPMANAGER", u"{2}", u"South", u""};
  XCDriver unknown{u"ZELLAMPMANAGER", u"{3}", u"Nowhere", u""};
  DialogDriver driver;
};

// --- reading

TEST_F(DeviceCfg, ReadsItsDocumentBeforeItIsShown) {
  driver.channel().replyWith("<reply><ZelLamp><L02/></ZelLamp></reply>");
  auto& page = driver.show<Page>(&lamps);
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_XML_EQ("<reply><ZelLamp><L02/></ZelLamp></reply>", page.Document());
  EXPECT_EQ(driver.channel().last().command, 1);
  EXPECT_EQ(driver.channel().last().request, "<deviceCfg><L02/></deviceCfg>");
}

TEST_F(DeviceCfg, AFailedReadShowsTheErrorAloneAndNoPage) {
  driver.channel().failWith("no answer from 10.0.0.1");
  driver.show<Page>(&lamps);
  ASSERT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "no answer from 10.0.0.1");
  EXPECT_EQ(driver.message().buttons, MessageButtons::ok);
  driver.answer(MessageAnswer::ok);
  EXPECT_EQ(driver.result(), IDCANCEL);
  EXPECT_THAT(driver.closed(), IsEmpty());
}

TEST_F(DeviceCfg, AFailedReadWithoutATextShowsText330) {
  driver.channel().failWith("");
  driver.show<Page>(&lamps);
  EXPECT_EQ(driver.message().text, "[330]");
  driver.answer(MessageAnswer::ok);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

TEST_F(DeviceCfg, ACancelledReadShowsNothing) {
  driver.channel().cancel();
  driver.show<Page>(&lamps);
  EXPECT_EQ(driver.top(), TopKind::none);
  EXPECT_EQ(driver.result(), IDCANCEL);
}

// --- writing

class DeviceCfgWrite : public DeviceCfg {
 protected:
  void SetUp() override {
    DeviceCfg::SetUp();
    driver.channel().replyEmpty();
    page = &driver.show<Page>(&lamps);
    driver.channel().forget();
  }
  Page* page = nullptr;
};

TEST_F(DeviceCfgWrite, SendsThePagesDocument) {
  driver.click("ok");
  EXPECT_EQ(driver.result(), IDOK);
  ASSERT_EQ(driver.channel().count(), 1U);
  EXPECT_EQ(driver.channel().last().command, 2);
  EXPECT_EQ(driver.channel().last().kind, host::CommandKind::put);
  EXPECT_EQ(driver.channel().last().request, "<deviceCfg><E02 a=\"1\"/></deviceCfg>");
}

TEST_F(DeviceCfgWrite, ARefusedWriteOffersRetryAndCancel) {
  driver.channel().failWith("bad value");
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "bad value\r\n\r\n[329]");
  EXPECT_EQ(driver.message().buttons, MessageButtons::retryCancel);
  driver.answer(MessageAnswer::cancel);
  EXPECT_EQ(driver.top(), TopKind::dialog) << "the page stays with its entries";
  EXPECT_EQ(page->written, false);
  EXPECT_EQ(driver.channel().count(), 1U);
}

TEST_F(DeviceCfgWrite, WithoutAnErrorTextTheMessageIsText329Alone) {
  driver.channel().failWith("");
  driver.click("ok");
  EXPECT_EQ(driver.message().text, "[329]");
}

TEST_F(DeviceCfgWrite, RetrySendsTheSameDocumentAgain) {
  driver.channel().failWith("busy");
  driver.channel().failWith("");
  driver.click("ok");
  driver.answer(MessageAnswer::retry);
  EXPECT_EQ(driver.message().text, "[329]") << "the error text of the second failure";
  driver.answer(MessageAnswer::retry);
  EXPECT_EQ(driver.result(), IDOK);
  ASSERT_EQ(driver.channel().count(), 3U);
  for (const support::Exchange& sent : driver.channel().exchanges())
    EXPECT_EQ(sent.request, "<deviceCfg><E02 a=\"1\"/></deviceCfg>");
}

TEST_F(DeviceCfgWrite, ACancelledWriteShowsNothing) {
  driver.channel().cancel();
  driver.click("ok");
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(page->written, false);
}

TEST_F(DeviceCfgWrite, ARetryThatIsCancelledShowsNothingMore) {
  driver.channel().failWith("busy");
  driver.channel().cancel();
  driver.click("ok");
  driver.answer(MessageAnswer::retry);
  EXPECT_EQ(driver.top(), TopKind::dialog);
  EXPECT_EQ(page->written, false);
}

// --- the controller's address

TEST_F(DeviceCfg, NineParametersAddressTheController) {
  driver.channel().replyEmpty();
  driver.show<Page>(&lamps);
  EXPECT_THAT(
      driver.channel().last().parameters,
      ElementsAre(Pair("driver", "ZELLAMPMANAGER"), Pair("type", "ZELLAMPMANAGER"),
                  Pair("identifier", "ABC 1"), Pair("address", "10.0.0.1"), Pair("socket", "8081"),
                  Pair("ftpAddress", "ftp.example"), Pair("ftpPort", "2121"),
                  Pair("ftpUser", "me+you"), Pair("ftpPassword", "s&cret ñ")));
}

TEST_F(DeviceCfg, AbsentParametersAreSentEmptyOrWithTheirDefault) {
  const auto nine =
      ElementsAre(Pair("driver", ""), Pair("type", ""), Pair("identifier", ""), Pair("address", ""),
                  Pair("socket", "8080"), Pair("ftpAddress", ""), Pair("ftpPort", "21"),
                  Pair("ftpUser", ""), Pair("ftpPassword", ""));
  driver.channel().replyEmpty();
  driver.show<Page>(&bare);
  EXPECT_THAT(driver.channel().last().parameters, nine);
  driver.closeAll();
  driver.channel().replyEmpty();
  driver.show<Page>(&unknown);
  EXPECT_THAT(driver.channel().last().parameters, nine) << "also without a device";
}

TEST_F(DeviceCfg, EmptyPortsAreSentWithTheirDefaults) {
  XmlDocument::XmlNode* device = XCMainCfg::Get().DeviceNode(u"{1}");
  device->SetValue("socket", u"");
  device->SetValue("ftpPort", u"");
  driver.channel().replyEmpty();
  driver.show<Page>(&lamps);
  EXPECT_EQ(driver.channel().last().parameter("socket"), "8080");
  EXPECT_EQ(driver.channel().last().parameter("ftpPort"), "21");
}

TEST_F(DeviceCfg, ItsDeviceIsTheOneGivenOrThePagesInFrontOrTheConfigurations) {
  XmlDocument other = support::parsedXml("<device><address>1.2.3.4</address></device>");
  Page given(&lamps, nullptr, other.Root());
  EXPECT_EQ(given.Device(), other.Root());
  Page behind(&lamps, &given);
  EXPECT_EQ(behind.Device(), other.Root());
  Page anotherDriver(&bare, &given);
  EXPECT_EQ(anotherDriver.Device(), XCMainCfg::Get().DeviceNode(u"{2}"));
  Page alone(&lamps);
  EXPECT_EQ(alone.Device(), XCMainCfg::Get().DeviceNode(u"{1}"));
  EXPECT_EQ(&alone.Driver(), &lamps);
}

}  // namespace
