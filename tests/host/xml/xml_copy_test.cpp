#include <gtest/gtest.h>

#include <memory>

#include "host/xml/xml_document.h"
#include "tests/support/printers.h"
#include "tests/support/xml_compare.h"

using Node = XmlDocument::XmlNode;

namespace {

TEST(XmlCopy, TakesTagAttributesTextAndChildrenAlong) {
  const XmlDocument source = support::parsedXml("<L04 a=\"1\" b=\"ñ\">t<c><d/></c><e>x</e></L04>");
  XmlDocument target = support::parsedXml("<deviceCfg><old z=\"9\"><y/></old></deviceCfg>");
  *target.Root()->FirstChild() = *source.Root();
  EXPECT_XML_EQ("<deviceCfg><L04 a=\"1\" b=\"ñ\">t<c><d/></c><e>x</e></L04></deviceCfg>", target);
  EXPECT_XML_EQ("<L04 a=\"1\" b=\"ñ\">t<c><d/></c><e>x</e></L04>", source);
}

TEST(XmlCopy, ThePlaceAmongTheSiblingsStays) {
  const XmlDocument source = support::parsedXml("<n v=\"new\"/>");
  XmlDocument target = support::parsedXml("<a><b/><c/><d/></a>");
  *target.Root()->Node("c") = *source.Root();
  EXPECT_XML_EQ("<a><b/><n v=\"new\"/><d/></a>", target);
}

TEST(XmlCopy, CopiesAreIndependent) {
  XmlDocument source = support::parsedXml("<a b=\"1\"><c/></a>");
  XmlDocument copy("x");
  *copy.Root() = *source.Root();
  source.Root()->setAttribute("b", u"2");
  source.Root()->Node("c")->NewChild("d");
  copy.Root()->setAttribute("e", u"3");
  EXPECT_XML_EQ("<a b=\"2\"><c><d/></c></a>", source);
  EXPECT_XML_EQ("<a b=\"1\" e=\"3\"><c/></a>", copy);
}

TEST(XmlCopy, FewerAttributesReplaceMore) {
  const XmlDocument source = support::parsedXml("<a x=\"1\"/>");
  XmlDocument target = support::parsedXml("<a b=\"1\" c=\"2\" d=\"3\"/>");
  *target.Root() = *source.Root();
  EXPECT_XML_EQ("<a x=\"1\"/>", target);
  *target.Root() = *support::parsedXml("<a/>").Root();
  EXPECT_XML_EQ("<a/>", target);
}

TEST(XmlCopy, ToItselfChangesNothing) {
  XmlDocument document = support::parsedXml("<a b=\"1\"><c/></a>");
  Node& root = *document.Root();
  const Node& same = root;
  root = same;
  EXPECT_XML_EQ("<a b=\"1\"><c/></a>", document);
}

TEST(XmlCopy, BetweenSiblingsOfOneDocument) {
  XmlDocument document = support::parsedXml("<r><a x=\"1\"><c/></a><b/></r>");
  *document.Root()->Node("b") = *document.Root()->Node("a");
  EXPECT_XML_EQ("<r><a x=\"1\"><c/></a><a x=\"1\"><c/></a></r>", document);
}

TEST(XmlCopy, ADescendantIntoItsAncestor) {
  XmlDocument document = support::parsedXml("<a x=\"1\"><b><c y=\"ñ\"><d/>t</c></b><e/></a>");
  *document.Root() = *document.Root()->Node("b/c");
  EXPECT_XML_EQ("<c y=\"ñ\">t<d/></c>", document);
}

TEST(XmlCopy, AnAncestorIntoItsDescendant) {
  XmlDocument document = support::parsedXml("<a x=\"ñ\"><b><c/></b></a>");
  *document.Root()->Node("b/c") = *document.Root();
  EXPECT_XML_EQ("<a x=\"ñ\"><b><a x=\"ñ\"><b><c/></b></a></b></a>", document);
}

TEST(XmlCopy, OutlivesTheDocumentItCameFrom) {
  XmlDocument last("x");
  {
    XmlDocument second("y");
    {
      XmlDocument first =
          support::parsedXml("<a b=\"ascii\" c=\"wide ñ\"><d>text</d><e>wide €</e></a>");
      first.Root()->setAttribute("f", u"set later");
      *second.Root() = *first.Root();
    }
    second.Root()->setAttribute("g", u"in the second");
    *last.Root() = *second.Root();
  }
  EXPECT_XML_EQ(
      "<a b=\"ascii\" c=\"wide ñ\" f=\"set later\" g=\"in the second\">"
      "<d>text</d><e>wide €</e></a>",
      last);
}

TEST(XmlCopy, OutlivesADocumentThatIsClearedOrParsedAnew) {
  XmlDocument source = support::parsedXml("<a b=\"ascii\" c=\"ñ\"/>");
  XmlDocument first("x");
  XmlDocument second("y");
  *first.Root() = *source.Root();
  source.Clear();
  ASSERT_TRUE(source.Parse("<other/>"));
  *second.Root() = *first.Root();
  first.Create("again");
  EXPECT_XML_EQ("<a b=\"ascii\" c=\"ñ\"/>", second);
}

TEST(XmlCopy, DeepTreesNeedNoDeepStack) {
  XmlDocument document("a");
  Node* at = document.Root();
  for (int i = 0; i < 200000; ++i) at = &at->NewChild("a");
  XmlDocument copy("x");
  *copy.Root() = *document.Root();
  EXPECT_TRUE(*copy.Root() == *document.Root());
  EXPECT_GT(copy.ToString().size(), 200000U * 3);
}

TEST(XmlCompare, IgnoresTheOrderOfAttributesAndNothingElse) {
  const char* const base = "<a b=\"1\" c=\"2\">t<d/><e x=\"\"/></a>";
  const XmlDocument document = support::parsedXml(base);
  struct Row {
    const char* xml;
    bool equal;
  };
  const Row rows[] = {
      {base, true},
      {"<a c=\"2\" b=\"1\">t<d/><e x=\"\"/></a>", true},
      {"<A b=\"1\" c=\"2\">t<d/><e x=\"\"/></A>", false},
      {"<a b=\"1\">t<d/><e x=\"\"/></a>", false},
      {"<a b=\"1\" c=\"2\" f=\"\">t<d/><e x=\"\"/></a>", false},
      {"<a b=\"1\" c=\"3\">t<d/><e x=\"\"/></a>", false},
      {"<a b=\"2\" c=\"1\">t<d/><e x=\"\"/></a>", false},
      {"<a b=\"1\" C=\"2\">t<d/><e x=\"\"/></a>", false},
      {"<a b=\"1\" c=\"2\"><d/><e x=\"\"/></a>", false},
      {"<a b=\"1\" c=\"2\">t <d/><e x=\"\"/></a>", false},
      {"<a b=\"1\" c=\"2\">T<d/><e x=\"\"/></a>", false},
      {"<a b=\"1\" c=\"2\">t<e x=\"\"/><d/></a>", false},
      {"<a b=\"1\" c=\"2\">t<d/></a>", false},
      {"<a b=\"1\" c=\"2\">t<d/><e x=\"\"/><f/></a>", false},
      {"<a b=\"1\" c=\"2\">t<d><f/></d><e x=\"\"/></a>", false},
      {"<a b=\"1\" c=\"2\">t<d><e x=\"\"/></d></a>", false},
      {"<a b=\"1\" c=\"2\">t<d/><e/></a>", false},
  };
  for (const Row& row : rows) {
    const XmlDocument other = support::parsedXml(row.xml);
    EXPECT_EQ(*document.Root() == *other.Root(), row.equal) << row.xml;
    EXPECT_EQ(*other.Root() == *document.Root(), row.equal) << row.xml;
  }
}

TEST(XmlCompare, ManyAttributesInAnotherOrderAreEqualAndOneThatDiffersIsSeen) {
  XmlDocument document("a");
  XmlDocument reversed("a");
  for (int i = 0; i < 1000; ++i) {
    const XCBasicString value = XCBasicString::Format(u"%d", i);
    document.Root()->setAttribute(host::XmlName("n" + std::to_string(i)), value);
    reversed.Root()->setAttribute(host::XmlName("n" + std::to_string(999 - i)),
                                  XCBasicString::Format(u"%d", 999 - i));
  }
  EXPECT_TRUE(*document.Root() == *reversed.Root());
  for (const char* name : {"n0", "n499", "n999"}) {
    const XCBasicString before = reversed.Root()->getAttribute(name);
    reversed.Root()->setAttribute(name, u"other");
    EXPECT_FALSE(*document.Root() == *reversed.Root());
    reversed.Root()->setAttribute(name, before);
    reversed.Root()->renameAttribute(name, "another");
    EXPECT_FALSE(*document.Root() == *reversed.Root());
    reversed.Root()->renameAttribute("another", name);
  }
  EXPECT_TRUE(*reversed.Root() == *document.Root());
}

TEST(XmlCompare, TextsAreEqualHoweverTheyAreKept) {
  const XmlDocument parsed = support::parsedXml("<a b=\"x&amp;y\" c=\"ñ\">1 &lt; 2</a>");
  XmlDocument made("a");
  made.Root()->setAttribute("b", u"x&y");
  made.Root()->setAttribute("c", u"ñ");
  made.Root()->SetText(u"1 < 2");
  EXPECT_TRUE(*parsed.Root() == *made.Root());
}

TEST(XmlCompare, SiblingsOfTheElementsDoNotCount) {
  const XmlDocument document = support::parsedXml("<r><a><b/></a><a><b/></a><c/></r>");
  const Node* first = document.Root()->FirstChild();
  EXPECT_TRUE(*first == *first->NextSibling());
  EXPECT_TRUE(*first->NextSibling() == *first);
}

}  // namespace
