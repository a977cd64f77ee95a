#include "tests/host/xml/reference_reader.h"

#include <libxml/parser.h>

#include <algorithm>
#include <iterator>
#include <string_view>

namespace reference {
namespace {

using Element = XmlDocument::XmlNode;

std::string chars(const xmlChar* text) {
  return text ? reinterpret_cast<const char*>(text) : std::string();
}

template <class Named>
std::string qualified(const Named* named) {
  const std::string prefix = named->ns != nullptr ? chars(named->ns->prefix) : std::string();
  return prefix.empty() ? chars(named->name) : prefix + ":" + chars(named->name);
}

std::string withoutBlanks(std::string text) {
  std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
  return text;
}

// Whether nothing but text stands in an element.
bool isLeaf(const xmlNode* element) {
  for (const xmlNode* child = element->children; child != nullptr; child = child->next)
    if (child->type != XML_TEXT_NODE) return false;
  return true;
}

std::string content(const xmlNode* element) {
  std::string out = "(" + qualified(element);
  for (const xmlNs* ns = element->nsDef; ns != nullptr; ns = ns->next)
    out += " xmlns" + (ns->prefix ? ":" + chars(ns->prefix) : "") + "=" + chars(ns->href) + ";";
  for (const xmlAttr* a = element->properties; a != nullptr; a = a->next) {
    xmlChar* value = xmlNodeListGetString(element->doc, a->children, 1);
    out += " " + qualified(a) + "=" + chars(value) + ";";
    xmlFree(value);
  }
  std::string text;
  std::string children;
  for (const xmlNode* child = element->children; child != nullptr; child = child->next) {
    if (child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE)
      text += chars(child->content);
    if (child->type == XML_ELEMENT_NODE) children += content(child);
  }
  return out + " " + (isLeaf(element) ? text : withoutBlanks(text)) + children + ")";
}

bool declaresNamespace(std::string_view name) {
  return name == "xmlns" || name.starts_with("xmlns:");
}

// The reference keeps declarations of namespaces apart, so that they come first here, too.
std::string content(const Element& element, const xmlNode* reference) {
  std::string out = "(" + std::string(element.Tag());
  for (const bool declaration : {true, false})
    for (std::size_t i = 0; i < element.attributeCount(); ++i) {
      const std::string name(element.attributeName(i).text());
      if (declaresNamespace(name) != declaration) continue;
      out += " " + name + "=";
      element.attributeText(i).appendUtf8(out);
      out += ";";
    }
  std::string text;
  element.text().appendUtf8(text);
  const xmlNode* other = reference->children;
  std::string children;
  for (const Element& child : element.Children()) {
    while (other != nullptr && other->type != XML_ELEMENT_NODE) other = other->next;
    children += other ? content(child, other) : "(one too many)";
    if (other) other = other->next;
  }
  return out + " " + (isLeaf(reference) ? text : withoutBlanks(text)) + children + ")";
}

void keepQuiet(void*, const char*, ...) {}

const xmlNode* rootOf(const xmlDoc& document) {
  return xmlDocGetRootElement(const_cast<xmlDoc*>(&document));
}

}  // namespace

Document read(const std::string& xml) {
  // Some of what it says passes by the options.
  xmlSetGenericErrorFunc(nullptr, keepQuiet);
  return Document(xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
}

std::string content(const xmlDoc& document) {
  return content(rootOf(document));
}

std::string content(const XmlDocument& document, const xmlDoc& reference) {
  return content(*document.Root(), rootOf(reference));
}

namespace {

// What a document is refused for, by a part of the error.
struct Refusal {
  const char* error;
  const char* reason;
};
constexpr Refusal Refusals[] = {
    {"document type", "entities and what they include are nothing that a controller sends"},
    {"nested more than",
     "what is nested deeper would only wear out the stack of who walks over it"},
    {"is not UTF-8", "documents are UTF-8; other encodings only hide what stands in them"},
    {"character with the code 0", "XML has none; the other reader takes it for the document's end"},
    {"more than 4096 attributes", "each is looked for among the others"},
    {"names", "each takes memory of its own, so that there is a bound to them"},
};

}  // namespace

bool isListedRefusal(const std::string& error) {
  return std::any_of(std::begin(Refusals), std::end(Refusals), [&](const Refusal& refusal) {
    return error.find(refusal.error) != std::string::npos;
  });
}

}  // namespace reference
