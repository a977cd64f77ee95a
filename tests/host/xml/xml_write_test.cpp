#include <gtest/gtest.h>

#include "host/services/files.h"
#include "host/xml/xml_document.h"
#include "tests/support/faulty_files.h"
#include "tests/support/printers.h"
#include "tests/support/temp_folder.h"
#include "tests/support/xml_compare.h"

using Layout = XmlDocument::Layout;

namespace {

TEST(XmlWrite, CompactIsOneLineBehindTheDeclaration) {
  const XmlDocument document = support::parsedXml("<a  c='1' b='2' >\n <d>x</d><e></e> </a>");
  EXPECT_EQ(document.ToString(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<a c=\"1\" b=\"2\"><d>x</d><e/></a>");
}

TEST(XmlWrite, IndentedHasALineForEachElement) {
  const XmlDocument document = support::parsedXml("<a><b><c x=\"1\"/></b><d>t</d></a>");
  EXPECT_EQ(document.ToString(Layout::indented),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<a>\n  <b>\n    <c x=\"1\"/>\n  </b>\n  <d>t</d>\n</a>\n");
}

TEST(XmlWrite, ADocumentWithoutRootIsEmpty) {
  EXPECT_EQ(XmlDocument().ToString(), "");
  XmlDocument document("a");
  document.Clear();
  EXPECT_EQ(document.ToString(Layout::indented), "");
}

TEST(XmlWrite, CharactersThatXmlCantHoldBecomeReplacements) {
  XmlDocument document("a");
  document.Root()->setAttribute("b", std::u16string(u"x\x01\x1F") + char16_t(0xFFFE) + u"y");
  document.Root()->SetText(std::u16string(u"\x02") + char16_t(0xD800) + u"ñ");
  EXPECT_EQ(support::compactXml(document), "<a b=\"x\uFFFD\uFFFD\uFFFDy\">\uFFFD\uFFFD\u00F1</a>");
}

TEST(XmlWrite, EscapesWhatWouldNotComeBack) {
  XmlDocument document("a");
  document.Root()->setAttribute("b", u"<>&\"'\t\n\r");
  document.Root()->SetText(u"<>&\"'\t\n\r]]>");
  EXPECT_EQ(support::compactXml(document),
            "<a b=\"&lt;&gt;&amp;&quot;'&#9;&#10;&#13;\">&lt;&gt;&amp;\"'\t\n&#13;]]&gt;</a>");
}

TEST(XmlWrite, ALargeTextStandsAmongOthers) {
  const std::string large(3'000'000, 'A');
  for (const char* end : {"", "<&\r"}) {
    XmlDocument document("a");
    document.Root()->NewChild("before").SetText(u"1");
    document.Root()->SetNarrowValue("large", large + end);
    document.Root()->NewChild("after").setAttribute("b", u"2");
    const std::string escapedEnd = *end == '\0' ? "" : "&lt;&amp;&#13;";
    EXPECT_TRUE(support::compactXml(document) == "<a><before>1</before><large>" + large +
                                                     escapedEnd + "</large><after b=\"2\"/></a>");
  }
}

TEST(XmlWrite, EveryCharacterRoundTripsInAttributesAndTexts) {
  for (char32_t first = 0; first < 0x11000; first += 0x100) {
    std::u16string text;
    for (char32_t c = first; c < first + 0x100; ++c) {
      const bool allowed = c == 9 || c == 10 || c == 13 || (c >= 0x20 && c < 0xD800) ||
                           (c >= 0xE000 && c < 0xFFFE) || c >= 0x10000;
      if (!allowed) continue;
      if (c < 0x10000)
        text += static_cast<char16_t>(c);
      else
        text += {static_cast<char16_t>(0xD7C0 + (c >> 10)),
                 static_cast<char16_t>(0xDC00 + (c & 0x3FF))};
    }
    if (text.empty()) continue;
    XmlDocument document("a");
    document.Root()->setAttribute("b", text);
    document.Root()->NewChild("c", text);
    for (const Layout layout : {Layout::compact, Layout::indented}) {
      const XmlDocument again = support::parsedXml(document.ToString(layout));
      ASSERT_EQ(again.Root()->getAttribute("b"), text) << std::hex << unsigned(first);
      ASSERT_EQ(again.Root()->Value("c"), text) << std::hex << unsigned(first);
    }
  }
}

TEST(XmlWrite, EmojiAndCombinedCharactersRoundTrip) {
  XmlDocument document("a");
  const std::u16string text = u"\U0001F468\u200D\U0001F469\u200D\U0001F467 e\u0301 \U0010FFFD";
  document.Root()->setAttribute("b", text);
  EXPECT_EQ(support::parsedXml(document.ToString()).Root()->getAttribute("b"), text);
}

TEST(XmlWrite, IndentationEndsAtTheTwelfthLevel) {
  XmlDocument document("a");
  XmlDocument::XmlNode* at = document.Root();
  for (int level = 1; level < 15; ++level) at = &at->NewChild("a");
  const std::string text = document.ToString(XmlDocument::Layout::indented);
  EXPECT_NE(text.find("\n" + std::string(22, ' ') + "<a>\n" + std::string(24, ' ') + "<a>\n" +
                      std::string(24, ' ') + "<a>"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find(std::string(25, ' ')), std::string::npos);
}

TEST(XmlWrite, IndentationDoesNotChangeTheContent) {
  const char* const documents[] = {
      "<a/>",
      "<a> </a>",
      "<a>text<b/>more<c>x</c></a>",
      "<a><b> </b><c>\n</c><d> x\n</d></a>",
      "<a><b><c><d/></c>text</b></a>",
  };
  for (const char* xml : documents) {
    const XmlDocument document = support::parsedXml(xml);
    const XmlDocument again = support::parsedXml(document.ToString(Layout::indented));
    EXPECT_TRUE(*document.Root() == *again.Root()) << xml;
    EXPECT_EQ(document.ToString(), again.ToString()) << xml;
  }
}

TEST(XmlWrite, BlankTextBesideChildrenComesBack) {
  XmlDocument document("a");
  document.Root()->SetText(u"  \n");
  document.Root()->NewChild("b");
  for (const Layout layout : {Layout::compact, Layout::indented}) {
    const XmlDocument again = support::parsedXml(document.ToString(layout));
    EXPECT_TRUE(*again.Root() == *document.Root()) << document.ToString(layout);
  }
}

TEST(XmlSave, WritesIndentedAndKeepsTheVersionBefore) {
  const support::TempFolder folder;
  const XmlDocument first = support::parsedXml("<a><b/></a>");
  const XmlDocument second = support::parsedXml("<c/>");
  std::string cause;
  ASSERT_TRUE(first.Save(folder / "x.xml", &cause)) << cause;
  EXPECT_EQ(folder.read("x.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\n  <b/>\n</a>\n");
  ASSERT_TRUE(second.Save(folder / "x.xml", &cause)) << cause;
  EXPECT_XML_EQ("<c/>", folder.read("x.xml"));
  EXPECT_XML_EQ("<a><b/></a>", folder.read("x.xml.previous"));
  EXPECT_EQ(folder.listing(), "x.xml x.xml.previous");
}

TEST(XmlSave, AFailureIsToldAndLeavesTheFile) {
  const support::TempFolder folder;
  support::FaultyFiles files;
  folder.write("x.xml", "<old/>");
  files.failHalfWritten("No space left on device");
  std::string cause;
  EXPECT_FALSE(XmlDocument("new").Save(folder / "x.xml", &cause));
  EXPECT_EQ(cause, "No space left on device");
  EXPECT_EQ(folder.read("x.xml"), "<old/>");
  EXPECT_EQ(folder.listing(), "x.xml");
}

TEST(XmlWrite, EscapesACharacterAtEveryPlaceOfEveryShortText) {
  for (std::size_t size = 1; size <= 40; ++size)
    for (std::size_t place = 0; place < size; ++place)
      for (const char special : {'&', '<', '>', '"', '\t', '\r', '\n'}) {
        std::u16string text(size, u'x');
        text[place] = static_cast<char16_t>(special);
        XmlDocument document("root");
        document.Root()->setAttribute("a", text);
        document.Root()->SetText(text);
        XmlDocument again;
        ASSERT_TRUE(again.Parse(document.ToString()));
        ASSERT_EQ(*again.Root(), *document.Root()) << size << " " << place << " " << int(special);
      }
}

TEST(XmlWrite, JoinsDocumentsAcrossItsBlocks) {
  for (const std::size_t size : {65000U, 65535U, 65536U, 65537U, 70000U, 200000U}) {
    XmlDocument document("root");
    document.Root()->NewChild("before", u"text").setAttribute("a", u"1");
    document.Root()->NewChild("long", std::u16string(size, u'x'));
    document.Root()->NewChild("wide", std::u16string(size, u'\u00E9'));
    for (int i = 0; i < 20; ++i)
      document.Root()->NewChild("after").setAttribute("aNameThatIsLongerThanMostNamesAre", u"<&>");
    XmlDocument again;
    ASSERT_TRUE(again.Parse(document.ToString()));
    EXPECT_EQ(*again.Root(), *document.Root()) << size;
  }
}

}  // namespace
