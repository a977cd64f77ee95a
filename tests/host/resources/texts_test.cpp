#include "host/resources/texts.h"

#include <gtest/gtest.h>

#include "tests/support/odd_file.h"
#include "tests/support/printers.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"

namespace {

class Texts : public testing::Test {
 protected:
  void SetUp() override { support::texts(); }
  void TearDown() override { support::texts(); }

  support::TempFolder folder;
  std::string cause;
};

TEST_F(Texts, NumbersReadAsThemselves) {
  EXPECT_EQ(XCLoadString(host::TextId::Ok), u"[311]");
  EXPECT_EQ(XCLoadString(329), u"[329]");
}

TEST_F(Texts, NumbersKeepTheirPlaceholders) {
  EXPECT_EQ(XCLoadString(38265), u"[38265](%s,%d,%d)");
  EXPECT_EQ(XCLoadString(38279), u"[38279](%d,%d)");
  EXPECT_EQ(XCLoadString(523), u"[523](%s)");
  EXPECT_EQ(XCLoadString(530), u"[530](%s)");
  EXPECT_EQ(XCLoadString(531), u"[531](%s)");
  EXPECT_EQ(XCLoadString(624), u"[624](%d)");
  EXPECT_EQ(XCLoadString(32066), u"[32066](%d)");
  EXPECT_EQ(XCLoadString(38577), u"[38577](%s)");
  EXPECT_EQ(XCLoadString(38578), u"[38578](%s)");
  EXPECT_EQ(XCBasicString::Format(XCLoadString(38265), u"[24534] (%)", 0, 100),
            u"[38265]([24534] (%),0,100)");
}

TEST_F(Texts, ANumberWithoutTextShowsItself) {
  EXPECT_EQ(XCLoadString(999999), u"[999999]");
}

TEST_F(Texts, TheCataloguesOfTheProductLoad) {
  for (const char* language : {"en", "es"}) {
    ASSERT_TRUE(host::loadTexts(support::textsFolder(), language, cause)) << cause;
    EXPECT_NE(XCLoadString(host::TextId::Cancel), u"[312]") << language;
    EXPECT_FALSE(XCLoadString(host::TextId::CommandNotAccepted).IsEmpty()) << language;
  }
}

TEST_F(Texts, AMissingCatalogueIsToldAndTheTextsBeforeStay) {
  EXPECT_FALSE(host::loadTexts(folder.path(), "fr", cause));
  EXPECT_NE(cause.find("\"fr\""), std::string::npos) << cause;
  EXPECT_NE(cause.find((folder / "fr.xml").string()), std::string::npos) << cause;
  EXPECT_EQ(XCLoadString(311), u"[311]");
}

TEST_F(Texts, WhateverStandsInPlaceOfACatalogueIsToldWithNameAndCause) {
  for (const support::Odd odd : support::AllOdd) {
    SCOPED_TRACE(nameOf(odd));
    const support::TempFolder place;
    const support::OddFile thing(place / "fr.xml", odd,
                                 "<texts><text id=\"311\">Oui</text></texts>");
    const std::string refusal = thing.refusal(host::NamedBy::person);
    const bool isGood = odd == support::Odd::secondName || odd == support::Odd::linkToStranger;
    cause.clear();
    EXPECT_EQ(host::loadTexts(place.path(), "fr", cause), isGood);
    EXPECT_EQ(cause.find((place / "fr.xml").string()) != std::string::npos, !isGood) << cause;
    EXPECT_NE(cause.find(refusal), std::string::npos) << cause;
    EXPECT_TRUE(thing.isUntouched());
    support::texts();
  }
}

TEST_F(Texts, ABrokenCatalogueIsToldAndTheTextsBeforeStay) {
  folder.write("fr.xml", "<texts>\n  <text id=\"311\">Oui</text>\n");
  EXPECT_FALSE(host::loadTexts(folder.path(), "fr", cause));
  EXPECT_NE(cause.find("line "), std::string::npos) << cause;
  EXPECT_EQ(XCLoadString(311), u"[311]");
}

TEST_F(Texts, ALanguageIsANameAndNoPath) {
  folder.write("fr.xml", "<texts/>");
  for (const char* language : {"", ".", "../fr", "/etc/fr", "fr.xml", "a\\b"}) {
    cause.clear();
    EXPECT_FALSE(host::loadTexts(folder.path(), language, cause)) << language;
    EXPECT_NE(cause.find("not a language"), std::string::npos) << cause;
  }
}

TEST_F(Texts, ALoadedCatalogueReplacesTheOneBefore) {
  folder.write("xx.xml", "<texts language=\"xx\"><text id=\"1\">uno</text></texts>");
  ASSERT_TRUE(host::loadTexts(folder.path(), "xx", cause)) << cause;
  EXPECT_EQ(XCLoadString(1), u"uno");
  EXPECT_EQ(XCLoadString(311), u"[311]") << "nothing of the language before is left";
}

}  // namespace
