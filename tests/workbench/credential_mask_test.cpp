#include "workbench/credential_mask.h"

#include <gtest/gtest.h>

namespace {

using workbench::maskedParameters;
using workbench::maskedXml;

TEST(CredentialMask, HidesPasswordsInAttributesAndElements) {
  EXPECT_EQ(maskedXml("<E01 FTPUser=\"u\" FTPPwd=\"secret\" mailPassword=\"p&quot;q\"/>"),
            "<E01 FTPUser=\"u\" FTPPwd=\"***\" mailPassword=\"***\"/>");
  EXPECT_EQ(maskedXml("<d><ftpUser>u</ftpUser><ftpPassword>s &lt; t</ftpPassword></d>"),
            "<d><ftpUser>u</ftpUser><ftpPassword>***</ftpPassword></d>");
  EXPECT_EQ(maskedXml("<d><FTPPwd a=\"1\">x</FTPPwd><FTPPwd>y</FTPPwd></d>"),
            "<d><FTPPwd a=\"1\">***</FTPPwd><FTPPwd>***</FTPPwd></d>");
}

TEST(CredentialMask, EmptyPasswordsAndEverythingElseStay) {
  for (const char* same :
       {"<a FTPPwd=\"\"/>", "<ftpPassword/>", "<ftpPassword></ftpPassword>", "<a xFTPPwd=\"s\"/>",
        "<a FTPPwds=\"s\"/>", "<a>FTPPwd</a>", "FTPPwd", "<ftpPassword", ""})
    EXPECT_EQ(maskedXml(same), same);
}

TEST(CredentialMask, HidesThePasswordAmongTheParameters) {
  EXPECT_EQ(maskedParameters("ftpUser=u&ftpPassword=a%26b"), "ftpUser=u&ftpPassword=***");
  EXPECT_EQ(maskedParameters("ftpPassword=a&x=1&ftpPassword=b&"),
            "ftpPassword=***&x=1&ftpPassword=***&");
  EXPECT_EQ(maskedParameters("ftpPassword="), "ftpPassword=");
  EXPECT_EQ(maskedParameters("xftpPassword=a"), "xftpPassword=a");
  EXPECT_EQ(maskedParameters(""), "");
}

TEST(CredentialMask, AnErrorThatRepeatsAPasswordIsShownWithoutIt) {
  XmlDocument document("deviceCfg");
  document.Root()->NewChild("E01").setAttribute("mailPassword", u"l\u00E4mp-9");
  document.Root()->NewChild("main").NewChild("FTPPwd", u"tower");
  host::ExchangeRequest request;
  request.uriParameters = u"address=h&ftpPassword=a%26bc&x=1";
  request.document = &document;
  const auto masked = [&](const char16_t* error) {
    return workbench::maskedError(error, request).ToUtf8();
  };
  EXPECT_EQ(masked(u"refused: ftpPassword=a%26bc, that is a&bc"),
            "refused: ftpPassword=***, that is ***");
  EXPECT_EQ(masked(u"l\u00E4mp-9 is too short, tower too"), "*** is too short, *** too");
  EXPECT_EQ(masked(u"no such section"), "no such section");
  EXPECT_EQ(masked(u""), "");
  request.uriParameters = u"address=h&ftpPassword=s";
  EXPECT_EQ(masked(u"no such section"), "no such section") << "a letter is in every text";
}

}  // namespace
