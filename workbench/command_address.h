#pragma once

#include <string>
#include <string_view>

#include "host/text/basic_string.h"

namespace workbench {

/// Where a command goes, taken from the URI parameters that its dialog appended.
struct CommandAddress {
  bool usable = false;
  bool secure = false;  ///< the address begins with "https://"
  std::string host;     ///< as a URL holds it: a name, an IPv4 address, an IPv6 address in brackets
  int port = 0;
  /// How messages name it: "host:port" where it is usable, else what was typed.
  XCBasicString shown;

  /// The URL of a command's number with its parameters.
  std::string url(int command, std::string_view parameters) const;
};

/// Reads the parameters `address` and `socket` of "name=value&name=value". The address is a name,
/// an IPv4 or an IPv6 address, with "https://" or "http://" in front of it or not; the socket is a
/// number from 1 to 65535. Anything else is an address that is not usable.
CommandAddress commandAddress(std::string_view parameters);

}  // namespace workbench
