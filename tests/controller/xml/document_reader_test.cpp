#include "controller/xml/document_reader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace lamp::controller {
namespace {

std::string nested(std::size_t depth) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  return text;
}

std::string attributes(std::size_t count) {
  std::string text = "<a";
  for (std::size_t i = 0; i < count; ++i) text += " n" + std::to_string(i) + "=''";
  return text + "/>";
}

std::optional<XmlFault> faultOf(const std::string& text) {
  pugi::xml_document document;
  return readXml(text, MostDepth, document);
}

// The document as it was read, printed.
std::string readBack(const std::string& text) {
  pugi::xml_document document;
  if (const auto fault = readXml(text, MostDepth, document)) return fault->message();
  std::ostringstream out;
  document.save(out, "", pugi::format_raw | pugi::format_no_declaration);
  return out.str();
}

TEST(DocumentReader, ReadsWhatIsOneDocument) {
  const std::pair<const char*, const char*> good[] = {
      {"<a/>", "<a/>"},
      {"\xEF\xBB\xBF<a/>", "<a/>"},
      {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a b='1' c=\"2\"><!-- x --><d/>text</a>\n",
       "<a b=\"1\" c=\"2\"><d/>text</a>"},
      {"<a b=\"&amp;&lt;&#65;&#x41;\">&apos;&quot;&gt;</a>", "<a b=\"&amp;&lt;AA\">'\"&gt;</a>"},
      {"<a><![CDATA[<b>&x;]]></a>", "<a>&lt;b&gt;&amp;x;</a>"},
      {"<a> <![CDATA[ ]]> </a>", "<a>   </a>"},
      {"<a>\n  <b/>\n</a>", "<a><b/></a>"},
      {"<a>one\r\ntwo&#10;three</a>", "<a>one\ntwo\nthree</a>"},
      {"<a b=\"one\ntwo\"/>", "<a b=\"one two\"/>"},
      {"<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA1</a>",
       "<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA1</a>"},
      {"<a ><b ></b ></a >", "<a><b/></a>"},
      {"<?pi x?><a/><?pi y?><!-- end -->", "<a/>"},
  };
  for (const auto& [text, printed] : good) EXPECT_EQ(readBack(text), printed) << text;
}

TEST(DocumentReader, RefusesWhatIsNoDocument) {
  const char* const bad[] = {"",
                             "   ",
                             "x",
                             "<a>",
                             "<a",
                             "<a></b>",
                             "</a>",
                             "<a/><b/>",
                             "<a/>x",
                             "<a/><![CDATA[x]]>",
                             "<a>&x;</a>",
                             "<a>&</a>",
                             "<a>&#0;</a>",
                             "<a>&#xD800;</a>",
                             "<a b=\"1\" b=\"2\"/>",
                             "<a b/>",
                             "<a b=1/>",
                             "<a b=\"<\"/>",
                             "<a b=\"1\"c=\"2\"/>",
                             "<a b=\"1/>",
                             "<1/>",
                             "<a>]]></a>",
                             "<a><!-- -- --></a>",
                             "<a><!-- x</a>",
                             "<a>\x01</a>",
                             "<a>\xFF</a>",
                             "<a>\xC0\x80</a>",
                             "<a>\xED\xA0\x80</a>",
                             "<a>\xC3",
                             " <?xml version=\"1.0\"?><a/>",
                             "<a><?xml version='1.0'?></a>",
                             "<?xml?><a/>",
                             "<?XML x?><a/>",
                             "<?xml version='1.0' bogus='1'?><a/>",
                             "<\xC3\x97/>"};
  for (const char* text : bad) {
    const auto fault = faultOf(text);
    ASSERT_TRUE(fault) << text;
    EXPECT_FALSE(fault->text.empty()) << text;
  }
}

TEST(DocumentReader, RefusesDocumentTypesAndOtherEncodings) {
  for (const char* text : {"<!DOCTYPE a><a/>", "<!DOCTYPE a [<!ENTITY x \"y\">]><a>&x;</a>",
                           "<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><a/>"}) {
    const auto fault = faultOf(text);
    ASSERT_TRUE(fault) << text;
    EXPECT_EQ(fault->text, "a document type declaration is not accepted; send without it");
  }
  const auto fault = faultOf("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->text, "the document must be encoded in UTF-8");
}

TEST(DocumentReader, NamesLineAndColumn) {
  const auto fault = faultOf("<a>\n  <b>\n  </c>\n</a>");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->message(), "line 3, column 3: mismatched tag");
}

TEST(DocumentReader, CountsTheRootAsDepthOne) {
  EXPECT_FALSE(faultOf(nested(64)));
  EXPECT_EQ(faultOf(nested(65))->text, "elements are nested deeper than 64");
  EXPECT_TRUE(faultOf(nested(100000)));
}

TEST(DocumentReader, TakesFourThousandAndNinetySixAttributesOfAnElement) {
  EXPECT_FALSE(faultOf(attributes(4096)));
  EXPECT_EQ(faultOf(attributes(4097))->text, "an element has more than 4096 attributes");
  EXPECT_TRUE(faultOf(attributes(100000)));
}

TEST(DocumentReader, KeepsALongTextThatComesInManyPieces) {
  std::string text;
  for (int i = 0; i < 10000; ++i) text += "line " + std::to_string(i) + "\n";
  pugi::xml_document document;
  ASSERT_FALSE(readXml("<a>" + text + "</a>", MostDepth, document));
  EXPECT_EQ(document.child("a").text().get(), text);
}

// The suite is fetched, never committed; where it is missing there is nothing to compare.
TEST(DocumentReader, TakesNoDocumentOfTheConformanceSuiteThatAnotherReaderRefuses) {
  namespace fs = std::filesystem;
  if (!fs::is_directory(LAMP_XML_SUITE)) GTEST_SKIP() << "no suite at " << LAMP_XML_SUITE;
  std::string command = "xmllint --noout --nonet";
  int taken = 0;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(LAMP_XML_SUITE)) {
    if (entry.path().extension() != ".xml") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    if (faultOf(text.str())) continue;
    command += " '" + entry.path().string() + "'";
    ++taken;
  }
  EXPECT_GT(taken, 500);
  EXPECT_EQ(std::system((command + " 2>/dev/null").c_str()), 0);
}

}  // namespace
}  // namespace lamp::controller
