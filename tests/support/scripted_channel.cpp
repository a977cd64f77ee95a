#include "tests/support/scripted_channel.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/xml_compare.h"

namespace support {
namespace {

using Status = host::ExchangeReply::Status;

host::ExchangeReply replied(Status status, const XCBasicString& error = {}) {
  host::ExchangeReply reply;
  reply.status = status;
  reply.error = error;
  return reply;
}

std::string percentDecoded(std::string_view text) {
  std::string out;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '%' && at + 2 < text.size()) {
      out += static_cast<char>(std::stoi(std::string(text.substr(at + 1, 2)), nullptr, 16));
      at += 2;
    } else {
      out += text[at];
    }
  }
  return out;
}

std::vector<std::pair<std::string, std::string>> decodedParameters(std::string_view uri) {
  std::vector<std::pair<std::string, std::string>> parameters;
  while (!uri.empty()) {
    const std::string_view one = uri.substr(0, uri.find('&'));
    uri.remove_prefix(std::min(uri.size(), one.size() + 1));
    const std::size_t equals = one.find('=');
    const bool valued = equals != std::string_view::npos;
    parameters.emplace_back(percentDecoded(one.substr(0, equals)),
                            valued ? percentDecoded(one.substr(equals + 1)) : std::string());
  }
  return parameters;
}

}  // namespace

std::string Exchange::parameter(const std::string& name) const {
  for (const auto& [key, value] : parameters)
    if (key == name) return value;
  return {};
}

void ScriptedChannel::replyWith(const std::string& xml) {
  parsedXml(xml);  // a mistake in the test is told where the test makes it
  replies_.push_back({For::reads, [xml](const Exchange&) {
                        host::ExchangeReply reply = replied(Status::succeeded);
                        reply.document = parsedXml(xml);
                        return reply;
                      }});
}

void ScriptedChannel::replyEmpty() {
  replies_.push_back({For::reads, [](const Exchange&) { return replied(Status::succeeded); }});
}

void ScriptedChannel::acceptWrite() {
  replies_.push_back({For::writes, [](const Exchange&) { return replied(Status::succeeded); }});
}

void ScriptedChannel::failWith(Utf8 error) {
  replies_.push_back(
      {For::all, [text = error.wide()](const Exchange&) { return replied(Status::failed, text); }});
}

void ScriptedChannel::cancel() {
  replies_.push_back({For::all, [](const Exchange&) { return replied(Status::cancelled); }});
}

void ScriptedChannel::answer(Answer function) {
  replies_.push_back({For::all, std::move(function)});
}

const Exchange& ScriptedChannel::last() const {
  if (exchanges_.empty()) throw std::out_of_range("nothing was sent to the controller");
  return exchanges_.back();
}

ScriptedChannel::Answer ScriptedChannel::take(const Exchange& exchange) {
  const bool read = exchange.kind == host::CommandKind::get;
  const bool fits = !replies_.empty() && replies_.front().whom != (read ? For::writes : For::reads);
  if (fits) {
    Answer answer = std::move(replies_.front().answer);
    replies_.pop_front();
    return answer;
  }
  if (read)
    ADD_FAILURE() << "the test prepared no reply for command " << exchange.command << " with "
                  << exchange.request;
  return [read](const Exchange&) {
    return replied(read ? Status::failed : Status::succeeded, read ? u"no reply prepared" : u"");
  };
}

host::ExchangeReply ScriptedChannel::exchange(const host::ExchangeRequest& request) {
  Exchange record;
  record.command = request.command;
  record.kind = request.kind;
  record.uri = request.uriParameters.ToUtf8();
  record.parameters = decodedParameters(record.uri);
  if (request.document != nullptr) record.request = compactXml(*request.document);
  host::ExchangeReply reply = take(record)(record);
  record.status = reply.status;
  record.error = reply.error.ToUtf8();
  exchanges_.push_back(std::move(record));
  return reply;
}

}  // namespace support
