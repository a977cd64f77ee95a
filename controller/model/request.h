#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "controller/model/refusal.h"

namespace lamp::controller {

/// A request document. `document` may be without root where the client sent no body.
struct Request {
  pugi::xml_document document;

  pugi::xml_node root() const { return document.document_element(); }
};

/// Reads a body. An empty body gives a document without root; anything that is not one well-formed
/// document is refused with the place of the fault.
Objection readRequest(std::string body, Request& request);

/// The only child element of the root, for documents that carry one section. Refuses a missing
/// root, another root than `root` or `alternative` (which may be null), and any other count of
/// children.
Objection onlySection(const Request& request, const char* root, const char* alternative,
                      pugi::xml_node& section);

}  // namespace lamp::controller
