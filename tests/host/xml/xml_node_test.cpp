#include <gtest/gtest.h>

#include "host/xml/xml_document.h"
#include "tests/support/printers.h"
#include "tests/support/xml_compare.h"

using Node = XmlDocument::XmlNode;

namespace {

// --- attributes

TEST(XmlAttributes, AnAbsentOneReadsAsTheDefault) {
  const XmlDocument document = support::parsedXml("<a b=\"\"/>");
  EXPECT_EQ(document.Root()->getAttribute("c"), u"");
  EXPECT_EQ(document.Root()->getAttribute("c", u"default"), u"default");
  EXPECT_EQ(document.Root()->getAttribute("b", u"default"), u"") << "present, though empty";
  EXPECT_FALSE(document.Root()->hasAttribute("c"));
  EXPECT_TRUE(document.Root()->hasAttribute("b"));
  EXPECT_TRUE(document.Root()->attribute("c").empty());
}

TEST(XmlAttributes, SettingChangesInPlaceOrAppends) {
  XmlDocument document = support::parsedXml("<a b=\"1\" c=\"2\" d=\"3\"/>");
  document.Root()->setAttribute("c", u"zwei ü");
  document.Root()->setAttribute("e", u"5");
  EXPECT_XML_EQ("<a b=\"1\" c=\"zwei ü\" d=\"3\" e=\"5\"/>", document);
}

TEST(XmlAttributes, NamesDifferByCase) {
  XmlDocument document = support::parsedXml("<a Id=\"1\" id=\"2\"/>");
  EXPECT_EQ(document.Root()->getAttribute("Id"), u"1");
  EXPECT_EQ(document.Root()->getAttribute("id"), u"2");
  EXPECT_FALSE(document.Root()->hasAttribute("ID"));
}

TEST(XmlAttributes, ErasingKeepsTheOthersInOrder) {
  XmlDocument document = support::parsedXml("<a b=\"1\" c=\"2\" d=\"3\"/>");
  EXPECT_TRUE(document.Root()->eraseAttribute("c"));
  EXPECT_FALSE(document.Root()->eraseAttribute("c"));
  EXPECT_XML_EQ("<a b=\"1\" d=\"3\"/>", document);
  EXPECT_TRUE(document.Root()->eraseAttribute("b"));
  EXPECT_TRUE(document.Root()->eraseAttribute("d"));
  EXPECT_XML_EQ("<a/>", document);
  document.Root()->setAttribute("c", u"again");
  EXPECT_XML_EQ("<a c=\"again\"/>", document);
}

TEST(XmlAttributes, RenamingKeepsPlaceAndText) {
  XmlDocument document = support::parsedXml("<a b=\"1\" Id=\"2\" d=\"3\"/>");
  EXPECT_TRUE(document.Root()->renameAttribute("Id", "nodeId"));
  EXPECT_XML_EQ("<a b=\"1\" nodeId=\"2\" d=\"3\"/>", document);
  EXPECT_FALSE(document.Root()->renameAttribute("Id", "nodeId"));
  EXPECT_TRUE(document.Root()->renameAttribute("b", "b"));
  EXPECT_XML_EQ("<a b=\"1\" nodeId=\"2\" d=\"3\"/>", document);
}

TEST(XmlAttributes, RenamingOntoAnExistingNameReplacesThatOne) {
  XmlDocument before = support::parsedXml("<a nodeId=\"old\" Id=\"new\" c=\"\"/>");
  EXPECT_TRUE(before.Root()->renameAttribute("Id", "nodeId"));
  EXPECT_XML_EQ("<a nodeId=\"new\" c=\"\"/>", before);
  XmlDocument behind = support::parsedXml("<a Id=\"new\" c=\"\" nodeId=\"old\"/>");
  EXPECT_TRUE(behind.Root()->renameAttribute("Id", "nodeId"));
  EXPECT_XML_EQ("<a nodeId=\"new\" c=\"\"/>", behind);
}

TEST(XmlAttributes, ManyAreKept) {
  XmlDocument document("a");
  for (int i = 0; i < 3000; ++i)
    document.Root()->setAttribute(std::string_view("x" + std::to_string(i)), host::decimal(i));
  EXPECT_EQ(document.Root()->attributeCount(), 3000U);
  EXPECT_EQ(document.Root()->getAttribute("x2999"), u"2999");
  EXPECT_EQ(document.Root()->getAttribute("x0"), u"0");
}

TEST(XmlAttributes, CopyingSharesTheTextWithADocumentThatMayGo) {
  XmlDocument target("a");
  {
    const XmlDocument source = support::parsedXml("<s narrow=\"ascii\" wide=\"añb\" empty=\"\"/>");
    target.Root()->copyAttribute(*source.Root(), "narrow");
    target.Root()->copyAttribute(*source.Root(), "wide");
    target.Root()->copyAttribute(*source.Root(), "empty");
    target.Root()->copyAttribute(*source.Root(), "absent");
  }
  EXPECT_XML_EQ("<a narrow=\"ascii\" wide=\"añb\" empty=\"\" absent=\"\"/>", target);
}

TEST(XmlAttributes, AnAttributeIsFoundWhereverThePlaceToLookAtFirstPoints) {
  const XmlDocument document = support::parsedXml("<r><a x='1' y='2'/><b y='3'/><c z='4'/></r>");
  const Node& first = *document.Root()->FirstChild();
  const Node& second = *first.NextSibling();
  std::size_t place = 7;
  EXPECT_TRUE(first.attribute("y", place) == u"2");
  EXPECT_EQ(place, 1U);
  EXPECT_TRUE(first.attribute("y", place) == u"2");
  EXPECT_TRUE(second.attribute("y", place) == u"3");
  EXPECT_EQ(place, 0U);
  EXPECT_TRUE(second.NextSibling()->attribute("y", place).empty());
  EXPECT_EQ(place, 0U);
}

TEST(XmlAttributes, AttributesThatAreTakenLeaveTheOthersInTheirOrder) {
  for (const char* xml : {"<r a='1' b='2' x='3' y='4'/>", "<r a='1' x='3' y='4' b='2'/>",
                          "<r x='3' y='4' a='1' b='2'/>", "<r y='4' a='1' x='3' b='2'/>"}) {
    XmlDocument document = support::parsedXml(xml);
    Node& child = document.Root()->NewChild("c");
    const host::XmlName taken[] = {"x", "y"};
    child.takeAttributes(*document.Root(), taken);
    EXPECT_XML_EQ("<r a='1' b='2'><c x='3' y='4'/></r>", document) << xml;
    EXPECT_TRUE(child.attributeText(0) == u"3") << xml;
    EXPECT_TRUE(document.Root()->attributeText(0) == u"1") << xml;
  }
}

TEST(XmlAttributes, BothElementsTakeMoreAttributesAfterSomeMovedFromOneToTheOther) {
  XmlDocument document = support::parsedXml("<r a='1' x='2' y='3' b='4'/>");
  Node& child = document.Root()->NewChild("c");
  const host::XmlName taken[] = {"x", "y"};
  child.takeAttributes(*document.Root(), taken);
  for (const char* name : {"d", "e", "f"}) {
    document.Root()->setAttribute(name, u"r");
    child.setAttribute(name, u"c");
  }
  EXPECT_XML_EQ("<r a='1' b='4' d='r' e='r' f='r'><c x='2' y='3' d='c' e='c' f='c'/></r>",
                document);
}

TEST(XmlText, ComparesOrdinallyWhateverItsWidth) {
  const XmlDocument document =
      support::parsedXml("<r a=\"abc\" b=\"abd\" c=\"ab\" d=\"abñ\" e=\"abc\" f=\"\"/>");
  const Node& root = *document.Root();
  EXPECT_LT(root.attribute("a").compare(root.attribute("b")), 0);
  EXPECT_GT(root.attribute("b").compare(root.attribute("a")), 0);
  EXPECT_GT(root.attribute("a").compare(root.attribute("c")), 0);
  EXPECT_LT(root.attribute("a").compare(root.attribute("d")), 0);
  EXPECT_EQ(root.attribute("a").compare(root.attribute("e")), 0);
  EXPECT_LT(root.attribute("f").compare(root.attribute("c")), 0);
  EXPECT_TRUE(root.attribute("a") == root.attribute("e"));
  EXPECT_TRUE(root.attribute("a") == u"abc");
  EXPECT_TRUE(root.attribute("d") == u"abñ");
  EXPECT_FALSE(root.attribute("d") == u"abn");
  EXPECT_TRUE(root.attribute("f") == u"");
}

TEST(XmlText, NarrowAndWideFormsOfOneTextAreEqual) {
  EXPECT_TRUE(host::XmlText::narrow("abc") == host::XmlText::wide(u"abc"));
  EXPECT_FALSE(host::XmlText::narrow("abc") == host::XmlText::wide(u"abd"));
  EXPECT_TRUE(host::XmlText::narrow("") == host::XmlText::wide(u""));
}

TEST(XmlText, ToIntReadsAsTheStringDoes) {
  const char16_t* const texts[] = {u"",
                                   u"42",
                                   u"-7",
                                   u" 12x",
                                   u"añ",
                                   u"9999999999",
                                   u"                                              5",
                                   u"000000000000000000000000000000000000000000000017"};
  for (const char16_t* text : texts) {
    XmlDocument document("a");
    document.Root()->setAttribute("b", text);
    EXPECT_EQ(document.Root()->attribute("b").toInt(), XCBasicString(text).ToInt())
        << XCBasicString(text).ToUtf8();
  }
}

// --- texts and values

TEST(XmlValues, AValueIsTheTextOfTheFirstChildWithTheTag) {
  const XmlDocument document = support::parsedXml("<a><b>1</b><c/><b>2</b></a>");
  EXPECT_EQ(document.Root()->Value("b"), u"1");
  EXPECT_EQ(document.Root()->Value("c", u"default"), u"") << "present, though empty";
  EXPECT_EQ(document.Root()->Value("d"), u"");
  EXPECT_EQ(document.Root()->Value("d", u"default"), u"default");
}

TEST(XmlValues, SettingChangesTheFirstChildOrAppendsOne) {
  XmlDocument document = support::parsedXml("<a><b x=\"1\">1</b><c/><b>2</b></a>");
  document.Root()->SetValue("b", u"uno ñ");
  document.Root()->SetValue("d", u"4");
  EXPECT_XML_EQ("<a><b x=\"1\">uno ñ</b><c/><b>2</b><d>4</d></a>", document);
}

TEST(XmlValues, NarrowTextsAreTakenOver) {
  XmlDocument document("a");
  const std::string content(100000, 'Q');
  document.Root()->SetNarrowValue("file", content);
  document.Root()->SetNarrowValue("file", content + "=");
  document.Root()->SetNarrowText("own");
  EXPECT_EQ(document.Root()->ChildCount(), 1U);
  EXPECT_EQ(document.Root()->FirstChild()->text().narrowView(), content + "=");
  EXPECT_EQ(document.Root()->Text(), u"own");
}

TEST(XmlValues, SettingATextKeepsTheChildren) {
  XmlDocument document = support::parsedXml("<a><b/></a>");
  document.Root()->SetText(u"t");
  EXPECT_EQ(document.Root()->Text(), u"t");
  EXPECT_EQ(document.Root()->ChildCount(), 1U);
  document.Root()->SetText(u"");
  EXPECT_XML_EQ("<a><b/></a>", document);
}

// --- tree

TEST(XmlTree, NewChildrenStandBehindTheOthers) {
  XmlDocument document("a");
  document.Root()->NewChild("b");
  document.Root()->NewChild("c", u"text").NewChild("d");
  document.Root()->NewChild("b");
  EXPECT_XML_EQ("<a><b/><c>text<d/></c><b/></a>", document);
}

TEST(XmlTree, SettingTheTagRenamesTheElement) {
  XmlDocument document = support::parsedXml("<r><L04 Fh=\"1\"><Node/></L04></r>");
  Node* section = document.Root()->Node("L04");
  section->SetTag("E04");
  EXPECT_EQ(section->Tag(), "E04");
  EXPECT_EQ(section->TagName(), host::XmlName("E04"));
  EXPECT_XML_EQ("<r><E04 Fh=\"1\"><Node/></E04></r>", document);
}

TEST(XmlTree, AChildIsRemovedWhereverItStands) {
  struct Row {
    const char* path;
    const char* left;
  };
  const Row rows[] = {
      {"b", "<a><c><d/><e/><f/></c><g/></a>"},   {"c", "<a><b/><g/></a>"},
      {"g", "<a><b/><c><d/><e/><f/></c></a>"},   {"c/d", "<a><b/><c><e/><f/></c><g/></a>"},
      {"c/e", "<a><b/><c><d/><f/></c><g/></a>"}, {"c/f", "<a><b/><c><d/><e/></c><g/></a>"}};
  for (const Row& row : rows) {
    XmlDocument document = support::parsedXml("<a><b/><c><d/><e/><f/></c><g/></a>");
    EXPECT_TRUE(document.Root()->RemoveChild(document.Root()->Node(row.path)));
    EXPECT_XML_EQ(row.left, document);
    document.Root()->NewChild("z");
    const std::string left = row.left;
    EXPECT_XML_EQ(left.substr(0, left.size() - 4) + "<z/></a>", document)
        << "the last child was kept in mind rightly after " << row.path;
  }
}

TEST(XmlTree, TheOnlyChildIsRemovedAndTheNextTakesItsPlace) {
  XmlDocument document = support::parsedXml("<a><b/></a>");
  EXPECT_TRUE(document.Root()->RemoveChild(document.Root()->FirstChild()));
  EXPECT_EQ(document.Root()->FirstChild(), nullptr);
  document.Root()->NewChild("c");
  document.Root()->NewChild("d");
  EXPECT_XML_EQ("<a><c/><d/></a>", document);
}

TEST(XmlTree, WhatDoesNotStandBelowIsNotRemoved) {
  XmlDocument document = support::parsedXml("<a><b><c/></b><d/></a>");
  Node& root = *document.Root();
  XmlDocument other = support::parsedXml("<a><b/></a>");
  EXPECT_FALSE(root.RemoveChild(nullptr));
  EXPECT_FALSE(root.RemoveChild(&root));
  EXPECT_FALSE(root.Node("d")->RemoveChild(root.Node("b/c")));
  EXPECT_FALSE(root.Node("b/c")->RemoveChild(root.Node("b")));
  EXPECT_FALSE(root.RemoveChild(other.Root()->Node("b")));
  Node* removed = root.Node("b");
  EXPECT_TRUE(root.RemoveChild(removed));
  EXPECT_FALSE(root.RemoveChild(removed)) << "not a second time";
  EXPECT_XML_EQ("<a><d/></a>", document);
}

TEST(XmlTree, ARemovedElementStaysReadable) {
  XmlDocument document = support::parsedXml("<a><b c=\"1\"><d/></b></a>");
  Node* removed = document.Root()->Node("b");
  document.Root()->RemoveChildren();
  EXPECT_EQ(removed->getAttribute("c"), u"1");
  EXPECT_EQ(removed->ChildCount(), 1U);
  EXPECT_EQ(removed->Parent(), nullptr);
  EXPECT_XML_EQ("<a/>", document);
}

TEST(XmlTree, IterationSeesTheChildrenInOrder) {
  XmlDocument document = support::parsedXml("<a><b/><c/><d/></a>");
  std::string tags;
  for (Node& child : document.Root()->Children()) {
    tags += child.Tag();
    EXPECT_EQ(child.Parent(), document.Root());
  }
  EXPECT_EQ(tags, "bcd");
  EXPECT_EQ(document.Root()->Parent(), nullptr);
  EXPECT_EQ(document.Root()->NextSibling(), nullptr);
}

TEST(XmlDocument_, AddressesStayWhenTheDocumentIsMoved) {
  XmlDocument first = support::parsedXml("<a><b/></a>");
  Node* root = first.Root();
  XmlDocument second = std::move(first);
  EXPECT_EQ(second.Root(), root);
  XmlDocument third("x");
  third = std::move(second);
  EXPECT_EQ(third.Root(), root);
  third.Root()->NewChild("c", u"añ");
  EXPECT_XML_EQ("<a><b/><c>añ</c></a>", third);
}

TEST(XmlDocument_, AMovedFromDocumentIsEmptyAndUsable) {
  XmlDocument first = support::parsedXml("<a/>");
  const XmlDocument second = std::move(first);
  EXPECT_EQ(first.Root(), nullptr);
  EXPECT_EQ(first.ToString(), "");
  first.Create("b").setAttribute("c", u"1");
  EXPECT_XML_EQ("<b c=\"1\"/>", first);
  XmlDocument third = std::move(first);
  EXPECT_TRUE(first.Parse("<d/>"));
  EXPECT_XML_EQ("<d/>", first);
}

TEST(XmlDocument_, CreateEmptiesTheDocument) {
  XmlDocument document = support::parsedXml("<a><b/></a>");
  document.Create("deviceCfg").NewChild("L01");
  EXPECT_XML_EQ("<deviceCfg><L01/></deviceCfg>", document);
}

TEST(XmlTree, ManyElementsAcrossBlocksKeepTheirPlaces) {
  XmlDocument document("a");
  for (int i = 0; i < 5000; ++i) document.Root()->NewChild("n").setAttribute("i", host::decimal(i));
  int expected = 0;
  for (Node& child : document.Root()->Children())
    ASSERT_EQ(child.attribute("i").toInt(), expected++);
  EXPECT_EQ(expected, 5000);
}

}  // namespace
