#include "workbench/wire/exchange_record.h"

#include <algorithm>
#include <new>
#include <utility>

#include "host/resources/texts.h"
#include "workbench/command_address.h"
#include "workbench/http_command_channel.h"
#include "workbench/wire/request_section.h"

namespace workbench {
namespace {

using host::ExchangeReply;
using Node = XmlDocument::XmlNode;

constexpr int FirmwareUpload = 52;
constexpr std::size_t KeptCharacters = 1'000;

XCBasicString cutText(host::XmlText text, std::size_t most) {
  if (text.size() <= most) return text.toString();
  std::u16string beginning;
  for (std::size_t i = 0; i < KeptCharacters; ++i) beginning += text[i];
  return XCBasicString(beginning) +
         XCBasicString::Format(u"... (cut: %u characters in all)", text.size());
}

// A copy of @p from in which texts of more than @p most characters are cut and say so. It shares
// nothing: that would keep the long ones.
void copyCut(const Node& from, Node& to, std::size_t most) {
  for (std::size_t i = 0; i < from.attributeCount(); ++i)
    to.setAttribute(from.attributeName(i), from.attributeText(i).toString());
  to.SetText(cutText(from.text(), most));
  for (const Node& child : from.Children()) copyCut(child, to.NewChild(child.TagName()), most);
}

ExchangeReply cancelled() {
  return {.status = ExchangeReply::Status::cancelled, .document = {}, .error = {}};
}

std::string cancelledText(const CommandAddress& address) {
  return XCBasicString::Format(XCLoadString(host::TextId::ExchangeCancelled), address.shown)
      .ToUtf8();
}

// The text of a failure without secrets; one of full length was cut, maybe in the midst of one.
XCBasicString maskedError(const XCBasicString& error, const Secrets& secrets) {
  if (error.IsEmpty()) return error;
  const bool cut = error.Length() + 1 >= HttpCommandChannel::ErrorCharacters;
  return XCBasicString::FromUtf8(secrets.masked(error.ToUtf8(), cut));
}

}  // namespace

ExchangeReply ExchangeRecord::exchange(const host::ExchangeRequest& request) {
  const auto start = std::chrono::steady_clock::now();
  ExchangeReply reply = toCancel_.erase(started_++) > 0 ? cancelled() : channel_.exchange(request);
  const auto took = std::chrono::steady_clock::now() - start;
  bool masked = false;
  try {
    const std::string parameters = request.uriParameters.ToUtf8();
    const auto secrets = secretsOf(commandAddress(parameters).shown.ToUtf8());
    // The program's own come last: a controller can't crowd them out.
    secrets->learnDocument(reply.document);
    if (request.document != nullptr) secrets->learnDocument(*request.document);
    secrets->learnParameters(parameters);
    reply.error = maskedError(reply.error, *secrets);
    masked = true;
    keep(request, reply, secrets, std::chrono::duration_cast<std::chrono::milliseconds>(took));
    if (witness_) witness_(request, entries_.back());
    if (listener_) listener_(entries_.back());
  } catch (const std::bad_alloc&) {
    // What was exchanged counts, on record or not; an error is not told with its secrets.
    if (!masked) reply.error = XCLoadString(host::TextId::NotEnoughMemory);
  }
  return reply;
}

std::shared_ptr<Secrets> ExchangeRecord::secretsOf(const std::string& address) {
  if (!controllers_.contains(address) && controllers_.size() >= limits_.controllers)
    controllers_.erase(std::min_element(
        controllers_.begin(), controllers_.end(),
        [](const auto& a, const auto& b) { return a.second.lastUsed < b.second.lastUsed; }));
  Controller& controller = controllers_[address];
  if (!controller.secrets) controller.secrets = std::make_shared<Secrets>();
  controller.lastUsed = started_;
  return controller.secrets;
}

KeptDocument ExchangeRecord::copyOf(const XmlDocument& document, int command,
                                    const std::shared_ptr<const Secrets>& secrets,
                                    std::size_t room) const {
  if (document.Root() == nullptr) return {};
  XmlDocument copy;
  Node& root = copy.Create(document.Root()->TagName());
  if (command == FirmwareUpload) copyCut(*document.Root(), root, limits_.firmwareText);
  const std::size_t bytes = memoryOf(command == FirmwareUpload ? copy : document, room);
  if (bytes > room) return KeptDocument::tooLarge();
  if (command != FirmwareUpload) root = *document.Root();
  return KeptDocument(std::move(copy), secrets, bytes);
}

void ExchangeRecord::keep(const host::ExchangeRequest& request, const ExchangeReply& reply,
                          std::shared_ptr<const Secrets> secrets, std::chrono::milliseconds took) {
  using Status = ExchangeReply::Status;
  const std::string parameters = request.uriParameters.ToUtf8();
  ExchangeEntry entry;
  entry.number = entries_.size() + 1;
  entry.command = request.command;
  entry.kind = request.kind;
  entry.uri = maskedParameters(parameters);
  entry.section = sectionOf(request.document);
  if (request.document != nullptr)
    entry.request = copyOf(*request.document, request.command, secrets, limits_.bytes);
  entry.reply =
      copyOf(reply.document, request.command, secrets, limits_.bytes - entry.request.bytes());
  entry.ok = reply.status == Status::succeeded;
  if (reply.status == Status::failed) entry.error = reply.error.ToUtf8();
  if (reply.status == Status::cancelled) entry.error = cancelledText(commandAddress(parameters));
  entry.took = took;
  entry.secrets = std::move(secrets);
  entries_.push_back(std::move(entry));
  bytes_ += entries_.back().request.bytes() + entries_.back().reply.bytes();
  dropOldDocuments();
}

void ExchangeRecord::dropOldDocuments() {
  while (bytes_ > limits_.bytes && dropped_ < entries_.size()) {
    ExchangeEntry& oldest = entries_[dropped_++];
    bytes_ -= oldest.request.bytes() + oldest.reply.bytes();
    oldest.request.drop();
    oldest.reply.drop();
  }
}

}  // namespace workbench
