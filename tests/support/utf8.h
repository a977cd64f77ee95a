#pragma once

#include <string>
#include <string_view>

#include "host/text/basic_string.h"

namespace support {

/// A text for a test's script: UTF-8, or what the host holds as UTF-16.
struct Utf8 {
  Utf8(const char* text) : value(text) {}
  Utf8(std::string text) : value(std::move(text)) {}
  Utf8(std::string_view text) : value(text) {}
  Utf8(const char16_t* text) : value(XCBasicString(text).ToUtf8()) {}
  Utf8(std::u16string_view text) : value(XCBasicString(text).ToUtf8()) {}
  Utf8(const XCBasicString& text) : value(text.ToUtf8()) {}

  XCBasicString wide() const { return XCBasicString::FromUtf8(value); }

  std::string value;
};

}  // namespace support
