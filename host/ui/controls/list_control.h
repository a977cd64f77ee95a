#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "host/ui/colour.h"
#include "host/ui/control.h"
#include "host/xml/xml_holder.h"

namespace host {

/// A row of a list: an element that it shows, or none, and a number of the dialog's own.
struct ListRow {
  XmlDocument::XmlNode* element = nullptr;
  std::int64_t data = 0;
};

/// How a column shows the elements of its rows.
struct ListColumn {
  XCBasicString caption;
  /// Its part of the list's width; the last column takes what integer division leaves.
  int share = 1;
  /// The attribute that it shows; or, when `cell` is set, the text that `cell` makes.
  std::optional<XmlName> attribute;
  std::function<XCBasicString(const XmlDocument::XmlNode&)> cell;
  /// Order of two rows, negative, 0 or positive; when not set, the ordinal order of the cells.
  std::function<int(const ListRow&, const ListRow&)> compare;
  /// A number of an element in the order of `compare`, none where an element has none. While all
  /// rows have one, sorting looks at each element once.
  std::function<std::optional<std::int64_t>(const XmlDocument::XmlNode&)> number = nullptr;
  /// What it shows, where that is no attribute: the name of the value.
  std::string name = {};
};

struct ListSort {
  std::size_t column = 0;
  bool descending = false;
};

/// A report-style list over XML elements. Cells are computed from the element when asked for, so
/// a cell can't differ from its element. Row numbers are places in the list as it is sorted.
class HOST_API ListControl : public Control, private XmlHolder {
 public:
  ListControl(ControlOwner& owner, const ControlSpec& spec);
  ~ListControl() override;

  bool isMultiSelect() const { return multiSelect_; }

  void setColumns(std::vector<ListColumn> columns);
  const std::vector<ListColumn>& columns() const { return columns_; }
  /// The widths of the columns in a list that is @p width pixels wide.
  std::vector<int> columnWidths(int width) const;

  // Rows.
  std::size_t rowCount() const { return rows_.size(); }
  /// Takes all rows and their selection away, without a notice, and forgets the sorting.
  void clearRows();
  void reserveRows(std::size_t count) { rows_.reserve(count); }
  /// Appends a row and returns its number.
  std::size_t addRow(ListRow row);
  const ListRow& row(std::size_t row) const { return rows_[at(row)]; }
  XmlDocument::XmlNode* element(std::size_t row) const { return rows_[at(row)].element; }

  XCBasicString cell(std::size_t row, std::size_t column) const;
  /// Shows a text in place of what the column makes; it stays until the rows are cleared.
  void setCell(std::size_t row, std::size_t column, std::u16string_view text);
  /// Tells front ends that elements of shown rows were changed; findRow looks anew.
  void cellsChanged();

  /// The colour of a row's texts; none is the default.
  void setColour(std::size_t row, Colour colour);
  std::optional<Colour> colour(std::size_t row) const;
  /// A swatch in front of a row's first cell.
  void setSwatch(std::size_t row, Colour colour);
  std::optional<Colour> swatch(std::size_t row) const;

  /// The first row, as sorted, whose cell in @p column is exactly @p text. Costs nothing that grows
  /// with the rows after the first call for a column; call cellsChanged when elements changed.
  std::optional<std::size_t> findRow(std::size_t column, std::u16string_view text) const;

  // Selection: the numbers of the selected rows, ascending.
  const std::vector<std::size_t>& selection() const { return selection_; }
  bool isSelected(std::size_t row) const { return row < flags_.size() && flags_[row] != 0; }
  /// Makes exactly these rows the selection; those that do not exist are left out. One notice when
  /// the selection differs from the one before.
  void select(std::vector<std::size_t> rows);
  void selectOnly(std::size_t row);
  void selectAll();
  void clearSelection() { select({}); }
  /// Adds one row to the selection.
  void addToSelection(std::size_t row);

  // Sorting.
  std::optional<ListSort> sorted() const { return sorted_; }
  /// Puts the rows in the order of a column, stable; the selection moves with its rows.
  void sort(ListSort order);

 private:
  friend class UserInput;
  void tellHeld(const Note& note) const override;
  struct Extra;
  struct KeyIndex;

  std::size_t at(std::size_t row) const { return order_.empty() ? row : order_[row]; }
  Extra& extra(std::size_t row);
  const Extra* findExtra(std::size_t row) const;
  KeyIndex& keyIndex(std::size_t column) const;
  bool rowShows(std::uint32_t row, std::size_t column, std::u16string_view text) const;
  void sortRows(ListSort order);
  template <class KeyOf, class Before>
  void sortKeyed(bool descending, KeyOf keyOf, Before before);
  bool sortByNumbers(const ListColumn& column, bool descending);
  void sortByAttribute(XmlName attribute, bool descending);
  bool showsPlainAttribute(std::size_t column) const;
  bool replaceSelection(std::vector<std::size_t> rows);

  bool multiSelect_;
  std::vector<ListColumn> columns_;
  std::vector<ListRow> rows_;         // in the order in which they were added
  std::vector<std::uint32_t> order_;  // from place to row; empty while nothing is sorted
  std::vector<std::uint32_t> place_;  // from row to place, with order_
  std::unordered_map<std::uint32_t, Extra> extras_;
  std::vector<bool> ownCells_;  // by column: whether a row shows a text of its own there
  std::vector<std::size_t> selection_;
  std::vector<std::uint8_t> flags_;
  std::optional<ListSort> sorted_;
  mutable std::unordered_map<std::size_t, KeyIndex> keys_;
};

}  // namespace host
