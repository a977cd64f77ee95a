#include "device/device_check.h"

#include "tests/device/device_definition_fixture.h"

namespace device_test {
namespace {

class DeviceCheck : public DeviceDefinition {
 protected:
  /// OK is refused with this message, which leaves the field focused and its text selected.
  void expectRefused(const std::string& message, const std::string& field) {
    const std::string before = support::compactXml(device());
    driver.click("ok");
    expectMessage(message);
    expectOpen();
    EXPECT_EQ(driver.focus(), field) << message;
    EXPECT_EQ(driver.selectedCharacters(field),
              (std::pair<std::size_t, std::size_t>{0, driver.control(field).text().Length()}))
        << message;
    EXPECT_EQ(support::compactXml(device()), before);
  }
  void expectAccepted() {
    driver.click("ok");
    EXPECT_EQ(driver.top(), TopKind::none);
    EXPECT_EQ(driver.result(), IDOK);
  }
};

TEST_F(DeviceCheck, TheFirstFaultWinsInTheOrderOfTheChecks) {
  addDevice(
      "<device><id>{D9}</id><driver>ZELLAMPMANAGER</driver><name>Harbour</name>"
      "<address>10.0.0.7</address><socket>8080</socket></device>");
  openNew();
  type({{"socket", ""}, {"ftpPort", ""}});
  expectRefused("[359]", "name");
  driver.type("name", "a/b");
  expectRefused("[32764]", "name");
  driver.type("name", "Harbour");
  expectRefused("[360]", "name");
  driver.type("name", "Quay");
  expectRefused("[34234]", "address");
  driver.type("address", "10.0.0.7");
  expectRefused("[10038]", "socket");
  driver.type("socket", "8080");
  expectRefused("[34234]", "ftpAddress");
  driver.type("ftpAddress", "10.0.0.1");
  expectRefused("[38279](1,65535)", "ftpPort");
  driver.type("ftpPort", "21");
  expectRefused("[33941]", "address");
  driver.type("address", "10.0.0.8");
  expectAccepted();
}

TEST_F(DeviceCheck, NamesAreTakenAsTheHostTakesIds) {
  const struct {
    std::string name;
    bool accepted;
  } cases[] = {
      {"Harbour", true},  {"Calle Núñez 3", true}, {"Ω-7.b_c", true}, {std::string(64, 'n'), true},
      {"   ", false},     {" lead", false},        {"trail ", false}, {"\"North\"", false},
      {"O'Brien", false}, {"<b>", false},          {"A&B", false},    {"a/b", false},
      {"..", false},      {"\U0001F6A6", false}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.name);
    openNew();
    typeNewDevice();
    driver.type("name", one.name);
    if (one.accepted) {
      expectAccepted();
      EXPECT_EQ(device().Value("name").ToUtf8(), one.name);
    } else {
      expectRefused("[32764]", "name");
      driver.click("cancel");
    }
  }
}

TEST_F(DeviceCheck, AnotherDevicesNameIsRefusedWhateverItsCase) {
  openNew();
  typeNewDevice();
  driver.type("name", "MAIN STREET");
  expectRefused("[360]", "name");
}

TEST_F(DeviceCheck, AnUnchangedNameIsNotCheckedAgain) {
  addDevice("<device><id>{D9}</id><driver>METER</driver><name>Main street</name></device>");
  openExisting();
  driver.type("description", "changed");
  expectAccepted();
}

TEST_F(DeviceCheck, ADeviceMayChangeTheCaseOfItsOwnName) {
  const EditedDevice own(manager.element());
  openExisting();
  driver.type("name", "MAIN STREET");
  expectAccepted();
}

TEST_F(DeviceCheck, AddressesAreTakenAsTheyAreTyped) {
  for (const std::string address : {"10.0.0.7", "fe80::1", "[2001:db8::7]", "lamps.example.org",
                                    "https://lamps.example.org", " ", "not an address"}) {
    SCOPED_TRACE(address);
    openNew();
    typeNewDevice();
    driver.type("address", address);
    expectAccepted();
    EXPECT_EQ(device().Value("address").ToUtf8(), address);
  }
}

TEST_F(DeviceCheck, PortsAreAcceptedFromZeroTheFtpPortFromOne) {
  const struct {
    const char* port;
    bool asSocket;
    bool asFtpPort;
  } cases[] = {{"", false, false},      {"0", true, false},     {"00000", true, false},
               {"1", true, true},       {"00080", true, true},  {"65535", true, true},
               {"65536", false, false}, {"99999", false, false}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.port);
    for (const bool ftp : {false, true}) {
      openNew();
      typeNewDevice();
      const char* field = ftp ? "ftpPort" : "socket";
      driver.type(field, one.port);
      if (ftp ? one.asFtpPort : one.asSocket) {
        expectAccepted();
        EXPECT_EQ(device().Value(field).ToUtf8(), one.port);
      } else {
        expectRefused(ftp ? "[38279](1,65535)" : "[10038]", field);
        driver.click("cancel");
      }
    }
  }
}

