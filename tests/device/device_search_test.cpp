#include "tests/device/device_definition_fixture.h"

namespace device_test {
namespace {

class DeviceSearch : public DeviceDefinition {
 protected:
  DeviceSearch() {
    verifyEverything();
    giveChildDevices();
  }
  std::string request() { return driver.channel().last().request; }
};

TEST_F(DeviceSearch, AnExistingDeviceAtItsAddressIsIdentifiedAndNoMore) {
  openExisting();
  driver.type("ftpUser", "other");
  driver.channel().replyWith(Identification);
  driver.click("ok");
  expectClosed(IDOK);
  ASSERT_EQ(commands(), std::vector{29});
  EXPECT_EQ(driver.channel().last().kind, host::CommandKind::get);
  EXPECT_EQ(request(), "");
  EXPECT_EQ(driver.channel().last().parameter("ftpUser"), "other");
  EXPECT_TRUE(device().Value("identifier") == u"LM-0001") << "a typed identifier stays";
}

TEST_F(DeviceSearch, AMovedDeviceIsToldWhatIsNew) {
  const struct {
    Typed typed;
    const char* request;
  } cases[] = {{{{"address", "192.168.1.21"}}, "<main><E01 ipCom='192.168.1.21'/></main>"},
               {{{"socket", "8081"}}, "<main><E01 PortWS='8081'/></main>"},
               {{{"address", "lamp.example.org"}, {"socket", "80"}},
                "<main><E01 ipCom='lamp.example.org' PortWS='80'/></main>"}};
  const XmlDocument before = support::parsedXml(support::compactXml(*manager.element()));
  for (const auto& one : cases) {
    SCOPED_TRACE(one.request);
    *manager.element() = *before.Root();
    driver.channel().forget();
    openExisting();
    type(one.typed);
    driver.channel().replyWith(Identification);
    driver.click("ok");
    expectClosed(IDOK);
    ASSERT_EQ(commands(), (std::vector{29, 30}));
    EXPECT_EQ(driver.channel().last().kind, host::CommandKind::put);
    EXPECT_XML_EQ(one.request, request());
    for (const auto& [field, text] : one.typed) {
      EXPECT_EQ(driver.channel().last().parameter(field), text) << "as typed";
      EXPECT_EQ(device().Value(host::XmlName(std::string_view(field))).ToUtf8(), text);
    }
  }
}

TEST_F(DeviceSearch, AMovedDeviceDoesNotFetchItsIdentifier) {
  openExisting();
  type({{"address", "192.168.1.21"}, {"identifier", ""}});
  driver.channel().replyWith(Identification);
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(commands(), (std::vector{29, 30}));
  EXPECT_TRUE(device().Value("identifier").IsEmpty());
}

TEST_F(DeviceSearch, ANewDeviceIsNeverToldAnAddress) {
  openNew();
  typeNewDevice();
  device().NewChild("childDevices");
  driver.channel().replyWith(Identification);
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(commands(), std::vector{29});
}

TEST_F(DeviceSearch, AnEmptyIdentifierIsFilledAndWritten) {
  openExisting();
  driver.type("identifier", "");
  driver.channel().replyWith(Identification);
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("identifier") == u"LM-0002");
}

TEST_F(DeviceSearch, ALongIdentifierIsKeptAsTheFieldTakesIt) {
  openExisting();
  driver.type("identifier", "");
  driver.channel().replyWith("<reply><ZelLamp Id='0123456789ABCDEFGH'/></reply>");
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("identifier") == u"0123456789ABCDEF");
}

TEST_F(DeviceSearch, AReplyWithoutControllerIsToldAndAskedAbout) {
  for (const char* reply : {"<reply/>", "<reply><Other Id='x'/></reply>"}) {
    openExisting();
    driver.type("identifier", "");
    driver.channel().replyWith(reply);
    driver.click("ok");
    expectMessage("[38436]");
    expectQuestion("[581]", MessageAnswer::no, MessageIcon::question);
    expectOpen();
    driver.click("cancel");
  }
  openExisting();
  driver.type("identifier", "");
  driver.channel().replyEmpty();
  driver.click("ok");
  expectMessage("[38436]");
  expectQuestion("[581]", MessageAnswer::yes, MessageIcon::question);
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("identifier").IsEmpty());
}

TEST_F(DeviceSearch, ATypedIdentifierNeedsNoneInTheReply) {
  openExisting();
  driver.type("identifier", "LM-9");
  driver.channel().replyWith("<reply/>");
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("identifier") == u"LM-9");
}

TEST_F(DeviceSearch, AControllerThatDoesNotAnswerIsAskedAbout) {
  openExisting();
  const std::string before = support::compactXml(device());
  driver.type("ftpUser", "other");
  driver.channel().failWith("no answer");
  driver.click("ok");
  expectMessage("no answer");
  expectQuestion("[581]", MessageAnswer::no, MessageIcon::question);
  expectOpen();
  EXPECT_EQ(support::compactXml(device()), before);
  EXPECT_EQ(driver.text("ftpUser"), "other");

  driver.channel().failWith("");
  driver.click("ok");
  expectQuestion("[581]", MessageAnswer::yes, MessageIcon::question);
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("ftpUser") == u"other");
}

