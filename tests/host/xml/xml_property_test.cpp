#include <gtest/gtest.h>

#include "tests/host/xml/random_tree.h"
#include "tests/support/xml_compare.h"

namespace {

using Layout = XmlDocument::Layout;

TEST(XmlProperty, WhatIsWrittenReadsAsItWas) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    random_tree::Engine engine(seed);
    const XmlDocument document = random_tree::make(engine, 1 + int(seed % 60));
    for (const Layout layout : {Layout::compact, Layout::indented}) {
      XmlDocument again;
      host::XmlError error;
      ASSERT_TRUE(again.Parse(document.ToString(layout), &error))
          << "seed " << seed << ": " << error.text() << "\n"
          << document.ToString(layout);
      ASSERT_TRUE(*again.Root() == *document.Root()) << "seed " << seed << "\n"
                                                     << document.ToString(layout) << "\n"
                                                     << again.ToString(layout);
      ASSERT_EQ(again.ToString(layout), document.ToString(layout)) << "seed " << seed;
    }
  }
}

TEST(XmlProperty, ACopyIsEqualUntilOneSideChanges) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    random_tree::Engine engine(seed);
    XmlDocument document = random_tree::make(engine, 40);
    XmlDocument copy("copy");
    *copy.Root() = *document.Root();
    ASSERT_TRUE(*copy.Root() == *document.Root()) << "seed " << seed;
    ASSERT_EQ(copy.ToString(), document.ToString()) << "seed " << seed;
    // Change one attribute of the element that is reached by random turns.
    XmlDocument::XmlNode* at = copy.Root();
    while (at->FirstChild() != nullptr && engine() % 4 != 0) {
      at = at->FirstChild();
      while (at->NextSibling() != nullptr && engine() % 2 != 0) at = at->NextSibling();
    }
    at->setAttribute("a", at->getAttribute("a") + u"!");
    ASSERT_FALSE(*copy.Root() == *document.Root()) << "seed " << seed;
    at->setAttribute("a", document.Root()->getAttribute("none"));
    at->eraseAttribute("a");
  }
}

TEST(XmlProperty, DamagedDocumentsAreRefusedOrReadButNeverHarm) {
  for (unsigned seed = 0; seed < 3000; ++seed) {
    random_tree::Engine engine(seed);
    std::string xml = random_tree::make(engine, 8).ToString();
    for (auto i = engine() % 4 + 1; i > 0; --i) {
      const std::size_t at = engine() % xml.size();
      switch (engine() % 3) {
        case 0:
          xml[at] = static_cast<char>(engine());
          break;
        case 1:
          xml.erase(at, engine() % 5 + 1);
          break;
        default:
          xml.insert(at, xml.substr(engine() % xml.size(), engine() % 12));
      }
      if (xml.empty()) xml = "<";
    }
    XmlDocument document;
    host::XmlError error;
    if (document.Parse(xml, &error)) {
      XmlDocument again;
      ASSERT_TRUE(again.Parse(document.ToString())) << "seed " << seed << "\n" << xml;
      ASSERT_TRUE(*again.Root() == *document.Root()) << "seed " << seed << "\n" << xml;
    } else {
      ASSERT_FALSE(error.cause.empty()) << "seed " << seed;
      ASSERT_LE(error.offset, xml.size()) << "seed " << seed;
    }
  }
}

}  // namespace
