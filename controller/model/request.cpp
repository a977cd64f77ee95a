#include "controller/model/request.h"

#include <string>

#include "controller/xml/document_reader.h"

namespace lamp::controller {

Objection readRequest(std::string body, Request& request) {
  if (body.empty()) return std::nullopt;
  if (const auto fault = readXml(std::move(body), MostDepth, request.document))
    return malformed("The request is not an acceptable XML document: " + fault->message() + ".");
  return std::nullopt;
}

Objection onlySection(const Request& request, const char* root, const char* alternative,
                      pugi::xml_node& section) {
  const pugi::xml_node found = request.root();
  const std::string expected =
      std::string("<") + root + ">" +
      (alternative == nullptr ? "" : std::string(" or <") + alternative + ">");
  if (!found)
    return malformed("The request has no body; send a document with root " + expected + ".");
  const std::string_view name = found.name();
  if (name != root && (alternative == nullptr || name != alternative)) {
    return malformed("The root of the request is " + quoted(name) + "; it must be " + expected +
                     ".");
  }
  pugi::xml_node other;
  section = pugi::xml_node();
  for (const pugi::xml_node child : found.children()) {
    if (child.type() != pugi::node_element) continue;
    (section ? other : section) = child;
  }
  if (!section) return malformed("The root of the request is empty; it must hold one section.");
  if (other) {
    return malformed("The request holds more than one section (" + quoted(section.name()) + ", " +
                     quoted(other.name()) + "); send one at a time.");
  }
  return std::nullopt;
}

}  // namespace lamp::controller
