#include "controller/xml/well_formed.h"

#include <gtest/gtest.h>

namespace lamp::controller {
namespace {

std::string nested(std::size_t depth) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  return text;
}

TEST(WellFormed, TakesWhatIsOneDocument) {
  const char* const good[] = {
      "<a/>",
      "\xEF\xBB\xBF<a/>",
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a b='1' c=\"2\"><!-- x --><d/>text</a>\n",
      "<a b=\"&amp;&lt;&#65;&#x41;\">&apos;&quot;&gt;</a>",
      "<a><![CDATA[<b>&x;]]></a>",
      "<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xA1</a>",
      "<a ><b ></b ></a >",
      "<?pi x?><a/><?pi y?><!-- end -->",
  };
  for (const char* text : good) {
    const auto fault = findXmlFault(text, 64);
    EXPECT_FALSE(fault) << text << ": " << (fault ? fault->text : "");
  }
}

struct BadCase {
  const char* text;
  const char* said;  // part of the fault's text
};

TEST(WellFormed, SaysWhatIsWrong) {
  const BadCase bad[] = {
      {"", "no element"},
      {"   ", "no element"},
      {"x", "text outside"},
      {"<a>", "is not closed"},
      {"<a", "not closed"},
      {"<a></b>", "</a> is expected"},
      {"</a>", "without its element"},
      {"<a/><b/>", "second root"},
      {"<a/>x", "text outside"},
      {"<a/><![CDATA[x]]>", "text outside"},
      {"<!DOCTYPE a><a/>", "document type"},
      {"<!DOCTYPE a [<!ENTITY x \"y\">]><a>&x;</a>", "document type"},
      {"<a>&x;</a>", "entity"},
      {"<a>&</a>", "&amp;"},
      {"<a>&#0;</a>", "entity"},
      {"<a>&#xD800;</a>", "entity"},
      {"<a b=\"1\" b=\"2\"/>", "stands twice"},
      {"<a b/>", "no value"},
      {"<a b=1/>", "quotes"},
      {"<a b=\"<\"/>", "not allowed in an attribute"},
      {"<a b=\"1\"c=\"2\"/>", "blank is missing"},
      {"<a b=\"1/>", "not closed"},
      {"<1/>", "name of an element"},
      {"<a>]]></a>", "not allowed in text"},
      {"<a><!-- -- --></a>", "inside a comment"},
      {"<a><!-- x</a>", "comment is not closed"},
      {"<a>\x01</a>", "no UTF-8"},
      {"<a>\xFF</a>", "no UTF-8"},
      {"<a>\xC0\x80</a>", "no UTF-8"},
      {"<a>\xED\xA0\x80</a>", "no UTF-8"},
      {"<a>\xC3", "no UTF-8"},
      {" <?xml version=\"1.0\"?><a/>", "very beginning"},
      {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>", "encoded in UTF-8"},
  };
  for (const BadCase& each : bad) {
    const auto fault = findXmlFault(each.text, 64);
    ASSERT_TRUE(fault) << each.text;
    EXPECT_NE(fault->text.find(each.said), std::string::npos) << each.text << ": " << fault->text;
  }
}

TEST(WellFormed, NamesLineAndColumn) {
  const auto fault = findXmlFault("<a>\n  <b>\n  </c>\n</a>", 64);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->line, 3U);
  EXPECT_EQ(fault->column, 3U);
}

TEST(WellFormed, CountsTheRootAsDepthOne) {
  EXPECT_FALSE(findXmlFault(nested(64), 64));
  EXPECT_TRUE(findXmlFault(nested(65), 64));
  EXPECT_TRUE(findXmlFault(nested(100000), 64));
}

}  // namespace
}  // namespace lamp::controller
