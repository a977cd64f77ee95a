#include "exchange/exchange_frame.h"

#include <gtest/gtest.h>

#include <chrono>

#include "tests/support/dialog_driver.h"
#include "tests/support/lamp_manager.h"
#include "tests/support/xml_compare.h"

namespace {

using lamp::Command;
using support::DialogDriver;
using support::TopKind;

std::string stamp(const char* digits) {
  return lamp::activationStamp(XCBasicString::FromUtf8(digits)).ToUtf8();
}

std::string ofDate(const char* shown) {
  std::string digits;
  for (const char* c = shown; *c != 0; ++c)
    if (*c >= '0' && *c <= '9') digits += *c;
  return stamp(digits.c_str());
}

TEST(ActivationStamp, CarriesTheSeasonOfTheMomentItself) {
  EXPECT_EQ(ofDate("15/07/2024 10:30:00"), "20240715103000S");
  EXPECT_EQ(ofDate("01/12/2024 00:00:00"), "20241201000000W");
}

TEST(ActivationStamp, ChangesToSummerOnTheLastSundayOfMarchAtThree) {
  EXPECT_EQ(ofDate("31/03/2024 02:59:59"), "20240331025959W");
  EXPECT_EQ(ofDate("31/03/2024 03:00:00"), "20240331030000S");
}

TEST(ActivationStamp, ChangesToWinterOnTheLastSundayOfOctoberAtTwo) {
  EXPECT_EQ(ofDate("27/10/2024 01:59:59"), "20241027015959S");
  EXPECT_EQ(ofDate("27/10/2024 02:00:00"), "20241027020000W");
}

TEST(ActivationStamp, IsEmptyForWhatIsNoDate) {
  for (const char* wrong :
       {"31/02/2024 00:00:00", "00/00/0000 00:00:00", "29/02/2023 10:00:00", "01/13/2024 10:00:00",
        "01/01/2024 24:00:00", "01/01/2024 23:60:00", "01/01/2024 23:59:60"})
    EXPECT_EQ(ofDate(wrong), "") << wrong;
  EXPECT_EQ(stamp(""), "");
  EXPECT_EQ(stamp("1507202410300"), "") << "thirteen digits";
  EXPECT_EQ(stamp("150720241030000"), "") << "fifteen digits";
  EXPECT_EQ(stamp("15O72024103000"), "") << "a letter";
}

// The boundaries of every year by the calendar of the standard library.
TEST(SeasonLetter, AgreesWithAnIndependentCalendarAtEveryBoundaryFrom1990To2099) {
  using namespace std::chrono;
  for (int y = 1990; y <= 2099; ++y) {
    const year_month_day march = sys_days(year(y) / March / Sunday[last]);
    const year_month_day october = sys_days(year(y) / October / Sunday[last]);
    const int springs = static_cast<int>(static_cast<unsigned>(march.day()));
    const int falls = static_cast<int>(static_cast<unsigned>(october.day()));
    EXPECT_EQ(lamp::seasonLetter({y, 3, springs, 2, 59, 59}), u'W') << y;
    EXPECT_EQ(lamp::seasonLetter({y, 3, springs, 3, 0, 0}), u'S') << y;
    EXPECT_EQ(lamp::seasonLetter({y, 10, falls, 1, 59, 59}), u'S') << y;
    EXPECT_EQ(lamp::seasonLetter({y, 10, falls, 2, 0, 0}), u'W') << y;
    EXPECT_EQ(lamp::seasonLetter({y, 1, 1, 0, 0, 0}), u'W') << y;
    EXPECT_EQ(lamp::seasonLetter({y, 12, 31, 23, 59, 59}), u'W') << y;
  }
}

TEST(ExchangeFrame, AReadAsksForOneEmptySection) {
  XmlDocument document;
  ASSERT_TRUE(document.Parse("<old><content/></old>"));
  lamp::prepareRead(document, "L04");
  EXPECT_XML_EQ("<deviceCfg><L04/></deviceCfg>", document);
}

TEST(ExchangeFrame, TheSectionIsFoundBelowZelLampWhateverTheRootIsCalled) {
  XmlDocument reply;
  ASSERT_TRUE(reply.Parse(R"(<anything><ZelLamp><L01 Mod="x"/></ZelLamp></anything>)"));
  ASSERT_NE(lamp::sectionOf(reply, "L01"), nullptr);
  EXPECT_TRUE(lamp::sectionOf(reply, "L01")->attribute("Mod") == u"x");
  EXPECT_EQ(lamp::sectionOf(reply, "L02"), nullptr);
  ASSERT_TRUE(reply.Parse("<ZelLamp><L01/></ZelLamp>"));
  EXPECT_EQ(lamp::sectionOf(reply, "L01"), nullptr) << "the section stands below the root";
  reply.Clear();
  EXPECT_EQ(lamp::sectionOf(reply, "L01"), nullptr);
}

TEST(ExchangeFrame, AWriteNeverCarriesTheReplysContent) {
  XmlDocument document;
  ASSERT_TRUE(document.Parse("<deviceCfg><ZelLamp><L01 a='1'/></ZelLamp></deviceCfg>"));
  lamp::beginWrite(document, "E01").setAttribute("b", u"2");
  EXPECT_XML_EQ(R"(<deviceCfg><E01 b="2"/></deviceCfg>)", document);
}

TEST(ExchangeFrame, OnlyATextThatDiffersIsPut) {
  XmlDocument document("E01");
  lamp::putIfChanged(*document.Root(), "same", u"a", u"a");
  lamp::putIfChanged(*document.Root(), "case", u"A", u"a");
  lamp::putIfChanged(*document.Root(), "cleared", u"", u"a");
  lamp::putIfChanged(*document.Root(), "blank", u"a ", u"a");
  EXPECT_XML_EQ(R"(<E01 case="A" cleared="" blank="a "/>)", document);
}

// A page whose buttons send and read by the frame.
class Sender : public XCBaseDeviceCfg {
 public:
  Sender(XCDriver* driver) : XCBaseDeviceCfg(100, driver, nullptr) {}
  using XCBaseDeviceCfg::Document;
};

class ExchangeMessages : public testing::Test {
 protected:
  support::LampManager manager;
  XmlDocument document{"deviceCfg"};
  bool result = false;
  DialogDriver driver;
  Sender page{&manager.driver};
};

TEST_F(ExchangeMessages, AnElementWithoutAttributesCountsAsWrittenAndSendsNothing) {
  driver.run([&] { result = lamp::finishWrite(page, *document.Root()); });
  EXPECT_TRUE(result);
  EXPECT_EQ(driver.channel().count(), 0U);
}

TEST_F(ExchangeMessages, AWriteThatFailsOffersRetryAndSucceedsOnTheSecondTry) {
  driver.channel().failWith("Busy.");
  driver.run([&] { result = lamp::sendWithRetry(page, Command::writeSection, document); });
  ASSERT_EQ(driver.top(), TopKind::message);
  EXPECT_EQ(driver.message().text, "Busy.\r\n\r\n[329]");
  EXPECT_EQ(driver.message().buttons, host::MessageButtons::retryCancel);
  driver.answer(host::MessageAnswer::retry);
  EXPECT_FALSE(driver.running());
  EXPECT_TRUE(result);
  ASSERT_EQ(driver.channel().count(), 2U);
  EXPECT_EQ(driver.channel().exchanges()[0].request, driver.channel().exchanges()[1].request);
  EXPECT_EQ(driver.channel().exchanges()[1].command, 2);
}

TEST_F(ExchangeMessages, AWriteThatFailsAgainAsksAgainAndCancelGivesUp) {
  driver.channel().failWith("");
  driver.channel().failWith("Still busy.");
  driver.run([&] { result = lamp::sendWithRetry(page, Command::writeSection, document); });
  EXPECT_EQ(driver.message().text, "[329]") << "without an error text the message stands alone";
  driver.answer(host::MessageAnswer::retry);
  EXPECT_EQ(driver.message().text, "Still busy.\r\n\r\n[329]");
  driver.answer(host::MessageAnswer::cancel);
  EXPECT_FALSE(result);
  EXPECT_EQ(driver.channel().count(), 2U);
}

TEST_F(ExchangeMessages, AWriteThatTheUserCancelledShowsNothing) {
  driver.channel().cancel();
  driver.run([&] { result = lamp::sendWithRetry(page, Command::writeSection, document); });
  EXPECT_FALSE(driver.running());
  EXPECT_FALSE(result);
}

TEST_F(ExchangeMessages, AOneShotCommandShowsItsFailureOnceWithOk) {
  driver.channel().failWith("No.");
  driver.run([&] { result = lamp::sendOnce(page, Command::setClock, document); });
  EXPECT_EQ(driver.message().text, "No.\r\n\r\n[329]");
  EXPECT_EQ(driver.message().buttons, host::MessageButtons::ok);
  driver.answer(host::MessageAnswer::ok);
  EXPECT_FALSE(result);
  EXPECT_EQ(driver.channel().count(), 1U);
  driver.channel().cancel();
  driver.run([&] { result = lamp::sendOnce(page, Command::setClock, document); });
  EXPECT_FALSE(driver.running()) << "a cancelled exchange shows nothing";
}

TEST_F(ExchangeMessages, AReadThatFailsShowsTheErrorTextAlone) {
  driver.channel().failWith("Gone.");
  driver.run([&] { result = lamp::readWithMessage(page, Command::readSection, document); });
  EXPECT_EQ(driver.message().text, "Gone.");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_FALSE(result);
  EXPECT_EQ(driver.channel().last().command, 1);
}

TEST_F(ExchangeMessages, AReadThatFailsWithoutTextShowsTheReadMessage) {
  driver.channel().failWith("");
  driver.run([&] { result = lamp::readWithMessage(page, Command::readSection, document); });
  EXPECT_EQ(driver.message().text, "[330]");
  driver.answer(host::MessageAnswer::ok);
  EXPECT_FALSE(result);
}

TEST_F(ExchangeMessages, AReadThatTheUserCancelledShowsNothing) {
  driver.channel().cancel();
  driver.run([&] { result = lamp::readWithMessage(page, Command::readSection, document); });
  EXPECT_FALSE(driver.running());
  EXPECT_FALSE(result);
}

TEST_F(ExchangeMessages, AReadReplacesTheRequestByTheReply) {
  driver.channel().replyWith("<deviceCfg><ZelLamp Id='1'/></deviceCfg>");
  driver.run([&] { result = lamp::readWithMessage(page, Command::readSection, document); });
  EXPECT_TRUE(result);
  EXPECT_XML_EQ("<deviceCfg><ZelLamp Id='1'/></deviceCfg>", document);
}

}  // namespace
