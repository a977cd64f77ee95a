#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/dialogs/page_description.h"

namespace workbench {

/// One value in which two sections differ.
struct ValueChange {
  enum class Kind {
    value,  ///< a value of a row that both have, or of the section
    added,  ///< of a row that only the second has
    gone    ///< of a row that only the first has, or that the second marks as deleted
  };

  std::optional<XCBasicString> row;     ///< the row's identity; none for a field of the section
  std::string name;                     ///< as the page's description names it
  XCBasicString caption;                ///< with its unit
  std::optional<XCBasicString> before;  ///< as the edit shows it; none where it is missing
  std::optional<XCBasicString> after;
  Kind kind = Kind::value;
  friend bool operator==(const ValueChange&, const ValueChange&) = default;
};

/// What stands for a secret wherever it is not edited.
inline constexpr std::u16string_view MaskedSecret = u"***";

struct CompareOptions {
  /// The values of the controller (states, counters, stamps) count too.
  bool controllersToo = false;
  /// What a page adds to every row when it sends counts as a change.
  bool asSent = false;
  /// Secrets are given as they stand; for comparing alone, never for showing.
  bool secretsToo = false;
};

/// The values in which @p after differs from @p before, in the order of the document; rows are
/// matched by their identity, wherever they stand. Either may be null: a section without anything.
/// A row that only one of them has is one entry for each of its attributes, with the other side
/// missing; a row that @p after marks as deleted is one entry. Linear in the rows.
std::vector<ValueChange> compareSections(const host::PageDescription& page,
                                         const XmlDocument::XmlNode* before,
                                         const XmlDocument::XmlNode* after,
                                         const CompareOptions& options = {});

/// One row of a section: its set, its element, and in which of the set's places it stands.
struct RowInSection {
  const host::RowSet* set;
  const XmlDocument::XmlNode* element;
  std::size_t place;
};

/// The rows of all sets of a page, in the order of the document.
std::vector<RowInSection> rowsOf(const host::PageDescription& page,
                                 const XmlDocument::XmlNode& section);

}  // namespace workbench
