#include "workbench/wire/kept_document.h"

#include <gtest/gtest.h>

namespace {

using workbench::KeptDocument;
using workbench::Secrets;

KeptDocument kept(const char* xml, const std::shared_ptr<const Secrets>& secrets) {
  XmlDocument document;
  EXPECT_TRUE(document.Parse(xml));
  return {std::move(document), secrets, 100};
}

TEST(KeptDocument, IsWrittenWithWhatIsKnownWhenSomebodyLooks) {
  const auto secrets = std::make_shared<Secrets>();
  const KeptDocument document = kept("<a b=\"hunter22\" FTPPwd=\"s\"/>", secrets);
  EXPECT_NE(document.text().find("b=\"hunter22\" FTPPwd=\"***\""), std::string::npos);
  secrets->learnParameters("ftpPassword=hunter22");
  EXPECT_NE(document.text().find("b=\"***\""), std::string::npos);
  EXPECT_EQ(document.masked().Root()->getAttribute("b"), u"***");
  bool cut = true;
  EXPECT_NE(document.beginning(1'000, cut).find("b=\"***\""), std::string::npos);
  EXPECT_FALSE(cut);
}

TEST(KeptDocument, ADroppedOneLeavesANote) {
  KeptDocument document = kept("<a/>", std::make_shared<Secrets>());
  EXPECT_TRUE(document.isKept());
  EXPECT_EQ(document.bytes(), 100U);
  const KeptDocument copy = document;
  document.drop();
  EXPECT_FALSE(document.isKept());
  EXPECT_EQ(document.bytes(), 0U);
  EXPECT_EQ(document.text(), "(no longer kept)");
  EXPECT_EQ(document.masked().Root(), nullptr);
  EXPECT_TRUE(copy.isKept()) << "who holds it has it";
}

TEST(KeptDocument, NoDocumentIsNoText) {
  KeptDocument none;
  none.drop();
  bool cut = true;
  EXPECT_EQ(none.text(), "");
  EXPECT_EQ(none.beginning(100, cut), "");
  EXPECT_FALSE(cut);
  EXPECT_EQ(KeptDocument::tooLarge().text(), "(too large to be kept)");
}

TEST(KeptDocument, CountsElementsAttributesAndTheWholeBufferOfItsTexts) {
  XmlDocument document;
  ASSERT_TRUE(document.Parse("<a><b c=\"1\"/>" + std::string(10'000, ' ') + "<d/></a>"));
  EXPECT_GE(workbench::memoryOf(document, 1'000'000), 10'000U + 3 * 64);
  EXPECT_LT(workbench::memoryOf(document, 1'000'000), 40'000U);
  EXPECT_EQ(workbench::memoryOf(XmlDocument(), 100), 0U);
}

}  // namespace
