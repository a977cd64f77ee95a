// The inputs that fuzzing starts from and what it found, read here and by an independent reader:
// what both take means the same, and what only this one refuses has a reason that is listed.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/host/xml/reference_reader.h"
#include "tests/support/xml_compare.h"

namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// An input may hold more than a document: settings of the target before it, several documents one
// behind the other, noise at its end. So every stretch that may be one is tried.
std::vector<std::string> documentsIn(const std::string& input) {
  std::vector<std::string> found = {input};
  for (const char* beginning : {"<?xml", "<deviceCfg", "<configuration", "<calendar", "<a"}) {
    for (std::size_t at = input.find(beginning); at != std::string::npos;
         at = input.find(beginning, at + 1)) {
      found.push_back(input.substr(at));
      for (const char* ending : {"</deviceCfg>", "</configuration>", "</calendar>", "</a>"})
        if (const std::size_t end = input.find(ending, at); end != std::string::npos)
          found.push_back(input.substr(at, end + std::string(ending).size() - at));
    }
  }
  return found;
}

TEST(XmlCorpus, WhatBothReadersTakeMeansTheSameAndOtherRefusalsAreListed) {
  int taken = 0;
  int refused = 0;
  int refusedHere = 0;
  for (const char* part : {"corpus", "findings"}) {
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(LAMP_FUZZ_FOLDER) / part)) {
      if (!entry.is_regular_file()) continue;
      for (const std::string& xml : documentsIn(contentOf(entry.path()))) {
        const reference::Document other = reference::read(xml);
        XmlDocument document;
        host::XmlError error;
        if (document.Parse(xml, &error)) {
          ASSERT_NE(other, nullptr) << entry.path() << "\n" << xml;
          EXPECT_EQ(reference::content(document, *other), reference::content(*other))
              << entry.path();
          ++taken;
        } else if (other != nullptr) {
          EXPECT_TRUE(reference::isListedRefusal(error.text()))
              << entry.path() << ": " << error.text();
          ++refusedHere;
        } else {
          ++refused;
        }
      }
    }
  }
  // There is something of each kind, or the test compares nothing.
  EXPECT_GT(taken, 50);
  EXPECT_GT(refused, 50);
  EXPECT_GT(refusedHere, 0);
  RecordProperty("taken", taken);
  RecordProperty("refused", refused);
  RecordProperty("refusedHere", refusedHere);
}

}  // namespace
