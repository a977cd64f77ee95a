#include "tests/support/xml_compare.h"

#include <stdexcept>

namespace support {
namespace {

constexpr std::string_view Nothing = "(nothing)";

struct Sides {
  XmlDocument expected;
  XmlDocument actual;
  std::string fault;
};

bool read(const std::string& text, XmlDocument& document) {
  return text.empty() || document.Parse(text);
}

std::string shown(const std::string& text, const XmlDocument& document) {
  if (document.Root() == nullptr) return text.empty() ? std::string(Nothing) : text;
  std::string indented = document.ToString(XmlDocument::Layout::indented);
  return indented.substr(indented.find('\n') + 1);
}

testing::AssertionResult differs(const char* expectedText, const char* actualText,
                                 const std::string& expected, const std::string& actual) {
  return testing::AssertionFailure() << "expected (" << expectedText << "):\n"
                                     << expected << "\nactual (" << actualText << "):\n"
                                     << actual;
}

template <class Same>
testing::AssertionResult compare(const char* expectedText, const char* actualText,
                                 const XmlSource& expected, const XmlSource& actual, Same same) {
  XmlDocument left;
  XmlDocument right;
  const bool readable = read(expected.text, left) && read(actual.text, right);
  if (readable && same(left, right)) return testing::AssertionSuccess();
  auto result =
      differs(expectedText, actualText, shown(expected.text, left), shown(actual.text, right));
  if (!readable) result << "\n(one of them is no XML)";
  return result;
}

}  // namespace

XmlSource::XmlSource(const XmlDocument& document) : text(compactXml(document)) {}
XmlSource::XmlSource(const XmlDocument::XmlNode& element) : text(compactXml(element)) {}
XmlSource::XmlSource(const XmlDocument::XmlNode* element)
    : text(element ? compactXml(*element) : "(no element)") {}

std::string compactXml(const XmlDocument& document) {
  const std::string text = document.ToString();
  return text.empty() ? text : text.substr(text.find('\n') + 1);
}

std::string compactXml(const XmlDocument::XmlNode& element) {
  XmlDocument document(element.TagName());
  *document.Root() = element;
  return compactXml(document);
}

XmlDocument parsedXml(const std::string& xml) {
  XmlDocument document;
  host::XmlError error;
  if (!document.Parse(xml, &error)) throw std::invalid_argument(error.text() + " in: " + xml);
  return document;
}

testing::AssertionResult xmlEqual(const char* expectedText, const char* actualText,
                                  const XmlSource& expected, const XmlSource& actual) {
  return compare(expectedText, actualText, expected, actual,
                 [](const XmlDocument& left, const XmlDocument& right) {
                   return left.ToString() == right.ToString();
                 });
}

testing::AssertionResult xmlEqualInAnyOrder(const char* expectedText, const char* actualText,
                                            const XmlSource& expected, const XmlSource& actual) {
  return compare(expectedText, actualText, expected, actual,
                 [](const XmlDocument& left, const XmlDocument& right) {
                   if (left.Root() == nullptr || right.Root() == nullptr)
                     return left.Root() == right.Root();
                   return *left.Root() == *right.Root();
                 });
}

}  // namespace support
