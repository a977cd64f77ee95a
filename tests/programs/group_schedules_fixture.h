#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "programs/group_schedules_page.h"
#include "tests/programs/lamp_registry.h"
#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace support {

using lamp::ProgramKind;
using Selection = std::vector<std::size_t>;
using Cells = std::vector<std::string>;

// Node 2 and 3 share all but the second step's power.
inline constexpr const char* ThreeNodes = R"(
  <Node Id="1" time1="10" power1="100" time2="20" power2="80" time3="30" power3="60" time4="40"
    power4="40"/>
  <Node Id="2" time1="11" power1="100" time2="21" power2="81" time3="31" power3="61" time4="41"
    power4="41" colour="warm" Fh="20240101000000"><Note/></Node>
  <lamp Id="3" time1="11" power1="100" time2="21" power2="82" time3="31" power3="61" time4="41"
    power4="41"/>)";

inline constexpr const char* ClockNodes = R"(
  <Node Id="1" hour1="18" min1="5" power1="100" hour2="22" min2="15" power2="80" hour3="1" min3="0"
    power3="60" hour4="5" min4="45" power4="40"/>
  <Node Id="2" power1="100" hour2="22" min2="15" power2="80" hour3="01" min3="0" power3="60"
    hour4="6" min4="0" power4="40"/>)";

/// The group schedules page over replies and groups that a test gives it.
class GroupSchedules : public testing::Test {
 protected:
  GroupSchedules() {
    registry.add(u"{L1}", u"ZELLAMP", u"1");
    registry.add(u"{L2}", u"ZELLAMP", u"2");
    registry.add(u"{L3}", u"ZELLAMP", u"3");
    registry.add(u"{L9}", u"ZELLAMP", u"9");
    registry.add(u"{M1}", u"ZELMETER", u"1");
    registry.add(u"{X1}", u"ZELLAMP2", u"1");
    registry.add(u"{S1}", u"ZELLAM", u"1");
  }

  // The groups of the controller's own group: a name and the ids of its devices.
  void configureGroups(
      const std::vector<std::pair<std::string, std::vector<std::string>>>& groups) {
    auto& root = *XCMainCfg::Get().Root();
    auto& all = root.Node("deviceGroups")->NewChild("groups");
    all.NewChild("group").SetValue("id", u"Other street");
    auto& own = all.NewChild("group");
    own.SetValue("id", u"Main street");
    auto& inner = own.NewChild("groups");
    for (const auto& [name, devices] : groups) {
      auto& group = inner.NewChild("group");
      group.SetValue("id", XCBasicString::FromUtf8(name));
      auto& list = group.NewChild("devices");
      for (const std::string& id : devices)
        list.NewChild("device").SetValue("id", XCBasicString::FromUtf8(id));
    }
  }
  void configureUsualGroups() {
    configureGroups({{"Bridge", {"{L1}", "{L2}"}},
                     {"Park", {"{L2}", "{L3}", "{L9}", "{nobody}"}},
                     {"Meters", {"{M1}", "{X1}", "{S1}"}},
                     {"Unplugged", {"{L9}"}}});
  }

  void openReply(const std::string& reply, ProgramKind kind = ProgramKind::interval) {
    driver.channel().replyWith(reply);
    driver.show<CDlgE06CfgZelLampManager>(&manager.driver, nullptr, kind);
    ASSERT_EQ(driver.top(), TopKind::dialog);
    EXPECT_EQ(driver.channel().last().command, 1);
    EXPECT_XML_EQ(kind == ProgramKind::clock ? "<deviceCfg><L17/></deviceCfg>"
                                             : "<deviceCfg><L06/></deviceCfg>",
                  driver.channel().last().request);
    driver.channel().forget();
  }
  void open(const std::string& nodes = ThreeNodes, const std::string& attributes = "") {
    openReply("<deviceCfg><ZelLamp Id='LM'><L06 " + attributes + ">" + nodes +
              "</L06></ZelLamp></deviceCfg>");
  }
  void openClock(const std::string& nodes = ClockNodes) {
    openReply("<deviceCfg><ZelLamp Id='LM'><L17>" + nodes + "</L17></ZelLamp></deviceCfg>",
              ProgramKind::clock);
  }
  // A clock program of one node, with one attribute as given.
  void openClockWith(const std::string& attribute) {
    openClock("<Node Id='1' power1='1' power2='2' power3='3' power4='4' " + attribute + "/>");
  }

  Cells fields() {
    Cells texts;
    for (const char* step : {"1", "2", "3", "4"})
      for (const char* part : {"time", "power"})
        texts.push_back(driver.text(std::string(part) + step));
    return texts;
  }
  Cells groupCells(std::size_t row) { return driver.rows("groups")[row]; }

  void expectClosedWithNothingSent() {
    EXPECT_EQ(driver.result(), IDOK);
    EXPECT_EQ(driver.channel().count(), 0U);
  }
  void expectSent(const std::string& section, const std::string& expected) {
    ASSERT_EQ(driver.channel().count(), 1U);
    EXPECT_EQ(driver.channel().last().command, 2);
    EXPECT_XML_EQ("<deviceCfg>" + expected + "</deviceCfg>", driver.channel().last().request);
    EXPECT_NE(expected.find("<" + section), std::string::npos);
  }
  void expectRefused(const std::string& message, std::size_t row, const std::string& focus) {
    driver.click("ok");
    ASSERT_EQ(driver.top(), TopKind::message);
    EXPECT_EQ(driver.message().text, message);
    EXPECT_EQ(driver.message().buttons, host::MessageButtons::ok);
    EXPECT_EQ(driver.message().icon, host::MessageIcon::none);
    driver.answer(host::MessageAnswer::ok);
    ASSERT_EQ(driver.top(), TopKind::dialog);
    EXPECT_EQ(driver.selection("nodes"), Selection{row});
    EXPECT_EQ(driver.focus(), focus);
    EXPECT_EQ(driver.selectedCharacters(focus),
              std::pair(std::size_t(0), driver.text(focus).size()));
    EXPECT_EQ(driver.channel().count(), 0U);
  }

  LampManager manager;
  LampRegistry registry;
  DialogDriver driver;
};

}  // namespace support
