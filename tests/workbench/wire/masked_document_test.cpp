#include "workbench/wire/masked_document.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using workbench::maskedBeginning;
using workbench::maskedText;
using workbench::Secrets;

constexpr const char* Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

XmlDocument parsed(const std::string& xml) {
  XmlDocument document;
  EXPECT_TRUE(document.Parse(xml)) << xml;
  return document;
}

// The document's text without its declaration.
std::string masked(const std::string& xml, const Secrets& secrets = {}) {
  return maskedText(parsed(xml), secrets).substr(std::string(Declaration).size());
}

TEST(MaskedDocument, HidesTheValuesOfSecretsNamesHoweverShort) {
  EXPECT_EQ(masked("<E01 FTPUser=\"u\" FTPPwd=\"s\" mailPassword=\"p&quot;q\" mailUser=\"m\"/>"),
            "<E01 FTPUser=\"u\" FTPPwd=\"***\" mailPassword=\"***\" mailUser=\"***\"/>");
  EXPECT_EQ(masked("<d><ftpUser>u</ftpUser><ftpPassword>s &lt; t</ftpPassword></d>"),
            "<d><ftpUser>u</ftpUser><ftpPassword>***</ftpPassword></d>");
  EXPECT_EQ(masked("<d><FTPPwd a=\"1\"><b c=\"2\">x</b></FTPPwd><e c=\"2\"/></d>"),
            "<d><FTPPwd a=\"***\"><b c=\"***\">***</b></FTPPwd><e c=\"2\"/></d>");
}

TEST(MaskedDocument, EmptySecretsAndEverythingElseStay) {
  for (const char* same : {"<a FTPPwd=\"\"/>", "<d><ftpPassword/></d>", "<a xFTPPwd=\"s\"/>",
                           "<a FTPPwds=\"s\"/>", "<a>FTPPwd</a>", "<FTPPwd/>"})
    EXPECT_EQ(masked(same), same);
  EXPECT_EQ(maskedText(XmlDocument(), Secrets()), "");
}

// A controller may repeat a password under another name.
TEST(MaskedDocument, HidesWholeValuesInWhichAPasswordStandsInWhateverSpelling) {
  Secrets secrets;
  secrets.learnParameters("ftpPassword=hunter%262");
  EXPECT_EQ(masked("<L01 a=\"is hunter&amp;2\" b=\"hunter%262\" c=\"hunter&amp;amp;2\" "
                   "d=\"hunter\">hunter&amp;2!</L01>",
                   secrets),
            "<L01 a=\"***\" b=\"***\" c=\"***\" d=\"hunter\">***</L01>");
  EXPECT_EQ(masked("<L01 a=\"l\xC3\xA1mpara hunter&amp;2\"/>", secrets), "<L01 a=\"***\"/>");
}

TEST(MaskedDocument, AShortPasswordAndAMailAccountStayUnderOtherNames) {
  Secrets secrets;
  secrets.learnDocument(parsed("<E01 FTPPwd=\"lamp\" mailUser=\"lamps@city\"/>"));
  EXPECT_EQ(masked("<L01 a=\"lamp\" destinationMail=\"lamps@city\"/>", secrets),
            "<L01 a=\"lamp\" destinationMail=\"lamps@city\"/>");
}

TEST(MaskedDocument, TheOriginalStays) {
  const XmlDocument document = parsed("<a FTPPwd=\"s\"><ftpPassword>t</ftpPassword></a>");
  EXPECT_NE(maskedText(document, Secrets()), document.ToString());
  EXPECT_EQ(workbench::maskedCopy(document, Secrets()).Root()->getAttribute("FTPPwd"), u"***");
  EXPECT_EQ(document.Root()->getAttribute("FTPPwd"), u"s");
  EXPECT_EQ(document.Root()->Value("ftpPassword"), u"t");
}

TEST(MaskedDocument, OfALongOneTheBeginningIsWrittenAndSaidToBeCut) {
  std::string xml = "<a FTPPwd=\"s\">";
  for (int i = 0; i < 1'000; ++i) xml += "<b c=\"" + std::to_string(i) + "\"/>";
  const XmlDocument document = parsed(xml + "</a>");
  bool cut = false;
  const XmlDocument beginning = maskedBeginning(document, Secrets(), 100, cut);
  EXPECT_TRUE(cut);
  EXPECT_EQ(beginning.Root()->getAttribute("FTPPwd"), u"***");
  EXPECT_GT(beginning.Root()->ChildCount(), 5U);
  EXPECT_LT(beginning.Root()->ChildCount(), 50U);
  const XmlDocument all = maskedBeginning(document, Secrets(), 100'000, cut);
  EXPECT_FALSE(cut);
  EXPECT_EQ(all.ToString(), maskedText(document, Secrets()));
}

TEST(MaskedDocument, ALongTextIsCutToo) {
  bool cut = false;
  const XmlDocument beginning =
      maskedBeginning(parsed("<a>" + std::string(1'000, 'x') + "</a>"), Secrets(), 100, cut);
  EXPECT_TRUE(cut);
  EXPECT_LT(beginning.Root()->Text().Length(), 101U);
}

}  // namespace
