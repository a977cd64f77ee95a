#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace pages_test {

using Rows = std::vector<std::size_t>;
using Texts = std::vector<std::string>;

// The host's clock in tests, as a field shows it and as the controller takes it.
constexpr const char* Now = "15/03/2025 10:00:00";
constexpr const char* NowStamp = "ActDate=\"20250315100000W\"";

/// A page that reads one section and writes another: opened over a reply, and what it sent.
template <class Page>
class SectionPage : public testing::Test {
 protected:
  SectionPage(std::string read, std::string written)
      : read_(std::move(read)), written_(std::move(written)) {}

  void open(const std::string& rows, const std::string& attributes = "") {
    openReply("<deviceCfg><ZelLamp Id='LM'><" + read_ + " " + attributes + ">" + rows + "</" +
              read_ + "></ZelLamp></deviceCfg>");
  }
  void openReply(const std::string& reply) {
    driver.channel().replyWith(reply);
    driver.show<Page>(&manager.driver, nullptr);
    ASSERT_EQ(driver.top(), support::TopKind::dialog);
    EXPECT_XML_EQ("<deviceCfg><" + read_ + "/></deviceCfg>", driver.channel().last().request);
    driver.channel().forget();
  }
  /// One write of this section, and the page closed with OK.
  void expectSent(const std::string& rows, const std::string& attributes = NowStamp) {
    ASSERT_EQ(driver.channel().count(), 1U);
    EXPECT_EQ(driver.channel().last().command, 2);
    EXPECT_XML_EQ("<deviceCfg><" + written_ + " " + attributes + ">" + rows + "</" + written_ +
                      "></deviceCfg>",
                  driver.channel().last().request);
    EXPECT_EQ(driver.result(), IDOK);
  }
  void expectNothingSent() { EXPECT_EQ(driver.channel().count(), 0U); }
  void expectClosedWithoutSending() {
    EXPECT_EQ(driver.result(), IDOK);
    EXPECT_EQ(driver.channel().count(), 0U);
  }
  /// The message, then the page still open with the edit focused and all its text selected.
  void expectRefused(const std::string& message, const char* edit) {
    ASSERT_EQ(driver.top(), support::TopKind::message);
    EXPECT_EQ(driver.message().text, message);
    driver.answer(host::MessageAnswer::ok);
    ASSERT_EQ(driver.top(), support::TopKind::dialog);
    EXPECT_EQ(driver.focus(), edit);
    EXPECT_EQ(driver.selectedCharacters(edit),
              (std::pair<std::size_t, std::size_t>{0, driver.control(edit).text().Length()}));
    expectNothingSent();
  }
  /// After OK with a change made: the write fails once, the page stays, and OK again sends the
  /// same.
  void expectFailedWriteKeepsThePage() {
    driver.channel().failWith("Locked.");
    driver.click("ok");
    ASSERT_EQ(driver.top(), support::TopKind::message);
    EXPECT_EQ(driver.message().text, "Locked.\r\n\r\n[329]");
    driver.answer(host::MessageAnswer::cancel);
    ASSERT_EQ(driver.top(), support::TopKind::dialog);
    driver.click("ok");
    EXPECT_EQ(driver.result(), IDOK);
    ASSERT_EQ(driver.channel().count(), 2U);
    EXPECT_EQ(driver.channel().exchanges()[0].request, driver.channel().exchanges()[1].request);
  }
  /// After a change: the date is no date; then a good one is sent with its season.
  void expectActivationDateIsChecked() {
    driver.type("activation", "31/02/2024 00:00:00");
    driver.click("ok");
    expectRefused("[38408]", "activation");
    driver.type("activation", "15/07/2024 10:30:00");
    driver.click("ok");
    EXPECT_EQ(driver.result(), IDOK);
    EXPECT_NE(driver.channel().last().request.find("ActDate=\"20240715103000S\""),
              std::string::npos);
  }
  /// Only a stamp of 14 digits is shown.
  void expectActivationDateStartsAtTheStamp(const std::string& row) {
    const std::pair<const char*, const char*> starts[] = {
        {"Fh='20240331023000'", "31/03/2024 02:30:00"},
        {"", Now},
        {"Fh=''", Now},
        {"Fh='2024033102300'", Now},
        {"Fh='20240331023000S'", Now},
        {"Fh='2024033102300x'", Now}};
    for (const auto& [attributes, shown] : starts) {
      open(row, attributes);
      EXPECT_EQ(driver.text("activation"), shown) << attributes;
      driver.closeAll();
    }
  }
  std::string disabledReason(const char* name) const {
    return driver.control(name).disabledReason().ToUtf8();
  }

  support::LampManager manager;
  support::DialogDriver driver;

 private:
  std::string read_;
  std::string written_;
};

/// What a page does not know: attributes around the known ones, and children.
struct Unknown {
  std::string before;
  std::string after;
  std::string children;
};

inline Unknown unknown(std::mt19937& random) {
  static constexpr const char* Values[] = {"", "0", "plain", "a &amp; b &lt; c", "ñandú", "𝄞"};
  const auto attributes = [&](const std::string& name) {
    std::string text;
    for (std::uint_fast32_t i = 0, count = random() % 3; i < count; ++i)
      text += " " + name + std::to_string(i) + "=\"" + Values[random() % std::size(Values)] + "\"";
    return text + " ";
  };
  Unknown made{attributes("x"), attributes("y"), ""};
  for (std::uint_fast32_t i = 0, count = random() % 3; i < count; ++i)
    made.children += "<Extra" + attributes("n") + (random() % 2 ? ">text</Extra>" : "/>");
  return made;
}

/// The sizes of the sections that go there and back.
constexpr int RoundTripSizes[] = {0, 1, 2, 500};

}  // namespace pages_test
