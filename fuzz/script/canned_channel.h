#pragma once

#include <string>

namespace fuzz {

/// What the command channel of a program answers here, in place of a controller on the network:
/// reads with this document, or a failure where it is no XML. Writes succeed.
void setCannedReply(std::string xml);

}  // namespace fuzz
