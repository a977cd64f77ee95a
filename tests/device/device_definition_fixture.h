#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "device/device_definition_dialog.h"
#include "host/services/identity.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace device_test {

using host::MessageAnswer;
using host::MessageButtons;
using host::MessageIcon;
using support::TopKind;

using Typed = std::vector<std::pair<std::string, std::string>>;

/// The definition dialog over a configuration with one lamp manager, "Main street", or over a new
/// device beside it.
class DeviceDefinition : public testing::Test {
 protected:
  static XmlDocument::XmlNode* root() { return XCMainCfg::Get().Root(); }

  /// The element that the dialog edits.
  XmlDocument::XmlNode& device() { return *edited; }

  XCDlgNewModifyZelLampManager& openExisting() {
    edited = manager.element();
    return open();
  }
  /// A device as the host makes it, with nothing typed yet.
  XCDlgNewModifyZelLampManager& openNew() {
    scratch = support::parsedXml(
        "<device><id>{D2}</id><driver>ZELLAMPMANAGER</driver>"
        "<type>ZELLAMPMANAGER</type></device>");
    edited = scratch.Root();
    return open();
  }
  XCDlgNewModifyZelLampManager& open() {
    return driver.show<XCDlgNewModifyZelLampManager>(nullptr, edited, root());
  }

  void type(const Typed& fields) {
    for (const auto& [name, text] : fields) driver.type(name, text);
  }
  /// Everything that a new device needs.
  void typeNewDevice() {
    type({{"name", "Harbour"}, {"address", "10.0.0.7"}, {"ftpAddress", "10.0.0.1"}});
  }
  void giveChildDevices() { manager.element()->NewChild("childDevices"); }
  void addDevice(const std::string& xml) {
    root()->Node("commSystem")->NewChild("device") = *support::parsedXml(xml).Root();
  }

  void expectMessage(const std::string& text, MessageAnswer answer = MessageAnswer::ok,
                     MessageIcon icon = MessageIcon::none) {
    ASSERT_EQ(driver.top(), TopKind::message) << "expected the message " << text;
    EXPECT_EQ(driver.message().text, text);
    EXPECT_EQ(driver.message().icon, icon) << text;
    driver.answer(answer);
  }
  void expectQuestion(const std::string& text, MessageAnswer answer,
                      MessageIcon icon = MessageIcon::none) {
    ASSERT_EQ(driver.top(), TopKind::message) << "expected the question " << text;
    EXPECT_EQ(driver.message().buttons, MessageButtons::yesNo);
    expectMessage(text, answer, icon);
  }
  void expectOpen() {
    EXPECT_EQ(driver.top(), TopKind::dialog);
    EXPECT_EQ(driver.result(), std::nullopt);
  }
  void expectClosed(int result) {
    EXPECT_EQ(driver.top(), TopKind::none);
    EXPECT_EQ(driver.result(), result);
  }
  std::vector<int> commands() {
    std::vector<int> numbers;
    for (const auto& exchange : driver.channel().exchanges()) numbers.push_back(exchange.command);
    return numbers;
  }
  void verifyEverything() {
    driver.settings().verifyNew(true);
    driver.settings().verifyExisting(true);
  }

  support::LampManager manager;
  XmlDocument scratch;
  XmlDocument::XmlNode* edited = nullptr;
  support::DialogDriver driver;
};

/// The controls that stand in an arrangement, in its order.
inline void collectControls(const host::LayoutItem& item, std::vector<int>& found) {
  if (item.controlId != 0) found.push_back(item.controlId);
  for (const host::LayoutItem& inner : item.items) collectControls(inner, found);
}

/// Whether every control of a dialog stands in its arrangement exactly once.
inline void expectAllArranged(const XCBaseDlg& dialog) {
  std::vector<int> arranged;
  collectControls(dialog.Arrangement(), arranged);
  std::vector<int> all;
  for (const auto& control : dialog.Controls()) all.push_back(control->id());
  EXPECT_THAT(arranged, testing::UnorderedElementsAreArray(all));
}

inline const std::string NodeFile =
    "<reply><ZelLamp Id='LM-0002'><L03><Node nodeId='n1' Reference='Corner'/></L03></ZelLamp>"
    "</reply>";
inline const std::string Identification = "<reply><ZelLamp Id='LM-0002'/></reply>";

}  // namespace device_test
