#pragma once

#include <functional>
#include <optional>

#include "host/dialogs/page_description.h"
#include "pages/binding/row_rewrite.h"

namespace lamp {

/// What becomes of a section's stamp when the section is sent.
enum class StampRule {
  keep,       ///< it goes back as it came
  erase,      ///< the write has none
  activation  ///< the activation date takes its place
};

/// How a whole section is sent.
struct SectionWrite {
  using Node = XmlDocument::XmlNode;
  using Rewriting = std::function<const RowRewrite&(const Node& row)>;

  host::XmlName read;
  host::XmlName write;
  StampRule stamp = StampRule::keep;
  /// How each row changes; null where rows are sent as they are.
  Rewriting rewriting = nullptr;
  /// Rows in which this is empty are gone once the write is in force.
  std::optional<host::XmlName> deletedBy = std::nullopt;
};

/// All rows change alike. @p rewrite must outlive the page's table.
SectionWrite::Rewriting rewriteAll(const RowRewrite& rewrite);

/// A page that sends its whole section: names of the sections, write from section and section from
/// write. Fields and rows are the page's to add.
host::PageDescription wholeSection(SectionWrite shape);

/// A page that sends only those of @p fields that differ from what was read, in their order. A
/// write-only one is sent whenever it is not empty.
host::PageDescription changedFields(host::XmlName read, host::XmlName write,
                                    std::vector<host::Binding> fields);

}  // namespace lamp
