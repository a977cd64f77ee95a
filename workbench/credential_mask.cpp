#include "workbench/credential_mask.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

#include "workbench/command_address.h"

namespace workbench {
namespace {

constexpr std::string_view Mask = "***";
constexpr std::string_view Parameter = "ftpPassword";
constexpr std::string_view Names[] = {"FTPPwd", "mailPassword", Parameter};
constexpr std::size_t LeastSecret = 3;

// Where @p name stands at or behind @p from. The C library's search is the fastest at hand.
std::size_t findName(std::string_view text, std::string_view name, std::size_t from) {
  const void* found = ::memmem(text.data() + from, text.size() - from, name.data(), name.size());
  return found == nullptr ? std::string_view::npos
                          : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

// The value of the attribute or element whose name stands at @p at: its beginning and its size,
// which is 0 where there is nothing to mask. A document as it is written has no blanks around "="
// and escapes the quotes inside of values and the angles inside of all texts.
std::pair<std::size_t, std::size_t> valueAt(std::string_view xml, std::size_t at,
                                            std::size_t nameSize) {
  const std::size_t behind = at + nameSize;
  if (at == 0 || behind >= xml.size()) return {behind, 0};
  if (xml[at - 1] == ' ' && xml.substr(behind, 2) == "=\"") {
    const std::size_t end = xml.find('"', behind + 2);
    return {behind + 2, end == std::string_view::npos ? 0 : end - behind - 2};
  }
  if (xml[at - 1] != '<' || (xml[behind] != '>' && xml[behind] != ' ')) return {behind, 0};
  const std::size_t open = xml.find('>', behind);
  if (open == std::string_view::npos || xml[open - 1] == '/') return {behind, 0};
  const std::size_t end = xml.find('<', open);
  return {open + 1, end == std::string_view::npos ? 0 : end - open - 1};
}

std::string masked(std::string xml, std::string_view name) {
  std::size_t at = findName(xml, name, 0);
  if (at == std::string_view::npos) return xml;
  const std::string_view text = xml;
  std::string out;
  std::size_t written = 0;
  for (; at != std::string_view::npos; at = findName(text, name, at)) {
    const auto [from, size] = valueAt(text, at, name.size());
    if (size > 0) {
      out += text.substr(written, from - written);
      out += Mask;
      written = from + size;
    }
    at += name.size();
  }
  out += text.substr(written);
  return out;
}

void collectSecrets(const XmlDocument::XmlNode& node, std::vector<std::string>& secrets) {
  for (const std::string_view name : Names) {
    secrets.push_back(node.getAttribute(host::XmlName(name)).ToUtf8());
    if (node.Tag() == name) secrets.push_back(node.Text().ToUtf8());
  }
  for (const XmlDocument::XmlNode& child : node.Children()) collectSecrets(child, secrets);
}

// The value of a parameter as it stands among the others, percent-encoded.
std::string encodedValue(std::string_view parameters, std::string_view name) {
  const std::string start = std::string(name) + "=";
  std::size_t at = parameters.find(start);
  if (at == std::string_view::npos) return {};
  at += start.size();
  return std::string(parameters.substr(at, parameters.find('&', at) - at));
}

}  // namespace

std::string maskedXml(std::string xml) {
  for (const std::string_view name : Names) xml = masked(std::move(xml), name);
  return xml;
}

bool isPasswordName(std::string_view name) {
  return std::find(std::begin(Names), std::end(Names), name) != std::end(Names);
}

std::string maskedParameters(std::string_view parameters) {
  const std::string name = std::string(Parameter) + "=";
  std::string out;
  while (!parameters.empty()) {
    const std::size_t end = parameters.find('&');
    const std::string_view entry = parameters.substr(0, end);
    const bool secret = entry.starts_with(name) && entry.size() > name.size();
    out += secret ? std::string_view(name) : entry;
    if (secret) out += Mask;
    if (end == std::string_view::npos) break;
    out += '&';
    parameters.remove_prefix(end + 1);
  }
  return out;
}

XCBasicString maskedError(const XCBasicString& error, const host::ExchangeRequest& request) {
  if (error.IsEmpty()) return error;
  const std::string parameters = request.uriParameters.ToUtf8();
  std::vector<std::string> secrets = {encodedValue(parameters, Parameter),
                                      parameterValue(parameters, Parameter)};
  if (request.document != nullptr && request.document->Root() != nullptr)
    collectSecrets(*request.document->Root(), secrets);
  std::string text = error.ToUtf8();
  for (const std::string& secret : secrets) {
    if (secret.size() < LeastSecret) continue;
    for (std::size_t at = text.find(secret); at != std::string::npos;
         at = text.find(secret, at + Mask.size()))
      text.replace(at, secret.size(), Mask);
  }
  return XCBasicString::FromUtf8(text);
}

}  // namespace workbench
