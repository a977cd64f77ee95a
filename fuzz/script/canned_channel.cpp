#include "fuzz/script/canned_channel.h"

#include "workbench/http_command_channel.h"

// The functions of the real channel: they are linked in its place, so that a whole program runs
// without a network.

namespace {

std::string& cannedReply() {
  static std::string reply;
  return reply;
}

}  // namespace

namespace fuzz {

void setCannedReply(std::string xml) {
  cannedReply() = std::move(xml);
}

}  // namespace fuzz

namespace workbench {

HttpLimits HttpLimits::within(std::chrono::milliseconds time) {
  return {.connect = time, .whole = time, .wholeFirmware = time};
}

host::ExchangeReply HttpCommandChannel::exchange(const host::ExchangeRequest& request) {
  host::ExchangeReply reply;
  host::XmlError error;
  const bool answered =
      request.kind == host::CommandKind::put || reply.document.Parse(cannedReply(), &error);
  reply.status =
      answered ? host::ExchangeReply::Status::succeeded : host::ExchangeReply::Status::failed;
  if (!answered) reply.error = XCBasicString::FromUtf8(error.text());
  return reply;
}

}  // namespace workbench