TEST_F(DeviceCheck, APortThatTheElementHoldsIsReadByItsLeadingDigits) {
  manager.element()->SetValue("socket", u"80x");
  manager.element()->SetValue("ftpPort", u"x21");
  openExisting();
  driver.type("description", "changed");
  expectRefused("[38279](1,65535)", "ftpPort");
}

TEST_F(DeviceCheck, AddressAndPortOfAnotherNetworkDeviceAreRefused) {
  const char* types[] = {
      "ZELLAMPMANAGER", "MODBUSTCP",       "MODBUSRTUTCP",  "TCP",        "UDP",
      "TCPSERIAL",      "UDPSERIAL",       "TCPGATEWAY",    "UDPGATEWAY", "ZELGATEWAY",
      "ZELANALYZER",    "ZELCONCENTRATOR", "ZELDATALOGGER", "ZELMETER",   "ZELPOWERMANAGER"};
  addDevice("<device><id>{D9}</id><address>10.0.0.7</address><socket>8080</socket></device>");
  auto& other = *root()->Node("commSystem/device?id=%s?", u"{D9}");
  for (const std::string type : types) {
    SCOPED_TRACE(type);
    other.SetValue("driver", XCBasicString::FromUtf8(type));
    openNew();
    typeNewDevice();
    expectRefused("[33941]", "address");
    driver.click("cancel");
  }
}

TEST_F(DeviceCheck, WhatTellsTwoDevicesApartIsAccepted) {
  const struct {
    const char* what;
    const char* device;
  } cases[] = {
      {"another port",
       "<device><id>{D9}</id><driver>TCP</driver><address>10.0.0.7</address>"
       "<socket>8081</socket></device>"},
      {"a port written otherwise",
       "<device><id>{D9}</id><driver>TCP</driver><address>10.0.0.7</address>"
       "<socket>08080</socket></device>"},
      {"an address in another case",
       "<device><id>{D9}</id><driver>TCP</driver><address>10.0.0.7 </address>"
       "<socket>8080</socket></device>"},
      {"no port", "<device><id>{D9}</id><driver>TCP</driver><address>10.0.0.7</address></device>"},
      {"an unrelated driver",
       "<device><id>{D9}</id><driver>ZELLAMP</driver><address>10.0.0.7</address>"
       "<socket>8080</socket></device>"},
      {"a driver in another case",
       "<device><id>{D9}</id><driver>tcp</driver><address>10.0.0.7</address>"
       "<socket>8080</socket></device>"},
      {"its own id",
       "<device><id>{D2}</id><driver>TCP</driver><address>10.0.0.7</address>"
       "<socket>8080</socket></device>"}};
  for (const auto& one : cases) {
    SCOPED_TRACE(one.what);
    addDevice(one.device);
    openNew();
    typeNewDevice();
    expectAccepted();
    auto& system = *root()->Node("commSystem");
    system.RemoveChild(system.Node("device?address=%s?", u"10.0.0.7"));
    system.RemoveChild(system.Node("device?address=%s?", u"10.0.0.7 "));
  }
}

TEST_F(DeviceCheck, WithoutCommunicationSystemsNothingIsCompared) {
  root()->RemoveChild(root()->Node("commSystem"));
  openNew();
  typeNewDevice();
  driver.type("name", "Main street");
  expectAccepted();
}

TEST_F(DeviceCheck, ChecksPrecedeEveryExchange) {
  verifyEverything();
  openExisting();
  driver.type("ftpPort", "0");
  expectRefused("[38279](1,65535)", "ftpPort");
  EXPECT_EQ(driver.channel().count(), 0U);
}

}  // namespace
}  // namespace device_test
