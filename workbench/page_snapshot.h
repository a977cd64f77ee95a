#pragma once

#include <unordered_map>
#include <vector>

#include "workbench/page_values.h"
#include "workbench/row_value.h"

namespace workbench {

/// How a page stood when it opened, to tell later what was entered since: the fields of a
/// page without rows; of one with rows their values that have an edit of the same name, and the
/// activation date; the periodic tasks. Passwords are not looked at.
class PageSnapshot {
 public:
  explicit PageSnapshot(const XCBaseDlg& page);

  /// The values that differ now, as putValues takes them. Linear in the rows of the page.
  PageValues changed(const XCBaseDlg& page) const;

 private:
  struct Bound {
    const host::ListControl* list;
    std::vector<RowValue> values;
  };
  static std::vector<Bound> boundLists(const XCBaseDlg& page);

  PageValues::Row fields_;
  std::string tasks_;
  std::unordered_map<const XmlDocument::XmlNode*, std::vector<std::u16string>> rows_;
};

}  // namespace workbench
