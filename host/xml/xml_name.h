#pragma once

#include <cstdint>
#include <string_view>

#include "host/export.h"

namespace host {

/// The name of an element or attribute: a number into a table that lives as long as the process,
/// so that names compare in one step. Construct names that are used often once, as constants.
/// Names are UTF-8. The host library is used from one thread; so is the table.
class HOST_API XmlName {
 public:
  XmlName(const char* name) : XmlName(std::string_view(name)) {}
  XmlName(std::string_view name);

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
