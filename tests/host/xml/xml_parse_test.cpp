#include <gtest/gtest.h>

#include "host/xml/xml_document.h"
#include "tests/support/printers.h"
#include "tests/support/temp_folder.h"
#include "tests/support/xml_compare.h"

using host::XmlError;
using host::XmlLimits;

namespace {

std::string nested(std::size_t depth) {
  std::string xml;
  for (std::size_t i = 0; i < depth; ++i) xml += "<a>";
  for (std::size_t i = 0; i < depth; ++i) xml += "</a>";
  return xml;
}

TEST(XmlParse, ReadsTagsAttributesTextsAndChildrenInTheirOrder) {
  const XmlDocument document = support::parsedXml(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<root b=\"1\" a='two \"quoted\"'>\n  <first>text</first><second/><first "
      "x=\"\"/>\n</root>\n");
  const XmlDocument::XmlNode& root = *document.Root();
  EXPECT_EQ(root.Tag(), "root");
  EXPECT_EQ(root.attributeCount(), 2U);
  EXPECT_EQ(root.attributeName(0).text(), "b");
  EXPECT_EQ(root.getAttribute("a"), u"two \"quoted\"");
  EXPECT_EQ(root.Text(), u"");
  EXPECT_EQ(root.ChildCount(), 3U);
  const XmlDocument::XmlNode* child = root.FirstChild();
  EXPECT_EQ(child->Text(), u"text");
  child = child->NextSibling();
  EXPECT_EQ(child->Tag(), "second");
  child = child->NextSibling();
  EXPECT_EQ(child->Tag(), "first");
  EXPECT_TRUE(child->hasAttribute("x"));
  EXPECT_EQ(child->NextSibling(), nullptr);
}

TEST(XmlParse, WhatIsNoDocumentIsRefusedAndLeavesTheOldOne) {
  struct Row {
    std::string xml;
    const char* cause;
  };
  using namespace std::string_literals;
  const Row rows[] = {
      {"", "empty"},
      {" \n\t", "empty"},
      {"text", "text outside the root element"},
      {"<a>", ""},
      {"<a></b>", ""},
      {"</a>", ""},
      {"<a/><b/>", "a second root element"},
      {"<a/>text", "text outside the root element"},
      {"text<a/>", "text outside the root element"},
      {"<a/><![CDATA[ ]]>", "text outside the root element"},
      {"<!-- only -->", "no root element"},
      {"<?xml version=\"1.0\"?>", "no root element"},
      {"<!DOCTYPE a><a/>", "document type"},
      {"<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>", "document type"},
      {"<a><!DOCTYPE b></a>", ""},
      {"<a b=\"1\" b=\"2\"/>", "the attribute \"b\" twice"},
      {"<a b=\"1\" c=\"2\" b=\"1\"/>", "the attribute \"b\" twice"},
      {"<a b=1/>", ""},
      {"<a b/>", ""},
      {"<a b=\"1/>", ""},
      {"<a b=\"1\"c=\"2\"/>", ""},
      {"<a b=\"<\"/>", "\"<\" inside a value"},
      {"<1a/>", ""},
      {"<-a/>", ""},
      {"<a><.b/></a>", ""},
      {"<a 1b=\"\"/>", ""},
      {"<a\xC3\x97/>", "is not a name"},
      {"<a b\xC3\x97=\"\"/>", "is not a name"},
      {"<a>&nothing;</a>", "unknown reference"},
      {"<a>&</a>", "unknown reference"},
      {"<a>& b;</a>", "unknown reference"},
      {"<a>a&amp b</a>", "unknown reference"},
      {"<a>&AMP;</a>", "unknown reference"},
      {"<a>&#;</a>", "unknown reference"},
      {"<a>&#x;</a>", "unknown reference"},
      {"<a>&#X41;</a>", "unknown reference"},
      {"<a>&#4g;</a>", "unknown reference"},
      {"<a>&#0;</a>", "unknown reference"},
      {"<a>&#1;</a>", "unknown reference"},
      {"<a>&#xD800;</a>", "unknown reference"},
      {"<a>&#xFFFE;</a>", "unknown reference"},
      {"<a>&#x110000;</a>", "unknown reference"},
      {"<a>&#99999999999999999999;</a>", "unknown reference"},
      {"<a b=\"&#1;\"/>", "unknown reference"},
      {"<a>]]></a>", "\"]]>\" inside a text"},
      {"<a>x\x01y</a>", "a character that XML does not allow"},
      {"<a b=\"x\x1Fy\"/>", "a character that XML does not allow"},
      {"<a>\xEF\xBF\xBE</a>", "a character that XML does not allow"},
      {"<a>x\0y</a>"s, "a character with the code 0"},
      {"<a/>\0"s, "a character with the code 0"},
      {"<a>\xC3</a>", "no UTF-8"},
      {"<a>\xFF</a>", "no UTF-8"},
      {"<a>\xC0\xAF</a>", "no UTF-8"},
      {"<a>\xED\xA0\x80</a>", "no UTF-8"},
      {"<a b=\"\xE2\x82\"/>", "no UTF-8"},
      {"<a><![CDATA[\x01]]></a>", "a character that XML does not allow"},
      {"<a><![CDATA[\xFF]]></a>", "no UTF-8"},
      {"<a><!-- \xFF --></a>", "no UTF-8"},
      {"<a><!-- \x01 --></a>", "a character that XML does not allow"},
      {"<!-- \x01 --><a/>", "a character that XML does not allow"},
      {"<a><!-- a--b --></a>", "\"--\" inside a comment"},
      {"<a><!-- a---></a>", "a comment that ends with"},
      {"<a><!-- a></a>", ""},
      {"<a><?xMl b?></a>", "declaration"},
      {"<?XML version=\"1.0\"?><a/>", "malformed XML declaration"},
      {"<?xml version=\"1.0\"/><a/>", "malformed XML declaration"},
      {"\xEF\xBB\xBF<?xml version=\"1.0\"/><a/>", "malformed XML declaration"},
      {"<?xml?><a/>", "malformed XML declaration"},
      {"<?xml/><a/>", "malformed XML declaration"},
      {"\xEF\xBB\xBF\xEF\xBB\xBF<a/>", "text outside the root element"},
      {"\xEF\xBB\xBF\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>", "text outside the root element"},
      {"<a>&#000000000000000;</a>", "unknown reference"},
      {"<a>&#00000000000001114112;</a>", "unknown reference"},
      {"<a>&#x0000000000000000110000;</a>", "unknown reference"},
      {"<a>&#65</a>", "unknown reference"},
      {"<a>&quote;</a>", "unknown reference"},
      {"<?xml encoding=\"utf-8\"?><a/>", "malformed XML declaration"},
      {"<?xml version=\"2.0\"?><a/>", "malformed XML declaration"},
      {"<?xml version=\"1.0\" standalone=\"maybe\"?><a/>", "malformed XML declaration"},
      {"<?xml version=\"1.0\" encoding=\"\"?><a/>", "is not UTF-8"},
      {"<?xml version=\"1.0\" other=\"\"?><a/>", "malformed XML declaration"},
      {"<a/>x", "text outside the root element"},
      {"\xFF\xFE<\0a\0/\0>\0"s, "not UTF-8"},
      {"\xFE\xFF\0<\0a\0/\0>"s, "not UTF-8"},
      {"<\0a\0/\0>\0"s, "a character with the code 0"},
      {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>", "ISO-8859-1"},
      {"<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>", "UTF-16"},
      {"<?xml version=\"1.0\" encoding=\"ISO-2022-JP\"?><\x1B$B<-\x1B(B/>", "ISO-2022-JP"},
      {" <?xml version=\"1.0\"?><a/>", "declaration"},
      {"<!-- --><?xml version=\"1.0\"?><a/>", "declaration"},
      {"<a/><?xml version=\"1.0\"?>", "declaration"},
      {"<a><?xml version=\"1.0\"?></a>", "declaration"},
      {"<?xml version=\"1.0\"?><?xml version=\"1.0\"?><a/>", "declaration"},
      {nested(65), "nested more than 64 deep"},
      {nested(5000), "nested more than 64 deep"},
  };
  for (const Row& row : rows) {
    XmlDocument document = support::parsedXml("<before/>");
    XmlError error;
    EXPECT_FALSE(document.Parse(row.xml, &error)) << row.xml;
    EXPECT_FALSE(error.cause.empty()) << row.xml;
    EXPECT_NE(error.cause.find(row.cause), std::string::npos) << row.xml << ": " << error.text();
    EXPECT_XML_EQ("<before/>", document);
  }
}

TEST(XmlParse, WhatLooksOddButIsADocumentIsTaken) {
  using namespace std::string_literals;
  const std::string documents[] = {
      nested(64),
      "\xEF\xBB\xBF<a/>",
      "\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>",
      "<?xml version='1.0' encoding='utf-8'?><a/>",
      "<?xml version=\"1.0\" encoding=\"US-ASCII\" standalone=\"yes\"?><a/>",
      "<?xml version=\"1.0\"?>\n<!-- in front --><?target data?><a/><!-- behind --><?target?>\n",
      "<?xml-stylesheet type=\"text/xsl\" href=\"a.xsl\"?><a/>",
      "<?xml-stylesheet href='a>b'?><a/>",
      "\xEF\xBB\xBF<?xml-stylesheet href=\"a\"/?><a/>",
      "<?xml version=\"1.0\"?><?xml-stylesheet href='a'?><a><?xml-x > ?></a>",
      "<?xmlns >?><a/>",
      "<a>\xEF\xBB\xBF</a>",
      "<a ><b\n/></a\n>",
      "<a b = \"1\"\n\tc\r\n=\n'2'/>",
      "<a>></a>",
      "<a b=\">\"/>",
      "<a>]] ></a>",
      "<a\xEF\xBF\xBD/>",
      "<\xC3\xB1:b.c-d_1 \xD0\x96=\"\"/>",
  };
  for (const std::string& xml : documents) {
    XmlDocument document;
    XmlError error;
    EXPECT_TRUE(document.Parse(xml, &error)) << xml << ": " << error.text();
  }
}

TEST(XmlParse, LimitsHoldExactly) {
  XmlError error;
  XmlDocument document;
  XmlLimits limits;
  limits.bytes = 7;
  EXPECT_TRUE(document.Parse("<aaaa/>", &error, limits));
  EXPECT_FALSE(document.Parse("<aaaaa/>", &error, limits));
  EXPECT_NE(error.cause.find("8 bytes"), std::string::npos) << error.cause;
  EXPECT_NE(error.cause.find("7 allowed"), std::string::npos) << error.cause;

  limits = {};
  limits.depth = 1;
  EXPECT_TRUE(document.Parse("<a/>", &error, limits));
  EXPECT_FALSE(document.Parse("<a><b/></a>", &error, limits));
}

TEST(XmlParse, TheLimitOfNamesCountsDifferentOnes) {
  XmlError error;
  XmlDocument document;
  XmlLimits limits;
  limits.names = 3;
  EXPECT_TRUE(document.Parse("<a><b c=\"\"/><a c=\"\"/><b/></a>", &error, limits)) << error.text();
  EXPECT_FALSE(document.Parse("<a><b c=\"\"/><a d=\"\"/></a>", &error, limits));
  EXPECT_NE(error.cause.find("too many"), std::string::npos) << error.cause;
}

std::string withAttributes(std::size_t count) {
  std::string xml = "<a";
  for (std::size_t i = 0; i < count; ++i) xml += " b" + std::to_string(i) + "=''";
  return xml + "/>";
}

TEST(XmlParse, TheLimitsOfWhatIsReadHoldExactly) {
  XmlError error;
  XmlDocument document;
  std::string names = "<a>";
  for (int i = 0; i < 4095; ++i) names += "<b" + std::to_string(i) + "/>";
  EXPECT_TRUE(document.Parse(names + "</a>", &error)) << error.text();
  EXPECT_FALSE(document.Parse(names + "<c/></a>", &error));
  EXPECT_NE(error.cause.find("too many"), std::string::npos) << error.cause;

  XmlLimits limits;
  limits.names = 10000;
  EXPECT_TRUE(document.Parse(withAttributes(4096), &error, limits)) << error.text();
  EXPECT_EQ(document.Root()->attributeCount(), 4096U);
  EXPECT_FALSE(document.Parse(withAttributes(4097), &error, limits));
  EXPECT_NE(error.cause.find("more than 4096 attributes"), std::string::npos) << error.cause;

  limits.attributes = limits.names = 100000;
  EXPECT_TRUE(document.Parse(withAttributes(65535), &error, limits)) << error.text();
  EXPECT_FALSE(document.Parse(withAttributes(65536), &error, limits));
  EXPECT_NE(error.cause.find("more than 65535 attributes"), std::string::npos) << error.cause;
}

TEST(XmlParse, ASecondAttributeOfANameIsFoundAmongManyInWhateverOrder) {
  for (const bool reversed : {false, true})
    for (const int twice : {0, 1, 500, 998, 999}) {
      std::string row = "/>";
      for (int i = 0; i < 1000; ++i) {
        const std::string attribute = " b" + std::to_string(i) + "=''";
        row = reversed ? row.insert(0, attribute) : attribute + row;
      }
      const std::string first = "<r><a" + row;
      const std::string second = "<a b" + std::to_string(twice) + "=''" + row + "</r>";
      XmlDocument document;
      XmlError error;
      EXPECT_TRUE(document.Parse(first + "<a" + row + "</r>", &error)) << error.text();
      EXPECT_FALSE(document.Parse(first + second, &error));
      EXPECT_NE(error.cause.find("\"b" + std::to_string(twice) + "\" twice"), std::string::npos)
          << error.text();
    }
}

TEST(XmlParse, ManyNamesInTurnAreToldApart) {
  std::string xml = "<r>";
  for (int row = 0; row < 3; ++row)
    for (int i = 0; i < 1000; ++i) {
      const std::string number = std::to_string(i);
      xml += "<n" + number + " a" + number + "=\"" + number + "\" b" + number + "=\"\"/>";
    }
  const XmlDocument document = support::parsedXml(xml + "</r>");
  int i = 0;
  for (const XmlDocument::XmlNode& child : document.Root()->Children()) {
    const std::string number = std::to_string(i++ % 1000);
    ASSERT_EQ(child.Tag(), "n" + number);
    ASSERT_EQ(child.attributeName(0).text(), "a" + number);
    ASSERT_EQ(child.attributeName(1).text(), "b" + number);
  }
}

TEST(XmlParse, ANameHasALongestLength) {
  XmlError error;
  XmlDocument document;
  EXPECT_TRUE(document.Parse("<" + std::string(256, 'a') + "/>", &error));
  EXPECT_FALSE(document.Parse("<" + std::string(257, 'a') + "/>", &error));
}

TEST(XmlParse, TellsLineAndColumn) {
  struct Row {
    const char* xml;
    std::size_t line, column;
  };
  const Row rows[] = {
      {"<a b=\"1\" b=\"2\"/>", 1, 10},
      {"<a>\n  <b c=\"1\"\n c=\"2\"/></a>", 3, 2},
      {"<a>\n<b>\n&x;</b></a>", 3, 1},
      {"<a>x\x01</a>", 1, 5},
      {"<a>\r\n\r\n<b>\x01</b></a>", 3, 4},
      {"<a/>\n\n <b/>", 3, 3},
      {"<a>\n</b>", 2, 3},
  };
  for (const Row& row : rows) {
    XmlDocument document;
    XmlError error;
    EXPECT_FALSE(document.Parse(row.xml, &error));
    EXPECT_EQ(error.line, row.line) << row.xml << ": " << error.text();
    EXPECT_EQ(error.column, row.column) << row.xml << ": " << error.text();
    EXPECT_EQ(error.text(), "line " + std::to_string(row.line) + ", column " +
                                std::to_string(row.column) + ": " + error.cause);
  }
}

TEST(XmlParse, AMistakeInALeafIsFoundWhereItStands) {
  std::string xml = "<a>\n";
  for (int i = 0; i < 200; ++i) xml += "  <b c=\"" + std::to_string(i) + "\">text</b>\n";
  const std::size_t place = xml.size();
  xml += "  <b c=\"&oops;\"/>\n</a>";
  XmlDocument document;
  XmlError error;
  EXPECT_FALSE(document.Parse(xml, &error));
  EXPECT_EQ(error.offset, place + 8);
  EXPECT_EQ(error.line, 202U);
  EXPECT_EQ(error.column, 9U);
}

TEST(XmlParse, ADocumentThatBreaksOffIsRefusedNoFurtherThanAtItsEnd) {
  const std::string whole = "<a b='c'><!-- d --><?p e?><![CDATA[f]]>g</a>";
  for (const std::string& xml : {whole, std::string("<a <a c1"), std::string("<a c1 ")}) {
    for (std::size_t size = 1; size <= xml.size(); ++size) {
      XmlDocument document;
      XmlError error;
      if (document.Parse(xml.substr(0, size), &error)) continue;
      EXPECT_LE(error.offset, size) << xml.substr(0, size);
      EXPECT_LE(error.column, size + 1) << xml.substr(0, size);
    }
  }
}

TEST(XmlParse, ReferencesAndCharacterDataAreDecoded) {
  const XmlDocument document = support::parsedXml(
      "<a b=\"&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#x1F4A1;\">"
      "x<![CDATA[<&>]]>y<!-- no --><?no no?>&#10;z</a>");
  EXPECT_EQ(document.Root()->getAttribute("b"), u"<>&\"'AB\U0001F4A1");
  EXPECT_EQ(document.Root()->Text(), u"x<&>y\nz");
}

TEST(XmlParse, ANumberOfACharacterMayHaveAnyCountOfLeadingZeros) {
  const XmlDocument document =
      support::parsedXml("<a b=\"&#0000000000065;\">&#x" + std::string(100, '0') + "42;&#" +
                         std::string(5000, '0') + "128161;</a>");
  EXPECT_EQ(document.Root()->getAttribute("b"), u"A");
  EXPECT_EQ(document.Root()->Text(), u"B\U0001F4A1");
}

TEST(XmlParse, LineEndsAreFoldedAndAttributesNormalised) {
  const XmlDocument document = support::parsedXml(
      "<a "
      "b=\"1\r\n2\r3\n4\t5&#13;&#10;&#9;\">1\r\n2\r3\n4\t5&#13;<c><![CDATA[1\r\n2\r3]]></c></a>");
  EXPECT_EQ(document.Root()->getAttribute("b"), u"1 2 3 4 5\r\n\t");
  EXPECT_EQ(document.Root()->Text(), u"1\n2\n3\n4\t5\r");
  EXPECT_EQ(document.Root()->Value("c"), u"1\n2\n3");
}

TEST(XmlParse, BlanksAreKeptInALeafAndDroppedBetweenElements) {
  const XmlDocument document = support::parsedXml("<a> <b>  </b>\n\t<c> x </c><d></d> </a>");
  EXPECT_EQ(document.Root()->Text(), u"");
  EXPECT_EQ(document.Root()->Value("b"), u"  ");
  EXPECT_EQ(document.Root()->Value("c"), u" x ");
  EXPECT_EQ(document.Root()->Value("d"), u"");
}

TEST(XmlParse, TextAroundChildrenIsJoined) {
  const XmlDocument document = support::parsedXml("<a>one<b/>two<b>x</b>three\xC3\xB1</a>");
  EXPECT_EQ(document.Root()->Text(), u"onetwothreeñ");
  EXPECT_EQ(document.Root()->ChildCount(), 2U);
}

TEST(XmlParse, ATextInManyPiecesIsJoinedAtEveryLevel) {
  const XmlDocument document = support::parsedXml(
      "<a>1<b>x<!-- -->y<c>i<?p?>j<d/>k</c>z<![CDATA[&]]></b>2&amp;<b>only</b><![CDATA[]]>3"
      "<b><e/>late</b>\xC3\xB1<b/>4</a>");
  const XmlDocument::XmlNode& root = *document.Root();
  EXPECT_EQ(root.Text(), u"12&3ñ4");
  EXPECT_EQ(root.ChildCount(), 4U);
  EXPECT_EQ(root.FirstChild()->Text(), u"xyz&");
  EXPECT_EQ(root.FirstChild()->Value("c"), u"ijk");
  EXPECT_EQ(root.FirstChild()->NextSibling()->Text(), u"only");
  EXPECT_EQ(root.FirstChild()->NextSibling()->NextSibling()->Text(), u"late");
}

// Such a document is read while the library's tree is taken down.
TEST(XmlParse, AnElementOfTheShortestMarkupIsReadWhole) {
  std::string xml = "<a>";
  for (int i = 0; i < 5000; ++i)
    xml += i % 3 == 0   ? "x<b>y<c d=''/></b>"
           : i % 3 == 1 ? "<?p?><!----><b/>"
                        : "<e><f><g/></f></e>";
  const XmlDocument document = support::parsedXml(xml + "</a>");
  const XmlDocument::XmlNode& root = *document.Root();
  EXPECT_EQ(root.ChildCount(), 5000U);
  EXPECT_EQ(root.Text(), XCBasicString(std::u16string(1667, u'x')));
  int i = 0;
  for (const XmlDocument::XmlNode& child : root.Children()) {
    if (i % 3 == 0) {
      ASSERT_EQ(child.Text(), u"y");
      ASSERT_TRUE(child.FirstChild()->hasAttribute("d"));
    } else if (i % 3 == 1) {
      ASSERT_EQ(child.Tag(), "b");
      ASSERT_EQ(child.FirstChild(), nullptr);
    } else {
      ASSERT_EQ(child.FirstChild()->FirstChild()->Tag(), "g");
    }
    ++i;
  }
  XmlDocument damaged;
  XmlError error;
  EXPECT_FALSE(damaged.Parse(xml + "<b c='1' c='2'/></a>", &error));
  EXPECT_EQ(error.offset, xml.size() + std::string("<b c='1' ").size());
}

TEST(XmlParse, AParsedDocumentOutlivesTheTextItCameFrom) {
  XmlDocument document;
  {
    std::string xml = "<a b=\"" + std::string(3000, 'x') + "\"/>";
    ASSERT_TRUE(document.Parse(xml));
    xml.assign(xml.size(), '!');
  }
  EXPECT_EQ(document.Root()->getAttribute("b").Length(), 3000U);
}

TEST(XmlLoad, ReadsAFileAndTellsWhatIsWrongWithIt) {
  const support::TempFolder folder;
  XmlDocument document;
  XmlError error;
  EXPECT_TRUE(document.Load(folder.write("good.xml", "<a b=\"1\"/>"), &error));
  EXPECT_XML_EQ("<a b=\"1\"/>", document);
  EXPECT_FALSE(document.Load(folder / "none.xml", &error));
  EXPECT_EQ(error.line, 0U);
  EXPECT_EQ(error.text(), "No such file or directory");
  EXPECT_FALSE(document.Load(folder.path(), &error)) << "a folder is no file";
  EXPECT_FALSE(document.Load(folder.write("bad.xml", "<a>\n</b>"), &error));
  EXPECT_EQ(error.line, 2U);
  EXPECT_XML_EQ("<a b=\"1\"/>", document);
}

TEST(XmlParse, TellsNamesApartThatDifferInOneCharacterFromTheirNeighbours) {
  for (std::size_t size = 1; size <= 40; ++size)
    for (std::size_t place = 0; place < size; ++place) {
      const std::string name(size, 'a');
      std::string other = name;
      other[place] = 'b';
      XmlDocument document;
      ASSERT_TRUE(document.Parse("<r><" + name + " " + name + "='1'/><" + other + " " + other +
                                 "='1'/><" + other + "a " + other + "a='1'/></r>"));
      const XmlDocument::XmlNode* node = document.Root()->FirstChild()->NextSibling();
      EXPECT_EQ(node->Tag(), other);
      EXPECT_EQ(node->attributeName(0).text(), other);
      EXPECT_EQ(node->NextSibling()->Tag(), other + "a");
      EXPECT_EQ(node->NextSibling()->attributeName(0).text(), other + "a");
    }
}

TEST(XmlParse, RefusesASecondAttributeOfANameAlsoWhereTheNeighbourHasTwoNames) {
  XmlDocument document;
  EXPECT_TRUE(document.Parse("<r><n a='1' b='2'/><n a='1' b='2'/></r>"));
  EXPECT_FALSE(document.Parse("<r><n a='1' b='2'/><n a='1' a='2'/></r>"));
  EXPECT_FALSE(document.Parse("<r><n a='1' b='2'/><n a='1' b='2' a='3'/></r>"));
  EXPECT_FALSE(document.Parse("<r><n a='1' b='2'/><n b='1' b='2'/></r>"));
}

TEST(XmlParse, SeesAForbiddenCharacterAtEveryPlaceOfAValue) {
  for (std::size_t size = 1; size <= 24; ++size)
    for (std::size_t place = 0; place < size; ++place)
      for (const std::string bad : {"\x01", "\x1F", "\xFF", "&x;", "<"}) {
        std::string value(size, 'x');
        value.replace(place, 1, bad);
        XmlDocument document;
        EXPECT_FALSE(document.Parse("<r a=\"" + value + "\"/>")) << size << " " << place;
      }
}

}  // namespace
