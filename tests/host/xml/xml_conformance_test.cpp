// The documents of the W3C's conformance suite, read here and by an independent reader: what both
// take means the same, and what only this one refuses has a reason that is listed.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/host/xml/reference_reader.h"

namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Most documents of the suite have a document type, which is refused here. What stands behind it is
// a document of its own where it needs no declared entity.
std::string withoutDocumentType(const std::string& xml) {
  const std::size_t start = xml.find("<!DOCTYPE");
  if (start == std::string::npos) return {};
  const std::size_t bracket = xml.find_first_of("[>", start);
  if (bracket == std::string::npos) return {};
  std::size_t end = bracket;
  if (xml[bracket] == '[') {
    end = xml.find("]", bracket);
    if (end != std::string::npos) end = xml.find('>', end);
  }
  return end == std::string::npos ? std::string() : xml.substr(0, start) + xml.substr(end + 1);
}

class Verdicts {
 public:
  void compare(const fs::path& file, const std::string& xml) {
    const reference::Document other = reference::read(xml);
    XmlDocument document;
    host::XmlError error;
    const bool isTaken = document.Parse(xml, &error);
    if (isTaken && other == nullptr) {
      ADD_FAILURE() << "only this reader takes " << file << "\n" << xml;
    } else if (isTaken) {
      // The other reader drops declarations of namespaces that it takes for mistakes.
      if (xml.find("xmlns") == std::string::npos) {
        EXPECT_EQ(reference::content(document, *other), reference::content(*other)) << file;
      }
      ++taken;
    } else if (other != nullptr) {
      EXPECT_TRUE(reference::isListedRefusal(error.text())) << file << ": " << error.text() << "\n"
                                                            << xml;
      ++refusedHere;
    } else {
      ++refused;
    }
  }

  int taken = 0;
  int refused = 0;
  int refusedHere = 0;
};

TEST(XmlConformance, TheSuiteIsJudgedAsByAnotherReaderButForListedReasons) {
  const fs::path suite = LAMP_XML_SUITE;
  if (!fs::exists(suite)) GTEST_SKIP() << "scripts/fetch_xml_suite.sh found no npm";
  Verdicts verdicts;
  for (const auto& entry : fs::recursive_directory_iterator(suite)) {
    if (entry.path().extension() != ".xml") continue;
    const std::string xml = contentOf(entry.path());
    verdicts.compare(entry.path(), xml);
    if (const std::string rest = withoutDocumentType(xml); !rest.empty())
      verdicts.compare(entry.path().string() + " without its document type", rest);
  }
  EXPECT_GT(verdicts.taken, 300);
  EXPECT_GT(verdicts.refused, 300);
  RecordProperty("taken", verdicts.taken);
  RecordProperty("refused", verdicts.refused);
  RecordProperty("refusedHere", verdicts.refusedHere);
}

}  // namespace
