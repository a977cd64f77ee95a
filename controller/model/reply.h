#pragma once

#include <pugixml.hpp>
#include <string>

#include "controller/model/refusal.h"

namespace lamp::controller {

/// What is answered to a command.
struct Reply {
  int status = 200;
  std::string type;  ///< content type; empty for an empty body
  std::string body;

  static Reply document(const pugi::xml_document& content);
  /// A document that is printed already.
  static Reply text(std::string content);
  static Reply refusal(const Refusal& refusal);
  /// Success of a write: no body.
  static Reply done();
};

}  // namespace lamp::controller
