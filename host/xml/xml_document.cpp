#include "host/xml/xml_document.h"

#include <new>
#include <utility>

#include "host/services/files.h"
#include "host/xml/xml_builder.h"
#include "host/xml/xml_release.h"
#include "host/xml/xml_storage.h"

namespace host {

std::string XmlError::text() const {
  if (line == 0) return cause;
  return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + cause;
}

}  // namespace host

XmlDocument::XmlDocument() : storage_(std::make_unique<host::xml::Storage>()) {}
XmlDocument::XmlDocument(host::XmlName rootName) : XmlDocument() {
  Create(rootName);
}
XmlDocument::~XmlDocument() = default;

XmlDocument::XmlDocument(XmlDocument&& other) noexcept
    : storage_(std::move(other.storage_)), root_(std::exchange(other.root_, nullptr)) {}

XmlDocument& XmlDocument::operator=(XmlDocument&& other) noexcept {
  storage_ = std::move(other.storage_);
  root_ = std::exchange(other.root_, nullptr);
  return *this;
}

XmlDocument::XmlNode& XmlDocument::Create(host::XmlName rootName) {
  // Made before the old content goes, which the name may be from.
  auto storage = std::make_unique<host::xml::Storage>();
  root_ = host::xml::Builder::newRoot(*storage, rootName);
  storage_ = std::move(storage);
  return *root_;
}

void XmlDocument::Clear() {
  root_ = nullptr;
  storage_ = std::make_unique<host::xml::Storage>();
}

std::size_t XmlDocument::TextBytes() const {
  return storage_ ? storage_->textBytes() : 0;
}

void XmlDocument::ReleaseRemoved() {
  if (root_ == nullptr || !storage_->isWorthReleasing()) return;
  try {
    host::xml::Release(*storage_, *root_).run();
  } catch (const std::bad_alloc&) {
    // Nothing was changed; the next time will do.
  }
}

bool XmlDocument::Parse(std::string utf8, host::XmlError* error, const host::XmlLimits& limits) {
  auto storage = std::make_unique<host::xml::Storage>();
  host::XmlError unused;
  XmlNode* root =
      host::xml::Builder(*storage, limits).build(std::move(utf8), error ? *error : unused);
  if (root == nullptr) return false;
  storage_ = std::move(storage);
  root_ = root;
  return true;
}

bool XmlDocument::Load(const std::filesystem::path& file, host::XmlError* error) {
  std::string content;
  std::string cause;
  if (!host::readFile(file, host::XmlLimits{}.bytes, content, cause)) {
    if (error) *error = {cause, 0, 0, 0};
    return false;
  }
  return Parse(std::move(content), error);
}

bool XmlDocument::Save(const std::filesystem::path& file, std::string* cause) const {
  std::string unused;
  return host::saveWhole(file, ToString(Layout::indented), cause ? *cause : unused);
}
