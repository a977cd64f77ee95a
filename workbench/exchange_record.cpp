#include "workbench/exchange_record.h"

#include <new>
#include <utility>

#include "host/resources/texts.h"
#include "workbench/command_address.h"
#include "workbench/credential_mask.h"

namespace workbench {
namespace {

using host::ExchangeReply;
using Node = XmlDocument::XmlNode;

constexpr int FirmwareUpload = 52;
constexpr std::size_t KeptCharacters = 1'000;

// A copy of @p from in which long texts are cut and say so.
void copyCut(const Node& from, Node& to) {
  for (std::size_t i = 0; i < from.attributeCount(); ++i)
    to.copyAttribute(from, from.attributeName(i));
  const host::XmlText text = from.text();
  if (text.size() > ExchangeRecord::FirmwareTextLimit) {
    std::u16string beginning;
    for (std::size_t i = 0; i < KeptCharacters; ++i) beginning += text[i];
    to.SetText(beginning +
               XCBasicString::Format(u"... (cut: %u characters in all)", text.size()).str());
  } else if (!text.empty()) {
    to.SetText(text.toString());
  }
  for (const Node& child : from.Children()) copyCut(child, to.NewChild(child.TagName()));
}

std::string textOf(int command, const XmlDocument* document) {
  if (document == nullptr || document->Root() == nullptr) return {};
  if (command != FirmwareUpload) return maskedXml(document->ToString());
  XmlDocument small;
  copyCut(*document->Root(), small.Create(document->Root()->TagName()));
  return maskedXml(small.ToString());
}

ExchangeReply cancelled() {
  return {.status = ExchangeReply::Status::cancelled, .document = {}, .error = {}};
}

std::string cancelledText(const std::string& parameters) {
  return XCBasicString::Format(XCLoadString(host::TextId::ExchangeCancelled),
                               commandAddress(parameters).shown)
      .ToUtf8();
}

}  // namespace

ExchangeReply ExchangeRecord::exchange(const host::ExchangeRequest& request) {
  const auto start = std::chrono::steady_clock::now();
  ExchangeReply reply = toCancel_.erase(started_++) > 0 ? cancelled() : channel_.exchange(request);
  const auto took = std::chrono::steady_clock::now() - start;
  bool masked = false;
  try {
    reply.error = maskedError(reply.error, request);
    masked = true;
    keep(request, reply, std::chrono::duration_cast<std::chrono::milliseconds>(took));
    if (witness_) witness_(request, entries_.back());
    if (listener_) listener_(entries_.back());
  } catch (const std::bad_alloc&) {
    // What was exchanged counts, on record or not; an error is not told with its secrets.
    if (!masked) reply.error = XCLoadString(host::TextId::NotEnoughMemory);
  }
  return reply;
}

void ExchangeRecord::keep(const host::ExchangeRequest& request, const ExchangeReply& reply,
                          std::chrono::milliseconds took) {
  using Status = ExchangeReply::Status;
  const std::string parameters = request.uriParameters.ToUtf8();
  ExchangeEntry entry{.number = entries_.size() + 1,
                      .command = request.command,
                      .kind = request.kind,
                      .uri = maskedParameters(parameters),
                      .request = textOf(request.command, request.document),
                      .reply = textOf(request.command, &reply.document),
                      .ok = reply.status == Status::succeeded,
                      .error = {},
                      .took = took};
  if (reply.status == Status::failed) entry.error = reply.error.ToUtf8();
  if (reply.status == Status::cancelled) entry.error = cancelledText(parameters);
  entries_.push_back(std::move(entry));
  bytes_ += entries_.back().request.size() + entries_.back().reply.size();
  dropOldTexts();
}

void ExchangeRecord::dropOldTexts() {
  while (bytes_ > bytesAllowed_ && dropped_ + 1 < entries_.size()) {
    ExchangeEntry& oldest = entries_[dropped_++];
    bytes_ -= oldest.request.size() + oldest.reply.size();
    // Swapped, not assigned: an assigned string keeps its memory.
    if (!oldest.request.empty()) std::string(ExchangeRecord::Dropped).swap(oldest.request);
    if (!oldest.reply.empty()) std::string(ExchangeRecord::Dropped).swap(oldest.reply);
  }
}

}  // namespace workbench
