#include <gtest/gtest.h>

#include "host/xml/xml_document.h"
#include "tests/support/printers.h"
#include "tests/support/xml_compare.h"

using Node = XmlDocument::XmlNode;

namespace {

class XmlPath : public testing::Test {
 protected:
  XmlDocument document = support::parsedXml(
      "<cfg>"
      "<group><id>one</id><n>1</n></group>"
      "<group><id>two</id><n>2</n><group><id>inner</id><n>3</n></group></group>"
      "<group><n>4</n></group>"
      "<group><id>two</id><n>5</n></group>"
      "<day><num>7</num><n>6</n></day><day><num>07</num><n>7</n></day>"
      "<ZelLamp><L01 a=\"x\"/></ZelLamp>"
      "</cfg>");
  Node& root = *document.Root();

  XCBasicString n(const Node* node) const { return node ? node->Value("n") : u"none"; }
};

TEST_F(XmlPath, StepsGoToTheFirstWithTheTag) {
  EXPECT_EQ(n(root.Node("group")), u"1");
  EXPECT_EQ(root.Node("ZelLamp/L01")->getAttribute("a"), u"x");
  EXPECT_EQ(root.Node("ZelLamp/L02"), nullptr);
  EXPECT_EQ(root.Node("none/L01"), nullptr);
  EXPECT_EQ(root.Node("cfg"), nullptr) << "a path begins below the element";
  EXPECT_EQ(root.Node("zellamp/L01"), nullptr);
}

TEST_F(XmlPath, APredicateChoosesByTheTextOfAChild) {
  EXPECT_EQ(n(root.Node("group?id=%s?", u"one")), u"1");
  EXPECT_EQ(n(root.Node("group?id=%s?", u"two")), u"2") << "the first one";
  EXPECT_EQ(n(root.Node("group?id=%s?", XCBasicString(u"two"))), u"2");
  EXPECT_EQ(n(root.Node("group?id=%s?", u"three")), u"none");
  EXPECT_EQ(n(root.Node("group?id=%s?", u"One")), u"none");
  EXPECT_EQ(n(root.Node("group?id=%s?", u"")), u"none") << "no id is not an empty id";
  EXPECT_EQ(n(root.Node("day?num=%d?", 7)), u"6");
  EXPECT_EQ(n(root.Node("day?num=%d?", 8)), u"none");
  EXPECT_EQ(n(root.Node("day?num=%s?", u"07")), u"7");
}

TEST_F(XmlPath, PredicatesTakeTheArgumentsInTurn) {
  EXPECT_EQ(n(root.Node("group?id=%s?/group?id=%s?", u"two", u"inner")), u"3");
  EXPECT_EQ(n(root.Node("group?id=%s?/group?id=%s?", u"one", u"inner")), u"none");
  EXPECT_EQ(root.Node("group?id=%s?/n", u"two")->Text(), u"2");
}

TEST_F(XmlPath, APredicateWithoutArgumentFindsNothing) {
  EXPECT_EQ(root.Node("group?id=%s?"), nullptr);
}

TEST_F(XmlPath, AnEmptyPathIsTheElementItself) {
  EXPECT_EQ(root.Node(""), &root);
}

TEST_F(XmlPath, AConstantDocumentGivesConstantElements) {
  const XmlDocument& constant = document;
  const Node* found = constant.Root()->Node("group?id=%s?", u"one");
  EXPECT_EQ(n(found), u"1");
}

TEST(XmlPathArguments, AreComparedAndNeverParsed) {
  const std::u16string keys[] = {u"a/b",     u"a?b",        u"%s",        u"%d%%", u"\"quoted\"",
                                 u"it's",    u"?id=%s?",    u"a]b[1]",    u"<&>",  u"..",
                                 u"group",   u" leading",   u"trailing ", u"ñ€",   u"\U0001F4A1",
                                 u"a/b/c?d", u"id=1 or 1=1"};
  XmlDocument document("cfg");
  for (const std::u16string& key : keys) {
    Node& group = document.Root()->NewChild("group");
    group.SetValue("id", key);
    group.NewChild("inner").SetValue("name", key);
  }
  for (const std::u16string& key : keys) {
    const Node* group = document.Root()->Node("group?id=%s?", key);
    ASSERT_NE(group, nullptr) << XCBasicString(key).ToUtf8();
    EXPECT_EQ(group->Value("id"), key);
    EXPECT_EQ(document.Root()->Node("group?id=%s?/inner?name=%s?", key, key), group->Node("inner"));
  }
}

}  // namespace