TEST_F(DeviceSearch, ANewDeviceSavedWithoutAnswerFetchesNoNodes) {
  openNew();
  typeNewDevice();
  driver.channel().failWith("no answer");
  driver.click("ok");
  expectMessage("no answer");
  expectQuestion("[375]", MessageAnswer::yes, MessageIcon::question);
  expectClosed(IDOK);
  EXPECT_EQ(commands(), std::vector{29});
  EXPECT_EQ(device().Node("childDevices"), nullptr);
  EXPECT_TRUE(device().Value("name") == u"Harbour");
}

TEST_F(DeviceSearch, ACancelledSearchShowsNothingAndStaysOpen) {
  openExisting();
  driver.type("address", "192.168.1.21");
  driver.channel().cancel();
  driver.click("ok");
  expectOpen();
  driver.channel().replyWith(Identification);
  driver.channel().cancel();
  driver.click("ok");
  expectOpen();
  EXPECT_EQ(commands(), (std::vector{29, 29, 30}));
  EXPECT_TRUE(device().Value("address") == u"192.168.1.20");
}

TEST_F(DeviceSearch, ARefusedAddressIsToldAndAskedAbout) {
  openExisting();
  driver.type("socket", "81");
  driver.channel().replyWith(Identification);
  driver.channel().failWith("port in use");
  driver.click("ok");
  expectMessage("port in use");
  expectQuestion("[581]", MessageAnswer::yes, MessageIcon::question);
  expectClosed(IDOK);
  EXPECT_TRUE(device().Value("socket") == u"81");
}

TEST_F(DeviceSearch, ASuccessfulCommandClearsTheErrorBefore) {
  openExisting();
  driver.type("identifier", "");
  driver.channel().failWith("no answer");
  driver.click("ok");
  expectMessage("no answer");
  expectQuestion("[581]", MessageAnswer::no, MessageIcon::question);
  driver.channel().replyWith("<reply/>");
  driver.click("ok");
  expectMessage("[38436]");
  expectQuestion("[581]", MessageAnswer::no, MessageIcon::question);
}

TEST_F(DeviceSearch, OnlyCommunicationFieldsAreVerified) {
  openExisting();
  type({{"name", "Other"}, {"description", "Other"}});
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(DeviceSearch, WithoutVerificationNothingIsContacted) {
  driver.settings().verifyExisting(false);
  openExisting();
  driver.type("address", "192.168.1.21");
  driver.click("ok");
  expectClosed(IDOK);
  EXPECT_EQ(driver.channel().count(), 0U);
}

// --- before the communication settings

TEST_F(DeviceSearch, AFilledIdentifierOpensTheSettingsWithoutAsking) {
  openExisting();
  driver.channel().replyWith("<reply/>");
  driver.click("advanced");
  EXPECT_EQ(commands(), std::vector{1});
  EXPECT_EQ(driver.dialog().ClassName(), "XCDlgAdvancedCfgZelLampManager");
}

TEST_F(DeviceSearch, AnEmptyIdentifierIsFetchedBeforeTheSettings) {
  openExisting();
  driver.type("identifier", "");
  driver.channel().replyWith("<reply><ZelLamp Id='0123456789ABCDEFGH'/></reply>");
  driver.channel().replyWith("<reply/>");
  driver.click("advanced");
  EXPECT_EQ(commands(), (std::vector{29, 1}));
  EXPECT_EQ(driver.channel().exchanges()[0].parameter("identifier"), "");
  EXPECT_EQ(driver.channel().last().parameter("identifier"), "0123456789ABCDEF");
  driver.click("cancel");
  EXPECT_EQ(driver.text("identifier"), "0123456789ABCDEF");
  EXPECT_TRUE(device().Value("identifier") == u"LM-0001") << "written on OK alone";
}

TEST_F(DeviceSearch, WithoutIdentifierTheSettingsDoNotOpen) {
  openExisting();
  driver.type("identifier", "");
  driver.channel().failWith("no answer");
  driver.click("advanced");
  expectMessage("no answer");
  expectOpen();
  driver.channel().failWith("");
  driver.click("advanced");
  expectOpen();
  driver.channel().cancel();
  driver.click("advanced");
  expectOpen();
  driver.channel().replyWith("<reply/>");
  driver.click("advanced");
  expectMessage("[38436]");
  expectOpen();
  driver.channel().replyEmpty();
  driver.click("advanced");
  expectMessage("[38436]");
  EXPECT_EQ(driver.text("identifier"), "");
  EXPECT_EQ(commands(), (std::vector{29, 29, 29, 29, 29}));
}

}  // namespace
}  // namespace device_test
