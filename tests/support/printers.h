#pragma once

#include <ostream>

#include "host/text/basic_string.h"

/// How a failed assertion shows the host's strings.
inline void PrintTo(const XCBasicString& text, std::ostream* out) {
  *out << '"' << text.ToUtf8() << '"';
}
