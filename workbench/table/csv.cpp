#include "workbench/table/csv.h"

#include <algorithm>

namespace workbench {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view Separators = ",;\t";
constexpr std::string_view FormulaBeginnings = "=+-@";

// Of the first line that is not empty.
char separatorOf(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
  bool quoted = false;
  for (const char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    if (c == '\n') break;
    if (Separators.find(c) != std::string_view::npos) return c;
  }
  return ',';
}

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text), separator_(separatorOf(text)) {}

  CsvTable read() {
    while (!rest_.empty()) readLine();
    return std::move(table_);
  }

 private:
  bool atLineEnd() const { return rest_.empty() || rest_[0] == '\n' || rest_.starts_with("\r\n"); }
  void skipLineEnd() {
    if (rest_.empty()) return;
    rest_.remove_prefix(rest_[0] == '\r' ? 2 : 1);
    ++line_;
  }

  void readLine() {
    CsvLine line{{}, line_};
    if (atLineEnd()) return skipLineEnd();
    for (;;) {
      line.cells.push_back(readCell(line.cells.size() + 1));
      if (atLineEnd()) break;
      rest_.remove_prefix(1);  // the separator
      if (atLineEnd()) {
        line.cells.push_back({{}, line_});
        break;
      }
    }
    skipLineEnd();
    table_.lines.push_back(std::move(line));
  }

  CsvCell readCell(std::size_t column) {
    CsvCell cell{{}, line_};
    const bool quoted = rest_[0] == '"';
    if (quoted && !readQuoted(cell, column)) return cell;
    const std::size_t before = cell.text.size();
    while (!atLineEnd() && rest_[0] != separator_) {
      cell.text += rest_[0];
      rest_.remove_prefix(1);
    }
    if (quoted && cell.text.size() > before) table_.faults.push_back({cell.line, column, false});
    return cell;
  }

  // Leaves rest_ behind the closing quote; false where there is none.
  bool readQuoted(CsvCell& cell, std::size_t column) {
    rest_.remove_prefix(1);
    for (;;) {
      const std::size_t quote = rest_.find('"');
      const std::string_view piece = rest_.substr(0, quote);
      line_ += static_cast<std::size_t>(std::count(piece.begin(), piece.end(), '\n'));
      cell.text += piece;
      if (quote == std::string_view::npos) {
        rest_ = {};
        table_.faults.push_back({cell.line, column, true});
        return false;
      }
      rest_.remove_prefix(quote + 1);
      if (!rest_.starts_with('"')) return true;
      cell.text += '"';
      rest_.remove_prefix(1);
    }
  }

  std::string_view rest_;
  char separator_;
  std::size_t line_ = 1;
  CsvTable table_;
};

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isFormulaBeginning(char c) {
  return FormulaBeginnings.find(c) != std::string_view::npos;
}

// Sign, digits, point, digits.
bool isNumber(std::string_view text) {
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) text.remove_prefix(1);
  const std::size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  const std::string_view part =
      point == std::string_view::npos ? std::string_view() : text.substr(point + 1);
  return whole.size() + part.size() > 0 && std::all_of(whole.begin(), whole.end(), isDigit) &&
         std::all_of(part.begin(), part.end(), isDigit);
}

// An apostrophe in front of what follows is one of a guarded cell.
bool looksGuarded(std::string_view text) {
  return text.size() > 1 && text[0] == '\'' && (isFormulaBeginning(text[1]) || text[1] == '\'');
}

}  // namespace

CsvTable readCsv(std::string_view text) {
  if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
  return Reader(text).read();
}

CsvWriter::CsvWriter(CsvStyle style) : style_(style) {
  if (style_.byteOrderMark) out_ = ByteOrderMark;
}

void CsvWriter::cell(std::string_view utf8) {
  if (!first_) out_ += style_.separator;
  first_ = false;
  const char special[] = {style_.separator, '"', '\r', '\n'};
  if (utf8.find_first_of(std::string_view(special, sizeof special)) == std::string_view::npos) {
    out_ += utf8;
    return;
  }
  out_ += '"';
  for (const char c : utf8) {
    if (c == '"') out_ += '"';
    out_ += c;
  }
  out_ += '"';
}

void CsvWriter::endLine() {
  out_ += style_.lineEnd;
  first_ = true;
}

std::string guardedCell(std::string_view text) {
  const bool formula = !text.empty() && isFormulaBeginning(text[0]) && !isNumber(text);
  std::string cell(formula || looksGuarded(text) ? "'" : "");
  return cell += text;
}

std::string_view unguardedCell(std::string_view cell) {
  return looksGuarded(cell) ? cell.substr(1) : cell;
}

}  // namespace workbench
