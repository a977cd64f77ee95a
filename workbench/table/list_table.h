#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/dialogs/base_dlg.h"
#include "workbench/table/csv.h"

namespace workbench {

/// The rows of a list as a table: a column that says who a row is, then one for each edit below the
/// list, in the order of the list's columns; the rows as the list shows them.
std::string exportTable(const XCBaseDlg& dialog, const host::RowSet& rows, host::ListControl& list,
                        const CsvStyle& style = {});

/// What is wrong with a table that is to be put into a list.
struct TableFault {
  std::size_t line = 0;             ///< from 1, where the cell begins; the names are line 1
  std::size_t column = 0;           ///< from 1
  std::optional<std::string> name;  ///< the column's; none for a whole line
  XCBasicString text;
};

/// What became of a table that was put into a list.
struct TableImport {
  std::size_t changed = 0;         ///< values
  std::size_t rows = 0;            ///< rows with such a value
  std::vector<TableFault> faults;  ///< by line and column; with one of them nothing is changed
};

/// Puts a table into the rows of a list: rows are found by their identity, whatever their order;
/// rows and columns that the table lacks stay as they are. Every value that the page would not
/// take, typed or on OK, is told, all at once. @p dryRun only tells. The selection stays.
TableImport importTable(const XCBaseDlg& dialog, host::EditedPage& page, const host::RowSet& rows,
                        host::ListControl& list, std::string_view csv, bool dryRun);

}  // namespace workbench
