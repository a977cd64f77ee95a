#include "workbench/http_command_channel.h"

#include <algorithm>
#include <new>
#include <utility>

#include "host/resources/texts.h"
#include "workbench/command_address.h"
#include "workbench/http_transfer.h"

namespace workbench {
namespace {

using host::ExchangeReply;
using host::TextId;

constexpr int FirmwareUpload = 52;
constexpr int Ok = 200;

ExchangeReply failed(XCBasicString error) {
  return {.status = ExchangeReply::Status::failed, .document = {}, .error = std::move(error)};
}

template <class... Arguments>
ExchangeReply failed(TextId text, const Arguments&... arguments) {
  return failed(XCBasicString::Format(XCLoadString(text), arguments...));
}

// The first characters, never half of a surrogate pair.
XCBasicString cut(XCBasicString text) {
  constexpr std::size_t Most = HttpCommandChannel::ErrorCharacters;
  if (text.Length() <= Most) return text;
  const char16_t last = text[Most - 1];
  return text.Left(last >= 0xD800 && last < 0xDC00 ? Most - 1 : Most);
}

// What to say of an answer that did not come whole.
ExchangeReply incomplete(const HttpAnswer& answer, const CommandAddress& address,
                         std::size_t limit) {
  using End = HttpAnswer::End;
  const XCBasicString cause = XCBasicString::FromUtf8(answer.cause);
  switch (answer.end) {
    case End::refused:
      return failed(TextId::ConnectionRefused, address.shown);
    case End::hostNotFound:
      return failed(TextId::HostNotFound, address.shown);
    case End::timedOut:
      return failed(TextId::ExchangeTimedOut, address.shown);
    case End::closed:
      return failed(TextId::ConnectionClosed, address.shown);
    case End::tooLarge:
      return failed(TextId::AnswerTooLarge, address.shown,
                    std::max<std::size_t>(limit / (1024 * 1024), 1));
    case End::noMemory:
      return failed(TextId::NotEnoughMemory);
    case End::certificate:
      return failed(TextId::CertificateNotVerified, address.shown, cause);
    case End::otherCertificate:
      return failed(TextId::CertificateChanged, address.shown,
                    XCBasicString::FromUtf8(shownFingerprint(answer.fingerprint)));
    case End::address:
      return failed(TextId::AddressNotUsable, address.shown);
    default:
      return failed(TextId::ExchangeFailed, address.shown, cause);
  }
}

// Tells the progress of the beginning and, on every way out, of the end.
class Announced {
 public:
  Announced(ExchangeProgress* progress, const host::ExchangeRequest& request)
      : progress_(progress) {
    if (progress_ != nullptr) progress_->started(request);
  }
  Announced(const Announced&) = delete;
  Announced& operator=(const Announced&) = delete;
  ~Announced() {
    if (progress_ != nullptr) progress_->finished();
  }

 private:
  ExchangeProgress* progress_;
};

}  // namespace

HttpLimits HttpLimits::within(std::chrono::milliseconds time) {
  HttpLimits limits;
  limits.connect = std::min(limits.connect, time);
  limits.whole = time;
  limits.wholeFirmware = time;
  return limits;
}

HttpAnswer HttpCommandChannel::post(const host::ExchangeRequest& request, HttpPost& post) const {
  const Announced announced(progress_, request);
  return httpPost(post, progress_);
}

// The certificate is looked at on a connection of its own; the command goes only to one with the
// fingerprint that the person saw. A failure that is to be told in place of the answer, or none.
std::optional<ExchangeReply> HttpCommandChannel::askForTrust(const CommandAddress& address,
                                                             const host::ExchangeRequest& request,
                                                             HttpPost& post,
                                                             HttpAnswer& answer) const {
  if (trust_ == nullptr || !judge_) return std::nullopt;
  post.onlyLook = true;
  const HttpAnswer look = this->post(request, post);
  post.onlyLook = false;
  if (look.fingerprint.empty() || !judge_({.address = address.shown,
                                           .cause = XCBasicString::FromUtf8(answer.cause),
                                           .fingerprint = shownFingerprint(look.fingerprint)}))
    return std::nullopt;
  std::string cause;
  if (!trust_->trust(address.shown.ToUtf8(), look.fingerprint, cause))
    return failed(TextId::TrustNotStored, XCBasicString::FromUtf8(cause));
  post.onlyCertificate = look.fingerprint;
  answer = this->post(request, post);
  return std::nullopt;
}

ExchangeReply HttpCommandChannel::exchange(const host::ExchangeRequest& request) {
  try {
    return attempt(request);
  } catch (const std::bad_alloc&) {
    return failed(TextId::NotEnoughMemory);
  }
}

ExchangeReply HttpCommandChannel::attempt(const host::ExchangeRequest& request) {
  const std::string parameters = request.uriParameters.ToUtf8();
  const CommandAddress address = commandAddress(parameters);
  if (!address.usable) return failed(TextId::AddressNotUsable, address.shown);

  HttpPost post{
      .url = address.url(request.command, parameters),
      .body = request.document != nullptr ? request.document->ToString() : "",
      .connectTime = limits_.connect,
      .wholeTime = request.command == FirmwareUpload ? limits_.wholeFirmware : limits_.whole,
      .replyBytes = limits_.replyBytes,
      .keepBody = request.kind == host::CommandKind::get,
      .authorities = authorities_};
  if (trust_ != nullptr && address.secure) {
    // A list that can't be read might name one certificate for this address: then none is good.
    std::string problem;
    post.onlyCertificate = trust_->find(address.shown.ToUtf8(), &problem).value_or(std::string());
    if (!problem.empty()) return failed(TextId::TrustNotRead, XCBasicString::FromUtf8(problem));
  }
  HttpAnswer answer = this->post(request, post);
  if (answer.end == HttpAnswer::End::certificate)
    if (auto failure = askForTrust(address, request, post, answer)) return std::move(*failure);
  if (answer.end == HttpAnswer::End::cancelled)
    return {.status = ExchangeReply::Status::cancelled, .document = {}, .error = {}};
  if (answer.end != HttpAnswer::End::complete)
    return incomplete(answer, address, limits_.replyBytes);
  if (answer.status != Ok) {
    if (answer.plainText && !answer.body.empty())
      return failed(cut(XCBasicString::FromUtf8(answer.body)));
    return failed(TextId::AnswerStatus, address.shown, answer.status);
  }

  ExchangeReply reply;
  if (request.kind == host::CommandKind::get && !answer.body.empty()) {
    host::XmlError error;
    host::XmlLimits limits;
    limits.bytes = limits_.replyBytes;
    limits.depth = limits_.depth;
    if (!reply.document.Parse(std::move(answer.body), &error, limits))
      return failed(TextId::AnswerNotXml, address.shown, XCBasicString::FromUtf8(error.text()));
  }
  reply.status = ExchangeReply::Status::succeeded;
  return reply;
}

}  // namespace workbench
