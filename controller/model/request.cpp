#include "controller/model/request.h"

#include <string>

#include "controller/xml/well_formed.h"

namespace lamp::controller {

Objection readRequest(std::string sent, Request& request) {
  request.body = std::move(sent);
  std::string& body = request.body;
  if (body.empty()) return std::nullopt;
  if (const auto fault = findXmlFault(body, kDepthLimit)) {
    return malformed("The request is not an acceptable XML document: line " +
                     std::to_string(fault->line) + ", column " + std::to_string(fault->column) +
                     ": " + fault->text + ".");
  }
  const pugi::xml_parse_result result = request.document.load_buffer_inplace(
      body.data(), body.size(), pugi::parse_default, pugi::encoding_utf8);
  if (!result) {
    return malformed(std::string("The request is not an acceptable XML document: ") +
                     result.description() + ".");
  }
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
