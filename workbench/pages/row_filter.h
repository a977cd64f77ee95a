#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialogs/base_dlg.h"

namespace workbench {

/// What a filter knows of a list beside its cells.
struct FilterSource {
  /// A value of a row that no column shows, by its name; none where the list has no such value.
  /// Made once for each name that a filter mentions.
  using Value = std::function<XCBasicString(std::size_t row)>;
  std::function<Value(std::string_view name)> hidden = nullptr;
  /// The rows that differ from what was read, and those that OK would refuse, as flags by row;
  /// asked only where the filter mentions them.
  std::function<std::vector<bool>()> changed = nullptr;
  std::function<std::vector<bool>()> faulty = nullptr;
};

/// A filter over the rows of a list, read from what a person typed: terms that must all hold. Any
/// text is a filter.
///
///   harbour "two words"   stand in some cell of the row, without regard to case
///   Reference:"HS-"       stands in one column, by the attribute that it shows or by its header
///   power1>=80            = != < <= > >= compare, as numbers where both sides are numbers
///   changed, fault        rows that differ from what was read, rows that OK would refuse
///   -harbour              turns a term round
class RowFilter {
 public:
  RowFilter(std::u16string_view text, const host::ListControl& list, const FilterSource& source);

  /// Whether the filter keeps a row of the list as it is shown.
  bool keeps(std::size_t row) const;
  /// All rows that it keeps, ascending.
  std::vector<std::size_t> rows() const;

 private:
  using Test = std::function<bool(std::size_t row)>;
  struct Term {
    Test holds;
    bool turned = false;
  };

  const host::ListControl& list_;
  std::vector<Term> terms_;
};

/// The source of an open dialog's list: its page's changes and faults, and for lists of lamps their
/// references from the configuration's child devices.
FilterSource filterSourceOf(const XCBaseDlg& dialog, const host::ListControl& list);

}  // namespace workbench
