// The XML model on arbitrary documents: an independent reader agrees with it, what it writes it
// reads again, and edits do what they do to a plain tree.

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "fuzz/fault.h"
#include "fuzz/input.h"
#include "fuzz/xml/edited_document.h"
#include "host/xml/xml_document.h"
#include "tests/host/xml/reference_reader.h"

namespace {

using fuzz::expect;
using Layout = XmlDocument::Layout;

bool holdsOneOf(const std::string& text, const auto& parts) {
  return std::any_of(parts.begin(), parts.end(),
                     [&](std::string_view part) { return text.find(part) != std::string::npos; });
}

// Why a document is refused that is one: what is not accepted, and limits.
bool isRefusedOnPurpose(const std::string& cause) {
  constexpr std::array<std::string_view, 8> Reasons = {
      "a document type (DTD)",
      "is not UTF-8",
      "elements are nested more than",
      "too many or too long names",
      "an element has more than 65535 attributes",
      "bytes, more than the",
      "a character with the code 0",  // which ends a document for the reference
      "a malformed XML declaration",  // of another version than "1." and digits
  };
  return holdsOneOf(cause, Reasons);
}

// For the reference names with a colon have rules, and so has "xmlns"; here they are names.
bool usesNamespaces(const XmlDocument::XmlNode& element) {
  const auto isQualified = [](std::string_view name) {
    return name == "xmlns" || name.find(':') != std::string_view::npos;
  };
  if (isQualified(element.Tag())) return true;
  for (std::size_t i = 0; i < element.attributeCount(); ++i)
    if (isQualified(element.attributeName(i).text())) return true;
  for (const XmlDocument::XmlNode& child : element.Children())
    if (usesNamespaces(child)) return true;
  return false;
}

// A document that calls itself ASCII is read as UTF-8 here.
bool namesEncoding(const std::string& xml) {
  return xml.find("encoding") != std::string::npos;
}

void compareWithReference(const std::string& xml, const XmlDocument& document, bool read,
                          const host::XmlError& error) {
  const reference::Document other = reference::read(xml);
  if (read && usesNamespaces(*document.Root())) return;
  if (read && other)
    expect(reference::content(document, *other) == reference::content(*other),
           "both readers read the same");
  if (read && !other) expect(namesEncoding(xml), "what is no document is refused");
  if (!read && other && !isRefusedOnPurpose(error.cause))
    fuzz::fault("a document is refused: " + error.text());
}

void checkRefusal(const std::string& xml, const XmlDocument& document,
                  const host::XmlError& error) {
  expect(!error.cause.empty(), "a refusal has a cause");
  expect(error.offset <= xml.size(), "a refusal names a place in the document");
  expect(document.Root()->Tag() == "before", "a refused document leaves the old one");
}

void checkRoundTrip(const XmlDocument& document) {
  for (const Layout layout : {Layout::compact, Layout::indented}) {
    const std::string written = document.ToString(layout);
    XmlDocument again;
    host::XmlError error;
    if (!again.Parse(written, &error)) fuzz::fault("what was written is refused: " + error.text());
    expect(*again.Root() == *document.Root(), "what was written reads as it was");
    expect(again.ToString(layout) == written, "it is written the same again");
  }
}

void editAndCheck(XmlDocument& document, fuzz::Input& input) {
  XmlDocument copy("copy");
  *copy.Root() = *document.Root();
  const std::string before = copy.ToString();
  {
    fuzz::EditedDocument edited(document);
    for (int edits = 0; edits < 60 && !input.empty(); ++edits) edited.edit(input);
    edited.check();
    if (edited.depth() <= host::XmlLimits().depth) checkRoundTrip(document);
  }
  expect(copy.ToString() == before, "edits leave a copy as it was");
  document.Clear();
  expect(copy.ToString() == before, "a copy lives on when its source is gone");
  checkRoundTrip(copy);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::string xml = input.document();
  XmlDocument document("before");
  host::XmlError error;
  const bool read = document.Parse(xml, &error);
  compareWithReference(xml, document, read, error);
  if (read) {
    checkRoundTrip(document);
    editAndCheck(document, input);
  } else {
    checkRefusal(xml, document, error);
  }
  return 0;
}
