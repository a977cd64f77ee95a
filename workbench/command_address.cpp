#include "workbench/command_address.h"

#include <algorithm>
#include <charconv>

#include "workbench/wire/uri_parameters.h"

namespace workbench {
namespace {

constexpr int LastPort = 65535;

bool isHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

bool isLetterOrDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Takes a scheme off the front, written in either case.
bool takeScheme(std::string_view& address, std::string_view scheme) {
  if (address.size() < scheme.size()) return false;
  const bool same =
      std::equal(scheme.begin(), scheme.end(), address.begin(), [](char wanted, char typed) {
        return wanted == (typed >= 'A' && typed <= 'Z' ? static_cast<char>(typed + 32) : typed);
      });
  if (same) address.remove_prefix(scheme.size());
  return same;
}

// "2001:db8::1" or "fe80::1%eth0", with brackets around it or not.
std::string sixthVersion(std::string_view address) {
  if (address.starts_with('[')) {
    if (!address.ends_with(']')) return {};
    address = address.substr(1, address.size() - 2);
  }
  const std::size_t zone = std::min(address.find('%'), address.size());
  const std::string_view digits = address.substr(0, zone);
  const bool good = digits.size() >= 2 && std::all_of(digits.begin(), digits.end(), [](char c) {
                      return isHexDigit(c) || c == ':' || c == '.';
                    });
  if (!good) return {};
  if (zone == address.size()) return "[" + std::string(digits) + "]";
  const std::string_view name = address.substr(zone + 1);
  const bool goodName = !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return isLetterOrDigit(c) || c == '-' || c == '_' || c == '.';
  });
  return goodName ? "[" + std::string(digits) + "%25" + std::string(name) + "]" : std::string();
}

std::string hostOf(std::string_view address) {
  if (address.starts_with('[') || std::count(address.begin(), address.end(), ':') >= 2)
    return sixthVersion(address);
  // Letters beyond ASCII are left to the resolver, which knows international names.
  const bool good = !address.empty() && std::all_of(address.begin(), address.end(), [](char c) {
    return isLetterOrDigit(c) || c == '-' || c == '_' || c == '.' ||
           static_cast<unsigned char>(c) >= 0x80;
  });
  return good ? std::string(address) : std::string();
}

int portOf(std::string_view digits) {
  int port = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
  const bool good = error == std::errc() && end == digits.data() + digits.size();
  return good && port >= 1 && port <= LastPort ? port : 0;
}

}  // namespace

CommandAddress commandAddress(std::string_view parameters) {
  const std::string typed = parameterValue(parameters, "address");
  const std::string socket = parameterValue(parameters, "socket");
  CommandAddress result;
  std::string_view address = typed;
  result.secure = takeScheme(address, "https://");
  if (!result.secure) takeScheme(address, "http://");
  if (address.ends_with('/')) address.remove_suffix(1);
  result.host = hostOf(address);
  result.port = portOf(socket);
  result.usable = !result.host.empty() && result.port != 0;
  result.shown = XCBasicString::FromUtf8(
      result.usable ? result.host + ":" + std::to_string(result.port)
                    : "\"" + typed + (result.host.empty() ? "" : ":" + socket) + "\"");
  return result;
}

std::string CommandAddress::url(int command, std::string_view parameters) const {
  constexpr char Hex[] = "0123456789ABCDEF";
  std::string out = secure ? "https://" : "http://";
  out += host + ":" + std::to_string(port) + "/lampmanager/command/" + std::to_string(command);
  out += '?';
  for (const char c : parameters) {
    // The parameters come encoded; what could end the request's line is encoded all the same.
    const auto byte = static_cast<unsigned char>(c);
    if (byte > 0x20 && byte < 0x7F && c != '#') {
      out += c;
    } else {
      out += '%';
      out += Hex[byte >> 4];
      out += Hex[byte & 15];
    }
  }
  return out;
}

}  // namespace workbench
