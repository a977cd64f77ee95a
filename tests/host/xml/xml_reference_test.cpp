// An independent reader tells what a document is: this one must agree with it.

#include <gtest/gtest.h>

#include "tests/host/xml/random_tree.h"
#include "tests/host/xml/reference_reader.h"
#include "tests/support/xml_compare.h"

namespace {

void expectAgreement(const std::string& xml) {
  const reference::Document reference = reference::read(xml);
  XmlDocument document;
  host::XmlError error;
  const bool read = document.Parse(xml, &error);
  ASSERT_EQ(read, reference != nullptr) << error.text() << "\n" << xml;
  if (!read) return;
  ASSERT_EQ(reference::content(document, *reference), reference::content(*reference)) << xml;
}

TEST(XmlReference, BothReadTheSameInWhatWasWritten) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    random_tree::Engine engine(seed);
    const XmlDocument document = random_tree::make(engine, 30);
    expectAgreement(document.ToString(XmlDocument::Layout::compact));
    expectAgreement(document.ToString(XmlDocument::Layout::indented));
  }
}

// Documents with everything that may stand in one, damaged at random.
TEST(XmlReference, BothTakeAndRefuseTheSameDamagedDocuments) {
  const std::string pieces[] = {"<a",    "<b c='d'",  ">",
                                "/>",    "</a>",      "</b>",
                                "<!--",  "-->",       "--",
                                "-",     "<![CDATA[", "]]>",
                                "]",     "<?p",       "?>",
                                " ",     "\n",        "=",
                                "\"",    "'",         "&amp;",
                                "&#65;", "&#x41;",    "&",
                                ";",     "<",         "x",
                                "é",     "c=\"d\"",   " c=\"d\"",
                                "\t",    "0",         "<?xml version=\"1.0\"?>"};
  for (unsigned seed = 0; seed < 10000; ++seed) {
    random_tree::Engine engine(seed);
    std::string xml =
        "<?xml version=\"1.0\"?>\n<!-- c --><a c='1' d=\"&lt;2\">t<b><![CDATA[<x>]]></b>"
        "<?p data?><b  e=\"\"/> <b>&#241;&amp;</b><!-- d --></a>\n";
    if (engine() % 2 == 0) xml.erase(0, xml.find('\n') + 1);
    for (auto i = engine() % 3 + 1; i > 0; --i) {
      const std::size_t at = engine() % xml.size();
      const std::string& piece = pieces[engine() % std::size(pieces)];
      if (engine() % 3 == 0)
        xml.erase(at, engine() % 4 + 1);
      else if (engine() % 2 == 0)
        xml.insert(at, piece);
      else
        xml.replace(at, piece.size(), piece);
    }
    // The other reader takes any version; a version is "1." and digits.
    const std::size_t version = xml.find("version=\"1.");
    if (version != std::string::npos && xml.substr(version, 13) != "version=\"1.0\"") continue;
    expectAgreement(xml);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
