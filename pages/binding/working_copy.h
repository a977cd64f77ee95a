#pragma once

#include "exchange/exchange_frame.h"
#include "host/xml/xml_document.h"

namespace lamp {

/// What a document page edits: an untouched copy of the whole reply and a working copy of it. The
/// page sends nothing while the two are equal.
class WorkingCopy {
 public:
  explicit WorkingCopy(host::XmlName section) : section_(section) {
    untouched_.Create(section);
    working_.Create(section);
  }

  /// Makes both copies of a reply, which itself becomes the untouched one: a page's document is
  /// made anew for its write. A reply without root stays, and leaves them empty.
  void take(XmlDocument& reply);
  /// Whether the copies differ: a value changed back counts as unchanged.
  bool changed() const { return !(*working_.Root() == *untouched_.Root()); }

  /// The section in the working copy, none when the reply lacks it.
  XmlDocument::XmlNode* section() { return sectionOf(working_, section_); }
  /// The same as it was read.
  const XmlDocument::XmlNode* untouchedSection() const { return sectionOf(untouched_, section_); }
  XmlDocument& working() { return working_; }
  XmlDocument& untouched() { return untouched_; }

  /// Makes @p document the write of the working section: root `deviceCfg` and one child, a copy of
  /// the section with all that it holds, named @p writeSection. Returns the child, or none when the
  /// reply lacks the section.
  XmlDocument::XmlNode* prepareWrite(XmlDocument& document, host::XmlName writeSection);
  /// As above, with the section's stamp replaced by the activation date @p stamp.
  XmlDocument::XmlNode* prepareWrite(XmlDocument& document, host::XmlName writeSection,
                                     const XCBasicString& stamp);

 private:
  host::XmlName section_;
  XmlDocument untouched_;
  XmlDocument working_;
};

/// Makes @p document a write with one child, a copy of @p source with all that it holds, named
/// @p writeSection. Returns the child. The source must not stand in @p document.
XmlDocument::XmlNode& writeCopy(XmlDocument& document, const XmlDocument::XmlNode& source,
                                host::XmlName writeSection);

/// Gives an element the activation date, in the place of the stamp that it was read with. False
/// when that fails.
bool setActivationDate(XmlDocument::XmlNode& element, const XCBasicString& stamp);

}  // namespace lamp
