#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// One cell of a table as text, with the place where it begins.
struct CsvCell {
  std::string text;      ///< UTF-8, without quotes
  std::size_t line = 0;  ///< from 1; a cell may hold line ends of its own
};

/// One line of cells. Empty lines are none.
struct CsvLine {
  std::vector<CsvCell> cells;
  std::size_t line = 0;  ///< where it begins, from 1
};

/// A cell whose quotes do not end, or have text behind them.
struct CsvFault {
  std::size_t line = 0;
  std::size_t column = 0;  ///< from 1
  bool unended = false;    ///< the quotes do not end; else there is text behind them
};

struct CsvTable {
  std::vector<CsvLine> lines;
  std::vector<CsvFault> faults;
};

/// Reads a table as RFC 4180 writes it, in UTF-8: the separator is the first comma, semicolon or
/// tab outside quotes in the first line, lines end with LF or CRLF, and a byte-order mark may stand
/// in front. Linear in the text.
CsvTable readCsv(std::string_view text);

/// How a table is written.
struct CsvStyle {
  char separator = ',';
  std::string_view lineEnd = "\n";
  bool byteOrderMark = false;
};

/// Writes tables cell by cell; quotes stand only where a cell holds the separator, a quote, CR or
/// LF.
class CsvWriter {
 public:
  explicit CsvWriter(CsvStyle style = {});
  void cell(std::string_view utf8);
  void endLine();
  /// The text so far, which the caller may take.
  std::string& text() { return out_; }

 private:
  CsvStyle style_;
  std::string out_;
  bool first_ = true;
};

/// A text as a cell holds it: one that a spreadsheet would take for a formula gets an apostrophe in
/// front, unless it is a number.
std::string guardedCell(std::string_view text);
/// The text that a cell holds: takes the apostrophe off that guardedCell put there.
std::string_view unguardedCell(std::string_view cell);

}  // namespace workbench
