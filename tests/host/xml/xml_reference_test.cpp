// An independent reader tells what a document is: this one must agree with it.

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include "tests/host/xml/random_tree.h"
#include "tests/support/xml_compare.h"

namespace {

struct Free {
  void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
};
using Reference = std::unique_ptr<xmlDoc, Free>;

Reference readReference(const std::string& xml) {
  return Reference(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr,
                                 XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
}

std::string chars(const xmlChar* text) {
  return text ? reinterpret_cast<const char*>(text) : std::string();
}

// Text beside other pieces is compared without its blanks: those between elements are no content,
// nor are those beside a comment or a CDATA section.
std::string withoutBlanks(std::string text) {
  std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
  return text;
}

// What a document holds, in a form of its own: "(tag name=value;... text (child)...)".
std::string content(const xmlNode* element) {
  std::string out = "(" + chars(element->name);
  for (const xmlAttr* a = element->properties; a != nullptr; a = a->next) {
    xmlChar* value = xmlNodeListGetString(element->doc, a->children, 1);
    out += " " + chars(a->name) + "=" + chars(value) + ";";
    xmlFree(value);
  }
  std::string text;
  std::string children;
  bool leaf = true;
  for (const xmlNode* child = element->children; child != nullptr; child = child->next) {
    if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE)
      text += chars(child->content);
    leaf = leaf && child->type == XML_TEXT_NODE;
    if (child->type == XML_ELEMENT_NODE) children += content(child);
  }
  return out + " " + (leaf ? text : withoutBlanks(text)) + children + ")";
}

std::string content(const XmlDocument::XmlNode& element, const xmlNode* reference) {
  std::string out = "(" + std::string(element.Tag());
  for (std::size_t i = 0; i < element.attributeCount(); ++i) {
    out += " " + std::string(element.attributeName(i).text()) + "=";
    element.attributeText(i).appendUtf8(out);
    out += ";";
  }
  std::string text;
  element.text().appendUtf8(text);
  bool leaf = true;
  const xmlNode* other = reference->children;
  std::string children;
  for (const xmlNode* child = other; child != nullptr; child = child->next)
    leaf = leaf && child->type == XML_TEXT_NODE;
  for (const XmlDocument::XmlNode& child : element.Children()) {
    while (other != nullptr && other->type != XML_ELEMENT_NODE) other = other->next;
    children += other ? content(child, other) : "(one too many)";
    if (other) other = other->next;
  }
  return out + " " + (leaf ? text : withoutBlanks(text)) + children + ")";
}

void expectAgreement(const std::string& xml) {
  const Reference reference = readReference(xml);
  XmlDocument document;
  host::XmlError error;
  const bool read = document.Parse(xml, &error);
  ASSERT_EQ(read, reference != nullptr) << error.text() << "\n" << xml;
  if (!read) return;
  const xmlNode* root = xmlDocGetRootElement(reference.get());
  ASSERT_EQ(content(*document.Root(), root), content(root)) << xml;
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
