#include "workbench/wire/secrets.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using workbench::maskedParameters;
using workbench::Secrets;

XmlDocument parsed(const std::string& xml) {
  XmlDocument document;
  EXPECT_TRUE(document.Parse(xml)) << xml;
  return document;
}

TEST(Secrets, TheParameterOfASecretsNameIsMasked) {
  EXPECT_EQ(maskedParameters("ftpUser=u&ftpPassword=a%26b"), "ftpUser=u&ftpPassword=***");
  EXPECT_EQ(maskedParameters("ftpPassword=a&x=1&ftpPassword=b&"),
            "ftpPassword=***&x=1&ftpPassword=***&");
  EXPECT_EQ(maskedParameters("f%74pPassword=a&mailUser=u"), "f%74pPassword=***&mailUser=***");
  for (const char* same : {"ftpPassword=", "ftpPassword", "xftpPassword=a", ""})
    EXPECT_EQ(maskedParameters(same), same);
}

TEST(Secrets, AreMaskedInFreeTextFromSixCharactersOn) {
  Secrets secrets;
  secrets.learnParameters("address=h&ftpPassword=a%26bcde&x=1");
  secrets.learnDocument(
      parsed("<d><E01 mailPassword=\"l\xC3\xA4mp-9\" mailUser=\"lamps@city\"/>"
             "<main><FTPPwd>tower</FTPPwd></main></d>"));
  EXPECT_EQ(secrets.masked("refused: a%26bcde, that is a&bcde or a&amp;bcde"),
            "refused: ***, that is *** or ***");
  EXPECT_EQ(secrets.masked("l\xC3\xA4mp-9 of lamps@city, or l%C3%A4mp-9 of lamps%40city"),
            "*** of ***, or *** of ***");
  EXPECT_EQ(secrets.masked("the tower is dark"), "the tower is dark") << "five characters";
  EXPECT_EQ(secrets.masked("no such section"), "no such section");
  EXPECT_EQ(secrets.masked(""), "");
}

TEST(Secrets, AShortOneIsMaskedOnlyAsTheValueOfAName) {
  Secrets secrets;
  secrets.learnParameters("ftpPassword=lamp");
  EXPECT_EQ(secrets.masked("lamp 4100007 does not answer"), "lamp 4100007 does not answer");
  EXPECT_EQ(secrets.masked("ftpPassword=lamp, mailPassword: lamp: the lamp is dark"),
            "ftpPassword=***, mailPassword: ***: the lamp is dark");
}

// Six characters, not six bytes.
TEST(Secrets, CharactersAreCountedWhateverTheyTakeInBytes) {
  Secrets five;
  five.learnParameters("ftpPassword=%C3%A9%C3%A9%C3%A9%C3%A9%C3%A9");
  EXPECT_EQ(five.masked("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"),
            "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9");
  Secrets six;
  six.learnParameters("ftpPassword=%C3%A9%C3%A9%C3%A9%C3%A9%C3%A9%C3%A9");
  EXPECT_EQ(six.masked("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9"), "***");
}

TEST(Secrets, NeighboursAndOverlapsBecomeOneMask) {
  Secrets secrets;
  secrets.learnDocument(parsed("<d FTPPwd=\"abcdef\" mailPassword=\"defghi\"/>"));
  EXPECT_EQ(secrets.masked("xabcdefghix"), "x***x");
  EXPECT_EQ(secrets.masked("abcdefabcdef FTPPwd=abcdef"), "*** FTPPwd=***");
  EXPECT_EQ(secrets.masked(secrets.masked("abcdef FTPPwd=\"abcdef\"")), "*** FTPPwd=\"***\"");
}

TEST(Secrets, ALongOneIsFoundInAllItsParts) {
  std::string secret;
  for (int i = 0; i < 20; ++i) secret += "part" + std::to_string(i) + "\xC3\xA9,";
  Secrets secrets;
  secrets.learnDocument(parsed("<d FTPPwd=\"" + secret + "\"/>"));
  EXPECT_EQ(secrets.masked("it is " + secret + "!"), "it is ***!");
  std::string huge;
  while (huge.size() < Secrets::MostBytes) huge += std::to_string(huge.size()) + "-";
  huge.resize(Secrets::MostBytes);
  secrets.learnDocument(parsed("<d FTPPwd=\"" + huge + "x\"/>"));
  EXPECT_EQ(secrets.masked(huge + "x"), "***x") << "what is over the limit is not looked for";
}

TEST(Secrets, OnlySoManyAreLookedForAndTheOldestGo) {
  Secrets secrets;
  secrets.learnParameters("ftpPassword=secret-own");
  for (std::size_t i = 0; i < Secrets::MostSecrets - 1; ++i)
    secrets.learnParameters("ftpPassword=secret-" + std::to_string(i));
  EXPECT_EQ(secrets.masked("secret-own"), "***");
  secrets.learnParameters("ftpPassword=secret-own");
  secrets.learnParameters("ftpPassword=secret-last");
  EXPECT_EQ(secrets.masked("secret-own secret-last"), "*** ***") << "it was seen again";
  EXPECT_EQ(secrets.masked("secret-0"), "secret-0");
}

TEST(Secrets, WhatMayBeTheBeginningOfOneAtACutEndIsLeftOut) {
  Secrets secrets;
  secrets.learnParameters("ftpPassword=hunter22");
  EXPECT_EQ(secrets.masked("wrong: hunter", true), "wrong: ");
  EXPECT_EQ(secrets.masked("wrong: hunter", false), "wrong: hunter");
  EXPECT_EQ(secrets.masked("wrong: hunter22", true), "wrong: ***");
}

TEST(Secrets, MaskedOnesAreNoSecrets) {
  Secrets secrets;
  secrets.learnDocument(parsed("<d FTPPwd=\"***\" mailUser=\"\"/>"));
  EXPECT_TRUE(secrets.passwordPatterns().empty());
}

}  // namespace
