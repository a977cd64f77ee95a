#pragma once

#include <string>
#include <vector>

#include "host/xml/xml_document.h"

namespace workbench {

/// What a controller made of a section that was sent to it.
struct ReadBackReport {
  struct Difference {
    std::string what;  ///< "TimeZone", "17: Reference"
    std::string sent;
    std::string now;  ///< empty also where the value is not there at all
  };
  std::size_t values = 0;  ///< that were sent and can be compared
  std::vector<Difference> notTaken;
  std::string activation;  ///< the moment from which the values are to hold, as sent; or empty
};

/// Compares a section as it was sent with the same section as it was read afterwards: every value
/// that was sent, and no other. Stamps, masked passwords and the states of inputs and outputs are
/// left out; a value that is not there counts as an empty one.
ReadBackReport compareReadBack(const XmlDocument::XmlNode& sent, const XmlDocument::XmlNode& read);

}  // namespace workbench
