#include "controller/http/faulty_reply.h"

namespace lamp::controller {
namespace {

constexpr const char* kXml = "application/xml";
constexpr const char* kControllerTag = "<ZelLamp";

// Bytes that are no text in any encoding that a client may try.
std::string garbage() {
  std::string bytes;
  unsigned value = 12345;
  for (int i = 0; i < 4096; ++i) {
    value = value * 1103515245U + 12345U;
    bytes += static_cast<char>(value >> 16U);
  }
  return bytes;
}

std::string nested(long depth) {
  std::string text;
  for (long i = 0; i < depth; ++i) text += "<a>";
  for (long i = 0; i < depth; ++i) text += "</a>";
  return text;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

// The opening and the closing tag of the section become those of one that does not exist.
std::string withOtherSection(std::string body) {
  for (std::size_t at = body.find('<'); at != std::string::npos; at = body.find('<', at + 1)) {
    const std::size_t name = at + (body.compare(at, 2, "</") == 0 ? 2 : 1);
    const bool section = name + 2 < body.size() && body[name] == 'L' && isDigit(body[name + 1]) &&
                         isDigit(body[name + 2]);
    if (section) body.replace(name, 3, "L00");
  }
  return body;
}

// The controller's element stays, without what is in it.
std::string withoutSection(const std::string& body) {
  const std::size_t tag = body.find(kControllerTag);
  if (tag == std::string::npos) return body;
  const std::size_t end = body.find('>', tag);
  std::string opening = body.substr(0, end);
  if (opening.ends_with('/')) opening.pop_back();
  return opening + "/></deviceCfg>";
}

std::string padded(std::string body, long bytes) {
  const auto wanted = static_cast<std::size_t>(bytes);
  constexpr std::size_t kFrame = 7;  // of a comment
  if (body.size() + kFrame < wanted) {
    body += "<!--" + std::string(wanted - body.size() - kFrame, ' ') + "-->";
  }
  return body;
}

std::string withDocumentType(const std::string& body) {
  const std::size_t root = body.find("<deviceCfg");
  std::string text = body;
  return text.insert(root == std::string::npos ? 0 : root,
                     "<!DOCTYPE deviceCfg [<!ENTITY x \"y\">]>");
}

std::string spoiled(const Fault& fault, const std::string& body) {
  switch (fault.kind) {
    case FaultKind::TruncatedXml:
      return body.empty() ? "<deviceCfg" : body.substr(0, body.size() / 2);
    case FaultKind::Garbage:
      return garbage();
    case FaultKind::WrongSection:
      return withOtherSection(body);
    case FaultKind::NoSection:
      return withoutSection(body);
    case FaultKind::Empty:
      return "";
    case FaultKind::Oversize:
      return padded(body.empty() ? "<deviceCfg/>" : body, fault.number);
    case FaultKind::Deep:
      return nested(fault.number);
    case FaultKind::Dtd:
      return withDocumentType(body.empty() ? "<deviceCfg/>" : body);
    default:
      return body;
  }
}

}  // namespace

void spoilReply(const std::vector<Fault>& faults, Reply& reply) {
  if (reply.status != 200) return;
  for (const Fault& fault : faults) reply.body = spoiled(fault, reply.body);
  reply.type = reply.body.empty() ? "" : kXml;
}

}  // namespace lamp::controller
