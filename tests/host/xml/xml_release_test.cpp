#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>
#include <string>

#include "host/xml/xml_holder.h"
#include "tests/host/xml/random_tree.h"
#include "tests/support/printers.h"
#include "tests/support/xml_compare.h"

#ifdef __SANITIZE_ADDRESS__
// Of the sanitizer's interface, whose header not every compiler brings.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

using host::XmlAnchor;
using Node = XmlDocument::XmlNode;

namespace {

// Enough for a release to be worth it.
constexpr int Many = 3000;

void addMany(Node& parent, const std::string& mark, int count = Many) {
  Node& list = parent.NewChild("list");
  for (int i = 0; i < count; ++i) {
    Node& row = list.NewChild("row");
    row.setAttribute("mark", XCBasicString::FromUtf8(mark + std::to_string(i)));
    row.NewChild("id", XCBasicString::FromUtf8("id of " + mark + std::to_string(i)));
  }
}

XmlDocument filled() {
  XmlDocument document("root");
  addMany(*document.Root(), "é");
  addMany(*document.Root(), "stays");
  return document;
}

TEST(XmlRelease, LeavesWhatStandsInTheDocumentAsItIs) {
  XmlDocument document = filled();
  Node* stays = document.Root()->FirstChild()->NextSibling();
  const Node* row = stays->FirstChild();
  document.Root()->RemoveChild(document.Root()->FirstChild());
  const std::string before = document.ToString();
  document.ReleaseRemoved();
  EXPECT_EQ(document.ToString(), before);
  EXPECT_EQ(document.Root()->FirstChild(), stays) << "elements keep their addresses";
  EXPECT_EQ(stays->FirstChild(), row);
  addMany(*document.Root(), "new");
  EXPECT_EQ(row->getAttribute("mark"), u"stays0");
  EXPECT_EQ(row->Value("id"), u"id of stays0");
}

TEST(XmlRelease, HappensToRandomTreesWithoutAChangeToThem) {
  for (unsigned seed = 0; seed < 30; ++seed) {
    random_tree::Engine engine(seed);
    XmlDocument document("root");
    for (int round = 0; round < 4; ++round) {
      for (int i = 0; i < 6; ++i)
        document.Root()->NewChild("tree") = *random_tree::make(engine, 200).Root();
      addMany(*document.Root(), "round", 500);
      for (Node* child = document.Root()->FirstChild(); child != nullptr;) {
        Node* const next = child->NextSibling();
        if (engine() % 3 == 0) document.Root()->RemoveChild(child);
        child = next;
      }
      const std::string before = document.ToString();
      document.ReleaseRemoved();
      ASSERT_EQ(document.ToString(), before) << "seed " << seed;
    }
  }
}

TEST(XmlRelease, SparesWhatAnAnchorRefersToWithAllThatWasRemovedWithIt) {
  XmlDocument document = filled();
  Node* list = document.Root()->FirstChild();
  const XmlAnchor anchor(list->FirstChild()->NextSibling());
  document.Root()->RemoveChild(list);
  const std::string before = support::compactXml(*list);
  for (int round = 0; round < 5; ++round) {
    document.ReleaseRemoved();
    addMany(*document.Root(), "new");
    document.Root()->RemoveChildren();
  }
  EXPECT_EQ(anchor->getAttribute("mark"), u"é1");
  EXPECT_EQ(anchor->Parent(), list);
  EXPECT_EQ(support::compactXml(*list), before);
}

// What the program has allocated and not given back. A sanitizer keeps what was freed from being
// used again, so that places tell nothing.
std::size_t allocatedBytes() {
#ifdef __SANITIZE_ADDRESS__
  return __sanitizer_get_current_allocated_bytes();
#else
  return ::mallinfo2().uordblks + ::mallinfo2().hblkhd;
#endif
}

TEST(XmlRelease, AThousandReplacementsTakeNoMoreMemoryThanTen) {
  XmlDocument document("root");
  const std::size_t before = allocatedBytes();
  std::size_t afterTen = 0;
  for (int round = 0; round < 1000; ++round) {
    document.Root()->RemoveChildren();
    addMany(*document.Root(), std::to_string(round), 500);
    const XmlAnchor shown(document.Root()->FirstChild()->FirstChild());
    document.ReleaseRemoved();
    if (round == 9) afterTen = allocatedBytes() - before;
  }
  EXPECT_LE(allocatedBytes() - before, 2 * afterTen);
}

TEST(XmlRelease, AnAnchorLetGoReleasesAtTheNextTime) {
  const std::size_t before = allocatedBytes();
  XmlDocument document = filled();
  const std::size_t once = allocatedBytes() - before;
  {
    const XmlAnchor anchor(document.Root()->FirstChild());
    document.Root()->RemoveChild(anchor);
    document.ReleaseRemoved();
  }
  for (int round = 0; round < 20; ++round) {
    document.Root()->RemoveChildren();
    addMany(*document.Root(), "new");
    document.ReleaseRemoved();
  }
  EXPECT_LE(allocatedBytes() - before, 4 * once);
}

TEST(XmlRelease, CopiesInOtherDocumentsStayReadable) {
  XmlDocument copy("copy");
  XmlDocument document = filled();
  *copy.Root() = *document.Root();
  const std::string before = copy.ToString();
  document.Root()->RemoveChildren();
  document.ReleaseRemoved();
  EXPECT_EQ(copy.ToString(), before);
}

TEST(XmlRelease, TextsThatCameFromAnotherDocumentAreTheDocumentsOwnThen) {
  XmlDocument document = filled();
  {
    const XmlDocument other =
        support::parsedXml("<other brought='" + std::string(3000, 'x') + "'/>");
    document.Root()->NewChild("other") = *other.Root();
  }
  document.Root()->RemoveChild(document.Root()->FirstChild());
  document.ReleaseRemoved();
  EXPECT_EQ(document.Root()->Node("other")->attributeText(0).size(), 3000U);
  EXPECT_EQ(document.Root()->Node("other")->attributeName(0).text(), "brought");
}

TEST(XmlRelease, NamesOfReleasedElementsGo) {
  XmlDocument document = filled();
  document.Root()->NewChild("gone") = *support::parsedXml("<goesByRelease/>").Root();
  ASSERT_FALSE(host::XmlName::find("goesByRelease").text().empty());
  document.Root()->RemoveChildren();
  document.ReleaseRemoved();
  EXPECT_TRUE(host::XmlName::find("goesByRelease").text().empty());
}

TEST(XmlRelease, AHolderOfWhatIsNoLongerThereHoldsNothing) {
  XmlAnchor anchor;
  {
    XmlDocument gone = filled();
    anchor = XmlAnchor(gone.Root()->FirstChild());
  }
  const XmlAnchor none;
  for (int i = 0; i < 5; ++i) {
    XmlDocument document = filled();
    document.Root()->RemoveChildren();
    document.ReleaseRemoved();
    EXPECT_XML_EQ("<root/>", document);
  }
}

TEST(XmlRelease, AnAnchorMayNameAPlaceThatWasReleasedBefore) {
  XmlDocument document = filled();
  Node* const element = document.Root()->FirstChild()->FirstChild();
  document.Root()->RemoveChild(document.Root()->FirstChild());
  document.ReleaseRemoved();
  const XmlAnchor late(element);  // wrong, and harmless as long as it is not looked at
  for (int i = 0; i < 3; ++i) {
    document.Root()->RemoveChildren();
    document.ReleaseRemoved();
    addMany(*document.Root(), "new");
    document.Root()->RemoveChildren();
    document.ReleaseRemoved();
  }
  EXPECT_XML_EQ("<root/>", document);
}

TEST(XmlRelease, AMovedAndAnEmptyDocumentCanBeAsked) {
  XmlDocument empty;
  empty.ReleaseRemoved();
  XmlDocument document = filled();
  XmlDocument moved = std::move(document);
  document.ReleaseRemoved();
  moved.Root()->RemoveChild(moved.Root()->FirstChild());
  moved.ReleaseRemoved();
  EXPECT_EQ(moved.Root()->FirstChild()->FirstChild()->getAttribute("mark"), u"stays0");
}

}  // namespace
