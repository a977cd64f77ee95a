#include "workbench/unkept_content.h"

#include <gtest/gtest.h>

#include "host/xml/xml_document.h"
#include "tests/support/texts.h"

namespace {

using workbench::UnkeptContent;
using workbench::unkeptContentOf;

TEST(UnkeptContent, IsFoundWithTheLineOfTheFirstOfItsKind) {
  struct Row {
    const char* xml;
    UnkeptContent unkept;
  };
  const Row rows[] = {
      {"<a/>", {}},
      {"\xEF\xBB\xBF<?xml version='1.0'?>\n<a>\n  <b x='1'/>\n  <c>text</c>\n</a>\n", {}},
      {"<a><!-- one --></a>", {.comment = 1}},
      {"<?xml version='1.0'?>\n<!-- one -->\n<a/>\n<!-- two -->", {.comment = 2}},
      {"<a>\n<b>x<!-- one -->y</b></a>", {.comment = 2}},
      {"<a/>\n<?target data?>", {.instruction = 2}},
      {"<?xml-stylesheet href='x'?><a/>", {.instruction = 1}},
      {"<a>in front<b/></a>", {}},
      {"<a>\n<b/>\nbehind</a>", {.movedText = 2}},
      {"<a><b/>\n<![CDATA[ ]]></a>", {.movedText = 2}},
      {"<a><b/><![CDATA[]]></a>", {}},
      {"<a><![CDATA[<!-- <? <b/> ]]></a>", {}},
      {"<a x='<!-- > -->' y=\"'<?\"><b/></a>", {}},
      {"<a x='/'>t</a>", {}},
      {"<a><b><c/></b>t<d/></a>", {.movedText = 1}},
      {"<a><b>t</b><d>t</d></a>", {}},
      {"<a><!-- <b/> -->t</a>", {.comment = 1}},
      {"<a>\n<b/><?p?>\nt\n<!--c--></a>", {.comment = 4, .instruction = 2, .movedText = 2}},
  };
  for (const Row& row : rows) {
    const UnkeptContent found = unkeptContentOf(row.xml);
    EXPECT_EQ(found.comment, row.unkept.comment) << row.xml;
    EXPECT_EQ(found.instruction, row.unkept.instruction) << row.xml;
    EXPECT_EQ(found.movedText, row.unkept.movedText) << row.xml;
    EXPECT_EQ(found.any(), row.unkept.any()) << row.xml;
  }
}

// What is told is exactly what a load and a save would lose.
TEST(UnkeptContent, IsNothingInWhatADocumentWrites) {
  for (const char* xml : {"<a>t<b/>t<!-- c --><?p?></a>", "<a> <b x=\"&lt;!--\"/>&#32;</a>"}) {
    XmlDocument document;
    ASSERT_TRUE(document.Parse(xml)) << xml;
    EXPECT_FALSE(unkeptContentOf(document.ToString()).any()) << document.ToString();
  }
}

TEST(UnkeptContent, OfWhatIsNoDocumentEndsAllTheSame) {
  for (const char* text : {"", "<", "<!--", "<![CDATA[", "<?", "<?xml", "</a></b>x", "<a", "<a x='",
                           "x", "<a>x</a></a></a>"})
    unkeptContentOf(text);
}

TEST(UnkeptContent, IsListedForAPerson) {
  support::texts();
  EXPECT_EQ((UnkeptContent{.comment = 3, .instruction = 4, .movedText = 5}).text(),
            u"[60461](3), [60462](4), [60463](5)");
  EXPECT_EQ((UnkeptContent{.instruction = 4}).text(), u"[60462](4)");
  EXPECT_EQ(UnkeptContent{}.text(), u"");
}

}  // namespace
