#include "pages/binding/row_rewrite.h"

#include <gtest/gtest.h>

#include "tests/support/xml_compare.h"

namespace {

using Node = XmlDocument::XmlNode;

const lamp::RowRewrite Interval{"Interval", {"power1", "time2"}, {"time1"}};

TEST(RowRewrite, MovesTheAttributesIntoANewChildInTheTablesOrder) {
  XmlDocument row = support::parsedXml(
      R"(<Lamp a="1" time2="20" Id="7" time1="10" Fh="20240101000000" power1="50" b="2"/>)");
  EXPECT_TRUE(lamp::rewriteRow(*row.Root(), Interval));
  EXPECT_XML_EQ(R"(<Lamp a="1" nodeId="7" b="2"><Interval power1="50" time2="20"/></Lamp>)", row);
}

TEST(RowRewrite, WhatTheRowLacksGoesInEmptyAndWhatIsDroppedMayBeAbsent) {
  XmlDocument row = support::parsedXml(R"(<Lamp Id="7"/>)");
  EXPECT_TRUE(lamp::rewriteRow(*row.Root(), Interval));
  EXPECT_XML_EQ(R"(<Lamp nodeId="7"><Interval power1="" time2=""/></Lamp>)", row);
}

TEST(RowRewrite, TheNewChildStandsBehindThoseThatTheRowHas) {
  XmlDocument row = support::parsedXml(R"(<Lamp Id="7" power1="1"><Interval a="b"/>text</Lamp>)");
  EXPECT_TRUE(lamp::rewriteRow(*row.Root(), Interval));
  const Node* first = row.Root()->FirstChild();
  EXPECT_XML_EQ(R"(<Interval a="b"/>)", first);
  EXPECT_XML_EQ(R"(<Interval power1="1" time2=""/>)", first->NextSibling());
  EXPECT_EQ(row.Root()->Text().ToUtf8(), "text");
}

TEST(RowRewrite, TheIdentityReplacesOneThatIsNamedSoAlready) {
  XmlDocument row = support::parsedXml(R"(<Lamp nodeId="old" Id="7"/>)");
  EXPECT_TRUE(lamp::rewriteRow(*row.Root(), {"Alarms", {}}));
  EXPECT_XML_EQ(R"(<Lamp nodeId="7"><Alarms/></Lamp>)", row);
}

TEST(RowRewrite, ARowWithoutIdentityIsRefused) {
  for (const char* xml : {R"(<Lamp/>)", R"(<Lamp nodeId="7"/>)", R"(<Lamp id="7"/>)"}) {
    XmlDocument row = support::parsedXml(xml);
    EXPECT_FALSE(lamp::rewriteRow(*row.Root(), Interval)) << xml;
  }
}

TEST(RowRewrite, EveryRowIsRewrittenWhateverItsTag) {
  XmlDocument section = support::parsedXml(
      R"(<L06 Id="section"><Lamp Id="1" power1="10"/><Other Id="2" time1="5"/></L06>)");
  EXPECT_TRUE(lamp::rewriteRows(*section.Root(), Interval));
  EXPECT_XML_EQ(R"(<L06 Id="section">
      <Lamp nodeId="1"><Interval power1="10" time2=""/></Lamp>
      <Other nodeId="2"><Interval power1="" time2=""/></Other></L06>)",
                section);
}

TEST(RowRewrite, ARowWithoutIdentityAmongOthersFailsTheSection) {
  XmlDocument section = support::parsedXml(R"(<L06><Lamp Id="1"/><Lamp/><Lamp Id="3"/></L06>)");
  EXPECT_FALSE(lamp::rewriteRows(*section.Root(), Interval));
}

TEST(RowRewrite, TheRewritingMayDependOnTheRow) {
  const lamp::RowRewrite oldNodes{"Alarms", {"blink"}};
  const lamp::RowRewrite newNodes{"Alarms", {"power"}};
  XmlDocument section = support::parsedXml(
      R"(<L07><A Id="1" vf="1" blink="b" power="p"/><A Id="2" blink="b" power="p"/></L07>)");
  EXPECT_TRUE(lamp::rewriteRows(*section.Root(), [&](const Node& row) -> const lamp::RowRewrite& {
    return row.hasAttribute("vf") ? newNodes : oldNodes;
  }));
  EXPECT_XML_EQ(R"(<L07><A nodeId="1" vf="1" blink="b"><Alarms power="p"/></A>
                        <A nodeId="2" power="p"><Alarms blink="b"/></A></L07>)",
                section);
}

TEST(RowRewrite, ASectionWithoutRowsIsReady) {
  XmlDocument section = support::parsedXml("<L06/>");
  EXPECT_TRUE(lamp::rewriteRows(*section.Root(), Interval));
  EXPECT_XML_EQ("<L06/>", section);
}

}  // namespace
