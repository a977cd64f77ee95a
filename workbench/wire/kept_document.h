#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "host/xml/xml_document.h"
#include "workbench/wire/secrets.h"

namespace workbench {

/// A document of an exchange as the record keeps it: a copy of its own, which shares the texts with
/// the original. It becomes text, with the secrets masked, when somebody looks.
class KeptDocument {
 public:
  /// What stands in the place of the text of a document that was kept, ...
  static constexpr const char* Dropped = "(no longer kept)";
  /// ... and of one that the record had no room for.
  static constexpr const char* TooLarge = "(too large to be kept)";

  /// No document: the request or reply had no root.
  KeptDocument() = default;
  /// Takes a document with a root; @p bytes is what it counts in the record.
  KeptDocument(XmlDocument document, std::shared_ptr<const Secrets> secrets, std::size_t bytes);
  static KeptDocument tooLarge();

  /// Whether the document is there.
  bool isKept() const { return document_ != nullptr; }
  std::size_t bytes() const { return bytes_; }
  /// Leaves only the note that it was there.
  void drop();

  /// UTF-8 with secrets masked; a note for a document that is not kept, empty for none.
  std::string text() const;
  /// The beginning of it for a person to read, an element a line, about so many bytes long; true in
  /// @p cut where something is left out. Notes as text().
  std::string beginning(std::size_t bytes, bool& cut) const;
  /// A copy with secrets masked, without root where the document is not kept.
  XmlDocument masked() const;

 private:
  std::shared_ptr<const XmlDocument> document_;
  std::shared_ptr<const Secrets> secrets_;
  std::size_t bytes_ = 0;
  const char* note_ = "";
};

/// What a document counts in the record, in bytes of memory: its elements and attributes, and the
/// texts with all that lies in one buffer with them. It stops counting over @p enough.
std::size_t memoryOf(const XmlDocument& document, std::size_t enough);

}  // namespace workbench
