#pragma once

#include <gtest/gtest.h>

#include <string>

#include "host/xml/xml_document.h"

namespace support {

/// XML for a comparison: a text, a document or an element of one.
struct XmlSource {
  XmlSource(const char* xml) : text(xml) {}
  XmlSource(std::string xml) : text(std::move(xml)) {}
  XmlSource(const XmlDocument& document);
  XmlSource(const XmlDocument::XmlNode& element);
  /// An element that may be missing; a missing one differs from everything.
  XmlSource(const XmlDocument::XmlNode* element);

  std::string text;
};

/// The document in one line, without its declaration; empty for one without root.
std::string compactXml(const XmlDocument& document);
std::string compactXml(const XmlDocument::XmlNode& element);

/// A document with this content; throws std::invalid_argument with the place when it is no XML.
XmlDocument parsedXml(const std::string& xml);

/// Equal but for white space between elements. The order of attributes counts.
testing::AssertionResult xmlEqual(const char* expectedText, const char* actualText,
                                  const XmlSource& expected, const XmlSource& actual);

/// Equal but for white space between elements and the order of attributes.
testing::AssertionResult xmlEqualInAnyOrder(const char* expectedText, const char* actualText,
                                            const XmlSource& expected, const XmlSource& actual);

}  // namespace support

#define EXPECT_XML_EQ(expected, actual) EXPECT_PRED_FORMAT2(support::xmlEqual, expected, actual)
#define ASSERT_XML_EQ(expected, actual) ASSERT_PRED_FORMAT2(support::xmlEqual, expected, actual)
#define EXPECT_XML_EQ_ANY_ORDER(expected, actual) \
  EXPECT_PRED_FORMAT2(support::xmlEqualInAnyOrder, expected, actual)
