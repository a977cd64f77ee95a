#pragma once

#include <cstdint>
#include <string_view>

#include "host/export.h"

namespace host {

/// The name of an element or attribute: a number in the process's table of names, so that names
/// compare in one step, whatever document they are from. Names are UTF-8. The host library is used
/// from one thread; so is the table.
///
/// A name that is constructed stays as long as the process. Construct those that the program knows,
/// as constants where they are used often. A name that was read from a document belongs to it and
/// must not outlive it and the copies made of it.
class HOST_API XmlName {
 public:
  XmlName(const char* name) : XmlName(std::string_view(name)) {}
  XmlName(std::string_view name);

  /// A name to look for whose text came from outside; nothing is kept of it. Where neither the
  /// program nor a document has it, it is the name of no element and no attribute.
  static XmlName find(std::string_view name);

  static XmlName fromId(std::uint32_t id) {
    XmlName name;
    name.id_ = id;
    return name;
  }

  std::uint32_t id() const { return id_; }
  std::string_view text() const;
  friend bool operator==(XmlName a, XmlName b) { return a.id_ == b.id_; }

 private:
  XmlName() = default;
  std::uint32_t id_ = 0;
};

/// The text of a name's number.
HOST_API std::string_view xmlNameText(std::uint32_t id);

/// Whether @p name is a Name of XML 1.0 (fifth edition), without checks on namespaces.
HOST_API bool isXmlName(std::string_view name);

}  // namespace host
