#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/printers.h"
#include "tests/support/xml_compare.h"

using host::XmlName;
using Node = XmlDocument::XmlNode;

namespace {

bool isKnown(const char* name) {
  return !XmlName::find(name).text().empty();
}

TEST(XmlNames, ThoseThatADocumentBringsGoWithIt) {
  {
    const XmlDocument document = support::parsedXml("<goesElement goesAttribute=''/>");
    EXPECT_TRUE(isKnown("goesElement"));
    EXPECT_EQ(document.Root()->TagName(), XmlName::find("goesElement"));
    EXPECT_TRUE(document.Root()->hasAttribute(XmlName::find("goesAttribute")));
  }
  EXPECT_FALSE(isKnown("goesElement"));
  EXPECT_FALSE(isKnown("goesAttribute"));
}

TEST(XmlNames, ARefusedDocumentLeavesNone) {
  XmlDocument document;
  EXPECT_FALSE(document.Parse("<refusedElement refusedAttribute='&x;'/>"));
  EXPECT_FALSE(isKnown("refusedElement"));
}

TEST(XmlNames, ThoseOfTheProgramStay) {
  EXPECT_EQ(XmlName("ofTheProgram").text(), "ofTheProgram");
  EXPECT_TRUE(isKnown("ofTheProgram"));
  { const XmlDocument document = support::parsedXml("<ofTheProgram/>"); }
  EXPECT_TRUE(isKnown("ofTheProgram"));
}

TEST(XmlNames, OneThatTheProgramLearnsAfterTheDocumentIsTheSameAndStays) {
  {
    const XmlDocument document = support::parsedXml("<a learntLater='1'/>");
    const XmlName learnt("learntLater");
    EXPECT_EQ(XmlName("learntLater"), learnt);
    EXPECT_EQ(document.Root()->getAttribute(learnt), u"1");
    EXPECT_EQ(document.Root()->attributeName(0), learnt);
  }
  EXPECT_TRUE(isKnown("learntLater"));
  EXPECT_XML_EQ("<learntLater/>", XmlDocument("learntLater"));
}

TEST(XmlNames, LookingForOneKeepsNothing) {
  EXPECT_EQ(XmlName::find("lookedFor").text(), "");
  EXPECT_FALSE(isKnown("lookedFor"));
  const XmlDocument document = support::parsedXml("<a b='1'/>");
  EXPECT_FALSE(document.Root()->hasAttribute(XmlName::find("lookedFor")));
  EXPECT_EQ(document.Root()->Node("lookedFor"), nullptr);
  EXPECT_FALSE(isKnown("lookedFor"));
}

TEST(XmlNames, ACopyKeepsThoseOfItsOriginal) {
  XmlDocument copy("copy");
  XmlDocument second("copy");
  {
    const XmlDocument document = support::parsedXml("<kept1 kept2='x'><kept3/></kept1>");
    *copy.Root() = *document.Root();
    *second.Root() = *copy.Root();
  }
  copy.Clear();
  EXPECT_XML_EQ("<kept1 kept2=\"x\"><kept3/></kept1>", second);
  second.Clear();
  EXPECT_FALSE(isKnown("kept1"));
}

TEST(XmlNames, GivenToAnotherDocumentTheyAreKeptByIt) {
  XmlDocument other("a");
  {
    XmlDocument document =
        support::parsedXml("<given1 given2='x' given3='y' given4='z'><given5/><given6/></given1>");
    const Node& root = *document.Root();
    other.Root()->NewChild(root.TagName()).setAttribute(root.attributeName(0), u"1");
    other.Root()->copyAttribute(root, root.attributeName(1));
    other.Root()->setAttribute("old", u"2");
    other.Root()->renameAttribute("old", root.attributeName(2));
    other.Root()->SetTag(root.FirstChild()->TagName());
    document.Create(root.FirstChild()->NextSibling()->TagName());
    EXPECT_XML_EQ("<given6/>", document);
  }
  EXPECT_XML_EQ("<given5 given3=\"y\" given4=\"2\"><given1 given2=\"1\"/></given5>", other);
}

TEST(XmlNames, AreTheSameInAllDocuments) {
  const XmlDocument one = support::parsedXml("<a><same1 same2='1'/><same3/></a>");
  const XmlDocument other = support::parsedXml("<a><same1 same2='1'/><same3/></a>");
  EXPECT_TRUE(*one.Root() == *other.Root());
  EXPECT_EQ(one.Root()->FirstChild()->TagName(), other.Root()->FirstChild()->TagName());
  const XmlDocument third = support::parsedXml("<a><same1 same2='1'/><same4/></a>");
  EXPECT_FALSE(*one.Root() == *third.Root());
}

std::string manyNames(int from) {
  std::string xml = "<r>";
  for (int i = 0; i < 4000; ++i) xml += "<many" + std::to_string(from + i) + "/>";
  return xml + "</r>";
}

TEST(XmlNames, ManyDocumentsOneAfterTheOtherTakeNoMoreNumbersThanOne) {
  std::uint32_t highest = 0;
  for (int round = 0; round < 100; ++round) {
    const XmlDocument document = support::parsedXml(manyNames(4000 * round));
    for (const Node& child : document.Root()->Children())
      highest = std::max(highest, child.TagName().id() & 0x7FFFFFFFU);
  }
  EXPECT_LT(highest, 8192U);
  EXPECT_FALSE(isKnown("many4000"));
}

TEST(XmlNames, OneThatManyDocumentsBringStaysAsLongAsTheLastOfThem) {
  std::vector<XmlDocument> documents;
  for (int i = 0; i < 50; ++i) documents.push_back(support::parsedXml("<shared1 shared2=''/>"));
  while (documents.size() > 1) {
    documents.erase(documents.begin());
    ASSERT_EQ(documents.back().Root()->Tag(), "shared1");
  }
  documents.clear();
  EXPECT_FALSE(isKnown("shared1"));
}

// Each of the two meets the name after the other had it.
TEST(XmlNames, TwoDocumentsMayGiveOneBackAndForthForEver) {
  XmlDocument one("a");
  XmlDocument other("a");
  {
    const XmlDocument brings = support::parsedXml("<backAndForth/>");
    for (int i = 0; i < 1000; ++i)
      for (XmlDocument* document : {&one, &other}) {
        document->Root()->setAttribute(brings.Root()->TagName(), u"x");
        document->Root()->eraseAttribute(brings.Root()->TagName());
      }
  }
  EXPECT_TRUE(isKnown("backAndForth"));
  one.Clear();
  EXPECT_TRUE(isKnown("backAndForth"));
  other.Clear();
  EXPECT_FALSE(isKnown("backAndForth"));
}

}  // namespace
