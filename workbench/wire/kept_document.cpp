#include "workbench/wire/kept_document.h"

#include <utility>

#include "workbench/wire/masked_document.h"

namespace workbench {
namespace {

using Node = XmlDocument::XmlNode;

constexpr std::size_t AttributeBytes = 16;

void count(const Node& element, std::size_t enough, std::size_t& bytes) {
  bytes += sizeof(Node) + AttributeBytes * element.attributeCount();
  for (const Node& child : element.Children()) {
    if (bytes > enough) return;
    count(child, enough, bytes);
  }
}

}  // namespace

std::size_t memoryOf(const XmlDocument& document, std::size_t enough) {
  std::size_t bytes = document.TextBytes();
  if (document.Root() != nullptr) count(*document.Root(), enough, bytes);
  return bytes;
}

KeptDocument::KeptDocument(XmlDocument document, std::shared_ptr<const Secrets> secrets,
                           std::size_t bytes)
    : document_(std::make_shared<const XmlDocument>(std::move(document))),
      secrets_(std::move(secrets)),
      bytes_(bytes) {}

KeptDocument KeptDocument::tooLarge() {
  KeptDocument document;
  document.note_ = TooLarge;
  return document;
}

void KeptDocument::drop() {
  if (document_ == nullptr) return;
  document_.reset();
  bytes_ = 0;
  note_ = Dropped;
}

std::string KeptDocument::text() const {
  return document_ == nullptr ? note_ : maskedText(*document_, *secrets_);
}

std::string KeptDocument::beginning(std::size_t bytes, bool& cut) const {
  cut = false;
  if (document_ == nullptr) return note_;
  return maskedBeginning(*document_, *secrets_, bytes, cut).ToString(XmlDocument::Layout::indented);
}

XmlDocument KeptDocument::masked() const {
  return document_ == nullptr ? XmlDocument() : maskedCopy(*document_, *secrets_);
}

}  // namespace workbench
